#include "tests/common/rows.h"

#include <cmath>
#include <cstdlib>
#include <cstring>
#include <type_traits>

#include "frame/kernel_sets.h"
#include "kernels/plans.h"
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

namespace {
const ZVLComplex16* z(const double* p) { return reinterpret_cast<const ZVLComplex16*>(p); }
ZVLComplex16* z(double* p) { return reinterpret_cast<ZVLComplex16*>(p); }
}  // namespace

void Kernel::operator()(int32_t n, const double* a, const double* b, double* r, double* r2) const {
    switch (shape) {
        case Shape::D1: return reinterpret_cast<zvl::KernelD1>(fn)(n, a, r);
        case Shape::D2: return reinterpret_cast<zvl::KernelD2>(fn)(n, a, b, r);
        case Shape::D12: return reinterpret_cast<zvl::KernelD12>(fn)(n, a, r, r2);
        case Shape::DX: return reinterpret_cast<zvl::KernelDx>(fn)(n, a, *b, r);
        case Shape::Z1: return reinterpret_cast<zvl::KernelZ1>(fn)(n, z(a), z(r));
        case Shape::Z2: return reinterpret_cast<zvl::KernelZ2>(fn)(n, z(a), z(b), z(r));
        case Shape::ZX: return reinterpret_cast<zvl::KernelZx>(fn)(n, z(a), z(b), z(r));
    }
}

namespace {

constexpr double kNaN = __builtin_nan("");
constexpr double kInf = __builtin_inf();
constexpr uint8_t kAll = 0x3f;

constexpr Traits rounding(const char* exported, uint8_t shielded) {
    return {.exported = exported, .a_lo = 1e-3, .a_hi = 1e6, .a_signed = true, .quiet = {kNaN, 0},
            .quiet_standin = {1.0, 0}, .rounding_shielded = shielded};
}

constexpr int32_t kSing = ZVL_STATUS_SING, kDom = ZVL_STATUS_ERRDOM;

const Traits kTraits[] = {
    {.exported = "VDINV", .a_lo = 1e-3, .a_hi = 1e3, .a_signed = true,
     .reports = {0.0, 0}, .reports_standin = {1.0, 0}, .status = kSing,
     .quiet = {kNaN, 0}, .quiet_standin = {1.5, 0}, .subnormal = {0x1.8p1023, 0}},
    {.exported = "VDDIV", .a_lo = 1e-3, .a_hi = 1e3, .a_signed = true,
     .b_lo = 1e-3, .b_hi = 1e3, .b_signed = true,
     .reports = {3.0, 0.0}, .reports_standin = {3.0, 1.0}, .status = kSing,
     .quiet = {3.0, kNaN}, .quiet_standin = {3.0, 1.5}, .subnormal = {1e-300, 3e20}},
    {.exported = "VDSQRT", .a_lo = 1e-3, .a_hi = 1e3,
     .reports = {-1.0, 0}, .reports_standin = {1.0, 0}, .status = kDom,
     .quiet = {kNaN, 0}, .quiet_standin = {1.0, 0}},
    {.exported = "VDINVSQRT", .a_lo = 1e-3, .a_hi = 1e3,
     .reports = {0.0, 0}, .reports_standin = {1.0, 0}, .status = kSing,
     .quiet = {kNaN, 0}, .quiet_standin = {1.0, 0}},
    {.exported = "VDCBRT", .a_lo = 1e-3, .a_hi = 1e3, .a_signed = true,
     .reports = {kNaN, 0}, .quiet = {kNaN, 0}, .quiet_standin = {1.0, 0}},
    {.exported = "VDINVCBRT", .a_lo = 1e-3, .a_hi = 1e3, .a_signed = true,
     .reports = {0.0, 0}, .reports_standin = {1.0, 0}, .status = kSing,
     .quiet = {kNaN, 0}, .quiet_standin = {1.0, 0}},
    {.exported = "VDPOW", .a_lo = 0.5, .a_hi = 2.0, .b_lo = 0.1, .b_hi = 10.0, .b_signed = true,
     .reports = {-8.0, 1.0 / 3}, .reports_standin = {8.0, 1.0 / 3}, .status = kDom,
     .quiet = {-2.0, 3.0}, .quiet_standin = {2.0, 3.0}, .subnormal = {2.0, -1030.0}},
    {.exported = "VDPOWX", .a_lo = 0.5, .a_hi = 2.0, .b_lo = 1.5, .b_hi = 1.5,
     .reports = {-8.0, 0}, .reports_standin = {8.0, 0}, .status = kDom,
     .quiet = {kNaN, 0}, .quiet_standin = {2.0, 0}, .subnormal = {0x1p-700, 0}},
    {.exported = "VDEXP", .a_lo = 1e-3, .a_hi = 700.0, .a_signed = true,
     .reports = {1000.0, 0}, .reports_standin = {1.0, 0}, .status = ZVL_STATUS_OVERFLOW,
     .quiet = {708.5, 0}, .quiet_standin = {1.0, 0}, .subnormal = {-710.0, 0}},
    {.exported = "VDLN", .a_lo = 1e-300, .a_hi = 1e300,
     .reports = {0.0, 0}, .reports_standin = {2.0, 0}, .status = kSing,
     .quiet = {1e-310, 0}, .quiet_standin = {2.0, 0}},
    {.exported = "VDLOG10", .a_lo = 1e-300, .a_hi = 1e300,
     .reports = {0.0, 0}, .reports_standin = {2.0, 0}, .status = kSing,
     .quiet = {1e-310, 0}, .quiet_standin = {2.0, 0}},
    // The trigonometric callouts' labels: the older step pi/32 cells of Sin
    // and Cos, every SinCos and Tan cell.
    {.exported = "VDSIN", .labels = {{"B", "dSin_HA"}}},
    {.exported = "VDCOS", .labels = {{"B", "dCos_HA"}}},
    {.exported = "VDSINCOS", .labels = {{"AFCDE", "dSinCos_HA"}, {"H", "dSinCos_LA"}}},
    {.exported = "VDTAN", .a_lo = 1e-3, .a_hi = 1e3, .a_signed = true, .reports = {HUGE_VAL, 0},
     .reports_standin = {1.0, 0}, .status = kDom, .quiet = {kNaN, 0}, .quiet_standin = {1.0, 0},
     .pair_variants = "LP", .chunk_variants = "HLP", .labels = {{"HZ", "dTan_HA"}, {"LP", "dTan_LA"}}},
    {.exported = "VDACOS", .a_lo = 1e-3, .a_hi = 0.999, .a_signed = true,
     .reports = {2.0, 0}, .reports_standin = {0.5, 0}, .status = kDom,
     .quiet = {kNaN, 0}, .quiet_standin = {0.5, 0}},
    {.exported = "VDASIN", .a_lo = 1e-3, .a_hi = 0.999, .a_signed = true,
     .reports = {-kInf, 0}, .reports_standin = {0.5, 0}, .status = kDom,
     .quiet = {-1.0, 0}, .quiet_standin = {0.5, 0}, .subnormal = {1e-310, 0}},
    {.exported = "VDATAN", .a_lo = 1e-3, .a_hi = 1e3, .a_signed = true,
     .quiet = {kNaN, 0}, .quiet_standin = {1.0, 0}, .subnormal = {-1e-310, 0}},
    {.exported = "VDATAN2", .a_lo = 1e-3, .a_hi = 1e3, .a_signed = true,
     .b_lo = 1e-3, .b_hi = 1e3, .b_signed = true,
     .quiet = {1.0, -0.0}, .quiet_standin = {1.0, -1.0}, .subnormal = {1e-310, 3.0}},
    {.exported = "VDCOSH", .a_lo = 1e-3, .a_hi = 700.0, .a_signed = true,
     .reports = {1000.0, 0}, .reports_standin = {1.0, 0}, .status = ZVL_STATUS_OVERFLOW,
     .quiet = {709.0, 0}, .quiet_standin = {1.0, 0}},
    {.exported = "VDSINH", .a_lo = 1e-3, .a_hi = 700.0, .a_signed = true,
     .reports = {-1000.0, 0}, .reports_standin = {-1.0, 0}, .status = ZVL_STATUS_OVERFLOW,
     .quiet = {709.0, 0}, .quiet_standin = {1.0, 0}, .subnormal = {-1e-310, 0}},
    {.exported = "VDTANH", .a_lo = 1e-3, .a_hi = 19.0, .a_signed = true,
     .quiet = {kNaN, 0}, .quiet_standin = {1.0, 0}, .subnormal = {1e-310, 0}},
    {.exported = "VDACOSH", .a_lo = 1.0, .a_hi = 1e3,
     .reports = {0.5, 0}, .reports_standin = {2.0, 0}, .status = kDom,
     .quiet = {kNaN, 0}, .quiet_standin = {2.0, 0}},
    {.exported = "VDASINH", .a_lo = 1e-3, .a_hi = 1e3, .a_signed = true,
     .quiet = {kNaN, 0}, .quiet_standin = {1.0, 0}, .subnormal = {1e-310, 0}},
    {.exported = "VDATANH", .a_lo = 1e-3, .a_hi = 0.999, .a_signed = true,
     .reports = {-1.0, 0}, .reports_standin = {-0.5, 0}, .status = kSing,
     .quiet = {kNaN, 0}, .quiet_standin = {0.5, 0}, .subnormal = {1e-310, 0}},
    {.exported = "VDERF", .a_lo = 1e-3, .a_hi = 5.0, .a_signed = true,
     .quiet = {kNaN, 0}, .quiet_standin = {1.0, 0}, .subnormal = {1e-310, 0}},
    {.exported = "VDERFC", .a_lo = 1e-3, .a_hi = 26.0, .a_signed = true,
     .reports = {27.5, 0}, .reports_standin = {1.0, 0}, .status = ZVL_STATUS_UNDERFLOW,
     .quiet = {kNaN, 0}, .quiet_standin = {1.0, 0}, .subnormal = {27.0, 0}},
    {.exported = "VDERFINV", .a_lo = 1e-3, .a_hi = 0.999, .a_signed = true,
     .reports = {1.0, 0}, .reports_standin = {0.5, 0}, .status = kSing,
     .quiet = {kNaN, 0}, .quiet_standin = {0.5, 0}, .subnormal = {1e-310, 0}},
    rounding("VDCEIL", kAll),
    rounding("VDFLOOR", kAll),
    rounding("VDMODF", kAll),
    rounding("VDROUND", 0x1b),  // types 2 and 5 have no guard
    rounding("VDTRUNC", kAll),
    rounding("VDNEARBYINT", 0),
    rounding("VDRINT", 0),
};

const Traits kDefault = {};

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
using Z = ZVLComplex16;
using Z1Entry = void (*)(const int*, const Z*, Z*);
using Z2Entry = void (*)(const int*, const Z*, const Z*, Z*);  // and the array-and-scalar shape
template <auto F>
void entry(const int* n, const double* a, const double* b, double* r, double* r2) {
    if constexpr (std::is_same_v<decltype(F), D1Entry>) F(n, a, r);
    else if constexpr (std::is_same_v<decltype(F), D12Entry>) F(n, a, r, r2);
    else if constexpr (std::is_same_v<decltype(F), Z1Entry>) F(n, z(a), z(r));
    else if constexpr (std::is_same_v<decltype(F), Z2Entry>) F(n, z(a), z(b), z(r));
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
    else if constexpr (std::is_same_v<T, void (*)(const int*, const Z*, int, Z*, int)>)
        F(n, z(a), ia, z(r), ir);
    else if constexpr (std::is_same_v<T, void (*)(const int*, const Z*, int, const Z*, Z*, int)>)
        F(n, z(a), ia, z(b), z(r), ir);
    else if constexpr (std::is_same_v<T, void (*)(const int*, const Z*, int, const Z*, int, Z*, int)>)
        F(n, z(a), ia, z(b), ib, z(r), ir);
    else
        F(n, a, ia, b, ib, r, ir);
}

#define ZT_ROW(EXPORT, report, SHAPE, rounding, elem, fam, slot)         \
    {#EXPORT, #report, Shape::SHAPE, rounding, elem, &zvl::plans::fam,   \
     [](int cpu, [[maybe_unused]] int col) {                            \
         return make(zvl::kernels_##EXPORT.k slot, Shape::SHAPE);       \
     },                                                                 \
     entry<EXPORT>, entry_idx<EXPORT##_Idx>, traits_of(#EXPORT)},
#define ZT_D1(EXPORT, report, id, fam) ZT_ROW(EXPORT, report, D1, false, 1, fam, [cpu][col])
#define ZT_D2(EXPORT, report, id, fam) ZT_ROW(EXPORT, report, D2, false, 1, fam, [cpu][col])
#define ZT_D12(EXPORT, report, id, fam) ZT_ROW(EXPORT, report, D12, false, 1, fam, [cpu][col])
#define ZT_DX(EXPORT, report, id, fam) ZT_ROW(EXPORT, report, DX, false, 1, fam, [cpu][col])
#define ZT_Z1(EXPORT, report, id, fam) ZT_ROW(EXPORT, report, Z1, false, 2, z##fam, [cpu][col])
#define ZT_Z2(EXPORT, report, id, fam) ZT_ROW(EXPORT, report, Z2, false, 2, z##fam, [cpu][col])
#define ZT_ZX(EXPORT, report, id, fam) ZT_ROW(EXPORT, report, ZX, false, 2, z##fam, [cpu][col])
#define ZT_R1(EXPORT, report, fam) ZT_ROW(EXPORT, report, D1, true, 1, fam, [cpu])
#define ZT_R12(EXPORT, report, fam) ZT_ROW(EXPORT, report, D12, true, 1, fam, [cpu])

}  // namespace

int Row::arrays() const {
    return shape == Shape::D1 || shape == Shape::DX || shape == Shape::Z1 || shape == Shape::ZX ? 2 : 3;
}
bool Row::has_report() const { return !std::isnan(traits->reports.a); }
bool Row::shielded(int cpu, int col) const {
    return rounding ? (traits->rounding_shielded >> cpu & 1) != 0 : cell(cpu, col).shielded();
}

const std::vector<Row>& rows() {
    static const std::vector<Row> all = {
        ZVL_FUNCTIONS(ZT_D1, ZT_D2, ZT_D12, ZT_DX, ZT_Z1, ZT_Z2, ZT_ZX, ZT_R1, ZT_R12)};
    return all;
}

const Row& row(const char* exported) {
    for (const Row& r : rows())
        if (std::strcmp(r.exported, exported) == 0) return r;
    std::abort();
}

bool runs_ha(const Row& r, int cpu, int col) {
    const zvl::Where w = r.plan->target(cpu, col);
    return w.cpu == cpu && w.col == zvl::kHA;
}

std::string Slot::name() const {
    const zvl::Where w = row->plan->target(cpu, col);
    for (const Traits::Label& l : row->traits->labels)
        if (l.name && std::strchr(l.variants, row->plan->at(w.cpu, w.col).variant)) return l.name;
    return std::string("zel_zvl_core_") + kCpuLabels[w.cpu] + "_zvl_d" + (row->report + 2) + "_" +
           kTags[w.col];
}

std::vector<Slot> distinct_slots() {
    std::vector<Slot> v;
    for (const Row& r : rows())
        for (int cpu = 0; cpu < kCpuTypes; ++cpu)
            for (int col = 0; col < r.plan->columns; ++col)
                if (!r.plan->at(cpu, col).forwards()) v.push_back({&r, cpu, col});
    return v;
}

std::string slot_label(const Slot& s) {
    return std::string(s.row->report) + "_" + kCpuLabels[s.cpu] +
           (s.row->rounding ? "" : std::string("_") + kTags[s.col]);
}

void Args::set(int i, Element e, Shape s) {
    const size_t k = static_cast<size_t>(i);
    if (s == Shape::Z1 || s == Shape::Z2 || s == Shape::ZX) {
        a[2 * k] = e.a;
        a[2 * k + 1] = e.b;
        return;
    }
    a[k] = e.a;
    if (s == Shape::D2) b[k] = e.b;
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
    for (int i = 0; i < n * r.elem_doubles; ++i) {
        x.a.push_back(draw(t.a_lo, t.a_hi, t.a_signed));
        if (r.shape == Shape::D2 || r.shape == Shape::Z2) x.b.push_back(draw(t.b_lo, t.b_hi, t.b_signed));
    }
    if (r.shape == Shape::DX) x.b.push_back(t.b_lo);
    if (r.shape == Shape::ZX) x.b.insert(x.b.end(), {t.b_lo, 0.0});
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
