// Whether the OpenMP runtime alone starts under a case's environment: it
// reads OMP_NUM_THREADS too, and some values stop it before the library
// has a say (LLVM's runtime 14 asserts on an empty or blank value and on
// 2147483647, and hangs on some others). The fuzz target runs the library's
// probe only where this one succeeds.
#include <omp.h>

int main() {
    int members = 0;
#pragma omp parallel num_threads(2)
    {
#pragma omp atomic
        ++members;
    }
    return omp_get_max_threads() != 0 && members >= 1 ? 0 : 1;
}
