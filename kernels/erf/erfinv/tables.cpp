// The ErfInv tables, shared by the kernels of every cpu type.
#include "kernels/erf/erfinv/data.h"

namespace zvl {

alignas(64) const double kErfInvTableHA[212][17] = {
#include "kernels/erf/erfinv/table_ha.inc"
};
alignas(64) const double kErfInvTableLA[212][12] = {
#include "kernels/erf/erfinv/table_la.inc"
};
alignas(64) const double kErfInvTableEP[848][4] = {
#include "kernels/erf/erfinv/table_ep.inc"
};

}  // namespace zvl
