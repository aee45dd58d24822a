#include "tools/report/timing.h"

#include <algorithm>
#include <ctime>
#include <vector>

namespace zvl_tools {
namespace {

double thread_seconds() {
    timespec t;
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &t);
    return static_cast<double>(t.tv_sec) + 1e-9 * static_cast<double>(t.tv_nsec);
}

__attribute__((noinline)) void scale_loop(const void*, int32_t n, const double* a, const double*,
                                          double* r) {
    for (int32_t i = 0; i < n; ++i) r[i] = 1.5 * a[i];
}

}  // namespace

double copy_ns_per_element(size_t n, int runs) {
    std::vector<double> a(n, 1.25), r(n, 0.0);
    return ns_per_element(Callable{scale_loop, nullptr}, n, a.data(), nullptr, r.data(), runs,
                          n <= 1000 ? 0.002 : 0);
}

double ns_per_element(const Callable& fn, size_t n, const double* a, const double* b, double* r,
                      int runs, double min_run_seconds) {
    const int32_t len = static_cast<int32_t>(n);
    // Warm caches and branch predictors, and size the run.
    double t0 = thread_seconds();
    fn(len, a, b, r);
    double one = thread_seconds() - t0;
    if (one <= 0) one = 1e-7;
    const long calls = std::max(1L, static_cast<long>(min_run_seconds / one));
    std::vector<double> per(runs);
    for (double& p : per) {
        t0 = thread_seconds();
        for (long c = 0; c < calls; ++c) fn(len, a, b, r);
        p = (thread_seconds() - t0) / (static_cast<double>(calls) * static_cast<double>(n));
    }
    std::nth_element(per.begin(), per.begin() + runs / 2, per.end());
    return per[runs / 2] * 1e9;
}

}  // namespace zvl_tools
