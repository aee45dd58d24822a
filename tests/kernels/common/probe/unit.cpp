// The probe families' kernels of one cpu type: built six times, each with
// ZVL_CPU_INDEX and that cpu type's instruction set, as a real unit is.
#include "tests/kernels/common/probe/kernels.h"
