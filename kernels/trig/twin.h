// Twins (kernels/common/twin.h) for the inverse trigonometric and
// hyperbolic bodies: the estimate of a pair.
//
// Included by the per-cpu units only, inside an unnamed namespace, as isa.h.
#pragma once

#include <cstdint>

#include "kernels/common/estimates.h"
#include "kernels/common/isa.h"
#include "kernels/common/twin.h"

// A vector type as a template argument loses its attributes in the
// argument's name (TwinOf<__m128d> is TwinOf of the plain vector type);
// the members keep their type, so nothing is lost.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wignored-attributes"

namespace {

// The free estimate functions of a pair.
template <class T>
inline TwinOf<T> rsqrt_estimate(TwinOf<T> x) {
    return {rsqrt_estimate(x.a), rsqrt_estimate(x.b)};
}

}  // namespace

#pragma GCC diagnostic pop
