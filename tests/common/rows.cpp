#include "tests/common/rows.h"

#include <cmath>
#include <cstdlib>
#include <cstring>
#include <type_traits>

#include "frame/kernel_sets.h"
#include "state/state.h"
#include "tests/common/capture.h"

namespace zvl_test {

const char* const kCpuLabels[kCpuTypes] = {"ex", "e7", "u8", "y8", "h8", "e9"};
const char* const kTags[3] = {"HA", "50", "26"};

bool cpu_runs(int cpu) {
    switch (cpu) {
        case 5: return __builtin_cpu_supports("avx");
        case 4: return __builtin_cpu_supports("sse4.2");
        case 3: return __builtin_cpu_supports("sse4.1");
        case 2: return __builtin_cpu_supports("ssse3");
        default: return true;
    }
}

void Kernel::operator()(int32_t n, const double* a, const double* b, double* r, double* r2) const {
    switch (shape) {
        case Shape::D1: return reinterpret_cast<zvl::KernelD1>(fn)(n, a, r);
        case Shape::D2: return reinterpret_cast<zvl::KernelD2>(fn)(n, a, b, r);
        case Shape::D12: return reinterpret_cast<zvl::KernelD12>(fn)(n, a, r, r2);
        case Shape::DX: return reinterpret_cast<zvl::KernelDx>(fn)(n, a, *b, r);
    }
}

namespace {

constexpr double kNaN = __builtin_nan("");
constexpr uint8_t kAll = 0x3f;

// The rounding family: nothing reports; `shielded`, the cpu types whose
// kernel gives the same whatever the caller's rounding.
constexpr Traits rounding(const char* exported, uint8_t shielded) {
    return {exported, 1e-3, 1e6, true, 0, 0, false, {kNaN, 0}, {}, 0, {kNaN, 0}, {1.0, 0}, {},
            {shielded, 0, 0}, 0, {}};
}

constexpr int32_t kSing = ZVL_STATUS_SING, kDom = ZVL_STATUS_ERRDOM;

// exported, |a| from, to, signed, |b| from, to, signed,
//   reports, its stand-in, its status, quiet, its stand-in, subnormal result,
//   shielded cpu types by column, LA runs HA at, variants by column
const Traits kTraits[] = {
    {"VDINV", 1e-3, 1e3, true, 0, 0, false,
     {0.0, 0}, {1.0, 0}, kSing, {kNaN, 0}, {1.5, 0}, {0x1.8p1023, 0},
     {0x06, 0x1e, 0x1e}, 0x01, {}},
    {"VDDIV", 1e-3, 1e3, true, 1e-3, 1e3, true,
     {3.0, 0.0}, {3.0, 1.0}, kSing, {3.0, kNaN}, {3.0, 1.5}, {1e-300, 3e20},
     {0x06, 0x1e, 0x1e}, 0x01, {}},
    {"VDSQRT", 1e-3, 1e3, false, 0, 0, false,
     {-1.0, 0}, {1.0, 0}, kDom, {kNaN, 0}, {1.0, 0}, {},
     {0x00, 0x00, 0x3c}, 0x01, {}},
    {"VDINVSQRT", 1e-3, 1e3, false, 0, 0, false,
     {0.0, 0}, {1.0, 0}, kSing, {kNaN, 0}, {1.0, 0}, {},
     {kAll, kAll, kAll}, 0x01, {}},
    {"VDCBRT", 1e-3, 1e3, true, 0, 0, false,
     {kNaN, 0}, {}, 0, {kNaN, 0}, {1.0, 0}, {},
     {kAll, kAll, kAll}, 0x01, {}},
    {"VDINVCBRT", 1e-3, 1e3, true, 0, 0, false,
     {0.0, 0}, {1.0, 0}, kSing, {kNaN, 0}, {1.0, 0}, {},
     {kAll, kAll, kAll}, 0x01, {}},
    {"VDPOW", 0.5, 2.0, false, 0.1, 10.0, true,
     {-8.0, 1.0 / 3}, {8.0, 1.0 / 3}, kDom, {-2.0, 3.0}, {2.0, 3.0}, {2.0, -1030.0},
     {0x23, 0x03, 0x01}, 0x01, {}},
    {"VDPOWX", 0.5, 2.0, false, 1.5, 1.5, false,
     {-8.0, 0}, {8.0, 0}, kDom, {kNaN, 0}, {2.0, 0}, {0x1p-700, 0},
     {0x23, 0x03, 0x01}, 0x01, {}},
    {"VDEXP", 1e-3, 700.0, true, 0, 0, false,
     {1000.0, 0}, {1.0, 0}, ZVL_STATUS_OVERFLOW, {708.5, 0}, {1.0, 0}, {-710.0, 0},
     {0x1f, 0x07, 0x0f}, 0x01, {"AAAAAA", "ADDBBB", "AEEECC"}},
    {"VDLN", 1e-300, 1e300, false, 0, 0, false,
     {0.0, 0}, {2.0, 0}, kSing, {1e-310, 0}, {2.0, 0}, {},
     {0x1f, 0x03, 0x01}, 0x03, {"DDDDDA", "DDBBBB", "DEEECC"}},
    {"VDLOG10", 1e-300, 1e300, false, 0, 0, false,
     {0.0, 0}, {2.0, 0}, kSing, {1e-310, 0}, {2.0, 0}, {},
     {kAll, kAll, 0x01}, kAll, {"HHHHHH", "HHHHHH", "HPPPPP"}},
    rounding("VDCEIL", kAll),
    rounding("VDFLOOR", kAll),
    rounding("VDMODF", kAll),
    rounding("VDROUND", 0x1b),  // types 2 and 5 have no guard
    rounding("VDTRUNC", kAll),
    rounding("VDNEARBYINT", 0),
    rounding("VDRINT", 0),
};

const Traits kDefault = {nullptr, 0.5, 2.0, false, 0.5, 2.0, false, {kNaN, 0}, {}, 0,
                         {kNaN, 1.0}, {1.0, 1.0}, {}, {}, 0x01, {}};

const Traits* traits_of(const char* exported) {
    for (const Traits& t : kTraits)
        if (std::strcmp(t.exported, exported) == 0) return &t;
    return &kDefault;
}

template <class K>
Kernel make(K k, Shape s) {
    return {s, reinterpret_cast<void (*)()>(k)};
}

// The exported entries in one calling form, by the entry's type.
using D1Entry = void (*)(const int*, const double*, double*);
using D12Entry = void (*)(const int*, const double*, double*, double*);
template <auto F>
void entry(const int* n, const double* a, const double* b, double* r, double* r2) {
    if constexpr (std::is_same_v<decltype(F), D1Entry>) F(n, a, r);
    else if constexpr (std::is_same_v<decltype(F), D12Entry>) F(n, a, r, r2);
    else F(n, a, b, r);
}
template <auto F>
void entry_idx(const int* n, const double* a, int ia, const double* b, int ib, double* r, int ir,
               double* r2, int ir2) {
    using T = decltype(F);
    if constexpr (std::is_same_v<T, void (*)(const int*, const double*, int, double*, int)>)
        F(n, a, ia, r, ir);
    else if constexpr (std::is_same_v<T, void (*)(const int*, const double*, int, double*, int,
                                                  double*, int)>)
        F(n, a, ia, r, ir, r2, ir2);
    else if constexpr (std::is_same_v<T, void (*)(const int*, const double*, int, const double*,
                                                  double*, int)>)
        F(n, a, ia, b, r, ir);  // the scalar has no index
    else
        F(n, a, ia, b, ib, r, ir);
}

#define ZT_ROW(EXPORT, report, SHAPE, rounding, slot)                  \
    {#EXPORT, #report, Shape::SHAPE, rounding,                          \
     [](int cpu, [[maybe_unused]] int col) {                            \
         return make(zvl::kernels_##EXPORT.k slot, Shape::SHAPE);       \
     },                                                                 \
     entry<EXPORT>, entry_idx<EXPORT##_Idx>, traits_of(#EXPORT)},
#define ZT_D1(EXPORT, report, id, fam) ZT_ROW(EXPORT, report, D1, false, [cpu][col])
#define ZT_D2(EXPORT, report, id, fam) ZT_ROW(EXPORT, report, D2, false, [cpu][col])
#define ZT_D12(EXPORT, report, id, fam) ZT_ROW(EXPORT, report, D12, false, [cpu][col])
#define ZT_DX(EXPORT, report, id, fam) ZT_ROW(EXPORT, report, DX, false, [cpu][col])
#define ZT_R1(EXPORT, report, fam) ZT_ROW(EXPORT, report, D1, true, [cpu])
#define ZT_R12(EXPORT, report, fam) ZT_ROW(EXPORT, report, D12, true, [cpu])

}  // namespace

int Row::arrays() const { return shape == Shape::D1 || shape == Shape::DX ? 2 : 3; }
bool Row::has_report() const { return !std::isnan(traits->reports.a); }

// The complex shapes have no rows yet.
const std::vector<Row>& rows() {
    static const std::vector<Row> all = {ZVL_FUNCTIONS(ZT_D1, ZT_D2, ZT_D12, ZT_DX, ZVL_IGNORE_ROW,
                                                       ZVL_IGNORE_ROW, ZVL_IGNORE_ROW, ZT_R1,
                                                       ZT_R12)};
    return all;
}

const Row& row(const char* exported) {
    for (const Row& r : rows())
        if (std::strcmp(r.exported, exported) == 0) return r;
    std::abort();
}

bool runs_ha(const Row& r, int cpu, int col) {
    return col == zvl::kHA || cpu == 0 || (col == zvl::kLA && (r.traits->la_runs_ha >> cpu & 1));
}

std::string Slot::name() const {
    return std::string("zel_zvl_core_") + kCpuLabels[cpu] + "_zvl_d" + (row->report + 2) + "_" +
           kTags[runs_ha(*row, cpu, col) ? 0 : col];
}

std::vector<Slot> distinct_slots() {
    std::vector<Slot> v;
    for (const Row& r : rows())
        for (int cpu = 0; cpu < kCpuTypes; ++cpu)
            for (int col = 0; col < (r.rounding ? 1 : 3); ++col)
                if (col == 0 || !runs_ha(r, cpu, col)) v.push_back({&r, cpu, col});
    return v;
}

std::string slot_label(const Slot& s) {
    return std::string(s.row->report) + "_" + kCpuLabels[s.cpu] +
           (s.row->rounding ? "" : std::string("_") + kTags[s.col]);
}

void Args::set(int i, Element e, Shape s) {
    a[static_cast<size_t>(i)] = e.a;
    if (s == Shape::D2) b[static_cast<size_t>(i)] = e.b;
}

Args ordinary(const Row& r, int n, uint64_t seed) {
    const Traits& t = *r.traits;
    Args x;
    uint64_t h = seed * 0x9E3779B97F4A7C15u + 1;
    auto draw = [&](double lo, double hi, bool sign) {
        h = h * 6364136223846793005u + 1442695040888963407u;
        const double u = static_cast<double>(h >> 11) * 0x1p-53;
        const double v = lo * std::pow(hi / lo, u);
        return sign && (h >> 10 & 1) ? -v : v;
    };
    for (int i = 0; i < n; ++i) {
        x.a.push_back(draw(t.a_lo, t.a_hi, t.a_signed));
        if (r.shape == Shape::D2) x.b.push_back(draw(t.b_lo, t.b_hi, t.b_signed));
    }
    if (r.shape == Shape::DX) x.b.push_back(t.b_lo);
    return x;
}

bool same(double x, double y) {
    return (std::isnan(x) && std::isnan(y)) || bits_of(x) == bits_of(y);
}

bool close(double got, double want, int col, bool rounding) {
    if (rounding || !std::isfinite(want) || want == 0.0) return same(got, want);
    if (!std::isfinite(got)) return false;
    if (col == zvl::kEP) return std::fabs(got - want) <= 0x1p-24 * std::fabs(want);
    const double ulp = std::fabs(std::nextafter(want, INFINITY) - want);
    return std::fabs(got - want) <= (col == zvl::kHA ? 2 : 8) * ulp;
}

namespace {

std::vector<Report> g_reports;
bool g_replace = false;

int record(ZVLErrorRecord* rec) {
    g_reports.push_back({rec->status, rec->index, rec->r1,
                         std::string(rec->name, static_cast<size_t>(rec->name_len))});
    if (g_replace) rec->r1 = kReplaced;
    return 0;
}

}  // namespace

ReportLog::ReportLog(bool replace) : saved_mode_(zvl::get_mode()) {
    g_reports.clear();
    g_replace = replace;
    zvl::set_callback(record);
    zvl::set_array_base(nullptr);  // indices as the kernel passes them
    zvl::set_mode(zvl::kCallbackBit);
}

ReportLog::~ReportLog() {
    zvl::clear_callback();
    zvl::set_mode(saved_mode_);
}

const std::vector<Report>& ReportLog::list() const { return g_reports; }
void ReportLog::clear() { g_reports.clear(); }

}  // namespace zvl_test
