// The tables of Sin, Cos and SinCos, held once for every cpu type
// (tools/trig_tables.cpp writes them).
//
// A four-word row belongs to the angle B = i * step and holds the value f(B)
// as a high word (the double nearest) and a low word (the rest, 30
// significant bits), and the derivative f'(B) as a high word, the power of
// two nearest to it (or zero), so that the remainder times it is exact, and
// a low word, the rest. The orders differ by table, as their kernels load
// them.
#pragma once

namespace zvl {

// Step pi/256, 512 rows (one turn), row N mod 512: cos low, cos high, sin
// high, sin low.
extern const double SinTable512[512 * 4];
// Step pi/256: -sin low, cos high, cos low, -sin high.
extern const double CosTable512[512 * 4];
// Step pi/32, 64 rows: cos low, sin high, sin low, cos high. The callouts
// read it at (N + 16q + c) mod 64, a quarter turn on (c = 16) for the
// cosine.
extern const double SinCosTable64[64 * 4];
// Step pi/32: -sin low, cos high, cos low, -sin high, for the vector
// kernels of Cos, which take no quarter-turn offset.
extern const double CosTable64[64 * 4];
// Step pi/32: cos B and sin B, the doubles nearest.
extern const double SinCosPairs64[64 * 2];
// Step pi/64, 128 rows: cos low, sin high, sin low, cos high.
extern const double SinCosTable128[128 * 4];

}  // namespace zvl
