#include "ovi/attribute_property.h"

#include "api/Barrier.h"
#include "api/ElementChecks.h"
#include "schema/AttributeProperty.h"
#include "types/Type.h"

using namespace Kor;
using namespace Kor::Api;

namespace {

void* const kNoValue = nullptr;

bool RefusesElements(const AttributeProperty& property, const void* value, const char* function) {
    const Type* type = property.GetType();
    return Api::RefusesElements(type, value, type ? type->GetDimension() : 0, function);
}

} // namespace

OviAttributeProperty* OviAttributeProperty_New(const char* name, uint32_t version) {
    return Guard(static_cast<OviAttributeProperty*>(nullptr), [=] {
        return To<OviAttributeProperty>(
            new AttributeProperty(Text(name), static_cast<int>(version)));
    });
}

OviType* OviAttributeProperty_GetType(OviAttributeProperty* property) {
    return With<AttributeProperty>(
        property, static_cast<OviType*>(nullptr),
        [](AttributeProperty& self) { return To<OviType>(self.GetType()); });
}

bool OviAttributeProperty_SetType(OviAttributeProperty* property, OviType* type) {
    return WithOptional<AttributeProperty, Type>(
        property, type, false, [type](AttributeProperty& self, Type* given) {
            return given || !type ? self.SetType(given) : false;
        });
}

void* OviAttributeProperty_GetDefaultValue(OviAttributeProperty* property) {
    return With<AttributeProperty>(property, kNoValue, [](AttributeProperty& self) {
        return self.HandOut(self.GetDefaultValue());
    });
}

void OviAttributeProperty_SetDefaultValue(OviAttributeProperty* property, void* value) {
    const char* function = __func__;
    With<AttributeProperty>(property, [=](AttributeProperty& self) {
        if (RefusesElements(self, value, function))
            return;
        self.SetDefaultValue(value);
        self.HandOut(value);
    });
}

void* OviAttributeProperty_GetMinValue(OviAttributeProperty* property) {
    return With<AttributeProperty>(property, kNoValue, [](AttributeProperty& self) {
        return self.HandOut(self.GetMinValue());
    });
}

void OviAttributeProperty_SetMinValue(OviAttributeProperty* property, void* value) {
    const char* function = __func__;
    With<AttributeProperty>(property, [=](AttributeProperty& self) {
        if (RefusesElements(self, value, function))
            return;
        self.SetMinValue(value);
        self.HandOut(value);
    });
}

void* OviAttributeProperty_GetMaxValue(OviAttributeProperty* property) {
    return With<AttributeProperty>(property, kNoValue, [](AttributeProperty& self) {
        return self.HandOut(self.GetMaxValue());
    });
}

void OviAttributeProperty_SetMaxValue(OviAttributeProperty* property, void* value) {
    const char* function = __func__;
    With<AttributeProperty>(property, [=](AttributeProperty& self) {
        if (RefusesElements(self, value, function))
            return;
        self.SetMaxValue(value);
        self.HandOut(value);
    });
}

bool OviAttributeProperty_IsValueValid(OviAttributeProperty* property, const void* value) {
    const char* function = __func__;
    return With<AttributeProperty>(property, false, [=](AttributeProperty& self) {
        return !RefusesElements(self, value, function) && self.IsValueValid(value);
    });
}

bool OviAttributeProperty_IsReference(OviAttributeProperty* property) {
    return With<AttributeProperty>(property, false,
                                   [](AttributeProperty& self) { return self.IsReference(); });
}

void OviAttributeProperty_SetReference(OviAttributeProperty* property, bool reference) {
    With<AttributeProperty>(property,
                            [reference](AttributeProperty& self) { self.SetReference(reference); });
}

const char* OviAttributeProperty_GetAutoBind(OviAttributeProperty* property) {
    return With<AttributeProperty>(property, "",
                                   [](AttributeProperty& self) { return self.GetAutoBind(); });
}

void OviAttributeProperty_SetAutoBind(OviAttributeProperty* property, const char* text) {
    With<AttributeProperty>(property,
                            [text](AttributeProperty& self) { self.SetAutoBind(Text(text)); });
}
