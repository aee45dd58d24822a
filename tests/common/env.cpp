#include "tests/common/env.h"

#include <cstdlib>

#ifdef _WIN32
#define WIN32_LEAN_AND_MEAN
#include <windows.h>
#endif

namespace zvl_test {

// On Windows the C runtime keeps its own copy of the environment: both are
// updated, the process's last, since the C runtime's removal of an empty
// value takes the process's variable with it.
#ifdef _WIN32
void set_env(const char* name, const char* value) {
    _putenv_s(name, value);
    SetEnvironmentVariableA(name, value);
}
void unset_env(const char* name) {
    _putenv_s(name, "");
    SetEnvironmentVariableA(name, nullptr);
}
#else
void set_env(const char* name, const char* value) { setenv(name, value, 1); }
void unset_env(const char* name) { unsetenv(name); }
#endif

}  // namespace zvl_test
