// What a call computes on a team, against the same kernel called once on the
// whole array by the caller: team members compute in the caller's
// floating-point control state, whatever state the runtime created them in,
// and results do not depend on the number of threads or where chunks start,
// except in the kernels listed below (and in the README), which share work
// among a block of elements.
//
// Registered per cpu type; cpu type 5 never goes parallel and is skipped.
#include <gtest/gtest.h>

#include <cfenv>
#include <cmath>
#include <cstring>
#include <string>
#include <vector>

#include "base/cpu_type.h"
#include "frame/kernel_sets.h"
#include "state/state.h"
#include "tests/common/fp_control.h"
#include "tests/common/rows.h"
#include "threading/threading.h"
#include "zvl.h"

namespace {

using zvl_test::Args;
using zvl_test::Kernel;
using zvl_test::Row;
using zvl_test::Shape;

// Kernels whose results depend on where a chunk starts inside a block: one
// division (Inv) or one extended-precision product of the divisors (Div) is
// shared among the block, and a block with a zero divisor is done element by
// element instead. Column bits: 1 HA, 2 LA, 4 EP.
struct SplitDependent {
    const char* exported;
    uint8_t columns;
    uint8_t cpus;
};
constexpr SplitDependent kSplitDependent[] = {
    {"VDINV", 0x6, 0x1e},
    {"VDDIV", 0x6, 0x1e},
};

// Those, and the cells the row's traits name (Tan: HA shares one division
// between two elements, LA and EP refuse an element's neighbour of the pair
// with it).
bool split_dependent(const Row& f, int cpu, int col) {
    if (std::strchr(f.traits->chunk_variants, f.cell(cpu, col).variant)) return true;
    for (const SplitDependent& d : kSplitDependent)
        if (std::strcmp(d.exported, f.exported) == 0 && (d.columns >> col & 1) && (d.cpus >> cpu & 1))
            return true;
    return false;
}

std::vector<const Row*> arithmetic_rows() {
    std::vector<const Row*> v;
    for (const Row& r : zvl_test::rows())
        if (!r.rounding) v.push_back(&r);
    return v;
}

// Ordinary elements with, when `special`, reporting and quiet elements
// among them (every 23rd and every 31st), which leave the vector path.
Args arguments(const Row& f, int n, bool special) {
    Args x = zvl_test::ordinary(f, n, 7);
    const zvl_test::Traits& t = *f.traits;
    for (int i = 0; special && i < n; ++i) {
        if (i % 23 == 7 && !std::isnan(t.reports.a)) x.set(i, t.reports, f.shape);
        if (i % 31 == 11) x.set(i, t.quiet, f.shape);
    }
    return x;
}

// The results of a call (a complex element is two doubles): the second
// output is used by SinCos alone.
struct Results {
    std::vector<double> r, r2;
    Results(const Row& f, int n)
        : r(static_cast<size_t>(n * f.elem_doubles)), r2(static_cast<size_t>(n * f.elem_doubles)) {}
};

// Elements [from, from + n) through the kernel, into the same places of r.
void run_part(const Row& f, const Kernel& k, const Args& x, int from, int n, Results* out) {
    const int at = from * f.elem_doubles;
    const double* b = f.shape == Shape::D2 || f.shape == Shape::Z2 ? x.b.data() + at : x.bp();
    k(n, x.a.data() + at, b, out->r.data() + at, out->r2.data() + at);
}

// All n elements through the driver of the row's shape.
void run_on_team(const Row& f, const Kernel& k, const Args& x, int n, Results* out) {
    double* r = out->r.data();
    switch (f.shape) {
        case Shape::D1:
            zel_zvl_service_threader_d_1i_1o(reinterpret_cast<zvl::KernelD1>(k.fn), n,
                                             x.a.data(), r, 0, 0);
            break;
        case Shape::D2:
            zel_zvl_service_threader_d_2i_1o(reinterpret_cast<zvl::KernelD2>(k.fn), n,
                                             x.a.data(), x.b.data(), r, 0, 0);
            break;
        case Shape::DX:
            zel_zvl_service_threader_d_cd_2i_d_1o(reinterpret_cast<zvl::KernelDx>(k.fn), n,
                                                  x.a.data(), x.b[0], r, 0, 0);
            break;
        case Shape::Z1:
            zel_zvl_service_threader_z_1i_1o(reinterpret_cast<zvl::KernelZ1>(k.fn), n,
                                             reinterpret_cast<const ZVLComplex16*>(x.a.data()),
                                             reinterpret_cast<ZVLComplex16*>(r), 0, 0);
            break;
        case Shape::D12:
            zel_zvl_service_threader_d_1i_2o(reinterpret_cast<zvl::KernelD12>(k.fn), n, x.a.data(), r,
                                             out->r2.data(), 0, 0);
            break;
        case Shape::Z2:
            zel_zvl_service_threader_z_2i_1o(reinterpret_cast<zvl::KernelZ2>(k.fn), n,
                                             reinterpret_cast<const ZVLComplex16*>(x.a.data()),
                                             reinterpret_cast<const ZVLComplex16*>(x.b.data()),
                                             reinterpret_cast<ZVLComplex16*>(r), 0, 0);
            break;
        case Shape::ZX:
            zel_zvl_service_threader_z_cz_2i_z_1o(reinterpret_cast<zvl::KernelZx>(k.fn), n,
                                                  reinterpret_cast<const ZVLComplex16*>(x.a.data()),
                                                  reinterpret_cast<const ZVLComplex16*>(x.bp()),
                                                  reinterpret_cast<ZVLComplex16*>(r), 0, 0);
            break;
    }
}

// The first element where two calls' results differ in their bits, or -1.
int first_difference(const Results& x, const Results& y) {
    for (size_t i = 0; i < x.r.size(); ++i)
        if (!zvl_test::same(x.r[i], y.r[i]) || !zvl_test::same(x.r2[i], y.r2[i])) return static_cast<int>(i);
    return -1;
}

class TeamResults : public testing::Test {
protected:
    void SetUp() override {
        cpu_ = static_cast<int>(zvl::cpu_type());
        if (cpu_ == 5) GTEST_SKIP() << "cpu type 5 never goes parallel";
        ZEL_Set_Dynamic(0);
        // Reports store their status only: no output, no callback.
        const uint32_t ignore = 0x100;
        saved_mode_ = ZVLSETMODE(&ignore);
    }
    void TearDown() override {
        if (cpu_ != 5) ZVLSETMODE(&saved_mode_);
        ZEL_Domain_Set_Num_Threads(0, ZEL_ZVL);
    }
    // Results of every arithmetic kernel of this cpu type, on a team of
    // `threads` and directly, compared bit for bit.
    void expect_team_matches_direct(int threads, int n, bool special, bool whole_blocks,
                                    const std::string& state) {
        ZEL_Domain_Set_Num_Threads(threads, ZEL_ZVL);
        for (const Row* f : arithmetic_rows()) {
            const Args x = arguments(*f, n, special);
            for (int col = 0; col < 3; ++col) {
                if (!whole_blocks && split_dependent(*f, cpu_, col)) continue;
                const Kernel k = f->kernel(cpu_, col);
                Results team(*f, n), direct(*f, n);
                run_on_team(*f, k, x, n, &team);
                run_part(*f, k, x, 0, n, &direct);
                const int at = first_difference(team, direct);
                EXPECT_EQ(at, -1) << f->exported << " " << zvl_test::kTags[col] << ", " << threads
                                  << " threads, " << state;
            }
        }
    }
    int cpu_ = 0;
    uint32_t saved_mode_ = 0;
};

// The runtime creates its threads at the process's first parallel call,
// here made under rounding upward, which threads may inherit. Later calls in
// every state of the caller (each rounding, flushing, x87 precision) must
// match the caller's own bits, and leave the caller's state as it was.
// This test comes first in the file, so its first team call is the
// process's first.
TEST_F(TeamResults, MembersComputeInTheCallersFloatingPointControl) {
    const uint32_t mxcsr = zvl_test::read_mxcsr();
    const uint16_t x87 = zvl_test::read_x87();
    const struct {
        const char* name;
        int rounding;
        uint32_t mxcsr_flags;  // flush-to-zero, denormals-are-zero
        uint16_t x87_precision;
    } states[] = {
        {"first call, upward", FE_UPWARD, 0, 0x300},
        {"to nearest", FE_TONEAREST, 0, 0x300},
        {"downward", FE_DOWNWARD, 0, 0x300},
        {"toward zero", FE_TOWARDZERO, 0, 0x300},
        {"upward again", FE_UPWARD, 0, 0x300},
        {"flush and denormals are zero", FE_TONEAREST, 0x8040, 0x300},
        {"x87 53-bit precision", FE_TONEAREST, 0, 0x200},
    };
    for (const auto& s : states) {
        fesetround(s.rounding);
        zvl_test::write_mxcsr(zvl_test::read_mxcsr() | s.mxcsr_flags);
        zvl_test::write_x87(static_cast<uint16_t>((zvl_test::read_x87() & ~0x300) | s.x87_precision));
        const uint32_t m = zvl_test::read_mxcsr();
        const uint16_t w = zvl_test::read_x87();
        // Chunks of whole blocks: here only the state may make a difference.
        expect_team_matches_direct(2, 4096, true, true, s.name);
        EXPECT_EQ(zvl_test::read_mxcsr() & 0xe040u, m & 0xe040u) << s.name;
        EXPECT_EQ(zvl_test::read_x87() & 0xf00u, w & 0xf00u) << s.name;
        zvl_test::write_mxcsr(mxcsr);
        zvl_test::write_x87(x87);
    }
}

// Whole arrays give the same bits on any number of threads, and with
// elements that leave the vector path among them.
TEST_F(TeamResults, SameOnAnyNumberOfThreads) {
    for (int threads = 2; threads <= 5; ++threads)
        for (bool special : {false, true})
            expect_team_matches_direct(threads, 10007, special, false,
                                       special ? "with special elements" : "ordinary");
}

// The kernels alone: a split at any offset up to two blocks of the widest
// kernel gives the whole array's bits, except in the listed kernels.
TEST_F(TeamResults, SplitAnywhereMatchesWholeArray) {
    constexpr int kN = 1000;
    for (const Row* f : arithmetic_rows()) {
        for (int col = 0; col < 3; ++col) {
            if (split_dependent(*f, cpu_, col)) continue;
            const Kernel k = f->kernel(cpu_, col);
            for (bool special : {false, true}) {
                const Args x = arguments(*f, kN, special);
                Results whole(*f, kN), split(*f, kN);
                run_part(*f, k, x, 0, kN, &whole);
                for (int at = 1; at <= 33; ++at) {
                    run_part(*f, k, x, 0, at, &split);
                    run_part(*f, k, x, at, kN - at, &split);
                    EXPECT_EQ(first_difference(whole, split), -1)
                        << f->exported << " " << zvl_test::kTags[col] << ", split at " << at
                        << (special ? ", with special elements" : "");
                }
            }
        }
    }
}

}  // namespace
