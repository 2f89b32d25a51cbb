#include "ovi/type.h"

#include <cstring>

#include "api/Barrier.h"
#include "api/ElementChecks.h"
#include "api/XMLBuffer.h"
#include "formats/XMLTemplateWriter.h"
#include "schema/Template.h"
#include "types/Type.h"

using namespace Kor;
using namespace Kor::Api;

OviType* OviType_GetBaseType(OviType* type) {
    return With<Type>(type, static_cast<OviType*>(nullptr),
                      [](Type& self) { return To<OviType>(self.GetBaseType()); });
}

void OviType_SetBaseType(OviType* type, OviType* base) {
    WithOptional<Type, Type>(type, base, [base](Type& self, Type* given) {
        if (given || !base)
            self.SetBaseType(given);
    });
}

int OviType_GetAlignment(OviType* type) {
    return With<Type>(type, 0, [](Type& self) { return self.GetAlignment(); });
}

void OviType_SetAlignment(OviType* type, int alignment) {
    With<Type>(type, [alignment](Type& self) { self.SetAlignment(alignment); });
}

int OviType_GetValueSize(OviType* type, const void* value, int count) {
    const char* function = __func__;
    return With<Type>(type, 0, [=](Type& self) {
        return RefusesElements(&self, value, count, function) ? 0 : self.GetValueSize(value, count);
    });
}

void* OviType_NewValue(OviType* type, const void* initial, int count) {
    const char* function = __func__;
    return With<Type>(type, static_cast<void*>(nullptr), [=](Type& self) {
        return RefusesElements(&self, initial, count, function) ? nullptr
                                                                : self.NewValue(initial, count);
    });
}

void OviType_DeleteValue(OviType* type, void* value, int count) {
    const char* function = __func__;
    With<Type>(type, [=](Type& self) {
        if (RefusesElements(&self, value, count, function))
            return;
        Template::HandOut(self, value, count);
        self.DeleteValue(value, count);
    });
}

int OviType_CompareValues(OviType* type, const void* a, const void* b, int count) {
    const char* function = __func__;
    return With<Type>(type, 0, [=](Type& self) {
        const bool isRefused = RefusesElements(&self, a, count, function) ||
                               RefusesElements(&self, b, count, function);
        return isRefused ? 0 : self.CompareValues(a, b, count);
    });
}

int OviType_GetValueAsString(OviType* type, const void* value, int index, char* buffer) {
    const char* function = __func__;
    return With<Type>(type, 0, [=](Type& self) {
        if (RefusesElements(&self, value, index + 1, function))
            return 0;
        std::string text;
        const int length = value ? self.GetValueAsString(value, text, index) : 0;
        if (buffer)
            std::memcpy(buffer, text.data(), static_cast<size_t>(length));
        return length;
    });
}

int OviType_GetValueFromString(OviType* type, const char* text, void* value, int index) {
    return With<Type>(
        type, 0, [=](Type& self) { return self.GetValueFromString(Text(text), value, index); });
}

int OviType_WriteValueToBinary(OviType* type, const void* value, int count, void* buffer,
                               int bufferSize) {
    const char* function = __func__;
    return With<Type>(type, 0, [=](Type& self) {
        return RefusesElements(&self, value, count, function)
                   ? 0
                   : self.WriteValueToBinary(value, count, buffer, bufferSize);
    });
}

void OviType_WriteToXML(OviType* type, int indent, int* size, char* buffer) {
    With<Type>(type, [=](Type& self) {
        const auto write = [&self](XMLWriter& writer) { XMLTemplateWriter(writer).WriteAny(self); };
        if (size)
            CopyXMLText(indent, size, buffer, write);
    });
}

const char* OviType_GetFullName(OviType* type) {
    return With<Type>(type, "", [](Type& self) { return self.GetFullName().c_str(); });
}

const char* OviType_GetFileName(OviType* type) {
    return With<Type>(type, "", [](Type& self) { return self.GetFileName().c_str(); });
}

void OviType_SetFileName(OviType* type, const char* fileName) {
    With<Type>(type, [fileName](Type& self) { self.SetFileName(Text(fileName)); });
}

const char* OviType_GetPackageName(OviType* type) {
    return With<Type>(type, "", [](Type& self) { return self.GetPackageName().c_str(); });
}

void OviType_SetPackageName(OviType* type, const char* package) {
    With<Type>(type, [package](Type& self) { self.SetPackageName(Text(package)); });
}

void OviType_SetSearchPath(OviType* type, const char* path) {
    With<Type>(type, [path](Type& self) { self.SetSearchPath(Text(path)); });
}

bool OviType_IsRecycled(OviType* type) {
    return With<Type>(type, false, [](Type& self) { return self.IsRecycled(); });
}
