// README.md's speed table, written from the report's measurements.
#include <cstdio>
#include <string>

#include "tools/report/report.h"

namespace zvl_tools {
namespace {

std::string ns_text(double ns) {
    char buf[32];
    std::snprintf(buf, sizeof buf, "%.2f", ns);
    return buf;
}

// The fastest peer up to `most` and its time over cpu type 5's in mode m:
// named with its time in the function's first row, the ratio alone below.
std::string peer_cell(const FunctionReport& r, Isa most, int m) {
    const PeerResult* p = best_peer(r, most);
    if (!p) return "-";
    std::string s;
    if (m == 0) s = std::string(p->peer->label) + " " + ns_text(p->ns[0]) + ", ";
    if (!r.timed[5][m] || r.ns[5][m][0] <= 0) return m == 0 ? s.substr(0, s.size() - 2) : "";
    char buf[32];
    std::snprintf(buf, sizeof buf, "%.2fx", p->ns[0] / r.ns[5][m][0]);
    return s + buf;
}

}  // namespace

bool write_markdown(const std::string& path, const std::vector<FunctionReport>& reports,
                    const ReportContext& ctx, std::string* error) {
    std::string t;
    t += "Time per element in ns at n = 1000 (median of the calling thread's processor time), "
         "on " + ctx.machine + ", " + ctx.date + ", and at n = 1e7 (80 MB an array) at cpu "
         "type 5; beside the function's baseline loop and the fastest peer built for cpu type "
         "5's instruction set (AVX without FMA) and for any, each with its time over cpu type "
         "5's (above 1: the kernel is faster). The loop `r[i] = 1.5 * a[i]` takes ";
    for (int s = 0; s < kSizes; ++s)
        t += ns_text(ctx.copy_ns[s]) + " at n = " + kSizeLabel[s] + (s + 1 < kSizes ? ", " : ".\n\n");
    t += "| function | mode |";
    for (int cpu = kCpuTypes - 1; cpu >= 0; --cpu)
        t += " " + std::string(kCpuLabels[cpu]) + " (" + std::to_string(cpu) + ") |";
    t += " e9 n=1e7 | baseline | best peer, AVX | best peer, any |\n|---|---|";
    for (int cpu = 0; cpu < kCpuTypes + 4; ++cpu) t += "---|";
    t += "\n";
    for (const FunctionReport& r : reports) {
        const int modes = has_modes(*r.f) ? kModes : 1;
        const PeerResult* base = r.peers.empty() || !r.peers[0].ran ? nullptr : &r.peers[0];
        for (int m = 0; m < modes; ++m) {
            t += "| " + std::string(m == 0 ? r.f->row->name : "") + " | " + mode_label(*r.f, m) + " |";
            for (int cpu = kCpuTypes - 1; cpu >= 0; --cpu)
                t += " " + (r.timed[cpu][m] ? ns_text(r.ns[cpu][m][0]) : std::string("-")) + " |";
            t += " " + (r.timed[5][m] ? ns_text(r.ns[5][m][kSizes - 1]) : std::string("-")) + " |";
            t += " " + (m == 0 && base ? std::string(base->peer->label) + " " + ns_text(base->ns[0])
                                       : std::string()) + " |";
            t += " " + peer_cell(r, Isa::Avx, m) + " | " + peer_cell(r, Isa::Avx2Fma, m) + " |\n";
        }
    }
    return write_text(path, t, error);
}

}  // namespace zvl_tools
