// The program case: the library's code linked straight into the program.
#include <gtest/gtest.h>

#include <thread>

#include "platform/os.h"
#include "state/state.h"
#include "zvl.h"

namespace {

TEST(OsProgramCase, IsDetectedAndStartsFromZero) {
    EXPECT_EQ(zvl::os::module_kind(), 0);
    EXPECT_EQ(zvl::module_kind(), 0);
    // Plain thread-local words, zero at thread start: EP, no error action.
    EXPECT_EQ(ZVLGETMODE(), 0u);
    unsigned la = ZVL_LA;
    ZVLSETMODE(&la);
    unsigned other = 1;
    std::thread([&] { other = ZVLGETMODE(); }).join();
    EXPECT_EQ(other, 0u);
    EXPECT_EQ(ZVLGETMODE(), ZVL_LA);
}

}  // namespace
