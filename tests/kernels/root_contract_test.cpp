// The Sqrt, InvSqrt, Cbrt and InvCbrt kernels of every cpu type and mode
// with the error pipeline and the caller's control word: reports in element
// order, a callback's replacement kept, the other lanes of a block untouched
// by a special one; the caller's rounding mode and flush bits neither seen
// nor disturbed. (Special values and statuses are directed cases in
// tests/data/directed/, accuracy is the accuracy harness's.)
#include <gtest/gtest.h>

#include <utility>
#include <vector>

#include "state/state.h"
#include "tests/common/capture.h"
#include "tests/kernels/kernel_access.h"

namespace {

using zvl_test::bits_of;
using zvl_test::kRootNames;
using zvl_test::RootFn;

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
        for (RootFn f : {zvl_test::kSqrt, zvl_test::kInvSqrt, zvl_test::kCbrt, zvl_test::kInvCbrt})
            for (int mode = 0; mode < 3; ++mode) {
                const zvl::KernelD1 k = zvl_test::root_set(f).k[cpu][mode];
                double want[8], got[8];
                zvl_test::with_mxcsr(zvl_test::kMxcsrDefault, [&] { k(8, x, want); });
                const bool instr = f == zvl_test::kSqrt && (mode != zvl::kEP || cpu <= 1);
                for (uint32_t rc : {0x2000u, 0x4000u, 0x6000u}) {
                    const uint32_t before = zvl_test::kMxcsrDefault | rc | zvl_test::kMxcsrFtz |
                                            zvl_test::kMxcsrDaz;
                    const uint32_t after = zvl_test::with_mxcsr(before, [&] { k(8, x, got); });
                    if (instr) {
                        EXPECT_EQ(before, after & ~zvl_test::kMxcsrFlags);
                        continue;
                    }
                    EXPECT_EQ(before, after) << kRootNames[f] << " cpu " << cpu << " mode " << mode;
                    for (int i = 0; i < 8; ++i)
                        EXPECT_EQ(bits_of(want[i]), bits_of(got[i]))
                            << kRootNames[f] << " cpu " << cpu << " mode " << mode << " x " << x[i];
                }
            }
    }
}

}  // namespace
