// Stress tests of the state that threads share without a lock: messages
// printed by several threads at once, and the process-wide slot that the
// first calls of several new threads race to create. Each repeats the race
// many times; before the fixes they crashed or lost mode words within a few
// rounds. Run with cpu type 4 forced (see CMakeLists.txt), a type whose
// kernels run on a team.
#include <gtest/gtest.h>

#include <atomic>
#include <cmath>
#include <string>
#include <thread>
#include <vector>

#include "base/cpu_type.h"
#include "frame/kernel_sets.h"
#include "state/state.h"
#include "tests/common/capture.h"
#include "threading/threading.h"
#include "zvl.h"

namespace {

size_t count(const std::string& s, const std::string& what) {
    size_t k = 0;
    for (size_t at = s.find(what); at != std::string::npos; at = s.find(what, at + what.size()))
        ++k;
    return k;
}

// Starts `threads` threads running body(t) together, and joins them.
template <class Body>
void all_at_once(int threads, Body body) {
    std::atomic<int> ready{0};
    std::vector<std::thread> pool;
    for (int t = 0; t < threads; ++t)
        pool.emplace_back([&, t] {
            ready.fetch_add(1);
            while (ready.load() < threads) std::this_thread::yield();
            body(t);
        });
    for (std::thread& th : pool) th.join();
}

// Output of threads printing at once: `lines` line ends, and `text` that
// many times. With glibc each print call is whole, so lines may interleave
// but every text arrives. Under Wine the MinGW printf and the C runtime's
// writes and flushes do not exclude each other, so characters of messages
// printed at once can mix there and some are lost: the process must only
// come through.
void expect_whole(const std::string& out, size_t lines, const std::string& text, size_t texts) {
#ifdef _WIN32
    EXPECT_LE(count(out, "\n"), lines);
    (void)text;
    (void)texts;
#else
    EXPECT_EQ(count(out, "\n"), lines);
    EXPECT_EQ(count(out, text), texts);
#endif
}

// Each message is formatted in buffers of its own, so none is rewritten
// while printed: as many line ends as messages, and each text as often as
// it was printed.
TEST(Concurrency, MessagesOfManyThreadsArriveWhole) {
    constexpr int kThreads = 4, kEach = 4000;
    const std::string sing = "Error (ZVL_STATUS_SING) in vdLn: argument caused singularity.";
    const std::string out = zvl_test::capture_stdout([] {
        all_at_once(kThreads, [](int) {
            for (int i = 0; i < kEach; ++i) {
                if (i % 2 != 0)
                    zvl::print_message(1, 743, 2, i, -HUGE_VAL);  // r(i)=-inf
                else
                    zvl::print_message(1, 738, 1, "vdLn");
            }
        });
    });
    expect_whole(out, size_t{kThreads} * kEach, sing, size_t{kThreads} * kEach / 2);
    expect_whole(out, size_t{kThreads} * kEach, ")=-inf", size_t{kThreads} * kEach / 2);
}

// The same through the error pipeline of a team's members: Ln of zeros,
// each reported with the print action on whichever member meets it.
TEST(Concurrency, TeamMembersPrintAtOnce) {
    ZEL_Set_Dynamic(0);
    ZEL_Domain_Set_Num_Threads(2, ZEL_ZVL);
    const uint32_t print = ZVL_HA | ZVL_ERRMODE_STDOUT;
    const uint32_t saved = ZVLSETMODE(&print);
    constexpr int32_t kN = 20000;
    std::vector<double> a(kN, 0.0), r(kN);
    const zvl::KernelD1 ln = zvl::kernels_VDLN.k[zvl::cpu_type()][zvl::kHA];
    for (int round = 0; round < 3; ++round) {
        const std::string out = zvl_test::capture_stdout([&] {
            zel_zvl_service_threader_d_1i_1o(ln, kN, a.data(), r.data(), 162, 0);
        });
        // the status line, a(i) and r(i) of each element
        expect_whole(out, size_t{3} * kN, ")=-inf", size_t{kN});
    }
    EXPECT_EQ(zvl::get_status(), ZVL_STATUS_SING);
    ZVLSETMODE(&saved);
    ZEL_Domain_Set_Num_Threads(0, ZEL_ZVL);
}

// New threads make their first calls at the same moment, each setting a
// mode word of its own, and read it back once all have set theirs. Every
// round starts from the state before any use: process detach gives the slot
// and the heap back.
TEST(Concurrency, FirstCallsAtOnceKeepTheirModeWords) {
#ifdef _WIN32
    constexpr int kRounds = 300;  // threads start slowly under Wine
#else
    constexpr int kRounds = 2000;
#endif
    constexpr int kThreads = 8;
    int lost = 0;
    for (int round = 0; round < kRounds; ++round) {
        zvl::process_detach();
        std::atomic<int> set{0}, lost_here{0};
        all_at_once(kThreads, [&](int t) {
            // An error-action field and an accuracy of its own.
            const uint32_t mine = (0x100u << t % 8) | (t % 2 != 0 ? ZVL_LA : ZVL_EP);
            ZVLSETMODE(&mine);
            set.fetch_add(1);
            while (set.load() < kThreads) std::this_thread::yield();
            if (ZVLGETMODE() != mine) lost_here.fetch_add(1);
        });
        lost += lost_here.load();
    }
    EXPECT_EQ(lost, 0) << "mode words lost in " << kRounds << " rounds of " << kThreads
                       << " threads";
    EXPECT_EQ(ZVLGETMODE(), ZVL_MODE_DEFAULT);
}

}  // namespace
