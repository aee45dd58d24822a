// Prints, for each copy of the support set and each routine, a digest of
// its results on a fixed set of arguments and the flags the routine raised;
// the complex scalar routines likewise, on pairs of those arguments
// rounded to double.
// With ZVL_CPU_TYPE set only that cpu type's copy is printed: the Windows
// build then prints the same lines as the Linux build
// (ext_digest_matches_linux), which carries the Linux build's accuracy
// tests over to the DLL. Without it every copy is printed, and a copy whose
// digest differs from cpu type 0's prints a line starting with "FAULT" and
// makes the exit code 1.
#include <cfenv>
#include <cinttypes>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <iterator>
#include <vector>

#include "kernels/common/fp_guard.h"
#include "tests/kernels/complex/ext_set.h"

namespace {

uint64_t g_seed = 0x9E3779B97F4A7C15u;
uint64_t next_random() {
    g_seed = g_seed * 6364136223846793005u + 1442695040888963407u;
    return g_seed >> 11 ^ g_seed << 29;
}

long double ld(uint64_t sig, unsigned sign_exp) { return ext_from_bits(sig, sign_exp); }

// Special values, then random significands with exponents in turn from a
// narrow band around 1, a wide band, and the whole range.
std::vector<long double> make_arguments() {
    std::vector<long double> v = {0.0L, -0.0L, 1.0L, -1.0L, 0.5L, 2.0L, 0x1p-16445L, -0x1p-16440L,
                                  ld(0x8000000000000000u, 0x7fff), ld(0x8000000000000000u, 0xffff),
                                  ld(0xc000000000000000u, 0x7fff), ld(0x8000000000000001u, 0x7fff),
                                  0xffffffffffffffffp16320L, 0x1p-16382L, 11356.5L, -11355.0L,
                                  3.14159265358979323846L, 1e22L, 1e300L, 1e4000L, 0x1p30L, 0x1p17L,
                                  1.0L - 0x1p-64L, 1.0L + 0x1p-63L, 0.75L, 23.0L, 25.0L, -0x1p-33L};
    const int bands[3][2] = {{-6, 6}, {-80, 80}, {-16445, 16383}};
    for (int i = 0; i < 3000; ++i) {
        const uint64_t r = next_random();
        const int* b = bands[i % 3];
        const int e = b[0] + static_cast<int>(next_random() % static_cast<uint64_t>(b[1] - b[0] + 1));
        v.push_back(ld(r | 0x8000000000000000u, static_cast<unsigned>(16383 + e) | (r & 1 ? 0x8000u : 0u)));
    }
    return v;
}

const std::vector<long double> g_args = make_arguments();

uint64_t hash_ld(long double x, uint64_t h) {
    unsigned char b[10];
    std::memcpy(b, &x, 10);
    for (unsigned char c : b) h = (h ^ c) * 0x100000001B3u;
    return h;
}

constexpr int kFlags = FE_INVALID | FE_DIVBYZERO | FE_OVERFLOW | FE_UNDERFLOW | FE_INEXACT;

struct Line {
    uint64_t hash;
    int flags;
};

template <class Body>
Line digest(Body body) {
    std::feclearexcept(FE_ALL_EXCEPT);
    uint64_t h = 0xCBF29CE484222325u;
    for (size_t i = 0; i < g_args.size(); ++i) h = body(i, h);
    return {h, std::fetestexcept(kFlags)};
}

// The routines' digests, in a fixed order.
std::vector<Line> digests(int cpu) {
    const ExtSet& s = *ext_sets[cpu];
    std::vector<Line> out;
    for (int f = 0; f < kExtUnaryCount; ++f)
        out.push_back(digest([&](size_t i, uint64_t h) { return hash_ld(s.unary[f](g_args[i]), h); }));
    out.push_back(digest([&](size_t i, uint64_t h) {
        const double d = static_cast<double>(g_args[i]);
        return hash_ld(s.fabs_d(&d), h);
    }));
    for (ExtTwoOut two : {s.ext_sincos, s.ext_sinhcosh}) {
        out.push_back(digest([&](size_t i, uint64_t h) {
            long double a, b;
            two(g_args[i], &a, &b);
            return hash_ld(b, hash_ld(a, h));
        }));
    }
    out.push_back(digest([&](size_t i, uint64_t h) {
        long double x = g_args[i] < 0 ? -g_args[i] : g_args[i];
        if (!(x >= 1.0L) || x != x || x > 0xffffffffffffffffp16320L) return h;
        long double a, b;
        const int j = s.ext_reduce_pio4(g_args[i], &a, &b);
        return hash_ld(b, hash_ld(a, (h ^ static_cast<unsigned>(j)) * 0x100000001B3u));
    }));
    out.push_back(digest([&](size_t i, uint64_t h) {
        return hash_ld(s.ext_atan2(g_args[i], g_args[(i * 7 + 3) % g_args.size()]), h);
    }));
    std::vector<ComplexScalar> complex(std::begin(s.complex), std::end(s.complex));
    complex.push_back(sqrt_sets[cpu]->fast);
    complex.push_back(sqrt_sets[cpu]->vector_one);
    for (ComplexScalar f : complex) {
        out.push_back(digest([&](size_t i, uint64_t h) {
            const ZVLComplex16 z = {static_cast<double>(g_args[i]),
                                    static_cast<double>(g_args[(i * 7 + 3) % g_args.size()])};
            ZVLComplex16 w;
            f(&w, &z);
            return hash_ld(w.imag, hash_ld(w.real, h));
        }));
    }
    return out;
}

const char* routine_name(size_t k) {
    static const char* const extra[] = {"fabs_d", "ext_sincos", "ext_sinhcosh", "ext_reduce_pio4",
                                        "ext_atan2"};
    constexpr size_t kExtra = sizeof extra / sizeof extra[0];
    if (k < kExtUnaryCount) return ext_unary_names[k];
    if (k < kExtUnaryCount + kExtra) return extra[k - kExtUnaryCount];
    static const char* const roots[] = {"zSqrt_fast", "zSqrt_vector"};
    const size_t j = k - kExtUnaryCount - kExtra;
    return j < kComplexScalarCount ? complex_scalar_names[j] : roots[j - kComplexScalarCount];
}

}  // namespace

int main() {
    X87Guard<0x300> guard;
    const char* forced = std::getenv("ZVL_CPU_TYPE");
    int first = 0, last = 5;
    if (forced && forced[0] >= '0' && forced[0] <= '5') first = last = forced[0] - '0';
    int faults = 0;
    const std::vector<Line> ref = digests(0);
    for (int c = first; c <= last; ++c) {
        if (c == 5 && !__builtin_cpu_supports("avx")) {
            std::printf("cpu type 5 skipped: no AVX\n");
            continue;
        }
        const std::vector<Line> d = c == 0 ? ref : digests(c);
        for (size_t k = 0; k < d.size(); ++k) {
            std::printf("%s %-16s %016" PRIx64 " flags 0x%02x\n", ext_sets[c]->label, routine_name(k),
                        d[k].hash, d[k].flags);
            if (d[k].hash != ref[k].hash || d[k].flags != ref[k].flags) {
                std::printf("FAULT %s %s differs from cpu type 0's copy\n", ext_sets[c]->label,
                            routine_name(k));
                ++faults;
            }
        }
    }
    return faults == 0 ? 0 : 1;
}
