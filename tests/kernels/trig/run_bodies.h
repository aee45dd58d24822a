// Included by each test unit after its wrappers: the runners of bodies.h
// for wrapper V, and the list of bodies as X-macro rows.
#pragma once

#include "kernels/trig/asin_acos/asin_acos.h"
#include "kernels/trig/atan/atan2.h"
#include "kernels/trig/hyperbolic/sinh_cosh.h"
#include "kernels/trig/hyperbolic/tanh.h"
#include "kernels/trig/inverse_hyperbolic/acosh.h"
#include "kernels/trig/inverse_hyperbolic/asinh.h"
#include "kernels/trig/inverse_hyperbolic/atanh.h"
#include "tests/kernels/trig/bodies.h"

namespace {

// Blocks of NV vectors (2: the kernels' two vectors at a time), then one
// element at a time.
template <class V, class F, int NV = 1>
void run1(int n, const double* a, double* r, int32_t* st) {
    constexpr int W = NV * V::lanes;
    int i = 0;
    for (; i + W <= n; i += W) {
        typename V::vd x[NV], y[NV];
        for (int j = 0; j < NV; ++j) x[j] = V::load(a + i + j * V::lanes);
        F::template block<V, NV>(x, y);
        int special = 0;
        for (int j = 0; j < NV; ++j) {
            special |= lane_bits<V>(F::template special<V>(x[j])) << (j * V::lanes);
            V::store(r + i + j * V::lanes, y[j]);
        }
        for (int l = 0; l < W; ++l)
            st[i + l] = special >> l & 1 ? F::callout(a + i + l, r + i + l) : 0;
    }
    for (; i < n; ++i) {
        r[i] = F::one(a[i]);
        st[i] = lane_bits<Scalar>(F::template special<Scalar>(a[i])) ? F::callout(a + i, r + i) : 0;
    }
}

template <class V, class F, int NV = 1>
void run2(int n, const double* a, const double* b, double* r, int32_t* st) {
    constexpr int W = NV * V::lanes;
    int i = 0;
    for (; i + W <= n; i += W) {
        typename V::vd x[NV], z[NV], y[NV];
        for (int j = 0; j < NV; ++j) {
            x[j] = V::load(a + i + j * V::lanes);
            z[j] = V::load(b + i + j * V::lanes);
        }
        F::template block<V, NV>(x, z, y);
        int special = 0;
        for (int j = 0; j < NV; ++j) {
            special |= lane_bits<V>(F::template special<V>(x[j], z[j])) << (j * V::lanes);
            V::store(r + i + j * V::lanes, y[j]);
        }
        for (int l = 0; l < W; ++l)
            st[i + l] = special >> l & 1 ? F::callout(a + i + l, b + i + l, r + i + l) : 0;
    }
    for (; i < n; ++i) {
        r[i] = F::one(a[i], b[i]);
        st[i] = lane_bits<Scalar>(F::template special<Scalar>(a[i], b[i]))
                    ? F::callout(a + i, b + i, r + i)
                    : 0;
    }
}

template <class F>
void element1(int n, const double* a, double* r, int32_t* st) {
    for (int i = 0; i < n; ++i) st[i] = F::element(a + i, r + i);
}

}  // namespace

// The vector bodies, as rows X(fn, mode, form, body, runner).
#define ZVL_TRIG_VECTOR_BODIES(X)              \
    X("atan", "LA", "vector", AtanLA, run1)    \
    X("atan", "EP", "vector", AtanEP, run1)    \
    X("atan", "HA", "vector", AtanHA, run1)    \
    X("atan2", "LA", "vector", Atan2LA, run2)  \
    X("atan2", "EP", "vector", Atan2EP, run2)  \
    X("atan2", "HA", "vector", Atan2HA, run2)  \
    X("atan2", "HA", "older HA", Atan2OlderHA, run2)  \
    X("sinh", "LA", "vector", SinhLA, run1)    \
    X("sinh", "EP", "vector", SinhEP, run1)    \
    X("sinh", "HA", "vector", SinhHA, run1)    \
    X("cosh", "LA", "vector", CoshLA, run1)    \
    X("cosh", "EP", "vector", CoshLA, run1)    \
    X("cosh", "HA", "vector", CoshHA, run1)    \
    X("tanh", "LA", "vector", TanhLA, run1)    \
    X("tanh", "EP", "vector", TanhLA, run1)    \
    X("tanh", "HA", "vector", TanhHA, run1)    \
    X("asin", "LA", "vector", AsinLA, run1)    \
    X("asin", "EP", "vector", AsinLA, run1)    \
    X("asin", "HA", "vector", AsinHA, run1)    \
    X("acos", "LA", "vector", AcosLA, run1)    \
    X("acos", "EP", "vector", AcosLA, run1)    \
    X("acos", "HA", "vector", AcosHA, run1)    \
    X("asinh", "LA", "vector", AsinhLA, run1)  \
    X("asinh", "EP", "vector", AsinhLA, run1)  \
    X("asinh", "HA", "vector", AsinhHA, run1)  \
    X("acosh", "LA", "vector", AcoshLA, run1)  \
    X("acosh", "EP", "vector", AcoshLA, run1)  \
    X("acosh", "HA", "vector", AcoshHA, run1)  \
    X("atanh", "LA", "vector", AtanhLA, run1)  \
    X("atanh", "EP", "vector", AtanhLA, run1)  \
    X("atanh", "HA", "vector", AtanhHA, run1)

// The element-by-element bodies, as rows X(fn, mode, form, body, runner).
#define ZVL_TRIG_ELEMENT_BODIES(X)                               \
    X("atan", "HA", "older HA", AtanOlderHA, element1)           \
    X("atan", "EP", "element EP", AtanEP1, element1)

// Appends the vector bodies for wrapper V to `out` (a std::vector<BodyRun>):
// one vector a block, two (the twins) and four (Tanh's four rounds side by
// side in 256-bit vectors), which must all give the same bits.
#define ZVL_TRIG_ADD(fn, mode, form, F, runner)                                        \
    zvl_trig_add(out, fn, mode, form, ZVL_TRIG_ISA, runner<ZVL_TRIG_V, F>);            \
    zvl_trig_add(out, fn, mode, form, ZVL_TRIG_ISA " twin", runner<ZVL_TRIG_V, F, 2>); \
    zvl_trig_add(out, fn, mode, form, ZVL_TRIG_ISA " quad", runner<ZVL_TRIG_V, F, 4>);

namespace {

inline void zvl_trig_add(std::vector<zvl_test::BodyRun>& out, const char* fn, const char* mode,
                         const char* form, const char* isa, zvl_test::Run1 r1) {
    out.push_back({fn, mode, form, isa, r1, nullptr});
}
inline void zvl_trig_add(std::vector<zvl_test::BodyRun>& out, const char* fn, const char* mode,
                         const char* form, const char* isa, zvl_test::Run2 r2) {
    out.push_back({fn, mode, form, isa, nullptr, r2});
}

}  // namespace
