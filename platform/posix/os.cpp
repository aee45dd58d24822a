// POSIX back end of the platform layer.
#include <dlfcn.h>
#include <fcntl.h>
#include <link.h>
#include <nl_types.h>
#include <omp.h>
#include <pthread.h>
#include <sched.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>

#include "platform/os.h"
#include "state/state.h"

namespace zvl::os {

const char* const kAllocatorModule = "libzalloc.so";

namespace {

// Keeps the caller's errno across a look-up or a probe: the library sets
// errno only where the mode word asks for it, and a missing catalogue or
// module is no error of the caller's.
struct ErrnoKept {
    int saved = errno;
    ~ErrnoKept() { errno = saved; }
};

}  // namespace

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

void* module_load(const char* name) {
    const ErrnoKept kept;
    return dlopen(name, RTLD_NOW | RTLD_LOCAL);
}

void* module_symbol(void* module, const char* name) {
    const ErrnoKept kept;
    return dlsym(module, name);
}

void module_free(void* module) {
    const ErrnoKept kept;
    dlclose(module);
}

// --- Message catalogue -----------------------------------------------------
// An X/Open catalogue named zel_msg, found through NLSPATH and the locale;
// message numbers in set 1 are the table ids.

void* catalog_open() {
    const ErrnoKept kept;
    nl_catd cat = catopen("zel_msg", NL_CAT_LOCALE);
    return cat == reinterpret_cast<nl_catd>(-1) ? nullptr : static_cast<void*>(cat);
}

int32_t catalog_text(void* catalog, uint32_t id, char* buf, size_t size) {
    const ErrnoKept kept;
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
// Linux keeps no mask for the process, only one per thread, and a thread may
// be pinned: an OpenMP runtime told to bind (OMP_PROC_BIND) pins the main
// thread to its first place before this library's load-time code runs. So
// the process mask is the union of the main thread's mask at load and the
// processors of the runtime's places, which it took from the process's mask
// before binding; the calling thread's own mask says nothing of the
// process. The system mask is the processors online.
//
// Moves act on the calling thread. A move onto the process mask is a move
// back: the thread gets the mask it had before its first move, so a walk
// leaves a pinned thread pinned where it was.

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

uint64_t g_load_mask = 0;  // the main thread's, at load

uint64_t places_mask() {
    uint64_t m = 0;
    const int places = omp_get_num_places();
    for (int p = 0; p < places; ++p) {
        int ids[64];
        if (omp_get_place_num_procs(p) > 64) continue;
        omp_get_place_proc_ids(p, ids);
        for (int k = 0, n = omp_get_place_num_procs(p); k < n; ++k)
            if (ids[k] >= 0 && ids[k] < 64) m |= uint64_t{1} << ids[k];
    }
    return m;
}

// A kernel cpu list such as "0-3,5,8-9" as a mask of processors 0 to 63.
uint64_t parse_cpu_list(const char* s) {
    uint64_t m = 0;
    while (*s >= '0' && *s <= '9') {
        char* end;
        const unsigned long lo = std::strtoul(s, &end, 10);
        unsigned long hi = lo;
        if (*end == '-') hi = std::strtoul(end + 1, &end, 10);
        for (unsigned long i = lo; i <= hi && i < 64; ++i) m |= uint64_t{1} << i;
        s = *end == ',' ? end + 1 : end;
    }
    return m;
}

uint64_t online_mask() {
    char buf[256];
    ssize_t len = -1;
    const int fd = open("/sys/devices/system/cpu/online", O_RDONLY | O_CLOEXEC);
    if (fd >= 0) {
        len = read(fd, buf, sizeof buf - 1);
        close(fd);
    }
    if (len > 0) {
        buf[len] = '\0';
        if (const uint64_t m = parse_cpu_list(buf)) return m;
    }
    const long n = sysconf(_SC_NPROCESSORS_ONLN);
    return n >= 64 ? ~uint64_t{0} : (uint64_t{1} << (n > 0 ? n : 1)) - 1;
}

thread_local bool t_moved = false;
thread_local cpu_set_t t_home;

// Moves the calling thread onto mask (back home when mask is the process
// mask); *previous gets the mask it had. False when it cannot be moved.
bool move_thread(uint64_t mask, uint64_t* previous) {
    cpu_set_t old;
    if (pthread_getaffinity_np(pthread_self(), sizeof old, &old) != 0) return false;
    uint64_t process = 0, system = 0;
    const bool back = get_process_affinity(&process, &system) && mask == process;
    const cpu_set_t set = !back ? to_set(mask) : t_moved ? t_home : old;
    if (pthread_setaffinity_np(pthread_self(), sizeof set, &set) != 0) return false;
    if (!back && !t_moved) t_home = old;
    t_moved = !back;
    *previous = to_mask(old);
    return true;
}

}  // namespace

bool get_process_affinity(uint64_t* process_mask, uint64_t* system_mask) {
    const ErrnoKept kept;
    const uint64_t system = online_mask();
    uint64_t process = (g_load_mask | places_mask()) & system;
    if (process == 0) {
        cpu_set_t set;
        if (sched_getaffinity(0, sizeof set, &set) != 0) return false;
        process = to_mask(set);
    }
    *process_mask = process;
    *system_mask = system;
    return true;
}

bool set_process_affinity(uint64_t mask) {
    const ErrnoKept kept;
    uint64_t previous;
    return move_thread(mask, &previous);
}

uint64_t set_thread_affinity(uint64_t mask) {
    const ErrnoKept kept;
    uint64_t previous;
    if (!move_thread(mask, &previous)) return 0;
    return previous ? previous : 1;
}

void note_load_mask() {
    const ErrnoKept kept;
    cpu_set_t set;
    if (sched_getaffinity(getpid(), sizeof set, &set) == 0) g_load_mask = to_mask(set);
}

void yield() { sched_yield(); }

}  // namespace zvl::os

// Process attach and detach. The main thread's mask is noted first, before
// anything can move it.
__attribute__((constructor)) static void zvl_attach() {
    zvl::os::note_load_mask();
    zvl::process_attach();
}
__attribute__((destructor)) static void zvl_detach() { zvl::process_detach(); }
