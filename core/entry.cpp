// The entry of the Windows library. The run time calls it when the static objects are built, and destroys these itself
// at unload.

#include <windows.h>

extern "C" BOOL WINAPI DllMain(HINSTANCE library, DWORD reason, LPVOID) {
    // There is no state per thread, so nobody need tell the library of threads.
    if (reason == DLL_PROCESS_ATTACH) DisableThreadLibraryCalls(library);
    return TRUE;
}
