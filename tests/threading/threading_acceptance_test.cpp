// The whole path on this machine, with cpu type 4 and dynamic mode off (set
// by the test's environment): the front-end's threshold, the driver and the
// kernels on the team. A zero divisor at each end of the array shows which
// team members ran which part: the callback is called by the member that
// meets the element.
#include <gtest/gtest.h>
#include <omp.h>

#include <atomic>
#include <cmath>
#include <cstring>
#include <random>
#include <vector>

#include "frame/cpu_type.h"
#include "frame/kernel_sets.h"
#include "state/state.h"
#include "threading/threading.h"
#include "zvl.h"

namespace {

std::atomic<uint32_t> g_threads_seen{0};

std::vector<double> uniform(size_t n, unsigned seed) {
    std::mt19937_64 g(seed);
    std::uniform_real_distribution<double> d(-1e3, 1e3);
    std::vector<double> v(n);
    for (double& x : v) x = d(g);
    return v;
}

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
        zvl::set_callback(note_thread);
    }
    void TearDown() override { zvl::clear_callback(); }

    // The threads that met a zero divisor at either end of n elements.
    static uint32_t threads_at_ends(int n, std::vector<double>& a, std::vector<double>& r) {
        a[0] = 0.0;
        a[static_cast<size_t>(n) - 1] = 0.0;
        g_threads_seen = 0;
        VDINV(&n, a.data(), r.data());
        return g_threads_seen.load();
    }
};

TEST_F(Acceptance, LongInvRunsOnTwoThreadsBitForBit) {
    const int n = 10000000;
    std::vector<double> a = uniform(n, 7), parallel(n), serial(n), direct(n);

    ASSERT_GE(ZEL_Domain_Get_Max_Threads(ZEL_ZVL), 2);
    ASSERT_GE(n, zvl::threshold_d(0, 4));
    EXPECT_EQ(threads_at_ends(n, a, parallel), 0b11u);

    ZEL_Domain_Set_Num_Threads(1, ZEL_ZVL);
    EXPECT_EQ(threads_at_ends(n, a, serial), 0b01u);
    ZEL_Domain_Set_Num_Threads(0, ZEL_ZVL);

    zvl::kernels_VDINV.k[4][zvl::kHA](n, a.data(), direct.data());
    EXPECT_EQ(std::memcmp(parallel.data(), serial.data(), sizeof(double) * n), 0);
    EXPECT_EQ(std::memcmp(parallel.data(), direct.data(), sizeof(double) * n), 0);
}

TEST_F(Acceptance, LongDivMatchesSerialBitForBit) {
    const int n = 2000000;
    const std::vector<double> a = uniform(n, 8), b = uniform(n, 9);
    std::vector<double> parallel(n), serial(n);
    for (const unsigned mode : {ZVL_HA, ZVL_LA, ZVL_EP}) {
        zvl::set_mode(mode);
        VDDIV(&n, a.data(), b.data(), parallel.data());
        ZEL_Domain_Set_Num_Threads(1, ZEL_ZVL);
        VDDIV(&n, a.data(), b.data(), serial.data());
        ZEL_Domain_Set_Num_Threads(0, ZEL_ZVL);
        EXPECT_EQ(std::memcmp(parallel.data(), serial.data(), sizeof(double) * n), 0) << mode;
    }
    zvl::set_mode(ZVL_HA);
}

// Every real front-end with a parallel path, HA, on a length that splits
// into chunks of no particular alignment: the team's results are the
// caller's alone, bit for bit.
struct Front {
    const char* name;
    void (*one)(const int*, const double*, double*);
    void (*two)(const int*, const double*, const double*, double*);
    void (*scalar)(const int*, const double*, const double*, double*);
};

std::ostream& operator<<(std::ostream& os, const Front& f) { return os << f.name; }

class EveryFrontEnd : public Acceptance, public testing::WithParamInterface<Front> {};

TEST_P(EveryFrontEnd, ParallelMatchesSerial) {
    const Front f = GetParam();
    const int n = 1000003;
    std::vector<double> a = uniform(n, 10), b = uniform(n, 11), parallel(n), serial(n);
    for (size_t i = 0; i < a.size(); ++i) {
        a[i] = 0.5 + std::abs(a[i]) / 500;  // in (0.5, 2.5): inside every domain
        b[i] = b[i] / 200;
    }
    const double x = 1.75;
    for (std::vector<double>* out : {&parallel, &serial}) {
        if (out == &serial) ZEL_Domain_Set_Num_Threads(1, ZEL_ZVL);
        if (f.one) f.one(&n, a.data(), out->data());
        if (f.two) f.two(&n, a.data(), b.data(), out->data());
        if (f.scalar) f.scalar(&n, a.data(), &x, out->data());
    }
    ZEL_Domain_Set_Num_Threads(0, ZEL_ZVL);
    EXPECT_EQ(std::memcmp(parallel.data(), serial.data(), sizeof(double) * n), 0);
}

INSTANTIATE_TEST_SUITE_P(
    Threading, EveryFrontEnd,
    testing::Values(Front{"Inv", VDINV, nullptr, nullptr}, Front{"Div", nullptr, VDDIV, nullptr},
                    Front{"Sqrt", VDSQRT, nullptr, nullptr},
                    Front{"InvSqrt", VDINVSQRT, nullptr, nullptr},
                    Front{"Cbrt", VDCBRT, nullptr, nullptr},
                    Front{"InvCbrt", VDINVCBRT, nullptr, nullptr},
                    Front{"Pow", nullptr, VDPOW, nullptr},
                    Front{"Powx", nullptr, nullptr, VDPOWX},
                    Front{"Exp", VDEXP, nullptr, nullptr}),
    [](const testing::TestParamInfo<Front>& info) { return std::string(info.param.name); });

// The front-end goes parallel from n equal to the threshold.
TEST_F(Acceptance, ThresholdLengthIsTheFirstParallelOne) {
    const int t = zvl::threshold_d(0, 4);
    ASSERT_GT(t, 100);
    ASSERT_LT(t, 1000000);
    std::vector<double> a(static_cast<size_t>(t), 2.0), r(static_cast<size_t>(t));
    EXPECT_EQ(threads_at_ends(t, a, r), 0b11u);
    EXPECT_EQ(threads_at_ends(t - 1, a, r), 0b01u);
}

}  // namespace
