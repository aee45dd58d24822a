// POSIX back end of the platform layer.
#include <dlfcn.h>
#include <link.h>
#include <nl_types.h>
#include <pthread.h>
#include <sched.h>
#include <unistd.h>

#include <cstdlib>
#include <cstring>

#include "platform/os.h"
#include "state/state.h"

namespace zvl::os {

const char* const kAllocatorModule = "libzalloc.so";

uint32_t getenv(const char* name, char* buf, uint32_t size) {
    const char* v = std::getenv(name);
    if (v == nullptr || *v == '\0') return 0;
    const size_t len = std::strlen(v);
    if (len >= size) return static_cast<uint32_t>(len + 1);
    std::memcpy(buf, v, len + 1);
    return static_cast<uint32_t>(len);
}

// --- Thread-local slot ---------------------------------------------------
// A pthread key each; its destructor stands in for thread detach and hands
// the common release code the context, which the key no longer holds by
// then. A key given back before use never has a value, so its destructor
// never runs.

namespace {

void on_thread_exit(void* value) { zvl::thread_detach(value); }

}  // namespace

int32_t tls_alloc() {
    pthread_key_t key;
    if (pthread_key_create(&key, on_thread_exit) != 0) return -1;
    return static_cast<int32_t>(key);
}

void* tls_get(int32_t slot) {
    if (slot < 0) return nullptr;
    return pthread_getspecific(static_cast<pthread_key_t>(slot));
}

bool tls_set(int32_t slot, void* value) {
    if (slot < 0) return false;
    return pthread_setspecific(static_cast<pthread_key_t>(slot), value) == 0;
}

void tls_free(int32_t slot) {
    if (slot >= 0) pthread_key_delete(static_cast<pthread_key_t>(slot));
}

// --- Private heap ----------------------------------------------------------
// The C allocator is already thread-safe; the handle only marks the heap's
// life. Blocks are released one by one at thread detach. They come zeroed:
// a context's array base is never written at creation, and a block reused
// from a thread that ended must not hand the new thread a stale base.

namespace {
int g_heap_token;
}

void* heap_create() { return &g_heap_token; }
void* heap_alloc(void*, size_t size) { return std::calloc(1, size); }
void heap_free(void*, void* block) { std::free(block); }
void heap_destroy(void*) {}

// --- Module kind -----------------------------------------------------------
// The first object the dynamic linker lists is the main program; the code is
// in a library when the object that contains it is any other.

namespace {

struct Search {
    uintptr_t address;
    int index;
    int found;
};

int visit(struct dl_phdr_info* info, size_t, void* data) {
    auto* s = static_cast<Search*>(data);
    for (int i = 0; i < info->dlpi_phnum; ++i) {
        const ElfW(Phdr)& ph = info->dlpi_phdr[i];
        if (ph.p_type != PT_LOAD) continue;
        const uintptr_t start = info->dlpi_addr + ph.p_vaddr;
        if (s->address >= start && s->address < start + ph.p_memsz) {
            s->found = s->index;
            return 1;
        }
    }
    ++s->index;
    return 0;
}

}  // namespace

int module_kind() {
    Search s{reinterpret_cast<uintptr_t>(&module_kind), 0, -1};
    dl_iterate_phdr(visit, &s);
    return s.found > 0 ? 1 : 0;
}

// --- Optional modules ------------------------------------------------------

void* module_load(const char* name) { return dlopen(name, RTLD_NOW | RTLD_LOCAL); }
void* module_symbol(void* module, const char* name) { return dlsym(module, name); }
void module_free(void* module) { dlclose(module); }

// --- Message catalogue -----------------------------------------------------
// An X/Open catalogue named zel_msg, found through NLSPATH and the locale;
// message numbers in set 1 are the table ids.

void* catalog_open() {
    nl_catd cat = catopen("zel_msg", NL_CAT_LOCALE);
    return cat == reinterpret_cast<nl_catd>(-1) ? nullptr : static_cast<void*>(cat);
}

int32_t catalog_text(void* catalog, uint32_t id, char* buf, size_t size) {
    const char* t = catgets(static_cast<nl_catd>(catalog), 1, static_cast<int>(id), nullptr);
    if (t == nullptr) return -1;
    size_t len = std::strlen(t);
    if (len >= size) len = size - 1;
    std::memcpy(buf, t, len);
    buf[len] = '\0';
    return static_cast<int32_t>(len);
}

void touch_error_stream() {}

void terminate(int code) { _exit(code); }

// --- Affinity --------------------------------------------------------------

namespace {

uint64_t to_mask(const cpu_set_t& set) {
    uint64_t m = 0;
    for (int i = 0; i < 64; ++i)
        if (CPU_ISSET(i, &set)) m |= uint64_t{1} << i;
    return m;
}

cpu_set_t to_set(uint64_t mask) {
    cpu_set_t set;
    CPU_ZERO(&set);
    for (int i = 0; i < 64; ++i)
        if (mask >> i & 1) CPU_SET(i, &set);
    return set;
}

}  // namespace

bool get_process_affinity(uint64_t* process_mask, uint64_t* system_mask) {
    cpu_set_t set;
    if (sched_getaffinity(0, sizeof set, &set) != 0) return false;
    *process_mask = to_mask(set);
    const long n = sysconf(_SC_NPROCESSORS_CONF);
    *system_mask = n >= 64 ? ~uint64_t{0} : (uint64_t{1} << (n > 0 ? n : 1)) - 1;
    return true;
}

bool set_process_affinity(uint64_t mask) {
    const cpu_set_t set = to_set(mask);
    return sched_setaffinity(0, sizeof set, &set) == 0;
}

uint64_t set_thread_affinity(uint64_t mask) {
    cpu_set_t old;
    if (pthread_getaffinity_np(pthread_self(), sizeof old, &old) != 0) return 0;
    const cpu_set_t set = to_set(mask);
    if (pthread_setaffinity_np(pthread_self(), sizeof set, &set) != 0) return 0;
    const uint64_t m = to_mask(old);
    return m ? m : 1;
}

void yield() { sched_yield(); }

}  // namespace zvl::os

// Process attach and detach.
__attribute__((constructor)) static void zvl_attach() { zvl::process_attach(); }
__attribute__((destructor)) static void zvl_detach() { zvl::process_detach(); }
