// The Inv and Div kernels of every cpu type and accuracy mode, called by
// their symbols: accuracy against MPFR, special values and their reports,
// block and remainder paths, aliasing, callbacks that replace a result, and
// the floating-point control state around the call. The contract is written
// once and run over the table of kernels.
#include <gtest/gtest.h>
#include <mpfr.h>
#include <sys/mman.h>
#include <unistd.h>
#include <xmmintrin.h>

#include <cmath>
#include <cstdint>
#include <cstring>
#include <iterator>
#include <random>
#include <string>
#include <vector>

#include "frame/kernel_sets.h"
#include "state/state.h"
#include "tests/common/capture.h"

namespace {

using zvl_test::bits_of;
using zvl_test::from_bits;

// --- The kernels ------------------------------------------------------------

enum Mode { kHA, kLA, kEP };
// Which floating-point control state a kernel installs on entry.
enum Guard { kNoGuard, kFullMxcsr, kShortMxcsr, kX87Double, kX87Extended };
enum Form { kScalarForm, kScratchForm, kRestartForm };

struct Kernel {
    const char* name;
    int cpu;
    bool div;
    Mode mode;
    zvl::KernelD1 inv;
    zvl::KernelD2 quot;
    int W;  // block width
    Guard guard;
    Form form;
};

#define INV(cpu, tag, mode, W, guard, form) \
    {ZVL_KERNEL_NAME(cpu, Inv, tag), kCpu_##cpu, false, mode, ZVL_KERNEL(cpu, Inv, tag), nullptr, W, guard, form}
#define DIV(cpu, tag, mode, W, guard, form) \
    {ZVL_KERNEL_NAME(cpu, Div, tag), kCpu_##cpu, true, mode, nullptr, ZVL_KERNEL(cpu, Div, tag), W, guard, form}
#define LA_EP(MACRO, cpu, W, guard, form) \
    MACRO(cpu, 50, kLA, W, guard, form), MACRO(cpu, 26, kEP, W, guard, form)

enum { kCpu_ex, kCpu_e7, kCpu_u8, kCpu_y8, kCpu_h8, kCpu_e9 };

const Kernel kKernels[] = {
    INV(ex, HA, kHA, 1, kX87Double, kScalarForm),
    DIV(ex, HA, kHA, 1, kX87Double, kScalarForm),
#define SSE_LOW(cpu)                                        \
    INV(cpu, HA, kHA, 2, kShortMxcsr, kScalarForm),         \
    DIV(cpu, HA, kHA, 2, kShortMxcsr, kScalarForm),         \
    LA_EP(INV, cpu, 8, kFullMxcsr, kRestartForm),           \
    LA_EP(DIV, cpu, 4, kX87Extended, kRestartForm)
#define SSE_HIGH(cpu)                                       \
    INV(cpu, HA, kHA, 8, kNoGuard, kScratchForm),           \
    DIV(cpu, HA, kHA, 8, kNoGuard, kScratchForm),           \
    LA_EP(INV, cpu, 8, kFullMxcsr, kRestartForm),           \
    LA_EP(DIV, cpu, 4, kX87Extended, kRestartForm)
    SSE_LOW(e7),
    SSE_LOW(u8),
    SSE_HIGH(y8),
    SSE_HIGH(h8),
    INV(e9, HA, kHA, 16, kNoGuard, kScratchForm),
    DIV(e9, HA, kHA, 16, kNoGuard, kScratchForm),
    LA_EP(INV, e9, 16, kNoGuard, kScratchForm),
    LA_EP(DIV, e9, 16, kNoGuard, kScratchForm),
};

// LA and EP give up a few ulps for dividing rarely.
constexpr int64_t kLowModeUlps = 4;

// --- References -----------------------------------------------------------------

// a / b rounded once to double (subnormals included) in the given direction.
double quotient(double a, double b, mpfr_rnd_t rnd = MPFR_RNDN) {
    const mpfr_exp_t emin = mpfr_get_emin(), emax = mpfr_get_emax();
    mpfr_set_emin(-1073);
    mpfr_set_emax(1024);
    mpfr_t x, y, q;
    mpfr_inits2(53, x, y, q, static_cast<mpfr_ptr>(nullptr));
    mpfr_set_d(x, a, MPFR_RNDN);
    mpfr_set_d(y, b, MPFR_RNDN);
    int t = mpfr_div(q, x, y, rnd);
    t = mpfr_subnormalize(q, t, rnd);
    const double r = mpfr_get_d(q, rnd);
    mpfr_clears(x, y, q, static_cast<mpfr_ptr>(nullptr));
    mpfr_set_emin(emin);
    mpfr_set_emax(emax);
    return r;
}

// Distance in representable doubles.
int64_t ulps_apart(double x, double y) {
    auto ord = [](double v) {
        const int64_t i = static_cast<int64_t>(bits_of(v));
        return i < 0 ? -(i & INT64_MAX) : i;
    };
    const int64_t d = ord(x) - ord(y);
    return d < 0 ? -d : d;
}

// The restart form's scalar element routines, as the test computes them.
double inv_element(double x) {
    // high word without the sign in [0x2ff6a09f, 0x4fefffff)
    const uint32_t hw = static_cast<uint32_t>(bits_of(x) >> 32) & 0x7fffffffu;
    if (!(hw >= 0x2ff6a09fu && hw < 0x4fefffffu)) return 1.0 / x;
    const double x2 = x * x;
    return ((1.0 / (x2 * x2)) * x2) * x;
}
double div_element(double a, double b) {
    const long double la = a, lb = b;
    if (b == 0.0 || std::isinf(b) || std::isnan(b)) return static_cast<double>(la / lb);
    const long double b2 = lb * lb;
    return static_cast<double>((((1.0L / (b2 * b2)) * b2) * lb) * la);
}

// --- Reports --------------------------------------------------------------------

struct Report {
    int status;
    int index;
    double a1, r1;
    std::string name;
};
std::vector<Report> g_reports;
bool g_replace = false;
constexpr double kReplaced = 12345.0;

int record(ZVLErrorRecord* rec) {
    g_reports.push_back({rec->status, rec->index, rec->a1, rec->r1,
                         std::string(rec->name, static_cast<size_t>(rec->name_len))});
    if (g_replace) rec->r1 = kReplaced;
    return 0;
}

// --- Control state ---------------------------------------------------------------

uint16_t x87_cw() {
    uint16_t w;
    __asm__ __volatile__("fnstcw %0" : "=m"(w));
    return w;
}
void set_x87_cw(uint16_t w) { __asm__ __volatile__("fldcw %0" : : "m"(w)); }

constexpr uint32_t kMxcsrDefault = 0x1f80;
constexpr uint32_t kMxcsrTowardZeroFtz = 0x1f80 | 0x6000 | 0x8000;
constexpr uint16_t kX87Default = 0x037f;
constexpr uint16_t kX87TowardZeroDouble = 0x0e7f;  // rounding toward zero, 53 bits

// --- Arrays that end at an unreadable page -----------------------------------------

// Reading or writing past the last element faults.
class FencedArray {
  public:
    explicit FencedArray(size_t n) : n_(n) {
        const size_t page = static_cast<size_t>(sysconf(_SC_PAGESIZE));
        bytes_ = ((n * 8 + page - 1) / page + 1) * page;
        base_ = static_cast<char*>(mmap(nullptr, bytes_, PROT_READ | PROT_WRITE,
                                        MAP_PRIVATE | MAP_ANONYMOUS, -1, 0));
        mprotect(base_ + bytes_ - page, page, PROT_NONE);
        data_ = reinterpret_cast<double*>(base_ + bytes_ - page) - n;
    }
    ~FencedArray() { munmap(base_, bytes_); }
    FencedArray(const FencedArray&) = delete;
    FencedArray& operator=(const FencedArray&) = delete;
    double* data() { return data_; }
    double& operator[](size_t i) { return data_[i]; }

  private:
    size_t n_, bytes_;
    char* base_;
    double* data_;
};

// --- The fixture -------------------------------------------------------------------

class KernelContract : public testing::TestWithParam<Kernel> {
  protected:
    void SetUp() override {
        if (GetParam().cpu == 5 && !__builtin_cpu_supports("avx"))
            GTEST_SKIP() << "cpu type 5 kernels need AVX";
        zvl::ThreadContext* c = zvl::library_context();
        c->mode = ZVL_MODE_DEFAULT;
        c->status = 0;
        c->array_base = nullptr;
        zvl::set_callback(record);
        g_reports.clear();
        g_replace = false;
    }
    void TearDown() override { zvl::clear_callback(); }

    const Kernel& k() const { return GetParam(); }
    void run(int n, const double* a, const double* b, double* r) const {
        if (k().div)
            k().quot(n, a, b, r);
        else
            k().inv(n, b, r);  // Inv works on the divisors
    }
    // Divisors alone for Inv; a / b for Div.
    double dividend(double a) const { return k().div ? a : 1.0; }
    int64_t ulp_budget() const { return k().mode == kHA ? 0 : kLowModeUlps; }

    // Reports a zero divisor makes: all but Inf/0 and NaN/0 in the scalar
    // form of the HA kernels, which test the dividend first.
    bool reports_zero_divisor(double a) const {
        if (!k().div || !(std::isinf(a) || std::isnan(a))) return true;
        return !(k().mode == kHA && k().cpu <= 2) && k().cpu != 0;
    }
};

// Ordinary operands: moderate magnitudes of both signs.
void ordinary(std::mt19937_64& rng, std::vector<double>& a, std::vector<double>& b) {
    std::uniform_real_distribution<double> m(1.0, 2.0);
    std::uniform_int_distribution<int> e(-30, 30);
    for (size_t i = 0; i < a.size(); ++i) {
        a[i] = std::ldexp(m(rng), e(rng)) * (rng() & 1 ? -1 : 1);
        b[i] = std::ldexp(m(rng), e(rng)) * (rng() & 2 ? -1 : 1);
    }
}

// Any finite non-zero double, denormals included.
double any_finite(std::mt19937_64& rng) {
    for (;;) {
        const double x = from_bits(rng());
        if (std::isfinite(x) && x != 0.0) return x;
    }
}

// Divisors where the paths change: the range guards of the four-way
// product, the exponents whose reciprocal is denormal, the smallest normal.
const double kEdges[] = {
    from_bits(0x2ff6a09f00000000), from_bits(0x2ff6a09effffffff),  // low guard
    from_bits(0x4feffffeffffffff), from_bits(0x4fefffff00000000),  // high guard
    0x1p1022, from_bits(0x7fd0000000000001), 0x1p1023, from_bits(0x7fefffffffffffff),
    0x1p-1022, from_bits(0x0010000000000001), 0x1p-1021, from_bits(0x000fffffffffffff),
    from_bits(0x7fcfffffffffffff), 0x1p1021,
};

TEST_P(KernelContract, AccuracyAgainstMpfr) {
    std::mt19937_64 rng(0x5eed + k().cpu);
    const int n = 4099;
    std::vector<double> a(n), b(n), r(n);
    int64_t worst = 0;
    double worst_a = 0, worst_b = 0;
    for (int pass = 0; pass < 3; ++pass) {
        if (pass == 0) ordinary(rng, a, b);
        for (int i = 0; i < n && pass > 0; ++i) {
            // pass 1: divisors over the whole range; pass 2: both operands
            b[i] = any_finite(rng);
            a[i] = pass == 1 ? std::ldexp(1.0 + i / 8192.0, i % 40 - 20) : any_finite(rng);
        }
        if (pass == 1)
            for (size_t i = 0; i < std::size(kEdges); ++i) b[2 * i] = kEdges[i], b[2 * i + 1] = -kEdges[i];
        run(n, a.data(), b.data(), r.data());
        for (int i = 0; i < n; ++i) {
            const int64_t d = ulps_apart(r[i], quotient(dividend(a[i]), b[i]));
            if (d > worst) worst = d, worst_a = a[i], worst_b = b[i];
        }
    }
    EXPECT_LE(worst, ulp_budget()) << "worst at a=" << worst_a << " b=" << worst_b;
    EXPECT_TRUE(g_reports.empty());
    RecordProperty("max_ulps", static_cast<int>(worst));
}

struct Special {
    const char* what;
    double a, b;
    uint64_t result;  // bits; any NaN matches a NaN
    bool zero_divisor;
};

const double kDenormal = 4.9406564584124654e-324;
const double kHuge = std::ldexp(1.5, 1023);  // reciprocal denormal

const Special kSpecials[] = {
    {"+0", 1.0, 0.0, 0x7ff0000000000000, true},
    {"-0", 1.0, -0.0, 0xfff0000000000000, true},
    {"negative over +0", -2.0, 0.0, 0xfff0000000000000, true},
    {"0/0", 0.0, 0.0, 0x7ff8000000000000, true},
    {"Inf/0", INFINITY, 0.0, 0x7ff0000000000000, true},
    {"NaN/0", NAN, 0.0, 0x7ff8000000000000, true},
    {"infinite divisor", 3.0, INFINITY, 0x0000000000000000, false},
    {"-infinite divisor", 3.0, -INFINITY, 0x8000000000000000, false},
    {"Inf/Inf", INFINITY, INFINITY, 0x7ff8000000000000, false},
    {"NaN divisor", 1.0, NAN, 0x7ff8000000000000, false},
    {"denormal divisor", 1.0, kDenormal, 0x7ff0000000000000, false},
    {"denormal divisor, finite quotient", 1e-300, kDenormal, bits_of(1e-300 / kDenormal), false},
    {"overflow by a denormal divisor", 1e308, 1e-308, 0x7ff0000000000000, false},
    {"overflow by a normal divisor", -1e308, 1e-10, 0xfff0000000000000, false},
    {"denormal quotient", 1e-300, 3e20, bits_of(1e-300 / 3e20), false},
    {"huge divisor", 1.0, kHuge, bits_of(1.0 / kHuge), false},
    {"smallest normal divisor", 1.0, 0x1p-1022, 0x7fd0000000000000, false},
};

// The ordinary divisor with the same sign and mantissa as x: the type 5
// low-accuracy kernels share one division among the mantissas of a group,
// so a lane's neighbours round alike only if its mantissa is the same.
double mantissa_twin(double x) {
    return from_bits((bits_of(x) & 0x800fffffffffffffull) | 0x3ff0000000000000ull);
}

// Each special value alone among ordinary ones, at the start of a block,
// its end, inside the next block and in the remainder: its own result and
// report, and the other elements as with an ordinary value in its place.
TEST_P(KernelContract, SpecialValuesInBlocksAndRemainder) {
    const int W = k().W, n = 2 * W + 3;
    std::mt19937_64 rng(42);
    std::vector<double> a(n), b(n), plain(n), r(n);
    ordinary(rng, a, b);
    for (const Special& s : kSpecials) {
        if (!k().div && s.a != 1.0) continue;
        for (int p : {0, W - 1, W + 1, 2 * W, n - 1}) {
            SCOPED_TRACE(std::string(s.what) + " at " + std::to_string(p));
            std::vector<double> sa = a, sb = b;
            sa[p] = s.a;
            sb[p] = mantissa_twin(s.b);
            run(n, sa.data(), sb.data(), plain.data());
            sb[p] = s.b;
            g_reports.clear();
            run(n, sa.data(), sb.data(), r.data());
            if (std::isnan(from_bits(s.result)))
                EXPECT_TRUE(std::isnan(r[p])) << r[p];
            else
                EXPECT_EQ(bits_of(r[p]), s.result) << r[p];
            const bool reported = s.zero_divisor && reports_zero_divisor(s.a);
            ASSERT_EQ(g_reports.size(), reported ? 1u : 0u);
            if (reported) {
                EXPECT_EQ(g_reports[0].status, ZVL_STATUS_SING);
                EXPECT_EQ(g_reports[0].index, p);
                EXPECT_EQ(g_reports[0].name, k().name);
                EXPECT_EQ(zvl::get_status(), ZVL_STATUS_SING);
            }
            for (int i = 0; i < n; ++i) {
                if (i == p) continue;
                // The restart form recomputes the special element's whole
                // block by its scalar routine; that is checked on its own.
                if (k().form == kRestartForm && i / W == p / W && p < n / W * W) continue;
                EXPECT_EQ(bits_of(r[i]), bits_of(plain[i])) << "element " << i;
            }
        }
    }
}

// One element outside the range guards sends its whole block through the
// scalar element routine; in-range elements then round as that routine does.
TEST_P(KernelContract, RestartBlockRunsTheElementRoutine) {
    if (k().form != kRestartForm) GTEST_SKIP() << "not a restart-form kernel";
    const int W = k().W, n = 3 * W;
    std::mt19937_64 rng(7);
    std::vector<double> a(n), b(n), r(n);
    ordinary(rng, a, b);
    b[W + 3] = 1e300;  // out of range, in the second block
    for (int i = 2 * W; i < 3 * W; ++i) b[i] = 1e-12 * (i & 1 ? 1 : -1);  // product too small
    run(n, a.data(), b.data(), r.data());
    for (int i = W; i < n; ++i) {
        const double want = k().div ? div_element(a[i], b[i]) : inv_element(b[i]);
        EXPECT_EQ(bits_of(r[i]), bits_of(want)) << "element " << i << " b=" << b[i];
    }
    // The remainder runs the same routine.
    std::vector<double> rest(W - 1);
    run(W - 1, a.data(), b.data(), rest.data());
    for (int i = 0; i < W - 1; ++i) {
        const double want = k().div ? div_element(a[i], b[i]) : inv_element(b[i]);
        EXPECT_EQ(bits_of(rest[i]), bits_of(want)) << "remainder element " << i;
    }
}

// Every count from 0 to a few blocks, with arrays that end at an unreadable
// page: nothing beyond n-1 is read or written, and a count below one
// touches nothing.
TEST_P(KernelContract, CountsAndArrayEnds) {
    const int W = k().W;
    std::mt19937_64 rng(3);
    for (int n = -2; n <= 3 * W + 1; ++n) {
        const size_t m = n > 0 ? static_cast<size_t>(n) : 1;
        FencedArray a(m), b(m), r(m);
        std::vector<double> va(m), vb(m);
        ordinary(rng, va, vb);
        for (size_t i = 0; i < m; ++i) a[i] = va[i], b[i] = vb[i], r[i] = -7.0;
        run(n, a.data(), b.data(), r.data());
        for (int i = 0; i < n; ++i)
            EXPECT_LE(ulps_apart(r[i], quotient(dividend(a[i]), b[i])), ulp_budget())
                << "n " << n << " element " << i;
        if (n <= 0) EXPECT_EQ(r[0], -7.0) << "n " << n;
    }
}

TEST_P(KernelContract, OutputMayBeAnInput) {
    const int n = 5 * k().W + 3;
    std::mt19937_64 rng(11);
    std::vector<double> a(n), b(n), want(n);
    ordinary(rng, a, b);
    b[1] = 0.0;
    b[n - 2] = -0.0;
    b[k().W] = 1e300;
    run(n, a.data(), b.data(), want.data());
    std::vector<double> inout = b;
    run(n, a.data(), inout.data(), inout.data());
    for (int i = 0; i < n; ++i) EXPECT_EQ(bits_of(inout[i]), bits_of(want[i])) << "r == b, " << i;
    if (k().div) {
        inout = a;
        run(n, inout.data(), b.data(), inout.data());
        for (int i = 0; i < n; ++i) EXPECT_EQ(bits_of(inout[i]), bits_of(want[i])) << "r == a, " << i;
    }
}

// Zero divisors anywhere: one report each, in index order, and a result the
// callback replaced is what the array holds afterwards.
TEST_P(KernelContract, ReportsInOrderAndReplacementsSurvive) {
    const int W = k().W, n = 3 * W + 2;
    std::mt19937_64 rng(5);
    std::vector<double> a(n), b(n), r(n);
    ordinary(rng, a, b);
    std::vector<int> zeros;
    for (int i = 0; i < n; ++i)
        if (i % 3 == 1 || i == n - 1) zeros.push_back(i), b[i] = i & 1 ? -0.0 : 0.0;
    g_replace = true;
    run(n, a.data(), b.data(), r.data());
    ASSERT_EQ(g_reports.size(), zeros.size());
    for (size_t j = 0; j < zeros.size(); ++j) {
        EXPECT_EQ(g_reports[j].index, zeros[j]);
        EXPECT_EQ(g_reports[j].name, k().name);
        EXPECT_EQ(std::fabs(g_reports[j].r1), INFINITY);
        EXPECT_EQ(r[zeros[j]], kReplaced) << "element " << zeros[j];
    }
    for (int i = 0; i < n; ++i)
        if (b[i] != 0.0) EXPECT_LE(ulps_apart(r[i], quotient(dividend(a[i]), b[i])), ulp_budget());
}

// Entered with rounding toward zero and flush-to-zero in MXCSR and toward
// zero at double precision in the x87 unit: both come back as they were.
// A guarded kernel computes as under the defaults; one without a guard
// (or with only the x87 guard while it divides in SSE) computes in the
// caller's state.
TEST_P(KernelContract, ControlStateAroundTheCall) {
    const int n = 4 * k().W + 1;
    std::mt19937_64 rng(9);
    std::vector<double> a(n), b(n), want(n), r(n);
    ordinary(rng, a, b);
    a[2] = 1.0;
    b[2] = kHuge;  // a denormal quotient, flushed under FTZ
    b[5 % n] = 0.0;
    run(n, a.data(), b.data(), want.data());

    const uint32_t saved_mxcsr = _mm_getcsr();
    const uint16_t saved_cw = x87_cw();
    g_reports.clear();
    _mm_setcsr(kMxcsrTowardZeroFtz);
    set_x87_cw(kX87TowardZeroDouble);
    run(n, a.data(), b.data(), r.data());
    const uint32_t mxcsr_after = _mm_getcsr();
    const uint16_t cw_after = x87_cw();
    _mm_setcsr(saved_mxcsr);
    set_x87_cw(saved_cw);

    EXPECT_EQ(mxcsr_after & 0xffc0u, kMxcsrTowardZeroFtz & 0xffc0u);
    EXPECT_EQ(cw_after, kX87TowardZeroDouble);
    ASSERT_EQ(g_reports.size(), 1u);

    const bool guarded = k().guard == kFullMxcsr || k().guard == kShortMxcsr ||
                         k().guard == kX87Extended;
    for (int i = 0; i < n; ++i) {
        if (guarded) {
            EXPECT_EQ(bits_of(r[i]), bits_of(want[i])) << "element " << i;
        } else if (i == 2) {
            EXPECT_EQ(bits_of(r[i]), 0u) << "FTZ flushes the denormal quotient";
        } else if (k().mode == kHA && b[i] != 0.0) {
            EXPECT_EQ(bits_of(r[i]), bits_of(quotient(dividend(a[i]), b[i], MPFR_RNDZ)))
                << "element " << i;
        } else if (b[i] != 0.0) {
            EXPECT_LE(ulps_apart(r[i], quotient(dividend(a[i]), b[i])), 2 * kLowModeUlps);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(AllKernels, KernelContract, testing::ValuesIn(kKernels),
                         [](const testing::TestParamInfo<Kernel>& p) {
                             return std::string(p.param.name).substr(13);
                         });

}  // namespace
