// Scalar double-word steps of the trigonometric routines. The SIMD
// double-word helpers of kernels/common work on the vector wrappers; these
// are the plain scalar forms the callouts and TrigReduce need, written here
// until kernels/common has scalar ones.
//
// Included by the per-cpu units inside their unnamed namespace (see
// kernels/common/isa.h), so each cpu type has its own copy.
#pragma once

namespace {

// s + e == a + b exactly, whatever the magnitudes (Knuth's two-sum).
inline void two_sum(double a, double b, double& s, double& e) {
    s = a + b;
    const double bb = s - a;
    e = (a - (s - bb)) + (b - bb);
}

}  // namespace
