// FCIP_API marks what the library exports: its C functions, and _broker. Everything else stays hidden.
#ifndef KESTO_COMMON_EXPORT_H
#define KESTO_COMMON_EXPORT_H

#define FCIP_API __attribute__((visibility("default")))

#endif
