// The DLL's entry routine. Linked into the DLLs only: code linked straight
// into a program has no entry routine of its own and takes the program case.
#define WIN32_LEAN_AND_MEAN
#include <windows.h>

#include "state/state.h"

extern "C" BOOL WINAPI DllMain(HINSTANCE, DWORD reason, LPVOID) {
    switch (reason) {
        case DLL_PROCESS_ATTACH: zvl::process_attach(); break;
        case DLL_THREAD_DETACH: zvl::thread_detach(); break;
        case DLL_PROCESS_DETACH: zvl::process_detach(); break;
        default: break;  // thread attach: nothing
    }
    return TRUE;
}
