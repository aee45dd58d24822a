// The kernel contract of Ln and Log10, run over every slot of both kernel
// sets, the kernels called directly: special classes and their statuses in
// every lane position, callbacks, report order, counts, aliasing, the
// floating-point control words, report names, and equal bits wherever two
// slots run the same algorithm.
#include <gtest/gtest.h>

#include <cmath>
#include <vector>

#include "tests/common/capture.h"
#include "tests/common/fp_control.h"
#include "tests/kernels/log_kernels.h"

namespace zvl_test {
namespace {

std::vector<double> run(const LogSlot& s, std::vector<double> x) {
    std::vector<double> y(x.size(), -7.0);
    s.kernel()(static_cast<int32_t>(x.size()), x.data(), y.data());
    return y;
}

class LogKernel : public testing::TestWithParam<LogSlot> {
  protected:
    void SetUp() override { start_recording(); }
    void TearDown() override { stop_recording(); }
};

// Every class the vector paths refuse, and 1, at positions that fall at the
// start, inside and at the end of a block of every width, and in the
// remainder: the element gets its class's result and status (the values are
// tests/data/directed's), exactly one report names its index, and the other
// elements keep the bits they get with no special element present.
TEST_P(LogKernel, SpecialClassesInEveryLanePosition) {
    enum Result { kMinusInf, kNan, kPlusInf, kPlusZero, kFinite };
    const struct {
        double x;
        Result result;
        int32_t status;
    } classes[] = {
        {0.0, kMinusInf, ZVL_STATUS_SING},    {-0.0, kMinusInf, ZVL_STATUS_SING},
        {-1.0, kNan, ZVL_STATUS_ERRDOM},      {-4.9e-324, kNan, ZVL_STATUS_ERRDOM},
        {-INFINITY, kNan, ZVL_STATUS_ERRDOM}, {INFINITY, kPlusInf, 0},
        {NAN, kNan, 0},                       {-NAN, kNan, 0},
        {4.9e-324, kFinite, 0},               {2.2e-308, kFinite, 0},
        {1.0, kPlusZero, 0},
    };
    const LogSlot s = GetParam();
    const std::vector<double> base = ordinary_inputs();
    const std::vector<double> clean = run(s, base);
    ASSERT_TRUE(reports().empty());
    for (const auto& c : classes) {
        for (int pos : {0, 1, 3, 5, 15, 16, 31, 33, 36}) {
            SCOPED_TRACE(testing::Message() << "input " << c.x << " at " << pos);
            std::vector<double> x = base;
            x[pos] = c.x;
            start_recording();
            const std::vector<double> y = run(s, x);
            switch (c.result) {
                case kMinusInf: EXPECT_EQ(y[pos], -INFINITY); break;
                case kNan: EXPECT_TRUE(std::isnan(y[pos])); break;
                case kPlusInf: EXPECT_EQ(y[pos], INFINITY); break;
                case kPlusZero: EXPECT_EQ(bits_of(y[pos]), 0u); break;
                case kFinite: EXPECT_TRUE(std::isfinite(y[pos])); break;
            }
            if (c.status == 0) {
                EXPECT_TRUE(reports().empty());
            } else {
                ASSERT_EQ(reports().size(), 1u);
                EXPECT_EQ(reports()[0].index, pos);
                EXPECT_EQ(reports()[0].status, c.status);
            }
            for (size_t j = 0; j < x.size(); ++j)
                if (static_cast<int>(j) != pos) EXPECT_EQ(bits_of(y[j]), bits_of(clean[j])) << j;
        }
    }
}

TEST_P(LogKernel, CallbackReplacementSurvivesTheBlockStore) {
    std::vector<double> x = ordinary_inputs();
    x[5] = -1.0;
    x[20] = 0.0;
    x[35] = -INFINITY;
    start_recording(true, 42.0);
    const std::vector<double> y = run(GetParam(), x);
    EXPECT_EQ(y[5], 42.0);
    EXPECT_EQ(y[20], 42.0);
    EXPECT_EQ(y[35], 42.0);
    EXPECT_EQ(reports().size(), 3u);
}

TEST_P(LogKernel, ReportsComeInIndexOrderWithTheSlotsName) {
    std::vector<double> x = ordinary_inputs();
    const int at[] = {2, 9, 10, 17, 30};
    const double bad[] = {-0.0, -1.0, 0.0, -INFINITY, -1e-310};
    const int32_t status[] = {ZVL_STATUS_SING, ZVL_STATUS_ERRDOM, ZVL_STATUS_SING,
                              ZVL_STATUS_ERRDOM, ZVL_STATUS_ERRDOM};
    for (int i = 0; i < 5; ++i) x[at[i]] = bad[i];
    run(GetParam(), x);
    ASSERT_EQ(reports().size(), 5u);
    for (int i = 0; i < 5; ++i) {
        EXPECT_EQ(reports()[i].index, at[i]);
        EXPECT_EQ(reports()[i].status, status[i]);
        EXPECT_EQ(reports()[i].name, kernel_name(GetParam()));
    }
}

TEST_P(LogKernel, CountsBelowOneTouchNothing) {
    const double x[2] = {-1.0, 0.0};
    double y[2] = {5.0, 6.0};
    for (int32_t n : {0, -1, -1000}) GetParam().kernel()(n, x, y);
    EXPECT_EQ(y[0], 5.0);
    EXPECT_EQ(y[1], 6.0);
    EXPECT_TRUE(reports().empty());
}

TEST_P(LogKernel, OutputMayBeTheInput) {
    std::vector<double> x = ordinary_inputs();
    x[7] = 0.0;
    const std::vector<double> y = run(GetParam(), x);
    GetParam().kernel()(static_cast<int32_t>(x.size()), x.data(), x.data());
    for (size_t j = 0; j < x.size(); ++j) EXPECT_EQ(bits_of(x[j]), bits_of(y[j])) << j;
}

// Entered with rounding toward zero, flush to zero and denormals as zero,
// and with the x87 unit at 64-bit precision: every kernel leaves both
// control words as it found them, and a guarded kernel computes as under
// the default state.
TEST_P(LogKernel, ControlWordsAreRestored) {
    const LogSlot s = GetParam();
    std::vector<double> x = ordinary_inputs();
    x[3] = 1e-310;
    const std::vector<double> nearest = run(s, x);
    const uint32_t mxcsr = read_mxcsr();
    const uint16_t x87 = read_x87();
    const uint32_t odd = (mxcsr & ~0x3fu) | 0x6000 | 0x8000 | 0x40;
    write_mxcsr(odd);
    write_x87(static_cast<uint16_t>((x87 & 0xf0ff) | 0x300));
    const std::vector<double> y = run(s, x);
    const uint32_t mxcsr_after = read_mxcsr();
    const uint16_t x87_after = read_x87();
    write_mxcsr(mxcsr);
    write_x87(x87);
    EXPECT_EQ(mxcsr_after & ~0x3fu, odd);
    EXPECT_EQ(x87_after, static_cast<uint16_t>((x87 & 0xf0ff) | 0x300));
    if (guard(s) == kMxcsrFull)
        for (size_t j = 0; j < x.size(); ++j) EXPECT_EQ(bits_of(y[j]), bits_of(nearest[j])) << j;
}

INSTANTIATE_TEST_SUITE_P(AllSlots, LogKernel, testing::ValuesIn(runnable_slots()),
                         [](const testing::TestParamInfo<LogSlot>& p) {
                             return slot_label(p.param);
                         });

// Slots that run one algorithm give the same bits, whatever their cpu type,
// block width and loop form: a wrapper op that rounds or orders lanes
// differently shows here.
TEST(LogKernels, OneAlgorithmGivesOneResultOnEveryCpuType) {
    std::vector<double> x = ordinary_inputs();
    for (int i = 0; i < 64; ++i) x.push_back(std::ldexp(0.6667 + i / 97.0, i * 31 - 1000));
    const std::vector<LogSlot> slots = runnable_slots();
    for (const LogSlot& a : slots)
        for (const LogSlot& b : slots) {
            if (a.f != b.f || variant(a) != variant(b)) continue;
            const std::vector<double> ya = run(a, x), yb = run(b, x);
            for (size_t j = 0; j < x.size(); ++j)
                ASSERT_EQ(bits_of(ya[j]), bits_of(yb[j]))
                    << slot_label(a) << " and " << slot_label(b) << " at " << x[j];
        }
}

}  // namespace
}  // namespace zvl_test
