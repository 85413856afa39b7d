// The traces that the library writes to standard output. They are part of what operators see.
#ifndef KESTO_FCIP_TRACE_H
#define KESTO_FCIP_TRACE_H

#include <cstdio>

inline void trace_entering(const char* function) {
    std::printf("Entering %s\n", function);
}
inline void trace_exiting(const char* function) {
    std::printf("Exiting %s\n", function);
}
inline void trace_line(const char* function, int line) {
    std::printf(" Function : %s Line %d \n", function, line);
}

#endif
