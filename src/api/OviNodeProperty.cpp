#include "ovi/node_property.h"

#include "api/Barrier.h"
#include "instances/CompatibleAnchors.h"
#include "instances/PropertyInstance.h"
#include "schema/AnchorProperty.h"

using namespace Kor;
using namespace Kor::Api;

namespace {

OviNamedObject* const kNoAnchorType = nullptr;

} // namespace

OviNodeProperty* OviNodeProperty_New(const char* name, uint32_t version) {
    return Guard(static_cast<OviNodeProperty*>(nullptr), [=] {
        return To<OviNodeProperty>(new NodeProperty(Text(name), static_cast<int>(version)));
    });
}

const char* OviNodeProperty_GetAncestor(OviNodeProperty* property) {
    return With<NodeProperty>(property, "", [](NodeProperty& self) { return self.GetAncestor(); });
}

void OviNodeProperty_SetAncestor(OviNodeProperty* property, const char* ancestor) {
    With<NodeProperty>(property,
                       [ancestor](NodeProperty& self) { self.SetAncestor(Text(ancestor)); });
}

int OviNodeProperty_GetAncestorDistance(OviNodeProperty* property) {
    return With<NodeProperty>(property, 0,
                              [](NodeProperty& self) { return self.GetAncestorDistance(); });
}

void OviNodeProperty_SetAncestorDistance(OviNodeProperty* property, int distance) {
    With<NodeProperty>(property,
                       [distance](NodeProperty& self) { self.SetAncestorDistance(distance); });
}

OviAnchorProperty* OviAnchorProperty_New(const char* name, uint32_t version) {
    return Guard(static_cast<OviAnchorProperty*>(nullptr), [=] {
        return To<OviAnchorProperty>(new AnchorProperty(Text(name), static_cast<int>(version)));
    });
}

bool OviAnchorProperty_IsChild(OviAnchorProperty* property) {
    return With<AnchorProperty>(property, false,
                                [](AnchorProperty& self) { return self.IsChild(); });
}

void OviAnchorProperty_SetChild(OviAnchorProperty* property, bool child) {
    With<AnchorProperty>(property, [child](AnchorProperty& self) { self.SetChild(child); });
}

int OviAnchorProperty_AddAnchorType(OviAnchorProperty* property, OviNamedObject* type) {
    return WithBoth<AnchorProperty, NamedObject>(
        property, type, -1,
        [](AnchorProperty& self, NamedObject& added) { return self.AddAnchorType(&added); });
}

int OviAnchorProperty_RemoveAnchorType(OviAnchorProperty* property, OviNamedObject* type) {
    return WithBoth<AnchorProperty, NamedObject>(
        property, type, -1,
        [](AnchorProperty& self, NamedObject& removed) { return self.RemoveAnchorType(&removed); });
}

int OviAnchorProperty_GetAnchorTypeCount(OviAnchorProperty* property) {
    return With<AnchorProperty>(property, 0,
                                [](AnchorProperty& self) { return self.GetAnchorTypeCount(); });
}

OviNamedObject* OviAnchorProperty_GetAnchorTypeAt(OviAnchorProperty* property, int index) {
    return With<AnchorProperty>(property, kNoAnchorType, [index](AnchorProperty& self) {
        return To<OviNamedObject>(self.GetAnchorTypeAt(index));
    });
}

OviNamedObject* OviAnchorProperty_GetAnchorType(OviAnchorProperty* property, const char* name) {
    return With<AnchorProperty>(property, kNoAnchorType, [name](AnchorProperty& self) {
        return To<OviNamedObject>(self.GetAnchorType(Text(name)));
    });
}

int OviAnchorProperty_GetCompatibleAnchors(OviAnchorProperty* property, int capacity,
                                           OviPropertyInstance** found) {
    return With<AnchorProperty>(property, 0, [=](AnchorProperty& self) {
        // Handles are the addresses of the objects themselves.
        return FindCompatibleAnchors(self, capacity, reinterpret_cast<PropertyInstance**>(found));
    });
}
