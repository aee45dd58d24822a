// The operating-system services the library uses, behind one small interface.
// platform/posix and platform/win32 each implement all of it under the same
// names; the build picks one. No other file includes an OS header.
#pragma once

#include <cstddef>
#include <cstdint>

namespace zvl::os {

// Environment variable `name` into buf[0..size-1]. Returns the length of the
// value without its NUL when it fits; the size needed (NUL included) when it
// does not, leaving buf unfilled; 0 when the variable is absent or empty.
uint32_t getenv(const char* name, char* buf, uint32_t size);

// One thread-local slot. tls_alloc returns -1 on failure; tls_get of an
// invalid slot returns null. Each back end calls zvl::process_attach at
// load, zvl::thread_detach when a thread ends and zvl::process_detach at
// unload.
int32_t tls_alloc();
void* tls_get(int32_t slot);
bool tls_set(int32_t slot, void* value);
void tls_free(int32_t slot);

// A private heap for the thread contexts. heap_create returns null on failure.
void* heap_create();
void* heap_alloc(void* heap, size_t size);
void heap_free(void* heap, void* block);
void heap_destroy(void* heap);

// 1 when this code lies in a loaded library, 0 when in the main program.
int module_kind();

// Optional modules, by file name. Null on failure.
extern const char* const kAllocatorModule;  // libzalloc.so / libzalloc.dll
void* module_load(const char* name);
void* module_symbol(void* module, const char* name);
void module_free(void* module);

// The localized message catalogue. catalog_open returns null when there is
// none. catalog_text copies the text of message `id` into buf (at most
// size-1 characters and a NUL) and returns its length, or -1 when the
// catalogue has no text for it.
void* catalog_open();
int32_t catalog_text(void* catalog, uint32_t id, char* buf, size_t size);

// Called before printing an error message, its result left unused.
void touch_error_stream();

// Ends the process at once with the exit code, running no exit handlers.
[[noreturn]] void terminate(int code);

// Processor affinity, for the topology walks. Masks have one bit per
// processor. Each returns false on failure.
bool get_process_affinity(uint64_t* process_mask, uint64_t* system_mask);
bool set_process_affinity(uint64_t mask);
// Returns the previous mask of the calling thread, or 0 on failure.
uint64_t set_thread_affinity(uint64_t mask);
void yield();

}  // namespace zvl::os
