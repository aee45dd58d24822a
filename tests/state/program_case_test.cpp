// The program case: the library's code linked straight into a program. Each
// cpu type's copy of the services has its own thread-local variables, all
// zero at thread start, and no context is allocated.
#include <gtest/gtest.h>

#include <cerrno>
#include <cmath>
#include <thread>

#include "base/cpu_type.h"
#include "platform/os.h"
#include "state/state.h"
#include "zvl.h"

namespace {

TEST(ProgramCase, ModuleKindIsProgram) {
    EXPECT_EQ(zvl::os::module_kind(), 0);
    EXPECT_EQ(zvl::module_kind(), 0);
}

TEST(ProgramCase, ModeStartsAtZeroOnEveryThread) {
    EXPECT_EQ(ZVLGETMODE(), 0u);
    uint32_t other = 1;
    std::thread([&] { other = ZVLGETMODE(); }).join();
    EXPECT_EQ(other, 0u);
}

TEST(ProgramCase, EachCopyHasItsOwnVariables) {
    EXPECT_EQ(zvl::Services<1>::set_mode(0x0401), 0u);
    EXPECT_EQ(zvl::Services<1>::get_mode(), 0x0401u);
    EXPECT_EQ(zvl::Services<2>::get_mode(), 0u);
    zvl::Services<3>::set_status(4);
    EXPECT_EQ(zvl::Services<4>::get_status(), 0);
    EXPECT_EQ(zvl::Services<3>::get_status(), 4);
    EXPECT_NE(zvl::Services<1>::context(), zvl::Services<2>::context());
    *zvl::Services<1>::context() = zvl::ThreadContext{};
    *zvl::Services<3>::context() = zvl::ThreadContext{};
}

int g_calls = 0;
int count_calls(ZVLErrorRecord*) { return ++g_calls, 0; }

// Mode 0: the EP kernel and no error action; the status is still stored.
TEST(ProgramCase, ZeroModeMeansEpAndNoAction) {
    const uint32_t cpu = zvl::cpu_type();
    ASSERT_LE(cpu, 5u);
    errno = 0;
    zvl::set_status(0);
    const int n = 3;
    double a[3] = {4.0, 0.0, -0.0}, r[3];
    VDINV(&n, a, r);
    EXPECT_EQ(r[0], 0.25);
    EXPECT_EQ(r[1], INFINITY);
    EXPECT_EQ(r[2], -INFINITY);
    EXPECT_EQ(zvl::get_status(), ZVL_STATUS_SING);
    EXPECT_EQ(errno, 0);

    // A callback set through the live copy runs only once the mode allows.
    zvl::set_callback(count_calls);
    EXPECT_EQ(ZVLGETMODE(), 0x1000u);
    VDINV(&n, a, r);
    EXPECT_EQ(g_calls, 2);
}

}  // namespace
