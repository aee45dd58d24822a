// The Log10 table, shared by the kernels of every cpu type.
#include "kernels/explog/log10/log10_data.h"

namespace zvl {

alignas(64) const double log10_table_d[768][3] = {
#include "kernels/explog/log10/log10_table_d.inc"
};

}  // namespace zvl
