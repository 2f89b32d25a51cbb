#include "ovi/instance.h"

#include <algorithm>
#include <limits>

#include "api/Barrier.h"
#include "api/XMLBuffer.h"
#include "formats/XMLSceneWriter.h"
#include "instances/Asset.h"
#include "instances/Instance.h"
#include "schema/GeometryAlternate.h"

using namespace Kor;
using namespace Kor::Api;

namespace {

OviTemplate* const kNoTemplate = nullptr;
OviPropertyInstance* const kNoPropertyInstance = nullptr;

} // namespace

OviInstance* OviInstance_New(const char* name) {
    return Guard(static_cast<OviInstance*>(nullptr),
                 [name] { return To<OviInstance>(new Instance(Text(name))); });
}

int OviInstance_AddTemplate(OviInstance* instance, OviTemplate* added) {
    return WithBoth<Instance, Template>(instance, added, -1, [](Instance& self, Template& type) {
        return self.AddTemplate(&type, true);
    });
}

OviTemplate* OviInstance_GetTemplate(OviInstance* instance, const char* name) {
    return With<Instance>(instance, kNoTemplate, [name](Instance& self) {
        return To<OviTemplate>(self.GetTemplate(Text(name)));
    });
}

OviTemplate* OviInstance_GetTemplateAt(OviInstance* instance, int index) {
    return With<Instance>(instance, kNoTemplate, [index](Instance& self) {
        return To<OviTemplate>(self.GetTemplateAt(index));
    });
}

int OviInstance_GetTemplateCount(OviInstance* instance) {
    return With<Instance>(instance, 0, [](Instance& self) { return self.GetTemplateCount(); });
}

int OviInstance_RemoveTemplate(OviInstance* instance, OviTemplate* removed) {
    return WithBoth<Instance, Template>(instance, removed, -1, [](Instance& self, Template& type) {
        return self.RemoveTemplate(&type, true);
    });
}

int OviInstance_UpdateTemplate(OviInstance* instance, OviTemplate* old) {
    return WithBoth<Instance, Template>(instance, old, -1, [](Instance& self, Template& type) {
        return self.UpdateTemplate(&type, true);
    });
}

OviPropertyInstance* OviInstance_GetPropertyInstance(OviInstance* instance, const char* fullName,
                                                     bool create) {
    return With<Instance>(instance, kNoPropertyInstance, [=](Instance& self) {
        return To<OviPropertyInstance>(self.GetPropertyInstance(Text(fullName), create));
    });
}

bool OviInstance_IsPropertyInstanceValid(OviInstance* instance, const char* fullName) {
    return With<Instance>(instance, false, [fullName](Instance& self) {
        return self.IsPropertyInstanceValid(Text(fullName));
    });
}

bool OviInstance_IsValid(OviInstance* instance) {
    return With<Instance>(instance, false, [](Instance& self) { return self.IsValid(); });
}

uint32_t OviInstance_GetSize(OviInstance* instance) {
    return With<Instance>(instance, uint32_t(0), [](Instance& self) { return self.GetSize(); });
}

uint32_t OviInstance_WriteToBinary(OviInstance* instance, void* buffer, uint32_t bufferSize) {
    return With<Instance>(instance, uint32_t(0), [=](Instance& self) {
        return buffer ? self.WriteToBinary(buffer, bufferSize) : 0u;
    });
}

OviAsset* OviInstance_GetParentAsset(OviInstance* instance) {
    return With<Instance>(instance, static_cast<OviAsset*>(nullptr),
                          [](Instance& self) { return To<OviAsset>(self.GetParentAsset()); });
}

OviPropertyInstance* OviInstance_GetParentPropertyInstance(OviInstance* instance) {
    return With<Instance>(instance, kNoPropertyInstance, [](Instance& self) {
        return To<OviPropertyInstance>(self.GetParentPropertyInstance());
    });
}

void OviInstance_WriteToXML(OviInstance* instance, uint32_t indent, uint32_t* size, char* buffer) {
    With<Instance>(instance, [=](Instance& self) {
        const auto levels =
            std::min(indent, static_cast<uint32_t>(std::numeric_limits<int>::max()));
        const auto write = [&self](XMLWriter& writer) {
            XMLSceneWriter(writer).WriteInstance(self);
        };
        if (size)
            CopyXMLText(static_cast<int>(levels), size, buffer, write);
    });
}

OviProperty* OviPropertyInstance_GetProperty(OviPropertyInstance* propertyInstance) {
    return With<PropertyInstance>(
        propertyInstance, static_cast<OviProperty*>(nullptr), [](PropertyInstance& self) {
            Property* property = self.GetProperty();
            auto* alternate = ObjectCast<GeometryAlternate>(property);
            return alternate ? HandOut<OviProperty>(alternate) : To<OviProperty>(property);
        });
}

OviTemplate* OviPropertyInstance_GetTemplate(OviPropertyInstance* propertyInstance) {
    return With<PropertyInstance>(propertyInstance, kNoTemplate, [](PropertyInstance& self) {
        return To<OviTemplate>(self.GetTemplate());
    });
}

bool OviPropertyInstance_IsValid(OviPropertyInstance* propertyInstance) {
    return With<PropertyInstance>(propertyInstance, false,
                                  [](PropertyInstance& self) { return self.IsValid(); });
}

bool OviPropertyInstance_IsBindingLocked(OviPropertyInstance* propertyInstance) {
    return With<PropertyInstance>(propertyInstance, false,
                                  [](PropertyInstance& self) { return self.IsBindingLocked(); });
}

bool OviPropertyInstance_IsValueLocked(OviPropertyInstance* propertyInstance) {
    return With<PropertyInstance>(propertyInstance, false,
                                  [](PropertyInstance& self) { return self.IsValueLocked(); });
}

bool OviPropertyInstance_SetBindingLocked(OviPropertyInstance* propertyInstance, bool locked) {
    return With<PropertyInstance>(propertyInstance, false, [locked](PropertyInstance& self) {
        return self.SetBindingLocked(locked);
    });
}

bool OviPropertyInstance_SetValueLocked(OviPropertyInstance* propertyInstance, bool locked) {
    return With<PropertyInstance>(propertyInstance, false, [locked](PropertyInstance& self) {
        return self.SetValueLocked(locked);
    });
}
