// The inverse hyperbolic functions' logarithm rows, as
// tools/inverse_hyperbolic_tables.cpp writes them.
#include "kernels/trig/inverse_hyperbolic/data.h"

namespace zvl {

alignas(64) const double kInvHypLogRows[129 * 4] = {
#include "kernels/trig/inverse_hyperbolic/table_log_rows.inc"
};

}  // namespace zvl
