// Special values and statuses of the Sqrt, InvSqrt, Cbrt and InvCbrt
// kernels of every cpu type and mode, alone and inside blocks, and the
// contract with the error pipeline: reports in element order, a callback's
// replacement kept, the other lanes of a block untouched by a special one.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>
#include <utility>
#include <vector>

#include "state/state.h"
#include "tests/common/capture.h"
#include "tests/kernels/kernel_access.h"

namespace {

using zvl_test::bits_of;
using zvl_test::from_bits;

using Fn = zvl_test::RootFn;
using zvl_test::kCbrt;
using zvl_test::kInvCbrt;
using zvl_test::kInvSqrt;
using zvl_test::kSqrt;
constexpr auto& kFnNames = zvl_test::kRootNames;

const double kInf = std::numeric_limits<double>::infinity();
const double kNaN = std::numeric_limits<double>::quiet_NaN();
const double kSNaN = from_bits(0x7ff0000000000001);
const double kMinDenormal = 0x1p-1074;
constexpr int kSilent = -100;  // no report: the status word keeps this

struct Special {
    Fn f;
    double x, want;
    int status;
};
// The same in every mode: these arguments all reach the callouts.
const Special kSpecials[] = {
    {kSqrt, 0.0, 0.0, kSilent},          {kSqrt, -0.0, -0.0, kSilent},
    {kSqrt, kInf, kInf, kSilent},        {kSqrt, -kInf, kNaN, ZVL_STATUS_ERRDOM},
    {kSqrt, -1.0, kNaN, ZVL_STATUS_ERRDOM}, {kSqrt, -kMinDenormal, kNaN, ZVL_STATUS_ERRDOM},
    {kSqrt, kNaN, kNaN, kSilent},        {kSqrt, kSNaN, kNaN, kSilent},
    {kSqrt, -kNaN, kNaN, kSilent},
    {kInvSqrt, 0.0, kInf, ZVL_STATUS_SING}, {kInvSqrt, -0.0, -kInf, ZVL_STATUS_SING},
    {kInvSqrt, kInf, 0.0, kSilent},      {kInvSqrt, -kInf, kNaN, ZVL_STATUS_ERRDOM},
    {kInvSqrt, -4.0, kNaN, ZVL_STATUS_ERRDOM}, {kInvSqrt, -kMinDenormal, kNaN, ZVL_STATUS_ERRDOM},
    {kInvSqrt, kNaN, kNaN, kSilent},     {kInvSqrt, kSNaN, kNaN, kSilent},
    {kInvSqrt, kMinDenormal, 0x1p537, kSilent},
    {kCbrt, 0.0, 0.0, kSilent},          {kCbrt, -0.0, -0.0, kSilent},
    {kCbrt, kInf, kInf, kSilent},        {kCbrt, -kInf, -kInf, kSilent},
    {kCbrt, kNaN, kNaN, kSilent},        {kCbrt, kSNaN, kNaN, kSilent},
    {kCbrt, kMinDenormal, 0x1p-358, kSilent}, {kCbrt, -kMinDenormal, -0x1p-358, kSilent},
    {kInvCbrt, 0.0, kInf, ZVL_STATUS_SING}, {kInvCbrt, -0.0, -kInf, ZVL_STATUS_SING},
    {kInvCbrt, kInf, 0.0, kSilent},      {kInvCbrt, -kInf, -0.0, kSilent},
    {kInvCbrt, kNaN, kNaN, kSilent},     {kInvCbrt, kSNaN, kNaN, kSilent},
    {kInvCbrt, kMinDenormal, 0x1p358, kSilent}, {kInvCbrt, -kMinDenormal, -0x1p358, kSilent},
};

// Exact results of ordinary arguments: every HA kernel gets these right.
const Special kExactHA[] = {
    {kSqrt, 4.0, 2.0, kSilent},     {kSqrt, 0x1p-1074, 0x1p-537, kSilent},
    {kInvSqrt, 0.25, 2.0, kSilent}, {kInvSqrt, 0x1p-1022, 0x1p511, kSilent},
    {kCbrt, -27.0, -3.0, kSilent},  {kCbrt, 0x1p-1071, 0x1p-357, kSilent},
    {kCbrt, 0x1.b000000000000p+4, 3.0, kSilent},
    {kInvCbrt, 0.125, 2.0, kSilent}, {kInvCbrt, -64.0, -0.25, kSilent},
    {kInvCbrt, 0x1p1023, 0x1p-341, kSilent},
};

::testing::AssertionResult same(double want, double got) {
    if (std::isnan(want) ? std::isnan(got) && (bits_of(got) >> 51 & 1) : bits_of(want) == bits_of(got))
        return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure() << "expected " << std::hexfloat << want << ", got " << got;
}

class RootSpecials : public ::testing::TestWithParam<std::tuple<int, int>> {
  protected:
    void SetUp() override {
        if (!zvl_test::cpu_runs(std::get<0>(GetParam()))) GTEST_SKIP() << "cpu type not supported";
        saved_ = zvl::get_mode();
        zvl::set_mode(ZVL_ERRMODE_IGNORE);
    }
    void TearDown() override {
        zvl::set_mode(ZVL_ERRMODE_MASK & saved_);
        zvl::set_status(0);
    }
    // One special element at `at` among ordinary ones: its result and the
    // status word afterwards.
    static std::pair<double, int> run(zvl::KernelD1 k, double x, int n, int at) {
        std::vector<double> a(n, 1.5), r(n, 0.0);
        a[at] = x;
        zvl::set_status(kSilent);
        zvl_test::with_mxcsr(zvl_test::kMxcsrDefault, [&] { k(n, a.data(), r.data()); });
        return {r[at], zvl::get_status()};
    }
    uint32_t saved_ = 0;
};

TEST_P(RootSpecials, ResultsAndStatuses) {
    const auto [cpu, mode] = GetParam();
    for (const Special& s : kSpecials) {
        const zvl::KernelD1 k = zvl_test::root_set(s.f).k[cpu][mode];
        for (const auto& [n, at] : {std::pair{1, 0}, std::pair{16, 0}, std::pair{16, 5}, std::pair{19, 17}}) {
            const auto [y, status] = run(k, s.x, n, at);
            EXPECT_TRUE(same(s.want, y)) << kFnNames[s.f] << "(" << s.x << "), n " << n << " at " << at;
            EXPECT_EQ(s.status, status) << kFnNames[s.f] << "(" << s.x << ")";
        }
    }
}

std::string cpu_mode_name(const ::testing::TestParamInfo<std::tuple<int, int>>& info) {
    static const char* const modes[] = {"HA", "LA", "EP"};
    return "cpu" + std::to_string(std::get<0>(info.param)) + "_" + modes[std::get<1>(info.param)];
}

INSTANTIATE_TEST_SUITE_P(AllKernels, RootSpecials,
                         ::testing::Combine(::testing::Range(0, 6), ::testing::Range(0, 3)),
                         cpu_mode_name);

// Ordinary arguments with exact results, on the HA vector paths.
TEST(RootExact, HA) {
    const uint32_t saved = zvl::set_mode(ZVL_ERRMODE_IGNORE);
    for (int cpu = 0; cpu < 6; ++cpu) {
        if (!zvl_test::cpu_runs(cpu)) continue;
        for (const Special& s : kExactHA) {
            double x[16], r[16];
            for (double& v : x) v = s.x;
            zvl::set_status(kSilent);
            zvl_test::with_mxcsr(zvl_test::kMxcsrDefault, [&] { zvl_test::root_set(s.f).k[cpu][zvl::kHA](16, x, r); });
            for (double y : r) EXPECT_TRUE(same(s.want, y)) << kFnNames[s.f] << "(" << s.x << ") cpu " << cpu;
            EXPECT_EQ(kSilent, zvl::get_status());
        }
    }
    zvl::set_status(0);
    zvl::set_mode(ZVL_ERRMODE_MASK & saved);
}

// --- The pipeline contract --------------------------------------------------

std::vector<std::pair<int, int>> g_reports;  // (index, status) in call order
int replace_result(ZVLErrorRecord* rec) {
    g_reports.push_back({rec->index, rec->status});
    rec->r1 = 1000.0 + rec->index;
    return 0;
}

// Elements 3, 9 and 17 are zero and 11 is negative: InvSqrt reports them in
// order, the callback's values land in exactly those elements, and every
// other element is what it would be with no special element about.
TEST(RootPipeline, ReportsInOrderAndKeepsTheCallbacksResult) {
    const uint32_t saved = zvl::get_mode();
    zvl::set_mode(ZVL_ERRMODE_CALLBACK);
    zvl::set_callback(replace_result);
    zvl::set_array_base(nullptr);  // indices as the kernel passes them
    for (int cpu = 0; cpu < 6; ++cpu) {
        if (!zvl_test::cpu_runs(cpu)) continue;
        for (int mode = 0; mode < 3; ++mode) {
            const int n = 40;
            std::vector<double> clean(n), a, r(n), r0(n);
            for (int i = 0; i < n; ++i) clean[i] = 0.75 + i * 1.375;
            a = clean;
            a[3] = a[9] = a[17] = 0.0;
            a[11] = -2.0;
            const zvl::KernelD1 k = zvl::kernels_VDINVSQRT.k[cpu][mode];
            g_reports.clear();
            k(n, a.data(), r.data());
            k(n, clean.data(), r0.data());
            const std::vector<std::pair<int, int>> want = {{3, ZVL_STATUS_SING},
                                                           {9, ZVL_STATUS_SING},
                                                           {11, ZVL_STATUS_ERRDOM},
                                                           {17, ZVL_STATUS_SING}};
            EXPECT_EQ(want, g_reports) << "cpu " << cpu << " mode " << mode;
            for (int i = 0; i < n; ++i) {
                if (i == 3 || i == 9 || i == 11 || i == 17)
                    EXPECT_EQ(1000.0 + i, r[i]) << i;
                else
                    EXPECT_EQ(bits_of(r0[i]), bits_of(r[i])) << "cpu " << cpu << " element " << i;
            }
        }
    }
    zvl::clear_callback();
    zvl::set_mode(ZVL_ERRMODE_MASK & saved);
}

// The guarded kernels compute as in round to nearest without flushing, and
// give the caller back its control word; Sqrt HA and LA follow the caller.
TEST(RootControlWord, GuardedKernelsIgnoreAndRestoreTheCallersMode) {
    const double x[8] = {2.0, 3.0, 0.7, 1e-310, 5e300, 0.1, 7.0, 1e-5};
    for (int cpu = 0; cpu < 6; ++cpu) {
        if (!zvl_test::cpu_runs(cpu)) continue;
        for (Fn f : {kSqrt, kInvSqrt, kCbrt, kInvCbrt})
            for (int mode = 0; mode < 3; ++mode) {
                const zvl::KernelD1 k = zvl_test::root_set(f).k[cpu][mode];
                double want[8], got[8];
                zvl_test::with_mxcsr(zvl_test::kMxcsrDefault, [&] { k(8, x, want); });
                const bool instr = f == kSqrt && (mode != zvl::kEP || cpu <= 1);
                for (uint32_t rc : {0x2000u, 0x4000u, 0x6000u}) {
                    const uint32_t before = zvl_test::kMxcsrDefault | rc | zvl_test::kMxcsrFtz |
                                            zvl_test::kMxcsrDaz;
                    const uint32_t after = zvl_test::with_mxcsr(before, [&] { k(8, x, got); });
                    if (instr) {
                        EXPECT_EQ(before, after & ~zvl_test::kMxcsrFlags);
                        continue;
                    }
                    EXPECT_EQ(before, after) << kFnNames[f] << " cpu " << cpu << " mode " << mode;
                    for (int i = 0; i < 8; ++i)
                        EXPECT_EQ(bits_of(want[i]), bits_of(got[i]))
                            << kFnNames[f] << " cpu " << cpu << " mode " << mode << " x " << x[i];
                }
            }
    }
}

}  // namespace
