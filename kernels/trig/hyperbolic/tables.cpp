// TanhRows, as tools/hyperbolic_tables.cpp writes it.
#include "kernels/trig/hyperbolic/data.h"

namespace zvl {

alignas(64) const double kTanhRows[31 * 16] = {
#include "kernels/trig/hyperbolic/table_tanh_rows.inc"
};

}  // namespace zvl
