// The function table as the tests see it: every row of frame/function_table.h
// with its kernels and exported entries in one calling form, and what the
// tests know of the row (ordinary arguments, an element that reports, which
// kernels shield themselves from the caller's floating-point modes). A row
// the tests have no traits for runs with the defaults, so a new function is
// checked from the day its row is added.
#pragma once

#include <cstdint>
#include <ostream>
#include <string>
#include <vector>

#include "kernels/common/plan.h"
#include "zvl.h"

namespace zvl_test {

// As the table's rows; rounding rows are D1 or D12.
enum class Shape { D1, D2, D12, DX, Z1, Z2, ZX };

constexpr int kCpuTypes = 6;
extern const char* const kCpuLabels[kCpuTypes];  // "ex" .. "e9"
extern const char* const kTags[3];               // "HA", "50", "26": column HA, LA, EP

// Whether this processor runs cpu type `cpu`'s kernels.
bool cpu_runs(int cpu);

// Any kernel in one calling form: b is the second array (D2, Z2) or points
// to the scalar (DX, ZX); r2 is the second output (D12). Others are
// ignored. The arrays of the complex shapes hold pairs of doubles.
struct Kernel {
    Shape shape;
    void (*fn)();
    void operator()(int32_t n, const double* a, const double* b, double* r, double* r2) const;
};

// One element of the arguments: a and b of a real row's two inputs, or the
// real and imaginary parts of a complex row's first input.
struct Element {
    double a, b;
};

// What the tests know of a row beyond the table and the plan. Written with
// designated initializers; a field left out takes the default below.
struct Traits {
    const char* exported = nullptr;
    double a_lo = 0.5, a_hi = 2.0;  // ordinary first arguments: magnitudes spread over [a_lo, a_hi]
    bool a_signed = false;          // ... of either sign
    double b_lo = 0.5, b_hi = 2.0;  // ordinary second arguments; the scalar shapes use b_lo
    bool b_signed = false;
    // An element that reports (a NaN in `reports.a`: none), one that leaves
    // the vector path without a report, and for each an ordinary element
    // that stands in for it; the type 5 Inv and Div kernels share work among
    // the mantissas of a block, so a stand-in there has the mantissa of the
    // element it replaces.
    Element reports = {__builtin_nan(""), 0}, reports_standin = {};
    int32_t status = 0;  // the reporting element's
    Element quiet = {__builtin_nan(""), 1.0}, quiet_standin = {1.0, 1.0};
    Element subnormal = {};  // an element with a subnormal result (a == 0: none)
    // The rounding family: the cpu types (a bit each) whose kernel gives the
    // same whatever the caller's rounding. (A moded function's slots say so
    // by their plan's guards.)
    uint8_t rounding_shielded = 0;
    // The plan variants that send an element's neighbour of the pair (2k,
    // 2k + 1) to the callout with it (Tan LA and EP): that neighbour may
    // change, within the mode's accuracy.
    const char* pair_variants = "";
    // The plan variants whose results depend on where a chunk of a parallel
    // call starts: they share work between neighbouring elements.
    const char* chunk_variants = "";
    // The plan variants whose callouts report under a fixed label of their
    // own rather than the kernel's name (the trigonometric families).
    struct Label {
        const char* variants;
        const char* name;
    };
    Label labels[2] = {{"", nullptr}, {"", nullptr}};
};

struct Row {
    const char* exported;  // VDINV
    const char* report;    // vdInv, the name of parameter errors
    Shape shape;
    bool rounding;  // one kernel per cpu type, no modes
    int elem_doubles;  // 1 for a real element, 2 for a complex one
    const zvl::Plan* plan;
    Kernel (*kernel)(int cpu, int col);
    void (*entry)(const int* n, const double* a, const double* b, double* r, double* r2);
    void (*entry_idx)(const int* n, const double* a, int ia, const double* b, int ib, double* r,
                      int ir, double* r2, int ir2);
    const Traits* traits;

    int arrays() const;  // pointers the entry checks: 2 or 3
    bool has_report() const;
    // The slot's own kernel cell, forwards followed.
    const zvl::Cell& cell(int cpu, int col) const { return plan->kernel_at(cpu, col); }
    // Computes as in round to nearest without flushing, whatever the
    // caller's modes.
    bool shielded(int cpu, int col) const;
};

const std::vector<Row>& rows();
const Row& row(const char* exported);

// One kernel of a row: slots whose LA or EP column runs the HA kernel are
// the HA slot.
struct Slot {
    const Row* row;
    int cpu;
    int col;
    Kernel kernel() const { return row->kernel(cpu, col); }
    std::string name() const;  // the name it reports under: the kernel's, or its label
};

bool runs_ha(const Row& r, int cpu, int col);  // the slot forwards to its cpu type's HA kernel
std::vector<Slot> distinct_slots();
std::string slot_label(const Slot& s);  // vdInv_e7_50
inline void PrintTo(const Slot& s, std::ostream* os) { *os << slot_label(s); }

// Arguments of a call on n elements: b holds n elements for D2 and Z2, the
// scalar for DX and ZX, and is empty otherwise; a complex element is two
// doubles.
struct Args {
    std::vector<double> a, b;
    const double* bp() const { return b.empty() ? nullptr : b.data(); }
    void set(int i, Element e, Shape s);
};
Args ordinary(const Row& r, int n, uint64_t seed = 1);

// Equal bits, or both NaN.
bool same(double x, double y);
// Within the accuracy mode's reach of a reference result: 2 ulps in HA, 8 in
// LA, 2^-24 relative in EP, exact in the rounding family.
bool close(double got, double want, int col, bool rounding);

struct Report {
    int32_t status, index;
    double r1;  // the result as the kernel stored it
    std::string name;
};
constexpr double kReplaced = 12345.0;

// Records every report; the callback is the only error action while it
// lives, and with `replace` it makes kReplaced the element's result.
class ReportLog {
  public:
    explicit ReportLog(bool replace = false);
    ~ReportLog();
    ReportLog(const ReportLog&) = delete;
    ReportLog& operator=(const ReportLog&) = delete;
    const std::vector<Report>& list() const;
    void clear();

  private:
    uint32_t saved_mode_;
};

}  // namespace zvl_test
