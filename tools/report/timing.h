// zvl-report's timer: time per element of one array call, as the median of
// repeated runs, each run long enough for the clock (calls repeated within
// it). It counts the calling thread's processor time, so other processes on
// a shared machine do not inflate it.
#pragma once

#include <cstddef>

#include "tools/common/functions.h"

namespace zvl_tools {

// Nanoseconds per element of fn over n elements.
double ns_per_element(const Callable& fn, size_t n, const double* a, const double* b, double* r,
                      int runs, double min_run_seconds);

// The loop r[i] = 1.5 * a[i] over n elements, timed as above: what moving
// the data alone costs at that size.
double copy_ns_per_element(size_t n, int runs);

}  // namespace zvl_tools
