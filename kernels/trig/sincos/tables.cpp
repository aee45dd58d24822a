// The tables of Sin, Cos and SinCos, as tools/trig_tables.cpp writes them.
#include "kernels/trig/sincos/data.h"

namespace zvl {

alignas(64) const double SinTable512[512 * 4] = {
#include "kernels/trig/sincos/table_sin512.inc"
};
alignas(64) const double CosTable512[512 * 4] = {
#include "kernels/trig/sincos/table_cos512.inc"
};
alignas(64) const double SinCosTable64[64 * 4] = {
#include "kernels/trig/sincos/table_sincos64.inc"
};
alignas(64) const double CosTable64[64 * 4] = {
#include "kernels/trig/sincos/table_cos64.inc"
};
alignas(64) const double SinCosPairs64[64 * 2] = {
#include "kernels/trig/sincos/table_pairs64.inc"
};
alignas(64) const double SinCosTable128[128 * 4] = {
#include "kernels/trig/sincos/table_sincos128.inc"
};

}  // namespace zvl
