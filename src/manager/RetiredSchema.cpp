#include "manager/RetiredSchema.h"

#include <utility>

#include "manager/TypeGroup.h"
#include "schema/AttributeProperty.h"

// Who still needs a schema is known where instances live.
#include "instances/Instance.h"

namespace Kor {

namespace {

std::vector<RetiredSchema>& Waiting() {
    static auto& schemas = *new std::vector<RetiredSchema>(); // outlives all users at process exit
    return schemas;
}

/// Default values may hold instances, which refer to properties of any of the templates: they let
/// go of these before the first property is deleted.
void DropValues(const Template& definition) {
    for (Property* property : definition.GetDeclaredProperties()) {
        if (auto* attribute = ObjectCast<AttributeProperty>(property)) {
            attribute->SetDefaultValue(nullptr);
            attribute->SetMinValue(nullptr);
            attribute->SetMaxValue(nullptr);
        }
    }
}

void LeaveToUsers(const std::vector<Type*>& types) {
    const std::vector<TypeRef> held(types.begin(), types.end()); // none goes before all are done
    for (Type* type : types)
        type->SurviveDeletion();
}

} // namespace

RetiredSchema::RetiredSchema(std::vector<Template*> templates,
                             std::vector<Enumeration*> enumerations, std::vector<Type*> types)
    : templates_(std::move(templates)), enumerations_(std::move(enumerations)),
      types_(std::move(types)) {
    for (Template* type : templates_)
        type->SetRegistered(false);
    for (Enumeration* type : enumerations_)
        type->SetRegistered(false);
    for (Type* type : types_)
        type->SetRegistered(false);
}

void RetiredSchema::Retire(RetiredSchema schema) {
    Instance::StripAbandoned();
    if (Instance::CountFreeStanding() == 0)
        schema.Delete();
    else
        Waiting().push_back(std::move(schema));
}

void RetiredSchema::Release() {
    if (Waiting().empty())
        return;
    Instance::StripAbandoned();
    std::vector<RetiredSchema> schemas = std::move(Waiting());
    Waiting().clear();
    for (RetiredSchema& schema : schemas)
        schema.Delete();
}

/// First all links are taken away, then everything is deleted: templates, enumerations, plain
/// types, each from the last to the first. Types whose values or properties the host still holds go
/// with the last of those.
void RetiredSchema::Delete() {
    for (const Template* definition : templates_)
        DropValues(*definition);
    Instance::StripAbandoned();
    std::vector<Template*> cleared = templates_;
    Template::SortForClearing(cleared);
    for (Template* type : cleared)
        type->Clear(nullptr);
    Instance::StripAbandoned();
    std::vector<Type*> all(templates_.rbegin(), templates_.rend());
    all.insert(all.end(), enumerations_.rbegin(), enumerations_.rend());
    all.insert(all.end(), types_.rbegin(), types_.rend());
    TypeGroup group(std::move(all));
    group.KeepUsed();
    LeaveToUsers(group.Select(true));
    TypeGroup::Delete(group.Select(false));
}

} // namespace Kor
