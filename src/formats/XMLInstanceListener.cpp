#include "formats/XMLInstanceListener.h"

#include <memory>

#include "core/IErrorListener.h"
#include "core/Names.h"
#include "core/NumberText.h"
#include "formats/Quoted.h"
#include "instances/AssetManager.h"
#include "instances/AttributeInstance.h"
#include "manager/TemplateManager.h"
#include "xml/XMLParser.h"

namespace Kor {

XMLInstanceListener::XMLInstanceListener(XMLParser& parser)
    : parser_(parser), assets_(*AssetManager::Get()), templates_(*TemplateManager::Get()) {}

void XMLInstanceListener::Error(const std::string& message) {
    parser_.Report(kError, message);
}

bool XMLInstanceListener::Refuse(const std::string& message) {
    Error(message);
    refused_ = true;
    return parser_.GetErrorListener() != nullptr;
}

void XMLInstanceListener::ReportInvalidName(const char* name) {
    Error("Invalid asset name: " + Quoted(name) +
          ". Valid characters must be in the range [A-Z][a-z][0-9][_]. Ignoring asset.");
}

// -- events ---------------------------------------------------------------------------------------

const XMLInstanceListener::Element* XMLInstanceListener::GetElements() {
    using Listener = XMLInstanceListener;
    static constexpr Element kElements[kElementCount] = {
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
    return kElements;
}

const XMLInstanceListener::Element* XMLInstanceListener::FindElement(std::string_view name) {
    for (const Element* element = GetElements(); element != GetElements() + kElementCount;
         ++element) {
        if (EqualsIgnoreCase(element->name, name))
            return element;
    }
    return nullptr;
}

size_t XMLInstanceListener::IndexOf(const Element& element) {
    return static_cast<size_t>(&element - GetElements());
}

/// A callback that ends the library ends the reading, too: what is read from then on would go to
/// managers that nobody finds any more, although there may be new ones.
bool XMLInstanceListener::IsForNobody() const {
    return !assets_.IsCurrent() || !templates_.IsCurrent();
}

bool XMLInstanceListener::StartElement(std::string_view name, const XMLAttributes& attributes) {
    if (IsForNobody())
        return false;
    const Element* element = FindElement(name);
    if (ignoredDepth_ > 0) {
        if (element && element->start == &XMLInstanceListener::StartAsset)
            ++ignoredDepth_;
        return true;
    }
    if (!element)
        return true;
    refused_ = false;
    skipsAssets_ = false;
    const bool goesOn = (this->*element->start)(attributes);
    if (ignoredDepth_ == 0)
        Open(*element);
    return goesOn;
}

bool XMLInstanceListener::EndElement(std::string_view name) {
    if (IsForNobody())
        return false;
    const bool isInnermost = !elements_.empty() && elements_.back().element->name == name;
    const Element* element = isInnermost ? elements_.back().element : FindElement(name);
    if (ignoredDepth_ > 0) {
        if (element && element->start == &XMLInstanceListener::StartAsset)
            --ignoredDepth_;
        return true;
    }
    if (element)
        Close(*element);
    return true;
}

void XMLInstanceListener::Open(const Element& element) {
    elements_.push_back({&element, refused_, skipsAssets_});
    ++openCounts_[IndexOf(element)];
    skippingCount_ += skipsAssets_ ? 1 : 0;
}

/// Ends those inside that have no end tag of their own, too. One that is not open is left alone.
void XMLInstanceListener::Close(const Element& element) {
    if (openCounts_[IndexOf(element)] == 0)
        return;
    while (elements_.back().element != &element)
        CloseInnermost();
    CloseInnermost();
}

void XMLInstanceListener::CloseInnermost() {
    const OpenElement closed = elements_.back();
    elements_.pop_back();
    --openCounts_[IndexOf(*closed.element)];
    skippingCount_ -= closed.skipsAssets ? 1 : 0;
    if (!closed.refused)
        (this->*closed.element->end)();
}

bool XMLInstanceListener::Characters(std::string_view text) {
    if (valueOpen_ && ignoredDepth_ == 0)
        values_[valueCount_ - 1] += text;
    return true;
}

// -- assets ---------------------------------------------------------------------------------------

bool XMLInstanceListener::SkipsAssets() const {
    return skippingCount_ > 0 ||
           (!open_.IsEmpty() && (open_.Top().skipped || !open_.Top().instance));
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

/// Null when the name is invalid, or when a callback took the new asset away again; it may well
/// have another name by now.
Asset* XMLInstanceListener::FindOrMakeAsset(const char* name) {
    if (Asset* found = assets_.GetAsset(name))
        return found;
    if (!IsValidName(name)) {
        ReportInvalidName(name);
        return nullptr;
    }
    Asset* made = assets_.NewAsset(name);
    return made && made->IsListed() ? made : nullptr;
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
        return Ignore();
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

} // namespace Kor
