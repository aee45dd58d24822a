// The complex logarithm's table, as tools/complex_tables.cpp writes it.
#include "kernels/complex/ln/data.h"

namespace zvl {

alignas(64) const double ln_table[65][3] = {
#include "kernels/complex/ln/table_ln.inc"
};

}  // namespace zvl
