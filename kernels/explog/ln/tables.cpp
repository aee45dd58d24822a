// The Ln tables, shared by the kernels of every cpu type.
#include "kernels/explog/ln/data.h"

namespace zvl {

alignas(64) const double ln_table_b[257][4] = {
#include "kernels/explog/ln/table_b.inc"
};

alignas(64) const double ln_table_d[768][4] = {
#include "kernels/explog/ln/table_d.inc"
};

alignas(64) const double ln_table_callout[128][3] = {
#include "kernels/explog/ln/table_callout.inc"
};

}  // namespace zvl
