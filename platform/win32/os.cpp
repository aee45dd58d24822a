// Win32 back end of the platform layer.
#define WIN32_LEAN_AND_MEAN
#include <windows.h>

#include <cstdio>
#include <cstring>

#include "platform/os.h"

namespace zvl::os {

const char* const kAllocatorModule = "libzalloc.dll";

// GetEnvironmentVariableA already answers as the interface asks: the length
// when the value fits, the size needed (NUL included) when not, 0 when the
// variable is absent or empty.
uint32_t getenv(const char* name, char* buf, uint32_t size) {
    return GetEnvironmentVariableA(name, buf, size);
}

// --- Thread-local slot -------------------------------------------------------
// Thread detach reaches the library through DllMain (dll_main.cpp).

int32_t tls_alloc() {
    const DWORD slot = TlsAlloc();
    return slot == TLS_OUT_OF_INDEXES ? -1 : static_cast<int32_t>(slot);
}

void* tls_get(int32_t slot) { return TlsGetValue(static_cast<DWORD>(slot)); }

bool tls_set(int32_t slot, void* value) {
    return TlsSetValue(static_cast<DWORD>(slot), value) != 0;
}

void tls_free(int32_t slot) { TlsFree(static_cast<DWORD>(slot)); }

// --- Private heap ------------------------------------------------------------
// Growable (maximum 0), starting at 32 bytes: one thread context.

void* heap_create() { return HeapCreate(0, 32, 0); }
void* heap_alloc(void* heap, size_t size) { return HeapAlloc(heap, 0, size); }
void heap_free(void* heap, void* block) { HeapFree(heap, 0, block); }
void heap_destroy(void* heap) { HeapDestroy(heap); }

// --- Module kind ---------------------------------------------------------------
// The region holding this function's code was allocated at the base of the
// image it belongs to; the main program's image is GetModuleHandleA(NULL).

int module_kind() {
    MEMORY_BASIC_INFORMATION info;
    static_assert(sizeof info == 48, "the 64-bit layout of MEMORY_BASIC_INFORMATION");
    if (VirtualQuery(reinterpret_cast<const void*>(&module_kind), &info, sizeof info) != 48)
        return 0;
    return info.AllocationBase == static_cast<void*>(GetModuleHandleA(nullptr)) ? 0 : 1;
}

// --- Optional modules ----------------------------------------------------------

void* module_load(const char* name) { return LoadLibraryA(name); }

void* module_symbol(void* module, const char* name) {
    return reinterpret_cast<void*>(GetProcAddress(static_cast<HMODULE>(module), name));
}

void module_free(void* module) { FreeLibrary(static_cast<HMODULE>(module)); }

// --- Message catalogue ---------------------------------------------------------
// A message-table module, zel_msg.dll, in a folder named by the thread's
// locale number (1033/zel_msg.dll for US English), found by the loader's
// search. Its message numbers are the table ids with the top bit set, its
// texts in language 0x409.

void* catalog_open() {
    char path[64];
    std::snprintf(path, sizeof path, "%lu/%s", static_cast<unsigned long>(GetThreadLocale()),
                  "zel_msg.dll");
    return LoadLibraryA(path);
}

int32_t catalog_text(void* catalog, uint32_t id, char* buf, size_t size) {
    constexpr DWORD kAllocateFromModule =
        FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_HMODULE;  // 0x900
    static_assert(kAllocateFromModule == 0x900, "");
    char* text = nullptr;
    const DWORD len = FormatMessageA(kAllocateFromModule, catalog, id + 0x80000000u, 0x409,
                                     reinterpret_cast<char*>(&text), 512, nullptr);
    if (len == 0) return -1;
    size_t keep = len < size ? len : size - 1;
    std::memcpy(buf, text, keep);
    buf[keep] = '\0';
    LocalFree(text);
    return static_cast<int32_t>(keep);
}

void touch_error_stream() { GetStdHandle(STD_ERROR_HANDLE); }

void terminate(int code) {
    TerminateProcess(GetCurrentProcess(), static_cast<UINT>(code));
    ExitProcess(static_cast<UINT>(code));  // not reached: the call above does not return
}

// --- Affinity ------------------------------------------------------------------

bool get_process_affinity(uint64_t* process_mask, uint64_t* system_mask) {
    DWORD_PTR p = 0, s = 0;
    if (!GetProcessAffinityMask(GetCurrentProcess(), &p, &s)) return false;
    *process_mask = p;
    *system_mask = s;
    return true;
}

bool set_process_affinity(uint64_t mask) {
    return SetProcessAffinityMask(GetCurrentProcess(), static_cast<DWORD_PTR>(mask)) != 0;
}

uint64_t set_thread_affinity(uint64_t mask) {
    return SetThreadAffinityMask(GetCurrentThread(), static_cast<DWORD_PTR>(mask));
}

void yield() { Sleep(0); }

}  // namespace zvl::os
