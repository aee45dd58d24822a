// zvl-ulp: the largest error of a function's kernels against MPFR, per cpu
// type and accuracy mode, with the input where it occurs.
//
//   zvl-ulp <function>|all [--mode HA|LA|EP|all] [--cpu 0..5|all]
//           [--samples N] [--range lo hi] [--seed S] [--no-hard]
//           [--no-sweeps] [--peers] [--list] [--rounding nearest|up|down|zero]
//
// --rounding runs the kernels under that caller's rounding mode (errors are
// still against the exact value; the budgets, which are for round to
// nearest, are then shown but not applied).
//
// Exits with 1 when a measurement exceeds its budget, 2 on a usage error.
#include <cfenv>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include "tools/accuracy/budgets.h"
#include "tools/ulp/options.h"

namespace {

using namespace zvl_tools;

void usage() {
    std::fprintf(stderr,
                 "usage: zvl-ulp <function>|all [--mode HA|LA|EP|all] [--cpu 0..5|all]\n"
                 "               [--samples N] [--range lo hi] [--seed S] [--no-hard]\n"
                 "               [--no-sweeps] [--peers] [--list]\n"
                 "               [--rounding nearest|up|down|zero]\n");
}

void list_functions() {
    for (const Function& f : functions())
        std::printf("%-10s %-12s %s\n", f.row->name, f.exported, f.row->formula);
    for (const char* name : functions_without_row())
        std::printf("%-10s %-12s (no measuring row)\n", "-", name);
}

const char* origin_name(Origin o) {
    switch (o) {
        case Origin::Random: return "random";
        case Origin::Sweep: return "sweep";
        case Origin::Special: return "special";
        case Origin::Hard: return "hard case";
    }
    return "";
}

std::string input_text(const Table& t, size_t i) {
    std::string s = show(t.samples.a[i]);
    if (!t.samples.b.empty()) s += ", " + show(t.samples.b[i]);
    return s + " [" + origin_name(t.samples.origin[i]) + "]";
}

void print_worst(const Table& t, const Stats& s) {
    const Exact& e = t.exact[s.worst_ulp];
    std::printf("      worst at %s\n", input_text(t, s.worst_ulp).c_str());
    std::printf("      got %s, exact rounds to %s%s\n", show(s.got_ulp).c_str(), show(e.rn).c_str(),
                s.single_ulp ? " (element by element)" : "");
}

// Returns false when a budget is exceeded.
bool run(const Function& f, const Options& o, const Budgets& budgets) {
    SampleOptions so;
    so.random = o.samples;
    so.seed = o.seed;
    so.range = o.has_range ? &o.range : nullptr;
    so.hardcases = o.hardcases;
    so.sweeps = o.sweeps;
    so.rounding = o.rounding;
    const Table t = measure_function(f, so, o.cpus, o.modes);

    size_t random = 0, sweep = 0, hard = 0;
    for (Origin g : t.samples.origin)
        (g == Origin::Random ? random : g == Origin::Hard ? hard : sweep)++;
    std::printf("%s: %s against MPFR at 192 bits\n", f.row->name, f.row->formula);
    std::printf("samples: %zu random, %zu at special points, %zu hard cases (seed %llu)\n\n",
                random, sweep, hard, static_cast<unsigned long long>(o.seed));
    std::printf("cpu    mode     max ulp      max rel  budget\n");
    bool ok = true;
    for (int cpu = kCpuTypes - 1; cpu >= 0; --cpu) {
        if (!(o.cpus >> cpu & 1)) continue;
        if (!cpu_runnable(cpu)) {
            std::printf("%d %s   (not run: the processor lacks its instructions)\n", cpu,
                        kCpuLabels[cpu]);
            continue;
        }
        for (int m = 0; m < kModes; ++m) {
            if (!t.ran[cpu][m]) continue;
            const Stats& s = t.stats[cpu][m];
            const Budget* b = budgets.find(f.row->name, static_cast<Mode>(m));
            std::string verdict = budget_text(b);
            if (b && o.rounding == FE_TONEAREST) {  // the budgets are for round to nearest
                const bool in = within(*b, s);
                ok = ok && in;
                verdict = (in ? "ok   " : "OVER ") + verdict;
            }
            std::printf("%d %s   %-4s %11.4g %12.4g  %s\n", cpu, kCpuLabels[cpu],
                        mode_label(f, m), s.max_ulp, s.max_rel, verdict.c_str());
            print_worst(t, s);
        }
    }
    if (o.peers) {
        std::printf("\npeers\n");
        for (const Peer* p : peers_of(*f.row)) {
            const char* why = nullptr;
            const Callable c = bind_peer(*p, f.shape, &why);
            if (!c) {
                std::printf("  %-22s (skipped: %s)\n", p->label, why);
                continue;
            }
            const Stats s = measure(c, t.samples, t.exact, false);
            std::printf("  %-22s %11.4g %12.4g\n", p->label, s.max_ulp, s.max_rel);
            print_worst(t, s);
        }
    }
    std::printf("\n");
    return ok;
}

}  // namespace

int main(int argc, char** argv) {
    Options o;
    std::string error;
    if (!parse_options(argc, argv, &o, &error)) {
        if (!error.empty()) std::fprintf(stderr, "zvl-ulp: %s\n", error.c_str());
        usage();
        return 2;
    }
    if (o.list) {
        list_functions();
        return 0;
    }
    Budgets budgets;
    if (!budgets.load(budgets_path(), &error)) std::fprintf(stderr, "zvl-ulp: %s\n", error.c_str());
    bool ok = true;
    if (o.function == "all") {
        for (const Function& f : functions()) ok = run(f, o, budgets) && ok;
    } else {
        const Function* f = find_function(o.function.c_str());
        if (!f) {
            std::fprintf(stderr, "zvl-ulp: no function '%s' (try --list)\n", o.function.c_str());
            return 2;
        }
        ok = run(*f, o, budgets);
    }
    return ok ? 0 : 1;
}
