// Checks of the complex families through their kernel sets: an element in
// every slot this processor runs, inside a block of ordinary elements and
// alone, against exact expected parts.
#pragma once

#include <gtest/gtest.h>

#include <cmath>
#include <initializer_list>
#include <vector>

#include "frame/kernel_sets.h"
#include "tests/common/rows.h"

namespace zvl_test {

using Z = ZVLComplex16;

// `in` at position 5 of a block of ordinary elements and alone, in every
// slot of the kernel set this processor runs.
template <class Set, class Check>
void every_slot(const Set& set, const Z& in, Check check) {
    for (int cpu = 0; cpu < kCpuTypes; ++cpu) {
        if (!cpu_runs(cpu)) continue;
        for (int col = 0; col < 3; ++col) {
            std::vector<Z> a(11, Z{0.25, -1.5}), r(11);
            a[5] = in;
            set.k[cpu][col](11, a.data(), r.data());
            Z one;
            set.k[cpu][col](1, &in, &one);
            check(r[5], cpu, col);
            check(one, cpu, col);
        }
    }
}

// The same bits, or any NaN where a NaN is wanted.
inline bool equal(double got, double want) { return std::isnan(want) ? std::isnan(got) : same(got, want); }

struct Case {
    Z in, want;
};

template <class Set>
void expect_cases(const Set& set, const char* f, std::initializer_list<Case> cases) {
    for (const Case& c : cases)
        every_slot(set, c.in, [&](const Z& got, int cpu, int col) {
            EXPECT_TRUE(equal(got.real, c.want.real) && equal(got.imag, c.want.imag))
                << f << "(" << c.in.real << ", " << c.in.imag << ") = (" << got.real << ", " << got.imag
                << ") at cpu " << cpu << " column " << col;
        });
}

}  // namespace zvl_test
