// The bodies through the Sse41 wrapper, built with SSE4.1 (cpu types 3, 4).
#include "kernels/common/isa.h"
#include "tests/kernels/trig/run_bodies.h"

namespace zvl_test {

void add_sse41_bodies(std::vector<BodyRun>& out) {
    if (!__builtin_cpu_supports("sse4.1")) return;
#define ZVL_TRIG_V Sse41
#define ZVL_TRIG_ISA "Sse41"
    ZVL_TRIG_VECTOR_BODIES(ZVL_TRIG_ADD)
}

}  // namespace zvl_test
