// The per-element cost tables, in units of the fork cost.
//
// A function's block is 18 entries from its base slot: the HA, LA and EP
// rows, each indexed by cpu type 0 to 5. Cpu type 5 costs 0.0 in every row
// of every table, which the lookup turns into "never parallel": the
// 256-bit kernels are left on the calling thread by design.
//
// HA rows are measured constants of the library. LA and EP rows:
//   - vdInv's, and vdErfInv's EP row, are measured constants too.
//   - vdDiv's are its HA row times the LA/HA ratio of the Div kernels,
//     measured by bench_threading (BM_KernelCost: the kernels alone on 4096
//     elements in cache, per cpu type) on the development machine.
//   - Families whose LA and EP kernels are not yet built use their HA row
//     times Inv's measured ratio of that cpu type (kFamilyScale), for LA
//     and EP alike. Remeasure a family's rows once it is built.
//   - At cpu type 0 the real LA and EP slots run the HA kernel, so they
//     cost what HA does (vdErfInv's EP, a kernel of its own there, aside).
//   - Complex rows: no complex LA or EP kernel exists to measure, and at
//     most positions LA and EP are one kernel; they copy the HA row.
// Blocks past the last function with a front-end (from base 504 in the
// real tables, 324 in the complex ones) hold the costs of Exp, the middle
// of the range, until functions claim them.
// The single-precision tables have no front-end; they hold half the double
// costs (twice the lanes per vector), and complex float slots 66 and 84 hold
// 0.11 at cpu type 0, measured as they stand.
#include <array>
#include <cstddef>

#include "threading/thresholds.h"

namespace zvl {
namespace {

// Cost by cpu type 0 to 4; type 5 is always 0.0.
struct Row {
    double e[5];
};

constexpr Row kRealHA[36] = {
    {17.14, 35.65, 15.7, 9.65, 10.56},    // vdInv       0
    {17.15, 35.67, 15.69, 9.73, 10.57},   // vdDiv      18
    {31.25, 30.85, 16.01, 9.16, 11.94},   // vdSqrt     36
    {21.51, 22.43, 13.53, 12.77, 12.19},  // vdInvSqrt  54
    {33.74, 47.25, 22.77, 23.68, 21.02},  // vdCbrt     72
    {29.05, 46.84, 26.37, 25.87, 22.99},  // vdInvCbrt  90
    {105.1, 103, 45.13, 42.46, 38.61},    // vdPow     108
    {99.93, 96.11, 50.63, 59.77, 48.72},  // vdPowx    126
    {20.12, 23.77, 14.23, 13.63, 12.6},   // vdExp     144
    {29.68, 30.37, 17.94, 17.6, 15.99},   // vdLn      162
    {31.69, 31.58, 18.99, 18.24, 15.98},  // vdLog10   180
    {28.6, 40.27, 24.62, 24.12, 19.62},   // vdCos     198
    {30.62, 40.5, 24.6, 23.87, 19.65},    // vdSin     216
    {39.66, 56.86, 35.54, 33.29, 30.44},  // vdSinCos  234
    {78.01, 76.55, 46.49, 41.41, 38.52},  // vdTan     252
    {70.73, 73.83, 40.23, 41.52, 38.73},  // vdAcos    270
    {68.27, 69.73, 39.75, 38.07, 36.45},  // vdAsin    288
    {71.45, 66.94, 36.66, 34.63, 31.59},  // vdAtan    306
    {132.1, 125.3, 59.1, 54.74, 49.9},    // vdAtan2   324
    {59.34, 39.72, 23.07, 22.85, 20.32},  // vdCosh    342
    {30.7, 40.88, 24.6, 23.96, 22.92},    // vdSinh    360
    {61.56, 56.88, 33.54, 33.27, 32.32},  // vdTanh    378
    {133.5, 113.9, 85.54, 82.59, 78.43},  // vdAcosh   396
    {190.9, 116.8, 91.76, 83.79, 77.63},  // vdAsinh   414
    {442, 111, 47.91, 43.93, 39.75},      // vdAtanh   432
    {55.54, 56.04, 35.99, 34.63, 32.22},  // vdErf     450
    {114.3, 109.7, 64.37, 62.95, 58.02},  // vdErfc    468
    {179.8, 77.94, 41.93, 39.24, 37.09},  // vdErfInv  486
    {20.12, 23.77, 14.23, 13.63, 12.6},   // reserved  504
    {20.12, 23.77, 14.23, 13.63, 12.6},   // reserved  522
    {20.12, 23.77, 14.23, 13.63, 12.6},   // reserved  540
    {20.12, 23.77, 14.23, 13.63, 12.6},   // reserved  558
    {20.12, 23.77, 14.23, 13.63, 12.6},   // reserved  576
    {20.12, 23.77, 14.23, 13.63, 12.6},   // reserved  594
    {20.12, 23.77, 14.23, 13.63, 12.6},   // reserved  612
    {20.12, 23.77, 14.23, 13.63, 12.6},   // reserved  630
};

constexpr Row kComplexHA[24] = {
    {567.3, 372.7, 177.7, 175.6, 198.4},  // vzSqrt     0
    {1518, 2828, 1045, 1014, 881.8},      // vzPow     18
    {1514, 2811, 1049, 1014, 883.4},      // vzPowx    36
    {140.8, 135.6, 73.3, 74.62, 72.94},   // vzExp     54
    {297.9, 240.3, 143, 129.6, 127.3},    // vzLn      72
    {792.3, 1592, 572.7, 539.2, 462.1},   // vzLog10   90
    {768, 1459, 525.2, 522.9, 465.7},     // vzCos    108
    {803.7, 1600, 546, 545, 490.2},       // vzSin    126
    {838.2, 1628, 623.7, 589.4, 539.5},   // vzTan    144
    {1659, 3206, 1245, 1195, 1151},       // vzAcos   162
    {1825, 3717, 1321, 1293, 1237},       // vzAsin   180
    {874.3, 1780, 636.3, 609.5, 475.9},   // vzAtan   198
    {719.3, 1265, 475.4, 475.1, 438.8},   // vzCosh   216
    {725.2, 1244, 477.8, 482.9, 438.6},   // vzSinh   234
    {757.8, 1340, 554.8, 521.1, 457.8},   // vzTanh   252
    {1641, 3245, 1251, 1196, 1148},       // vzAcosh  270
    {1720, 3360, 1242, 1210, 1163},       // vzAsinh  288
    {796.5, 1475, 550.4, 517, 414},       // vzAtanh  306
    {140.8, 135.6, 73.3, 74.62, 72.94},   // reserved 324
    {140.8, 135.6, 73.3, 74.62, 72.94},   // reserved 342
    {140.8, 135.6, 73.3, 74.62, 72.94},   // reserved 360
    {140.8, 135.6, 73.3, 74.62, 72.94},   // reserved 378
    {140.8, 135.6, 73.3, 74.62, 72.94},   // reserved 396
    {140.8, 135.6, 73.3, 74.62, 72.94},   // reserved 414
};

// LA and EP cost over HA cost by cpu type 0 to 4, measured with
// bench_threading's BM_KernelCost (median of 9 runs of CPU time; LA and EP
// are one code in Inv and Div and time alike). At type 0 the LA and EP
// slots run the HA kernel.
//                 type 1   type 2   type 3   type 4
//   Inv  LA/HA     0.42     0.41     0.70     0.70
//   Div  LA/HA     2.24     2.26     5.02     5.02
// Div's LA is the dearer one because its four-divisor product runs on the
// x87 unit while HA divides with divpd.
constexpr double kDivScale[5] = {1.0, 2.24, 2.26, 5.02, 5.02};
// Families not yet built scale by Inv's ratio: Inv is the one-argument
// family, and its LA, like those to come, is a cheaper algorithm than its
// HA, which Div's x87 detour is not.
constexpr double kFamilyScale[5] = {1.0, 0.42, 0.41, 0.70, 0.70};
constexpr double kSame[5] = {1.0, 1.0, 1.0, 1.0, 1.0};

template <size_t N>
using Table = std::array<double, N>;

constexpr Row times(const Row& r, const double (&f)[5]) {
    Row out{};
    for (int c = 0; c < 5; ++c) out.e[c] = r.e[c] * f[c];
    return out;
}

// Every block from its HA row and the LA and EP scale; type 5 stays 0.0.
template <size_t N, size_t B>
constexpr Table<N> scaled(const Row (&ha)[B], const double (&la)[5], const double (&ep)[5]) {
    static_assert(B * 18 == N, "one block of 18 entries per row");
    Table<N> t{};
    for (size_t b = 0; b < B; ++b)
        for (size_t c = 0; c < 5; ++c) {
            t[b * 18 + c] = ha[b].e[c];
            t[b * 18 + 6 + c] = ha[b].e[c] * la[c];
            t[b * 18 + 12 + c] = ha[b].e[c] * ep[c];
        }
    return t;
}

// Rows given whole, by slot.
struct SlotRow {
    size_t slot;
    Row row;
};

template <size_t N, size_t R>
constexpr Table<N> with_rows(Table<N> t, const SlotRow (&rows)[R]) {
    for (const SlotRow& r : rows)
        for (size_t c = 0; c < 5; ++c) t[r.slot + c] = r.row.e[c];
    return t;
}

template <size_t N>
constexpr Table<N> halved(Table<N> t) {
    for (double& x : t) x *= 0.5;
    return t;
}

constexpr SlotRow kRealRows[] = {
    {6, {{17.14, 11.68, 6.76, 5.95, 3.06}}},      // vdInv LA
    {12, {{17.14, 11.68, 6.6, 6.03, 3.06}}},      // vdInv EP
    {24, times(kRealHA[1], kDivScale)},           // vdDiv LA
    {30, times(kRealHA[1], kDivScale)},           // vdDiv EP
    {498, {{14.23, 24.7, 13.56, 11.81, 11.76}}},  // vdErfInv EP
};

constexpr Table<648> kReal = with_rows(scaled<648>(kRealHA, kFamilyScale, kFamilyScale), kRealRows);
constexpr Table<432> kComplex = scaled<432>(kComplexHA, kSame, kSame);

constexpr SlotRow kComplexFloatRows[] = {
    {66, {{0.11, kComplex[67] * 0.5, kComplex[68] * 0.5, kComplex[69] * 0.5, kComplex[70] * 0.5}}},
    {84, {{0.11, kComplex[85] * 0.5, kComplex[86] * 0.5, kComplex[87] * 0.5, kComplex[88] * 0.5}}},
};

}  // namespace

const std::array<double, 648> threshold_table_d = kReal;
const std::array<double, 648> threshold_table_s = halved(kReal);
const std::array<double, 432> threshold_table_z = kComplex;
const std::array<double, 432> threshold_table_c = with_rows(halved(kComplex), kComplexFloatRows);

}  // namespace zvl
