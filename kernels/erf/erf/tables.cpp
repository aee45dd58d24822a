// The Erf tables, shared by the kernels of every cpu type.
#include "base/bits.h"
#include "kernels/erf/erf/data.h"

namespace zvl {

alignas(64) const double kErfTableHA[46][16] = {
#include "kernels/erf/erf/table_ha.inc"
};
alignas(64) const double kErfTableLA[24][16] = {
#include "kernels/erf/erf/table_la.inc"
};
alignas(64) const double kErfTableEP[24][16] = {
#include "kernels/erf/erf/table_ep.inc"
};

namespace {
constexpr double kAll = from_bits(0xffffffffffffffff);
constexpr double kSign = from_bits(0x8000000000000000);
}  // namespace

// An infinity keeps only its sign and takes 1.0; a NaN comes back whole.
alignas(64) const double kErfClasses[4][4] = {
    {kAll, 0.0, 0.0, 0.0},   // small: the small path
    {0.0, kAll, 0.0, 0.0},   // normal: the main path
    {0.0, 0.0, kSign, kAll},  // infinite: 1.0 with the sign of x
    {0.0, 0.0, kAll, 0.0},   // NaN: x, bit for bit
};

}  // namespace zvl
