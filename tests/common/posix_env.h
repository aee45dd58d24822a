/* Test support on Windows: the POSIX setenv and unsetenv, which MinGW's C
 * runtime lacks, so that tests set environment variables the same way on
 * both systems. The build includes this header in every test source of a
 * Windows build (tests/CMakeLists.txt). Both change the process environment,
 * which the library reads with GetEnvironmentVariableA, and the C runtime's
 * copy; an empty value leaves the variable defined and empty. */
#ifndef ZVL_TEST_POSIX_ENV_H
#define ZVL_TEST_POSIX_ENV_H

#ifdef __cplusplus
extern "C" {
#endif

int setenv(const char *name, const char *value, int overwrite);
int unsetenv(const char *name);

#ifdef __cplusplus
}
#endif

#endif
