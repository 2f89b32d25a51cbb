#include "instances/AttributeInstance.h"

#include <algorithm>
#include <cstdlib>
#include <new>
#include <string>
#include <utility>

#include "instances/Instance.h"
#include "notify/NotificationManager.h"
#include "schema/AttributeProperty.h"
#include "schema/Template.h"

namespace Kor {

namespace {

bool IsTemplateValue(const Type* type) {
    return type && ObjectCast<Template>(type->GetStorageType());
}

} // namespace

AttributeInstance::AttributeInstance(Instance& instance, AttributeProperty& property)
    : PropertyInstance(instance, property),
      dimension_(property.GetType() ? property.GetType()->GetDimension() : 0) {}

AttributeInstance::~AttributeInstance() {
    OrphanNestedInstances();
}

void AttributeInstance::Leave() noexcept {
    if (value_ && HoldsInstances())
        FreeValue();
    PropertyInstance::Leave();
}

const AttributeProperty& AttributeInstance::GetAttributeProperty() const {
    return static_cast<const AttributeProperty&>(*GetProperty());
}

Type* AttributeInstance::GetType() const {
    return GetAttributeProperty().GetType();
}

bool AttributeInstance::TakesInstances() const {
    return IsTemplateValue(GetType());
}

bool AttributeInstance::HoldsInstances() const {
    return value_ ? value_.HoldsInstances() : TakesInstances();
}

Instance* AttributeInstance::GetNestedInstance(int index) const {
    if (!value_ || index < 0 || index >= dimension_ || !HoldsInstances())
        return nullptr;
    return static_cast<Instance**>(value_.Get())[index];
}

const void* AttributeInstance::GetReadableValue() const {
    const Type* type = GetType();
    return value_ && type && value_.GetType() == type->GetStorageType() ? value_.Get() : nullptr;
}

// -- value ----------------------------------------------------------------------------------------

// Every block is adopted with the type and the dimension that it was made for: callbacks may have
// changed both by then.

void* AttributeInstance::GetValue() {
    Type* type = GetType();
    if (value_ || !type)
        return value_.Get();
    StoredValue made;
    if (type->GetDimension() == 0 && dimension_ > 1)
        made.MakeFromOne(*type, GetAttributeProperty().GetReadableDefault(1), dimension_);
    else
        made.Make(*type, GetAttributeProperty().GetReadableDefault(dimension_), dimension_);
    TakeValue(made, dimension_);
    if (HoldsInstances())
        LinkNestedInstance();
    return value_.Get();
}

void* AttributeInstance::HandOutValue() {
    void* block = GetValue();
    if (!block || !HoldsInstances())
        return block;
    value_.HandOut();
    Template::HandOut(*value_.GetType(), block, dimension_);
    return block;
}

/// The copy is made first: callbacks may change or free what the source points to.
void AttributeInstance::SetValue(const void* source) {
    const TypeRef type(GetType());
    if (!type)
        return;
    const int dimension = dimension_;
    StoredValue copy;
    copy.Make(*type.Get(), source, dimension);
    Announce(*type.Get(), copy.Get(), dimension);
    RemoveNestedTemplates();
    if (HasEnded())
        return;
    TakeValue(copy, dimension);
    if (HoldsInstances()) {
        LinkNestedInstance();
        AnnounceNestedTemplates();
    }
}

void AttributeInstance::SetValueFromTexts(const char* const* texts, int count) {
    const TypeRef type(GetType());
    if (!type || IsTemplateValue(type.Get()))
        return;
    const int dimension = type->GetDimension() == 0 ? count : dimension_;
    StoredValue made;
    made.Make(*type.Get(), nullptr, dimension);
    for (int i = 0; made && i < std::min(count, dimension); ++i)
        type->GetValueFromString(texts[i], made.Get(), i);
    Announce(*type.Get(), made.Get(), dimension);
    RemoveNestedTemplates();
    if (!HasEnded())
        TakeValue(made, dimension);
}

bool AttributeInstance::SetNestedInstance(std::unique_ptr<Instance>& instance, int index) {
    Type* type = GetType();
    if (!IsTemplateValue(type) || index < 0)
        return false;
    const bool variable = type->GetDimension() == 0;
    if (!variable && index >= dimension_)
        return false;
    const Instance* first = index == 0 ? instance.get() : GetNestedInstance(0);
    Announce(*type, &first, 1);
    if (index == 0)
        RemoveNestedTemplates();
    if (HasEnded())
        return false;
    if (index == 0)
        FreeValue();
    ResizeNested(type, variable ? index + 1 : dimension_);
    Instance* nested = instance.get();
    StoreNestedInstance(std::move(instance), index);
    nested->SetParentPropertyInstance(this);
    if (index == 0)
        AnnounceNestedTemplates();
    return true;
}

void AttributeInstance::StoreNestedInstance(std::unique_ptr<Instance> instance, int index) {
    instance->BecomeValueElement();
    Instance*& element = static_cast<Instance**>(value_.Get())[index];
    if (element) {
        element->AttachSilently(nullptr);
        element->LoseValue();
    }
    element = instance.release();
}

void AttributeInstance::ForgetNestedInstance(const Instance& nested) {
    for (int i = 0; i < dimension_; ++i) {
        if (GetNestedInstance(i) == &nested)
            static_cast<Instance**>(value_.Get())[i] = nullptr;
    }
}

/// A value without elements has no text to show.
void AttributeInstance::Announce(const Type& type, const void* source, int dimension) {
    NotificationManager* notifications = NotificationManager::Get();
    if (!notifications || !notifications->HasPropertyInstanceListeners())
        return;
    std::string text;
    if (source && dimension > 0)
        type.GetValueAsString(source, text, 0);
    notifications->NotifyPropertyInstance(this, kAttributeValueChanged, text.data());
}

void AttributeInstance::LinkNestedInstance() {
    if (Instance* first = GetNestedInstance(0))
        first->SetParentPropertyInstance(this);
}

void AttributeInstance::RemoveNestedTemplates() const {
    Instance* first = GetNestedInstance(0);
    // The count is taken beforehand: callbacks may add templates again.
    for (int rest = first ? first->GetTemplateCount() : 0; rest > 0; --rest) {
        if (Template* front = first->GetTemplateAt(0))
            first->RemoveTemplate(front, true);
    }
}

void AttributeInstance::AnnounceNestedTemplates() const {
    Instance* first = GetNestedInstance(0);
    for (int i = 0; first && i < first->GetTemplateCount(); ++i)
        first->Notify(kTemplateAdded, first->GetTemplateAt(i));
}

void AttributeInstance::OrphanNestedInstances() const {
    for (int i = 0; i < dimension_; ++i) {
        Instance* nested = GetNestedInstance(i);
        if (nested && nested->GetHolder() == this)
            nested->AttachSilently(nullptr);
    }
}

void AttributeInstance::ResizeNested(Type* type, int dimension) {
    if (value_ && !HoldsInstances())
        FreeValue();
    value_.GrowReferences(*type, dimension);
    dimension_ = value_.GetCount();
}

void AttributeInstance::TakeValue(StoredValue& made, int dimension) {
    FreeValue();
    dimension_ = dimension;
    value_.Take(made);
    if (!value_ || !HoldsInstances())
        return;
    for (int i = 0; i < dimension_; ++i) {
        if (Instance* nested = GetNestedInstance(i))
            nested->SetHolder(this);
    }
}

void AttributeInstance::FreeValue() {
    OrphanNestedInstances();
    value_.Clear();
}

bool AttributeInstance::SetDimension(int dimension) {
    const Type* type = GetType();
    if (!type || dimension < 0)
        return false;
    if (dimension == dimension_)
        return true;
    if (type->GetDimension() != 0 && type->GetDimension() != dimension)
        return false;
    FreeValue();
    dimension_ = dimension;
    return true;
}

// -- binding --------------------------------------------------------------------------------------

void AttributeInstance::SetBinding(std::string_view binding) {
    NotificationManager* notifications = NotificationManager::Get();
    CompactString stored(binding);
    if (notifications && notifications->HasPropertyInstanceListeners()) {
        std::string shown(
            binding); // callbacks get a text of their own: the caller's stays as given
        notifications->NotifyPropertyInstance(this, kBindingChanged, shown.data());
    }
    binding_ = std::move(stored);
}

// -- as every kind --------------------------------------------------------------------------------

int AttributeInstance::GetBinarySize() const {
    return GetProperty()->GetValueSize();
}

int AttributeInstance::GetPadding(int offset) const {
    return GetProperty()->GetPadding(offset);
}

bool AttributeInstance::IsValid() const {
    const void* value = GetReadableValue();
    return value && dimension_ >= GetType()->GetDimension() &&
           GetAttributeProperty().IsValueValid(value);
}

int AttributeInstance::WriteToBinary(void* buffer, int bufferSize) const {
    return GetProperty()->WriteValueToBinary(GetReadableValue(), dimension_, buffer, bufferSize);
}

void AttributeInstance::CopyFrom(const PropertyInstance& source) {
    PropertyInstance::CopyFrom(source);
    const auto& other = static_cast<const AttributeInstance&>(source);
    binding_ = other.binding_;
    dimension_ = other.dimension_;
}

void AttributeInstance::CopyPlainValue(AttributeInstance& source) {
    if (!source.GetValue())
        return;
    StoredValue copy;
    copy.Copy(source.value_);
    TakeValue(copy, dimension_);
}

} // namespace Kor
