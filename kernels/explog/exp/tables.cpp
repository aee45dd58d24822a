// The exp tables of powers of two, as tools/exp_tables.cpp writes them.
#include "kernels/explog/exp/data.h"

namespace zvl {

alignas(64) const double exp_table_a[2 * 64] = {
#include "kernels/explog/exp/table_a.inc"
};
alignas(64) const double exp_table_b[1024] = {
#include "kernels/explog/exp/table_b.inc"
};
alignas(64) const double exp_table_c[2048] = {
#include "kernels/explog/exp/table_c.inc"
};
alignas(64) const double exp_table_d[2 * 128] = {
#include "kernels/explog/exp/table_d.inc"
};
alignas(64) const double exp_table_e[128] = {
#include "kernels/explog/exp/table_e.inc"
};

}  // namespace zvl
