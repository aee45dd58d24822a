// Test helpers: capture what the library prints on standard output, and
// compare doubles by their bits.
#pragma once

#include <cstdint>
#include <cstring>
#include <functional>
#include <string>

namespace zvl_test {

// Runs f with standard output redirected to a temporary file and returns
// everything written there (C stdio and the file descriptor alike).
std::string capture_stdout(const std::function<void()>& f);

inline uint64_t bits_of(double x) {
    uint64_t b;
    std::memcpy(&b, &x, sizeof b);
    return b;
}
inline double from_bits(uint64_t b) {
    double x;
    std::memcpy(&x, &b, sizeof x);
    return x;
}

}  // namespace zvl_test
