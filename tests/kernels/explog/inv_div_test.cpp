// Inv at LA and EP on cpu types 1 to 4 shares one division among a block of
// eight and runs the restart form: a block with an element outside the range
// guards is thrown away and each of its elements computed by the scalar
// element routine, the routine the remainder runs, so each gives what it
// gives alone; a block that passes keeps the shared division's rounding.
// (Div's extended product leaves its range only on zero, infinite and NaN
// divisors, which the kernel contract's special lanes cover; the
// zero-divisor rules per cpu type are directed cases.)
#include <gtest/gtest.h>

#include "frame/kernel_sets.h"
#include "tests/common/rows.h"

namespace zvl_test {
namespace {

TEST(InvRestart, FailedBlockRunsElementByElement) {
    const Row& r = row("VDINV");
    constexpr int W = 8;
    for (int cpu = 1; cpu <= 4; ++cpu)
        for (int col : {zvl::kLA, zvl::kEP}) {
            if (!cpu_runs(cpu)) continue;
            Args x = ordinary(r, 16 * W, 5);
            x.a[W + 3] = 1e300;  // above the high guard: the second block restarts
            const int n = static_cast<int>(x.a.size());
            std::vector<double> got(x.a.size()), alone(x.a.size());
            const Kernel k = r.kernel(cpu, col);
            k(n, x.a.data(), nullptr, got.data(), nullptr);
            int differ = 0;
            for (int i = 0; i < n; ++i) {
                k(1, &x.a[i], nullptr, &alone[i], nullptr);
                if (i / W == 1)
                    EXPECT_TRUE(same(got[i], alone[i])) << "cpu " << cpu << " element " << i;
                else
                    differ += !same(got[i], alone[i]);
            }
            // The shared division rounds some elements otherwise, so the
            // comparison above tells a restart from none.
            EXPECT_GT(differ, 0) << "cpu " << cpu;
        }
}

}  // namespace
}  // namespace zvl_test
