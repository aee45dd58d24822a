// Throughput of the Ln and Log10 kernels per cpu type and mode, at n = 1000,
// beside glibc's scalar log and log10 and SLEEF's 4-lane AVX u10 versions.
// Inputs are log-uniform over [2^-20, 2^20]. Reports ns per element.
#include <benchmark/benchmark.h>
#include <immintrin.h>

#include <cmath>
#include <random>
#include <string>
#include <vector>

#include "frame/kernel_sets.h"

extern "C" {
__m256d Sleef_logd4_u10avx(__m256d);
__m256d Sleef_log10d4_u10avx(__m256d);
}

namespace {

constexpr int kN = 1000;

const std::vector<double>& inputs() {
    static const std::vector<double> a = [] {
        std::mt19937_64 g(7);
        std::uniform_real_distribution<double> e(-20.0, 20.0);
        std::vector<double> v(kN);
        for (double& x : v) x = std::exp2(e(g));
        return v;
    }();
    return a;
}

template <class Loop>
void run(benchmark::State& state, Loop loop) {
    const std::vector<double>& a = inputs();
    std::vector<double> r(kN);
    for (auto _ : state) {
        loop(a.data(), r.data());
        benchmark::DoNotOptimize(r.data());
        benchmark::ClobberMemory();
    }
    state.counters["ns/elt"] = benchmark::Counter(
        static_cast<double>(kN), benchmark::Counter::kIsIterationInvariantRate |
                                     benchmark::Counter::kInvert);
}

__attribute__((target("avx"))) void sleef_loop(__m256d (*f)(__m256d), const double* a,
                                                double* r) {
    for (int i = 0; i < kN; i += 4) _mm256_storeu_pd(r + i, f(_mm256_loadu_pd(a + i)));
}

void register_all() {
    const bool avx = __builtin_cpu_supports("avx");
    const char* modes[] = {"HA", "LA", "EP"};
    const struct {
        const char* name;
        const zvl::KernelSet<zvl::KernelD1>* set;
        double (*libm)(double);
        __m256d (*sleef)(__m256d);
    } fams[] = {{"Ln", &zvl::kernels_VDLN, std::log, Sleef_logd4_u10avx},
                {"Log10", &zvl::kernels_VDLOG10, std::log10, Sleef_log10d4_u10avx}};
    for (const auto& f : fams) {
        for (int cpu = 0; cpu < 6; ++cpu) {
            if (cpu == 5 && !avx) continue;
            for (int col = 0; col < 3; ++col) {
                const zvl::KernelD1 k = f.set->k[cpu][col];
                benchmark::RegisterBenchmark(
                    (std::string(f.name) + "/cpu" + std::to_string(cpu) + "/" + modes[col]).c_str(),
                    [k](benchmark::State& s) {
                        run(s, [k](const double* a, double* r) { k(kN, a, r); });
                    });
            }
        }
        const auto libm = f.libm;
        benchmark::RegisterBenchmark((std::string(f.name) + "/glibc").c_str(),
                                     [libm](benchmark::State& s) {
                                         run(s, [libm](const double* a, double* r) {
                                             for (int i = 0; i < kN; ++i) r[i] = libm(a[i]);
                                         });
                                     });
        if (avx) {
            const auto sl = f.sleef;
            benchmark::RegisterBenchmark((std::string(f.name) + "/sleef_u10avx").c_str(),
                                         [sl](benchmark::State& s) {
                                             run(s, [sl](const double* a, double* r) {
                                                 sleef_loop(sl, a, r);
                                             });
                                         });
        }
    }
}

}  // namespace

int main(int argc, char** argv) {
    register_all();
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
