// Twins (kernels/common/twin.h) for the complex vector kernels: ZPerTwin<F>
// runs a family's lanes<V> on twins where a block holds whole twins, and on
// single vectors otherwise.
#pragma once

#include <cstdint>
#include <type_traits>

#include "kernels/common/isa.h"
#include "kernels/common/loops/zblock.h"
#include "kernels/common/twin.h"

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wignored-attributes"

namespace {

// The seed of seeds.h on both vectors.
template <class T>
ZVL_TWIN_INLINE inline TwinOf<T> rsqrt_seed(TwinOf<T> x) {
    return {rsqrt_seed(x.a), rsqrt_seed(x.b)};
}

// ZPerVector (loops/zblock.h) on twins where they fit the block.
template <class F>
struct ZPerTwin {
    using form = forms::ZBlock;
    template <class V, int W>
    static uint32_t block(const double* x, const double* y, double* re, double* im) {
        constexpr bool twins = W % (2 * V::lanes) == 0;
        return ZPerVector<F>::template block<std::conditional_t<twins, Twin<V>, V>, W>(x, y, re, im);
    }
    static void element(ZVLComplex16* r, const ZVLComplex16* z) { F::scalar(r, z); }
};

}  // namespace

#pragma GCC diagnostic pop
