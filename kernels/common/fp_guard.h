// Floating-point control guards: bring the processor into the state a
// kernel's arithmetic needs on entry, and undo exactly what was changed on
// exit. None touches the exception masks. Reloading the saved word on exit
// drops the sticky flags raised inside, but only when the guard changed it.
//
// The control-register accesses are volatile asm with a memory clobber, so
// the compiler keeps the kernel's loads after the entry and its stores
// before the exit.
//
// Also here: opaque(), the value barrier for operations whose flags count.
#pragma once

#include <cstdint>

#include "kernels/common/plan.h"

namespace {

inline uint32_t read_mxcsr() {
    uint32_t w;
    __asm__ __volatile__("stmxcsr %0" : "=m"(w) : : "memory");
    return w;
}
inline void write_mxcsr(uint32_t w) { __asm__ __volatile__("ldmxcsr %0" : : "m"(w) : "memory"); }

inline uint16_t read_x87_cw() {
    uint16_t w;
    __asm__ __volatile__("fnstcw %0" : "=m"(w) : : "memory");
    return w;
}
inline void write_x87_cw(uint16_t w) { __asm__ __volatile__("fldcw %0" : : "m"(w) : "memory"); }

// A value the optimiser cannot see through (a double or a vector), so that
// an operation on it is carried out at run time: x * 1.0 that quiets a
// signalling NaN, a product meant to overflow or underflow and raise its
// flag.
template <class T>
inline T opaque(T v) {
    __asm__("" : "+x"(v));
    return v;
}

struct NoGuard {};

// Full form: flush-to-zero, rounding control and denormals-are-zero
// (mask 0xe040) set to Wanted. Wanted is 0 for arithmetic kernels, a
// directed rounding for some rounding kernels.
template <uint32_t Wanted>
struct MxcsrGuard {
    uint32_t saved;
    bool changed;
    MxcsrGuard() : saved(read_mxcsr()), changed((saved & 0xe040u) != Wanted) {
        if (changed) write_mxcsr((saved & 0xffff1fbfu) | Wanted);
    }
    ~MxcsrGuard() {
        if (changed) write_mxcsr(saved);
    }
    MxcsrGuard(const MxcsrGuard&) = delete;
    MxcsrGuard& operator=(const MxcsrGuard&) = delete;
};

// Short form: round to nearest and no flush-to-zero; denormals-are-zero is
// left as the caller had it.
struct MxcsrShortGuard {
    uint32_t saved;
    bool changed;
    MxcsrShortGuard() : saved(read_mxcsr()), changed((saved & 0xe000u) != 0) {
        if (changed) write_mxcsr(saved & 0xffff1fffu);
    }
    ~MxcsrShortGuard() {
        if (changed) write_mxcsr(saved);
    }
    MxcsrShortGuard(const MxcsrShortGuard&) = delete;
    MxcsrShortGuard& operator=(const MxcsrShortGuard&) = delete;
};

// x87 rounding and precision control (mask 0xf00) set to Wanted: 0x300 for
// round to nearest with the 64-bit significand, 0x200 for 53 bits.
template <uint16_t Wanted>
struct X87Guard {
    uint16_t saved;
    bool changed;
    X87Guard() : saved(read_x87_cw()), changed((saved & 0xf00u) != Wanted) {
        if (changed) write_x87_cw(static_cast<uint16_t>((saved & 0xf0ffu) | Wanted));
    }
    ~X87Guard() {
        if (changed) write_x87_cw(saved);
    }
    X87Guard(const X87Guard&) = delete;
    X87Guard& operator=(const X87Guard&) = delete;
};

// Both the x87 control word at the 64-bit significand and the short MXCSR
// guard, installed in that order and undone in the same order, the x87 word
// first: the frame of the complex vector kernels and of Tan HA.
struct X87ShortGuard {
    uint16_t saved_cw;
    bool cw_changed;
    uint32_t saved_csr;
    bool csr_changed;
    X87ShortGuard()
        : saved_cw(read_x87_cw()), cw_changed((saved_cw & 0xf00u) != 0x300u) {
        if (cw_changed) write_x87_cw(static_cast<uint16_t>((saved_cw & 0xf0ffu) | 0x300u));
        saved_csr = read_mxcsr();
        csr_changed = (saved_csr & 0xe000u) != 0;
        if (csr_changed) write_mxcsr(saved_csr & 0xffff1fffu);
    }
    ~X87ShortGuard() {
        if (cw_changed) write_x87_cw(saved_cw);
        if (csr_changed) write_mxcsr(saved_csr);
    }
    X87ShortGuard(const X87ShortGuard&) = delete;
    X87ShortGuard& operator=(const X87ShortGuard&) = delete;
};

// The guard a plan's cell names.
template <zvl::Guard G>
struct GuardForT;
template <> struct GuardForT<zvl::Guard::none> { using type = NoGuard; };
template <> struct GuardForT<zvl::Guard::mxcsr> { using type = MxcsrGuard<0>; };
template <> struct GuardForT<zvl::Guard::mxcsr_up> { using type = MxcsrGuard<0x4000>; };
template <> struct GuardForT<zvl::Guard::mxcsr_down> { using type = MxcsrGuard<0x2000>; };
template <> struct GuardForT<zvl::Guard::mxcsr_zero> { using type = MxcsrGuard<0x6000>; };
template <> struct GuardForT<zvl::Guard::mxcsr_short> { using type = MxcsrShortGuard; };
template <> struct GuardForT<zvl::Guard::x87_53> { using type = X87Guard<0x200>; };
template <> struct GuardForT<zvl::Guard::x87_64> { using type = X87Guard<0x300>; };
template <> struct GuardForT<zvl::Guard::x87_64_short> { using type = X87ShortGuard; };
template <zvl::Guard G>
using GuardFor = typename GuardForT<G>::type;

}  // namespace
