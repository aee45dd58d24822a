// The exported front-ends, every row of the function table: argument checks
// and their messages by shape, the _Idx forms, and the kernel each accuracy
// field runs. Registered once per cpu type, so every row of the kernel sets
// is bound by some process. The parallel path is the threading tests'.
#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <cstdint>
#include <string>
#include <vector>

#include "base/cpu_type.h"
#include "frame/frontend.h"
#include "frame/kernel_sets.h"
#include "state/state.h"
#include "tests/common/capture.h"
#include "tests/common/rows.h"

namespace zvl_test {
namespace {

constexpr int32_t kSentinel = 77;  // a status no front-end sets
constexpr double kUntouched = -1.0;

std::string parameter_error(int position, const char* name) {
    return "\nZEL ERROR: Parameter " + std::to_string(position) + " was incorrect on entry to " +
           name + "\n";
}

class FrontEnd : public testing::TestWithParam<Row> {
  protected:
    void SetUp() override {
        zvl::ThreadContext* c = zvl::library_context();
        c->mode = ZVL_MODE_DEFAULT;
        c->callback = nullptr;
        c->array_base = nullptr;
        c->status = kSentinel;
    }
};

int g_calls = 0;
int count_call(ZVLErrorRecord*) { return ++g_calls, 0; }

// n first: negative is position 1 whatever the pointers, zero returns before
// any is looked at. Then each checked array in order, the first null one
// reporting; the array-and-scalar shape never checks its scalar. Nothing is
// written when a check fails. The message is printed whatever the error
// action says, the callback never hears of it, and the mode stays.
TEST_P(FrontEnd, ArgumentChecksInOrder) {
    const Row& r = GetParam();
    g_calls = 0;
    zvl::set_callback(count_call);
    const unsigned ignore = ZVL_ERRMODE_IGNORE;
    ZVLSETMODE(&ignore);
    const unsigned mode = ZVLGETMODE();
    // 1.5, or the row's largest ordinary argument below it (ErfInv's domain
    // ends at 1): a clean call
    const double clean = std::min(1.5, r.traits->a_hi);
    const bool two_in = r.shape == Shape::D2 || r.shape == Shape::Z2;
    // room for three complex elements
    std::vector<double> a(6, clean), b(6, 1.5), y(6, kUntouched), z(6, kUntouched);
    // null_from: the first of the checked arrays given as null (`alone`: the
    // only one), -1 none.
    auto call = [&](int n, int null_from, bool alone) {
        std::vector<const double*> p = {a.data()};
        if (two_in) p.push_back(b.data());
        p.push_back(y.data());
        if (r.shape == Shape::D12) p.push_back(z.data());
        for (int i = 0; i < static_cast<int>(p.size()); ++i)
            if (null_from >= 0 && (i == null_from || (!alone && i > null_from))) p[i] = nullptr;
        const double* bp = two_in ? p[1] : null_from < 0 ? b.data() : nullptr;
        double* out = const_cast<double*>(p[two_in ? 2 : 1]);
        double* out2 = r.shape == Shape::D12 ? const_cast<double*>(p[2]) : nullptr;
        zvl::set_status(kSentinel);
        return capture_stdout([&] { r.entry(&n, p[0], bp, out, out2); });
    };
    for (int n : {-1, INT32_MIN}) {
        EXPECT_EQ(call(n, 0, false), parameter_error(1, r.report)) << n;
        EXPECT_EQ(zvl::get_status(), ZVL_STATUS_BADSIZE);
    }
    EXPECT_EQ(call(0, 0, false), "");
    EXPECT_EQ(zvl::get_status(), kSentinel);
    for (int i = 0; i < r.arrays(); ++i)
        for (bool alone : {true, false}) {
            EXPECT_EQ(call(3, i, alone), parameter_error(i + 2, r.report)) << "array " << i;
            EXPECT_EQ(zvl::get_status(), ZVL_STATUS_BADMEM);
        }
    for (double v : y) EXPECT_EQ(v, kUntouched);
    for (double v : z) EXPECT_EQ(v, kUntouched);
    EXPECT_EQ(call(3, -1, false), "");
    EXPECT_EQ(zvl::get_status(), kSentinel) << "a clean call leaves the status";
    EXPECT_EQ(g_calls, 0);
    EXPECT_EQ(ZVLGETMODE(), mode);
}

// _Idx advances each array by whole elements and checks the advanced
// pointers, not the ones passed.
TEST_P(FrontEnd, IdxAdvancesByElements) {
    const Row& r = GetParam();
    const uint32_t cpu = zvl::cpu_type();
    const Args x = ordinary(r, 8);
    const int e = r.elem_doubles;  // doubles per element
    const bool two_in = r.shape == Shape::D2 || r.shape == Shape::Z2;
    std::vector<double> y(8 * e, kUntouched), z(8, kUntouched), want(3 * e), want2(3);
    const double* bk = two_in ? &x.b[e] : x.bp();
    r.kernel(cpu, zvl::kHA)(3, &x.a[2 * e], bk, want.data(), want2.data());
    zvl::set_mode(ZVL_HA);
    const int n = 3;
    r.entry_idx(&n, x.a.data() + 6 * e, -4, x.bp(), 1, y.data(), 3, z.data(), 4);
    for (int i = 0; i < 8 * e; ++i) {
        const bool written = i >= 3 * e && i < 6 * e;
        EXPECT_TRUE(same(y[i], written ? want[i - 3 * e] : kUntouched)) << "double " << i;
        if (r.shape == Shape::D12)
            EXPECT_TRUE(same(z[i], i >= 4 && i < 7 ? want2[i - 4] : kUntouched)) << i;
    }
    const double* null_after = reinterpret_cast<const double*>(uintptr_t{16} * e);
    const std::string out = capture_stdout(
        [&] { r.entry_idx(&n, null_after, -2, x.bp(), 0, y.data(), 0, z.data(), 0); });
    EXPECT_EQ(out, parameter_error(2, r.report));
    // a null array that its index moves off null passes
    const std::string past =
        capture_stdout([&] { r.entry_idx(&n, nullptr, 1, x.bp(), 0, nullptr, 0, nullptr, 0); });
    EXPECT_EQ(past, parameter_error(two_in ? 4 : 3, r.report));
    EXPECT_EQ(zvl::get_status(), ZVL_STATUS_BADMEM);
}

// Accuracy field 2 runs the HA slot, 1 the LA slot, any other value EP: the
// results are the slot's, and a report names its kernel. The rounding
// family has one kernel whatever the mode.
TEST_P(FrontEnd, AccuracyFieldChoosesTheSlot) {
    const Row& r = GetParam();
    const int cpu = static_cast<int>(zvl::cpu_type());
    ASSERT_LE(cpu, 5);
    Args x = ordinary(r, 37);
    if (r.has_report()) x.set(30, r.traits->reports, r.shape);
    const int n = static_cast<int>(x.a.size()) / r.elem_doubles;
    ReportLog log;
    for (uint32_t field = 0; field < 16; ++field) {
        SCOPED_TRACE("accuracy field " + std::to_string(field));
        const int col = r.rounding ? 0 : field == 2 ? zvl::kHA : field == 1 ? zvl::kLA : zvl::kEP;
        std::vector<double> want(x.a.size()), want2(x.a.size()), got(x.a.size()), got2(x.a.size());
        r.kernel(cpu, col)(n, x.a.data(), x.bp(), want.data(), want2.data());
        zvl::library_context()->mode = (zvl::library_context()->mode & ~0xFu) | field;
        zvl::set_status(kSentinel);
        log.clear();
        r.entry(&n, x.a.data(), x.bp(), got.data(), got2.data());
        for (size_t i = 0; i < got.size(); ++i)
            ASSERT_TRUE(same(got[i], want[i]) && same(got2[i], want2[i])) << "double " << i;
        if (r.has_report()) {
            ASSERT_EQ(log.list().size(), 1u);
            EXPECT_EQ(log.list()[0].name, (Slot{&r, cpu, col}.name()));
            EXPECT_NE(zvl::get_status(), kSentinel);
        } else {
            EXPECT_EQ(zvl::get_status(), kSentinel);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(EveryRow, FrontEnd, testing::ValuesIn(rows()),
                         [](const testing::TestParamInfo<Row>& p) { return p.param.report; });

// Powx reads its scalar through the pointer at each call.
TEST(FrontEndPowx, ReadsTheScalarAtTheCall) {
    const uint32_t cpu = zvl::cpu_type();
    const double a[3] = {1.5, 2.0, 0.75};
    double b = 2.5, got[3], want[3];
    const int n = 3;
    zvl::set_mode(ZVL_HA);
    for (double v : {2.5, -3.25}) {
        b = v;
        VDPOWX(&n, a, &b, got);
        zvl::kernels_VDPOWX.k[cpu][zvl::kHA](n, a, v, want);
        for (int i = 0; i < 3; ++i) EXPECT_TRUE(same(got[i], want[i])) << v;
    }
}

// The threshold cell keeps the service's answer, except 0: a cell left at 0
// asks again at each call, and meanwhile every n (n >= 0) is parallel.
int g_asked = 0;
int32_t g_answer = 0;
int32_t answer(int32_t, int32_t) { return ++g_asked, g_answer; }

TEST(FrontEndThreshold, AnAnswerOfZeroIsAskedAgain) {
    const zvl::FunctionInfo f = {"vdTest", 6, 144, false};
    std::atomic<int32_t> cell{0};
    g_asked = 0;
    g_answer = 0;
    for (int call = 1; call <= 3; ++call) {
        EXPECT_TRUE(zvl::goes_parallel(5, f, cell, answer));
        EXPECT_EQ(g_asked, call);
    }
    g_answer = 1000;
    EXPECT_FALSE(zvl::goes_parallel(999, f, cell, answer));
    EXPECT_TRUE(zvl::goes_parallel(1000, f, cell, answer));
    EXPECT_EQ(g_asked, 4) << "a non-zero answer is asked once";
}

}  // namespace
}  // namespace zvl_test
