// An installed message catalogue replaces the built-in texts it has, with or
// without a carriage return and line feed at their end; ids it lacks keep
// the built-in text. The catalogue (catalogue.txt) holds ids 6 (ending in
// CR LF), 738 (no line end) and 742 (CR LF).
#include <gtest/gtest.h>

#include <string>

#include "state/state.h"
#include "tests/common/capture.h"
#include "zvl.h"

namespace {

using zvl_test::capture_stdout;

struct PrintCase {
    const char* what;
    uint32_t id;
    std::string (*print)();
    const char* expected;
};

const PrintCase kCases[] = {
    {"CrLfEndingIsDropped", 6,
     [] { return capture_stdout([] { zvl::print_message(0, 6, 2, 4, "vdDiv"); }); },
     "TEST CATALOGUE: argument 4 of vdDiv is bad\n"},
    {"TextWithoutLineEnd", 738,
     [] { return capture_stdout([] { zvl::print_message(1, 738, 1, "zel_zvl_core_ex_zvl_dInv_HA"); }); },
     "TEST CATALOGUE: zel_zvl_core_ex_zvl_dInv_HA divided by zero\n"},
    {"FormatsNumbers", 742,
     [] { return capture_stdout([] { zvl::print_message(1, 742, 2, 17, 0.25); }); },
     "TEST CATALOGUE: a[17] = 0.25\n"},
    {"MissingIdKeepsBuiltInText", 7,
     [] { return capture_stdout([] { zvl::print_message(0, 7, 2, 3, "vdInv"); }); },
     "ZEL INTERNAL ERROR: Condition 3 detected in function vdInv\n"},
    {"MissingIdWithoutArguments", 760,
     [] { return capture_stdout([] { zvl::print_message(1, 760, 0); }); },
     "ZEL FATAL ERROR: memory allocation error.\n"},
};

class Catalogue : public testing::TestWithParam<PrintCase> {};

TEST_P(Catalogue, PrintsItsTextOrTheBuiltInOne) {
    const PrintCase& c = GetParam();
    // Twice: the catalogue stays loaded and each message reads it again.
    EXPECT_EQ(c.print(), c.expected);
    EXPECT_EQ(c.print(), c.expected);
}

INSTANTIATE_TEST_SUITE_P(Texts, Catalogue, testing::ValuesIn(kCases),
                         [](const testing::TestParamInfo<PrintCase>& i) { return i.param.what; });

// The front-ends' reports and the error pipeline's messages come through it.
TEST(CatalogueUse, ReachesReportsAndPipelineMessages) {
    double a[2] = {0.0, 2.0}, r[2];
    int n = -1;
    EXPECT_EQ(capture_stdout([&] { VDINV(&n, a, r); }),
              "\nTEST CATALOGUE: argument 1 of vdInv is bad\n");
    unsigned print = ZVL_ERRMODE_STDOUT;
    ZVLSETMODE(&print);
    zvl::set_array_base(nullptr);  // a new context's base is whatever its block held
    n = 2;
    const std::string out = capture_stdout([&] { VDINV(&n, a, r); });
    EXPECT_NE(out.find("divided by zero\nTEST CATALOGUE: a[0] = 0\nr(0)=inf\n"), std::string::npos)
        << out;
}

}  // namespace
