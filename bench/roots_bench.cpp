// Nanoseconds per element of the root and rounding kernels, each cpu type
// and mode, at n = 1000, beside scalar C library loops and SLEEF's AVX
// routines. Arguments are uniform in [0.1, 100] (signed for the odd roots
// and the rounding family).
#include <benchmark/benchmark.h>

#include <cmath>
#include <random>
#include <string>
#include <vector>

#include "bench/sleef_avx.h"
#include "frame/kernel_sets.h"

namespace {

constexpr int kN = 1000;

const std::vector<double>& args(bool signed_args) {
    static std::vector<double> pos, sgn;
    if (pos.empty()) {
        std::mt19937_64 g(3);
        std::uniform_real_distribution<double> d(0.1, 100.0);
        for (int i = 0; i < kN; ++i) {
            pos.push_back(d(g));
            sgn.push_back(g() & 1 ? -pos.back() : pos.back());
        }
    }
    return signed_args ? sgn : pos;
}

template <class F>
void run(benchmark::State& s, bool signed_args, F f) {
    const std::vector<double>& a = args(signed_args);
    std::vector<double> r(kN), z(kN);
    for (auto _ : s) {
        f(a.data(), r.data(), z.data());
        benchmark::DoNotOptimize(r.data());
        benchmark::ClobberMemory();
    }
    // inverted rate of kN * 1e-9 per iteration: nanoseconds per element
    s.counters["ns/elem"] = benchmark::Counter(static_cast<double>(kN) * 1e-9,
                                              benchmark::Counter::kIsIterationInvariantRate |
                                                  benchmark::Counter::kInvert);
}

bool cpu_runs(int cpu) {
    return cpu != 5 || __builtin_cpu_supports("avx");
}

void register_all() {
    static const char* const labels[] = {"ex", "e7", "u8", "y8", "h8", "e9"};
    static const char* const modes[] = {"HA", "LA", "EP"};
    struct Root {
        const char* name;
        const zvl::KernelSet<zvl::KernelD1>* set;
        bool odd;
    };
    static const Root roots[] = {{"Sqrt", &zvl::kernels_VDSQRT, false},
                                 {"InvSqrt", &zvl::kernels_VDINVSQRT, false},
                                 {"Cbrt", &zvl::kernels_VDCBRT, true},
                                 {"InvCbrt", &zvl::kernels_VDINVCBRT, true}};
    for (const Root& f : roots)
        for (int cpu = 0; cpu < 6; ++cpu)
            for (int m = 0; m < 3; ++m) {
                if (!cpu_runs(cpu)) continue;
                const zvl::KernelD1 k = f.set->k[cpu][m];
                benchmark::RegisterBenchmark(
                    (std::string(f.name) + "/" + labels[cpu] + "/" + modes[m]).c_str(),
                    [k, odd = f.odd](benchmark::State& s) {
                        run(s, odd, [k](const double* a, double* r, double*) { k(kN, a, r); });
                    });
            }
    struct Rounding {
        const char* name;
        const zvl::RoundingSet<zvl::KernelD1>* set;
    };
    static const Rounding rounding[] = {{"Ceil", &zvl::kernels_VDCEIL},       {"Floor", &zvl::kernels_VDFLOOR},
                                        {"Trunc", &zvl::kernels_VDTRUNC},     {"Round", &zvl::kernels_VDROUND},
                                        {"Rint", &zvl::kernels_VDRINT},       {"NearbyInt", &zvl::kernels_VDNEARBYINT}};
    for (const Rounding& f : rounding)
        for (int cpu = 0; cpu < 6; ++cpu) {
            if (!cpu_runs(cpu)) continue;
            const zvl::KernelD1 k = f.set->k[cpu];
            benchmark::RegisterBenchmark((std::string(f.name) + "/" + labels[cpu]).c_str(),
                                         [k](benchmark::State& s) {
                                             run(s, true, [k](const double* a, double* r, double*) { k(kN, a, r); });
                                         });
        }
    for (int cpu = 0; cpu < 6; ++cpu) {
        if (!cpu_runs(cpu)) continue;
        const zvl::KernelD12 k = zvl::kernels_VDMODF.k[cpu];
        benchmark::RegisterBenchmark((std::string("Modf/") + labels[cpu]).c_str(), [k](benchmark::State& s) {
            run(s, true, [k](const double* a, double* r, double* z) { k(kN, a, r, z); });
        });
    }
}

// The C library, one element at a time.
#define LIBM_LOOP(name, odd, expr)                                                   \
    void name(benchmark::State& s) {                                                 \
        run(s, odd, [](const double* a, double* r, double*) {                        \
            for (int i = 0; i < kN; ++i) r[i] = expr;                                \
        });                                                                          \
    }                                                                                \
    BENCHMARK(name)
LIBM_LOOP(glibc_sqrt, false, std::sqrt(a[i]));
LIBM_LOOP(glibc_inv_sqrt, false, 1.0 / std::sqrt(a[i]));
LIBM_LOOP(glibc_cbrt, true, std::cbrt(a[i]));
LIBM_LOOP(glibc_inv_cbrt, true, 1.0 / std::cbrt(a[i]));
LIBM_LOOP(glibc_ceil, true, std::ceil(a[i]));
LIBM_LOOP(glibc_round, true, std::round(a[i]));
LIBM_LOOP(glibc_rint, true, std::rint(a[i]));
LIBM_LOOP(glibc_nearbyint, true, std::nearbyint(a[i]));

#define SLEEF_LOOP(name, odd, fn)                                                                \
    void name(benchmark::State& s) {                                                             \
        if (!__builtin_cpu_supports("avx")) {                                                    \
            s.SkipWithError("no AVX");                                                           \
            return;                                                                              \
        }                                                                                        \
        run(s, odd, [](const double* a, double* r, double*) { fn(kN, a, r); });                      \
    }                                                                                            \
    BENCHMARK(name)
SLEEF_LOOP(sleef_sqrt_u05, false, peer::sleef_sqrt_u05);
SLEEF_LOOP(sleef_sqrt_u35, false, peer::sleef_sqrt_u35);
SLEEF_LOOP(sleef_inv_sqrt_u05, false, peer::sleef_inv_sqrt_u05);
SLEEF_LOOP(sleef_cbrt_u10, true, peer::sleef_cbrt_u10);
SLEEF_LOOP(sleef_cbrt_u35, true, peer::sleef_cbrt_u35);
SLEEF_LOOP(sleef_inv_cbrt_u10, true, peer::sleef_inv_cbrt_u10);

const int registered = (register_all(), 0);

}  // namespace

BENCHMARK_MAIN();
