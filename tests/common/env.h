// Test helpers: set and remove environment variables so that the library's
// own environment reads see them (on Windows, GetEnvironmentVariableA).
#pragma once

namespace zvl_test {

// An empty value leaves the variable defined and empty.
void set_env(const char* name, const char* value);
void unset_env(const char* name);

}  // namespace zvl_test
