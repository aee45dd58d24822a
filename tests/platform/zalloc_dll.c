/* A stand-in for the optional allocator module: data items holding the
 * "function pointers" 0x1000, 0x2000, 0x3000 and 0x4000, which the library
 * records but never calls, so that a test can tell them apart from the
 * runtime's. ZALLOC_WITHOUT_FREE leaves the release item out;
 * ZALLOC_NULL_REALLOC exports the reallocate item holding null. */
#include <stdint.h>

#ifdef _WIN32
#define ZALLOC_EXPORT __declspec(dllexport)
#else
#define ZALLOC_EXPORT __attribute__((visibility("default")))
#endif

ZALLOC_EXPORT uintptr_t z_malloc_dll = 0x1000;
ZALLOC_EXPORT uintptr_t z_calloc_dll = 0x2000;
#ifdef ZALLOC_NULL_REALLOC
ZALLOC_EXPORT uintptr_t z_realloc_dll = 0;
#else
ZALLOC_EXPORT uintptr_t z_realloc_dll = 0x3000;
#endif
#ifndef ZALLOC_WITHOUT_FREE
ZALLOC_EXPORT uintptr_t z_free_dll = 0x4000;
#endif
