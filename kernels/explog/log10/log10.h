// Log10: r = log10(a).
//
// Two accuracy levels (formulas in body.h): HA, restart form under
// the full MXCSR guard, and EP, restart form under the x87 guard, at every
// cpu type; W = 4 (W = 2 at type 0). The LA slot runs the HA kernel at
// every cpu type, and at type 0 so does the EP slot; there is no LA kernel.
//
// Refused elements go to the callout: in HA zero, denormals, negatives,
// infinities and NaNs (one signed compare of the high word); in EP, which
// scales denormals in line, all but 0 < x < inf. Statuses: ZVL_STATUS_SING
// for zeros, ZVL_STATUS_ERRDOM for negatives and -inf; +inf, NaN and
// denormals report nothing. log10(1) is +0: the row holding 1 has R = 1
// and T = 0.
//
// Included by the explog units inside their own context (see unit.h).
#pragma once

#include "kernels/common/unit.h"
#include "kernels/explog/log10/body.h"

namespace {

template <int Cpu>
inline void log10_ha(int32_t n, const double* a, double* r, const char* name) {
    MxcsrGuard<0> g;
    restart_1i<Cpu, V, Cpu == 0 ? 2 : 4, RestartLog<Log10HA, PartsD>>(n, a, r, name);
}

template <int Cpu>
inline void log10_ep(int32_t n, const double* a, double* r, const char* name) {
    static_assert(Cpu >= 1, "type 0 runs HA");
    X87Guard<0x200> g;
    restart_1i<Cpu, V, 4, RestartLog<Log10EP, SplitScaled>>(n, a, r, name);
}

}  // namespace

ZVL_DEFINE_D1(Log10, HA, log10_ha<kCpu>)
#if ZVL_CPU_INDEX >= 1
ZVL_DEFINE_D1(Log10, 26, log10_ep<kCpu>)
#endif
