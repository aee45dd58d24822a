#include "kernels/trig/domain.h"

#include "base/bits.h"
#include "kernels/common/fp_guard.h"
#include "zvl.h"

namespace zvl {

__attribute__((noinline, cold)) int32_t domain_error(double* r) {
    *r = from_bits(0xfff8000000000000);
    // Both factors opaque: the compiler takes x * 1 for x otherwise.
    volatile double raised = opaque(from_bits(0x7ff7ffffffffffff)) * opaque(1.0);
    (void)raised;
    return ZVL_STATUS_ERRDOM;
}

}  // namespace zvl
