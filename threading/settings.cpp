// Thread controls, the environment that seeds them, and the thread-count
// decision the parallel drivers ask for.
//
// The environment is read once, at the first query (ZEL_Get_Max_Threads,
// ZEL_Domain_Get_Max_Threads or ZEL_Get_Dynamic); the set calls never read
// it, and whatever they stored before that first query wins over the
// environment. Bad text is never reported: a misspelt thread count means one
// thread, a misspelt dynamic flag leaves dynamic mode on.
#include "threading/settings.h"

#include <omp.h>

#include <cstring>

#include "platform/os.h"
#include "threading/topology.h"
#include "zvl.h"

namespace zvl {

ThreadSettings thread_settings;

namespace {

// Values are read into a buffer of this size; a value that does not fit
// (256 characters or more) counts as unset.
constexpr uint32_t kValueSize = 256;

struct Value {
    char text[kValueSize];
    uint32_t len;  // 0 when unset
};

Value read_variable(const char* name) {
    Value v;
    v.len = os::getenv(name, v.text, kValueSize);
    if (v.len >= kValueSize) v.len = 0;
    return v;
}

bool is_digit(char ch) { return ch >= '0' && ch <= '9'; }

// The base-10 number of an all-digit text, saturated at INT32_MAX, or -1
// when the text is empty or holds any other character (blanks included).
int32_t all_digits(const char* s, uint32_t len) {
    if (len == 0) return -1;
    int64_t v = 0;
    for (uint32_t i = 0; i < len; ++i) {
        if (!is_digit(s[i])) return -1;
        v = v * 10 + (s[i] - '0');
        if (v > INT32_MAX) v = INT32_MAX;
    }
    return static_cast<int32_t>(v);
}

bool is_any_of(char ch, const char* set) { return ch != '\0' && std::strchr(set, ch) != nullptr; }

// ZEL_DOMAIN_NUM_THREADS: pairs of key and count, such as
// "ZEL_ALL=2, ZEL_ZVL=3". Keys end at = " ' or a blank, so "ZEL_ALL 4" is a
// pair too, while , ; : inside a key belong to it; values end at a blank
// or , ; : " '. A bare key or a value with a non-digit counts as 1. Only
// the four known keys, spelt exactly, set anything, and the first pair for
// a domain wins. An empty key ends the scan.
void parse_domain_threads(const char* s, uint32_t len) {
    static const char* const kKeys[4] = {"ZEL_ALL", "ZEL_BLAS", "ZEL_FFT", "ZEL_ZVL"};
    uint32_t i = 0;
    for (;;) {
        while (i < len && is_any_of(s[i], " ,;:\"'")) ++i;
        const uint32_t key = i;
        while (i < len && !is_any_of(s[i], "=\"' ")) ++i;
        const uint32_t key_len = i - key;
        if (key_len == 0) return;
        while (i < len && (s[i] == ' ' || s[i] == '=')) ++i;
        const uint32_t value = i;
        while (i < len && !is_any_of(s[i], " ,;:\"'")) ++i;
        const uint32_t value_len = i - value;
        if (i < len) ++i;  // past the character that ended the value

        int32_t count = all_digits(s + value, value_len);
        if (count < 0) count = 1;  // bare key or non-digits
        for (int d = 0; d < 4; ++d) {
            if (std::strlen(kKeys[d]) != key_len || std::memcmp(kKeys[d], s + key, key_len) != 0)
                continue;
            if (count > 0 && thread_settings.domain_threads[d] < 0)
                thread_settings.domain_threads[d] = count;
        }
    }
}

// ZEL_DYNAMIC: the first token, with blanks and quotes around it, turns
// dynamic mode off only when it is exactly FALSE or false.
bool says_false(const char* s, uint32_t len) {
    uint32_t i = 0;
    while (i < len && is_any_of(s[i], " \"'")) ++i;
    const uint32_t start = i;
    while (i < len && !is_any_of(s[i], " \"'")) ++i;
    const uint32_t n = i - start;
    return n == 5 && (std::memcmp(s + start, "FALSE", 5) == 0 ||
                      std::memcmp(s + start, "false", 5) == 0);
}

}  // namespace

void read_thread_environment() {
    ThreadSettings& t = thread_settings;

    const Value num = read_variable("ZEL_NUM_THREADS");
    if (num.len != 0) {
        int32_t v = all_digits(num.text, num.len);
        if (v < 0) v = 1;
        if (v > 0 && t.domain_threads[0] < 0) t.domain_threads[0] = v;
    }

    const Value domains = read_variable("ZEL_DOMAIN_NUM_THREADS");
    if (domains.len != 0) parse_domain_threads(domains.text, domains.len);

    if (t.dynamic == -1) {
        t.dynamic = 1;
        const Value dyn = read_variable("ZEL_DYNAMIC");
        if (dyn.len != 0 && says_false(dyn.text, dyn.len)) t.dynamic = 0;
    }

    const Value omp = read_variable("OMP_NUM_THREADS");
    if (omp.len != 0) {
        const int32_t v = all_digits(omp.text, omp.len);
        if (v < 0)
            t.omp_threads_env = 1;
        else if (v > 0)
            t.omp_threads_env = v;
    }

    // Unlike the two counts above, anything but a positive number is ignored.
    const Value procs = read_variable("Z_MPI_NUMBER_OF_MPI_PROCESSES_PER_NODE");
    if (procs.len != 0) {
        const int32_t v = all_digits(procs.text, procs.len);
        if (v > 0) t.mpi_procs_per_node = v;
    }

    const Value level = read_variable("Z_MPI_THREAD_LEVEL");
    if (level.len != 0) {
        t.mpi_thread_level = 0;
        const int32_t v = all_digits(level.text, level.len);
        if (v >= 0 && v <= 3) t.mpi_thread_level = v;
    }

    int32_t logical = t.logical_processors;
    int32_t physical = t.physical_cores;
    count_physical_cores(*topology_ops, &logical, &physical);
    t.logical_processors = logical;
    t.physical_cores = physical;
}

void ensure_thread_environment() {
    if (thread_settings.env_pending != 0) {
        read_thread_environment();
        thread_settings.env_pending = 0;
    }
}

int32_t decide_thread_count(int32_t domain) {
    ThreadSettings& t = thread_settings;
    ensure_thread_environment();
    if (ZEL_Get_Dynamic() != 0 && omp_in_parallel()) return 1;

    int32_t v;
    bool explicit_count = true;
    if (domain >= 1 && domain <= 3 && t.domain_threads[domain] > 0)
        v = t.domain_threads[domain];
    else if (t.domain_threads[0] > 0)
        v = t.domain_threads[0];
    else {
        // A runtime given an OMP_NUM_THREADS it cannot hold may answer 0 or
        // less (2^31 or 2^32 with libgomp, a misspelt value with libomp).
        v = omp_get_max_threads();
        if (v < 1) v = 1;
        explicit_count = false;
    }
    // Never more than a team the runtime can start: its thread limit, and our
    // ceiling, since far larger forks overflow the runtime's stack.
    const int32_t limit = omp_get_thread_limit();
    if (limit > 0 && v > limit) v = limit;
    if (v > kMaxTeam) v = kMaxTeam;
    if (ZEL_Get_Dynamic() == 0) return v;

    // Dynamic mode: never more threads than physical cores, and under an
    // MPI launcher that set no count, share the node's cores among its
    // processes, or stay serial when the MPI library is not thread-aware.
    if (t.physical_cores < v) v = t.physical_cores;
    if (t.thread_cap_override != -1) return t.thread_cap_override == 0 ? 1 : v;
    if (t.mpi_procs_per_node == -1 || explicit_count || t.omp_threads_env > 0) return v;
    if (t.mpi_thread_level > 0) {
        const int32_t share = t.physical_cores / t.mpi_procs_per_node;
        return share > 1 ? share : 1;
    }
    return 1;
}

}  // namespace zvl

extern "C" {

ZVL_API void ZEL_Set_Num_Threads(int n) {
    if (n > 0) zvl::thread_settings.domain_threads[0] = n;
}

ZVL_API int ZEL_Domain_Set_Num_Threads(int n, int domain) {
    if (n < 0 || domain < 0 || domain > 3) return 0;
    zvl::thread_settings.domain_threads[domain] = n;
    return 1;
}

ZVL_API int ZEL_Get_Max_Threads(void) { return zvl::decide_thread_count(0); }

ZVL_API int ZEL_Domain_Get_Max_Threads(int domain) { return zvl::decide_thread_count(domain); }

ZVL_API void ZEL_Set_Dynamic(int flag) { zvl::thread_settings.dynamic = flag != 0 ? 1 : 0; }

ZVL_API int ZEL_Get_Dynamic(void) {
    zvl::ensure_thread_environment();
    return zvl::thread_settings.dynamic;
}

}  // extern "C"
