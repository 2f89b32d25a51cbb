#pragma once

#include <memory>

#include "core/CompactString.h"
#include "instances/PropertyInstance.h"
#include "instances/StoredValue.h"

namespace Kor {

class AttributeProperty;

/// A typed value and its binding. The value comes into being when it is first asked for (from the
/// property's default) or set.
class AttributeInstance : public PropertyInstance {
public:
    static constexpr int kClassId = kAttributeInstanceClass;
    KOR_OBJECT_MEMORY

    AttributeInstance(Instance& instance, AttributeProperty& property);
    ~AttributeInstance() override;

    int GetClass() const override { return kClassId; }
    bool ImplementsClass(int id) const override {
        return id == kClassId || PropertyInstance::ImplementsClass(id);
    }

    const AttributeProperty& GetAttributeProperty() const;

    // -- value ----------------------------------------------------------------------------------

    /// The value block, made from the property's default when there is none yet; null without a
    /// type.
    void* GetValue();

    /// The value block as it is, perhaps null.
    const void* GetStoredValue() const { return value_.Get(); }
    const Type* GetStoredType() const { return value_ ? value_.GetType() : nullptr; }

    /// Announces and stores a copy of the block, which may be the attribute's own. Does nothing
    /// without a type.
    void SetValue(const void* source);

    /// Announces and stores texts, one an element; a value of variable length takes their number.
    /// Elements without a text are the type's zero, texts without an element are ignored.
    void SetValueFromTexts(const char* const* texts, int count);

    /// Announces and stores an instance as an element of a template-typed value: the first replaces
    /// the value, the others join it. False, leaving the instance to the caller, when the type
    /// holds no instances or the dimension forbids that many.
    bool SetNestedInstance(std::unique_ptr<Instance>& instance, int index);

    /// The property's type, and whether it is a template: values to come are then instances.
    Type* GetType() const;
    bool TakesInstances() const;

    /// Whether the value block is a template's, which made it before the property was given another
    /// type perhaps; without a block as TakesInstances.
    bool HoldsInstances() const;
    Instance* GetNestedInstance(int index) const;

    /// The value block when the property's type can read it; null when there is none, or one that
    /// another type made before the property was given this one.
    const void* GetReadableValue() const;

    /// Number of elements. Setting another one drops the value; false when the type fixes it.
    int GetDimension() const { return dimension_; }
    bool SetDimension(int dimension);

    // -- binding --------------------------------------------------------------------------------

    const char* GetBinding() const { return binding_.CStr(); }
    std::string_view GetBindingView() const { return binding_.View(); }

    /// Announces the binding, then stores it as it was given.
    void SetBinding(std::string_view binding);

    // -- as every kind --------------------------------------------------------------------------

    int GetBinarySize() const override;
    int GetPadding(int offset) const override;

    /// A value that was never read or set counts as invalid.
    bool IsValid() const override;
    int WriteToBinary(void* buffer, int bufferSize) const override;

    /// Everything but the value, which may nest deeply and is copied by the instance.
    void CopyFrom(const PropertyInstance& source) override;

    /// Takes over a copy of a value that holds no instances.
    void CopyPlainValue(AttributeInstance& source);

    /// Makes the value a block of as many null references as the dimension says.
    void MakeEmptyNestedValue() { ResizeNested(GetType(), dimension_); }
    void StoreNestedInstance(std::unique_ptr<Instance> instance, int index);

    /// The value block for the host, which may then keep the instances inside.
    void* HandOutValue();

    /// A value of instances goes, so that these learn of it.
    void Leave() noexcept override;

    /// Called by a nested instance that is deleted by hand.
    void ForgetNestedInstance(const Instance& nested);

private:
    void Announce(const Type& type, const void* source, int dimension);
    void TakeValue(StoredValue& made, int dimension);
    void LinkNestedInstance();
    void RemoveNestedTemplates() const;
    void AnnounceNestedTemplates() const;
    void ResizeNested(Type* type, int dimension);
    void OrphanNestedInstances() const;
    void FreeValue();

    int dimension_;
    CompactString binding_;
    StoredValue value_;
};

} // namespace Kor
