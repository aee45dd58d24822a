#include "tests/common/fenced.h"

#ifdef _WIN32
#define WIN32_LEAN_AND_MEAN
#include <windows.h>
#else
#include <sys/mman.h>
#include <unistd.h>
#endif

namespace zvl_test {

#ifdef _WIN32
Fenced::Fenced(size_t pages) : pages_(pages) {
    SYSTEM_INFO info;
    GetSystemInfo(&info);
    page_ = info.dwPageSize;
    base_ = static_cast<char*>(
        VirtualAlloc(nullptr, (pages + 2) * page_, MEM_RESERVE | MEM_COMMIT, PAGE_NOACCESS));
    DWORD old;
    VirtualProtect(base_ + page_, pages * page_, PAGE_READWRITE, &old);
}
Fenced::~Fenced() { VirtualFree(base_, 0, MEM_RELEASE); }
#else
Fenced::Fenced(size_t pages) : page_(static_cast<size_t>(sysconf(_SC_PAGESIZE))), pages_(pages) {
    base_ = static_cast<char*>(
        mmap(nullptr, (pages + 2) * page_, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0));
    mprotect(base_ + page_, pages * page_, PROT_READ | PROT_WRITE);
}
Fenced::~Fenced() { munmap(base_, (pages_ + 2) * page_); }
#endif

}  // namespace zvl_test
