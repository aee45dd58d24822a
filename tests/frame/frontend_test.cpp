// The exported front-ends: argument checks and their messages, the _Idx
// forms, and which kernel each accuracy field runs. Registered once per cpu
// type, so every row of the kernel sets is bound by some process.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "frame/cpu_type.h"
#include "state/state.h"
#include "tests/common/capture.h"
#include "zvl.h"

namespace {

constexpr int32_t kSentinel = 77;  // a status no front-end sets

std::string g_last_name;
int g_calls = 0;
int record_name(ZVLErrorRecord* rec) {
    g_last_name.assign(rec->name, static_cast<size_t>(rec->name_len));
    ++g_calls;
    return 0;
}

class FrontEnd : public testing::Test {
  protected:
    void SetUp() override {
        zvl::ThreadContext* c = zvl::library_context();
        c->mode = ZVL_MODE_DEFAULT;
        c->callback = nullptr;
        c->array_base = nullptr;
        c->status = kSentinel;
        g_calls = 0;
        g_last_name.clear();
    }
};

const char* const kLabels[6] = {"ex", "e7", "u8", "y8", "h8", "e9"};

std::string param_message(int position, const char* name) {
    return "\nZEL ERROR: Parameter " + std::to_string(position) +
           " was incorrect on entry to " + name + "\n";
}

// --- Argument checks --------------------------------------------------------

enum Null { kNone = 0, kA = 1, kB = 2, kR = 4 };

struct CheckRow {
    const char* what;
    int n;
    int nulls;       // which pointers are null
    int position;    // 0: no report
    int32_t status;  // expected status word afterwards
};

// One in, one out: n, a, r.
const CheckRow kInvRows[] = {
    {"n negative, pointers null", -1, kA | kR, 1, ZVL_STATUS_BADSIZE},
    {"n negative, pointers good", -1, kNone, 1, ZVL_STATUS_BADSIZE},
    {"n most negative", INT32_MIN, kNone, 1, ZVL_STATUS_BADSIZE},
    {"n zero, pointers null", 0, kA | kR, 0, kSentinel},
    {"n zero, pointers good", 0, kNone, 0, kSentinel},
    {"a null", 3, kA, 2, ZVL_STATUS_BADMEM},
    {"a and r null", 3, kA | kR, 2, ZVL_STATUS_BADMEM},
    {"r null", 3, kR, 3, ZVL_STATUS_BADMEM},
    {"all good", 3, kNone, 0, kSentinel},
};

// Two in, one out: n, a, b, r.
const CheckRow kDivRows[] = {
    {"n negative, pointers null", -1, kA | kB | kR, 1, ZVL_STATUS_BADSIZE},
    {"n zero, pointers null", 0, kA | kB | kR, 0, kSentinel},
    {"a null", 3, kA, 2, ZVL_STATUS_BADMEM},
    {"all null", 3, kA | kB | kR, 2, ZVL_STATUS_BADMEM},
    {"b null", 3, kB, 3, ZVL_STATUS_BADMEM},
    {"b and r null", 3, kB | kR, 3, ZVL_STATUS_BADMEM},
    {"r null", 3, kR, 4, ZVL_STATUS_BADMEM},
    {"all good", 3, kNone, 0, kSentinel},
};

void expect_check(const CheckRow& row, const char* name, const std::string& out,
                  const std::vector<double>& r) {
    SCOPED_TRACE(row.what);
    EXPECT_EQ(out, row.position ? param_message(row.position, name) : "");
    EXPECT_EQ(zvl::get_status(), row.status);
    if (row.position == 0 && row.n > 0 && !(row.nulls & kR)) {
        EXPECT_EQ(r[0], 0.5);
    } else {
        EXPECT_EQ(r[0], -1.0) << "the result array was written";
    }
}

TEST_F(FrontEnd, InvArgumentChecks) {
    for (const CheckRow& row : kInvRows) {
        zvl::set_status(kSentinel);
        std::vector<double> a(4, 2.0), r(4, -1.0);
        const std::string out = zvl_test::capture_stdout([&] {
            VDINV(&row.n, row.nulls & kA ? nullptr : a.data(), row.nulls & kR ? nullptr : r.data());
        });
        expect_check(row, "vdInv", out, r);
    }
}

TEST_F(FrontEnd, DivArgumentChecks) {
    for (const CheckRow& row : kDivRows) {
        zvl::set_status(kSentinel);
        std::vector<double> a(4, 1.0), b(4, 2.0), r(4, -1.0);
        const std::string out = zvl_test::capture_stdout([&] {
            VDDIV(&row.n, row.nulls & kA ? nullptr : a.data(), row.nulls & kB ? nullptr : b.data(),
                  row.nulls & kR ? nullptr : r.data());
        });
        expect_check(row, "vdDiv", out, r);
    }
}

// Parameter errors print whatever the error-action field says, never reach
// the callback, and leave the mode alone.
TEST_F(FrontEnd, ParameterErrorIgnoresTheMode) {
    zvl::set_callback(record_name);
    const unsigned ignore = ZVL_ERRMODE_IGNORE;
    ZVLSETMODE(&ignore);
    const unsigned mode = ZVLGETMODE();
    const int n = 1;
    double r[1];
    const std::string out = zvl_test::capture_stdout([&] { VDINV(&n, nullptr, r); });
    EXPECT_EQ(out, param_message(2, "vdInv"));
    EXPECT_EQ(zvl::get_status(), ZVL_STATUS_BADMEM);
    EXPECT_EQ(g_calls, 0);
    EXPECT_EQ(ZVLGETMODE(), mode);
}

// --- _Idx forms ---------------------------------------------------------------

TEST_F(FrontEnd, IdxAdvancesByElements) {
    double a[8] = {1, 2, 4, 8, 16, 32, 64, 128};
    double b[8] = {2, 2, 2, 2, 2, 2, 2, 2};
    double r[8] = {0, 0, 0, 0, 0, 0, 0, 0};
    const int n = 3;
    VDINV_Idx(&n, a, 2, r, 4);
    EXPECT_EQ(r[4], 0.25);
    EXPECT_EQ(r[5], 0.125);
    EXPECT_EQ(r[6], 0.0625);
    EXPECT_EQ(r[3], 0.0);
    EXPECT_EQ(r[7], 0.0);

    double zero[8] = {0, 0, 0, 0, 0, 0, 0, 0};
    VDDIV_Idx(&n, a + 5, -4, b, 1, zero, 0);  // a[1..3] / b[1..3]
    EXPECT_EQ(zero[0], 1.0);
    EXPECT_EQ(zero[1], 2.0);
    EXPECT_EQ(zero[2], 4.0);
    EXPECT_EQ(zero[3], 0.0);
    EXPECT_EQ(zvl::get_status(), kSentinel);
}

// The exported form tests the advanced pointers, not the ones passed.
TEST_F(FrontEnd, IdxChecksTheAdvancedPointers) {
    const int n = 1;
    double r[1] = {-1.0};
    const double* eight = reinterpret_cast<const double*>(uintptr_t{16});
    const struct {
        const char* what;
        std::function<void()> call;
        std::string out;
    } rows[] = {
        // a null and ia = 1: a passes, r is the first bad pointer
        {"inv a null, ia 1", [&] { VDINV_Idx(&n, nullptr, 1, nullptr, 0); },
         param_message(3, "vdInv")},
        // a non-null that the index brings back to null
        {"inv a + ia null", [&] { VDINV_Idx(&n, eight, -2, r, 0); }, param_message(2, "vdInv")},
        {"div b null, ib 1", [&] { VDDIV_Idx(&n, r, 0, nullptr, 1, nullptr, 0); },
         param_message(4, "vdDiv")},
        {"div r + ir null", [&] { VDDIV_Idx(&n, r, 0, r, 0, const_cast<double*>(eight), -2); },
         param_message(4, "vdDiv")},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        EXPECT_EQ(zvl_test::capture_stdout(row.call), row.out);
        EXPECT_EQ(zvl::get_status(), ZVL_STATUS_BADMEM);
    }
}

// --- Accuracy field -----------------------------------------------------------

// The kernel that ran names itself in the error record of a zero divisor.
TEST_F(FrontEnd, AccuracyFieldChoosesTheKernel) {
    const uint32_t cpu = zvl::cpu_type();
    ASSERT_LE(cpu, 5u);
    zvl::set_callback(record_name);
    for (uint32_t field = 0; field < 16; ++field) {
        SCOPED_TRACE("accuracy field " + std::to_string(field));
        zvl::library_context()->mode = (ZVL_MODE_DEFAULT & ~0xFu) | field;
        const char* tag = field == 2 ? "HA" : field == 1 ? "50" : "26";
        if (cpu == 0) tag = "HA";  // one kernel serves all three modes
        const std::string label = kLabels[cpu];

        const int n = 1;
        const double zero[1] = {0.0}, one[1] = {1.0};
        double r[1];
        VDINV(&n, zero, r);
        EXPECT_EQ(g_last_name, "zel_zvl_core_" + label + "_zvl_dInv_" + tag);
        EXPECT_EQ(r[0], INFINITY);
        VDDIV(&n, one, zero, r);
        EXPECT_EQ(g_last_name, "zel_zvl_core_" + label + "_zvl_dDiv_" + tag);
        EXPECT_EQ(r[0], INFINITY);
        EXPECT_EQ(zvl::get_status(), ZVL_STATUS_SING);
    }
    EXPECT_EQ(g_calls, 32);
}

// A call without exceptional elements never clears the status word; one
// with a zero divisor leaves the kernel's report in it.
TEST_F(FrontEnd, StatusOnlyChangedByReports) {
    const int n = 5;
    double a[5] = {1, 2, 3, 4, 5}, r[5];
    VDINV(&n, a, r);
    EXPECT_EQ(zvl::get_status(), kSentinel);
    a[3] = -0.0;
    VDINV(&n, a, r);
    EXPECT_EQ(zvl::get_status(), ZVL_STATUS_SING);
    EXPECT_EQ(r[3], -INFINITY);
}

}  // namespace
