// What the CMPI interface takes from the operating system: the thread types that the broker's services for
// providers are declared with, and the linkage of the factory functions. Linux only.
#ifndef KESTO_CMPIOS_H
#define KESTO_CMPIOS_H

#define CMPI_THREAD_TYPE void*
#define CMPI_THREAD_RETURN void*
#define CMPI_THREAD_CDECL
#define CMPI_THREAD_KEY_TYPE unsigned int
#define CMPI_MUTEX_TYPE void*
#define CMPI_COND_TYPE void*

#define CMPI_EXPORT __attribute__((visibility("default")))
#ifdef __cplusplus
#define CMPI_EXTERN_C extern "C" CMPI_EXPORT
#else
#define CMPI_EXTERN_C CMPI_EXPORT
#endif

#endif
