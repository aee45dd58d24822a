// The localized catalogue, one process per case (see CMakeLists.txt): its
// texts replace the built-in ones, with or without a CR LF line end, unless
// their conversions differ, and it is looked for once per process.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <string>

#include "state/state.h"
#include "tests/common/capture.h"
#include "zvl.h"

namespace {

std::string print_738() {
    return zvl_test::capture_stdout([] { zvl::print_message(1, 738, 1, "vdInv"); });
}

TEST(Catalogue, TextsReplaceTheBuiltInOnes) {
    EXPECT_EQ(print_738(), "CAT: singularity in vdInv\n");
    const int32_t position = 2;
    EXPECT_EQ(zvl_test::capture_stdout(
                  [&] { zvl::report_parameter_error("vdDiv", &position, 5); }),
              "\nCAT: bad parameter 2 in vdDiv\n");
    // An id the catalogue lacks keeps its built-in text.
    EXPECT_EQ(zvl_test::capture_stdout([] { zvl::print_message(1, 741, 1, "vdInv"); }),
              "Unknown error in vdInv.\n");
    // The pipeline's messages come from the catalogue too.
    zvl::ThreadContext* c = zvl::library_context();
    c->mode = 0x0402;
    c->array_base = nullptr;
    double a[1] = {0.0}, r[1] = {INFINITY};
    EXPECT_EQ(zvl_test::capture_stdout([&] {
                  zvl::Services<0>::error_pipeline(2, 0, a, a, r, r, "k");
              }),
              "CAT: singularity in k\na(0)=0\nCAT r(0) is inf\n");
    c->mode = ZVL_MODE_DEFAULT;
}

// A text whose conversions are not the built-in text's is refused, text by
// text, for the built-in one: a conversion without its argument would read
// or write through whatever lies where the argument should be.
TEST(Catalogue, OnlyTextsWithTheBuiltInConversionsServe) {
    const auto print = [](uint32_t id) {
        return zvl_test::capture_stdout([id] { zvl::print_message(1, id, 1, "vdInv"); });
    };
    const int32_t position = 2;
    EXPECT_EQ(zvl_test::capture_stdout(
                  [&] { zvl::report_parameter_error("vdDiv", &position, 5); }),
              "\nZEL ERROR: Parameter 2 was incorrect on entry to vdDiv\n");  // swapped
    EXPECT_EQ(print(737), "CAT: domain vdInv !\n");  // flags and widths are fine
    EXPECT_EQ(print(738), "Error (ZVL_STATUS_SING) in vdInv: argument caused singularity.\n");
    EXPECT_EQ(print(739), "Error (ZVL_STATUS_OVERFLOW) in vdInv: argument caused overflow.\n");
    EXPECT_EQ(print(740), "Error (ZVL_STATUS_UNDERFLOW) in vdInv: argument caused underflow.\n");
    EXPECT_EQ(zvl_test::capture_stdout([] { zvl::print_message(1, 743, 2, 0, INFINITY); }),
              "CAT r(0) is inf\n");
    EXPECT_EQ(zvl_test::capture_stdout([] { zvl::print_message(1, 760, 0); }),
              "ZEL FATAL ERROR: memory allocation error.\n");
}

TEST(Catalogue, LookedForOnce) {
    const char* path = std::getenv("ZVL_TEST_CATALOGUE");
    ASSERT_NE(path, nullptr) << "run through ctest";
    EXPECT_EQ(print_738(), "Error (ZVL_STATUS_SING) in vdInv: argument caused singularity.\n");
    setenv("NLSPATH", path, 1);
    EXPECT_EQ(print_738(), "Error (ZVL_STATUS_SING) in vdInv: argument caused singularity.\n");
}

}  // namespace
