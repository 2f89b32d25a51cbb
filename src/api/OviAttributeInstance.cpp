#include "ovi/attribute_instance.h"

#include "api/Barrier.h"
#include "api/ElementChecks.h"
#include "instances/AttributeInstance.h"

using namespace Kor;
using namespace Kor::Api;

void* OviAttributeInstance_GetValue(OviAttributeInstance* attribute) {
    return With<AttributeInstance>(attribute, static_cast<void*>(nullptr),
                                   [](AttributeInstance& self) { return self.HandOutValue(); });
}

void OviAttributeInstance_SetValue(OviAttributeInstance* attribute, const void* value) {
    const char* function = __func__;
    With<AttributeInstance>(attribute, [=](AttributeInstance& self) {
        if (!RefusesElements(self.GetType(), value, self.GetDimension(), function))
            self.SetValue(value);
    });
}

const char* OviAttributeInstance_GetBinding(OviAttributeInstance* attribute) {
    return With<AttributeInstance>(attribute, "",
                                   [](AttributeInstance& self) { return self.GetBinding(); });
}

void OviAttributeInstance_SetBinding(OviAttributeInstance* attribute, const char* binding) {
    With<AttributeInstance>(attribute,
                            [binding](AttributeInstance& self) { self.SetBinding(Text(binding)); });
}

int OviAttributeInstance_GetDimension(OviAttributeInstance* attribute) {
    return With<AttributeInstance>(attribute, 0,
                                   [](AttributeInstance& self) { return self.GetDimension(); });
}

bool OviAttributeInstance_SetDimension(OviAttributeInstance* attribute, int dimension) {
    return With<AttributeInstance>(attribute, false, [dimension](AttributeInstance& self) {
        return self.SetDimension(dimension);
    });
}
