// Pow and Powx per element at n = 1000, every cpu type and mode, beside a
// glibc pow loop and SLEEF's 4-lane AVX pow (1-ulp variant).
#include <benchmark/benchmark.h>

#include <cmath>
#include <random>
#include <vector>

#include "frame/kernel_sets.h"

// pow_bench_sleef.cpp, built for AVX: n a multiple of 4.
void sleef_pow_avx(int n, const double* x, const double* y, double* r);

namespace {

constexpr int kN = 1000;

struct Data {
    std::vector<double> x, y, r;
    Data() : x(kN), y(kN), r(kN) {
        std::mt19937_64 g(1);
        std::uniform_real_distribution<double> ux(0.01, 100.0), uy(-30.0, 30.0);
        for (int i = 0; i < kN; ++i) x[i] = ux(g), y[i] = uy(g);
    }
};
Data& data() {
    static Data d;
    return d;
}

void per_element(benchmark::State& s) {
    s.SetItemsProcessed(static_cast<int64_t>(s.iterations()) * kN);
    s.counters["ns/element"] = benchmark::Counter(
        static_cast<double>(s.iterations()) * kN, benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}

void pow_kernel(benchmark::State& s) {
    const int cpu = static_cast<int>(s.range(0)), col = static_cast<int>(s.range(1));
    if (cpu == 5 && !__builtin_cpu_supports("avx")) return s.SkipWithError("no AVX");
    Data& d = data();
    const zvl::KernelD2 k = zvl::kernels_VDPOW.k[cpu][col];
    for (auto _ : s) {
        k(kN, d.x.data(), d.y.data(), d.r.data());
        benchmark::DoNotOptimize(d.r.data());
    }
    per_element(s);
}

void powx_kernel(benchmark::State& s) {
    const int cpu = static_cast<int>(s.range(0)), col = static_cast<int>(s.range(1));
    if (cpu == 5 && !__builtin_cpu_supports("avx")) return s.SkipWithError("no AVX");
    Data& d = data();
    const zvl::KernelDx k = zvl::kernels_VDPOWX.k[cpu][col];
    for (auto _ : s) {
        k(kN, d.x.data(), 2.5, d.r.data());
        benchmark::DoNotOptimize(d.r.data());
    }
    per_element(s);
}

void glibc_pow(benchmark::State& s) {
    Data& d = data();
    for (auto _ : s) {
        for (int i = 0; i < kN; ++i) d.r[i] = std::pow(d.x[i], d.y[i]);
        benchmark::DoNotOptimize(d.r.data());
    }
    per_element(s);
}

void sleef_pow_u10avx(benchmark::State& s) {
    if (!__builtin_cpu_supports("avx")) return s.SkipWithError("no AVX");
    Data& d = data();
    for (auto _ : s) {
        sleef_pow_avx(kN, d.x.data(), d.y.data(), d.r.data());
        benchmark::DoNotOptimize(d.r.data());
    }
    per_element(s);
}

void modes(benchmark::internal::Benchmark* b) {
    b->ArgNames({"cpu", "mode"});
    for (int cpu = 5; cpu >= 0; --cpu)
        for (int col = 0; col < 3; ++col) b->Args({cpu, col});
}

BENCHMARK(pow_kernel)->Apply(modes);
BENCHMARK(powx_kernel)->Apply(modes);
BENCHMARK(glibc_pow);
BENCHMARK(sleef_pow_u10avx);

}  // namespace
