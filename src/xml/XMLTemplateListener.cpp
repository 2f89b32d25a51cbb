#include "xml/XMLTemplateListener.h"

#include "core/IErrorListener.h"
#include "core/Names.h"
#include "core/NumberText.h"
#include "instances/Asset.h"
#include "instances/AttributeInstance.h"
#include "manager/TemplateManager.h"
#include "notify/NotificationManager.h"
#include "schema/AttributeProperty.h"
#include "schema/LOD.h"
#include "schema/ViewItem.h"
#include "types/CustomType.h"
#include "xml/TemplateAttributes.h"
#include "xml/XMLParser.h"

namespace Kor {

namespace {

std::string Quoted(const char* text) {
    return std::string("'") + text + "'";
}

} // namespace

XMLTemplateListener::XMLTemplateListener(XMLParser& parser)
    : parser_(parser), manager_(*TemplateManager::Get()) {
    using_.Insert(""); // built-in types and names in full resolve in every file
}

XMLTemplateListener::~XMLTemplateListener() {
    if (template_)
        ReportUnclosed("template", template_->GetFullName());
    if (member_)
        ReportUnclosed("property", member_->GetNameView());
    if (enumeration_)
        ReportUnclosed("enumeration", enumeration_->GetNameView());
    if (lod_)
        ReportUnclosed("level of detail", lod_->GetNameView());
    if (viewItem_)
        ReportUnclosed("view item", viewItem_->GetNameView());
}

/// Called at the listener's end, where no exception may get out: without memory nothing is said.
void XMLTemplateListener::ReportUnclosed(const char* kind, std::string_view name) try {
    Error(std::string("Missing closing element for ") + kind + ": '" + std::string(name) + "'");
} catch (const std::bad_alloc&) {
    return;
}

void XMLTemplateListener::Error(const std::string& message) {
    parser_.Report(kError, message);
}

void XMLTemplateListener::Warn(const std::string& message) {
    parser_.Report(kWarning, message);
}

// -- events ---------------------------------------------------------------------------------------

const XMLTemplateListener::Element* XMLTemplateListener::FindElement(std::string_view name) {
    using Listener = XMLTemplateListener;
    static constexpr Element kElements[] = {
        {"template", &Listener::StartTemplate, nullptr},
        {"type", &Listener::StartType, nullptr},
        {"node", &Listener::StartNode, &Listener::EndMember},
        {"anchor", &Listener::StartAnchor, &Listener::EndMember},
        {"attribute", &Listener::StartAttribute, &Listener::EndMember},
        {"geometry", &Listener::StartGeometry, &Listener::EndMember},
        {"alternate", &Listener::StartAlternate, nullptr},
        {"extends", &Listener::StartExtends, nullptr},
        {"lod", &Listener::StartLOD, &Listener::EndLOD},
        {"shape", &Listener::StartShape, nullptr},
        {"label", &Listener::StartLabel, &Listener::EndLabel},
        {"description", &Listener::StartDescription, &Listener::EndDescription},
        {"view", &Listener::StartView, &Listener::EndGroup},
        {"group", &Listener::StartGroup, &Listener::EndGroup},
        {"property", &Listener::StartViewProperty, &Listener::EndViewProperty},
        {"enum", &Listener::StartEnum, &Listener::EndEnum},
        {"item", &Listener::StartItem, nullptr},
        {"command", &Listener::StartCommand, nullptr},
        {"asset", &Listener::StartAsset, nullptr},
        {"using", &Listener::StartUsing, nullptr},
        {"templates", &Listener::StartTemplates, nullptr},
        {"action", &Listener::Ignore, nullptr},
        {"lods", &Listener::Ignore, nullptr},
    };
    for (const Element& element : kElements) {
        if (EqualsIgnoreCase(element.name, name))
            return &element;
    }
    return nullptr;
}

bool XMLTemplateListener::StartElement(std::string_view name, const XMLAttributes& attributes) {
    if (skippedDepth_ > 0) {
        if (EqualsIgnoreCase(name, "template"))
            ++skippedDepth_;
        return true;
    }
    if (const Element* element = FindElement(name))
        (this->*element->handler)(attributes);
    else
        Warn("Unknown element <" + std::string(name) + "> was ignored and will not be saved");
    return true;
}

bool XMLTemplateListener::EndElement(std::string_view name) {
    if (EqualsIgnoreCase(name, "template")) {
        if (skippedDepth_ > 0)
            --skippedDepth_;
        template_ = nullptr;
        return true;
    }
    const Element* element = FindElement(name);
    if (!element || !element->end)
        comment_.clear();
    else if (skippedDepth_ == 0)
        (this->*element->end)();
    return true;
}

bool XMLTemplateListener::Comment(std::string_view text) {
    comment_ = text;
    return true;
}

bool XMLTemplateListener::Characters(std::string_view text) {
    if (!language_.empty())
        text_ += text;
    return true;
}

// -- file -----------------------------------------------------------------------------------------

void XMLTemplateListener::StartTemplates(const XMLAttributes& attributes) {
    const char* package = attributes.Find("package");
    if (!package)
        return;
    package_ = package;
    using_.Insert(package_);
}

void XMLTemplateListener::StartUsing(const XMLAttributes& attributes) {
    const char* package = attributes.Find("package");
    if (!package)
        return;
    using_.Insert(package);
    // Packages use packages as deep as their files say: whoever reads this file loads the package
    // before it goes on, without one reading inside the other.
    wantedPackage_ = package;
    parser_.Pause();
}

void XMLTemplateListener::AnswerWantedPackage(bool loaded) {
    if (!loaded)
        Warn("Package not found: " + wantedPackage_);
}

// -- templates ------------------------------------------------------------------------------------

bool XMLTemplateListener::HasName(const char* element, const XMLAttributes& attributes) {
    if (attributes.Find("name"))
        return true;
    Error(std::string("<") + element + "> element must have an 'name' attribute");
    return false;
}

void XMLTemplateListener::ReportInvalidName(const char* word, const char* name) {
    Error(std::string("Invalid ") + word + " name: " + Quoted(name) +
          ". Valid characters must be in the range [A-Z][a-z][0-9][_]. Ignoring " + word + ".");
}

bool XMLTemplateListener::HasValidName(const char* word, const char* name) {
    const bool valid = IsValidName(name);
    if (!valid)
        ReportInvalidName(word, name);
    return valid;
}

bool XMLTemplateListener::IsInsideTemplate(const char* element) {
    if (template_)
        return true;
    Error(std::string("<") + element + "> must occur inside a <template> element");
    return false;
}

std::string XMLTemplateListener::Qualify(std::string_view name) const {
    std::string qualified = package_;
    if (!qualified.empty())
        qualified += '.';
    return qualified.append(name);
}

void XMLTemplateListener::GiveComment(NamedObject& object) const {
    if (!comment_.empty())
        object.SetComment(comment_);
}

void XMLTemplateListener::StartTemplate(const XMLAttributes& attributes) {
    if (template_) {
        Error("Unexpected nested <template> elements");
        return;
    }
    if (!HasName("template", attributes))
        return;
    const char* name = attributes.Find("name");
    const std::string fullName = Qualify(name);
    if (!IsValidFullName(fullName)) {
        ReportInvalidName("template", name);
        skippedDepth_ = 1;
        return;
    }
    const Template* known = manager_.GetTemplate(fullName);
    const bool redefined = known && known->IsRecycled();
    Template* created = manager_.CreateTemplate(fullName);
    const std::string otherFile = created ? created->GetFileName() : std::string();
    if (!created) {
        skippedDepth_ = 1;
    } else if (!redefined && !otherFile.empty() &&
               !EqualsIgnoreCase(otherFile, parser_.GetSourceName())) {
        Error("Template '" + fullName + "' is already defined in file '" + otherFile +
              "'. Ignoring new definition.");
        skippedDepth_ = 1;
    } else {
        created->SetFileName(parser_.GetSourceName());
        GiveComment(*created);
        template_ = created;
    }
}

/// The template of that name and exactly that version, by the using list's prefixes.
Template* XMLTemplateListener::FindTemplateVersion(std::string_view name, int version) const {
    for (const std::string& prefix : using_) {
        std::string candidate;
        if (name.compare(0, prefix.size(), prefix) != 0)
            candidate.append(prefix).append(1, '.');
        candidate += name;
        if (Template* found =
                manager_.GetTemplateVersion(candidate, static_cast<unsigned>(version)))
            return found;
    }
    return nullptr;
}

void XMLTemplateListener::StartExtends(const XMLAttributes& attributes) {
    if (!IsInsideTemplate("extends"))
        return;
    const char* name = attributes.Find("template");
    if (!name) {
        Error("<extends> requires a 'template' attribute");
        return;
    }
    Template* parent =
        FindTemplateVersion(name, ReadTemplateVersion(attributes, "templateVersion"));
    if (!parent) {
        Error("Template not found: " + Quoted(name));
        return;
    }
    manager_.AddParentFromVersion(template_->GetFullName(),
                                  ReadTemplateVersion(attributes, "version"), parent);
}

// -- properties -----------------------------------------------------------------------------------

/// A property that its template refuses stays current, so that its children find their place, and
/// lives as long as the reading of the file.
void XMLTemplateListener::AddProperty(std::unique_ptr<Property> property) {
    GiveComment(*property);
    member_ = property.get();
    bool refused = false;
    manager_.AddPropertyFromVersion(template_->GetFullName(), member_, &refused);
    if (refused)
        refused_.push_back(std::move(property));
    else
        static_cast<void>(property.release()); // its templates have it now
}

bool XMLTemplateListener::CanStartMember(const char* element, const char* nestedMessage,
                                         const XMLAttributes& attributes) {
    if (!IsInsideTemplate(element))
        return false;
    if (member_) {
        Error(nestedMessage);
        return false;
    }
    return HasName(element, attributes);
}

void XMLTemplateListener::StartAttribute(const XMLAttributes& attributes) {
    if (!CanStartMember("attribute", "Unexpected nested <attribute> element", attributes))
        return;
    const char* name = attributes.Find("name");
    const char* type = attributes.Find("type");
    // The messages for a bad name and for a missing type are deliberately exchanged.
    if (!IsValidName(name)) {
        Error("<attribute> element must have an 'type' attribute");
        return;
    }
    if (!type) {
        ReportInvalidName("attribute", name);
        return;
    }
    auto created =
        std::make_unique<AttributeProperty>(name, ReadTemplateVersion(attributes, "version"));
    AttributeProperty& attribute = *created;
    Type* resolved = FindAttributeType(type);
    AddProperty(std::move(created));
    attribute.SetReference(ReadTemplateFlag(attributes.Find("reference")));
    if (!attribute.SetType(resolved))
        Error("Assigning type " + Quoted(type) + " to attribute " + Quoted(name) +
              " would cause circular reference. Ignoring type.");
    if (const char* autoBind = attributes.Find("autoBind"))
        attribute.SetAutoBind(autoBind);
    SetAttributeValues(attribute, attributes);
}

/// An unknown type becomes a custom type of the property, so that reading can go on.
Type* XMLTemplateListener::FindAttributeType(const char* name) {
    if (Type* type = manager_.ResolveType(name, using_))
        return type;
    if (Type* type = manager_.GetTemplate(name))
        return type;
    Warn("Unknown type " + Quoted(name) + ", creating custom type dynamically");
    return new CustomType(name, 1);
}

/// A missing default ends the chain, and so does a missing minimum.
void XMLTemplateListener::SetAttributeValues(AttributeProperty& attribute,
                                             const XMLAttributes& attributes) {
    using Setter = void (AttributeProperty::*)(void*);
    static constexpr struct {
        const char* name;
        Setter set;
    } kValues[] = {{"default", &AttributeProperty::SetDefaultValue},
                   {"min", &AttributeProperty::SetMinValue},
                   {"max", &AttributeProperty::SetMaxValue}};
    const Type* type = attribute.GetType();
    for (const auto& value : kValues) {
        const char* text = attributes.Find(value.name);
        if (!text || !type)
            return;
        void* block = type->NewValue(nullptr, type->GetDimension());
        if (!block)
            continue;
        type->GetValueFromString(text, block, 0);
        (attribute.*value.set)(block);
    }
}

void XMLTemplateListener::StartAsset(const XMLAttributes& attributes) {
    auto* attribute = ObjectCast<AttributeProperty>(member_);
    Type* type = attribute ? attribute->GetType() : nullptr;
    auto* definition = type ? ObjectCast<Template>(type->GetStorageType()) : nullptr;
    if (!definition) {
        Error("<asset> must occur inside an attribute");
        return;
    }
    if (!HasName("asset", attributes))
        return;
    auto asset = std::make_unique<Asset>(attributes.Find("name"));
    GiveComment(*asset);
    if (const char* reference = attributes.Find("reference"))
        asset->SetReference(reference, false);
    if (void* block = Template::NewEmptyValue(type->GetDimension())) {
        asset->BecomeValueElement();
        static_cast<Instance**>(block)[0] = asset.release();
        attribute->SetDefaultValue(block);
    }
}

void XMLTemplateListener::StartCommand(const XMLAttributes& attributes) {
    if (!member_) {
        Error("<command> must occur inside a property");
        return;
    }
    const char* execute = attributes.Find("execute");
    const char* notification = attributes.Find("notification");
    if (!execute) {
        Error("<command> requires a 'execute' attribute");
        return;
    }
    if (!notification) { // the message deliberately names another attribute
        Error("<command> requires a 'when' attribute");
        return;
    }
    // Both codes come from the one text: as no host is called like an event, a command from a file
    // deliberately never fires.
    NotificationManager& notifications = *NotificationManager::Get();
    auto command = std::make_unique<Command>(
        execute, static_cast<unsigned>(notifications.GetDCCCode(notification)),
        static_cast<unsigned>(notifications.GetEventCode(notification)));
    command->SetNotification(notification);
    GiveComment(*command);
    member_->AddCommand(command.release());
}

// -- types ----------------------------------------------------------------------------------------

void XMLTemplateListener::StartEnum(const XMLAttributes& attributes) {
    if (enumeration_) {
        Error("Unexpected nested <enum> element");
        return;
    }
    if (!HasName("enum", attributes))
        return;
    const char* name = attributes.Find("name");
    const char* typeName = attributes.Find("type");
    if (!typeName) {
        Error("<enum> element must have an 'type' attribute");
        return;
    }
    if (!HasValidName("enumeration", name))
        return;
    Type* base = manager_.GetType(typeName);
    if (!base) {
        Error("Type not found: " + Quoted(typeName));
        return;
    }
    auto created = std::make_unique<Enumeration>(name, base);
    created->SetPackageName(package_);
    GiveComment(*created);
    enumeration_ = created.get();
    manager_.AddEnumeration(created.release());
    enumeration_->SetFileName(parser_.GetSourceName());
}

void XMLTemplateListener::StartItem(const XMLAttributes& attributes) {
    if (!enumeration_) {
        Error("<item> must occur inside a <enum> element");
        return;
    }
    const char* name = attributes.Find("name");
    const char* value = attributes.Find("value");
    if (!name) {
        Error("<item> requires a 'name' attribute");
        return;
    }
    if (!value) {
        Error("<item> requires a 'value' attribute");
        return;
    }
    auto item = std::make_unique<EnumerationItem>(name, enumeration_->GetBaseType(), value);
    if (item->GetNameView().empty()) {
        ReportInvalidName("item", name);
        return;
    }
    GiveComment(*item);
    const std::unique_ptr<EnumerationItem> replaced(enumeration_->GetItem(item->GetFullName()));
    enumeration_->AddItem(item.release());
}

void XMLTemplateListener::StartType(const XMLAttributes& attributes) {
    if (!HasName("type", attributes))
        return;
    const char* name = attributes.Find("name");
    const char* baseName = attributes.Find("type");
    const char* dimension = attributes.Find("dim");
    if (!baseName) {
        Error("<type> element must have an 'type' attribute");
        return;
    }
    if (!HasValidName("type", name))
        return;
    Type* base = manager_.ResolveType(baseName, using_);
    if (!base) {
        Error(std::string("Unknown type: ") + baseName);
        return;
    }
    std::unique_ptr<Type> created(static_cast<Type*>(base->Clone().release()));
    created->Redeclare(name, package_, base);
    created->SetDimension(dimension ? ParseInt(dimension) : 1);
    GiveComment(*created);
    Type* added = created.release();
    manager_.AddType(added);
    added->SetFileName(parser_.GetSourceName());
}

// -- labels and descriptions ----------------------------------------------------------------------

NamedObject* XMLTemplateListener::GetTextOwner() const {
    if (member_)
        return member_;
    return viewItem_ ? static_cast<NamedObject*>(viewItem_) : template_;
}

void XMLTemplateListener::StartText(const char* element, const XMLAttributes& attributes) {
    if (!GetTextOwner()) {
        Error(std::string("<") + element +
              "> must occur inside a <template>, <attribute>, <view>, <group>, or a <property> "
              "element");
        return;
    }
    const char* language = attributes.Find("language");
    language_ = language && *language ? language : "-";
    text_.clear();
}

void XMLTemplateListener::StoreText(bool isLabel) {
    NamedObject* owner = GetTextOwner();
    if (owner && !language_.empty()) {
        const char* language = language_.front() == '-' ? nullptr : language_.c_str();
        (isLabel ? owner->EditLabels() : owner->EditDescriptions()).Set(language, text_.c_str());
    }
    text_.clear();
    language_.clear();
}

} // namespace Kor
