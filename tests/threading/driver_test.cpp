// The parallel drivers: the split, the state each member takes from the
// caller, and the status and array base the caller is left with.
#include <gtest/gtest.h>
#include <omp.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cmath>
#include <cstring>
#include <type_traits>
#include <vector>

#include "base/cpu_type.h"
#include "frame/kernel_sets.h"
#include "state/state.h"
#include "tests/threading/settings_reset.h"
#include "threading/settings.h"
#include "threading/threading.h"
#include "threading/thresholds.h"

namespace {

using zvl::Complex8;
using Z = ZVLComplex16;

// --- Recording kernels -------------------------------------------------------

struct Call {
    int thread;
    int32_t n;
    int64_t offset;  // of a from the whole array's start
    ZVLErrorCallback callback;
    uint32_t mode;
    const void* scalar;  // the address a scalar by pointer arrived at
};

Call g_calls[64];
std::atomic<int> g_ncalls{0};
const void* g_base = nullptr;

template <class T>
void record(int32_t n, const T* a, const void* scalar = nullptr) {
    const int i = g_ncalls.fetch_add(1);
    if (i < 64)
        g_calls[i] = {omp_get_thread_num(), n, a - static_cast<const T*>(g_base),
                      zvl::get_callback(), zvl::get_mode(), scalar};
}

std::vector<Call> calls_by_thread() {
    std::vector<Call> v(g_calls, g_calls + std::min(g_ncalls.load(), 64));
    std::sort(v.begin(), v.end(), [](const Call& x, const Call& y) { return x.thread < y.thread; });
    return v;
}

// Element values: a real number, or a complex number with the negated
// value as imaginary part.
template <class T>
constexpr bool kComplex = std::is_same_v<T, Z> || std::is_same_v<T, Complex8>;

template <class T>
double val(const T& x) {
    if constexpr (kComplex<T>)
        return x.real;
    else
        return x;
}
template <class T>
T make(double v) {
    if constexpr (kComplex<T>)
        return T{static_cast<decltype(T::real)>(v), static_cast<decltype(T::real)>(-v)};
    else
        return static_cast<T>(v);
}

template <class A, class R>
void plus_one(int32_t n, const A* a, R* r) {
    record(n, a);
    for (int32_t i = 0; i < n; ++i) r[i] = make<R>(val(a[i]) + 1);
}
template <class T>
void product(int32_t n, const T* a, const T* b, T* r) {
    record(n, a);
    for (int32_t i = 0; i < n; ++i) r[i] = make<T>(val(a[i]) * val(b[i]));
}
template <class T>
void two_out(int32_t n, const T* a, T* y, T* z) {
    record(n, a);
    for (int32_t i = 0; i < n; ++i) {
        y[i] = make<T>(val(a[i]) + 1);
        z[i] = make<T>(val(a[i]) + 2);
    }
}
template <class T>
void plus_scalar(int32_t n, const T* a, T b, T* r) {
    record(n, a);
    for (int32_t i = 0; i < n; ++i) r[i] = make<T>(val(a[i]) + val(b));
}
void plus_scalar_by_pointer(int32_t n, const Z* a, const Z* b, Z* r) {
    record(n, a, b);
    for (int32_t i = 0; i < n; ++i) r[i] = make<Z>(val(a[i]) + val(*b));
}

// --- Fixture -------------------------------------------------------------------

class Drivers : public testing::Test {
protected:
    void SetUp() override {
        zvl_test::reset_thread_settings(0, 4);
        zvl::threshold_cpu_type = 4;
        zvl::set_fork_topology({3, 4, 4});
        zvl::clear_callback();
        zvl::set_status(0);
        g_ncalls = 0;
    }
    static void threads(int n) { ZEL_Domain_Set_Num_Threads(n, ZEL_ZVL); }
    static const void* array_base() { return zvl::library_context()->array_base; }
};

// n / p elements each, the remainder on the last member; with fewer
// elements than members the last does everything.
TEST_F(Drivers, LastMemberTakesTheRemainder) {
    const struct {
        int threads;
        int32_t n;
        std::vector<Call> calls;  // thread, n, offset
    } rows[] = {{4, 10, {{0, 2, 0}, {1, 2, 2}, {2, 2, 4}, {3, 4, 6}}}, {8, 3, {{7, 3, 0}}}};
    for (const auto& row : rows) {
        threads(row.threads);
        std::vector<double> a(static_cast<size_t>(row.n), 1.0), r(a.size());
        g_base = a.data();
        g_ncalls = 0;
        zel_zvl_service_threader_d_1i_1o(plus_one<double, double>, row.n, a.data(), r.data(), 0, 0);
        const std::vector<Call> c = calls_by_thread();
        ASSERT_EQ(c.size(), row.calls.size());
        for (size_t t = 0; t < c.size(); ++t) {
            EXPECT_EQ(c[t].thread, row.calls[t].thread);
            EXPECT_EQ(c[t].n, row.calls[t].n);
            EXPECT_EQ(c[t].offset, row.calls[t].offset);
        }
    }
}

// --- Every shape ------------------------------------------------------------------
// Each driver over 1001 elements and three threads: every element computed
// from the elements at its own index, in three kernel calls.

constexpr int32_t kN = 1001;

template <class T>
std::vector<T> ramp() {
    std::vector<T> v(kN);
    for (int32_t i = 0; i < kN; ++i) v[static_cast<size_t>(i)] = make<T>(i);
    return v;
}

// r[i] is i + plus, or i * i + plus.
template <class R>
void expect_values(const std::vector<R>& r, double plus, bool squared = false) {
    for (int32_t i = 0; i < kN; ++i) {
        const double want = (squared ? double{1.0} * i * i : i) + plus;
        const R& got = r[static_cast<size_t>(i)];
        ASSERT_EQ(val(got), want) << "element " << i;
        if constexpr (kComplex<R>) ASSERT_EQ(got.imag, -want) << "element " << i;
    }
}

// Runs `drive` over two ramps a and b into y and z on three threads: y[i]
// must come out as i + py (or i * i + py), z[i] as i + pz (pz < 0: unused).
template <class A, class R = A, class Drive>
void covers(Drive drive, double py, double pz = -1, bool squared = false) {
    const std::vector<A> a = ramp<A>(), b = ramp<A>();
    std::vector<R> y(kN), z(kN);
    g_base = a.data();
    drive(a.data(), b.data(), y.data(), z.data());
    expect_values(y, py, squared);
    if (pz >= 0) expect_values(z, pz);
    EXPECT_EQ(g_ncalls.exchange(0), 3);
}

#define ZT_1I_1O(A, R, d) \
    covers<A, R>([](const A* a, const A*, R* y, R*) { d(plus_one<A, R>, kN, a, y, 0, 0); }, 1)
#define ZT_2I_1O(T, d)                                                                       \
    covers<T>([](const T* a, const T* b, T* y, T*) { d(product<T>, kN, a, b, y, 0, 0); }, 0, -1, \
              true)
#define ZT_1I_2O(T, d) \
    covers<T>([](const T* a, const T*, T* y, T* z) { d(two_out<T>, kN, a, y, z, 0, 0); }, 1, 2)
#define ZT_SCALAR(T, d)                                                             \
    covers<T>(                                                                      \
        [](const T* a, const T*, T* y, T*) { d(plus_scalar<T>, kN, a, make<T>(5), y, 0, 0); }, 5)

TEST_F(Drivers, EveryShapeCoversTheWholeArray) {
    threads(3);
    ZT_1I_1O(double, double, zel_zvl_service_threader_d_1i_1o);
    ZT_1I_1O(Z, Z, zel_zvl_service_threader_z_1i_1o);
    ZT_1I_1O(double, Z, zel_zvl_service_threader_d_1i_z_1o);
    ZT_1I_1O(Z, double, zel_zvl_service_threader_z_1i_d_1o);
    ZT_1I_1O(float, float, zel_zvl_service_threader_s_1i_1o);
    ZT_1I_1O(Complex8, Complex8, zel_zvl_service_threader_c_1i_1o);
    ZT_1I_1O(float, Complex8, zel_zvl_service_threader_s_1i_c_1o);
    ZT_1I_1O(Complex8, float, zel_zvl_service_threader_c_1i_s_1o);
    ZT_2I_1O(double, zel_zvl_service_threader_d_2i_1o);
    ZT_2I_1O(Z, zel_zvl_service_threader_z_2i_1o);
    ZT_2I_1O(float, zel_zvl_service_threader_s_2i_1o);
    ZT_2I_1O(Complex8, zel_zvl_service_threader_c_2i_1o);
    ZT_1I_2O(double, zel_zvl_service_threader_d_1i_2o);
    ZT_1I_2O(Z, zel_zvl_service_threader_z_1i_2o);
    ZT_1I_2O(float, zel_zvl_service_threader_s_1i_2o);
    ZT_1I_2O(Complex8, zel_zvl_service_threader_c_1i_2o);
    ZT_SCALAR(double, zel_zvl_service_threader_d_cd_2i_d_1o);
    ZT_SCALAR(float, zel_zvl_service_threader_s_cs_2i_s_1o);
    ZT_SCALAR(Complex8, zel_zvl_service_threader_c_cc_2i_c_1o);
}

TEST_F(Drivers, ScalarByPointerIsCopiedPerMember) {
    threads(3);
    const std::vector<Z> a = ramp<Z>();
    std::vector<Z> r(kN);
    const Z b = make<Z>(5);
    g_base = a.data();
    zel_zvl_service_threader_z_cz_2i_z_1o(plus_scalar_by_pointer, kN, a.data(), &b, r.data(), 0,
                                          0);
    const std::vector<Call> c = calls_by_thread();
    expect_values(r, 5);
    ASSERT_EQ(c.size(), 3u);
    g_ncalls = 0;
    for (size_t i = 0; i < c.size(); ++i) {
        EXPECT_NE(c[i].scalar, &b);
        for (size_t j = 0; j < i; ++j) EXPECT_NE(c[i].scalar, c[j].scalar);
    }
}

// --- Status, callback, mode and array base ---------------------------------------

struct Report {
    int32_t index;
    int thread;
    int32_t status;
};
Report g_reports[16];
std::atomic<int> g_nreports{0};

int keep_result(ZVLErrorRecord* rec) {
    const int i = g_nreports.fetch_add(1);
    if (i < 16) g_reports[i] = {rec->index, omp_get_thread_num(), rec->status};
    return 0;
}

zvl::KernelD1 inv_kernel() { return zvl::kernels_VDINV.k[zvl::cpu_type()][zvl::kHA]; }

class FaultIndex : public Drivers, public testing::WithParamInterface<int> {};

// A zero divisor anywhere is reported with its index in the whole array,
// on the member whose chunk holds it.
TEST_P(FaultIndex, ReportedFromTheArrayStart) {
    threads(4);
    const int at = GetParam();
    std::vector<double> a(10, 2.0), r(10);
    a[static_cast<size_t>(at)] = 0.0;
    zvl::set_callback(keep_result);
    g_nreports = 0;
    zel_zvl_service_threader_d_1i_1o(inv_kernel(), 10, a.data(), r.data(), 0, 0);
    ASSERT_EQ(g_nreports.load(), 1);
    EXPECT_EQ(g_reports[0].index, at);
    EXPECT_EQ(g_reports[0].thread, std::min(at / 2, 3));
    EXPECT_EQ(g_reports[0].status, ZVL_STATUS_SING);
    EXPECT_EQ(zvl::get_status(), ZVL_STATUS_SING);
    EXPECT_EQ(r[static_cast<size_t>(at)], HUGE_VAL);
    EXPECT_EQ(array_base(), nullptr);
}

INSTANTIATE_TEST_SUITE_P(Threading, FaultIndex, testing::Values(0, 1, 3, 4, 6, 9));

TEST_F(Drivers, TwoFaultsLeaveOneOfTheirStatuses) {
    threads(2);
    std::vector<double> a(100, 2.0), r(100);
    g_base = a.data();
    const auto kernel = [](int32_t n, const double* a, double* r) {
        record(n, a);
        zvl::set_status(a == g_base ? ZVL_STATUS_ERRDOM : ZVL_STATUS_OVERFLOW);
        std::fill(r, r + n, 0.0);
    };
    zel_zvl_service_threader_d_1i_1o(kernel, 100, a.data(), r.data(), 0, 0);
    EXPECT_EQ(g_ncalls.load(), 2);
    const int32_t s = zvl::get_status();
    EXPECT_TRUE(s == ZVL_STATUS_ERRDOM || s == ZVL_STATUS_OVERFLOW) << s;
}

// After a team the caller's status is the members' (none clears an earlier
// one); the direct path of one thread leaves status and array base alone.
TEST_F(Drivers, StatusAndArrayBaseAfterTheCall) {
    std::vector<double> a(100, 2.0), r(100);
    g_base = a.data();
    for (int team : {2, 1}) {
        threads(team);
        zvl::set_status(ZVL_STATUS_UNDERFLOW);
        zvl::set_array_base(&a[5]);
        zel_zvl_service_threader_d_1i_1o(plus_one<double, double>, 100, a.data(), r.data(), 0, 0);
        EXPECT_EQ(zvl::get_status(), team == 1 ? ZVL_STATUS_UNDERFLOW : 0) << team;
        EXPECT_EQ(array_base(), team == 1 ? &a[5] : nullptr) << team;
        EXPECT_EQ(g_ncalls.exchange(0), team);
    }
    zvl::set_array_base(nullptr);
}

TEST_F(Drivers, MembersRunWithTheCallersCallbackAndMode) {
    threads(3);
    zvl::set_mode(ZVL_LA | ZVL_ERRMODE_STDOUT);
    zvl::set_callback(keep_result);
    const uint32_t mode = zvl::get_mode();
    std::vector<double> a(300, 2.0), r(300);
    g_base = a.data();
    zel_zvl_service_threader_d_1i_1o(plus_one<double, double>, 300, a.data(), r.data(), 6, 0);
    const std::vector<Call> c = calls_by_thread();
    ASSERT_EQ(c.size(), 3u);
    for (const Call& call : c) {
        EXPECT_EQ(call.callback, keep_result) << "thread " << call.thread;
        EXPECT_EQ(call.mode, mode) << "thread " << call.thread;
    }
    zvl::set_mode(ZVL_MODE_DEFAULT);
    zvl::clear_callback();
}

// A thread that served in a team holds no array base afterwards: a call of
// its own, made inside the application's parallel region on the same pool
// threads, reports indices in its own arrays.
TEST_F(Drivers, FormerMembersReportIndicesInTheirOwnArrays) {
    threads(2);
    std::vector<double> big(1000, 2.0), rbig(1000);
    zel_zvl_service_threader_d_1i_1o(inv_kernel(), 1000, big.data(), rbig.data(), 0, 0);
    int32_t index[2] = {-1, -1};
#pragma omp parallel num_threads(2)
    {
        const int t = omp_get_thread_num();
        std::vector<double> a(10, 2.0), r(10);
        a[2] = 0.0;
        zvl::set_callback([](ZVLErrorRecord* rec) {
            g_reports[omp_get_thread_num()].index = rec->index;
            return 0;
        });
        inv_kernel()(10, a.data(), r.data());
        zvl::clear_callback();
        index[t] = g_reports[t].index;
    }
    EXPECT_EQ(index[0], 2);
    EXPECT_EQ(index[1], 2);
}

// errno after a team's call is what a serial call leaves: the value of the
// zero divisor's report on whichever member met it, and the caller's own
// when nothing was reported.
TEST_F(Drivers, ErrnoComesBackFromTheMembers) {
    threads(4);
    const uint32_t saved = zvl::set_mode(ZVL_HA | ZVL_ERRMODE_ERRNO);
    for (int at : {0, 5, 9}) {
        std::vector<double> a(10, 2.0), r(10);
        a[static_cast<size_t>(at)] = 0.0;
        errno = 0;
        zel_zvl_service_threader_d_1i_1o(inv_kernel(), 10, a.data(), r.data(), 0, 0);
        EXPECT_EQ(errno, 34) << "zero at " << at;  // ERANGE
    }
    std::vector<double> a(10, 2.0), r(10);
    errno = 77;
    zel_zvl_service_threader_d_1i_1o(inv_kernel(), 10, a.data(), r.data(), 0, 0);
    EXPECT_EQ(errno, 77);
    zvl::set_mode(saved);
}

// Inside a region whose nesting the runtime refuses, the inner team has one
// member, which runs the whole array with the same status handling.
TEST_F(Drivers, SerializedRegionRunsWholeArrayOnTheCaller) {
    threads(4);
    omp_set_max_active_levels(1);
    int32_t status = -9;
    const void* base = &status;
    int reports_thread = -1;
#pragma omp parallel num_threads(2)
    {
        if (omp_get_thread_num() == 1) {
            std::vector<double> a(10, 2.0), r(10);
            a[8] = 0.0;
            zvl::set_callback(keep_result);
            g_nreports = 0;
            zel_zvl_service_threader_d_1i_1o(inv_kernel(), 10, a.data(), r.data(), 0, 0);
            status = zvl::get_status();
            base = array_base();
            reports_thread = g_reports[0].thread;
            zvl::clear_callback();
        }
    }
    EXPECT_EQ(status, ZVL_STATUS_SING);
    EXPECT_EQ(base, nullptr);
    EXPECT_EQ(reports_thread, 0);  // numbered within the inner team of one
    EXPECT_EQ(g_reports[0].index, 8);
}

// --- Dynamic split ------------------------------------------------------------------
// Counts 3, 4, 4 and vdInv HA at type 4: one thread is worth up to 568
// elements, two up to 994.

TEST_F(Drivers, DynamicSplitDecidesTheTeam) {
    zvl::thread_settings.dynamic = 1;
    threads(4);
    std::vector<double> a(800, 2.0), r(800);
    g_base = a.data();
    zvl::set_status(ZVL_STATUS_UNDERFLOW);
    zel_zvl_service_threader_d_1i_1o(plus_one<double, double>, 500, a.data(), r.data(), 0, 0);
    ASSERT_EQ(g_ncalls.load(), 1);
    EXPECT_EQ(g_calls[0].n, 500);
    EXPECT_EQ(zvl::get_status(), ZVL_STATUS_UNDERFLOW);  // the direct path

    g_ncalls = 0;
    zel_zvl_service_threader_d_1i_1o(plus_one<double, double>, 800, a.data(), r.data(), 0, 0);
    const std::vector<Call> c = calls_by_thread();
    ASSERT_EQ(c.size(), 2u);
    EXPECT_EQ(c[0].n, 400);
    EXPECT_EQ(c[1].n, 400);
    EXPECT_EQ(zvl::get_status(), 0);
}

}  // namespace
