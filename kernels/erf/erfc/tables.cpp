// The Erfc tables, shared by the kernels of every cpu type.
#include "kernels/erf/erfc/data.h"

namespace zvl {

alignas(64) const double kErfcTable[28][16] = {
#include "kernels/erf/erfc/table_poly.inc"
};
alignas(64) const double kErfcStarts[28][2] = {
#include "kernels/erf/erfc/table_starts.inc"
};
alignas(64) const double kErfcExp[128][2] = {
#include "kernels/erf/erfc/table_exp.inc"
};

}  // namespace zvl
