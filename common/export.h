// FCIP_API marks the functions of the library's exported set; everything else stays hidden.
#ifndef KESTO_COMMON_EXPORT_H
#define KESTO_COMMON_EXPORT_H

#define FCIP_API __attribute__((visibility("default")))

#endif
