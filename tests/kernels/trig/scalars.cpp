#include "tests/kernels/trig/scalars.h"

namespace zvl_test {

extern const TrigScalars trig_scalars_ex, trig_scalars_e7, trig_scalars_u8, trig_scalars_y8,
    trig_scalars_h8, trig_scalars_e9;

const TrigScalars& trig_scalars(int cpu) {
    static const TrigScalars* const all[] = {&trig_scalars_ex, &trig_scalars_e7,
                                             &trig_scalars_u8, &trig_scalars_y8,
                                             &trig_scalars_h8, &trig_scalars_e9};
    return *all[cpu];
}

}  // namespace zvl_test
