// The entry point of the shared library on Windows.

#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#include <windows.h>

#ifdef __MINGW32__
// MinGW's runtime brings thread storage into every DLL, and the system goes on telling a DLL with
// thread storage of every thread. This definition keeps the runtime's part out. The library stores
// nothing by thread; what is lost is that a thread in which memory ran out leaves some bytes
// behind.
extern "C" {
extern const PIMAGE_TLS_CALLBACK __dyn_tls_init_callback;
const PIMAGE_TLS_CALLBACK __dyn_tls_init_callback = nullptr;
}
#endif

/// The library has nothing to do when threads come and go, so it asks not to be told.
BOOL WINAPI DllMain(HINSTANCE module, DWORD reason, LPVOID) {
    if (reason == DLL_PROCESS_ATTACH)
        DisableThreadLibraryCalls(module);
    return TRUE;
}
