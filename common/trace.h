// The traces that the library writes to standard output. They are part of what operators see, and their
// texts are fixed.
#ifndef KESTO_COMMON_TRACE_H
#define KESTO_COMMON_TRACE_H

#include <cstdio>

inline void trace_entering(const char* function) {
    std::printf("Entering %s\n", function);
}

inline void trace_exiting(const char* function) {
    std::printf("Exiting %s\n", function);
}

// Marks a place in a function. The number names the place and stays with it: it is the line on which the
// place once stood, not the one on which it stands today, so that an edit does not change what operators see.
inline void trace_line(const char* function, int line) {
    std::printf(" Function : %s Line %d \n", function, line);
}

#endif
