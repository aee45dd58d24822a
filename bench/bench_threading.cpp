// Threading benchmarks.
//
// BM_Threads: VDINV and VDDIV on long arrays (a million elements, within
// the last-level cache, and ten million, from memory) through the exported entry,
// with the ZEL_ALL count at 1 (the kernel runs directly) and at 2 (the
// parallel driver forks). Dynamic mode is turned off so that the count is
// used as set. Cpu type 5 never goes parallel, so unless ZVL_CPU_TYPE is
// set the run uses cpu type 4.
//
// BM_KernelCost: the Inv and Div kernels alone, per cpu type and accuracy
// mode, on 4096 elements in cache. The LA/HA time ratios of these runs
// scale the LA and EP rows of the real threshold table.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <random>
#include <vector>

#include "frame/kernel_sets.h"
#include "zvl.h"

namespace {

// Before the first call, which fixes the cpu type for the process.
[[maybe_unused]] const bool kCpuTypeChosen = setenv("ZVL_CPU_TYPE", "4", 0) == 0;

std::vector<double> uniform(size_t n, double lo, double hi, unsigned seed) {
    std::mt19937_64 g(seed);
    std::uniform_real_distribution<double> d(lo, hi);
    std::vector<double> v(n);
    for (double& x : v) x = d(g);
    return v;
}

void BM_Threads(benchmark::State& state) {
    const bool div = state.range(0) != 0;
    ZEL_Set_Dynamic(0);
    ZEL_Set_Num_Threads(static_cast<int>(state.range(1)));
    const int n = static_cast<int>(state.range(2));
    const std::vector<double> a = uniform(n, 1.0, 2.0, 1), b = uniform(n, 1.0, 2.0, 2);
    std::vector<double> r(n);
    for (auto _ : state) {
        if (div)
            VDDIV(&n, a.data(), b.data(), r.data());
        else
            VDINV(&n, a.data(), r.data());
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * n);
}
BENCHMARK(BM_Threads)
    ->ArgNames({"div", "threads", "n"})
    ->ArgsProduct({{0, 1}, {1, 2}, {1 << 20, 10000000}})
    ->UseRealTime()
    // On a machine shared with other work the fastest repetition shows what
    // the split can do; the median shows what it did.
    ->ComputeStatistics("min",
                        [](const std::vector<double>& v) {
                            return *std::min_element(v.begin(), v.end());
                        })
    ->Unit(benchmark::kMillisecond);

void BM_KernelCost(benchmark::State& state) {
    const bool div = state.range(0) != 0;
    const int cpu = static_cast<int>(state.range(1));
    const int col = static_cast<int>(state.range(2));
    if (cpu == 5 && !__builtin_cpu_supports("avx")) {
        state.SkipWithError("cpu type 5 needs AVX");
        return;
    }
    constexpr int n = 4096;
    const std::vector<double> a = uniform(n, 1.0, 2.0, 3), b = uniform(n, 1.0, 2.0, 4);
    std::vector<double> r(n);
    const zvl::KernelD1 inv = zvl::kernels_VDINV.k[cpu][col];
    const zvl::KernelD2 dv = zvl::kernels_VDDIV.k[cpu][col];
    for (auto _ : state) {
        if (div)
            dv(n, a.data(), b.data(), r.data());
        else
            inv(n, a.data(), r.data());
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * n);
}
BENCHMARK(BM_KernelCost)
    ->ArgNames({"div", "cpu", "mode"})
    ->ArgsProduct({{0, 1}, {0, 1, 2, 3, 4, 5}, {0, 1, 2}});

}  // namespace
