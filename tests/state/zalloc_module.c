/*
 * Stand-ins for the optional allocator module. Each export is a data item
 * holding a function pointer. Built in three variants:
 *   ZALLOC_ALL    all four exports, all set
 *   ZALLOC_THREE  z_free_dll missing
 *   ZALLOC_NULL   z_realloc_dll present but null
 */
#include <stddef.h>

static void *fake_malloc(size_t n) { (void)n; return NULL; }
static void *fake_calloc(size_t n, size_t m) { (void)n; (void)m; return NULL; }
static void *fake_realloc(void *p, size_t n) { (void)p; (void)n; return NULL; }
static void fake_free(void *p) { (void)p; }

void *(*z_malloc_dll)(size_t) = fake_malloc;
void *(*z_calloc_dll)(size_t, size_t) = fake_calloc;
#ifdef ZALLOC_NULL
void *(*z_realloc_dll)(void *, size_t) = NULL;
#else
void *(*z_realloc_dll)(void *, size_t) = fake_realloc;
#endif
#ifndef ZALLOC_THREE
void (*z_free_dll)(void *) = fake_free;
#endif
