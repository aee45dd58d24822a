// Test helpers: read and set the SSE and x87 control words directly, to
// enter a kernel in an unusual floating-point state and see what it leaves.
#pragma once

#include <cstdint>

namespace zvl_test {

inline uint32_t read_mxcsr() {
    uint32_t w;
    __asm__ __volatile__("stmxcsr %0" : "=m"(w));
    return w;
}
inline void write_mxcsr(uint32_t w) { __asm__ __volatile__("ldmxcsr %0" : : "m"(w)); }
inline uint16_t read_x87() {
    uint16_t w;
    __asm__ __volatile__("fnstcw %0" : "=m"(w));
    return w;
}
inline void write_x87(uint16_t w) { __asm__ __volatile__("fldcw %0" : : "m"(w)); }

}  // namespace zvl_test
