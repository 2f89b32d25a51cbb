#pragma once

#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "core/Lockable.h"
#include "core/MakeRoom.h"
#include "core/NamedObject.h"
#include "core/SortedObjectList.h"
#include "core/TiedList.h"
#include "core/VersionedObject.h"
#include "schema/Command.h"

namespace Kor {

class Instance;
class PropertyInstance;
class Template;
class Type;
class ViewProperty;

/// A member that a template declares: what all kinds of properties share.
///
/// Its owner is the template version that introduced it: this one gives it its full name and frees
/// it. Its holders are all templates that list it, the owner among them: they follow its name and
/// learn of its end. Its keeper frees it where it is a copy without an owner. So a property passes
/// through versions: added to its own version, which becomes its owner, the same object is also
/// listed by the later versions there are, up to the first that has a newer property of that name.
/// A version made afterwards lists copies, each with its source as its predecessor: it keeps them
/// all, and it owns those whose source was introduced by the version that it was copied from. Each
/// is made when it is first asked for (InheritedProperties). Where a newer property of the name is
/// added, it takes over the lookup, with the older one as its predecessor; that one stays in the
/// declaration order.
class Property : public NamedObject, public VersionedObject, public Lockable {
public:
    static constexpr int kClassId = kPropertyClass;
    KOR_OBJECT_MEMORY

    ~Property() override { Property::Leave(); }

    int GetClass() const override { return kClassId; }
    bool ImplementsClass(int id) const override {
        return id == kClassId || NamedObject::ImplementsClass(id);
    }
    std::unique_ptr<Object> Clone() const override = 0;

    /// The templates that list the property follow its new name. The full name, by which instances
    /// find the value, stays as it is until the owner is set again.
    bool SetName(const char* name) override;

    // -- owner ----------------------------------------------------------------------------------

    /// "Owner.name" (the owner's short name), or the name alone while there is no owner.
    std::string_view GetFullName() const { return fullName_.View(); }
    const char* GetFullNameText() const { return fullName_.CStr(); }

    /// The template version that introduced the property, or null.
    Template* GetOwner() const { return owner_; }
    void SetOwner(Template* owner);

    /// Called by an owner at its end; the full name stays.
    void ForgetOwner(const Template& owner) {
        if (owner_ == &owner)
            owner_ = nullptr;
    }

    // -- commands -------------------------------------------------------------------------------

    /// The index, or the complement of the index of the command of that name that was overwritten
    /// (and is neither deleted nor returned).
    int AddCommand(Command* command);

    /// The index that the command of that name had, or the failed search's result.
    int RemoveCommand(Command* command);
    int GetCommandCount() const { return commands_.GetCount(); }
    Command* GetCommandAt(int index) const { return commands_.GetAt(index); }

    // -- what the kinds refine ------------------------------------------------------------------

    /// Adds the packages of the types that the declaration needs.
    virtual void CollectPackages(std::set<std::string>&) const {}

    /// Bytes of one value as declared.
    virtual int GetValueSize() const = 0;

    /// The padding in front of a value at an offset.
    virtual int GetPadding(int) const { return 0; }

    /// Whether the property's type depends on `type`, seen from outside the given file.
    virtual bool RefersTo(const Type*, const char*) const { return false; }

    /// The type whose values are part of the owner's values; null when there is none.
    virtual const Type* GetContainedType() const { return nullptr; }

    /// Makes the value side of this property inside an instance.
    virtual std::unique_ptr<PropertyInstance> CreateInstance(Instance& instance) = 0;

    /// Packs a value into a buffer and gives the bytes used.
    virtual int WriteValueToBinary(const void* value, int count, void* buffer,
                                   int bufferSize) const = 0;

    /// Composes the full name anew from the owner's name and the own one.
    void UpdateFullName();

    // -- use ------------------------------------------------------------------------------------

    /// Takes itself out of the templates that list it. The commands stay, since hosts hold them.
    void Leave() noexcept override;

    /// Whether a property instance refers to this property.
    bool IsInUse() const { return useCount_ > 0; }
    void AddUse() { ++useCount_; }
    void ReleaseUse() {
        if (--useCount_ == 0 && staysForUsers_)
            EndUnused();
    }

    /// A property that ended while property instances referred to it belongs to these.
    bool IsNeeded() const override { return IsInUse(); }
    void StayForUsers() override;

    // -- prototypes -----------------------------------------------------------------------------

    /// Makes this copy, which nobody has seen yet, the prototype of those that versions make when
    /// they are asked for: it shows what the template had when a version was made from it. A
    /// prototype is in no template; it belongs to its users, the trees that have it.
    virtual void BecomePrototype(Template* source);

    /// The other way round: the copy itself, without users.
    virtual void BecomeCopy();
    bool IsPrototype() const { return isPrototype_; }

    /// The template that a prototype shows; perhaps gone.
    const Template* GetSource() const { return keeper_; }
    int GetUseCount() const { return static_cast<int>(useCount_); }

    /// Ends the prototype with its last user, and all that it has.
    void ReleasePrototype();

    /// Deletes what else copying made; for copies that nobody has seen.
    virtual void DropUnseenParts();

    /// Whether copies of this prototype share a type with its source that was left to its users
    /// since then. A copy that is made of the source now gets one of its own.
    virtual bool SharesLeftType() const { return false; }

    /// The owner alone: the prototype had the full name already.
    void AdoptOwner(Template* owner) { owner_ = owner; }

    /// Kept by the templates that list the property.
    void MakeRoomForHolder() { MakeRoom(holders_); }
    void AddHolder(Template* holder) { holders_.push_back(holder); }
    void RemoveHolder(Template* holder);
    const PointerList<Template>& GetHolders() const { return holders_; }

    /// Called by a command around a change of its name and at its end.
    void UnlistCommand(Command& command) { commands_.RemoveExactly(&command); }
    void ListCommand(Command& command) { commands_.Place(&command); }

    /// Kept by the view properties that refer to the property.
    void MakeRoomForViewer() { viewers_.MakeRoom(); }
    void AddViewer(ViewProperty* viewer);
    void RemoveViewer(ViewProperty* viewer);

    /// The template that frees this copy although its version keeps it from being the owner.
    Template* GetKeeper() const { return keeper_; }
    void SetKeeper(Template* keeper) { keeper_ = keeper; }

    /// When the property was added to its version, in the numbers of SchemaHistory; 0 for a copy,
    /// which came with its version.
    unsigned GetTime() const { return time_; }
    void SetTime(unsigned time) { time_ = time & 0x7fffffffu; }

protected:
    Property(std::string_view name, int version);

    /// The copy succeeds the source, has copies of its commands, and no owner.
    Property(const Property& source);

    /// The full name for the present owner and name.
    virtual void ComposeFullName(std::string& fullName) const;

    void StoreFullName(std::string_view fullName);

private:
    void EndUnused();

    CompactString fullName_;
    Template* owner_ = nullptr;
    Template* keeper_ = nullptr;
    SortedObjectList<Command> commands_;
    PointerList<Template> holders_;
    TiedList<ViewProperty> viewers_;
    unsigned useCount_ : 31;
    bool isPrototype_ : 1;
    unsigned time_ : 31;
    bool staysForUsers_ : 1;
};

} // namespace Kor
