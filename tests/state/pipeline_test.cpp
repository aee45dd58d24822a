// The error pipeline, run through each cpu type's copy in turn: the status,
// the ignore action, the record, the callback's say over the result, and
// errno, messages and raised exceptions as the mode word asks.
#include <gtest/gtest.h>

#include <cerrno>
#include <cfenv>
#include <cmath>
#include <cstring>
#include <string>
#include <vector>

#include "state/state.h"
#include "tests/common/capture.h"
#include "zvl.h"

namespace {

using Pipeline = int32_t (*)(int32_t, int32_t, const double*, const double*, double*, double*,
                             const char*);
const Pipeline kCopies[6] = {
    zvl::Services<0>::error_pipeline, zvl::Services<1>::error_pipeline,
    zvl::Services<2>::error_pipeline, zvl::Services<3>::error_pipeline,
    zvl::Services<4>::error_pipeline, zvl::Services<5>::error_pipeline};

constexpr int kErrnoSentinel = 12345;
const char kName[] = "zel_zvl_core_e9_zvl_dInv_HA";

// What the callback saw and what it does.
struct Seen {
    int calls = 0;
    ZVLErrorRecord rec{};
    int ret = 0;                 // its return value
    bool replace_r1 = false;     // write 42 to r1
    bool replace_r2 = false;     // write 43 to r2
    uint32_t set_mode = 0;       // mode to merge from inside the callback
};
Seen g_seen;

int callback(ZVLErrorRecord* rec) {
    ++g_seen.calls;
    g_seen.rec = *rec;
    if (g_seen.replace_r1) rec->r1 = 42.0;
    if (g_seen.replace_r2) rec->r2 = 43.0;
    if (g_seen.set_mode) zvl::set_mode(g_seen.set_mode);
    return g_seen.ret;
}

class ErrorPipeline : public testing::TestWithParam<int> {
  protected:
    void SetUp() override {
        zvl::ThreadContext* c = zvl::library_context();
        c->mode = ZVL_MODE_DEFAULT;
        c->status = 0;
        c->callback = nullptr;
        c->array_base = nullptr;
        g_seen = Seen{};
        errno = kErrnoSentinel;
        std::feclearexcept(FE_ALL_EXCEPT);
    }
    void mode(uint32_t m, ZVLErrorCallback f = nullptr) {
        zvl::ThreadContext* c = zvl::library_context();
        c->mode = m;
        c->callback = f;
    }
    // One-in, one-out report of element i.
    int32_t report(int32_t status, int32_t i, const double* a, double* r,
                   const char* name = kName) {
        return kCopies[GetParam()](status, i, a, a, r, r, name);
    }
    int32_t report2(int32_t status, int32_t i, const double* a, const double* b, double* r1,
                    double* r2) {
        return kCopies[GetParam()](status, i, a, b, r1, r2, kName);
    }
};

// --- Status, ignore, callback ------------------------------------------------

// One report of element 1 under a mode word, with or without a callback
// that replaces the result with 42 (and may return 1 or merge a mode).
struct ActionRow {
    const char* what;
    uint32_t mode;
    bool callback;
    int ret;            // the callback's return value
    uint32_t set_mode;  // merged from inside the callback
    int calls;
    int err;            // errno afterwards
    bool raised;        // FE_DIVBYZERO
    double r;           // the element afterwards
};

constexpr int S = kErrnoSentinel;
const ActionRow kActions[] = {
    {"ignore stops after the status", 0x0102, true, 0, 0, 0, S, false, INFINITY},
    {"ignore must be exact", 0x0302, false, 0, 0, 0, 34, false, INFINITY},
    {"a callback that handles stops everything", 0x1E02, true, 1, 0, 1, S, false, INFINITY},
    {"the callback replaces the result", ZVL_MODE_DEFAULT, true, 0, 0, 1, 34, true, 42.0},
    {"the callback bit without a callback", ZVL_MODE_DEFAULT, false, 0, 0, 0, 34, true, INFINITY},
    {"callback only", 0x1002, true, 0, 0, 1, S, false, 42.0},
    {"any spare bit 13 to 15 opens the callback gate", 0x8002, true, 0, 0, 1, S, false, 42.0},
    {"the actions after the callback read the mode anew", 0x1002, true, 0, 0x1200, 1, 34, false,
     42.0},
};

TEST_P(ErrorPipeline, Actions) {
    for (const ActionRow& row : kActions) {
        SCOPED_TRACE(row.what);
        SetUp();
        mode(row.mode, row.callback ? callback : nullptr);
        g_seen.replace_r1 = true;
        g_seen.ret = row.ret;
        g_seen.set_mode = row.set_mode;
        double a[3] = {1, 0, 1}, r[3] = {1, INFINITY, 1};
        int32_t rc = -1;
        const std::string out = zvl_test::capture_stdout([&] { rc = report(2, 1, a, r); });
        EXPECT_EQ(rc, row.ret);
        EXPECT_EQ(zvl::get_status(), 2);
        EXPECT_EQ(g_seen.calls, row.calls);
        EXPECT_EQ(errno, row.err);
        EXPECT_EQ(out, "");
        EXPECT_EQ(std::fetestexcept(FE_INVALID | FE_DIVBYZERO | FE_OVERFLOW | FE_UNDERFLOW),
                  row.raised ? FE_DIVBYZERO : 0);
        EXPECT_EQ(r[1], row.r);
        EXPECT_EQ(r[0], 1.0);
        EXPECT_EQ(r[2], 1.0);
    }
}

// With one output array, r2 goes back first and r1 last: r1 stays.
TEST_P(ErrorPipeline, WriteBackSecondResultFirst) {
    mode(0x1002, callback);
    g_seen.replace_r1 = true;
    g_seen.replace_r2 = true;
    double a[1] = {0}, r[1] = {INFINITY};
    report(2, 0, a, r);
    EXPECT_EQ(r[0], 42.0);

    double y[1] = {1}, z[1] = {2};
    report2(2, 0, a, a, y, z);
    EXPECT_EQ(y[0], 42.0);
    EXPECT_EQ(z[0], 43.0);
}

// --- The record -----------------------------------------------------------------

TEST_P(ErrorPipeline, RecordFields) {
    mode(0x1002, callback);
    double a[3] = {0, 1.5, 0}, b[3] = {0, -2.5, 0}, y[3] = {0, 3.5, 0}, z[3] = {0, -4.5, 0};
    report2(3, 1, a, b, y, z);
    EXPECT_EQ(g_seen.rec.status, 3);
    EXPECT_EQ(g_seen.rec.index, 1);
    EXPECT_EQ(g_seen.rec.a1, 1.5);
    EXPECT_EQ(g_seen.rec.a2, -2.5);
    EXPECT_EQ(g_seen.rec.r1, 3.5);
    EXPECT_EQ(g_seen.rec.r2, -4.5);
    EXPECT_STREQ(g_seen.rec.name, kName);
    EXPECT_EQ(g_seen.rec.name_len, static_cast<int>(sizeof kName - 1));
}

TEST_P(ErrorPipeline, KernelNameUpToSixtyFourCharacters) {
    mode(0x1002, callback);
    const std::string name64(64, 'k'), name70(70, 'q');
    double a[1] = {0}, r[1] = {0};
    report(2, 0, a, r, name64.c_str());
    EXPECT_EQ(g_seen.rec.name_len, 64);
    EXPECT_EQ(std::string(g_seen.rec.name, 64), name64);
    report(2, 0, a, r, name70.c_str());
    EXPECT_EQ(g_seen.rec.name_len, 64);
    EXPECT_EQ(std::string(g_seen.rec.name, 64), name70.substr(0, 64));
    report(2, 0, a, r, "");
    EXPECT_EQ(g_seen.rec.name_len, 0);
    EXPECT_EQ(g_seen.rec.name[0], '\0');
}

// The record's index and the printed index are rebased; the write-back
// goes to the index passed in.
TEST_P(ErrorPipeline, ArrayBaseRebasesTheIndex) {
    mode(0x1402, callback);
    g_seen.replace_r1 = true;  // the printed values are the record's after the callback
    g_seen.replace_r2 = true;
    double whole[16] = {};
    whole[7] = 0.0;
    double r[8];
    for (double& x : r) x = 1.0;
    r[2] = INFINITY;
    zvl::set_array_base(whole);
    const std::string out = zvl_test::capture_stdout([&] { report2(2, 2, whole + 5, whole + 5, r, r); });
    zvl::set_array_base(nullptr);
    EXPECT_EQ(g_seen.rec.index, 7);
    EXPECT_EQ(out, std::string("Error (ZVL_STATUS_SING) in ") + kName +
                       ": argument caused singularity.\na(7)=0\ny(7)=42\nz(7)=43\n");
    EXPECT_EQ(r[2], 42.0);
    EXPECT_EQ(whole[7], 0.0);
    for (int i = 0; i < 8; ++i)
        if (i != 2) EXPECT_EQ(r[i], 1.0);

    // a base above the array gives a negative index
    zvl::set_array_base(whole + 8);
    report(2, 1, whole + 4, r);
    zvl::set_array_base(nullptr);
    EXPECT_EQ(g_seen.rec.index, -3);
}

// Negative statuses touch no array: value fields stay unset, nothing is
// written back.
TEST_P(ErrorPipeline, NegativeStatusesTouchNoArray) {
    mode(0x1E02, callback);
    for (int32_t status : {-1, -2}) {
        g_seen.replace_r1 = true;
        const std::string out = zvl_test::capture_stdout(
            [&] { kCopies[GetParam()](status, 5, nullptr, nullptr, nullptr, nullptr, "vdX"); });
        EXPECT_EQ(g_seen.rec.status, status);
        EXPECT_EQ(g_seen.rec.index, 5);
        EXPECT_EQ(zvl::get_status(), status);
        EXPECT_EQ(out, status == -1
                           ? "Error (ZVL_STATUS_BADSIZE) in vdX: array size 5 is not positive.\n"
                           : "Error (ZVL_STATUS_BADMEM) in vdX: NULL pointer is passed.\n");
    }
}

// --- errno, messages, exceptions --------------------------------------------------

// errno and the raised exception by status; the negative statuses pass no
// arrays. Printing may leave the inexact flag (MinGW's printf formats in
// floating point): only the four flags the action raises count.
TEST_P(ErrorPipeline, ErrnoAndException) {
    const struct {
        int32_t status;
        int err, flag;
    } rows[] = {{-2, 13, 0}, {-1, 22, 0}, {0, 0, 0}, {1, 33, FE_INVALID}, {2, 34, FE_DIVBYZERO},
                {3, 34, FE_OVERFLOW}, {4, 34, FE_UNDERFLOW}, {5, 14, 0}, {7, 14, 0}, {-3, 14, 0}};
    constexpr int kFour = FE_INVALID | FE_DIVBYZERO | FE_OVERFLOW | FE_UNDERFLOW;
    for (const auto& row : rows) {
        double a1[1] = {1}, r1[1] = {1};
        double* a = row.status < 0 && row.status > -3 ? nullptr : a1;
        double* r = a ? r1 : nullptr;
        for (uint32_t m : {0x0A02u, 0x0602u}) {  // errno and raise; errno and print
            mode(m);
            errno = kErrnoSentinel;
            std::feclearexcept(FE_ALL_EXCEPT);
            zvl_test::capture_stdout([&] { report(row.status, 0, a, r); });
            SCOPED_TRACE("status " + std::to_string(row.status));
            EXPECT_EQ(errno, row.err);
            EXPECT_EQ(std::fetestexcept(kFour), m & 0x800 ? row.flag : 0);
        }
    }
}

struct PrintRow {
    const char* what;
    int32_t status;
    double a1, a2, r1, r2;
    const char* lines;  // after the status message
};

const PrintRow kPrintRows[] = {
    {"one in, one out", 2, 0.0, 0.0, INFINITY, INFINITY, "a(3)=0\nr(3)=inf\n"},
    {"NaN argument counts as two inputs", 1, NAN, NAN, NAN, NAN,
     "a(3)=nan\nb(3)=nan\ny(3)=nan\nz(3)=nan\n"},
    {"second input 0.0 counts as one", 2, 1.0, 0.0, INFINITY, INFINITY, "a(3)=1\nr(3)=inf\n"},
    {"two inputs", 2, 1.0, -0.5, 3.0, 3.0, "a(3)=1\nb(3)=-0.5\ny(3)=3\n"},
    {"second result 0.0 counts as one", 4, 1e-300, 1e-300, 5.0, 0.0, "a(3)=1e-300\nr(3)=5\n"},
    {"two results", 3, 2.0, 2.0, 5.0, -6.0, "a(3)=2\ny(3)=5\nz(3)=-6\n"},
    {"two in, two out", 3, 2.0, 7.0, 5.0, -6.0, "a(3)=2\nb(3)=7\ny(3)=5\nz(3)=-6\n"},
    {"unknown status", 7, 2.0, 2.0, 0.5, 0.5, "a(3)=2\nr(3)=0.5\n"},
};

const char* status_message(int32_t status) {
    switch (status) {
        case 1: return "Error (ZVL_STATUS_ERRDOM) in %s: argument is out of domain.";
        case 2: return "Error (ZVL_STATUS_SING) in %s: argument caused singularity.";
        case 3: return "Error (ZVL_STATUS_OVERFLOW) in %s: argument caused overflow.";
        case 4: return "Error (ZVL_STATUS_UNDERFLOW) in %s: argument caused underflow.";
        default: return "Unknown error in %s.";
    }
}

TEST_P(ErrorPipeline, PrintedMessagesAndValueLines) {
    mode(0x0402);
    for (const PrintRow& row : kPrintRows) {
        SCOPED_TRACE(row.what);
        double a[4], b[4], y[4], z[4];
        a[3] = row.a1;
        b[3] = row.a2;
        y[3] = row.r1;
        z[3] = row.r2;
        // one array when the row's two values are the same one
        const double* second = std::memcmp(&row.a1, &row.a2, 8) == 0 ? a : b;
        double* out2 = std::memcmp(&row.r1, &row.r2, 8) == 0 ? y : z;
        const std::string out =
            zvl_test::capture_stdout([&] { kCopies[GetParam()](row.status, 3, a, second, y, out2, "vdTest"); });
        char head[128];
        std::snprintf(head, sizeof head, status_message(row.status), "vdTest");
        EXPECT_EQ(out, std::string(head) + "\n" + row.lines);
    }
}

INSTANTIATE_TEST_SUITE_P(EachCopy, ErrorPipeline, testing::Range(0, 6),
                         [](const testing::TestParamInfo<int>& p) {
                             return "cpu" + std::to_string(p.param);
                         });

}  // namespace
