#pragma once

#include "core/NamedObject.h"

namespace Kor {

class Instance;
class Property;
class Template;

/// The value side of one property inside an instance: what all kinds share. It is found by its
/// property's full name; a name of its own it never has.
class PropertyInstance : public NamedObject {
public:
    static constexpr int kClassId = kPropertyInstanceClass;
    KOR_OBJECT_MEMORY

    ~PropertyInstance() override { LetGo(); }

    int GetClass() const override { return kClassId; }
    bool ImplementsClass(int id) const override {
        return id == kClassId || NamedObject::ImplementsClass(id);
    }

    /// The property's full name.
    std::string_view GetKey() const override;

    /// Refuses every name: it is found by its property's full name.
    bool SetName(const char*) override { return false; }

    Property* GetProperty() const { return property_; }

    /// The owning instance; null once the property instance was taken away from it.
    Instance* GetInstance() const { return instance_; }
    void LeaveInstance() { instance_ = nullptr; }
    void JoinInstance(Instance& instance) { instance_ = &instance; }

    /// The version of the property's owner template that the instance implements, or null.
    Template* GetTemplate() const;

    /// The locks are stored and announced, not enforced. A callback may change the flag that it is
    /// shown; what it leaves is stored. Always true.
    bool IsBindingLocked() const { return bindingLocked_; }
    bool IsValueLocked() const { return valueLocked_; }
    bool SetBindingLocked(bool locked);
    bool SetValueLocked(bool locked);

    /// Leaves its instance and no longer counts as a user of its property.
    void Leave() noexcept override;

    // -- what the kinds supply ------------------------------------------------------------------

    /// The size of the packed value as the property's type counts it.
    virtual int GetBinarySize() const = 0;

    /// The padding in front of the packed value at an offset of the block.
    virtual int GetPadding(int offset) const = 0;

    /// Whether the value is one that the property accepts, by the rules of its kind.
    virtual bool IsValid() const = 0;

    /// Packs the value into a buffer and gives the bytes used.
    virtual int WriteToBinary(void* buffer, int bufferSize) const = 0;

    /// Takes over what a copy of an instance has in common with its source's property instance.
    virtual void CopyFrom(const PropertyInstance& source);

protected:
    PropertyInstance(Instance& instance, Property& property);

private:
    void LetGo() noexcept;
    void ChangeLock(bool& stored, bool locked, int event);

    Property* property_;
    Instance* instance_;
    bool bindingLocked_ = false;
    bool valueLocked_ = false;
    bool usesProperty_ = true;
};

} // namespace Kor
