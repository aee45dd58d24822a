// What zvl-report measures for each function, shared by its text and HTML
// writers.
#pragma once

#include <string>
#include <vector>

#include "tools/accuracy/budgets.h"

namespace zvl_tools {

// In cache, streaming from memory, and streaming far beyond the caches.
constexpr int kSizes = 3;
constexpr size_t kSizeN[kSizes] = {1000, 1000000, 10000000};
constexpr const char* kSizeLabel[kSizes] = {"1e3", "1e6", "1e7"};

struct PeerResult {
    const Peer* peer;
    bool ran;
    const char* why;  // when it did not run
    Stats accuracy;   // over the same samples as the kernels
    double ns[kSizes];
};

struct FunctionReport {
    const Function* f;
    Table acc;  // per-sample errors kept for the plots
    const Budget* budget[kModes];
    bool timed[kCpuTypes][kModes];
    double ns[kCpuTypes][kModes][kSizes];
    std::vector<PeerResult> peers;  // the baseline first
};

struct ReportContext {
    std::string version;   // the library's, from zvl_version.h
    std::string commit;    // git describe of the tree built
    std::string compiler;
    std::string machine;   // processor model
    std::string features;  // what of SSE3..AVX2 it has
    std::string date;
    std::string kernel_set;  // built-for and own vendor, cpu type chosen, and why
    int headline_cpu;        // the summary's cpu type (see kernel_set)
    size_t samples;
    uint64_t seed;
    double seconds;  // the whole run
    // The loop r[i] = 1.5 * a[i] at each size: what moving the data costs
    // (0 when timing is off).
    double copy_ns[kSizes];
};

// The largest value of a budget's measure over the cpu types, and where.
struct Worst {
    double value = 0;
    int cpu = -1;
};
Worst worst_over_cpus(const FunctionReport& r, int mode);

// Speed-up of cpu type `cpu`'s kernel over the baseline at size s, or 0.
double speedup(const FunctionReport& r, int cpu, int mode, int s);

// Whether that kernel is slower than the baseline at size s.
bool slower_than_baseline(const FunctionReport& r, int cpu, int mode, int s);

// The instruction set a cpu type's kernels may use, as peers are labelled.
Isa isa_of_cpu(int cpu);

// The fastest peer that ran at n = 1000 (the baseline included) among those
// needing at most `most` (every peer for Isa::Avx2Fma), or null.
const PeerResult* best_peer(const FunctionReport& r, Isa most);

// "inf ulp at 0x1p+0 (1), got nan" style text of a peer's or kernel's worst
// sample in ulps.
std::string worst_input(const Table& t, const Stats& s);

bool write_html(const std::string& path, const std::vector<FunctionReport>& reports,
                const ReportContext& ctx, std::string* error);

// Writes text to path whole, or says why not in *error.
bool write_text(const std::string& path, const std::string& text, std::string* error);

// The speed table of README.md in Markdown: per function and mode the time
// at n = 1000 on every cpu type and at n = 1e7 on cpu type 5, the baseline,
// and the fastest peer of cpu type 5's instruction set (AVX) and of any,
// each with its time over cpu type 5's (above 1: the kernel is faster).
bool write_markdown(const std::string& path, const std::vector<FunctionReport>& reports,
                    const ReportContext& ctx, std::string* error);

}  // namespace zvl_tools
