// Prints, for every function of the table and every accuracy mode, a digest
// of the results on a fixed set of arguments, with the status, errno and
// floating-point flags the call leaves and the statuses its elements report.
// Built for Linux and for Windows from the same source, the two programs
// must print the same lines: the Windows build then carries over what the
// Linux build's accuracy tests measure.
//
// Each function runs on 1001 and on 65539 elements, and each call twice.
// First on one thread (the ZEL_ZVL count set to 1), which gives the printed
// line: on a team, status, errno and flags would be those of whichever
// member stored last, or of the caller's own chunk. Then with the thread
// settings the environment gives, which take the parallel drivers wherever
// the length reaches the function's threshold on this machine: the results
// must be the serial call's, or those of the kernel on each member's chunk
// for a team of some size (kernels that share one division among a block
// round otherwise across a chunk's start); the status one of those its
// elements reported, or 0 when none did; errno untouched or one those
// statuses set. Nothing of the second call is printed, since whether it
// went parallel depends on the machine.
//
// Each serial call is also made with the x87 unit at 53-bit precision, as
// programs built with MSVC start, and must give the same bits; and every
// call must leave the x87 control word and MXCSR as it found them. A breach
// prints a line starting with "FAULT" and makes the exit code 1.
#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cfenv>
#include <cinttypes>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include "frame/function_table.h"
#include "kernels/common/fp_guard.h"
#include "state/state.h"
#include "threading/settings.h"
#include "zvl.h"

namespace {

constexpr int kLarge = 65539;
constexpr int kSmall = 1001;

uint64_t g_seed = 0x9E3779B97F4A7C15u;
uint64_t next_random() {
    g_seed = g_seed * 6364136223846793005u + 1442695040888963407u;
    return g_seed >> 11 ^ g_seed << 29;
}

double from_bits(uint64_t b) {
    double x;
    std::memcpy(&x, &b, sizeof x);
    return x;
}

// Special values first, then four kinds of argument in turn: any bit
// pattern, small magnitudes, moderate exponents, and large positive ones.
std::vector<double> make_arguments(size_t count) {
    std::vector<double> v = {0.0, -0.0, 1.0, -1.0, 0.5, 2.0, 1e-310, -1e-310,
                             from_bits(0x7FF0000000000000), from_bits(0xFFF0000000000000),
                             from_bits(0x7FF8000000000000), from_bits(0x7FF4000000000001),
                             1.7976931348623157e308, 2.2250738585072014e-308, 710.0, -745.5,
                             3.141592653589793, 1e22, 1e300, -1e-300};
    while (v.size() < count) {
        const uint64_t r = next_random();
        switch (v.size() % 4) {
            case 0: v.push_back(from_bits(r)); break;
            case 1: v.push_back(static_cast<double>(static_cast<int64_t>(r >> 11)) * 0x1p-51 - 2.0); break;
            case 2: v.push_back(from_bits((r & 0x800FFFFFFFFFFFFFu) | (uint64_t{1023 - 40 + (r >> 52 & 63) + (r >> 58 & 15)} << 52))); break;
            default: v.push_back(static_cast<double>(r >> 22) * 0x1p-32); break;
        }
    }
    return v;
}

const std::vector<double> g_a = make_arguments(2 * kLarge);
const std::vector<double> g_b = make_arguments(2 * kLarge + 7);  // another sequence
std::vector<double> g_r1(2 * kLarge), g_r2(2 * kLarge);

uint64_t hash_bits(const void* p, size_t bytes, uint64_t h) {
    const auto* c = static_cast<const unsigned char*>(p);
    for (size_t i = 0; i < bytes; ++i) h = (h ^ c[i]) * 0x100000001B3u;
    return h;
}

// The five IEEE flags; MinGW's FE_ALL_EXCEPT also has the x87 denormal flag.
constexpr int kFlags = FE_INVALID | FE_DIVBYZERO | FE_OVERFLOW | FE_UNDERFLOW | FE_INEXACT;

constexpr uint16_t kX87Extended = 0x037F;  // 64-bit significand, round to nearest, all masked
constexpr uint16_t kX87Double = 0x027F;    // 53-bit significand

int g_faults = 0;

// Makes the call with the x87 control word `cw`; returns the hash of the
// results, or reports a control word or MXCSR changed by the call.
template <class Call>
uint64_t hashed_call(const char* name, Call call, int n, size_t bytes, bool two, uint16_t cw) {
    std::memset(g_r1.data(), 0, g_r1.size() * sizeof(double));
    std::memset(g_r2.data(), 0, g_r2.size() * sizeof(double));
    write_x87_cw(cw);
    const uint32_t csr = read_mxcsr() & 0xFFC0u;  // control bits, not the sticky flags
    call(n);
    const uint16_t cw_after = read_x87_cw();
    const uint32_t csr_after = read_mxcsr() & 0xFFC0u;
    write_x87_cw(kX87Extended);
    if (cw_after != cw || csr_after != csr) {
        std::printf("FAULT %s n=%d: x87 control 0x%04x -> 0x%04x, MXCSR 0x%04x -> 0x%04x\n", name,
                    n, cw, cw_after, csr, csr_after);
        ++g_faults;
    }
    uint64_t h = hash_bits(g_r1.data(), n * bytes, 0xCBF29CE484222325u);
    if (two) h = hash_bits(g_r2.data(), n * bytes, h);
    return h;
}

const char* const kModeNames[3] = {"HA", "LA", "EP"};
const unsigned kModes[3] = {ZVL_HA, ZVL_LA, ZVL_EP};

// The statuses the elements of a call report, a bit each (status + 2), from
// whichever thread meets them.
std::atomic<uint32_t> g_reported{0};
int note_status(ZVLErrorRecord* rec) {
    g_reported.fetch_or(1u << ((rec->status + 2) & 31));
    return 0;
}

std::string status_set(uint32_t bits) {
    std::string s;
    for (int status = -2; status <= 4; ++status)
        if (bits >> (status + 2) & 1) s += (s.empty() ? "" : ",") + std::to_string(status);
    return s.empty() ? "none" : s;
}

int errno_of(int status) { return status == 1 ? EDOM : status > 1 ? ERANGE : 0; }

int32_t g_own_zvl_count = 0;  // the environment's ZEL_ZVL count, 0 for none
void one_thread() { ZEL_Domain_Set_Num_Threads(1, ZEL_ZVL); }
void own_threads() { ZEL_Domain_Set_Num_Threads(g_own_zvl_count, ZEL_ZVL); }

// The parallel call of `name` on n elements gave the results hashed as `got`,
// whereas one thread gave `serial`: fine when some team's split gives them,
// each member's chunk computed alone.
template <class Call>
bool some_split_gives(Call call, int n, size_t bytes, bool two, uint64_t got, uint64_t serial) {
    if (got == serial) return true;
    const int most = std::min(ZEL_Domain_Get_Max_Threads(ZEL_ZVL), 16);
    one_thread();
    bool found = false;
    for (int p = 2; p <= most && !found; ++p) {
        std::memset(g_r1.data(), 0, g_r1.size() * sizeof(double));
        std::memset(g_r2.data(), 0, g_r2.size() * sizeof(double));
        const int chunk = n / p;
        for (int t = 0; t < p; ++t) {
            const int len = t + 1 < p ? chunk : n - t * chunk;
            if (len > 0) call(len, t * chunk);
        }
        uint64_t h = hash_bits(g_r1.data(), n * bytes, 0xCBF29CE484222325u);
        if (two) h = hash_bits(g_r2.data(), n * bytes, h);
        found = h == got;
    }
    own_threads();
    return found;
}

// Runs the calls of each mode and size, prints the serial call's line and
// checks the other. `call(n, at)` makes a call on the n elements from
// index `at`, whose results of `bytes` bytes each go to g_r1 (and g_r2 when
// `two`).
template <class Call>
void digest(const char* name, size_t bytes, bool two, Call call) {
    const auto whole = [&](int n) { call(n, 0); };
    for (int m = 0; m < 3; ++m) {
        unsigned mode = kModes[m] | ZVL_ERRMODE_ERRNO | ZVL_ERRMODE_EXCEPT;
        ZVLSETMODE(&mode);
        zvl::set_callback(note_status);
        for (const int n : {kSmall, kLarge}) {
            one_thread();
            zvl::clear_status();
            g_reported = 0;
            errno = 0;
            std::feclearexcept(kFlags);
            const uint64_t h = hashed_call(name, whole, n, bytes, two, kX87Extended);
            const int flags = std::fetestexcept(kFlags);
            const int error = errno;
            const int status = zvl::get_status();
            const uint32_t reported = g_reported;
            if (hashed_call(name, whole, n, bytes, two, kX87Double) != h) {
                std::printf("FAULT %s %s n=%d: other results at 53-bit x87 precision\n", name,
                            kModeNames[m], n);
                ++g_faults;
            }
            std::printf("%-14s %s %5d %016" PRIx64 " status %d errno %d flags 0x%02x reported %s\n",
                        name, kModeNames[m], n, h, status, error, flags,
                        status_set(reported).c_str());

            own_threads();
            zvl::clear_status();
            g_reported = 0;
            errno = 0;
            const uint64_t hp = hashed_call(name, whole, n, bytes, two, kX87Extended);
            const int status_p = zvl::get_status(), error_p = errno;
            const bool status_ok = reported ? (reported >> (status_p + 2) & 1) != 0 : status_p == 0;
            bool errno_ok = error_p == 0;
            for (int st = 1; st <= 4; ++st)
                errno_ok |= (reported >> (st + 2) & 1) && error_p == errno_of(st);
            if (!some_split_gives(call, n, bytes, two, hp, h) || g_reported != reported ||
                !status_ok || !errno_ok) {
                std::printf("FAULT %s %s n=%d on the environment's threads: %s, reported %s, "
                            "status %d, errno %d\n",
                            name, kModeNames[m], n, hp == h ? "same results" : "other results",
                            status_set(g_reported).c_str(), status_p, error_p);
                ++g_faults;
            }
        }
        zvl::clear_callback();
    }
}

template <class T>
const T* as(const std::vector<double>& v) {
    return reinterpret_cast<const T*>(v.data());
}
template <class T>
T* as_out(std::vector<double>& v) {
    return reinterpret_cast<T*>(v.data());
}

// One overload per entry shape; the element types come from the header.
template <class A, class R>
void run(const char* name, void (*f)(const int*, const A*, R*)) {
    digest(name, sizeof(R), false,
           [&](int n, int at) { f(&n, as<A>(g_a) + at, as_out<R>(g_r1) + at); });
}
template <class A, class B, class R>
void run(const char* name, void (*f)(const int*, const A*, const B*, R*)) {
    digest(name, sizeof(R), false, [&](int n, int at) {
        f(&n, as<A>(g_a) + at, as<B>(g_b) + at, as_out<R>(g_r1) + at);
    });
}
template <class A, class R>
void run(const char* name, void (*f)(const int*, const A*, R*, R*)) {
    digest(name, sizeof(R), true, [&](int n, int at) {
        f(&n, as<A>(g_a) + at, as_out<R>(g_r1) + at, as_out<R>(g_r2) + at);
    });
}
// Array and scalar: the scalar is the same for every chunk.
template <class A, class B, class R>
void run_scalar(const char* name, void (*f)(const int*, const A*, const B*, R*)) {
    digest(name, sizeof(R), false,
           [&](int n, int at) { f(&n, as<A>(g_a) + at, as<B>(g_b), as_out<R>(g_r1) + at); });
}

}  // namespace

int main() {
    const char* forced = std::getenv("ZVL_CPU_TYPE");
    if (forced && forced[0] == '5' && !__builtin_cpu_supports("avx")) {
        std::printf("cpu type 5 needs AVX\n");
        return 0;
    }
    // The environment is read first, so that its ZEL_ZVL count is kept.
    ZEL_Get_Max_Threads();
    g_own_zvl_count = std::max<int32_t>(zvl::thread_settings.domain_threads[3], 0);
#define ZVL_DIGEST_ROW(EXPORT, ...) run(#EXPORT, EXPORT);
#define ZVL_DIGEST_SCALAR_ROW(EXPORT, ...) run_scalar(#EXPORT, EXPORT);
    ZVL_FUNCTIONS(ZVL_DIGEST_ROW, ZVL_DIGEST_ROW, ZVL_DIGEST_ROW, ZVL_DIGEST_SCALAR_ROW,
                  ZVL_DIGEST_ROW, ZVL_DIGEST_ROW, ZVL_DIGEST_SCALAR_ROW, ZVL_DIGEST_ROW,
                  ZVL_DIGEST_ROW)
#undef ZVL_DIGEST_ROW
#undef ZVL_DIGEST_SCALAR_ROW
    return g_faults == 0 ? 0 : 1;
}
