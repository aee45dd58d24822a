// The Pow tables, as tools/pow_tables.cpp writes them.
#include "kernels/explog/pow/data.h"

namespace zvl {

alignas(64) const double pow_table_r[1025] = {
#include "kernels/explog/pow/table_r.inc"
};
alignas(64) const double pow_table_log2[2 * 1025] = {
#include "kernels/explog/pow/table_log2.inc"
};

}  // namespace zvl
