// The table of TrigReduce, as tools/trig_tables.cpp writes it.
#include "kernels/trig/trig_reduce/data.h"

namespace zvl {

alignas(64) const double FourOverPiWords[53] = {
#include "kernels/trig/trig_reduce/table_four_over_pi.inc"
};

}  // namespace zvl
