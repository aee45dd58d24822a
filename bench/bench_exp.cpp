// Exp per element at n = 1000: each kernel by cpu type and mode, beside
// glibc's scalar exp and SLEEF's 1-ulp AVX exp. Reports ns per element
// (the "ns/elem" counter); asserts nothing.
#include <benchmark/benchmark.h>

#include <cmath>
#include <random>
#include <string>
#include <vector>

#include <immintrin.h>

// From sleef.h, which declares its AVX entries only to units built with
// -mavx; this file stays at the baseline and calls it from an AVX function.
extern "C" __m256d Sleef_expd4_u10avx(__m256d);

#include "frame/kernel_sets.h"
#include "state/state.h"

namespace {

constexpr int kN = 1000;

const std::vector<double>& inputs() {
    static const std::vector<double> a = [] {
        std::vector<double> v(kN);
        std::mt19937_64 g(1);
        std::uniform_real_distribution<double> u(-700.0, 700.0);
        for (double& x : v) x = u(g);
        return v;
    }();
    return a;
}

void per_element(benchmark::State& state) {
    state.counters["ns/elem"] = benchmark::Counter(
        static_cast<double>(state.iterations()) * kN,
        benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}

void kernel(benchmark::State& state, zvl::KernelD1 k) {
    const std::vector<double>& a = inputs();
    std::vector<double> r(kN);
    for (auto _ : state) {
        k(kN, a.data(), r.data());
        benchmark::DoNotOptimize(r.data());
        benchmark::ClobberMemory();
    }
    per_element(state);
}

void glibc(benchmark::State& state) {
    const std::vector<double>& a = inputs();
    std::vector<double> r(kN);
    for (auto _ : state) {
        for (int i = 0; i < kN; ++i) r[i] = std::exp(a[i]);
        benchmark::DoNotOptimize(r.data());
        benchmark::ClobberMemory();
    }
    per_element(state);
}

__attribute__((target("avx"))) void sleef_avx_loop(const double* a, double* r) {
    for (int i = 0; i < kN; i += 4) _mm256_storeu_pd(r + i, Sleef_expd4_u10avx(_mm256_loadu_pd(a + i)));
}

void sleef_u10_avx(benchmark::State& state) {
    const std::vector<double>& a = inputs();
    std::vector<double> r(kN);
    for (auto _ : state) {
        sleef_avx_loop(a.data(), r.data());
        benchmark::DoNotOptimize(r.data());
        benchmark::ClobberMemory();
    }
    per_element(state);
}

const int registered = [] {
    static const char* const modes[] = {"HA", "LA", "EP"};
    const bool avx = __builtin_cpu_supports("avx");
    for (int cpu = 5; cpu >= 0; --cpu) {
        if (cpu == 5 && !avx) continue;
        for (int col = 0; col < 3; ++col) {
            const std::string name = "vdExp/cpu" + std::to_string(cpu) + "/" + modes[col];
            benchmark::RegisterBenchmark(name.c_str(), kernel, zvl::kernels_VDEXP.k[cpu][col]);
        }
    }
    benchmark::RegisterBenchmark("glibc_exp", glibc);
    if (avx) benchmark::RegisterBenchmark("Sleef_expd4_u10avx", sleef_u10_avx);
    return 0;
}();

}  // namespace

BENCHMARK_MAIN();
