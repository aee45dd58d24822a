// zvl-report: for every measured function and accuracy mode, the largest
// error against MPFR on every cpu type, the time per element on every cpu
// type, and the speed against the function's baseline loop and its peers;
// printed as tables and written as one self-contained HTML page.
//
//   zvl-report [--out page.html] [--samples N] [--seed S] [--quick]
//              [--data accuracy.txt] [--markdown speed.md] [--no-timing]
//              [--complex-only] [--only <complex function>]
//
// --data writes each function's largest errors per mode and cpu type, with
// their inputs, for docs/reference.md (tools/bindings/generate.py reads
// it); --markdown writes README.md's speed table; --no-timing measures
// accuracy only and writes no page; --complex-only measures the complex
// functions alone and writes no page; --only <name> measures one of them.
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <string>

#include "base/cpu_type.h"
#include "base/cpuid.h"
#include "build_info.h"
#include "zvl_version.h"
#include "tools/accuracy/complex.h"
#include "tools/common/rng.h"
#include "tools/report/report.h"
#include "tools/report/timing.h"
#include "tools/ulp/options.h"

namespace zvl_tools {

Worst worst_over_cpus(const FunctionReport& r, int mode) {
    Worst w;
    for (int cpu = kCpuTypes - 1; cpu >= 0; --cpu) {
        if (!r.acc.ran[cpu][mode]) continue;
        const Stats& s = r.acc.stats[cpu][mode];
        const double v = r.budget[mode] && r.budget[mode]->relative ? s.max_rel : s.max_ulp;
        if (w.cpu < 0 || v > w.value) w = {v, cpu};
    }
    return w;
}

double speedup(const FunctionReport& r, int cpu, int mode, int s) {
    if (r.peers.empty() || !r.peers[0].ran || !r.timed[cpu][mode]) return 0;
    return r.peers[0].ns[s] / r.ns[cpu][mode][s];
}

bool slower_than_baseline(const FunctionReport& r, int cpu, int mode, int s) {
    const double up = speedup(r, cpu, mode, s);
    return up > 0 && up < 1;
}

Isa isa_of_cpu(int cpu) {
    return cpu == 5 ? Isa::Avx : cpu >= 3 ? Isa::Sse41 : Isa::Base;
}

const PeerResult* best_peer(const FunctionReport& r, Isa most) {
    const PeerResult* best = nullptr;
    for (const PeerResult& p : r.peers)
        if (p.ran && p.ns[0] > 0 && p.peer->isa <= most && (!best || p.ns[0] < best->ns[0]))
            best = &p;
    return best;
}

std::string worst_input(const Table& t, const Stats& s) {
    const size_t i = s.worst_ulp;
    char buf[32];
    std::snprintf(buf, sizeof buf, "%.3f", s.max_ulp);
    std::string text = std::string(std::isinf(s.max_ulp) ? "inf" : buf) + " ulp";
    if (i >= t.samples.size()) return text;
    text += " at " + show(t.samples.a[i]);
    if (!t.samples.b.empty()) text += ", " + show(t.samples.b[i]);
    return text + ", got " + show(s.got_ulp);
}

}  // namespace zvl_tools

namespace {

using namespace zvl_tools;

std::string machine_model() {
    FILE* f = std::fopen("/proc/cpuinfo", "r");
    std::string model = "unknown processor";
    if (!f) return model;
    char line[512];
    while (std::fgets(line, sizeof line, f)) {
        if (std::strncmp(line, "model name", 10) == 0) {
            const char* colon = std::strchr(line, ':');
            if (colon) {
                model = colon + 2;
                while (!model.empty() && (model.back() == '\n' || model.back() == ' '))
                    model.pop_back();
            }
            break;
        }
    }
    std::fclose(f);
    return model;
}

std::string feature_list() {
    const struct {
        bool has;
        const char* name;
    } features[] = {
        {bool(__builtin_cpu_supports("sse3")), "sse3"},
        {bool(__builtin_cpu_supports("ssse3")), "ssse3"},
        {bool(__builtin_cpu_supports("sse4.1")), "sse4.1"},
        {bool(__builtin_cpu_supports("sse4.2")), "sse4.2"},
        {bool(__builtin_cpu_supports("avx")), "avx"},
        {bool(__builtin_cpu_supports("avx2")), "avx2"},
        {bool(__builtin_cpu_supports("fma")), "fma"},
    };
    std::string s;
    for (const auto& f : features) {
        if (!f.has) continue;
        if (!s.empty()) s += " ";
        s += f.name;
    }
    return s;
}

std::string today() {
    const std::time_t t = std::time(nullptr);
    char buf[64];
    std::strftime(buf, sizeof buf, "%Y-%m-%d %H:%M UTC", std::gmtime(&t));
    return buf;
}

int highest_runnable() {
    for (int cpu = kCpuTypes - 1; cpu > 0; --cpu)
        if (cpu_runnable(cpu)) return cpu;
    return 0;
}

// The kernel set the library gives this process and why: the vendor it was
// built for, the processor's own, the cpu type chosen. The summary's cpu
// type is the chosen one, or, when the vendors differ and so every call
// runs the baseline, the one a build for this processor's vendor chooses.
void describe_kernel_set(ReportContext* ctx) {
    char own[13];
    zvl::cpu_vendor(zvl::cpuid, own);
    const char* built = zvl::build_cpu_vendor();
    const uint32_t chosen = zvl::cpu_type();
    char buf[512];
    if (chosen > 5) {
        std::snprintf(buf, sizeof buf,
                      "library built for %s processors, this processor is %s; cpu type %d, "
                      "forced by ZVL_CPU_TYPE, has no kernels",
                      built, own, static_cast<int>(chosen));
        ctx->headline_cpu = highest_runnable();
    } else if (chosen != zvl::detect_cpu_type(zvl::cpuid)) {
        std::snprintf(buf, sizeof buf,
                      "library built for %s processors, this processor is %s; cpu type %u (%s), "
                      "forced by ZVL_CPU_TYPE",
                      built, own, chosen, kCpuLabels[chosen]);
        ctx->headline_cpu = cpu_runnable(static_cast<int>(chosen)) ? static_cast<int>(chosen)
                                                                   : highest_runnable();
    } else if (!zvl::vendor_matches(zvl::cpuid)) {
        ctx->headline_cpu = highest_runnable();
        std::snprintf(buf, sizeof buf,
                      "library built for %s processors, this processor is %s; cpu type 0 (ex): "
                      "the vendors differ, so every call runs the baseline kernels. A build for "
                      "this processor (cmake -DZVL_CPU_VENDOR=%s) runs cpu type %d (%s) here, "
                      "the type the summary shows",
                      built, own, own, ctx->headline_cpu, kCpuLabels[ctx->headline_cpu]);
    } else {
        std::snprintf(buf, sizeof buf,
                      "library built for %s processors, this processor is %s; cpu type %u (%s)",
                      built, own, chosen, kCpuLabels[chosen]);
        ctx->headline_cpu = static_cast<int>(chosen);
    }
    ctx->kernel_set = buf;
}

std::string error_text(double v, bool relative) {
    char buf[32];
    if (std::isinf(v))
        return "inf";
    else if (relative)
        std::snprintf(buf, sizeof buf, "%.2e", v);
    else
        std::snprintf(buf, sizeof buf, "%.3f", v);
    return buf;
}

void measure_times(FunctionReport& r, bool quick) {
    const Function& f = *r.f;
    const int modes = has_modes(f) ? kModes : 1;
    std::vector<double> a, b, out;
    for (int s = 0; s < kSizes; ++s) {
        const size_t n = kSizeN[s];
        timing_inputs(*f.row, n, &a, &b);
        out.assign(n, 0.0);
        const double* bp = b.empty() ? nullptr : b.data();
        // Each run of the long arrays is one call of 8 to 80 MB a array.
        const int runs = s == 0 ? (quick ? 5 : 9) : s == 1 ? (quick ? 3 : 5) : (quick ? 1 : 3);
        const double min_run = s == 0 ? (quick ? 0.001 : 0.002) : 0;
        for (int cpu = 0; cpu < kCpuTypes; ++cpu)
            for (int m = 0; m < modes; ++m) {
                if (!cpu_runnable(cpu)) continue;
                r.timed[cpu][m] = true;
                r.ns[cpu][m][s] = ns_per_element(timed_kernel(f, cpu, static_cast<Mode>(m)), n, a.data(),
                                                 bp, out.data(), runs, min_run);
            }
        for (PeerResult& p : r.peers) {
            if (!p.ran) continue;
            const Callable c = bind_peer(*p.peer, f.shape, nullptr);
            p.ns[s] = ns_per_element(c, n, a.data(), bp, out.data(), runs, min_run);
        }
    }
}

FunctionReport measure(const Function& f, const Options& o, const Budgets& budgets) {
    FunctionReport r = {};
    r.f = &f;
    SampleOptions so;
    so.random = o.samples;
    so.seed = o.seed;
    r.acc = measure_function(f, so, 0x3f, 0x7, true);
    for (int m = 0; m < kModes; ++m) r.budget[m] = budgets.find(f.row->name, static_cast<Mode>(m));
    for (const Peer* p : peers_of(*f.row)) {
        PeerResult pr = {p, false, nullptr, {}, {0, 0}};
        const Callable c = bind_peer(*p, f.shape, &pr.why);
        if (c) {
            pr.ran = true;
            pr.accuracy = zvl_tools::measure(c, r.acc.samples, r.acc.exact, false);
        }
        r.peers.push_back(pr);
    }
    if (o.timing) measure_times(r, o.quick);
    return r;
}

// A slot as its family's plan has it: variant and block width, loop form
// and guard, or the slot whose kernel it runs.
std::string cell_text(const zvl::Plan& p, int cpu, int col) {
    static const char* const loops[] = {"scratch", "restart", "pairs", "exact", "batch", "thin"};
    static const char* const guards[] = {"", " mxcsr", " up", " down", " zero", " short", " x87/53", " x87/64", " x87/64+short"};
    const zvl::Cell& c = p.at(cpu, col);
    char text[48];
    if (c.forwards()) {
        const zvl::Where w = p.target(cpu, col);
        std::snprintf(text, sizeof text, "runs %s%s%s", w.cpu == cpu ? "" : kCpuLabels[w.cpu],
                      w.cpu == cpu || p.columns == 1 ? "" : " ", p.columns == 1 ? "" : kModeNames[w.col]);
    } else {
        std::snprintf(text, sizeof text, "%c%d %s%s", c.variant, c.width, loops[static_cast<int>(c.loop)],
                      guards[static_cast<int>(c.guard)]);
    }
    return text;
}

void print_function(const FunctionReport& r) {
    const Function& f = *r.f;
    const int modes = has_modes(f) ? kModes : 1;
    std::printf("\n%s: %s\n", f.row->name, f.row->formula);
    std::printf("  kernels by the family's plan  ");
    for (int cpu = kCpuTypes - 1; cpu >= 0; --cpu) std::printf("%22s", kCpuLabels[cpu]);
    std::printf("\n");
    for (int m = 0; m < modes; ++m) {
        std::printf("  %-4s %-24s", mode_label(f, m), "");
        for (int cpu = kCpuTypes - 1; cpu >= 0; --cpu) std::printf("%22s", cell_text(*f.plan, cpu, m).c_str());
        std::printf("\n");
    }
    std::printf("  max error against MPFR        ");
    for (int cpu = kCpuTypes - 1; cpu >= 0; --cpu) std::printf("%10s", kCpuLabels[cpu]);
    std::printf("    budget\n");
    for (int m = 0; m < modes; ++m) {
        const bool rel = r.budget[m] && r.budget[m]->relative;
        std::printf("  %-4s %-24s", mode_label(f, m), rel ? "(relative)" : "(ulp)");
        for (int cpu = kCpuTypes - 1; cpu >= 0; --cpu) {
            if (!r.acc.ran[cpu][m]) {
                std::printf("%10s", "-");
                continue;
            }
            const Stats& s = r.acc.stats[cpu][m];
            std::printf("%10s", error_text(rel ? s.max_rel : s.max_ulp, rel).c_str());
        }
        const Worst w = worst_over_cpus(r, m);
        const bool ok = r.budget[m] && w.value <= r.budget[m]->bound;
        std::printf("    %s %s\n", budget_text(r.budget[m]).c_str(),
                    r.budget[m] ? (ok ? "ok" : "OVER") : "");
    }
    std::printf("  ns per element, n=1e3|1e6|1e7 ");
    for (int cpu = kCpuTypes - 1; cpu >= 0; --cpu) std::printf("%19s", kCpuLabels[cpu]);
    std::printf("\n");
    for (int m = 0; m < modes; ++m) {
        std::printf("  %-4s %-24s", mode_label(f, m), "");
        for (int cpu = kCpuTypes - 1; cpu >= 0; --cpu) {
            if (!r.timed[cpu][m]) {
                std::printf("%19s", "-");
                continue;
            }
            std::printf("  %5.2f|%5.2f|%5.2f", r.ns[cpu][m][0], r.ns[cpu][m][1], r.ns[cpu][m][2]);
        }
        std::printf("\n");
    }
    for (const PeerResult& p : r.peers) {
        if (!p.ran) {
            std::printf("  %-29s (skipped: %s)\n", p.peer->label, p.why);
            continue;
        }
        std::printf("  %-29s  %5.2f|%5.2f|%5.2f ns   max %s\n", p.peer->label, p.ns[0], p.ns[1],
                    p.ns[2], worst_input(r.acc, p.accuracy).c_str());
    }
}

void print_summary(const std::vector<FunctionReport>& reports, int head) {
    std::printf(
        "\nSummary: largest error over all cpu types; time per element at n = 1000 at cpu type\n"
        "%d (%s, the library's choice here) and 5 (e9); '<' marks a kernel slower than the\n"
        "baseline loop; the fastest peer at e9's instruction set (AVX) and at any.\n\n",
        head, kCpuLabels[head]);
    std::printf("%-9s %-4s %10s %-3s %-10s %4s %8s %8s %9s  %-28s %s\n", "function", "mode",
                "max error", "cpu", "budget", "", kCpuLabels[head], "e9", "baseline",
                "best peer, AVX", "best peer, any");
    for (const FunctionReport& r : reports) {
        const int modes = has_modes(*r.f) ? kModes : 1;
        for (int m = 0; m < modes; ++m) {
            const Worst w = worst_over_cpus(r, m);
            const bool rel = r.budget[m] && r.budget[m]->relative;
            const bool ok = r.budget[m] && w.value <= r.budget[m]->bound;
            char ns[2][24], base[24] = "-", peer[2][48];
            for (int k = 0; k < 2; ++k) {
                const int cpu = k == 0 ? head : 5;
                if (r.timed[cpu][m])
                    std::snprintf(ns[k], sizeof ns[k], "%6.2f%s", r.ns[cpu][m][0],
                                  slower_than_baseline(r, cpu, m, 0) ? "<" : " ");
                else
                    std::snprintf(ns[k], sizeof ns[k], "%7s", "-");
                const PeerResult* p = best_peer(r, k == 0 ? Isa::Avx : Isa::Avx2Fma);
                if (p)
                    std::snprintf(peer[k], sizeof peer[k], "%s %.2f", p->peer->label, p->ns[0]);
                else
                    std::snprintf(peer[k], sizeof peer[k], "-");
            }
            if (!r.peers.empty() && r.peers[0].ran && r.peers[0].ns[0] > 0)
                std::snprintf(base, sizeof base, "%.2f", r.peers[0].ns[0]);
            std::printf("%-9s %-4s %10s %-3s %-10s %4s %8s %8s %9s  %-28s %s\n", r.f->row->name,
                        mode_label(*r.f, m), error_text(w.value, rel).c_str(),
                        w.cpu >= 0 ? kCpuLabels[w.cpu] : "-", budget_text(r.budget[m]).c_str(),
                        r.budget[m] ? (ok ? "ok" : "OVER") : "", ns[0], ns[1], base, peer[0],
                        peer[1]);
        }
    }
}

// A complex function: each part in ulps of that part and the normwise error
// on every cpu type and mode, and the time per element at n = 1000 against
// the glibc loop of the same function.
struct ComplexReport {
    const ComplexFunction* f;
    ZTable acc;
    const Budget* budget[kModes];
    bool timed[kCpuTypes][kModes];
    double ns[kCpuTypes][kModes];
    double baseline_ns;
};

// One complex kernel (or the baseline, cpu < 0) as a Callable over arrays
// of doubles holding the parts.
struct ZSlot {
    const ComplexFunction* f;
    int cpu, mode;
};
Callable complex_callable(const ZSlot& k) {
    return {[](const void* ctx, int32_t n, const double* a, const double* b, double* r) {
                const ZSlot& s = *static_cast<const ZSlot*>(ctx);
                call_complex(*s.f, s.cpu, s.mode, n, reinterpret_cast<const ZVLComplex16*>(a),
                             reinterpret_cast<const ZVLComplex16*>(b), reinterpret_cast<ZVLComplex16*>(r));
            },
            &k};
}

ComplexReport measure_complex_function(const ComplexFunction& f, const Options& o, const Budgets& budgets) {
    ComplexReport r = {};
    r.f = &f;
    r.acc = measure_complex(f, o.samples, o.seed);
    for (int m = 0; m < kModes; ++m) r.budget[m] = budgets.find(f.row->name, static_cast<Mode>(m));
    if (!o.timing) return r;
    const size_t n = kSizeN[0];
    std::vector<ZVLComplex16> za, zb, zr(n);
    complex_timing_inputs(*f.row, n, o.seed, &za, &zb);
    const double* a = reinterpret_cast<const double*>(za.data());
    const double* b = reinterpret_cast<const double*>(zb.data());
    double* out = reinterpret_cast<double*>(zr.data());
    const int runs = o.quick ? 5 : 9;
    const double min_run = o.quick ? 0.001 : 0.002;
    for (int cpu = 0; cpu < kCpuTypes; ++cpu)
        for (int m = 0; m < kModes; ++m) {
            if (!cpu_runnable(cpu)) continue;
            const ZSlot k = {&f, cpu, m};
            r.timed[cpu][m] = true;
            r.ns[cpu][m] = ns_per_element(complex_callable(k), n, a, b, out, runs, min_run);
        }
    const ZSlot base = {&f, -1, 0};
    r.baseline_ns = ns_per_element(complex_callable(base), n, a, b, out, runs, min_run);
    return r;
}

void print_complex(const ComplexReport& r) {
    const ComplexRow& row = *r.f->row;
    std::printf("\n%s (%s): real and imaginary part in ulps of the part, normwise error%s; ns per element at n = 1000\n",
                row.name, row.formula, row.conditioned ? " over 1 + |b ln a|" : "");
    std::printf("  %-4s %-10s", "mode", "budget");
    for (int cpu = kCpuTypes - 1; cpu >= 0; --cpu) std::printf("  %-27s", kCpuLabels[cpu]);
    std::printf("\n");
    for (int m = 0; m < kModes; ++m) {
        std::printf("  %-4s %-10s", kModeNames[m], budget_text(r.budget[m]).c_str());
        for (int cpu = kCpuTypes - 1; cpu >= 0; --cpu) {
            char cell[64] = "-";
            if (r.acc.ran[cpu][m]) {
                const ZStats& s = r.acc.stats[cpu][m];
                const double norm = s.max_norm > 0 ? std::log2(s.max_norm) : -INFINITY;
                // a composition's parts carry its conditioning: only the normwise error says much
                if (row.conditioned)
                    std::snprintf(cell, sizeof cell, "2^%.1f %6.2f", norm, r.ns[cpu][m]);
                else
                    std::snprintf(cell, sizeof cell, "%.3f|%.3f 2^%.1f %6.2f", s.max_ulp[0], s.max_ulp[1], norm,
                                  r.ns[cpu][m]);
            }
            std::printf("  %-27s", cell);
        }
        std::printf("\n");
    }
    std::printf("  %-29s  %6.2f ns\n", row.baseline_label, r.baseline_ns);
}

// The accuracy data of docs/data/accuracy.txt: a header naming the build
// and the run, then per function, mode and cpu type measured the largest
// error in ulps and relative, each with its input.
bool write_data(const std::string& path, const std::vector<FunctionReport>& reports,
                const std::vector<ComplexReport>& complex, const ReportContext& ctx) {
    FILE* f = std::fopen(path.c_str(), "w");
    if (!f) return false;
    std::fprintf(f,
                 "# zvl-report --data: largest error against MPFR (192 bits) per function, mode "
                 "and cpu type\n"
                 "# zvl %s (%s), %s, on %s; %zu random samples per function (seed %llu) with "
                 "sweeps and hard cases\n"
                 "# function\tmode\tcpu\tmax ulp\tmax rel\tinput of max ulp\tinput of max "
                 "rel\n",
                 ctx.version.c_str(), ctx.commit.c_str(), ctx.compiler.c_str(), ctx.machine.c_str(),
                 ctx.samples, static_cast<unsigned long long>(ctx.seed));
    for (const FunctionReport& r : reports) {
        const int modes = has_modes(*r.f) ? kModes : 1;
        const Samples& sm = r.acc.samples;
        auto input = [&](size_t i) {
            char buf[64];
            if (sm.b.empty())
                std::snprintf(buf, sizeof buf, "%.17g", sm.a[i]);
            else
                std::snprintf(buf, sizeof buf, "%.17g, %.17g", sm.a[i], sm.b[i]);
            return std::string(buf);
        };
        for (int m = 0; m < modes; ++m)
            for (int cpu = kCpuTypes - 1; cpu >= 0; --cpu) {
                if (!r.acc.ran[cpu][m]) continue;
                const Stats& st = r.acc.stats[cpu][m];
                std::fprintf(f, "%s\t%s\t%d\t%.6g\t%.6g\t%s\t%s\n", r.f->row->name,
                             has_modes(*r.f) ? kModeNames[m] : "all", cpu, st.max_ulp, st.max_rel,
                             input(st.worst_ulp).c_str(), input(st.worst_rel).c_str());
            }
    }
    // complex: the larger part's ulps and the normwise error
    for (const ComplexReport& r : complex) {
        auto input = [&](size_t i) {
            char buf[128];
            const ZVLComplex16& z = r.acc.samples[i];
            if (r.acc.second.empty())
                std::snprintf(buf, sizeof buf, "%.17g, %.17g", z.real, z.imag);
            else
                std::snprintf(buf, sizeof buf, "%.17g, %.17g; %.17g, %.17g", z.real, z.imag,
                              r.acc.second[i].real, r.acc.second[i].imag);
            return std::string(buf);
        };
        for (int m = 0; m < kModes; ++m)
            for (int cpu = kCpuTypes - 1; cpu >= 0; --cpu) {
                if (!r.acc.ran[cpu][m]) continue;
                const ZStats& st = r.acc.stats[cpu][m];
                const int part = st.max_ulp[1] > st.max_ulp[0] ? 1 : 0;
                std::fprintf(f, "%s\t%s\t%d\t%.6g\t%.6g\t%s\t%s\n", r.f->row->name, kModeNames[m], cpu,
                             st.ulp(), st.max_norm, input(st.worst_ulp[part]).c_str(),
                             input(st.worst_norm).c_str());
            }
    }
    return std::fclose(f) == 0;
}

}  // namespace

int main(int argc, char** argv) {
    const auto start = std::chrono::steady_clock::now();
    Options o;
    // The published figures come from a million random samples per function
    // (every mode and cpu type measured on them); --quick takes 5000.
    o.samples = 1000000;
    std::string error;
    if (!parse_options(argc, argv, &o, &error, false)) {
        if (!error.empty()) std::fprintf(stderr, "zvl-report: %s\n", error.c_str());
        std::fprintf(stderr,
                     "usage: zvl-report [--out page.html] [--samples N] [--seed S] [--quick]\n"
                     "                  [--data accuracy.txt] [--markdown speed.md] [--no-timing]\n"
                     "                  [--complex-only] [--only <complex function>]\n");
        return 2;
    }
    if (o.quick && o.samples > 5000) o.samples = 5000;
    if (o.out.empty()) o.out = "zvl-report.html";

    Budgets budgets;
    if (!budgets.load(budgets_path(), &error))
        std::fprintf(stderr, "zvl-report: %s\n", error.c_str());

    ReportContext ctx{};
    ctx.version = ZVL_VERSION_STRING;
    ctx.commit = ZVL_BUILD_COMMIT;
    ctx.compiler = "gcc " __VERSION__;
    ctx.machine = machine_model();
    ctx.features = feature_list();
    ctx.date = today();
    describe_kernel_set(&ctx);
    ctx.samples = o.samples;
    ctx.seed = o.seed;
    std::printf("zvl-report: zvl %s (%s), %s, on %s (%s), %s\n", ctx.version.c_str(),
                ctx.commit.c_str(), ctx.compiler.c_str(), ctx.machine.c_str(),
                ctx.features.c_str(), ctx.date.c_str());
    std::printf("%s\n", ctx.kernel_set.c_str());
    std::printf(
        "accuracy: %zu random samples per function plus special points and hard cases, "
        "against MPFR at 192 bits%s\n",
        o.samples, o.quick ? " (quick: the default is 1000000)" : "");

    if (o.timing) {
        std::printf("copy loop r[i] = 1.5 * a[i], ns per element:");
        for (int s = 0; s < kSizes; ++s) {
            ctx.copy_ns[s] = copy_ns_per_element(kSizeN[s], s == 0 ? 9 : 5);
            std::printf(" %.2f (n=%s)", ctx.copy_ns[s], kSizeLabel[s]);
        }
        std::printf("\n");
    }

    std::vector<FunctionReport> reports;
    for (const Function& f : functions()) {
        if (o.complex_only) break;
        reports.push_back(measure(f, o, budgets));
        print_function(reports.back());
        std::fflush(stdout);
    }
    for (const char* name : functions_without_row())
        std::printf("\n%s: no measuring row, not measured\n", name);
    if (!o.complex_only) print_summary(reports, ctx.headline_cpu);
    std::vector<ComplexReport> complex;
    for (const ComplexFunction& f : complex_functions()) {
        if (!o.only.empty() && o.only != f.row->name) continue;
        complex.push_back(measure_complex_function(f, o, budgets));
        print_complex(complex.back());
        std::fflush(stdout);
    }

    if (!o.data.empty()) {
        if (!write_data(o.data, reports, complex, ctx)) {
            std::fprintf(stderr, "zvl-report: cannot write %s\n", o.data.c_str());
            return 1;
        }
        std::printf("\naccuracy data written to %s\n", o.data.c_str());
    }
    if (!o.timing || o.complex_only) return 0;
    ctx.seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    if (!write_html(o.out, reports, ctx, &error)) {
        std::fprintf(stderr, "zvl-report: %s\n", error.c_str());
        return 1;
    }
    std::printf("\nreport written to %s (%.0f s)\n", o.out.c_str(), ctx.seconds);
    if (!o.markdown.empty()) {
        if (!write_markdown(o.markdown, reports, ctx, &error)) {
            std::fprintf(stderr, "zvl-report: %s\n", error.c_str());
            return 1;
        }
        std::printf("speed table written to %s\n", o.markdown.c_str());
    }
    return 0;
}
