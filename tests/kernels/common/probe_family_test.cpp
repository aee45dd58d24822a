// The probe families (probe/plan.h) built as the library builds a family:
// six units from one kernels.h, entries for every slot, and kernel sets
// resolved from the plan. They run the loop forms and shapes that no
// library family runs yet: the scratch form with two outputs, the batch
// form with its extended pass, the thin complex form, and forwards across
// cpu types.
#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "kernels/common/fp_guard.h"
#include "kernels/common/kernel_types.h"
#include "kernels/common/sets.h"
#include "tests/common/rows.h"
#include "tests/kernels/common/probe/plan.h"

ZVL_DECLARE_FAMILY(KernelD12, Probe)
ZVL_DECLARE_FAMILY(KernelD1, ProbeBatch)
ZVL_DECLARE_ZFAMILY(KernelZ1, Probe)

namespace zvl_test {
namespace {

constexpr auto kProbe = zvl::resolve(zvl::plans::Probe, ZVL_ALL_KERNELS(KernelD12, Probe));
constexpr auto kProbeBatch = zvl::resolve(zvl::plans::ProbeBatch, ZVL_ALL_KERNELS(KernelD1, ProbeBatch));
constexpr auto kZProbe = zvl::resolve(zvl::plans::zProbe, ZVL_ALL_ZKERNELS(KernelZ1, Probe));
constexpr auto kProbeAll = ZVL_ALL_KERNELS(KernelD12, Probe);

std::string name_of(zvl::Where w) {
    return std::string("zel_zvl_core_") + kCpuLabels[w.cpu] + "_zvl_dProbe_" + kTags[w.col];
}

std::vector<double> arguments(int n) {
    std::vector<double> a(static_cast<size_t>(n));
    for (int i = 0; i < n; ++i) a[static_cast<size_t>(i)] = std::ldexp(1.0 + 0.37 * i, i % 40 - 20) * (i % 3 ? 1 : -1);
    return a;
}

// Every slot: the set holds the kernel its forward names, the forwarding
// entry gives that kernel's bits, and the two outputs are right, remainder
// and all; a NaN element reports under the name of the kernel that ran, a
// huge one goes to the callout silently, and a replaced result stays.
TEST(ProbeFamily, OneInTwoOutBySlot) {
    for (int cpu = 0; cpu < kCpuTypes; ++cpu) {
        if (!cpu_runs(cpu)) continue;
        for (int col = 0; col < 3; ++col) {
            SCOPED_TRACE(std::string(kCpuLabels[cpu]) + " " + kTags[col]);
            const zvl::Where w = zvl::plans::Probe.target(cpu, col);
            ASSERT_EQ(kProbe.k[cpu][col], kProbeAll.k[w.cpu][w.col]);
            for (int n : {0, 1, 3, 7, 16, 17, 33, 100}) {
                std::vector<double> a = arguments(n), y(a.size()), u(a.size()), y2(a.size()), u2(a.size());
                if (n > 5) a[5] = __builtin_nan(""), a[4] = 0x1p1020;
                ReportLog log(true);
                kProbe.k[cpu][col](n, a.data(), y.data(), u.data());
                for (int i = 0; i < n; ++i) {
                    if (i == 5) {
                        EXPECT_EQ(y[5], kReplaced);
                        EXPECT_TRUE(std::isnan(u[5]));
                        continue;
                    }
                    EXPECT_EQ(y[i], a[i] + 1.0) << i;
                    EXPECT_EQ(u[i], a[i] * 2.0) << i;
                }
                ASSERT_EQ(log.list().size(), n > 5 ? 1u : 0u);
                if (n > 5) {
                    EXPECT_EQ(log.list()[0].index, 5);
                    EXPECT_EQ(log.list()[0].status, ZVL_STATUS_ERRDOM);
                    EXPECT_EQ(log.list()[0].name, name_of(w));
                }
                // the slot's own symbol, a forward or not, gives the same
                log.clear();
                kProbeAll.k[cpu][col](n, a.data(), y2.data(), u2.data());
                for (int i = 0; i < n; ++i) EXPECT_TRUE(same(y2[i], y[i]) && same(u2[i], u[i])) << i;
            }
        }
    }
}

// The extended pass sums 3x and x^2 once, in batches of 64 with a tail;
// its x87 and MXCSR guard leaves both control words as they were.
TEST(ProbeFamily, BatchWithExtendedPass) {
    for (int cpu = 0; cpu < kCpuTypes; ++cpu) {
        if (!cpu_runs(cpu)) continue;
        SCOPED_TRACE(kCpuLabels[cpu]);
        for (int n : {0, 1, 5, 64, 65, 130, 200}) {
            std::vector<double> a = arguments(n), y(a.size());
            if (n > 70) a[70] = __builtin_nan("");
            ReportLog log;
            const uint16_t cw = read_x87_cw();
            const uint32_t csr = read_mxcsr();
            write_x87_cw(0x027f);
            write_mxcsr((csr & ~0x6000u) | 0x6000u);
            kProbeBatch.k[cpu][zvl::kHA](n, a.data(), y.data());
            EXPECT_EQ(read_x87_cw(), 0x027f);
            EXPECT_EQ(read_mxcsr() & 0xffc0u, ((csr & ~0x6000u) | 0x6000u) & 0xffc0u);
            write_x87_cw(cw);
            write_mxcsr(csr);
            for (int i = 0; i < n; ++i) {
                if (i == 70) continue;
                const long double want = static_cast<long double>(a[i] * 3.0) + a[i] * a[i];
                EXPECT_EQ(y[i], static_cast<double>(want)) << i;
            }
            ASSERT_EQ(log.list().size(), n > 70 ? 1u : 0u);
            if (n > 70) EXPECT_EQ(log.list()[0].index, 70);
            if (n > 70) EXPECT_TRUE(std::isnan(y[70]));
        }
    }
}

// One scalar routine per element, the output the input array itself.
TEST(ProbeFamily, ComplexThinLoop) {
    for (int cpu = 0; cpu < kCpuTypes; ++cpu) {
        if (!cpu_runs(cpu) || zvl::plans::zProbe.at(cpu, 0).loop != zvl::Loop::thin) continue;
        for (int col = 0; col < 3; ++col) {
            std::vector<ZVLComplex16> z = {{1.0, 2.0}, {-3.0, 0.5}, {0x1p-600, 0x1p-600}, {1e300, 1e300}};
            const std::vector<ZVLComplex16> x = z;
            kZProbe.k[cpu][col](static_cast<int32_t>(z.size()), z.data(), z.data());
            for (size_t i = 0; i < z.size(); ++i) {
                const long double re = x[i].real, im = x[i].imag;
                EXPECT_EQ(z[i].real, static_cast<double>(re * re - im * im)) << i;
                EXPECT_EQ(z[i].imag, static_cast<double>(2 * re * im)) << i;
            }
            kZProbe.k[cpu][col](0, nullptr, nullptr);
        }
    }
}

// The block form: every count up to three blocks and one left over, in
// place; the refused elements (a part from 2^100 up, a NaN), wherever they
// fall in a block or the remainder, alone go to the scalar routine, and the
// repeated last element of a remainder is never stored.
TEST(ProbeFamily, ComplexBlockLoop) {
    for (int cpu : {4, 5}) {
        if (!cpu_runs(cpu)) continue;
        for (int col = 0; col < 3; ++col)
            for (int n = 0; n <= 13; ++n) {
                std::vector<ZVLComplex16> z(static_cast<size_t>(n) + 1, ZVLComplex16{-7.0, -7.0}), x;
                for (int i = 0; i < n; ++i) {
                    const double big = i % 5 == 2 ? 0x1p100 : i % 7 == 6 ? NAN : 1.0;
                    z[static_cast<size_t>(i)] = i % 2 ? ZVLComplex16{0.5 + i, big} : ZVLComplex16{big, -1.0 - i};
                }
                x = z;
                kZProbe.k[cpu][col](n, z.data(), z.data());
                for (int i = 0; i < n; ++i) {
                    const ZVLComplex16 a = x[static_cast<size_t>(i)], y = z[static_cast<size_t>(i)];
                    const bool scalar = i % 5 == 2 || i % 7 == 6;
                    const double f = scalar ? 4 : 2;
                    EXPECT_TRUE(same(y.real, f * a.real) && same(y.imag, f * a.imag))
                        << "cpu " << cpu << " n " << n << " element " << i;
                }
                EXPECT_EQ(z[static_cast<size_t>(n)].real, -7.0) << "past the end, n " << n;
            }
        kZProbe.k[cpu][0](0, nullptr, nullptr);
    }
}

}  // namespace
}  // namespace zvl_test
