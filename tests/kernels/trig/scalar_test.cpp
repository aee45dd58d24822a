// The trigonometric scalar routines without a reference: special values and
// statuses, the index forms' reports under their labels (a callback's
// replacement kept), the symmetries they keep exactly, SinCos giving the
// bits of Sin and Cos from its one reduction, and the same bits on every
// cpu type. Values against MPFR: trig_mpfr_test.
#include <gtest/gtest.h>

#include <cfloat>
#include <cmath>
#include <limits>
#include <string>
#include <vector>

#include "tests/common/capture.h"
#include "tests/common/rows.h"
#include "tests/kernels/trig/scalars.h"
#include "tools/common/rng.h"
#include "zvl.h"

namespace zvl_test {
namespace {

constexpr double kInf = std::numeric_limits<double>::infinity();
const double kNaN = std::numeric_limits<double>::quiet_NaN();

class TrigScalar : public testing::TestWithParam<int> {
  protected:
    void SetUp() override {
        if (!cpu_runs(GetParam())) GTEST_SKIP() << "this processor lacks cpu type 5";
    }
    const TrigScalars& s() const { return trig_scalars(GetParam()); }
};

// What each routine gives for one argument, and the status of infinities.
struct Special {
    double x;
    double sin, cos, tan;  // NaN: a NaN
    int32_t status;
};

TEST_P(TrigScalar, SpecialValuesAndStatuses) {
    const Special rows[] = {
        {0.0, 0.0, 1.0, 0.0, 0},
        {-0.0, -0.0, 1.0, -0.0, 0},
        {0x1p-1074, 0x1p-1074, 1.0, 0x1p-1074, 0},                 // denormal: x itself
        {-0x1.8p-1060, -0x1.8p-1060, 1.0, -0x1.8p-1060, 0},
        {0x1.fffffffffffffp-253, 0x1.fffffffffffffp-253, 1.0, 0x1.fffffffffffffp-253, 0},
        {0x1p-252, 0x1p-252, 1.0, 0x1p-252, 0},                      // first by the polynomials
        {kInf, kNaN, kNaN, kNaN, ZVL_STATUS_ERRDOM},
        {-kInf, kNaN, kNaN, kNaN, ZVL_STATUS_ERRDOM},
        {kNaN, kNaN, kNaN, kNaN, 0},
        {-kNaN, kNaN, kNaN, kNaN, 0},
    };
    auto same_as = [](double got, double want) {
        return std::isnan(want) ? std::isnan(got) : bits_of(got) == bits_of(want);
    };
    for (const Special& c : rows) {
        double y, s2, c2;
        EXPECT_EQ(s().sin(&c.x, &y), c.status) << c.x;
        EXPECT_TRUE(same_as(y, c.sin)) << "sin " << std::hexfloat << c.x << " gives " << y;
        EXPECT_EQ(s().cos(&c.x, &y), c.status) << c.x;
        EXPECT_TRUE(same_as(y, c.cos)) << "cos " << std::hexfloat << c.x << " gives " << y;
        EXPECT_EQ(s().tan(&c.x, &y), c.status) << c.x;
        EXPECT_TRUE(same_as(y, c.tan)) << "tan " << std::hexfloat << c.x << " gives " << y;
        EXPECT_EQ(s().sincos(&c.x, &s2, &c2), c.status) << c.x;
        EXPECT_TRUE(same_as(s2, c.sin) && same_as(c2, c.cos)) << "sincos " << std::hexfloat << c.x;
    }
}

// The index forms store every element's result, and report an infinity
// (only) under their own label with its index; the callback's replacement
// is what the element keeps.
TEST_P(TrigScalar, IndexFormsReportInfinitiesUnderTheirLabels) {
    struct Form {
        void (*TrigScalars::*at)(int32_t, const double*, double*);
        int32_t (*TrigScalars::*pointer)(const double*, double*);
        const char* label;
    };
    const Form forms[] = {
        {&TrigScalars::sin_at, &TrigScalars::sin, "dSin_HA"},
        {&TrigScalars::cos_at, &TrigScalars::cos, "dCos_HA"},
        {&TrigScalars::tan_ha_at, &TrigScalars::tan, "dTan_HA"},
        {&TrigScalars::tan_la_at, &TrigScalars::tan, "dTan_LA"},
    };
    const std::vector<double> a = {0.5, kInf, kNaN, 1e300, -kInf, -0.0};
    for (const Form& f : forms) {
        for (bool replace : {false, true}) {
            std::vector<double> r(a.size(), -7.0);
            ReportLog log(replace);
            for (int32_t i = 0; i < static_cast<int32_t>(a.size()); ++i) (s().*f.at)(i, a.data(), r.data());
            ASSERT_EQ(log.list().size(), 2u) << f.label;
            for (int k = 0; k < 2; ++k) {
                EXPECT_EQ(log.list()[k].status, ZVL_STATUS_ERRDOM);
                EXPECT_EQ(log.list()[k].index, k == 0 ? 1 : 4);
                EXPECT_EQ(log.list()[k].name, f.label);
                EXPECT_TRUE(std::isnan(log.list()[k].r1)) << "stored before the report";
            }
            for (size_t i : {0, 3, 5}) {
                double y;
                (s().*f.pointer)(&a[i], &y);
                EXPECT_EQ(bits_of(r[i]), bits_of(y)) << f.label << " element " << i;
            }
            EXPECT_TRUE(std::isnan(r[2]));
            for (size_t i : {1, 4}) {
                if (replace)
                    EXPECT_EQ(r[i], kReplaced) << f.label;
                else
                    EXPECT_TRUE(std::isnan(r[i])) << f.label;
            }
        }
    }
}

// Arguments over the whole range: by bit pattern, by value where no
// reduction is needed, and around the thresholds of the routines.
std::vector<double> spread(uint64_t seed, int n) {
    zvl_tools::Rng rng(seed);
    std::vector<double> xs;
    for (int i = 0; i < n; ++i) {
        xs.push_back(rng.by_bits(0x1p-1074, DBL_MAX));
        xs.push_back(rng.linear(0.0, 131072.0));
        xs.push_back(rng.by_bits(4096.0, 0x1p40));
    }
    for (double x : {12800.0, 0x1p17, 0x1p30, DBL_MAX, 6381956970095103.0 * 0x1p797})
        xs.push_back(x);
    return xs;
}

// sin and tan are odd, cos even, and TrigReduce negates its words and its
// quadrant: exactly, bit for bit, since every step and table is symmetric.
TEST_P(TrigScalar, OddAndEvenExactly) {
    for (double x : spread(11, 2000)) {
        const double m = -x;
        double p, n;
        s().sin(&x, &p);
        s().sin(&m, &n);
        EXPECT_EQ(bits_of(n), bits_of(-p)) << "sin " << std::hexfloat << x;
        s().cos(&x, &p);
        s().cos(&m, &n);
        EXPECT_EQ(bits_of(n), bits_of(p)) << "cos " << std::hexfloat << x;
        s().tan(&x, &p);
        s().tan(&m, &n);
        EXPECT_EQ(bits_of(n), bits_of(-p)) << "tan " << std::hexfloat << x;
        if (x >= 8192) {
            double op[2], on[2];
            const int32_t qp = s().reduce(x, op), qn = s().reduce(m, on);
            EXPECT_EQ(qn, (4 - qp) & 3) << std::hexfloat << x;
            EXPECT_EQ(bits_of(on[0]), bits_of(-op[0])) << std::hexfloat << x;
            EXPECT_EQ(bits_of(on[1]), bits_of(-op[1])) << std::hexfloat << x;
        }
    }
}

// SinCos takes one reduction and one pair of polynomials for both rows: its
// results are the bits of Sin and Cos.
TEST_P(TrigScalar, SinCosGivesTheBitsOfSinAndCos) {
    for (double x : spread(5, 2000)) {
        double sn, cs, s2, c2;
        s().sin(&x, &sn);
        s().cos(&x, &cs);
        s().sincos(&x, &s2, &c2);
        EXPECT_EQ(bits_of(s2), bits_of(sn)) << std::hexfloat << x;
        EXPECT_EQ(bits_of(c2), bits_of(cs)) << std::hexfloat << x;
    }
}

// Each cpu type's copy is the same arithmetic in another encoding.
TEST_P(TrigScalar, SameBitsAsCpuTypeZero) {
    const TrigScalars& base = trig_scalars(0);
    for (double x : spread(3, 3000)) {
        double a, b;
        base.sin(&x, &a);
        s().sin(&x, &b);
        EXPECT_EQ(bits_of(a), bits_of(b)) << "sin " << std::hexfloat << x;
        base.cos(&x, &a);
        s().cos(&x, &b);
        EXPECT_EQ(bits_of(a), bits_of(b)) << "cos " << std::hexfloat << x;
        base.tan(&x, &a);
        s().tan(&x, &b);
        EXPECT_EQ(bits_of(a), bits_of(b)) << "tan " << std::hexfloat << x;
        if (x >= 8192) {
            double o0[2], o[2];
            EXPECT_EQ(base.reduce(x, o0), s().reduce(x, o)) << std::hexfloat << x;
            EXPECT_TRUE(bits_of(o0[0]) == bits_of(o[0]) && bits_of(o0[1]) == bits_of(o[1]))
                << std::hexfloat << x;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Cpu, TrigScalar, testing::Range(0, kCpuTypes),
                         [](const testing::TestParamInfo<int>& p) {
                             return std::string(kCpuLabels[p.param]);
                         });

}  // namespace
}  // namespace zvl_test
