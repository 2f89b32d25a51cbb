#include "xml/XMLInstanceListener.h"

#include <memory>

#include "core/IErrorListener.h"
#include "core/Names.h"
#include "core/NumberText.h"
#include "instances/AssetManager.h"
#include "instances/AnchorInstance.h"
#include "instances/GeometryInstance.h"
#include "manager/TemplateManager.h"
#include "xml/Quoted.h"
#include "xml/XMLParser.h"

namespace Kor {

namespace {

/// True unless the text is empty or begins with "0" or a lower-case "f".
bool ReadFlag(const char* text) {
    return *text && *text != '0' && *text != 'f';
}

} // namespace

XMLInstanceListener::XMLInstanceListener(XMLParser& parser)
    : parser_(parser), assets_(*AssetManager::Get()), templates_(*TemplateManager::Get()) {}

void XMLInstanceListener::Error(const std::string& message) {
    parser_.Report(kError, message);
}

bool XMLInstanceListener::Refuse(const std::string& message) {
    Error(message);
    return parser_.GetErrorListener() != nullptr;
}

void XMLInstanceListener::ReportInvalidName(const char* name) {
    Error("Invalid asset name: " + Quoted(name) +
          ". Valid characters must be in the range [A-Z][a-z][0-9][_]. Ignoring asset.");
}

// -- events ---------------------------------------------------------------------------------------

const XMLInstanceListener::Element* XMLInstanceListener::FindElement(std::string_view name) {
    using Listener = XMLInstanceListener;
    static constexpr Element kElements[] = {
        {"attribute", &Listener::StartAttribute, &Listener::EndProperty},
        {"value", &Listener::StartValue, &Listener::EndValue},
        {"asset", &Listener::StartAsset, &Listener::EndAsset},
        {"implements", &Listener::StartImplements, &Listener::EndNothing},
        {"node", &Listener::StartNode, &Listener::EndProperty},
        {"anchor", &Listener::StartAnchor, &Listener::EndProperty},
        {"geometry", &Listener::StartGeometry, &Listener::EndProperty},
        {"alternate", &Listener::StartAlternate, &Listener::EndNothing},
        {"assetRef", &Listener::StartAssetRef, &Listener::EndNothing},
    };
    for (const Element& element : kElements) {
        if (EqualsIgnoreCase(element.name, name))
            return &element;
    }
    return nullptr;
}

bool XMLInstanceListener::StartElement(std::string_view name, const XMLAttributes& attributes) {
    const Element* element = FindElement(name);
    if (ignoredDepth_ > 0) {
        if (element && element->start == &XMLInstanceListener::StartAsset)
            ++ignoredDepth_;
        return true;
    }
    return !element || (this->*element->start)(attributes);
}

bool XMLInstanceListener::EndElement(std::string_view name) {
    const Element* element = FindElement(name);
    if (ignoredDepth_ > 0) {
        if (element && element->start == &XMLInstanceListener::StartAsset)
            --ignoredDepth_;
        return true;
    }
    if (element)
        (this->*element->end)();
    return true;
}

bool XMLInstanceListener::Characters(std::string_view text) {
    if (valueOpen_ && ignoredDepth_ == 0)
        values_[valueCount_ - 1] += text;
    return true;
}

// -- assets ---------------------------------------------------------------------------------------

bool XMLInstanceListener::HoldsInstances() const {
    return attribute_ && attribute_->HoldsInstances();
}

bool XMLInstanceListener::StartAsset(const XMLAttributes& attributes) {
    const char* name = attributes.Find("name");
    if (!name)
        return Refuse("<asset> element must have an 'name' attribute");
    if (HoldsInstances()) {
        StartNested(name);
        return true;
    }
    const char* reference = attributes.Find("reference");
    Asset* asset = assets_.GetAsset(name);
    if (!asset)
        asset = assets_.NewAsset(name);
    if (!asset) {
        ReportInvalidName(name);
        ignoredDepth_ = 1;
        return true;
    }
    if (reference)
        asset->SetReference(reference, true);
    if (attribute_ && valueCount_ > 0)
        SetCollectedValues();
    open_.push_back({asset, attribute_, nestedCount_});
    attribute_ = nullptr;
    current_ = nullptr;
    return true;
}

/// Nested instances become the elements of the attribute's value one after the other; those beyond
/// its dimension are ignored with all they contain.
void XMLInstanceListener::StartNested(const char* name) {
    auto instance = std::make_unique<Instance>(name, Instance::kInsideValue);
    Instance* nested = instance.get();
    if (!attribute_->SetNestedInstance(instance, nestedCount_)) {
        ignoredDepth_ = 1;
        return;
    }
    open_.push_back({nested, attribute_, nestedCount_ + 1});
    attribute_ = nullptr;
    current_ = nullptr;
}

void XMLInstanceListener::EndAsset() {
    if (open_.empty())
        return;
    EndProperty(); // one whose end tag is missing
    attribute_ = open_.back().holder;
    current_ = attribute_;
    nestedCount_ = open_.back().indexInHolder;
    open_.pop_back();
}

bool XMLInstanceListener::StartAssetRef(const XMLAttributes& attributes) {
    const char* name = attributes.Find("name");
    if (!name)
        return Refuse("<assetRef> element must have an 'name' attribute");
    if (!assets_.GetAsset(name) && !assets_.NewAsset(name))
        ReportInvalidName(name);
    return true;
}

bool XMLInstanceListener::StartImplements(const XMLAttributes& attributes) {
    if (open_.empty()) {
        Error("<implements> must occur inside a <asset> element");
        return true;
    }
    const char* name = attributes.Find("template");
    if (!name)
        return Refuse("<implements> element must have an 'template' attribute");
    Template* implemented = FindTemplate(name, attributes.Find("version"));
    if (!implemented)
        return true;
    open_.back().instance->AddTemplate(implemented, false);
    if (implemented->GetVersion() < implemented->GetLatestVersion())
        parser_.Report(kWarning, "Using version " + std::to_string(implemented->GetVersion()) +
                                     " of template " + Quoted(name) + " while there is a version " +
                                     std::to_string(implemented->GetLatestVersion()) +
                                     " that is more recent");
    return true;
}

Template* XMLInstanceListener::FindTemplate(const char* name, const char* version) {
    Template* found =
        version ? templates_.GetTemplateVersion(name, static_cast<unsigned>(ParseInt(version)))
                : templates_.GetTemplate(name);
    if (!found) {
        std::string message = "Unknown template: " + Quoted(name);
        if (version)
            message.append(" version ").append(version);
        Error(message);
    }
    return found;
}

// -- property instances ---------------------------------------------------------------------------

PropertyInstance* XMLInstanceListener::FindPropertyInstance(const char* element,
                                                            const XMLAttributes& attributes) {
    const auto composed = [element](const char* text) { return std::string("<") + element + text; };
    const char* property = attributes.Find("property");
    if (open_.empty()) {
        Error(composed("> must occur inside a <asset> element"));
        return nullptr;
    }
    if (!property) {
        Error(composed("> element must have an 'property' attribute"));
        return nullptr;
    }
    PropertyInstance* found = open_.back().instance->GetPropertyInstance(property, true);
    if (!found)
        Error("Unknown property: " + Quoted(property));
    return found;
}

/// Makes the property instance that an element names the current one; null when there is none.
PropertyInstance* XMLInstanceListener::OpenProperty(const char* element,
                                                    const XMLAttributes& attributes) {
    PropertyInstance* found = FindPropertyInstance(element, attributes);
    if (!found)
        return nullptr;
    EndProperty(); // of an attribute that this one stands in
    current_ = found;
    nestedCount_ = 0;
    return found;
}

bool XMLInstanceListener::StartAttribute(const XMLAttributes& attributes) {
    PropertyInstance* found = OpenProperty("attribute", attributes);
    if (!found)
        return true;
    attribute_ = ObjectCast<AttributeInstance>(found);
    if (!attribute_) {
        Error("Property is not an attribute property: " + Quoted(attributes.Find("property")));
        return true;
    }
    const char* value = attributes.Find("value");
    if (value && !attribute_->HoldsInstances())
        attribute_->SetValueFromTexts(&value, 1);
    SetBindingAndLocks(*attribute_, attributes);
    return true;
}

/// What the element does not fit is left alone: only attributes, nodes and anchors have bindings.
void XMLInstanceListener::SetBindingAndLocks(PropertyInstance& propertyInstance,
                                             const XMLAttributes& attributes) {
    const char* binding = attributes.Find("binding");
    auto* attribute = ObjectCast<AttributeInstance>(&propertyInstance);
    if (binding && attribute)
        attribute->SetBinding(binding);
    SetLocks(propertyInstance, attributes);
}

bool XMLInstanceListener::StartNode(const XMLAttributes& attributes) {
    if (PropertyInstance* found = OpenProperty("node", attributes))
        SetBindingAndLocks(*found, attributes);
    return true;
}

bool XMLInstanceListener::StartAnchor(const XMLAttributes& attributes) {
    PropertyInstance* found = OpenProperty("anchor", attributes);
    if (!found)
        return true;
    SetBindingAndLocks(*found, attributes);
    const char* attached = attributes.Find("attachedAnchor");
    auto* anchor = ObjectCast<AnchorInstance>(found);
    if (attached && anchor)
        anchor->SetAttachedAnchor(attached);
    return true;
}

bool XMLInstanceListener::StartGeometry(const XMLAttributes& attributes) {
    if (!open_.empty() && current_) {
        Error("Unexpected nested <geometry> element");
        return true;
    }
    OpenProperty("geometry", attributes);
    return true;
}

bool XMLInstanceListener::StartAlternate(const XMLAttributes& attributes) {
    auto* geometry = ObjectCast<GeometryInstance>(current_);
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
    if (!binding) { // the message deliberately names another attribute
        Error("<alternate> element must have a 'nodeName' attribute");
        return true;
    }
    const GeometryProperty& property = geometry->GetGeometryProperty();
    for (int i = 0; i < property.GetAlternateCount(); ++i) {
        const LOD* level = property.GetAlternateAt(i)->GetLOD();
        if (!level || !EqualsIgnoreCase(level->GetNameView(), lod))
            continue;
        if (NodeInstance* node = geometry->GetNodeInstanceAt(i))
            node->SetBinding(binding);
        return true;
    }
    Error("Unknown level of detail: " + Quoted(lod));
    return true;
}

void XMLInstanceListener::SetLocks(PropertyInstance& propertyInstance,
                                   const XMLAttributes& attributes) {
    if (const char* locked = attributes.Find("lockBinding"))
        propertyInstance.SetBindingLocked(ReadFlag(locked));
    if (const char* locked = attributes.Find("lockValue"))
        propertyInstance.SetValueLocked(ReadFlag(locked));
}

void XMLInstanceListener::EndProperty() {
    if (attribute_ && valueCount_ > 0)
        SetCollectedValues();
    attribute_ = nullptr;
    current_ = nullptr;
    valueOpen_ = false;
    valueCount_ = 0;
}

// -- values of several elements -------------------------------------------------------------------

bool XMLInstanceListener::StartValue(const XMLAttributes&) {
    valueOpen_ = attribute_ && !attribute_->HoldsInstances();
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

void XMLInstanceListener::SetCollectedValues() {
    std::vector<const char*> texts;
    texts.reserve(valueCount_);
    for (size_t i = 0; i < valueCount_; ++i)
        texts.push_back(values_[i].c_str());
    attribute_->SetValueFromTexts(texts.data(), static_cast<int>(texts.size()));
}

} // namespace Kor
