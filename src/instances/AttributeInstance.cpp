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
#include "xml/XMLWriter.h"

namespace Kor {

namespace {

/// The non-null block that stands for a value without elements; zeroes, for those who look anyway.
alignas(8) char emptyBlock[16] = {};

} // namespace

AttributeInstance::AttributeInstance(Instance& instance, AttributeProperty& property)
    : PropertyInstance(instance, property),
      dimension_(property.GetType() ? property.GetType()->GetDimension() : 0) {}

AttributeInstance::~AttributeInstance() {
    OrphanNestedInstances();
    FreeValue();
}

const AttributeProperty& AttributeInstance::GetAttributeProperty() const {
    return static_cast<const AttributeProperty&>(*GetProperty());
}

Type* AttributeInstance::GetType() const {
    return GetAttributeProperty().GetType();
}

bool AttributeInstance::HoldsInstances() const {
    const Type* type = value_ ? valueType_.Get() : GetType();
    return type && ObjectCast<Template>(type->GetStorageType());
}

Instance* AttributeInstance::GetNestedInstance(int index) const {
    if (!value_ || index < 0 || index >= dimension_ || !HoldsInstances())
        return nullptr;
    return static_cast<Instance**>(value_)[index];
}

// -- value ----------------------------------------------------------------------------------------

void* AttributeInstance::GetValue() {
    Type* type = GetType();
    if (value_ || !type)
        return value_;
    AdoptValue(type->NewValue(GetAttributeProperty().GetDefaultValue(), dimension_));
    if (HoldsInstances())
        LinkNestedInstance();
    return value_;
}

void AttributeInstance::SetValue(const void* source) {
    Type* type = GetType();
    if (!type)
        return;
    Announce(source);
    void* copy = type->NewValue(source, dimension_);
    if (value_ && HoldsInstances()) {
        RemoveNestedTemplates();
        OrphanNestedInstances();
    }
    AdoptValue(copy);
    if (HoldsInstances()) {
        LinkNestedInstance();
        AnnounceNestedTemplates();
    }
}

void AttributeInstance::SetValueFromTexts(const char* const* texts, int count) {
    Type* type = GetType();
    if (!type || HoldsInstances())
        return;
    const int dimension = type->GetDimension() == 0 ? count : dimension_;
    void* block = type->NewValue(nullptr, dimension);
    for (int i = 0; block && i < std::min(count, dimension); ++i)
        type->GetValueFromString(texts[i], block, i);
    Announce(block);
    FreeValue(); // with the dimension that the old block was made for
    dimension_ = dimension;
    AdoptValue(block);
}

bool AttributeInstance::SetNestedInstance(std::unique_ptr<Instance>& instance, int index) {
    Type* type = GetType();
    if (!type || !HoldsInstances() || index < 0)
        return false;
    const bool variable = type->GetDimension() == 0;
    if (!variable && index >= dimension_)
        return false;
    const Instance* first = index == 0 ? instance.get() : GetNestedInstance(0);
    Announce(&first);
    if (index == 0 && value_) {
        RemoveNestedTemplates();
        OrphanNestedInstances();
        FreeValue();
    }
    ResizeNested(variable ? index + 1 : dimension_);
    Instance* nested = instance.get();
    StoreNestedInstance(std::move(instance), index);
    nested->SetParentPropertyInstance(this);
    if (index == 0)
        AnnounceNestedTemplates();
    return true;
}

void AttributeInstance::StoreNestedInstance(std::unique_ptr<Instance> instance, int index) {
    instance->BecomeValueElement();
    static_cast<Instance**>(value_)[index] = instance.release();
}

void AttributeInstance::Announce(const void* source) {
    NotificationManager* notifications = NotificationManager::Get();
    if (!notifications || !notifications->HasPropertyInstanceListeners())
        return;
    std::string text;
    if (source)
        GetType()->GetValueAsString(source, text, 0);
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

void AttributeInstance::OrphanNestedInstances() {
    for (int i = 0; i < dimension_; ++i) {
        Instance* nested = GetNestedInstance(i);
        if (nested && nested->GetParentPropertyInstance() == this)
            nested->SetParentPropertyInstance(nullptr);
    }
}

/// Grows the block of references; the new ones are null.
void AttributeInstance::ResizeNested(int dimension) {
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
    valueType_.Reset(GetType());
}

void AttributeInstance::AdoptValue(void* block) {
    FreeValue();
    Type* type = GetType();
    const Type* storage = type ? type->GetStorageType() : nullptr;
    if (!block && dimension_ < 1 && storage && !ObjectCast<Template>(storage))
        block = emptyBlock;
    value_ = block;
    if (block)
        valueType_.Reset(type);
}

void AttributeInstance::FreeValue() {
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
    OrphanNestedInstances();
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
    return value_ && GetAttributeProperty().IsValueValid(value_);
}

int AttributeInstance::WriteToBinary(void* buffer, int bufferSize) const {
    return GetProperty()->WriteValueToBinary(value_, dimension_, buffer, bufferSize);
}

void AttributeInstance::CopyFrom(const PropertyInstance& source) {
    PropertyInstance::CopyFrom(source);
    const auto& other = static_cast<const AttributeInstance&>(source);
    binding_ = other.binding_;
    dimension_ = other.dimension_;
}

void AttributeInstance::CopyPlainValue(AttributeInstance& source) {
    const void* value = source.GetValue();
    Type* type = GetType();
    if (!value || !type)
        return;
    AdoptValue(type->GetStorageType()->CopyValue(value, dimension_));
}

} // namespace Kor
