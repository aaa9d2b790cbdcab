// The entry of the Windows library. The run time calls it when the static objects are built, and destroys these itself
// at unload.

#include <windows.h>

// The run time's initialiser of thread-local data. The library has no such data, and may not seem to: the loader goes
// on telling whoever has some of threads.
extern "C" const PIMAGE_TLS_CALLBACK __dyn_tls_init_callback;
const PIMAGE_TLS_CALLBACK __dyn_tls_init_callback = nullptr;

extern "C" BOOL WINAPI DllMain(HINSTANCE library, DWORD reason, LPVOID) {
    // There is no state per thread, so nobody need tell the library of threads.
    if (reason == DLL_PROCESS_ATTACH) DisableThreadLibraryCalls(library);
    return TRUE;
}
