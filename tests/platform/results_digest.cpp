// Prints, for every function of the table and every accuracy mode, a digest
// of the results on a fixed set of arguments, with the status, errno and
// floating-point flags the call leaves. Built for Linux and for Windows from
// the same source, the two programs must print the same lines: the Windows
// build then carries over what the Linux build's accuracy tests measure.
//
// Each function runs once on 1001 elements (the serial path and the
// remainder loops) and once on 65539 (the parallel drivers).
//
// Each call is also made with the x87 unit at 53-bit precision, as programs
// built with MSVC start, and must give the same bits; and every call must
// leave the x87 control word and MXCSR as it found them. A breach prints a
// line starting with "FAULT" and makes the exit code 1.
#include <cerrno>
#include <cfenv>
#include <cinttypes>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <vector>

#include "frame/function_table.h"
#include "kernels/common/fp_guard.h"
#include "state/state.h"
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

// Runs the calls of each mode and size and prints their line. `call(n)`
// makes a call on n elements, whose results of `bytes` bytes each go to g_r1
// (and g_r2 when `two`).
template <class Call>
void digest(const char* name, size_t bytes, bool two, Call call) {
    for (int m = 0; m < 3; ++m) {
        unsigned mode = kModes[m] | ZVL_ERRMODE_ERRNO | ZVL_ERRMODE_EXCEPT;
        ZVLSETMODE(&mode);
        for (const int n : {kSmall, kLarge}) {
            zvl::clear_status();
            errno = 0;
            std::feclearexcept(kFlags);
            const uint64_t h = hashed_call(name, call, n, bytes, two, kX87Extended);
            const int flags = std::fetestexcept(kFlags);
            const int error = errno;
            const int status = zvl::get_status();
            if (hashed_call(name, call, n, bytes, two, kX87Double) != h) {
                std::printf("FAULT %s %s n=%d: other results at 53-bit x87 precision\n", name,
                            kModeNames[m], n);
                ++g_faults;
            }
            std::printf("%-14s %s %5d %016" PRIx64 " status %d errno %d flags 0x%02x\n", name,
                        kModeNames[m], n, h, status, error, flags);
        }
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
    digest(name, sizeof(R), false, [&](int n) { f(&n, as<A>(g_a), as_out<R>(g_r1)); });
}
template <class A, class B, class R>
void run(const char* name, void (*f)(const int*, const A*, const B*, R*)) {
    digest(name, sizeof(R), false,
           [&](int n) { f(&n, as<A>(g_a), as<B>(g_b), as_out<R>(g_r1)); });
}
template <class A, class R>
void run(const char* name, void (*f)(const int*, const A*, R*, R*)) {
    digest(name, sizeof(R), true,
           [&](int n) { f(&n, as<A>(g_a), as_out<R>(g_r1), as_out<R>(g_r2)); });
}

}  // namespace

int main() {
    const char* forced = std::getenv("ZVL_CPU_TYPE");
    if (forced && forced[0] == '5' && !__builtin_cpu_supports("avx")) {
        std::printf("cpu type 5 needs AVX\n");
        return 0;
    }
#define ZVL_DIGEST_ROW(EXPORT, ...) run(#EXPORT, EXPORT);
    ZVL_FUNCTIONS(ZVL_DIGEST_ROW, ZVL_DIGEST_ROW, ZVL_DIGEST_ROW, ZVL_DIGEST_ROW, ZVL_DIGEST_ROW,
                  ZVL_DIGEST_ROW, ZVL_DIGEST_ROW, ZVL_DIGEST_ROW, ZVL_DIGEST_ROW)
#undef ZVL_DIGEST_ROW
    return g_faults == 0 ? 0 : 1;
}
