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

namespace __gnu_cxx {
void __freeres(); // of the C++ runtime, which no header declares
} // namespace __gnu_cxx

namespace {

/// The C++ runtime inside of the library keeps 72 KB to throw exceptions from when there is no
/// memory, and gives them back only when told to: a host that loads and unloads the library would
/// lose them each time. Made before all other objects, so that it ends after them.
struct EndOfRuntime {
    EndOfRuntime() = default;
    EndOfRuntime(const EndOfRuntime&) = delete;
    EndOfRuntime& operator=(const EndOfRuntime&) = delete;
    ~EndOfRuntime() { __gnu_cxx::__freeres(); }
};
__attribute__((init_priority(101))) const EndOfRuntime kEndOfRuntime;

} // namespace
#endif

/// The library has nothing to do when threads come and go, so it asks not to be told.
BOOL WINAPI DllMain(HINSTANCE module, DWORD reason, LPVOID) {
    if (reason == DLL_PROCESS_ATTACH)
        DisableThreadLibraryCalls(module);
    return TRUE;
}
