// The whole path on this machine, with cpu type 4 and dynamic mode off (set
// by the test's environment): the front-end's threshold, the driver and the
// kernels on the team. The team is the runtime's count, or two where that is
// one (OMP_NUM_THREADS=1). A zero divisor at each end of the array shows
// which team members ran which part: the callback is called by the member
// that meets the element.
#include <gtest/gtest.h>
#include <omp.h>

#include <algorithm>
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

std::atomic<uint64_t> g_threads_seen{0};

int note_thread(ZVLErrorRecord*) {
    g_threads_seen.fetch_or(uint64_t{1} << omp_get_thread_num());
    return 0;
}

class Acceptance : public testing::Test {
protected:
    void SetUp() override {
        if (omp_get_num_procs() < 2) GTEST_SKIP() << "needs two processors";
        ASSERT_EQ(zvl::cpu_type(), 4u) << "run with ZVL_CPU_TYPE=4";
        ASSERT_EQ(ZEL_Get_Dynamic(), 0) << "run with ZEL_DYNAMIC=false";
        team_ = std::min(std::max(ZEL_Domain_Get_Max_Threads(ZEL_ZVL), 2), 64);
        team(true);
    }
    // The team, or one thread.
    static void team(bool on) { ZEL_Domain_Set_Num_Threads(on ? team_ : 1, ZEL_ZVL); }
    static int team_;

    // The threads that met a zero divisor at either end of n elements.
    static uint64_t threads_at_ends(int n) {
        std::vector<double> a(static_cast<size_t>(n), 2.0), r(a.size());
        a[0] = a[a.size() - 1] = 0.0;
        g_threads_seen = 0;
        zvl::set_callback(note_thread);
        VDINV(&n, a.data(), r.data());
        zvl::clear_callback();
        return g_threads_seen.load();
    }
};

int Acceptance::team_ = 2;

// The front-end goes parallel from n equal to the threshold, the last
// member taking the array's end, and stays on the caller when one thread
// is asked for.
TEST_F(Acceptance, ThresholdLengthIsTheFirstParallelOne) {
    const int t = zvl::threshold_d(0, 4);
    ASSERT_GT(t, 100);
    ASSERT_LT(t, 1000000);
    EXPECT_EQ(threads_at_ends(t), 1u | uint64_t{1} << (team_ - 1));
    EXPECT_EQ(threads_at_ends(t - 1), 1u);
    team(false);
    EXPECT_EQ(threads_at_ends(t), 1u);
    team(true);
}

// Every real front-end with a parallel path, on a length that splits into
// chunks of no particular alignment in HA and into whole blocks of 16 for
// any team in every mode (LA and EP kernels may share work among a block):
// the team's results are the caller's alone and the kernel's, bit for bit.
class EveryFrontEnd : public Acceptance, public testing::WithParamInterface<Row> {};

TEST_P(EveryFrontEnd, ParallelMatchesSerial) {
    const Row& f = GetParam();
    const zvl_test::Args x = zvl_test::ordinary(f, 200003, 10);
    std::vector<double> parallel(x.a.size()), serial(x.a.size()), direct(x.a.size());
    // the second output of SinCos
    std::vector<double> parallel2(x.a.size()), serial2(x.a.size()), direct2(x.a.size());
    const unsigned modes[3] = {ZVL_HA, ZVL_LA, ZVL_EP};
    const int whole_blocks = 16 * team_ * (200000 / (16 * team_));
    // Tan HA shares one division between two elements
    const bool ha_shares = std::strchr(f.traits->chunk_variants, f.cell(4, 0).variant) != nullptr;
    for (int run = 0; run < 4; ++run) {
        const int col = run == 0 ? 0 : run - 1, n = run == 0 && !ha_shares ? 200003 : whole_blocks;
        zvl::set_mode(modes[col]);
        f.entry(&n, x.a.data(), x.bp(), parallel.data(), parallel2.data());
        team(false);
        f.entry(&n, x.a.data(), x.bp(), serial.data(), serial2.data());
        team(true);
        f.kernel(4, col)(n, x.a.data(), x.bp(), direct.data(), direct2.data());
        const size_t bytes = sizeof(double) * static_cast<size_t>(n * f.elem_doubles);
        EXPECT_EQ(std::memcmp(parallel.data(), serial.data(), bytes), 0) << n << " " << col;
        EXPECT_EQ(std::memcmp(parallel.data(), direct.data(), bytes), 0) << n << " " << col;
        if (f.shape == zvl_test::Shape::D12) {
            EXPECT_EQ(std::memcmp(parallel2.data(), serial2.data(), bytes), 0) << n << " " << col;
            EXPECT_EQ(std::memcmp(parallel2.data(), direct2.data(), bytes), 0) << n << " " << col;
        }
    }
    zvl::set_mode(ZVL_HA);
}

// The rounding family has no threshold and no parallel path: at any length
// it runs on the caller, where a driver would have cleared the status and
// the array base on its way out, as it does for the other functions at a
// length above their thresholds (with dynamic mode off a team forks there).
// 65536 is above every threshold at cpu type 4: the fork cost is at most
// 500000, and no HA cost there is below 10.
TEST_F(Acceptance, RoundingFamilyNeverReachesADriver) {
    constexpr int kLongest = 1 << 16;
    for (const Row& f : zvl_test::rows()) {
        const zvl_test::Args x = zvl_test::ordinary(f, kLongest);
        std::vector<double> y(static_cast<size_t>(kLongest * f.elem_doubles)), z(y.size());
        for (int n : {1, 99, 100, 101, 1000, 10000, kLongest}) {
            if (!f.rounding && n != kLongest) continue;
            zvl::set_status(ZVL_STATUS_UNDERFLOW);
            zvl::set_array_base(&y[1]);
            f.entry(&n, x.a.data(), x.bp(), y.data(), z.data());
            const bool on_the_caller = zvl::get_status() == ZVL_STATUS_UNDERFLOW &&
                                       zvl::library_context()->array_base == &y[1];
            EXPECT_EQ(on_the_caller, f.rounding) << f.report << ", n = " << n;
        }
    }
    zvl::set_status(0);
    zvl::set_array_base(nullptr);
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
