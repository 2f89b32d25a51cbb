#pragma once

#include <memory>

#include "core/BlockPool.h"
#include "schema/Property.h"
#include "types/TypeRef.h"
#include "types/TypedValue.h"

namespace Kor {

/// A property that holds typed data, with a default, optional bounds, a reference flag and a
/// host-side binding text.
class AttributeProperty : public Property {
public:
    static constexpr int kClassId = kAttributePropertyClass;
    KOR_OBJECT_MEMORY

    AttributeProperty(std::string_view name, int version) : Property(name, version) {}
    ~AttributeProperty() override { AttributeProperty::Leave(); }

    int GetClass() const override { return kClassId; }
    bool ImplementsClass(int id) const override {
        return id == kClassId || Property::ImplementsClass(id);
    }
    std::unique_ptr<Object> Clone() const override;

    Type* GetType() const { return type_.Get(); }

    /// False, changing nothing, when the owner would come to contain itself; a property marked as
    /// a reference is never refused. An unregistered custom type then belongs to the properties
    /// that use it; the type it replaces goes back to the caller. Values stay as they are.
    bool SetType(Type* type);

    /// True: the property holds a reference to an object of the type rather than a value of it.
    bool IsReference() const { return reference_; }
    void SetReference(bool reference) { reference_ = reference; }

    /// The values, blocks of the type that is set when they are handed over; owned. Those that are
    /// handed over before there is a type stay the caller's until there is one.
    void* GetDefaultValue() const { return Fetch(kDefault).Get(); }
    void* GetMinValue() const { return Fetch(kMinimum).Get(); }
    void* GetMaxValue() const { return Fetch(kMaximum).Get(); }

    /// The given one of them for the host, which may then keep the instances inside.
    void* HandOut(void* value);

    /// The same, but null where the block has another form or fewer elements than the type's
    /// values (a default: than `count`), because the type was changed since.
    const void* GetReadableDefault(int count) const {
        const TypedValue& value = Fetch(kDefault);
        return value.GetCount() >= count ? GetReadable(value) : nullptr;
    }
    const void* GetReadableMin() const { return GetReadable(Fetch(kMinimum)); }
    const void* GetReadableMax() const { return GetReadable(Fetch(kMaximum)); }

    /// Calls a function with each readable value, but for the type's initial ones that nobody has
    /// asked for yet: these are not made for that.
    template <class Body> void VisitMadeValues(const Body& body) const {
        for (const Slot slot : {kDefault, kMinimum, kMaximum}) {
            if (const void* value = GetReadable(GetMade(slot)))
                body(value);
        }
    }

    void SetDefaultValue(void* value) { Store(kDefault, value); }
    void SetMinValue(void* value) { Store(kMinimum, value); }
    void SetMaxValue(void* value) { Store(kMaximum, value); }

    /// Frees all three.
    void DropValues() {
        SetDefaultValue(nullptr);
        SetMinValue(nullptr);
        SetMaxValue(nullptr);
    }

    /// The values go, since they may hold instances; the type stays for the property instances.
    void Leave() noexcept override;

    /// Whether the value lies within the bounds by the type's rules; false without a type.
    bool IsValueValid(const void* value) const;

    const char* GetAutoBind() const { return autoBind_.CStr(); }
    void SetAutoBind(std::string_view text) { autoBind_.Assign(text); }

    void CollectPackages(std::set<std::string>& packages) const override;
    int GetValueSize() const override;
    int GetPadding(int offset) const override;
    bool RefersTo(const Type* type, const char* excludedFile) const override;
    const Type* GetContainedType() const override;
    bool SharesLeftType() const override;
    std::unique_ptr<PropertyInstance> CreateInstance(Instance& instance) override;
    int WriteValueToBinary(const void* value, int count, void* buffer,
                           int bufferSize) const override;

protected:
    /// The copy has the type (a clone of its own where the type belongs to the property) and fresh
    /// values: the type's initial value each, not the source's, since each version is given
    /// its own default and bounds. They are made when they are first asked for, since most of them
    /// never are and those of templates are large.
    AttributeProperty(const AttributeProperty& source);

private:
    enum Slot { kDefault, kMinimum, kMaximum, kSlots };
    static constexpr unsigned char kAllDue = (1 << kSlots) - 1;

    /// Made with the first value: most properties never have any.
    struct Values : Pooled {
        TypedValue slots[kSlots];
    };

    static int CountElements(const Type& type);
    void Store(Slot slot, void* value);
    const TypedValue& Fetch(Slot slot) const;
    const TypedValue& GetMade(Slot slot) const;
    TypedValue& EditMade(Slot slot) const;
    bool IsDue(Slot slot) const { return (due_ >> slot & 1) != 0; }
    void SettleDue() const;
    const void* GetReadable(const TypedValue& value) const;

    int CountOwnUses() const;
    bool WouldContainItself(const Type& type) const;

    TypeRef type_;
    mutable std::unique_ptr<Values> values_;
    /// A bit for each slot that has the type's initial value, not made yet.
    mutable unsigned char due_ = 0;
    bool reference_ = false;
    bool hasTypeOfItsOwn_ = false; ///< Copied with the property.
    CompactString autoBind_;
};

} // namespace Kor
