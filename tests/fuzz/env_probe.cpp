// The fresh process of one environment fuzz case: a program that uses the
// library as any other would, with the case's variables in its environment.
// It reads the thread controls, then makes calls long enough to go parallel
// wherever the machine and the settings allow, and checks what they
// compute. Exits 0 when all holds, 1 with a line on stderr otherwise.
#include <cerrno>
#include <cmath>
#include <cstdio>
#include <vector>

#include "zvl.h"

namespace {

int fail(const char* what, int value) {
    std::fprintf(stderr, "env probe: %s (%d)\n", what, value);
    return 1;
}

}  // namespace

int main() {
    // The most threads a call may fork (the library's documented ceiling).
    constexpr int kCeiling = 1024;
    const int all = ZEL_Get_Max_Threads();
    const int zvl = ZEL_Domain_Get_Max_Threads(ZEL_ZVL);
    const int dynamic = ZEL_Get_Dynamic();
    if (all < 1 || all > kCeiling) return fail("ZEL_Get_Max_Threads out of range", all);
    if (zvl < 1 || zvl > kCeiling) return fail("ZEL_Domain_Get_Max_Threads out of range", zvl);
    if (dynamic != 0 && dynamic != 1) return fail("ZEL_Get_Dynamic not 0 or 1", dynamic);

    int n = 20000;
    std::vector<double> a(static_cast<size_t>(n)), r(a.size());
    for (int i = 0; i < n; ++i) a[static_cast<size_t>(i)] = 1.0 + i % 7;
    VDSQRT(&n, a.data(), r.data());
    for (int i = 0; i < n; ++i)
        if (r[static_cast<size_t>(i)] != std::sqrt(a[static_cast<size_t>(i)]))
            return fail("VDSQRT wrong at", i);

    // One zero divisor, last: reported on whichever thread has the last chunk,
    // and errno comes back to this one (the default mode sets errno).
    a[a.size() - 1] = 0.0;
    errno = 0;
    VDINV(&n, a.data(), r.data());
    if (!std::isinf(r[a.size() - 1])) return fail("VDINV of zero not infinite", 0);
    if (errno != 34) return fail("errno after VDINV of zero", errno);
    return 0;
}
