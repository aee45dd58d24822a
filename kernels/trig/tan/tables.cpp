// The tables of the tangent, as tools/trig_tables.cpp writes them.
#include "kernels/trig/tan/data.h"

#include "base/bits.h"

namespace zvl {

alignas(64) const double TanTable32[32 * 20] = {
#include "kernels/trig/tan/table_tan32.inc"
};

alignas(64) const double TanTable16[4 + 16 * 2] = {
#include "kernels/trig/tan/table_tan16.inc"
};

}  // namespace zvl
