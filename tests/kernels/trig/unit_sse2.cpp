// The bodies through the Sse2 wrapper, at the baseline instruction set (as
// cpu type 0 builds them), and the element-by-element bodies.
#include "kernels/common/isa.h"
#include "tests/kernels/trig/run_bodies.h"

namespace zvl_test {

void add_sse2_bodies(std::vector<BodyRun>& out) {
#define ZVL_TRIG_V Sse2
#define ZVL_TRIG_ISA "Sse2"
    ZVL_TRIG_VECTOR_BODIES(ZVL_TRIG_ADD)
#undef ZVL_TRIG_V
#undef ZVL_TRIG_ISA
#define ZVL_TRIG_V
#define ZVL_TRIG_ISA "element"
#define ZVL_TRIG_ADD_E(fn, mode, form, F, runner) zvl_trig_add(out, fn, mode, form, ZVL_TRIG_ISA, runner<F>);
    ZVL_TRIG_ELEMENT_BODIES(ZVL_TRIG_ADD_E)
}

}  // namespace zvl_test
