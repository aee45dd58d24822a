// The bodies through the Avx wrapper, built with AVX (cpu type 5).
#include "kernels/common/isa.h"
#include "tests/kernels/trig/run_bodies.h"

namespace zvl_test {

void add_avx_bodies(std::vector<BodyRun>& out) {
    if (!__builtin_cpu_supports("avx")) return;
#define ZVL_TRIG_V Avx
#define ZVL_TRIG_ISA "Avx"
    ZVL_TRIG_VECTOR_BODIES(ZVL_TRIG_ADD)
}

}  // namespace zvl_test
