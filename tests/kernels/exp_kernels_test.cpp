// The exp kernels called directly, every cpu type and mode: special values
// with their statuses, the loop contract, agreement of cpu types that run
// the same variant, and denormal results rounded once.
#include <gtest/gtest.h>

#include <cfloat>
#include <cmath>
#include <random>

#include "state/state.h"
#include "tests/common/capture.h"
#include "tests/kernels/exp_support.h"

namespace {

using exp_test::Kernel;
using zvl_test::bits_of;
using zvl_test::from_bits;

struct Report {
    int status, index;
    double a, r;
    std::string name;
};
std::vector<Report> reports;
bool replace_result = false;

int record(ZVLErrorRecord* rec) {
    reports.push_back({rec->status, rec->index, rec->a1, rec->r1, rec->name});
    if (replace_result) rec->r1 = 42.0;
    return 0;
}

uint32_t read_mxcsr() {
    uint32_t w;
    __asm__ __volatile__("stmxcsr %0" : "=m"(w));
    return w;
}
void write_mxcsr(uint32_t w) { __asm__ __volatile__("ldmxcsr %0" : : "m"(w)); }
uint16_t read_x87() {
    uint16_t w;
    __asm__ __volatile__("fnstcw %0" : "=m"(w));
    return w;
}
void write_x87(uint16_t w) { __asm__ __volatile__("fldcw %0" : : "m"(w)); }

// Reports go to the callback only, which records them.
class ExpKernel : public testing::TestWithParam<Kernel> {
  protected:
    void SetUp() override {
        k_ = GetParam().fn();
        saved_mode_ = zvl::set_mode(ZVL_ERRMODE_CALLBACK);
        zvl::set_array_base(nullptr);  // indices as the kernel passes them
        zvl::set_callback(record);
        reports.clear();
        replace_result = false;
    }
    void TearDown() override {
        zvl::clear_callback();
        zvl::set_mode(saved_mode_);
    }
    std::vector<double> run(const std::vector<double>& a) {
        std::vector<double> r(a.size());
        k_(static_cast<int32_t>(a.size()), a.data(), r.data());
        return r;
    }
    zvl::KernelD1 k_;
    uint32_t saved_mode_;
};

std::string label(const testing::TestParamInfo<Kernel>& i) { return exp_test::kernel_label(i.param); }

// The name a kernel reports under; cpu type 0 runs its HA kernel in all modes.
std::string kernel_name(const Kernel& k) {
    static const char* const labels[] = {"ex", "e7", "u8", "y8", "h8", "e9"};
    static const char* const tags[] = {"HA", "50", "26"};
    return std::string("zel_zvl_core_") + labels[k.cpu] + "_zvl_dExp_" + tags[k.cpu == 0 ? 0 : k.col];
}

// Inputs the callout handles (identical in every mode, so the correctly
// rounded value is expected), and inputs near zero, whose result is 1.0.
struct Case {
    const char* what;
    double x;
    int status;
};
const double kInf = INFINITY;
const Case kCallout[] = {
    {"+inf", kInf, 0},
    {"-inf", -kInf, 0},
    {"quiet NaN", from_bits(0x7ff8000000000000), 0},
    {"negative NaN", from_bits(0xfff8000000000123), 0},
    {"signalling NaN", from_bits(0x7ff0000000000001), 0},
    {"first callout lane", 708.39599609375, 0},
    {"largest finite result", from_bits(0x40862e42fefa39ef), 0},
    {"first overflow", from_bits(0x40862e42fefa39f0), ZVL_STATUS_OVERFLOW},
    {"overflow", 1000.0, ZVL_STATUS_OVERFLOW},
    {"DBL_MAX", DBL_MAX, ZVL_STATUS_OVERFLOW},
    {"first negative callout lane", -708.39599609375, 0},
    {"smallest normal result", from_bits(0xc086232bdd7abcd2), 0},
    {"largest denormal result", from_bits(0xc086232bdd7abcd3), ZVL_STATUS_UNDERFLOW},
    {"denormal, split", -712.0, ZVL_STATUS_UNDERFLOW},
    {"denormal, not split", -740.0, ZVL_STATUS_UNDERFLOW},
    {"smallest denormal result", from_bits(0xc0874910d52d3051), ZVL_STATUS_UNDERFLOW},
    {"first zero result", from_bits(0xc0874910d52d3052), ZVL_STATUS_UNDERFLOW},
    {"underflow", -1000.0, ZVL_STATUS_UNDERFLOW},
    {"-DBL_MAX", -DBL_MAX, ZVL_STATUS_UNDERFLOW},
};
const double kNearZero[] = {0.0, -0.0, 0x1p-60, -0x1p-60, 0x1p-53, 4.9e-324, -1e-300};

double expected(double x) {
    if (std::isnan(x)) return x;
    if (std::isinf(x)) return x > 0 ? x : 0.0;
    return exp_test::exact_exp(x).correct;
}

bool same(double a, double b) { return (std::isnan(a) && std::isnan(b)) || bits_of(a) == bits_of(b); }

// Each case at every position of a 19-element array of ordinary values, so
// that it lands in every lane of a block and in the remainder: the case
// gets its value and status, reported once at its own index; the other
// elements keep what they get without it.
TEST_P(ExpKernel, CalloutCasesAtEveryPosition) {
    const std::vector<double> plain(19, 0.5);
    const std::vector<double> clean = run(plain);
    ASSERT_TRUE(reports.empty());
    for (const Case& c : kCallout) {
        const double want = expected(c.x);
        for (int p = 0; p < 19; ++p) {
            SCOPED_TRACE(testing::Message() << c.what << " at " << p);
            std::vector<double> a = plain;
            a[p] = c.x;
            reports.clear();
            const std::vector<double> r = run(a);
            EXPECT_TRUE(same(r[p], want)) << r[p] << " want " << want;
            for (int i = 0; i < 19; ++i)
                if (i != p) EXPECT_EQ(bits_of(r[i]), bits_of(clean[i]));
            if (c.status == 0) {
                EXPECT_TRUE(reports.empty());
            } else {
                ASSERT_EQ(reports.size(), 1u);
                EXPECT_EQ(reports[0].status, c.status);
                EXPECT_EQ(reports[0].index, p);
                EXPECT_EQ(bits_of(reports[0].a), bits_of(c.x));
                EXPECT_EQ(bits_of(reports[0].r), bits_of(want));
            }
        }
    }
    // A NaN stays quiet (or is made so).
    const std::vector<double> r = run({from_bits(0x7ff0000000000001)});
    EXPECT_TRUE(bits_of(r[0]) & 0x0008000000000000);
}

// Near zero the result is 1, exactly but in EP at types 4 and 5, whose table
// is scaled down by 0.9999999928394805 to centre the error.
TEST_P(ExpKernel, NearZeroGivesOne) {
    const bool centred = GetParam().col == zvl::kEP && GetParam().cpu >= 4;
    for (double x : kNearZero) {
        const std::vector<double> r = run(std::vector<double>(11, x));
        for (double y : r) {
            if (centred)
                EXPECT_LE(std::fabs(y - 1.0), 0x1p-26) << x;
            else
                EXPECT_EQ(y, 1.0) << x;
        }
    }
    EXPECT_TRUE(reports.empty());
}

// Blocks and the remainder use one formula: a 37-element call gives each
// element what a call on that element alone gives, also in place. A count
// of zero or below touches nothing.
TEST_P(ExpKernel, BlockRemainderAndInPlaceAgree) {
    std::mt19937_64 g(7);
    std::uniform_real_distribution<double> u(-750.0, 750.0);
    std::vector<double> a(37);
    for (double& x : a) x = u(g);
    a[4] = NAN;
    a[20] = 0.0;
    const std::vector<double> r = run(a);
    std::vector<double> in_place = a;
    k_(37, in_place.data(), in_place.data());
    for (size_t i = 0; i < a.size(); ++i) {
        double one;
        k_(1, &a[i], &one);
        EXPECT_TRUE(same(one, r[i])) << a[i];
        EXPECT_TRUE(same(in_place[i], r[i])) << a[i];
    }
    double untouched[2] = {-7.0, -7.0};
    k_(0, a.data(), untouched);
    k_(-3, a.data(), untouched);
    EXPECT_EQ(untouched[0], -7.0);
    EXPECT_EQ(untouched[1], -7.0);
}

// Reports come in index order, and a callback's replacement is the
// element's result, whether the element sits in a block or the remainder.
TEST_P(ExpKernel, ReportsInOrderAndReplacementsStay) {
    std::vector<double> a(19, 1.0);
    a[2] = 800.0;
    a[7] = -800.0;
    a[12] = 710.0;
    a[17] = -746.0;
    replace_result = true;
    const std::vector<double> r = run(a);
    ASSERT_EQ(reports.size(), 4u);
    const int index[] = {2, 7, 12, 17}, status[] = {3, 4, 3, 4};
    for (int i = 0; i < 4; ++i) {
        EXPECT_EQ(reports[i].index, index[i]);
        EXPECT_EQ(reports[i].status, status[i]);
        EXPECT_EQ(reports[i].name, kernel_name(GetParam()));
        EXPECT_EQ(r[index[i]], 42.0);
    }
}

// Whatever the caller's MXCSR and x87 control word, the kernel hands them
// back unchanged; a kernel with the MXCSR guard computes as in round to
// nearest without flushing.
TEST_P(ExpKernel, ControlWordsRestored) {
    const int cpu = GetParam().cpu, col = GetParam().col;
    const bool guarded = (col == zvl::kHA && cpu < 5) || (col == zvl::kLA && cpu <= 2) ||
                         (col == zvl::kEP && cpu <= 3) || cpu == 0;
    std::vector<double> a;
    for (int i = 0; i < 21; ++i) a.push_back(-720.0 + 71.3 * i);
    const std::vector<double> nearest = run(a);
    const uint32_t mxcsr = read_mxcsr();
    const uint16_t x87 = read_x87();
    const uint32_t odd = (mxcsr & ~0xe040u) | 0x6000u | 0x8000u | 0x40u;  // to zero, FTZ, DAZ
    write_mxcsr(odd);
    write_x87(static_cast<uint16_t>((x87 & 0xf0ffu) | 0x300u));
    const std::vector<double> r = run(a);
    const uint32_t mxcsr_after = read_mxcsr();
    const uint16_t x87_after = read_x87();
    write_mxcsr(mxcsr);
    write_x87(x87);
    EXPECT_EQ(mxcsr_after & ~0x3fu, odd & ~0x3fu);  // exception flags aside
    EXPECT_EQ(x87_after, static_cast<uint16_t>((x87 & 0xf0ffu) | 0x300u));
    if (guarded)
        for (size_t i = 0; i < a.size(); ++i) EXPECT_EQ(bits_of(r[i]), bits_of(nearest[i])) << a[i];
}

INSTANTIATE_TEST_SUITE_P(AllKernels, ExpKernel, testing::ValuesIn(exp_test::kernels()), label);

// Cpu types that run the same variant give the same bits: a wrapper op
// that rounds or orders lanes differently shows here.
TEST(ExpVariants, SameVariantSameBits) {
    const int has_avx = __builtin_cpu_supports("avx");
    struct Group {
        int col;
        std::vector<int> cpus;
    };
    const Group groups[] = {{zvl::kHA, {0, 1, 2, 3, 4, 5}},
                            {zvl::kLA, {3, 4, 5}},  // B
                            {zvl::kLA, {1, 2}},     // D
                            {zvl::kEP, {4, 5}},     // C
                            {zvl::kEP, {1, 2, 3}}}; // E
    std::mt19937_64 g(11);
    std::uniform_real_distribution<double> u(-745.0, 709.0);
    std::vector<double> a(1003);
    for (double& x : a) x = u(g);
    for (const Group& grp : groups) {
        std::vector<double> first;
        for (int cpu : grp.cpus) {
            if (cpu == 5 && !has_avx) continue;
            std::vector<double> r(a.size());
            zvl::kernels_VDEXP.k[cpu][grp.col](static_cast<int32_t>(a.size()), a.data(), r.data());
            if (first.empty()) {
                first = r;
                continue;
            }
            for (size_t i = 0; i < a.size(); ++i)
                ASSERT_EQ(bits_of(r[i]), bits_of(first[i])) << "cpu " << cpu << " x " << a[i];
        }
    }
    // Cpu type 0 has one kernel for all three modes.
    EXPECT_EQ(zvl::kernels_VDEXP.k[0][zvl::kLA], zvl::kernels_VDEXP.k[0][zvl::kHA]);
    EXPECT_EQ(zvl::kernels_VDEXP.k[0][zvl::kEP], zvl::kernels_VDEXP.k[0][zvl::kHA]);
}

// Denormal results near 2^-1022 hold almost 53 bits, so a result first
// rounded to 53 bits and then to the denormal grid often lands on the
// wrong side of a midpoint. Where that happens, and the exact value is not
// so near the midpoint that the kernel's own error could decide, the
// kernel must give the correctly rounded value.
TEST(ExpDenormals, RoundedOnce) {
    std::mt19937_64 g(5);
    // results from 2^-1032 to 2^-1022, where the callout splits
    std::uniform_real_distribution<double> u(-715.2, -708.4);
    std::vector<double> traps;
    for (int i = 0; i < 40000 && traps.size() < 200; ++i) {
        const double x = u(g);
        const exp_test::Exact e = exp_test::exact_exp(x);
        // e^x = m * 2^-1074; m_hi is m rounded to 53 bits, so rounding it on
        // to an integer is the double rounding
        const double twice = std::nearbyint(e.m_hi);
        const double once = std::ldexp(e.correct, 1074);
        const double frac = (e.m_hi - std::floor(e.m_hi)) + e.m_lo;
        if (twice != once && std::fabs(frac - 0.5) > 0x1p-6) traps.push_back(x);
    }
    ASSERT_GE(traps.size(), 50u);
    const uint32_t mode = zvl::set_mode(ZVL_ERRMODE_IGNORE);
    for (const Kernel& k : exp_test::kernels()) {
        std::vector<double> r(traps.size());
        k.fn()(static_cast<int32_t>(traps.size()), traps.data(), r.data());
        for (size_t i = 0; i < traps.size(); ++i)
            EXPECT_EQ(bits_of(r[i]), bits_of(exp_test::exact_exp(traps[i]).correct))
                << exp_test::kernel_label(k) << " x " << traps[i];
    }
    zvl::set_mode(mode);
}

}  // namespace
