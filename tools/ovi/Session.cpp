#include "Session.h"

#include <ovi/ovi.h>

namespace OviTool {

Session::Session() {
    Ovi_Initialize();
}

Session::~Session() {
    Ovi_Terminate();
}

} // namespace OviTool
