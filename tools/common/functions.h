// The measuring tools' registry: what the accuracy harness, zvl-ulp, the
// benchmarks and zvl-report know about each real function.
//
// Two tables meet here. The library's function table (frame/function_table.h)
// says which functions exist and gives their kernel sets and front-ends; the
// rows in functions.cpp say how to measure a function: its MPFR reference,
// where to sample, which points to sweep, its hard cases and its peers. A
// function is measured when it has both; functions.cpp keeps rows ready for
// functions that are still to come, and they come alive when the function
// table gains the function.
#pragma once

#include "kernels/common/plan.h"

#include <mpfr.h>

#include <cstddef>
#include <cstdint>
#include <vector>

namespace zvl_tools {

struct Rng;

template <class T>
struct List {
    const T* p = nullptr;
    size_t n = 0;
    const T* begin() const { return p; }
    const T* end() const { return p + n; }
    size_t size() const { return n; }
    bool empty() const { return n == 0; }
    const T& operator[](size_t i) const { return p[i]; }
};

template <class T, size_t N>
constexpr List<T> list(const T (&a)[N]) {
    return {a, N};
}

// Argument shapes the tools handle (the library's complex shapes are not
// measured by them; a one-in, two-out function is measured as one D1 row per
// output, see FunctionRow::output).
enum class Shape : uint8_t {
    D1,  // r = f(a)
    D2,  // r = f(a, b)
    DX,  // r = f(a, b) with one b for the whole array
    R1,  // rounding family: r = f(a), one kernel per cpu type, no modes
};

// Accuracy columns, in the order of the library's kernel sets.
enum Mode : int { kHA = 0, kLA = 1, kEP = 2 };
constexpr int kModes = 3;
constexpr int kCpuTypes = 6;
extern const char* const kModeNames[kModes];     // "HA", "LA", "EP"
extern const char* const kCpuLabels[kCpuTypes];  // "ex" .. "e9"

// How samples spread over an interval.
enum class Spread : uint8_t {
    Linear,   // uniform by value
    Log,      // uniform over bit patterns: each binade alike; lo and hi of one sign
    LogBoth,  // as Log over the magnitudes [lo, hi], either sign
};

struct Interval {
    double lo;
    double hi;
    Spread spread;
};

// Where random samples go: a share (weight) of them in `a` (and `b` for two
// arguments). Put regions where the algorithm changes: thresholds, table
// edges, the ranges of the callout, overflow and underflow.
struct Region {
    Interval a;
    Interval b;  // unused for one-argument functions
    double weight;
    const char* why;
};

struct Pair {
    double a;
    double b;
};

// MPFR references: the exact value rounded to the precision of r.
using Ref1 = int (*)(mpfr_ptr r, mpfr_srcptr x, mpfr_rnd_t rnd);
using Ref2 = int (*)(mpfr_ptr r, mpfr_srcptr x, mpfr_srcptr y, mpfr_rnd_t rnd);

// A custom generator of argument pairs, for functions whose useful pairs are
// not a product of intervals (pow: y chosen for x so that the result is in
// range). Fills a[0..n-1], b[0..n-1]; with shared_b all n pairs take one b.
// a_range, when not null, is the user's range for the first argument.
using PairSampler = void (*)(Rng& rng, const Interval* a_range, bool shared_b, size_t n, double* a,
                             double* b);

// Array loops in one form for every shape: b is null for one-argument
// functions and holds the scalar repeated for the array-and-scalar shape.
using LoopFn = void (*)(int32_t n, const double* a, const double* b, double* r);

// What the processor must have to run a peer.
enum class Isa : uint8_t { Base, Sse41, Avx, Avx2, Avx2Fma };

enum class PeerLib : uint8_t {
    Local,  // `loop` below, compiled with the tools
    Mvec,   // glibc's vector math library, by symbol
    Sleef,  // SLEEF, by symbol
};

// A comparison target. Library peers are vector functions of `width` lanes
// looked up by symbol at run time; they are skipped when the library is
// absent or the processor lacks `isa`.
struct Peer {
    const char* label;
    PeerLib lib;
    const char* symbol;
    int width;
    Isa isa;
    LoopFn loop;
    double up_to = 0;  // the peer's own domain, |a| at most this (0: every double)
};

// Which argument the error plots run along.
enum class PlotAxis : uint8_t { A, B };

// How to measure one function. Fill the fields in this order; the ones a
// function does not need stay out of its row.
struct FunctionRow {
    const char* name = nullptr;      // tools and budget name
    const char* exported = nullptr;  // the library's exported name: joins the function table
    const char* formula = nullptr;   // for headings, "exp(x)"
    Shape shape = Shape::D1;
    // A function of one input and two outputs (SinCos) has a D1 row for
    // each output: 1 the first (y), 2 the second (z); 0 for every other.
    int output = 0;
    Ref1 ref1 = nullptr;  // D1, R1
    Ref2 ref2 = nullptr;  // D2, DX
    List<Region> regions = {};
    PairSampler sampler = nullptr;  // D2, DX: replaces the regions' pairs when set
    // Points swept with their neighbours: a few doubles on each side and
    // relative offsets of 2^-k. For two arguments the other one is drawn
    // from the regions.
    List<double> special_a = {};
    List<double> special_b = {};
    List<Pair> special_pairs = {};    // exact pairs, no sweep
    bool mirror = false;              // sweep -p as well as p
    const char* hardcases = nullptr;  // stems of files in tests/data/ulp-hardcases, comma-separated
    // Ordinary arguments for timing, and one value every kernel takes on its
    // fast path (the neighbour of directed cases).
    Interval timing_a = {};
    Interval timing_b = {};
    double ordinary_a = 0;
    double ordinary_b = 0;
    PlotAxis plot = PlotAxis::A;
    bool plot_linear = false;  // plot on a value scale, not the log-like scale of bit patterns
    // The speed yardstick: glibc's scalar function in a loop, or a plain C
    // loop where the operation is one instruction.
    Peer baseline = {};
    List<Peer> peers = {};
    // Arguments where a cell's result departs from the function by design
    // (the silent zeros of the short form of Sin and Cos EP at cpu type 1):
    // not measured in that cell. mode is 0 HA, 1 LA, 2 EP.
    bool (*departs)(int cpu, int mode, double a) = nullptr;
    // The plan variants that send an element's neighbour of the pair (2k,
    // 2k + 1) to the callout with it (Tan LA and EP): next to a directed
    // case that neighbour is not compared.
    const char* pair_variants = "";
};

// A function of the library with its measuring row.
struct Function {
    const FunctionRow* row;
    const char* exported;
    Shape shape;
    const void* kernel_set;  // zvl::KernelSet<..> or zvl::RoundingSet<..>
    // The exported entry: front1 for one argument, front2 for two (the
    // array-and-scalar entry takes its scalar by pointer, so it has this type).
    void (*front1)(const int*, const double*, double*);
    void (*front2)(const int*, const double*, const double*, double*);
    const zvl::Plan* plan;  // its family's: what each slot runs
    // One in, two out: the entry, and the output the row measures (as
    // FunctionRow::output); the other goes to a scratch array.
    void (*front12)(const int*, const double*, double*, double*);
    int output;
};

// The library's functions that have a row, in function-table order.
List<Function> functions();
const Function* find_function(const char* name);  // by row name or exported name
// Functions of the library's table that the tools support but that have no
// row: a family that forgot its row shows up here.
List<const char*> functions_without_row();
// All rows, live or not.
List<FunctionRow> rows();

bool has_modes(const Function& f);  // false for the rounding family
// The name of mode m in headings and tables: "-" for the rounding family.
const char* mode_label(const Function& f, int m);
int arity(Shape s);                 // 1 or 2

// Something that fills an array: a kernel, a front-end or a peer.
struct Callable {
    void (*call)(const void* ctx, int32_t n, const double* a, const double* b, double* r);
    const void* ctx;
    void operator()(int32_t n, const double* a, const double* b, double* r) const {
        call(ctx, n, a, b, r);
    }
    explicit operator bool() const { return call != nullptr; }
};

// The function a Callable's ctx points at. The const goes first: clang
// refuses to cast it away in the same step as the change to a function.
template <class Fn>
Fn function_at(const void* ctx) {
    return reinterpret_cast<Fn>(const_cast<void*>(ctx));
}

// The kernel of one cpu type and mode, called directly. For the
// array-and-scalar shape each run of equal b is one kernel call. The rounding
// family has one kernel per cpu type; mode is then ignored.
Callable kernel(const Function& f, int cpu, Mode mode);
// The same for the arguments of timing_inputs, whose b is one value for the
// array-and-scalar shape: one kernel call on b[0].
Callable timed_kernel(const Function& f, int cpu, Mode mode);
// The exported front-end (uses the calling thread's mode word).
Callable front_end(const Function& f);

// Whether this processor runs cpu type `cpu`'s kernels.
bool cpu_runnable(int cpu);
// Whether it runs code for `isa`.
bool isa_runnable(Isa isa);

// One value from an interval, as its spread says.
double draw(Rng& rng, const Interval& in);

// Arguments for timing: n values from the row's timing intervals (for the
// array-and-scalar shape b repeats one value). b stays empty for one
// argument.
void timing_inputs(const FunctionRow& row, size_t n, std::vector<double>* a,
                   std::vector<double>* b);

// The baseline, then the other peers.
std::vector<const Peer*> peers_of(const FunctionRow& row);

// A peer ready to run, or an empty Callable with the reason in *why.
Callable bind_peer(const Peer& p, Shape shape, const char** why);

}  // namespace zvl_tools
