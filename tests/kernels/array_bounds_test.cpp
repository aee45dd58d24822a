// The root and rounding kernels read and write exactly elements 0 .. n-1:
// the arrays sit against inaccessible pages, so a single access outside
// them faults, and n of zero or below touches nothing at all.
#include <gtest/gtest.h>

#include <vector>

#include "tests/common/fenced.h"
#include "tests/kernels/kernel_access.h"

namespace {

using zvl_test::Fenced;

std::vector<zvl::KernelD1> one_output_kernels(int cpu) {
    std::vector<zvl::KernelD1> v;
    for (const auto* s : {&zvl::kernels_VDSQRT, &zvl::kernels_VDINVSQRT, &zvl::kernels_VDCBRT,
                          &zvl::kernels_VDINVCBRT})
        for (int m = 0; m < 3; ++m) v.push_back(s->k[cpu][m]);
    for (const auto* s : {&zvl::kernels_VDCEIL, &zvl::kernels_VDFLOOR, &zvl::kernels_VDTRUNC,
                          &zvl::kernels_VDROUND, &zvl::kernels_VDRINT, &zvl::kernels_VDNEARBYINT})
        v.push_back(s->k[cpu]);
    return v;
}

TEST(KernelBounds, ExactlyTheElementsAsked) {
    Fenced in(1), out(1), out2(1);
    for (int cpu = 0; cpu < 6; ++cpu) {
        if (!zvl_test::cpu_runs(cpu)) continue;
        for (int n = 1; n <= 40; ++n) {
            double* a = in.end() - n;
            for (int i = 0; i < n; ++i) a[i] = (i % 7 == 3) ? 0.0 : 1.25 + i;  // zeros report
            for (zvl::KernelD1 k : one_output_kernels(cpu)) {
                k(n, a, out.end() - n);
                k(n, in.begin(), out.begin());  // against the low fences
            }
            zvl::kernels_VDMODF.k[cpu](n, a, out.end() - n, out2.end() - n);
        }
    }
}

TEST(KernelBounds, NothingBelowOne) {
    Fenced in(1), out(1);
    for (int cpu = 0; cpu < 6; ++cpu) {
        if (!zvl_test::cpu_runs(cpu)) continue;
        for (int n : {0, -1, -5, -17, INT32_MIN}) {
            for (zvl::KernelD1 k : one_output_kernels(cpu)) {
                k(n, in.begin(), out.begin());
                k(n, in.end(), out.end());
            }
            zvl::kernels_VDMODF.k[cpu](n, in.end(), out.end(), out.end());
        }
    }
}

}  // namespace
