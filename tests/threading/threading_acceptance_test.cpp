// The whole path on this machine, with cpu type 4 and dynamic mode off (set
// by the test's environment): the front-end's threshold, the driver and the
// kernels on the team. A zero divisor at each end of the array shows which
// team members ran which part: the callback is called by the member that
// meets the element.
#include <gtest/gtest.h>
#include <omp.h>

#include <atomic>
#include <cstring>
#include <vector>

#include "base/cpu_type.h"
#include "state/state.h"
#include "tests/common/rows.h"
#include "threading/threading.h"
#include "zvl.h"

namespace {

using zvl_test::Row;

std::atomic<uint32_t> g_threads_seen{0};

int note_thread(ZVLErrorRecord*) {
    g_threads_seen.fetch_or(1u << omp_get_thread_num());
    return 0;
}

class Acceptance : public testing::Test {
protected:
    void SetUp() override {
        if (omp_get_num_procs() < 2) GTEST_SKIP() << "needs two processors";
        ASSERT_EQ(zvl::cpu_type(), 4u) << "run with ZVL_CPU_TYPE=4";
        ASSERT_EQ(ZEL_Get_Dynamic(), 0) << "run with ZEL_DYNAMIC=false";
        ASSERT_GE(ZEL_Domain_Get_Max_Threads(ZEL_ZVL), 2);
    }
    // The threads that met a zero divisor at either end of n elements.
    static uint32_t threads_at_ends(int n) {
        std::vector<double> a(static_cast<size_t>(n), 2.0), r(a.size());
        a[0] = a[a.size() - 1] = 0.0;
        g_threads_seen = 0;
        zvl::set_callback(note_thread);
        VDINV(&n, a.data(), r.data());
        zvl::clear_callback();
        return g_threads_seen.load();
    }
};

// The front-end goes parallel from n equal to the threshold, on two
// threads, and stays on the caller when one thread is asked for.
TEST_F(Acceptance, ThresholdLengthIsTheFirstParallelOne) {
    const int t = zvl::threshold_d(0, 4);
    ASSERT_GT(t, 100);
    ASSERT_LT(t, 1000000);
    EXPECT_EQ(threads_at_ends(t), 0b11u);
    EXPECT_EQ(threads_at_ends(t - 1), 0b01u);
    ZEL_Domain_Set_Num_Threads(1, ZEL_ZVL);
    EXPECT_EQ(threads_at_ends(t), 0b01u);
    ZEL_Domain_Set_Num_Threads(0, ZEL_ZVL);
}

// Every real front-end with a parallel path, on a length that splits into
// chunks of no particular alignment in HA and into whole blocks in every
// mode (LA and EP kernels may share work among a block): the team's results
// are the caller's alone and the kernel's, bit for bit.
class EveryFrontEnd : public Acceptance, public testing::WithParamInterface<Row> {};

TEST_P(EveryFrontEnd, ParallelMatchesSerial) {
    const Row& f = GetParam();
    const zvl_test::Args x = zvl_test::ordinary(f, 200003, 10);
    std::vector<double> parallel(x.a.size()), serial(x.a.size()), direct(x.a.size());
    const unsigned modes[3] = {ZVL_HA, ZVL_LA, ZVL_EP};
    for (int run = 0; run < 4; ++run) {
        const int col = run == 0 ? 0 : run - 1, n = run == 0 ? 200003 : 200000;
        zvl::set_mode(modes[col]);
        f.entry(&n, x.a.data(), x.bp(), parallel.data(), nullptr);
        ZEL_Domain_Set_Num_Threads(1, ZEL_ZVL);
        f.entry(&n, x.a.data(), x.bp(), serial.data(), nullptr);
        ZEL_Domain_Set_Num_Threads(0, ZEL_ZVL);
        f.kernel(4, col)(n, x.a.data(), x.bp(), direct.data(), nullptr);
        EXPECT_EQ(std::memcmp(parallel.data(), serial.data(), sizeof(double) * n), 0)
            << n << " " << col;
        EXPECT_EQ(std::memcmp(parallel.data(), direct.data(), sizeof(double) * n), 0)
            << n << " " << col;
    }
    zvl::set_mode(ZVL_HA);
}

std::vector<Row> with_parallel_path() {
    std::vector<Row> v;
    for (const Row& r : zvl_test::rows())
        if (!r.rounding) v.push_back(r);
    return v;
}

INSTANTIATE_TEST_SUITE_P(Threading, EveryFrontEnd, testing::ValuesIn(with_parallel_path()),
                         [](const testing::TestParamInfo<Row>& i) { return i.param.report; });

}  // namespace
