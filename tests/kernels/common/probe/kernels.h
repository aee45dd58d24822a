// The probe families' kernels (see plan.h).
#pragma once

#include "kernels/common/unit.h"
#include "kernels/common/x87.h"
#include "tests/kernels/common/probe/plan.h"

namespace {

// Lanes at or above 2^1000 in magnitude, and NaNs, go to the callout; a NaN
// reports ZVL_STATUS_ERRDOM.
constexpr double kProbeBound = 0x1p1000;

struct ProbeCallout {
    static int32_t callout(const double* x, double* y, double* u) {
        *y = *x + 1.0;
        *u = *x * 2.0;
        return *x != *x ? ZVL_STATUS_ERRDOM : 0;
    }
};

struct ProbeLanes : ProbeCallout {
    using form = forms::Lanes;
    template <class V, int NV>
    static void block(const typename V::vd* x, typename V::vd* y, typename V::vd* u) {
        for (int j = 0; j < NV; ++j) {
            y[j] = V::add(x[j], V::splat(1.0));
            u[j] = V::mul(x[j], V::splat(2.0));
        }
    }
    static void one(double x, double* y, double* u) {
        *y = x + 1.0;
        *u = x * 2.0;
    }
    template <class V>
    static typename V::vd special(typename V::vd x) {
        return not_mask<V>(V::lt(abs_of<V>(x), V::splat(kProbeBound)));
    }
};

struct ProbeMask : ProbeCallout {
    using form = forms::BlockMask;
    template <class V, int NV>
    static uint32_t block(const typename V::vd* x, typename V::vd* y, typename V::vd* u) {
        uint32_t mask = 0;
        ProbeLanes::block<V, NV>(x, y, u);
        for (int j = 0; j < NV; ++j)
            mask |= static_cast<uint32_t>(V::mask(ProbeLanes::special<V>(x[j]))) << (j * V::lanes);
        return mask;
    }
};

// 3x in the vector pass, x^2 beside it; their sum in extended precision.
struct ProbeBatchT {
    using form = forms::Batch;
    static constexpr int kWords = 2;
    template <class V>
    static void prepare(const double* x, double* t, int count) {
        for (int i = 0; i < count; i += V::lanes) {
            const typename V::vd v = V::load(x + i);
            V::store(t + i, V::mul(v, V::splat(3.0)));
            V::store(t + kBatch + i, V::mul(v, v));
        }
    }
    static uint64_t finish(const double* x, const double* t, double* y, int count) {
        uint64_t refused = 0;
        for (int i = 0; i < count; ++i) {
            y[i] = to_double(ext(t[i]) + t[kBatch + i]);
            if (x[i] != x[i]) refused |= uint64_t{1} << i;
        }
        return refused;
    }
    static int32_t callout(const double* x, double* y) {
        *y = *x + *x;
        return ZVL_STATUS_ERRDOM;
    }
};

struct ProbeThin {
    using form = forms::Thin;
    static void element(ZVLComplex16* y, const ZVLComplex16* x) {
        const Ext re = x->real, im = x->imag;
        y->real = to_double(re * re - im * im);
        y->imag = to_double(2 * re * im);
    }
};

// 2x by the vector code; parts from 2^100 up (and NaNs) to the scalar
// routine, 4x.
struct ProbeZLanes {
    template <class V>
    static int lanes(typename V::vd x, typename V::vd y, typename V::vd& re, typename V::vd& im) {
        const typename V::vd bound = V::splat(0x1p100);
        const typename V::vd ok = V::and_(V::lt(abs_of<V>(x), bound), V::lt(abs_of<V>(y), bound));
        re = V::add(x, x);
        im = V::add(y, y);
        return V::mask(ok) ^ ((1 << V::lanes) - 1);
    }
    static void scalar(ZVLComplex16* y, const ZVLComplex16* x) {
        y->real = 4 * x->real;
        y->imag = 4 * x->imag;
    }
};

using ProbeFamily = PlannedFamily<zvl::plans::Probe, D12Shape, Letter<'A', ProbeLanes>, Letter<'B', ProbeMask>>;
using ProbeBatchFamily = PlannedFamily<zvl::plans::ProbeBatch, D1Shape, Letter<'T', ProbeBatchT>>;
using ZProbeFamily = PlannedFamily<zvl::plans::zProbe, Shape<1, 1, ZVLComplex16>, Letter<'Z', ProbeThin>,
                                   Letter<'V', ZPerVector<ProbeZLanes>>>;

}  // namespace

ZVL_KERNELS_D12(Probe, ProbeFamily)
ZVL_KERNELS_D1(ProbeBatch, ProbeBatchFamily)
ZVL_KERNELS_Z1(Probe, ZProbeFamily)
