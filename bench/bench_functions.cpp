// Time per element of every measured function: each accuracy mode and cpu
// type (kernels called directly, cpu types the processor cannot run are
// left out), beside the function's baseline loop and its glibc vector and
// SLEEF peers, at n = 1000 (in cache), 1e5, 1e6 and 1e7 (streaming), and a
// plain scaling loop at the same sizes for what memory alone costs.
//
// The complex functions (zexp, zln, ...) run beside the loop over glibc's
// function of the same name.
//
// Names read <function>/<mode>/<cpu label>/<n>, <function>/peer/<peer>/<n> and
// memory/scale_loop/<n>,
// so --benchmark_filter='^exp/HA/' or '/1000$' picks a slice. The counter
// ns_per_elem is the time per element (shown in seconds with an SI prefix).
#include <benchmark/benchmark.h>

#include <cstdio>
#include <string>
#include <vector>

#include "tools/common/complex_rows.h"
#include "tools/common/functions.h"
#include "tools/common/rng.h"

namespace {

using namespace zvl_tools;

// In cache, from the second-level cache, streaming from memory and
// streaming well beyond the last-level cache.
constexpr size_t kSizes[] = {1000, 100000, 1000000, 10000000};

// The inputs of one function and size, made when first needed: only one set
// is alive at a time, as the benchmarks of a function run together.
struct Inputs {
    const FunctionRow* row = nullptr;
    size_t n = 0;
    std::vector<double> a, b, r;
};

Inputs& inputs_for(const FunctionRow& row, size_t n) {
    static Inputs in;
    if (in.row != &row || in.n != n) {
        in.row = &row;
        in.n = n;
        timing_inputs(row, n, &in.a, &in.b);
        in.r.assign(n, 0.0);
    }
    return in;
}

void count_elements(benchmark::State& state, size_t n) {
    state.SetItemsProcessed(static_cast<int64_t>(state.iterations() * n));
    state.counters["ns_per_elem"] =
        benchmark::Counter(static_cast<double>(n), benchmark::Counter::kIsIterationInvariantRate |
                                                       benchmark::Counter::kInvert);
}

void run(benchmark::State& state, const FunctionRow* row, Callable fn, size_t n) {
    Inputs& in = inputs_for(*row, n);
    const double* b = in.b.empty() ? nullptr : in.b.data();
    for (auto _ : state) {
        fn(static_cast<int32_t>(n), in.a.data(), b, in.r.data());
        benchmark::DoNotOptimize(in.r.data());
        benchmark::ClobberMemory();
    }
    count_elements(state, n);
}

std::string slug(const char* label) {
    std::string s(label);
    for (char& c : s)
        if (c == ' ' || c == ',' || c == '/') c = '_';
    return s;
}

// What memory alone costs at each size: r[i] = 1.5 * a[i], one read and
// one write per element like every kernel. A kernel at n = 1e7 should cost
// no more than its time at n = 1e5 plus a third of this loop's, or this
// loop's, whichever is larger.
__attribute__((noinline)) void scale_loop(size_t n, const double* a, double* r) {
    for (size_t i = 0; i < n; ++i) r[i] = 1.5 * a[i];
}

void run_scale(benchmark::State& state, size_t n) {
    std::vector<double> a(n, 1.25), r(n, 0.0);
    for (auto _ : state) {
        scale_loop(n, a.data(), r.data());
        benchmark::DoNotOptimize(r.data());
        benchmark::ClobberMemory();
    }
    count_elements(state, n);
}

void register_all() {
    for (size_t n : kSizes)
        benchmark::RegisterBenchmark(("memory/scale_loop/" + std::to_string(n)).c_str(), run_scale, n);
    for (const Function& f : functions()) {
        const FunctionRow* row = f.row;
        for (size_t n : kSizes) {
            const std::string size = "/" + std::to_string(n);
            const int modes = has_modes(f) ? kModes : 1;
            for (int m = 0; m < modes; ++m)
                for (int cpu = kCpuTypes - 1; cpu >= 0; --cpu) {
                    if (!cpu_runnable(cpu)) continue;
                    const std::string name = std::string(row->name) + "/" + mode_label(f, m) +
                                             "/" + kCpuLabels[cpu] + size;
                    benchmark::RegisterBenchmark(name.c_str(), run, row,
                                                 timed_kernel(f, cpu, static_cast<Mode>(m)), n);
                }
            for (const Peer* p : peers_of(*row)) {
                const char* why = nullptr;
                const Callable c = bind_peer(*p, f.shape, &why);
                if (!c) {
                    if (n == kSizes[0])
                        std::fprintf(stderr, "%s: %s skipped (%s)\n", row->name, p->label, why);
                    continue;
                }
                const std::string name = std::string(row->name) + "/peer/" + slug(p->label) + size;
                benchmark::RegisterBenchmark(name.c_str(), run, row, c, n);
            }
        }
    }
}

// Complex functions: n elements of the row's timing region (and their
// second arguments for Pow and Powx); cpu < 0 times the baseline loop.
void run_complex(benchmark::State& state, const ComplexFunction* f, int cpu, int mode, size_t n) {
    std::vector<ZVLComplex16> a, b, r(n);
    complex_timing_inputs(*f->row, n, 1, &a, &b);
    for (auto _ : state) {
        call_complex(*f, cpu, mode, static_cast<int32_t>(n), a.data(), b.data(), r.data());
        benchmark::DoNotOptimize(r.data());
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(static_cast<int64_t>(state.iterations() * n));
    state.counters["ns_per_elem"] =
        benchmark::Counter(static_cast<double>(n), benchmark::Counter::kIsIterationInvariantRate |
                                                       benchmark::Counter::kInvert);
}

void register_complex() {
    for (const ComplexFunction& f : complex_functions()) {
        const ComplexRow* row = f.row;
        for (size_t n : {size_t{1000}, size_t{1000000}}) {
            const std::string size = "/" + std::to_string(n);
            for (int m = 0; m < kModes; ++m)
                for (int cpu = kCpuTypes - 1; cpu >= 0; --cpu) {
                    if (!cpu_runnable(cpu)) continue;
                    const std::string name =
                        std::string(row->name) + "/" + kModeNames[m] + "/" + kCpuLabels[cpu] + size;
                    benchmark::RegisterBenchmark(name.c_str(), run_complex, &f, cpu, m, n);
                }
            const std::string name = std::string(row->name) + "/peer/" + slug(row->baseline_label) + size;
            benchmark::RegisterBenchmark(name.c_str(), run_complex, &f, -1, 0, n);
        }
    }
}

const int registered = (register_all(), register_complex(), 0);

}  // namespace
