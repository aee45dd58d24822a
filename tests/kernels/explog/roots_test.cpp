// The roots are this library's own algorithms, with no work shared across a
// block: every element must come out as it does alone, whatever its
// neighbours and whether it falls in a block, the remainder or a callout.
#include <gtest/gtest.h>

#include <random>

#include "frame/kernel_sets.h"
#include "tests/common/capture.h"
#include "tests/common/rows.h"

namespace zvl_test {
namespace {

// Random signs and exponents over the whole range, denormals, the smallest
// normals and a few exact cubes and squares; some fall in blocks beside
// elements that leave the vector path.
std::vector<double> mixed_arguments(int n) {
    std::mt19937_64 gen(3);
    std::vector<double> x(n);
    for (double& v : x) v = from_bits(gen() & 0xffefffffffffffff);
    const double picks[] = {from_bits(0x0010000000000001), from_bits(0x0010000000000000), 8.0, 27.0, 0.25, 1e-310,
                            0.0, -0.0, 1.0, 3.0};
    for (int i = 0; i < n; i += 7) x[i] = picks[(i / 7) % 10];
    return x;
}

TEST(Roots, ElementGivesItsAloneResultInAnyArray) {
    const std::vector<double> x = mixed_arguments(1003);
    const int n = static_cast<int>(x.size());
    for (const char* name : {"VDSQRT", "VDINVSQRT", "VDCBRT", "VDINVCBRT"})
        for (int cpu = 0; cpu < kCpuTypes; ++cpu)
            for (int col : {zvl::kHA, zvl::kLA, zvl::kEP}) {
                if (!cpu_runs(cpu)) continue;
                const Kernel k = row(name).kernel(cpu, col);
                std::vector<double> got(n), alone(n);
                k(n, x.data(), nullptr, got.data(), nullptr);
                int bad = 0;
                for (int i = 0; i < n; ++i) {
                    k(1, &x[i], nullptr, &alone[i], nullptr);
                    if (!same(got[i], alone[i]) && bad++ < 3)
                        ADD_FAILURE() << name << " cpu " << cpu << " col " << col << " element " << i << " x "
                                      << std::hexfloat << x[i] << ": " << got[i] << " in the array, "
                                      << alone[i] << " alone";
                }
            }
}

}  // namespace
}  // namespace zvl_test
