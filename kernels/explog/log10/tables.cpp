// The Log10 table, shared by the kernels of every cpu type.
#include "kernels/explog/log10/data.h"

namespace zvl {

alignas(64) const double log10_table_d[768][4] = {
#include "kernels/explog/log10/table_d.inc"
};

}  // namespace zvl
