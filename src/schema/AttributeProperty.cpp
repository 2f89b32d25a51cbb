#include "schema/AttributeProperty.h"

#include "core/Kept.h"

// A property makes its own value side; the instances' headers know the schema, not the reverse.
#include "instances/AttributeInstance.h"

#include "schema/Template.h"
#include "types/CustomType.h"
#include "types/Type.h"

namespace Kor {

namespace {

/// What stands for a value that there is none of.
NeverDestroyed<TypedValue> noValue;

} // namespace

AttributeProperty::AttributeProperty(const AttributeProperty& source)
    : Property(source), autoBind_(source.autoBind_) {
    Type* type = source.GetType();
    if (!type)
        return;
    const bool isItsOwn = type->GetOwner() == Owner::kUsers && ObjectCast<CustomType>(type);
    if (isItsOwn && !source.SharesLeftType()) {
        type = static_cast<Type*>(type->Clone().release());
        hasTypeOfItsOwn_ = true;
    }
    SetType(type);
    due_ = kAllDue;
}

bool AttributeProperty::SharesLeftType() const {
    return IsPrototype() && !hasTypeOfItsOwn_ && type_ && type_->GetOwner() == Owner::kUsers;
}

void AttributeProperty::Leave() noexcept {
    DropValues();
    Property::Leave();
}

std::unique_ptr<Object> AttributeProperty::Clone() const {
    return std::unique_ptr<Object>(new AttributeProperty(*this));
}

/// How often this property alone keeps its type in use: its values do, too.
int AttributeProperty::CountOwnUses() const {
    int uses = 1;
    for (const Slot slot : {kDefault, kMinimum, kMaximum})
        uses += GetMade(slot).GetType() == type_.Get() ? 1 : 0;
    return uses;
}

bool AttributeProperty::WouldContainItself(const Type& type) const {
    const Template* owner = GetOwner();
    return owner && !reference_ && ObjectCast<Template>(&type) &&
           (&type == owner || owner->MayBeMet()) && type.RefersTo(owner, nullptr);
}

bool AttributeProperty::SetType(Type* type) {
    if (type && WouldContainItself(*type))
        return false;
    SettleDue(); // values stay those of the type so far
    if (type_ && type_.Get() != type && type_->GetUseCount() == CountOwnUses())
        type_->TakeFromUsers();
    type_.Reset(type);
    for (const Slot slot : {kDefault, kMinimum, kMaximum}) {
        if (!type || !GetMade(slot) || GetMade(slot).GetType())
            continue;
        EditMade(slot).GiveType(type, CountElements(*type)); // handed over before there was a type
        HandOut(GetMade(slot).Get());
    }
    if (type && type->GetClass() == CustomType::kClassId)
        type->LeaveToUsers();
    return true;
}

void* AttributeProperty::HandOut(void* value) {
    for (const Slot slot : {kDefault, kMinimum, kMaximum}) {
        const TypedValue& made = GetMade(slot);
        if (!value || made.Get() != value)
            continue;
        EditMade(slot).HandOut();
        if (made.GetType())
            Template::HandOut(*made.GetType(), value, made.GetCount());
    }
    return value;
}

void AttributeProperty::Store(Slot slot, void* value) {
    if (value != GetMade(slot).Get()) {
        TypedValue& stored = EditMade(slot);
        stored.Clear();
        if (type_)
            stored.Adopt(type_.Get(), value, CountElements(*type_.Get()));
        else
            stored.Hold(value);
    }
    due_ = static_cast<unsigned char>(due_ & ~(1 << slot));
}

/// Of a type of variable length one element counts.
int AttributeProperty::CountElements(const Type& type) {
    return type.GetDimension() == 0 ? 1 : type.GetDimension();
}

/// What is there, made or not due.
const TypedValue& AttributeProperty::GetMade(Slot slot) const {
    return values_ ? values_->slots[slot] : noValue.Get();
}

TypedValue& AttributeProperty::EditMade(Slot slot) const {
    if (!values_)
        values_ = std::make_unique<Values>();
    return values_->slots[slot];
}

const TypedValue& AttributeProperty::Fetch(Slot slot) const {
    if (!IsDue(slot))
        return GetMade(slot);
    TypedValue& made = EditMade(slot);
    const int count = type_->GetDimension();
    made.Adopt(type_.Get(), type_->NewValue(nullptr, count), count);
    due_ = static_cast<unsigned char>(due_ & ~(1 << slot));
    return made;
}

void AttributeProperty::SettleDue() const {
    for (const Slot slot : {kDefault, kMinimum, kMaximum})
        Fetch(slot);
}

/// The values stay when the property is given another type, but that type must not read them.
const void* AttributeProperty::GetReadable(const TypedValue& value) const {
    const bool readable = type_ && value && value.GetType() == type_->GetStorageType() &&
                          value.GetCount() >= type_->GetDimension();
    return readable ? value.Get() : nullptr;
}

bool AttributeProperty::IsValueValid(const void* value) const {
    // A bound that is due need not be made: it would be the type's zero, which is no bound.
    return type_ && type_->IsValueValid(value, GetReadable(GetMade(kMinimum)),
                                        GetReadable(GetMade(kMaximum)), type_->GetDimension());
}

void AttributeProperty::CollectPackages(std::set<std::string>& packages) const {
    if (type_ && !reference_)
        type_->CollectPackages(packages);
}

int AttributeProperty::GetValueSize() const {
    return type_ ? type_->GetValueSize(nullptr, type_->GetDimension()) : 0;
}

int AttributeProperty::GetPadding(int offset) const {
    const int alignment = type_ ? type_->GetAlignment() : 1;
    const int over = alignment > 1 ? offset % alignment : 0;
    return over == 0 ? 0 : alignment - over;
}

bool AttributeProperty::RefersTo(const Type* type, const char* excludedFile) const {
    return type_ && !reference_ && type_->RefersTo(type, excludedFile);
}

const Type* AttributeProperty::GetContainedType() const {
    return reference_ ? nullptr : type_.Get();
}

std::unique_ptr<PropertyInstance> AttributeProperty::CreateInstance(Instance& instance) {
    return std::make_unique<AttributeInstance>(instance, *this);
}

int AttributeProperty::WriteValueToBinary(const void* value, int count, void* buffer,
                                          int bufferSize) const {
    return type_ ? type_->WriteValueToBinary(value, count, buffer, bufferSize) : 0;
}

} // namespace Kor
