#include "tests/common/capture.h"

#include <cstdio>
#include <fcntl.h>

#ifdef _WIN32
#define WIN32_LEAN_AND_MEAN
#include <io.h>
#include <windows.h>
#else
#include <unistd.h>
#endif

namespace zvl_test {
namespace {

// A new temporary file opened for reading and writing; its path goes to
// path[0..259]. Binary on Windows, so that a line feed written through the
// redirected standard output stays one byte.
int open_temporary(char (&path)[260]) {
#ifdef _WIN32
    char dir[MAX_PATH];
    if (GetTempPathA(MAX_PATH, dir) == 0 || GetTempFileNameA(dir, "zvl", 0, path) == 0) return -1;
    return _open(path, _O_RDWR | _O_BINARY | _O_TRUNC);
#else
    std::snprintf(path, sizeof path, "/tmp/zvl_capture_XXXXXX");
    return mkstemp(path);
#endif
}

}  // namespace

std::string capture_stdout(const std::function<void()>& f) {
    std::fflush(stdout);
    char path[260];
    const int fd = open_temporary(path);
    if (fd < 0) return "capture_stdout: no temporary file";
    const int saved = dup(1);
    dup2(fd, 1);
    f();
    std::fflush(stdout);
    dup2(saved, 1);
    close(saved);
    std::string out;
    lseek(fd, 0, SEEK_SET);
    char buf[4096];
    int k;
    while ((k = static_cast<int>(read(fd, buf, sizeof buf))) > 0) out.append(buf, static_cast<size_t>(k));
    close(fd);
    std::remove(path);
    return out;
}

}  // namespace zvl_test
