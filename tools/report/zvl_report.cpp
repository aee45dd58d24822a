// zvl-report: for every measured function and accuracy mode, the largest
// error against MPFR on every cpu type, the time per element on every cpu
// type, and the speed against the function's baseline loop and its peers;
// printed as tables and written as one self-contained HTML page.
//
//   zvl-report [--out page.html] [--samples N] [--seed S] [--quick]
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <string>

#include "base/cpu_type.h"
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

int headline_cpu() {
    const uint32_t c = zvl::cpu_type();
    if (c <= 5 && cpu_runnable(static_cast<int>(c))) return static_cast<int>(c);
    for (int cpu = kCpuTypes - 1; cpu > 0; --cpu)
        if (cpu_runnable(cpu)) return cpu;
    return 0;
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
        const int runs = s == 0 ? (quick ? 5 : 9) : (quick ? 3 : 5);
        const double min_run = s == 0 ? (quick ? 0.001 : 0.002) : 0;
        for (int cpu = 0; cpu < kCpuTypes; ++cpu)
            for (int m = 0; m < modes; ++m) {
                if (!cpu_runnable(cpu)) continue;
                r.timed[cpu][m] = true;
                r.ns[cpu][m][s] = ns_per_element(kernel(f, cpu, static_cast<Mode>(m)), n, a.data(),
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
    measure_times(r, o.quick);
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
    std::printf("  ns per element, n=1e3 | 1e6   ");
    for (int cpu = kCpuTypes - 1; cpu >= 0; --cpu) std::printf("%13s", kCpuLabels[cpu]);
    std::printf("\n");
    for (int m = 0; m < modes; ++m) {
        std::printf("  %-4s %-24s", mode_label(f, m), "");
        for (int cpu = kCpuTypes - 1; cpu >= 0; --cpu) {
            if (!r.timed[cpu][m]) {
                std::printf("%13s", "-");
                continue;
            }
            std::printf("  %5.2f|%5.2f", r.ns[cpu][m][0], r.ns[cpu][m][1]);
        }
        std::printf("\n");
    }
    for (const PeerResult& p : r.peers) {
        if (!p.ran) {
            std::printf("  %-29s (skipped: %s)\n", p.peer->label, p.why);
            continue;
        }
        std::printf("  %-29s  %5.2f|%5.2f ns   max %s ulp\n", p.peer->label, p.ns[0], p.ns[1],
                    error_text(p.accuracy.max_ulp, false).c_str());
    }
}

void print_summary(const std::vector<FunctionReport>& reports, int head) {
    std::printf(
        "\nSummary: largest error over all cpu types; time per element at cpu type %d (%s),\n"
        "n = 1000 and 1000000; speed-up over the baseline loop at the same n.\n\n",
        head, kCpuLabels[head]);
    std::printf("%-9s %-4s %12s %-5s %-14s %-4s %15s %15s %15s\n", "function", "mode", "max error",
                "cpu", "budget", "", "ns/elem", "baseline ns", "speed-up");
    for (const FunctionReport& r : reports) {
        const int modes = has_modes(*r.f) ? kModes : 1;
        for (int m = 0; m < modes; ++m) {
            const Worst w = worst_over_cpus(r, m);
            const bool rel = r.budget[m] && r.budget[m]->relative;
            const bool ok = r.budget[m] && w.value <= r.budget[m]->bound;
            char ns[40] = "-", base[40] = "-", up[40] = "-";
            if (r.timed[head][m])
                std::snprintf(ns, sizeof ns, "%6.2f %6.2f", r.ns[head][m][0], r.ns[head][m][1]);
            if (!r.peers.empty() && r.peers[0].ran) {
                std::snprintf(base, sizeof base, "%6.2f %6.2f", r.peers[0].ns[0], r.peers[0].ns[1]);
                std::snprintf(up, sizeof up, "%5.2fx %5.2fx", speedup(r, head, m, 0),
                              speedup(r, head, m, 1));
            }
            std::printf("%-9s %-4s %12s %-5s %-14s %-4s %15s %15s %15s\n", r.f->row->name,
                        mode_label(*r.f, m), error_text(w.value, rel).c_str(),
                        w.cpu >= 0 ? kCpuLabels[w.cpu] : "-", budget_text(r.budget[m]).c_str(),
                        r.budget[m] ? (ok ? "ok" : "OVER") : "", ns, base, up);
        }
    }
}

}  // namespace

int main(int argc, char** argv) {
    const auto start = std::chrono::steady_clock::now();
    Options o;
    o.samples = 20000;
    std::string error;
    if (!parse_options(argc, argv, &o, &error, false)) {
        if (!error.empty()) std::fprintf(stderr, "zvl-report: %s\n", error.c_str());
        std::fprintf(stderr,
                     "usage: zvl-report [--out page.html] [--samples N] [--seed S] [--quick]\n");
        return 2;
    }
    if (o.quick && o.samples > 5000) o.samples = 5000;
    if (o.out.empty()) o.out = "zvl-report.html";

    Budgets budgets;
    if (!budgets.load(budgets_path(), &error))
        std::fprintf(stderr, "zvl-report: %s\n", error.c_str());

    ReportContext ctx;
    ctx.machine = machine_model();
    ctx.features = feature_list();
    ctx.date = today();
    ctx.headline_cpu = headline_cpu();
    ctx.samples = o.samples;
    std::printf("zvl-report on %s (%s), %s\n", ctx.machine.c_str(), ctx.features.c_str(),
                ctx.date.c_str());
    std::printf(
        "accuracy: %zu random samples per function plus special points and hard cases, "
        "against MPFR at 192 bits\n",
        o.samples);

    std::vector<FunctionReport> reports;
    for (const Function& f : functions()) {
        reports.push_back(measure(f, o, budgets));
        print_function(reports.back());
        std::fflush(stdout);
    }
    for (const char* name : functions_without_row())
        std::printf("\n%s: no measuring row, not measured\n", name);
    print_summary(reports, ctx.headline_cpu);

    ctx.seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    if (!write_html(o.out, reports, ctx, &error)) {
        std::fprintf(stderr, "zvl-report: %s\n", error.c_str());
        return 1;
    }
    std::printf("\nreport written to %s (%.0f s)\n", o.out.c_str(), ctx.seconds);
    return 0;
}
