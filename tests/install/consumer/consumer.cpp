// The smallest host in C++. An exception of its own passes through it, although the library, which
// lets none out, may bring a C++ runtime of its own.
#include <iostream>
#include <stdexcept>
#include <string>

#include "all-headers.h"

namespace {

std::string NameOf(OviNamedObject* object) {
    if (!object) {
        throw std::invalid_argument("no object");
    }
    return OviNamedObject_GetName(object);
}

bool IsRefused(OviNamedObject* object) {
    try {
        return NameOf(object).empty();
    } catch (const std::invalid_argument&) {
        return true;
    }
}

} // namespace

int main() {
    Ovi_Initialize();
    OviAsset* stool = OviAssetManager_NewAsset("stool");
    const bool right = NameOf(stool) == "stool" && IsRefused(nullptr);
    std::cout << Ovi_GetVersion() << '\n';
    Ovi_Terminate();
    return right ? 0 : 1;
}
