#include "support/SceneLook.h"

#include <cstring>
#include <map>
#include <string>
#include <string_view>

#include "instances/AssetManager.h"
#include "instances/AttributeInstance.h"
#include "support/Finding.h"
#include "support/Touch.h"

using namespace Kor;

namespace {

/// Enough for what the tests of one input can bear; larger scenes are asked in part.
constexpr size_t kMaxMembers = 200;

} // namespace

SceneLook::SceneLook() {
    const AssetManager& assets = *AssetManager::Get();
    for (int i = 0; i < assets.GetAssetCount(); ++i)
        instances_.push_back(assets.GetAssetAt(i));
    for (size_t i = 0; i < instances_.size() && members_.size() < kMaxMembers; ++i) {
        for (PropertyInstance* member : instances_[i]->GetPropertyInstances()) {
            members_.push_back(member);
            const auto* attribute = ObjectCast<AttributeInstance>(member);
            if (!attribute || !attribute->GetStoredValue() || !attribute->HoldsInstances())
                continue;
            for (int j = 0; j < attribute->GetDimension(); ++j) {
                if (Instance* nested = attribute->GetNestedInstance(j))
                    instances_.push_back(nested);
            }
        }
    }
}

void SceneLook::AskAll() const {
    for (PropertyInstance* member : members_)
        AskPropertyInstance(reinterpret_cast<OviPropertyInstance*>(static_cast<Object*>(member)));
    for (Instance* instance : instances_)
        AskInstance(reinterpret_cast<OviInstance*>(static_cast<Object*>(instance)));
}

void SceneLook::Visit(void (*visit)(AttributeInstance&)) const {
    for (PropertyInstance* member : members_) {
        if (auto* attribute = ObjectCast<AttributeInstance>(member))
            visit(*attribute);
    }
}

bool SceneLook::DependsOnTheOrderOfTemplates() const {
    for (const Instance* instance : instances_) {
        std::map<std::string_view, const Property*> properties;
        for (int i = 0; i < instance->GetTemplateCount(); ++i) {
            for (const Property* property : instance->GetTemplateAt(i)->GetInstanceProperties()) {
                if (properties.emplace(property->GetFullName(), property).first->second != property)
                    return true;
            }
        }
    }
    return false;
}

void SceneLook::AskName(OviNamedObject* object) {
    Touch(OviNamedObject_GetName(object));
    Touch(OviNamedObject_GetComment(object));
    OviNamedObject_GetLabel(object, "en_GB");
    OviNamedObject_GetDescription(object, nullptr);
    OviObject_GetLockable(object);
}

void SceneLook::AskInstance(OviInstance* instance) {
    AskName(instance);
    const int count = OviInstance_GetTemplateCount(instance);
    for (int i = 0; i < count; ++i) {
        OviTemplate* implemented = OviInstance_GetTemplateAt(instance, i);
        Expect(OviInstance_GetTemplate(instance, OviType_GetFullName(implemented)) != nullptr,
               "an implemented template is not found by its name");
    }
    OviInstance_IsValid(instance);
    OviInstance_GetParentAsset(instance);
    OviInstance_GetParentPropertyInstance(instance);
    AskForms(instance);
}

/// The packed form and the XML, into memory of exactly the size they may use.
void SceneLook::AskForms(OviInstance* instance) {
    constexpr uint32_t kSize = 256;
    constexpr uint32_t kAlignmentRoom = 64;
    OviInstance_GetSize(instance);
    std::vector<char> packed(kSize + kAlignmentRoom);
    const uint32_t used = OviInstance_WriteToBinary(instance, packed.data(), kSize);
    Expect(used <= kSize + kAlignmentRoom, "packing uses more than there is");
    uint32_t size = 0;
    OviInstance_WriteToXML(instance, 0, &size, nullptr);
    std::vector<char> text(size);
    OviInstance_WriteToXML(instance, 0, &size, text.data());
    Expect(std::strlen(text.data()) + 1 == text.size(), "the size of the XML is wrong");
}

void SceneLook::AskPropertyInstance(OviPropertyInstance* member) {
    AskName(member);
    OviPropertyInstance_GetProperty(member);
    OviPropertyInstance_GetTemplate(member);
    OviPropertyInstance_IsBindingLocked(member);
    OviPropertyInstance_IsValueLocked(member);
    if (OviObject_ImplementsClass(member, OVI_CLASS_ATTRIBUTE_INSTANCE))
        AskAttribute(static_cast<OviAttributeInstance*>(member));
    if (OviObject_ImplementsClass(member, OVI_CLASS_GEOMETRY_INSTANCE))
        AskGeometry(static_cast<OviGeometryInstance*>(member));
    if (OviObject_ImplementsClass(member, OVI_CLASS_ANCHOR_INSTANCE)) {
        Touch(OviAnchorInstance_GetAttachedAnchor(static_cast<OviAnchorInstance*>(member)));
        OviPropertyInstance* found[4] = {};
        OviAnchorProperty_GetCompatibleAnchors(
            static_cast<OviAnchorProperty*>(OviPropertyInstance_GetProperty(member)), 4, found);
    }
    OviPropertyInstance_IsValid(member);
}

void SceneLook::AskAttribute(OviAttributeInstance* attribute) {
    auto* property = static_cast<OviAttributeProperty*>(OviPropertyInstance_GetProperty(attribute));
    OviType* type = OviAttributeProperty_GetType(property);
    void* value = OviAttributeInstance_GetValue(attribute);
    const int dimension = OviAttributeInstance_GetDimension(attribute);
    Touch(OviAttributeInstance_GetBinding(attribute));
    OviAttributeProperty_IsValueValid(property, dimension == 0 ? nullptr : value);
    OviType_GetValueSize(type, value, dimension);
    Expect(OviType_CompareValues(type, value, value, dimension) == 0,
           "a value differs from itself");
}

void SceneLook::AskGeometry(OviGeometryInstance* geometry) {
    for (int i = 0; OviNodeInstance* node = OviGeometryInstance_GetNodeInstanceAt(geometry, i); ++i)
        AskPropertyInstance(node);
}
