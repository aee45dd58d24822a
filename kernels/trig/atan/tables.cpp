// The Atan and Atan2 tables, as tools/atan_tables.cpp writes them.
#include "kernels/trig/atan/data.h"

namespace zvl {

alignas(64) const double kAtanBreakTable[2 * 114] = {
#include "kernels/trig/atan/table_break.inc"
};
alignas(64) const double kAtanAnchors[2 * 10] = {
#include "kernels/trig/atan/table_anchors.inc"
};

}  // namespace zvl
