// The exp tables of powers of two, as tools/exp_tables.cpp writes them.
#include "kernels/explog/exp/data.h"

namespace zvl {

alignas(64) const double kExpTableA[2 * 64] = {
#include "kernels/explog/exp/table_a.inc"
};
alignas(64) const double kExpTableB[1024] = {
#include "kernels/explog/exp/table_b.inc"
};
alignas(64) const double kExpTableC[2048] = {
#include "kernels/explog/exp/table_c.inc"
};
alignas(64) const double kExpTableD[2 * 128] = {
#include "kernels/explog/exp/table_d.inc"
};
alignas(64) const double kExpTableE[128] = {
#include "kernels/explog/exp/table_e.inc"
};

}  // namespace zvl
