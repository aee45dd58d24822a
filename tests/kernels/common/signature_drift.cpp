// Compiled, not run: a family whose member has drifted from the signature
// its form names must not compile (test signature_drift.bad, built with
// ZVL_DRIFT), while the same family as written compiles
// (signature_drift.good), so the failure is the drift's and nothing else's.
#define ZVL_CPU_INDEX 0
#include "kernels/common/unit.h"

namespace {

struct Probe {
    using form = forms::BlockAt;
    template <class V, int NV>
#ifdef ZVL_DRIFT
    static int block_at(const double*, typename V::vd* x, typename V::vd* y) {  // `const` dropped
#else
    static int block_at(const double*, const typename V::vd* x, typename V::vd* y) {
#endif
        for (int j = 0; j < NV; ++j) y[j] = x[j];
        return 0;
    }
    template <class V>
    static int special(typename V::vd) {
        return 0;
    }
    static double one(double x) { return x; }
    static int32_t callout(const double* x, double* y) {
        *y = *x;
        return 0;
    }
};

}  // namespace

extern "C" void zel_zvl_core_ex_zvl_dProbe_HA(int32_t n, const double* a, double* r) {
    scratch_loop<0, V, 4, Probe, D1Shape>(Probe{}, n, a, nullptr, r, nullptr, "probe");
}
