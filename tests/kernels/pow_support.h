// Shared by the Pow tests: the kernels by cpu type and column, a fixture per
// kernel, and a callback that records what the error pipeline reports.
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "frame/kernel_sets.h"

namespace pow_test {

inline const char* const kColumn[3] = {"HA", "LA", "EP"};

// Whether this processor runs cpu type `cpu`'s kernels (type 5 needs AVX).
bool runnable(int cpu);

inline zvl::KernelD2 pow_kernel(int cpu, int col) { return zvl::kernels_VDPOW.k[cpu][col]; }
inline zvl::KernelDx powx_kernel(int cpu, int col) { return zvl::kernels_VDPOWX.k[cpu][col]; }

// A test run for each kernel: (cpu type, accuracy column), skipped for cpu
// type 5 on a processor without AVX.
class PerKernel : public testing::TestWithParam<std::tuple<int, int>> {
  protected:
    void SetUp() override {
        if (!runnable(cpu())) GTEST_SKIP() << "cpu type 5 needs AVX";
    }
    int cpu() const { return std::get<0>(GetParam()); }
    int col() const { return std::get<1>(GetParam()); }
};

std::string kernel_name(const testing::TestParamInfo<std::tuple<int, int>>& p);
#define POW_FOR_EACH_KERNEL(suite)                                                         \
    INSTANTIATE_TEST_SUITE_P(AllKernels, suite,                                            \
                             testing::Combine(testing::Range(0, 6), testing::Range(0, 3)), \
                             pow_test::kernel_name)

// Installs a callback that records (status, index) of every report and, when
// `replace` is set, puts `replacement` into the element's result. The mode
// word keeps only the callback action while it lives.
class Reports {
  public:
    explicit Reports(bool replace = false, double replacement = 0.0);
    ~Reports();
    Reports(const Reports&) = delete;
    Reports& operator=(const Reports&) = delete;
    const std::vector<std::pair<int32_t, int32_t>>& list() const;
    void clear();

  private:
    uint32_t saved_mode_;
};

inline uint64_t bits(double x) { return __builtin_bit_cast(uint64_t, x); }
inline double from_bits(uint64_t b) { return __builtin_bit_cast(double, b); }
std::string hex(double x);

}  // namespace pow_test
