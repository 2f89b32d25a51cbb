// The part of the template listener that reads properties: attributes, their values and commands.

#include "formats/XMLTemplateListener.h"

#include "core/Names.h"
#include "core/Undo.h"
#include "formats/AttributeTexts.h"
#include "formats/Quoted.h"
#include "instances/Asset.h"
#include "manager/TemplateManager.h"
#include "notify/NotificationManager.h"
#include "schema/AttributeProperty.h"
#include "types/CustomType.h"

namespace Kor {

/// A property that its template refuses stays current, so that its children find their place, and
/// lives as long as the reading of the file.
void XMLTemplateListener::AddProperty(std::unique_ptr<Property> property) {
    GiveComment(*property);
    bool refused = false;
    manager_.AddPropertyFromVersion(template_->GetFullName(), property.get(), &refused);
    member_ = property.get();
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
    // A bad name draws the message about a type, and a missing type the one about a name. Both stay
    // so, since hosts match on the texts.
    if (!IsValidName(name)) {
        Error("<attribute> element must have an 'type' attribute");
        return;
    }
    if (!type) {
        ReportInvalidName("attribute", name);
        return;
    }
    auto created = std::make_unique<AttributeProperty>(name, ReadVersion(attributes, "version"));
    AttributeProperty& attribute = *created;
    std::unique_ptr<Type> made;
    Type* resolved = FindAttributeType(type, made);
    AddProperty(std::move(created));
    attribute.SetReference(ReadFlag(attributes.Find("reference")));
    const bool taken = attribute.SetType(resolved);
    static_cast<void>(made.release()); // belongs to the attribute now
    if (!taken)
        Error("Assigning type " + Quoted(type) + " to attribute " + Quoted(name) +
              " would cause circular reference. Ignoring type.");
    if (const char* autoBind = attributes.Find("autoBind"))
        attribute.SetAutoBind(autoBind);
    SetAttributeValues(attribute, attributes);
}

/// An unknown type becomes a custom type of the property, so that reading can go on.
Type* XMLTemplateListener::FindAttributeType(const char* name, std::unique_ptr<Type>& made) {
    if (Type* type = manager_.ResolveType(name, using_))
        return type;
    if (Type* type = manager_.GetTemplate(name))
        return type;
    Warn("Unknown type " + Quoted(name) + ", creating custom type dynamically");
    made = std::make_unique<CustomType>(name, 1);
    return made.get();
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
        Undo made([&] { type->DeleteValue(block, type->GetDimension()); });
        type->GetValueFromString(text, block, 0);
        (attribute.*value.set)(block);
        made.Commit();
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
    const char* execute =
        Require(attributes, "execute", "<command> requires a 'execute' attribute");
    if (!execute)
        return;
    // The message calls the attribute by what it says: when the command is executed.
    const char* notification =
        Require(attributes, "notification", "<command> requires a 'when' attribute");
    if (!notification)
        return;
    // Both codes come from the one text. As no host is called like an event, one of them is 0, and
    // a command from a file never fires.
    NotificationManager& notifications = *NotificationManager::Get();
    auto command = std::make_unique<Command>(
        execute, static_cast<unsigned>(notifications.GetDCCCode(notification)),
        static_cast<unsigned>(notifications.GetEventCode(notification)));
    command->SetNotification(notification);
    GiveComment(*command);
    member_->AddCommand(command.get());
    manager_.Own(std::move(command));
}

} // namespace Kor
