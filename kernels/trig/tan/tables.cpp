// The table of the scalar tangent, as tools/trig_tables.cpp writes it.
#include "kernels/trig/tan/data.h"

#include "base/bits.h"

namespace zvl {

alignas(64) const double TanTable32[32 * 20] = {
#include "kernels/trig/tan/table_tan32.inc"
};

}  // namespace zvl
