#include "tests/common/capture.h"

#include <cstdio>
#include <fcntl.h>
#include <unistd.h>

namespace zvl_test {

std::string capture_stdout(const std::function<void()>& f) {
    std::fflush(stdout);
    char path[] = "/tmp/zvl_capture_XXXXXX";
    const int fd = mkstemp(path);
    const int saved = dup(1);
    dup2(fd, 1);
    f();
    std::fflush(stdout);
    dup2(saved, 1);
    close(saved);
    std::string out;
    lseek(fd, 0, SEEK_SET);
    char buf[4096];
    ssize_t k;
    while ((k = read(fd, buf, sizeof buf)) > 0) out.append(buf, static_cast<size_t>(k));
    close(fd);
    unlink(path);
    return out;
}

}  // namespace zvl_test
