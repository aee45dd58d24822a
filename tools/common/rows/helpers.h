// What the measuring rows of every subsystem write their rows with:
// interval spreads, baseline loops and peers.
#pragma once

#include <cmath>

#include "tools/common/functions.h"
#include "tools/common/rng.h"

namespace zvl_tools {
namespace {

constexpr double kInf = HUGE_VAL;
constexpr double kNaN = __builtin_nan("");
constexpr double kMin = 0x1p-1022;                   // smallest normal
constexpr double kTiny = 0x1p-1074;                  // smallest subnormal
constexpr double kMax = 0x1.fffffffffffffp+1023;     // largest finite

constexpr Interval lin(double lo, double hi) { return {lo, hi, Spread::Linear}; }
constexpr Interval lg(double lo, double hi) { return {lo, hi, Spread::Log}; }
constexpr Interval lg2(double lo, double hi) { return {lo, hi, Spread::LogBoth}; }
constexpr Interval kNone = {0, 0, Spread::Linear};

// Loops for the baselines: glibc's scalar function, or the operation itself.
#define ZT_LOOP1(name, expr)                                                \
    void name(int32_t n, const double* a, const double*, double* r) {       \
        for (int32_t i = 0; i < n; ++i) {                                   \
            const double x = a[i];                                          \
            r[i] = (expr);                                                  \
        }                                                                   \
    }
#define ZT_LOOP2(name, expr)                                                \
    void name(int32_t n, const double* a, const double* b, double* r) {     \
        for (int32_t i = 0; i < n; ++i) {                                   \
            const double x = a[i], y = b[i];                                \
            r[i] = (expr);                                                  \
        }                                                                   \
    }

#define ZT_AVX __attribute__((target("avx")))

constexpr Peer local(const char* label, LoopFn loop, Isa isa = Isa::Base) {
    return {label, PeerLib::Local, nullptr, 1, isa, loop};
}
constexpr Peer mvec(const char* label, const char* symbol, int width, Isa isa) {
    return {label, PeerLib::Mvec, symbol, width, isa, nullptr};
}
// up_to: SLEEF's documented domain where it is narrower than the doubles.
constexpr Peer sleef(const char* label, const char* symbol, int width, Isa isa, double up_to = 0) {
    return {label, PeerLib::Sleef, symbol, width, isa, nullptr, up_to};
}

}  // namespace
}  // namespace zvl_tools
