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
#include "types/TypedValue.h"
#include "xml/XMLWriter.h"

namespace Kor {

namespace {

/// The non-null block that stands for a value without elements; zeroes, for those who look anyway.
alignas(8) char emptyBlock[16] = {};

bool IsTemplateValue(const Type* type) {
    return type && ObjectCast<Template>(type->GetStorageType());
}

} // namespace

AttributeInstance::AttributeInstance(Instance& instance, AttributeProperty& property)
    : PropertyInstance(instance, property),
      dimension_(property.GetType() ? property.GetType()->GetDimension() : 0) {}

AttributeInstance::~AttributeInstance() {
    FreeValue();
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
    return value_ ? IsTemplateValue(valueType_.Get()) : TakesInstances();
}

Instance* AttributeInstance::GetNestedInstance(int index) const {
    if (!value_ || index < 0 || index >= dimension_ || !HoldsInstances())
        return nullptr;
    return static_cast<Instance**>(value_)[index];
}

const void* AttributeInstance::GetReadableValue() const {
    const Type* type = GetType();
    return value_ && type && valueType_->GetStorageType() == type->GetStorageType() ? value_
                                                                                    : nullptr;
}

// -- value ----------------------------------------------------------------------------------------

// Every block is adopted with the type and the dimension that it was made for: callbacks may have
// changed both by then.

void* AttributeInstance::GetValue() {
    Type* type = GetType();
    if (value_ || !type)
        return value_;
    AdoptValue(type, dimension_,
               type->NewValue(GetAttributeProperty().GetReadableDefault(dimension_), dimension_));
    if (HoldsInstances())
        LinkNestedInstance();
    return value_;
}

/// The copy is made first: callbacks may change or free what the source points to.
void AttributeInstance::SetValue(const void* source) {
    const TypeRef type(GetType());
    if (!type)
        return;
    const int dimension = dimension_;
    TypedValue copy;
    copy.Adopt(type.Get(), type->NewValue(source, dimension), dimension);
    Announce(*type.Get(), copy.Get(), dimension);
    RemoveNestedTemplates();
    AdoptValue(type.Get(), dimension, copy.Release());
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
    TypedValue made;
    made.Adopt(type.Get(), type->NewValue(nullptr, dimension), dimension);
    for (int i = 0; made && i < std::min(count, dimension); ++i)
        type->GetValueFromString(texts[i], made.Get(), i);
    Announce(*type.Get(), made.Get(), dimension);
    RemoveNestedTemplates();
    AdoptValue(type.Get(), dimension, made.Release());
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
    if (index == 0) {
        RemoveNestedTemplates();
        FreeValue();
    }
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
    Instance*& element = static_cast<Instance**>(value_)[index];
    if (element) {
        element->AttachSilently(nullptr);
        element->Abandon();
    }
    element = instance.release();
}

void AttributeInstance::ForgetNestedInstance(const Instance& nested) {
    for (int i = 0; i < dimension_; ++i) {
        if (GetNestedInstance(i) == &nested)
            static_cast<Instance**>(value_)[i] = nullptr;
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
    NotificationManager* notifications = NotificationManager::Get();
    for (int i = 0; first && notifications && i < first->GetTemplateCount(); ++i)
        notifications->NotifyInstance(first, kTemplateAdded, first->GetTemplateAt(i));
}

void AttributeInstance::OrphanNestedInstances() const {
    for (int i = 0; i < dimension_; ++i) {
        Instance* nested = GetNestedInstance(i);
        if (nested && nested->GetHolder() == this)
            nested->AttachSilently(nullptr);
    }
}

/// Grows the block of references; the new ones are null.
void AttributeInstance::ResizeNested(Type* type, int dimension) {
    if (value_ && !HoldsInstances())
        FreeValue();
    const int old = value_ ? dimension_ : 0;
    if (value_ && dimension <= old)
        return;
    const size_t size = static_cast<size_t>(std::max(dimension, 1)) * sizeof(void*);
    auto* block = static_cast<Instance**>(std::realloc(value_, size));
    if (!block)
        throw std::bad_alloc();
    std::fill(block + old, block + dimension, nullptr);
    value_ = block;
    dimension_ = dimension;
    valueType_.Reset(type);
}

void AttributeInstance::AdoptValue(Type* type, int dimension, void* block) {
    FreeValue();
    dimension_ = dimension;
    const bool holdsInstances = IsTemplateValue(type);
    if (!block && dimension < 1 && type && type->GetStorageType() && !holdsInstances)
        block = emptyBlock;
    value_ = block;
    if (!block)
        return;
    valueType_.Reset(type);
    for (int i = 0; holdsInstances && i < dimension_; ++i) {
        if (Instance* nested = GetNestedInstance(i))
            nested->SetHolder(this);
    }
}

void AttributeInstance::FreeValue() {
    OrphanNestedInstances();
    void* block = std::exchange(value_, nullptr);
    if (block && block != emptyBlock)
        valueType_->DeleteValue(block, dimension_);
    valueType_.Reset(nullptr);
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

void AttributeInstance::OpenInXML(XMLWriter& writer) const {
    writer.StartElement("attribute");
    writer.WriteAttribute("property", GetKey());
    writer.WriteAttribute("binding", binding_.View());
}

void AttributeInstance::WriteToXML(XMLWriter& writer) const {
    OpenInXML(writer);
    if (value_)
        valueType_->WriteValueToXML(value_, dimension_, writer);
    writer.EndElement();
}

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
    const void* value = source.GetValue();
    if (!value)
        return;
    Type* type = source.valueType_.Get();
    const Type* storage = type->GetStorageType();
    AdoptValue(type, dimension_, storage ? storage->CopyValue(value, dimension_) : nullptr);
}

} // namespace Kor
