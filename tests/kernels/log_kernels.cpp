#include "tests/kernels/log_kernels.h"

#include <cmath>

#include "state/state.h"

namespace zvl_test {

const LogFamily kLn{"Ln", &zvl::kernels_VDLN};
const LogFamily kLog10{"Log10", &zvl::kernels_VDLOG10};

int effective_column(const LogSlot& s) {
    if (s.col == zvl::kHA) return zvl::kHA;
    if (s.f == &kLog10) return s.col == zvl::kLA || s.cpu == 0 ? zvl::kHA : zvl::kEP;
    if (s.cpu == 0) return zvl::kHA;
    if (s.cpu == 1 && s.col == zvl::kLA) return zvl::kHA;
    return s.col;
}

std::string variant(const LogSlot& s) {
    const int col = effective_column(s);
    if (s.f == &kLog10) return col == zvl::kHA ? "log10 HA" : "log10 EP";
    switch (col) {
        case zvl::kHA: return s.cpu == 5 ? "A" : "D";
        case zvl::kLA: return "B";
        default: return s.cpu >= 4 ? "C" : "E";
    }
}

Guard guard(const LogSlot& s) {
    const std::string v = variant(s);
    if (v == "D" || v == "log10 HA") return kMxcsrFull;
    if (v == "E" || v == "log10 EP") return kX87;
    return kNoGuard;
}

std::string kernel_name(const LogSlot& s) {
    static const char* const labels[6] = {"ex", "e7", "u8", "y8", "h8", "e9"};
    static const char* const tags[3] = {"HA", "50", "26"};
    return std::string("zel_zvl_core_") + labels[s.cpu] + "_zvl_d" + s.f->name + "_" +
           tags[effective_column(s)];
}

std::vector<LogSlot> runnable_slots() {
    std::vector<LogSlot> v;
    for (const LogFamily* f : {&kLn, &kLog10})
        for (int cpu = 0; cpu < 6; ++cpu) {
            if (cpu == 5 && !__builtin_cpu_supports("avx")) continue;
            for (int col = 0; col < 3; ++col) v.push_back({f, cpu, col});
        }
    return v;
}

std::string slot_label(const LogSlot& s) {
    static const char* const modes[3] = {"HA", "LA", "EP"};
    return std::string(s.f->name) + "_cpu" + std::to_string(s.cpu) + "_" + modes[s.col];
}

std::vector<double> ordinary_inputs() {
    std::vector<double> v;
    for (int i = 0; i < 37; ++i) {
        // spread over [2^-900, 2^900], with some close to 1
        const double m = 0.55 + 0.0371 * i;
        v.push_back(i % 5 == 0 ? 1.0 + (i - 18) * 1.0e-4 : std::ldexp(m, (i * 47) % 1801 - 900));
    }
    return v;
}

namespace {

std::vector<Report> g_reports;
bool g_replace = false;
double g_replacement = 0.0;

int record_report(ZVLErrorRecord* rec) {
    g_reports.push_back({rec->index, rec->status, std::string(rec->name, rec->name_len)});
    if (g_replace) rec->r1 = g_replacement;
    return 0;
}

}  // namespace

void start_recording(bool replace, double replacement) {
    g_reports.clear();
    g_replace = replace;
    g_replacement = replacement;
    zvl::set_array_base(nullptr);
    zvl::set_mode(ZVL_ERRMODE_CALLBACK);  // the callback is the only error action
    zvl::set_callback(record_report);
}

void stop_recording() {
    zvl::clear_callback();
    zvl::set_mode(ZVL_MODE_DEFAULT);
}

const std::vector<Report>& reports() { return g_reports; }

}  // namespace zvl_test
