// The part of the scene listener that reads attributes with their values, nodes, anchors, geometry.

#include "formats/XMLInstanceListener.h"

#include <utility>

#include "formats/AttributeTexts.h"
#include "formats/Quoted.h"
#include "instances/AnchorInstance.h"
#include "instances/GeometryInstance.h"
#include "instances/Instance.h"
#include "xml/XMLAttributes.h"

namespace Kor {

// -- property instances ---------------------------------------------------------------------------

PropertyInstance* XMLInstanceListener::OpenPropertyInstance() const {
    return open_.IsEmpty() ? nullptr : open_.Top().property;
}

AttributeInstance* XMLInstanceListener::OpenAttribute() const {
    return open_.IsEmpty() ? nullptr : open_.Top().attribute;
}

PropertyInstance* XMLInstanceListener::FindPropertyInstance(const char* element,
                                                            const XMLAttributes& attributes) {
    const auto composed = [element](const char* text) { return std::string("<") + element + text; };
    const char* property = attributes.Find("property");
    if (open_.IsEmpty()) {
        Error(composed("> must occur inside a <asset> element"));
        return nullptr;
    }
    if (!property) {
        Error(composed("> element must have an 'property' attribute"));
        return nullptr;
    }
    Instance* instance = open_.Top().instance;
    if (!instance)
        return nullptr;
    PropertyInstance* found = instance->FindPropertyInstance(property, open_.Top().nextProperty);
    if (!found)
        found = instance->GetPropertyInstance(property, true);
    if (!found)
        Error("Unknown property: " + Quoted(property));
    return found;
}

/// Makes the property instance that an element names the open one; null when there is none.
PropertyInstance* XMLInstanceListener::OpenProperty(const char* element,
                                                    const XMLAttributes& attributes) {
    PropertyInstance* found = FindPropertyInstance(element, attributes);
    if (found && IsPropertyOpen()) { // one that this one stands in
        EndProperty();
        found = FindPropertyInstance(element, attributes); // callbacks may delete it
    }
    refused_ = !found;
    if (!found)
        return nullptr;
    open_.Top().property = found;
    open_.Top().nestedCount = 0;
    return found;
}

bool XMLInstanceListener::IsPropertyOpen() const {
    return !open_.IsEmpty() && (open_.Top().property || open_.Top().skipped || valueCount_ > 0);
}

/// The assets in an attribute that is refused would be elements of its value: they must not become
/// assets of the scene, where they could meet others of their names.
bool XMLInstanceListener::StartAttribute(const XMLAttributes& attributes) {
    PropertyInstance* found = OpenProperty("attribute", attributes);
    auto* attribute = ObjectCast<AttributeInstance>(found);
    if (found && !attribute)
        Error("Property is not an attribute property: " + Quoted(attributes.Find("property")));
    skipsAssets_ = !attribute;
    if (!attribute)
        return true;
    open_.Top().attribute = attribute;
    const char* value = attributes.Find("value");
    if (value && !attribute->TakesInstances())
        attribute->SetValueFromTexts(&value, 1);
    SetBindingAndLocks(attributes);
    return true;
}

/// What the element does not fit is left alone: only attributes, nodes and anchors have bindings.
void XMLInstanceListener::SetBindingAndLocks(const XMLAttributes& attributes) {
    if (const char* binding = attributes.Find("binding")) {
        if (auto* attribute = ObjectCast<AttributeInstance>(OpenPropertyInstance()))
            attribute->SetBinding(binding);
    }
    const char* bindingLock = attributes.Find("lockBinding");
    if (bindingLock && OpenPropertyInstance())
        OpenPropertyInstance()->SetBindingLocked(ReadFlag(bindingLock));
    const char* valueLock = attributes.Find("lockValue");
    if (valueLock && OpenPropertyInstance())
        OpenPropertyInstance()->SetValueLocked(ReadFlag(valueLock));
}

bool XMLInstanceListener::StartNode(const XMLAttributes& attributes) {
    if (OpenProperty("node", attributes))
        SetBindingAndLocks(attributes);
    return true;
}

bool XMLInstanceListener::StartAnchor(const XMLAttributes& attributes) {
    if (!OpenProperty("anchor", attributes))
        return true;
    SetBindingAndLocks(attributes);
    const char* attached = attributes.Find("attachedAnchor");
    auto* anchor = ObjectCast<AnchorInstance>(OpenPropertyInstance());
    if (attached && anchor)
        anchor->SetAttachedAnchor(attached);
    return true;
}

bool XMLInstanceListener::StartGeometry(const XMLAttributes& attributes) {
    if (OpenPropertyInstance()) {
        Error("Unexpected nested <geometry> element");
        return Ignore();
    }
    alternates_.Clear();
    OpenProperty("geometry", attributes);
    return true;
}

bool XMLInstanceListener::StartAlternate(const XMLAttributes& attributes) {
    auto* geometry = ObjectCast<GeometryInstance>(OpenPropertyInstance());
    const char* lod = attributes.Find("lod");
    const char* binding = attributes.Find("binding");
    if (!geometry) {
        Error("<alternate> must occur inside a <geometry> element");
        return true;
    }
    if (!lod) {
        Error("<alternate> element must have an 'lod' attribute");
        return true;
    }
    if (!binding) { // the message calls it by what it holds, the name of a node
        Error("<alternate> element must have a 'nodeName' attribute");
        return true;
    }
    const int index = alternates_.Find(geometry->GetGeometryProperty(), lod);
    if (index < 0)
        Error("Unknown level of detail: " + Quoted(lod));
    else if (NodeInstance* node = geometry->GetNodeInstanceAt(index))
        node->SetBinding(binding);
    return true;
}

void XMLInstanceListener::EndProperty() {
    StoreValues();
    if (open_.IsEmpty())
        return;
    open_.Top().property = nullptr;
    open_.Top().attribute = nullptr;
    open_.Top().skipped = false;
}

// -- values of several elements -------------------------------------------------------------------

bool XMLInstanceListener::StartValue(const XMLAttributes&) {
    valueOpen_ = skippingCount_ == 0 && OpenAttribute() && !OpenAttribute()->TakesInstances();
    if (!valueOpen_)
        return true;
    if (valueCount_ == values_.size())
        values_.emplace_back();
    values_[valueCount_++].clear();
    return true;
}

void XMLInstanceListener::EndValue() {
    valueOpen_ = false;
}

/// Gives the open attribute the elements collected for it, if there are any.
void XMLInstanceListener::StoreValues() {
    valueOpen_ = false;
    const size_t count = std::exchange(valueCount_, 0);
    if (count == 0 || !OpenAttribute())
        return;
    valueTexts_.clear();
    for (size_t i = 0; i < count; ++i)
        valueTexts_.push_back(values_[i].c_str());
    OpenAttribute()->SetValueFromTexts(valueTexts_.data(), static_cast<int>(count));
}

} // namespace Kor
