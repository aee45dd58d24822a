// zvl-report's page: one HTML file with its style and its plots (inline
// SVG) inside, readable in any browser without anything else.
#include <algorithm>
#include <cmath>
#include <cstdarg>
#include <cstdio>
#include <cstring>

#include "tools/common/rng.h"
#include "tools/report/report.h"

namespace zvl_tools {
namespace {

const char* const kModeColour[kModes] = {"#1f5fa8", "#2e8b57", "#c06010"};

std::string fmt(const char* f, ...) __attribute__((format(printf, 1, 2)));
std::string fmt(const char* f, ...) {
    va_list ap, again;
    va_start(ap, f);
    va_copy(again, ap);
    const int n = std::vsnprintf(nullptr, 0, f, ap);
    va_end(ap);
    std::string s(n > 0 ? n : 0, '\0');
    std::vsnprintf(&s[0], s.size() + 1, f, again);
    va_end(again);
    return s;
}

std::string esc(const std::string& s) {
    std::string o;
    for (char c : s) {
        switch (c) {
            case '<': o += "&lt;"; break;
            case '>': o += "&gt;"; break;
            case '&': o += "&amp;"; break;
            case '"': o += "&quot;"; break;
            default: o += c;
        }
    }
    return o;
}

std::string err_text(double v, bool rel) {
    if (std::isinf(v)) return "inf";
    return rel ? fmt("%.2e", v) : fmt("%.3f", v);
}

bool relative(const FunctionReport& r, int m) { return r.budget[m] && r.budget[m]->relative; }

// Position of a value on the plot's x axis: the value itself, or its rank
// among doubles (a log-like scale through zero, subnormals included).
double axis_pos(double x, bool linear) {
    if (linear) return x;
    const uint64_t b = bits(x);
    const double m = static_cast<double>(b & 0x7fffffffffffffff);
    return (b >> 63) ? -m : m;
}

std::string tick_label(double v) {
    if (v == 0) return "0";
    const double l = std::log10(std::fabs(v));
    if (std::fabs(l - std::round(l)) < 1e-9 && std::fabs(l) >= 3)
        return fmt("%s1e%d", v < 0 ? "-" : "", static_cast<int>(std::round(l)));
    return fmt("%g", v);
}

// Tick values inside [lo, hi] of the axis.
std::vector<double> ticks(double lo, double hi, bool linear) {
    std::vector<double> t;
    if (linear) {
        const double span = hi - lo;
        if (!(span > 0)) return t;
        double step = std::pow(10.0, std::floor(std::log10(span / 5)));
        if (span / step > 10) step *= 2;
        if (span / step > 10) step *= 2.5;
        for (double v = std::ceil(lo / step) * step; v <= hi; v += step)
            t.push_back(std::fabs(v) < step * 1e-9 ? 0 : v);
        return t;
    }
    // Powers of ten with a round exponent step, at most about seven.
    const bool both = lo < 0 && hi > 0;
    for (int step : {1, 2, 5, 10, 20, 50, 100, 200}) {
        t.clear();
        for (int k = -320 / step * step; k <= 308; k += step)
            for (double sign : {-1.0, 1.0}) {
                const double v = sign * std::pow(10.0, k);
                const double p = axis_pos(v, false);
                if (p >= lo && p <= hi) t.push_back(v);
            }
        if (both) t.push_back(0);
        if (t.size() <= 7) break;
    }
    std::sort(t.begin(), t.end());
    return t;
}

// A legend line from (x, y): each mark (drawn about its origin) and its text.
std::string legend(int x, int y, const std::vector<std::pair<std::string, std::string>>& items) {
    std::string s;
    for (const auto& [mark, text] : items) {
        s += fmt("<g transform='translate(%d,%d)'>%s</g>", x, y, mark.c_str());
        s += fmt("<text x='%d' y='%d' class='note'>%s</text>", x + 14, y + 3, esc(text).c_str());
        x += 22 + static_cast<int>(text.size()) * 5;
    }
    return s;
}

// One mode's error across one argument's range: the largest error per bin
// at the headline cpu type (dots) and over all cpu types (grey line), the
// budget dashed.
std::string error_plot(const FunctionReport& r, int mode, int head, PlotAxis axis) {
    const FunctionRow& row = *r.f->row;
    const Table& t = r.acc;
    const bool rel = relative(r, mode);
    const std::vector<double>& xs =
        axis == PlotAxis::B && !t.samples.b.empty() ? t.samples.b : t.samples.a;
    const int W = 330, H = 206, L = 52, R = 16, T = 22, B = 50;
    std::string s =
        fmt("<svg xmlns='http://www.w3.org/2000/svg' width='%d' height='%d' class='plot'>", W, H);
    s += fmt("<text x='%d' y='14' class='title'>%s: error against %s</text>", L,
             has_modes(*r.f) ? kModeNames[mode] : "kernel",
             arity(r.f->shape) == 1 ? "x" : axis == PlotAxis::B ? "b" : "a");

    // The axis spans the random samples; points beyond it are left out. A
    // value scale too wide for doubles falls back to the bit-pattern scale.
    bool linear = row.plot_linear;
    double lo, hi;
    for (;;) {
        lo = HUGE_VAL, hi = -HUGE_VAL;
        for (size_t i = 0; i < xs.size(); ++i) {
            if (!std::isfinite(xs[i]) || t.samples.origin[i] != Origin::Random) continue;
            const double p = axis_pos(xs[i], linear);
            lo = std::fmin(lo, p);
            hi = std::fmax(hi, p);
        }
        if (!linear || std::isfinite(hi - lo)) break;
        linear = false;
    }
    if (!(hi > lo)) return s + "</svg>";

    const int bins = 110;
    std::vector<double> head_max(bins, -1), all_max(bins, -1);
    bool beyond = false;
    auto value = [&](int cpu, size_t i) {
        const double u = t.per_sample[cpu][mode][i];
        return rel ? rel_error(u, t.exact[i]) : u;
    };
    for (size_t i = 0; i < xs.size(); ++i) {
        if (!std::isfinite(xs[i])) continue;
        const double p = axis_pos(xs[i], linear);
        if (!(p >= lo && p <= hi)) continue;
        const int k = std::min(bins - 1, static_cast<int>((p - lo) / (hi - lo) * bins));
        for (int cpu = 0; cpu < kCpuTypes; ++cpu) {
            if (!t.ran[cpu][mode] || t.per_sample[cpu][mode].empty()) continue;
            const double v = value(cpu, i);
            if (std::isinf(v)) beyond = true;
            all_max[k] = std::fmax(all_max[k], v);
            if (cpu == head) head_max[k] = std::fmax(head_max[k], v);
        }
    }
    // ulps on a linear scale from 0; relative errors on a log scale, where
    // both the errors and a budget far above them show.
    double ymax = r.budget[mode] ? r.budget[mode]->bound : 0;
    double ymin = HUGE_VAL;
    for (double v : all_max) {
        if (std::isfinite(v)) ymax = std::fmax(ymax, v);
        if (v > 0) ymin = std::fmin(ymin, v);
    }
    if (ymax <= 0) ymax = rel ? 1e-16 : 1;
    const double yhi = rel ? std::pow(10.0, std::ceil(std::log10(ymax * 1.5))) : ymax * 1.1;
    const double ylo =
        rel ? std::fmax(std::pow(10.0, std::floor(std::log10(std::fmin(ymin, ymax)))), yhi * 1e-12)
            : 0;
    const double pw = W - L - R, ph = H - T - B;
    auto X = [&](double p) { return L + (p - lo) / (hi - lo) * pw; };
    auto Y = [&](double v) {
        const double f = rel ? (std::log10(std::fmax(v, ylo)) - std::log10(ylo)) /
                                   (std::log10(yhi) - std::log10(ylo))
                             : std::fmin(v, yhi) / yhi;
        return T + ph - std::fmin(f, 1.0) * ph;
    };

    s += fmt("<rect x='%d' y='%d' width='%.0f' height='%.0f' class='frame'/>", L, T, pw, ph);
    std::vector<double> yt;
    if (rel) {
        const int decades = static_cast<int>(std::round(std::log10(yhi / ylo)));
        const int step = decades <= 5 ? 1 : (decades + 4) / 5;
        for (int k = 0; k <= decades; k += step) yt.push_back(ylo * std::pow(10.0, k));
    } else {
        for (int i = 0; i <= 4; ++i) yt.push_back(yhi / 1.1 * i / 4);
    }
    for (double v : yt) {
        s += fmt("<line x1='%d' x2='%.1f' y1='%.1f' y2='%.1f' class='grid'/>", L, L + pw, Y(v),
                 Y(v));
        s += fmt("<text x='%d' y='%.1f' class='ylab'>%s</text>", L - 4, Y(v) + 3,
                 rel ? fmt("1e%d", static_cast<int>(std::round(std::log10(v)))).c_str()
                     : fmt("%.2g", v).c_str());
    }
    double last = -HUGE_VAL;
    for (double v : ticks(lo, hi, linear)) {
        const double x = X(axis_pos(v, linear));
        if (x - last < 44) continue;  // keep labels apart
        last = x;
        s += fmt("<line x1='%.1f' x2='%.1f' y1='%.0f' y2='%.0f' class='tick'/>", x, x, T + ph,
                 T + ph + 4);
        // Labels at the ends align with the frame, so none runs off the picture.
        const std::string label = tick_label(v);
        const double half = 2.8 * static_cast<double>(label.size());
        const char* anchor = x - half < 2 ? "start" : x + half > W - 2 ? "end" : "middle";
        const double at = x - half < 2 ? x - 4 : x + half > W - 2 ? x + 4 : x;
        s += fmt("<text x='%.1f' y='%.0f' class='xlab' style='text-anchor:%s'>%s</text>", at,
                 T + ph + 15, anchor, label.c_str());
    }
    if (r.budget[mode]) {
        const double y = Y(r.budget[mode]->bound);
        s += fmt("<line x1='%d' x2='%.1f' y1='%.1f' y2='%.1f' class='budget'/>", L, L + pw, y, y);
    }
    std::string line;
    for (int k = 0; k < bins; ++k) {
        if (all_max[k] < 0) continue;
        line += fmt("%.1f,%.1f ", X(lo + (k + 0.5) / bins * (hi - lo)), Y(all_max[k]));
    }
    s += "<polyline class='allcpu' points='" + line + "'/>";
    for (int k = 0; k < bins; ++k) {
        if (head_max[k] < 0) continue;
        s += fmt("<circle cx='%.1f' cy='%.1f' r='1.8' fill='%s'/>",
                 X(lo + (k + 0.5) / bins * (hi - lo)), Y(head_max[k]), kModeColour[mode]);
    }
    s += legend(L, H - 22,
                {{fmt("<circle cx='4' cy='0' r='2' fill='%s'/>", kModeColour[mode]),
                  fmt("%s (%d)", kCpuLabels[head], head)},
                 {"<line x1='0' x2='10' y1='0' y2='0' class='allcpu'/>", "all cpu types"},
                 {"<line x1='0' x2='10' y1='0' y2='0' class='budget'/>", "budget"}});
    s += fmt("<text x='%d' y='%d' class='note'>%s%s</text>", L, H - 6,
             rel ? "relative error" : "error in ulp",
             beyond ? "; infinite errors drawn at the top" : "");
    return s + "</svg>";
}

// Time per element as horizontal bars, one per size, lighter as n grows.
std::string time_chart(const FunctionReport& r) {
    struct Bar {
        std::string label;
        double ns[kSizes];
        const char* colour;
    };
    std::vector<Bar> bars;
    const int modes = has_modes(*r.f) ? kModes : 1;
    for (int m = 0; m < modes; ++m)
        for (int cpu = kCpuTypes - 1; cpu >= 0; --cpu)
            if (r.timed[cpu][m])
                bars.push_back(
                    {fmt("%s %d %s", has_modes(*r.f) ? kModeNames[m] : "", cpu, kCpuLabels[cpu]),
                     {r.ns[cpu][m][0], r.ns[cpu][m][1], r.ns[cpu][m][2]},
                     kModeColour[m]});
    for (const PeerResult& p : r.peers)
        if (p.ran) bars.push_back({p.peer->label, {p.ns[0], p.ns[1], p.ns[2]}, "#777"});
    double top = 0;
    size_t longest = 0;
    for (const Bar& b : bars) {
        for (double ns : b.ns) top = std::fmax(top, ns);
        longest = std::max(longest, b.label.size());
    }
    if (top <= 0) top = 1;
    // Room for the longest label on the left and a value pair on the right,
    // at about 6 pixels a character of the 10-pixel font.
    const int L = 12 + 6 * static_cast<int>(longest), R = 130, T = 24, row = 16, W = L + 510;
    const int H = T + row * static_cast<int>(bars.size()) + 26;
    const double pw = W - L - R;
    std::string s =
        fmt("<svg xmlns='http://www.w3.org/2000/svg' width='%d' height='%d' class='plot'>", W, H);
    s += fmt("<text x='%d' y='14' class='title'>ns per element</text>", L);
    static const char* const kOpacity[kSizes] = {"1", "0.6", "0.3"};
    std::vector<std::pair<std::string, std::string>> key;
    for (int sz = 0; sz < kSizes; ++sz)
        key.push_back({fmt("<rect x='0' y='-3' width='10' height='6' fill='#555' opacity='%s'/>",
                           kOpacity[sz]),
                       fmt("n = %s", kSizeLabel[sz])});
    if (has_modes(*r.f))
        for (int m = 0; m < kModes; ++m)
            key.push_back({fmt("<rect x='0' y='-3' width='10' height='6' fill='%s'/>",
                               kModeColour[m]),
                           kModeNames[m]});
    key.push_back({"<rect x='0' y='-3' width='10' height='6' fill='#777'/>", "baseline and peers"});
    s += legend(L, H - 10, key);
    for (size_t i = 0; i < bars.size(); ++i) {
        const Bar& b = bars[i];
        const double y = T + row * static_cast<double>(i);
        s += fmt("<text x='%d' y='%.0f' class='ylab'>%s</text>", L - 6, y + 11,
                 esc(b.label).c_str());
        double widest = 0;
        for (int sz = 0; sz < kSizes; ++sz) {
            s += fmt("<rect x='%d' y='%.0f' width='%.1f' height='4' fill='%s' opacity='%s'/>", L,
                     y + 2 + 4 * sz, b.ns[sz] / top * pw, b.colour, kOpacity[sz]);
            widest = std::fmax(widest, b.ns[sz]);
        }
        s += fmt("<text x='%.1f' y='%.0f' class='val'>%.2f / %.2f / %.2f</text>",
                 L + widest / top * pw + 4, y + 11, b.ns[0], b.ns[1], b.ns[2]);
    }
    return s + "</svg>";
}

std::string worst_text(const FunctionReport& r, int cpu, int mode) {
    const Table& t = r.acc;
    const Stats& st = t.stats[cpu][mode];
    const bool rel = relative(r, mode);
    const size_t i = rel ? st.worst_rel : st.worst_ulp;
    std::string in = show(t.samples.a[i]);
    if (!t.samples.b.empty()) in += ", " + show(t.samples.b[i]);
    return fmt("%s: %s at ", kCpuLabels[cpu],
               err_text(rel ? st.max_rel : st.max_ulp, rel).c_str()) +
           esc(in) + "; got " + esc(show(rel ? st.got_rel : st.got_ulp)) + ", exact rounds to " +
           esc(show(t.exact[i].rn));
}

// A summary cell: the kernel's time at size sz, shaded when slower than the
// baseline.
std::string time_cell(const FunctionReport& r, int cpu, int mode, int sz) {
    if (!r.timed[cpu][mode]) return "<td>-</td>";
    return fmt("<td class='%s'>%.2f</td>", slower_than_baseline(r, cpu, mode, sz) ? "slow" : "",
               r.ns[cpu][mode][sz]);
}

const char* kStyle = R"(
body{font-family:system-ui,sans-serif;margin:2em;max-width:1500px;color:#222}
div.wide{overflow-x:auto}table.summary{font-size:.8em}table.summary td{white-space:nowrap}
h1{font-size:1.5em}h2{font-size:1.2em;margin-top:2em;border-bottom:1px solid #ccc}
table{border-collapse:collapse;margin:.6em 0;font-size:.9em}
td,th{border:1px solid #ddd;padding:3px 8px;text-align:right}th{background:#f3f3f3}
td.l,th.l{text-align:left}.over{background:#fdd;font-weight:bold}.ok{color:#2e7d32}
.plot{margin:4px 8px 4px 0;font-size:10px}.title{font-size:11px;font-weight:bold}
.frame{fill:none;stroke:#999}.grid{stroke:#eee}.tick{stroke:#999}
.ylab{text-anchor:end;fill:#444}.xlab{text-anchor:middle;fill:#444}.val{fill:#444}
.budget{stroke:#c00;stroke-dasharray:4 3}.allcpu{fill:none;stroke:#bbb;stroke-width:1}
.note{fill:#666}small{color:#666}ul.worst{font-size:.82em;font-family:monospace}
td.slow,span.slow{background:#fff0c0}p.build{font-family:monospace;font-size:.9em}
)";

}  // namespace

bool write_html(const std::string& path, const std::vector<FunctionReport>& reports,
                const ReportContext& ctx, std::string* error) {
    std::string h =
        "<!DOCTYPE html><html><head><meta charset='utf-8'><title>ZVL accuracy and "
        "speed</title><style>";
    h += kStyle;
    h += "</style></head><body><h1>ZVL: accuracy and speed</h1>";
    const int head = ctx.headline_cpu;
    h += fmt("<p class='build'>zvl %s, commit %s, built with %s; run on %s (%s), %s, in %.0f s.</p>",
             esc(ctx.version).c_str(), esc(ctx.commit).c_str(), esc(ctx.compiler).c_str(),
             esc(ctx.machine).c_str(), esc(ctx.features).c_str(), esc(ctx.date).c_str(),
             ctx.seconds);
    h += fmt("<p>The loop r[i] = 1.5 * a[i], what moving the data costs: %.2f / %.2f / %.2f ns per "
             "element at n = 1e3 / 1e6 / 1e7.</p>",
             ctx.copy_ns[0], ctx.copy_ns[1], ctx.copy_ns[2]);
    h += fmt(
        "<p>Accuracy: largest error against MPFR (192 bits) over %zu seeded random samples per "
        "function, sweeps around special points and the hard-to-round cases, each kernel run "
        "on the whole array and element by element. Errors are in ulps of the correctly "
        "rounded result (relative error for budgets given so). Speed: median time per element "
        "of the calling thread, kernels called directly, at cpu type %d (%s) and at cpu type 5 "
        "(e9, AVX). <span class='slow'>Shaded</span> times are slower than the function's "
        "baseline loop.<br>Kernel set: %s.</p>",
        ctx.samples, head, kCpuLabels[head], esc(ctx.kernel_set).c_str());

    h += "<h2>Summary</h2><div class='wide'><table class='summary'><tr>"
         "<th class='l' rowspan='2'>function</th>"
         "<th rowspan='2'>mode</th><th rowspan='2'>max error,<br>all cpu types</th>"
         "<th rowspan='2'>at</th><th rowspan='2'>budget</th>";
    h += fmt("<th colspan='%d'>ns/elem %d %s</th><th colspan='%d'>ns/elem 5 e9</th>"
             "<th colspan='2' class='l'>baseline</th><th colspan='2'>speed-up, n=1e3</th>"
             "<th colspan='2' class='l'>best peer at e9's set (AVX)</th>"
             "<th colspan='2' class='l'>best peer, any set</th></tr><tr>",
             kSizes, head, kCpuLabels[head], kSizes);
    for (int k = 0; k < 2; ++k)
        for (int sz = 0; sz < kSizes; ++sz) h += fmt("<th>n=%s</th>", kSizeLabel[sz]);
    h += "<th class='l'>loop</th><th>n=1e3</th>";
    h += fmt("<th>%s</th><th>e9</th>", kCpuLabels[head]);
    h += "<th class='l'>peer</th><th>n=1e3</th><th class='l'>peer</th><th>n=1e3</th></tr>";
    for (const FunctionReport& r : reports) {
        const int modes = has_modes(*r.f) ? kModes : 1;
        for (int m = 0; m < modes; ++m) {
            const Worst w = worst_over_cpus(r, m);
            const bool over = r.budget[m] && w.value > r.budget[m]->bound;
            h += fmt("<tr><td class='l'><a href='#%s'>%s</a></td><td>%s</td>", r.f->row->name,
                     r.f->row->name, mode_label(*r.f, m));
            h += fmt("<td class='%s'>%s</td><td>%s</td><td>%s</td>", over ? "over" : "",
                     err_text(w.value, relative(r, m)).c_str(),
                     w.cpu >= 0 ? kCpuLabels[w.cpu] : "-", budget_text(r.budget[m]).c_str());
            for (int cpu : {head, 5})
                for (int sz = 0; sz < kSizes; ++sz)
                    h += time_cell(r, cpu, m, sz);
            const PeerResult* base = r.peers.empty() ? nullptr : &r.peers[0];
            if (base && base->ran)
                h += fmt("<td class='l'>%s</td><td>%.2f</td><td>%.2fx</td><td>%.2fx</td>",
                         esc(base->peer->label).c_str(), base->ns[0], speedup(r, head, m, 0),
                         speedup(r, 5, m, 0));
            else
                h += "<td class='l'>-</td><td></td><td></td><td></td>";
            for (Isa most : {Isa::Avx, Isa::Avx2Fma}) {
                const PeerResult* p = best_peer(r, most);
                h += p ? fmt("<td class='l'>%s</td><td>%.2f</td>", esc(p->peer->label).c_str(),
                             p->ns[0])
                       : std::string("<td class='l'>-</td><td></td>");
            }
            h += "</tr>";
        }
    }
    h += "</table></div>";

    for (const FunctionReport& r : reports) {
        const Function& f = *r.f;
        const int modes = has_modes(f) ? kModes : 1;
        h += fmt("<h2 id='%s'>%s: %s <small>(%s)</small></h2>", f.row->name, f.row->name,
                 esc(f.row->formula).c_str(), f.exported);
        size_t random = 0, special = 0, hard = 0;
        for (Origin o : r.acc.samples.origin)
            (o == Origin::Random ? random : o == Origin::Hard ? hard : special)++;
        h += fmt("<p>%zu random samples, %zu at special points, %zu hard cases.</p>", random,
                 special, hard);
        h += "<table><tr><th class='l'>largest error</th>";
        for (int cpu = kCpuTypes - 1; cpu >= 0; --cpu)
            h += fmt("<th>%d %s</th>", cpu, kCpuLabels[cpu]);
        h += "<th>budget</th></tr>";
        for (int m = 0; m < modes; ++m) {
            h += fmt("<tr><td class='l'>%s</td>", mode_label(f, m));
            for (int cpu = kCpuTypes - 1; cpu >= 0; --cpu) {
                if (!r.acc.ran[cpu][m]) {
                    h += "<td>-</td>";
                    continue;
                }
                const Stats& st = r.acc.stats[cpu][m];
                const double v = relative(r, m) ? st.max_rel : st.max_ulp;
                const bool over = r.budget[m] && v > r.budget[m]->bound;
                h += fmt("<td class='%s'>%s</td>", over ? "over" : "",
                         err_text(v, relative(r, m)).c_str());
            }
            h += "<td>" + budget_text(r.budget[m]) + "</td></tr>";
        }
        h += "</table><ul class='worst'>";
        for (int m = 0; m < modes; ++m) {
            const Worst w = worst_over_cpus(r, m);
            if (w.cpu >= 0)
                h += fmt("<li>%s worst, ", has_modes(f) ? kModeNames[m] : "") +
                     worst_text(r, w.cpu, m) + "</li>";
        }
        h += "</ul><div>";
        // Two-argument functions: the error against each argument.
        for (int m = 0; m < modes; ++m) {
            h += error_plot(r, m, head, arity(f.shape) == 1 ? PlotAxis::A : f.row->plot);
            if (arity(f.shape) == 2)
                h += error_plot(r, m, head, f.row->plot == PlotAxis::A ? PlotAxis::B : PlotAxis::A);
        }
        h += "</div>";

        h += "<table><tr><th class='l'>ns per element<br>n=1e3 / n=1e6 / n=1e7</th>";
        for (int cpu = kCpuTypes - 1; cpu >= 0; --cpu)
            h += fmt("<th>%d %s</th>", cpu, kCpuLabels[cpu]);
        h += "</tr>";
        for (int m = 0; m < modes; ++m) {
            h += fmt("<tr><td class='l'>%s</td>", mode_label(f, m));
            for (int cpu = kCpuTypes - 1; cpu >= 0; --cpu)
                h += r.timed[cpu][m]
                         ? fmt("<td class='%s'>%.2f / %.2f / %.2f</td>",
                               slower_than_baseline(r, cpu, m, 0) ? "slow" : "", r.ns[cpu][m][0],
                               r.ns[cpu][m][1], r.ns[cpu][m][2])
                         : std::string("<td>-</td>");
            h += "</tr>";
        }
        h += "</table><table><tr><th class='l'>peer</th><th>ns n=1e3</th><th>n=1e6</th>"
             "<th>n=1e7</th><th class='l'>largest error, its input, the peer's result</th></tr>";
        for (const PeerResult& p : r.peers) {
            if (p.ran)
                h += fmt("<tr><td class='l'>%s</td><td>%.2f</td><td>%.2f</td><td>%.2f</td>"
                         "<td class='l'>%s</td></tr>",
                         esc(p.peer->label).c_str(), p.ns[0], p.ns[1], p.ns[2],
                         esc(worst_input(r.acc, p.accuracy)).c_str());
            else
                h += fmt("<tr><td class='l'>%s</td><td colspan='4' class='l'>skipped: %s</td></tr>",
                         esc(p.peer->label).c_str(), esc(p.why ? p.why : "").c_str());
        }
        h += "</table>" + time_chart(r);
    }
    h += "</body></html>\n";
    return write_text(path, h, error);
}

bool write_text(const std::string& path, const std::string& text, std::string* error) {
    FILE* out = std::fopen(path.c_str(), "w");
    if (!out) {
        *error = "cannot write " + path;
        return false;
    }
    const bool ok = std::fwrite(text.data(), 1, text.size(), out) == text.size();
    return std::fclose(out) == 0 && ok;
}

}  // namespace zvl_tools
