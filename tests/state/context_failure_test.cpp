// A thread context that cannot be stored: the first-time path prints the
// fatal message and tries once more; when that fails too, or when a later
// thread's store fails, the process ends with exit code 1.
//
// The store is made to fail by standing in for pthread_setspecific, which
// the library's TLS slot calls, for the library's own key only.
#include <dlfcn.h>
#include <gtest/gtest.h>
#include <pthread.h>
#include <unistd.h>

#include <atomic>
#include <thread>

#include "state/state.h"
#include "zvl.h"

namespace zvl {
extern std::atomic<int32_t> g_tls_slot;
}

namespace {
int g_failures_left = 0;  // stores of the library's key still to refuse
}

extern "C" int pthread_setspecific(pthread_key_t key, const void* value) {
    using Real = int (*)(pthread_key_t, const void*);
    static const Real real = reinterpret_cast<Real>(dlsym(RTLD_NEXT, "pthread_setspecific"));
    if (g_failures_left > 0 && value != nullptr &&
        static_cast<int32_t>(key) == zvl::g_tls_slot.load()) {
        --g_failures_left;
        return 12;  // ENOMEM
    }
    return real(key, value);
}

namespace {

constexpr char kFatal[] = "ZEL FATAL ERROR: memory allocation error\\.\n";

// The first use fails once (the retry succeeds and the mode is the
// default), fails twice, or a later thread's first use fails once.
struct FailureCase {
    int failures;
    bool later_thread;
    int exit_code;
    const char* after;  // what follows the fatal message
};

TEST(ContextFailureDeathTest, FirstTimeRetriesOnceLaterThreadsNot) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    for (const FailureCase& c : {FailureCase{1, false, 0, "mode 0x1a02\n"},
                                 FailureCase{2, false, 1, ""}, FailureCase{1, true, 1, ""}}) {
        EXPECT_EXIT(
            {
                dup2(2, 1);
                if (c.later_thread) ZVLGETMODE();  // the slot exists from here on
                g_failures_left = c.failures;
                unsigned mode = 0;
                if (c.later_thread)
                    std::thread([&] { mode = ZVLGETMODE(); }).join();
                else
                    mode = ZVLGETMODE();
                std::fprintf(stderr, "mode 0x%x\n", mode);
                std::exit(mode == ZVL_MODE_DEFAULT ? 0 : 3);
            },
            testing::ExitedWithCode(c.exit_code), std::string("^") + kFatal + c.after + "$")
            << c.failures << " failures, later thread " << c.later_thread;
    }
}

}  // namespace
