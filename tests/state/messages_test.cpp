// The message printer and the parameter-error reporter, with the built-in
// texts (no catalogue is installed for this process).
#include <gtest/gtest.h>

#include <unistd.h>

#include <string>

#include "state/state.h"
#include "tests/common/capture.h"

namespace {

struct ReporterRow {
    const char* what;
    const char* name;
    int32_t len;
    int32_t info;
    const char* out;
};

const ReporterRow kReporterRows[] = {
    {"position", "vdInv", 5, 2, "\nZEL ERROR: Parameter 2 was incorrect on entry to vdInv\n"},
    {"name not terminated", "vdInvSqrtAndMore", 5, 1,
     "\nZEL ERROR: Parameter 1 was incorrect on entry to vdInv\n"},
    {"20 characters kept", "abcdefghijklmnopqrst", 20, 3,
     "\nZEL ERROR: Parameter 3 was incorrect on entry to abcdefghijklmnopqrst\n"},
    {"longer names cut to 20", "abcdefghijklmnopqrstuvwxyz", 26, 3,
     "\nZEL ERROR: Parameter 3 was incorrect on entry to abcdefghijklmnopqrst\n"},
    {"condition 0", "vdDiv", 5, 0, "\nZEL INTERNAL ERROR: Condition 0 detected in function vdDiv\n"},
    {"negative is a condition", "vdDiv", 5, -17,
     "\nZEL INTERNAL ERROR: Condition 17 detected in function vdDiv\n"},
    {"1000", "vdDiv", 5, 1000, "\nZEL INTERNAL ERROR: Not enough work memory in function vdDiv\n"},
    {"1001", "vdDiv", 5, 1001, "\nZEL ERROR: Incompatible optional parameters on entry to vdDiv\n"},
    {"1079", "vdDiv", 5, 1079, "\nZEL INTERNAL ERROR: Not enough work memory in function vdDiv\n"},
    {"1002 is a position", "vdDiv", 5, 1002,
     "\nZEL ERROR: Parameter 1002 was incorrect on entry to vdDiv\n"},
};

TEST(Messages, ParameterErrorReporter) {
    for (const ReporterRow& row : kReporterRows) {
        const std::string out = zvl_test::capture_stdout(
            [&] { zvl::report_parameter_error(row.name, &row.info, row.len); });
        EXPECT_EQ(out, row.out) << row.what;
    }
}

TEST(Messages, BuiltInTexts) {
    EXPECT_EQ(zvl_test::capture_stdout([] { zvl::print_message(0, 0, 0); }), "\n");
    EXPECT_EQ(zvl_test::capture_stdout([] { zvl::print_message(1, 760, 0); }),
              "ZEL FATAL ERROR: memory allocation error.\n");
    EXPECT_EQ(zvl_test::capture_stdout([] { zvl::print_message(1, 745, 2, 12, -0.25); }),
              "y(12)=-0.25\n");
    EXPECT_EQ(zvl_test::capture_stdout([] { zvl::print_message(0, 735, 2, "vdAbc", -4); }),
              "Error (ZVL_STATUS_BADSIZE) in vdAbc: array size -4 is not positive.\n");
}

// "Unknown error in %s." is 18 characters around the name.
constexpr int kUnknownFixed = 18;

TEST(Messages, LongestTextPasses) {
    const std::string name(513 - kUnknownFixed, 'n');
    const std::string out =
        zvl_test::capture_stdout([&] { zvl::print_message(1, 741, 1, name.c_str()); });
    EXPECT_EQ(out, "Unknown error in " + name + ".\n");
}

TEST(MessagesDeathTest, OverflowEndsTheProcess) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    const std::string name(514 - kUnknownFixed, 'n');
    // Standard output goes to the stream the death test watches.
    EXPECT_EXIT(
        {
            dup2(2, 1);
            zvl::print_message(1, 741, 1, name.c_str());
        },
        testing::ExitedWithCode(8),
        "^\nZEL INTERNAL ERROR: message buffer overflow\\.\n"
        "       Message N 741   Lenght: 513   Buffer size: 512\n$");
}

}  // namespace
