// Which of the six kernel sets this process runs: 0 (ex) .. 5 (e9).
#pragma once

#include <cstdint>

#include "base/cpuid.h"

namespace zvl {

// The process's cpu type: the override variable if it names one, otherwise
// detection. Decided once; a value outside 0..5 can only come from the
// override and leaves every kernel slot unbound.
uint32_t cpu_type();

// The same with `id` for the processor: the override, when it names a cpu
// type, decides without a single cpuid.
uint32_t cpu_type(CpuidFn id);

// Detection alone, on the given processor.
uint32_t detect_cpu_type(CpuidFn id);

// The override's verdict on a value of the variable (length len, as the
// environment read returned it): the cpu type, or -1 for none.
int32_t cpu_override(const char* value, uint32_t len);

// Name of the override variable, restored from its scrambled store.
void cpu_override_name(char out[32]);

}  // namespace zvl
