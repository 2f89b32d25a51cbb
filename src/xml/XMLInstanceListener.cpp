#include "xml/XMLInstanceListener.h"

#include <memory>
#include <utility>

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

bool XMLInstanceListener::SkipsAssets() const {
    return !open_.IsEmpty() && (open_.Top().skipped || !open_.Top().instance);
}

bool XMLInstanceListener::StartAsset(const XMLAttributes& attributes) {
    if (SkipsAssets()) {
        ignoredDepth_ = 1;
        return true;
    }
    const char* name = attributes.Find("name");
    if (!name)
        return Refuse("<asset> element must have an 'name' attribute");
    const AttributeInstance* around = OpenAttribute();
    if (around && around->TakesInstances()) {
        StartNested(name);
        return true;
    }
    StoreValues();
    Asset* asset = FindOrMakeAsset(name);
    if (!asset) {
        ignoredDepth_ = 1;
        return true;
    }
    open_.Push(*asset);
    if (const char* reference = attributes.Find("reference"))
        asset->SetReference(reference, true);
    return true;
}

/// Null when the name is invalid, or when a callback took the new asset away again.
Asset* XMLInstanceListener::FindOrMakeAsset(const char* name) {
    if (Asset* found = assets_.GetAsset(name))
        return found;
    if (assets_.NewAsset(name))
        return assets_.GetAsset(name);
    ReportInvalidName(name);
    return nullptr;
}

/// Nested instances become the elements of the attribute's value one after the other; those beyond
/// its dimension are ignored with all they contain.
void XMLInstanceListener::StartNested(const char* name) {
    auto instance = std::make_unique<Instance>(name, Instance::kInsideValue);
    AttributeInstance* attribute = OpenAttribute();
    const int index = open_.Top().nestedCount++;
    open_.Push(*instance);
    if (attribute->SetNestedInstance(instance, index))
        return;
    open_.Pop();
    ignoredDepth_ = 1;
}

void XMLInstanceListener::EndAsset() {
    if (open_.IsEmpty())
        return;
    EndProperty(); // one whose end tag is missing
    open_.Pop();
}

bool XMLInstanceListener::StartAssetRef(const XMLAttributes& attributes) {
    const char* name = attributes.Find("name");
    if (!name)
        return Refuse("<assetRef> element must have an 'name' attribute");
    FindOrMakeAsset(name);
    return true;
}

bool XMLInstanceListener::StartImplements(const XMLAttributes& attributes) {
    if (open_.IsEmpty()) {
        Error("<implements> must occur inside a <asset> element");
        return true;
    }
    const char* name = attributes.Find("template");
    if (!name)
        return Refuse("<implements> element must have an 'template' attribute");
    Template* implemented = FindTemplate(name, attributes.Find("version"));
    Instance* instance = open_.Top().instance;
    if (!implemented || !instance)
        return true;
    instance->AddTemplate(implemented, false);
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
    PropertyInstance* found = instance ? instance->GetPropertyInstance(property, true) : nullptr;
    if (!found && instance)
        Error("Unknown property: " + Quoted(property));
    return found;
}

/// Makes the property instance that an element names the open one; null when there is none.
PropertyInstance* XMLInstanceListener::OpenProperty(const char* element,
                                                    const XMLAttributes& attributes) {
    EndProperty(); // of an attribute that this one stands in
    PropertyInstance* found = FindPropertyInstance(element, attributes);
    if (!found)
        return nullptr;
    open_.Top().property = found;
    open_.Top().nestedCount = 0;
    return found;
}

bool XMLInstanceListener::StartAttribute(const XMLAttributes& attributes) {
    PropertyInstance* found = OpenProperty("attribute", attributes);
    auto* attribute = ObjectCast<AttributeInstance>(found);
    if (found && !attribute)
        Error("Property is not an attribute property: " + Quoted(attributes.Find("property")));
    if (!attribute) {
        SkipAttribute();
        return true;
    }
    open_.Top().attribute = attribute;
    const char* value = attributes.Find("value");
    if (value && !attribute->TakesInstances())
        attribute->SetValueFromTexts(&value, 1);
    SetBindingAndLocks(attributes);
    return true;
}

/// The assets in it would be elements of its value: they must not become assets of the scene, where
/// they could meet others of their names.
void XMLInstanceListener::SkipAttribute() {
    if (!open_.IsEmpty())
        open_.Top().skipped = true;
}

/// What the element does not fit is left alone: only attributes, nodes and anchors have bindings.
void XMLInstanceListener::SetBindingAndLocks(const XMLAttributes& attributes) {
    const char* binding = attributes.Find("binding");
    auto* attribute = ObjectCast<AttributeInstance>(OpenPropertyInstance());
    if (binding && attribute)
        attribute->SetBinding(binding);
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
        return true;
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
    if (!binding) { // the message deliberately names another attribute
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
    valueOpen_ = OpenAttribute() && !OpenAttribute()->TakesInstances();
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
    std::vector<const char*> texts;
    texts.reserve(count);
    for (size_t i = 0; i < count; ++i)
        texts.push_back(values_[i].c_str());
    OpenAttribute()->SetValueFromTexts(texts.data(), static_cast<int>(texts.size()));
}

} // namespace Kor
