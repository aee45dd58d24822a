// The complex exponential's tables, as tools/complex_tables.cpp writes them.
#include "kernels/complex/exp/data.h"

namespace zvl {

alignas(64) const double exp2_table[64][2] = {
#include "kernels/complex/exp/table_exp2.inc"
};
alignas(64) const double sincos_table[64][4] = {
#include "kernels/complex/exp/table_sincos.inc"
};

}  // namespace zvl
