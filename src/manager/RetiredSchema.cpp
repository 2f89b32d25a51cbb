#include "manager/RetiredSchema.h"

#include <utility>

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

/// First all links are taken away, from the last template to the first, then everything is
/// deleted: templates, enumerations, plain types.
void RetiredSchema::Delete() {
    for (const Template* definition : templates_)
        DropValues(*definition);
    Instance::StripAbandoned();
    for (auto type = templates_.rbegin(); type != templates_.rend(); ++type)
        (*type)->Clear(nullptr);
    Instance::StripAbandoned();
    for (auto type = enumerations_.rbegin(); type != enumerations_.rend(); ++type) {
        if ((*type)->IsInUse())
            types_.push_back(*type);
        else
            delete *type;
    }
    types_.insert(types_.end(), templates_.begin(), templates_.end());
    DeleteTypes();
}

/// Types whose values or properties the host still holds go with the last of those.
void RetiredSchema::DeleteTypes() {
    std::vector<Type*> unused;
    for (Type* type : types_) {
        if (type->IsInUse())
            type->LeaveToUsers();
        else
            unused.push_back(type);
    }
    while (!unused.empty()) {
        Type* type = unused.back();
        unused.pop_back();
        // A long chain of base types is taken apart here instead of by nested destructors.
        Type* base = type->GetBaseType();
        if (base && base->IsLeftToUsers() && base->GetUseCount() == 1) {
            base->TakeFromUsers();
            unused.push_back(base);
        }
        type->SetBaseType(nullptr);
        delete type;
    }
}

} // namespace Kor
