// The part of the template listener that reads types and enumerations.

#include "formats/XMLTemplateListener.h"

#include "core/NumberText.h"
#include "formats/Quoted.h"
#include "manager/TemplateManager.h"
#include "types/Enumeration.h"
#include "xml/XMLParser.h"

namespace Kor {

void XMLTemplateListener::StartEnum(const XMLAttributes& attributes) {
    if (enumeration_) {
        Error("Unexpected nested <enum> element");
        return;
    }
    if (!HasName("enum", attributes))
        return;
    const char* name = attributes.Find("name");
    const char* typeName =
        Require(attributes, "type", "<enum> element must have an 'type' attribute");
    if (!typeName || !HasValidName("enumeration", name))
        return;
    Type* base = manager_.GetType(typeName);
    if (!base) {
        Error("Type not found: " + Quoted(typeName));
        return;
    }
    auto created = std::make_unique<Enumeration>(name, base);
    created->SetPackageName(package_);
    GiveComment(*created);
    manager_.AddEnumeration(created.get());
    enumeration_ = created.release(); // the manager has it now
    enumeration_->SetFileName(parser_.GetSourceName());
}

void XMLTemplateListener::StartItem(const XMLAttributes& attributes) {
    if (!enumeration_) {
        Error("<item> must occur inside a <enum> element");
        return;
    }
    const char* name = Require(attributes, "name", "<item> requires a 'name' attribute");
    if (!name)
        return;
    const char* value = Require(attributes, "value", "<item> requires a 'value' attribute");
    if (!value)
        return;
    auto item = std::make_unique<EnumerationItem>(name, enumeration_->GetBaseType(), value);
    if (item->GetNameView().empty()) {
        ReportInvalidName("item", name);
        return;
    }
    GiveComment(*item);
    EnumerationItem* replaced = enumeration_->GetItem(item->GetFullName());
    enumeration_->AddItem(item.get());
    static_cast<void>(item.release()); // the enumeration has it now
    delete replaced;
}

void XMLTemplateListener::StartType(const XMLAttributes& attributes) {
    if (!HasName("type", attributes))
        return;
    const char* name = attributes.Find("name");
    const char* dimension = attributes.Find("dim");
    const char* baseName =
        Require(attributes, "type", "<type> element must have an 'type' attribute");
    if (!baseName || !HasValidName("type", name))
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
    manager_.AddType(created.get());
    Type* added = created.release(); // the manager has it now
    added->SetFileName(parser_.GetSourceName());
}

} // namespace Kor
