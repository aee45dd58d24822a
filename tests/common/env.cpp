// setenv and unsetenv for Windows test programs (see posix_env.h).
#define WIN32_LEAN_AND_MEAN
#include <windows.h>

#include <cstdlib>

#include "tests/common/posix_env.h"

// The C runtime's _putenv_s with an empty value removes the variable from
// both environments, so the process's is written last.
extern "C" int setenv(const char* name, const char* value, int overwrite) {
    if (!overwrite && GetEnvironmentVariableA(name, nullptr, 0) != 0) return 0;
    if (_putenv_s(name, value) != 0) return -1;
    return SetEnvironmentVariableA(name, value) ? 0 : -1;
}

extern "C" int unsetenv(const char* name) {
    _putenv_s(name, "");
    return SetEnvironmentVariableA(name, nullptr) || GetLastError() == ERROR_ENVVAR_NOT_FOUND ? 0 : -1;
}
