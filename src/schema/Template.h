#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "core/KeyHash.h"
#include "core/ObjectRegistry.h"
#include "core/SortedObjectList.h"
#include "core/VersionedObject.h"
#include "schema/InheritedProperties.h"
#include "schema/ParentTimes.h"
#include "schema/Property.h"
#include "schema/TemplateViews.h"
#include "types/Type.h"

namespace Kor {

class BinaryPacker;

/// One version of a class of scene objects: parents, properties, views. A template is itself a
/// type; its values are arrays of references to Instance objects.
class Template : public Type, public VersionedObject {
public:
    static constexpr int kClassId = kTemplateClass;
    KOR_OBJECT_MEMORY

    Template(std::string_view name, int dimension, int alignment);
    ~Template() override;

    int GetClass() const override { return kClassId; }
    bool ImplementsClass(int id) const override {
        return id == kClassId || Type::ImplementsClass(id);
    }

    /// A copy with the parents of this template and copies of its properties in name order. Its
    /// views, listed for each version by itself, and its children, which extend it, stay with it.
    std::unique_ptr<Object> Clone() const override;

    // -- key and version ------------------------------------------------------------------------

    /// The full name, "#", and the version in decimal, e.g. "geo.Mesh#2".
    std::string_view GetKey() const override { return key_; }
    void SetVersion(int version) override;

    /// The highest version known for this name; kept equal on all versions by the manager, which
    /// may let them share the number.
    int GetLatestVersion() const { return sharedLatest_ ? *sharedLatest_ : latestVersion_; }
    void SetLatestVersion(int version) {
        latestVersion_ = version;
        sharedLatest_.reset();
    }
    void ShareLatestVersion(std::shared_ptr<const int> version) {
        sharedLatest_ = std::move(version);
    }

    /// A copy of another template as its successor of the given version. It is no child of the
    /// source's parents under the source's key, but under its own.
    static std::unique_ptr<Template> MakeVersion(const Template& source, int version);

    /// The new template is version 1 of its own name.
    void Redeclare(std::string_view name, std::string_view packageName, Type* base) override;

    /// Makes this (emptied) template once more a successor of another one.
    void BecomeVersionOf(const Template& source);

    /// When the version came into being, and when it got a parent: what it had from its beginning
    /// has an earlier number.
    unsigned GetCreationTime() const { return creationTime_; }
    unsigned GetParentTime(const Template& parent) const { return parentTimes_.Get(&parent); }

    // -- parents and children -------------------------------------------------------------------

    /// The index; -1 when the parent is this template or descends from it; the complement of the
    /// index when a parent with that key was overwritten (then no child link is added).
    int AddParent(Template* parent);

    /// The index the parent had, or a number below 0. A template without parents falls back to
    /// the root, unless it is the root that was removed.
    int RemoveParent(Template* parent);

    int GetParentCount() const { return parents_.GetCount(); }
    Template* GetParentAt(int index) const { return parents_.GetAt(index); }
    Template* GetParent(std::string_view key) const { return parents_.Get(key); }
    int GetChildCount() const { return children_.GetCount(); }
    Template* GetChildAt(int index) const { return children_.GetAt(index); }
    Template* GetChild(std::string_view key) const { return children_.Get(key); }

    /// Whether `other` is a direct parent, by its key.
    bool IsChildOf(const Template* other) const { return parents_.Find(other->GetKey()) >= 0; }

    /// Whether `other` is a parent or an ancestor, by its key.
    bool IsDescendantOf(const Template* other) const;

    // -- properties -----------------------------------------------------------------------------

    /// Adds at a position of the declaration order (below 0: at the end). The index by name; the
    /// complement of the index when an older definition of that name gave way in the lookup (it
    /// stays in the declaration order); -1 when refused, because the template would contain itself
    /// or has a property of that name and version. `refused` tells that -1 from the complement of
    /// the index 0.
    int AddProperty(Property* property, int position, bool* refused = nullptr);

    /// Takes whatever has the property's name out of the lookup, and exactly the given object out
    /// of the declaration order; gives the position there, -1 without it. Nothing is deleted.
    int RemoveProperty(Property* property);

    // What a version has from the template that it was made from is copied when it is asked for:
    // `Get...` makes the copies and may throw std::bad_alloc, `Peek...` and `Visit...` give what
    // the copies would be made of, which is only to be read, for as long as nothing changes.

    /// Own properties by name: fewer than the declaration order holds once one was redefined. Null
    /// out of range.
    int GetPropertyCount() const;
    Property* GetPropertyByName(int index) const { return FindByName(index, &Template::GetEntry); }
    const Property* PeekByName(int index) const { return FindByName(index, &Template::PeekEntry); }

    /// The same in the order of declaration.
    int GetDeclaredCount() const;
    Property* GetDeclaredAt(int index) const { return FindDeclared(index, &Template::GetEntry); }
    const Property* PeekDeclaredAt(int index) const {
        return FindDeclared(index, &Template::PeekEntry);
    }

    /// All of them, copied.
    const SortedObjectList<Property>& GetOwnProperties() const {
        CopyAll();
        return propertiesByName_;
    }
    const PointerList<Property>& GetDeclaredProperties() const {
        CopyAll();
        return properties_;
    }

    /// The own property of that name, or the first that the parents have, in key order, depth
    /// first.
    Property* GetProperty(std::string_view name, bool includeInherited) const;
    const Property* PeekProperty(std::string_view name, bool includeInherited) const;

    /// The property that something peeked at or visited stands for.
    Property* GetPeeked(const Property& peeked) const;

    /// Calls a function with each own property, those that were inherited first; with the number of
    /// a walk (not 0) only with what the same walk did not meet in other versions, where it was the
    /// same: all together then take no longer than what is new in each.
    template <class Body> void VisitProperties(std::uint64_t walk, const Body& body) const {
        if (inherited_)
            inherited_->VisitListed(walk, body);
        propertiesByName_.ForEach([&body](const Property* property) { body(*property); });
    }

    /// The same in the order of declaration.
    template <class Body> void VisitDeclared(std::uint64_t walk, const Body& body) const {
        if (inherited_)
            inherited_->VisitDeclared(walk, body);
        properties_.ForEach([&body](const Property* property) { body(*property); });
    }

    /// Calls a function with each declared property but those that nobody asked for yet.
    template <class Body> void ForEachMade(const Body& body) const {
        if (inherited_)
            inherited_->ForEachCopy(body);
        properties_.ForEach([&body](Property* property) { body(*property); });
    }

    /// Frees the values of all properties.
    void DropValues();

    /// All properties that an instance of this template has, inherited ones first where two share
    /// a full name, sorted by full name. Valid until the schema changes.
    const std::vector<Property*>& GetInstanceProperties() const;

    // -- views ----------------------------------------------------------------------------------

    TemplateViews& GetViews() { return views_; }
    const TemplateViews& GetViews() const { return views_; }

    /// The view of that name, or with inherited ones the first that an ancestor has.
    View* GetView(std::string_view name, bool includeInherited) const;

    // -- the subtree, children in descending key order ------------------------------------------

    /// 1 plus the children's counts: a template reached along two paths counts twice.
    int GetDescendantCount() const;
    Template* GetDescendantAt(int index);
    Template* FindDescendant(std::string_view name);

    // -- lives ----------------------------------------------------------------------------------

    /// Deletes the views and the own properties and takes away all links; children left without a
    /// parent fall back to `fallback`, when there is one. Without memory nothing has changed.
    void Clear(Template* fallback);

    /// Gives the children that have no other parent to another template as well. Without memory
    /// nothing has changed.
    void ShareChildren(Template* fallback);

    /// Sorts by full name, and the versions of one name from the highest to the lowest: the order
    /// in which clearing costs least. What a version lists of lower ones is then taken from it
    /// before it is deleted.
    static void SortForClearing(std::vector<Template*>& templates);

    /// The template keeps nothing but its name: what others still use it for is that of a type.
    void Leave() noexcept override;

    /// Prepares a recycled template for a new definition: what instances still use moves out of
    /// sight, the rest goes.
    /// It falls back to `parent`, when there is one. Without memory nothing has changed.
    void BeginRedefinition(Template* parent);

    /// Whether a living instance implements the template or holds property instances of it.
    bool IsUsedByInstances() const;
    void AddInstance() {
        ++instanceCount_;
        AddUse();
    }

    /// A template that was left to its users may go with this one.
    void RemoveInstance() {
        --instanceCount_;
        ReleaseUse();
    }

    // -- as a type ------------------------------------------------------------------------------

    /// Forwards to the own properties; adds nothing of its own.
    void CollectPackages(std::set<std::string>& packages) const override;

    /// The same for all templates among the types, each asked once, however they contain each
    /// other.
    static void CollectPackages(const std::vector<const Type*>& types,
                                std::set<std::string>& packages);

    /// Whether this template can be met inside of another type: only what is used as a type or has
    /// children can. Spares the walk through everything that a new property's type contains.
    bool MayBeMet() const { return IsInUse() || HasChildren(); }

    /// Whether the template, its base type, an ancestor or the type of a property is `other`; a
    /// template of the excluded file never refers to anything.
    bool RefersTo(const Type* other, const char* excludedFile) const override;

    int GetValueSize(const void* value, int count) const override;

    /// New instances of the template, or copies of the given ones (null stays null).
    void* NewValue(const void* initial, int count) const override;

    /// Called with a value that the host gets to see: where it is one of instances, these stay when
    /// the value goes.
    static void HandOut(const Type& type, void* value, int count);

    /// A block of null references; null below 1.
    static void* NewEmptyValue(int count);

    /// Frees neither the array nor the instances that hosts know, which may go on using them.
    void DeleteValue(void* value, int count) const override;

    /// By the instances' names, without regard to case.
    int CompareValues(const void* a, const void* b, int count) const override;

    /// Whether no element is null; bounds mean nothing here.
    bool IsValueValid(const void* value, const void* minimum, const void* maximum,
                      int count) const override;

    /// The instance's name.
    int GetValueAsString(const void* value, std::string& text, int index) const override;

    /// Replaces the instance by a new one of the template named by the text, if there is one.
    int GetValueFromString(const char* text, void* value, int index) const override;

    int WriteValueToBinary(const void* value, int count, void* buffer,
                           int bufferSize) const override;

    /// What stands in front of a packed value of variable length: padding, and behind it the count
    /// (other types write theirs to the first bytes). Nothing where the dimension is fixed.
    void WriteCountToBinary(int count, BinaryPacker& packer) const;

    // -- kept for Property and the walks --------------------------------------------------------

    /// False when the lookup does not have the property: an older definition.
    bool UnlistName(Property& property);
    void MakeRoomForName();
    void ListName(Property& property) { propertiesByName_.Place(&property); }
    void ForgetProperty(Property& property);
    const SortedObjectList<Template>& GetParents() const { return parents_; }

    /// True for the first visit of this template in a walk.
    bool Visit(std::uint64_t walk) const;

protected:
    void UpdateFullName() override;
    void MakeRoomInSortedLists() override;
    void LeaveSortedLists() override;
    void EnterSortedLists() override;

private:
    struct AsVersion {
        int version;
    };
    Template(const Template& source, AsVersion version);

    bool HasChildren() const { return !children_.IsEmpty() || !unlistedChildren_.IsEmpty(); }
    bool MayHaveDescendants() const;
    bool IsOnlyOneOfItsKey() const;
    static std::unordered_map<std::string, int, KeyHash>& KeyCounts();
    static void ReleaseKey(const std::string& key);
    void CopyParentsAndProperties(const Template& source);
    void CopyProperties(const Template& source);
    void CopyWhatIsNotShared();
    void AdoptCopy(Property& copy, const Property& prototype);
    void LinkToSource(Property& copy, const Property& prototype);
    UnseenProperty CopyPrototype(const Property& prototype) const;
    Property* CopyInherited(int index);
    void CopyAll() const {
        if (inherited_)
            const_cast<Template*>(this)->CopyAllInherited(); // shows the same afterwards
    }
    std::vector<Property*> CopyAllInherited();
    SortedObjectList<Property> MergeNames(const std::vector<Property*>& copies) const;
    PointerList<Property> MergeDeclared(const std::vector<Property*>& copies) const;

    using Entry = Property* (Template::*)(int) const;
    Property* FindByName(int index, Entry entry) const;
    Property* FindDeclared(int index, Entry entry) const;
    Property* FindOwn(std::string_view name, Entry entry) const;
    Property* GetEntry(int index) const;
    Property* PeekEntry(int index) const { return &inherited_->Peek(index); }
    const Template* FindOwner(std::string_view name, bool includeInherited) const;
    int CountListedUpTo(const Property& own) const;
    bool IsListed(const Property& property) const;
    void MakeRoomBefore(const Property& property, int position);
    int ListOwn(Property& property);
    void UnlistOwn(Property& property);
    int Undeclare(Property& property);
    void DropProperty(Property& property, bool keepUsed);
    int PlaceParent(Template* parent);
    bool MayGetParent(const Template* parent) const;
    void MakeRoomForParent(Template& parent);
    int LinkParent(Template* parent);
    void LinkChild(Template* child);
    void UnlinkChild(Template* child);
    void UnlinkParent(Template* parent);
    void ReplaceParent(Template* replaced, Template* parent);
    template <class Body> void ForEachParent(const Body& body) const;
    template <class Body> void ForEachChild(const Body& body) const;
    void DropLinks();
    void DropParents(const Template* kept);
    void DropChildren();
    void DropProperties(bool keepUsed);
    Property* GetLastLeft() const;
    void LetGoOfLast(Property& property);
    bool Frees(const Property& property) const {
        return property.GetOwner() == this || property.GetKeeper() == this;
    }
    void DropRetired(bool keepUsed);
    void ReleaseRemoved();

    std::string key_;
    int latestVersion_ = 1;
    std::shared_ptr<const int> sharedLatest_; // where there is one, it counts
    SortedObjectList<Template> parents_;
    ParentTimes parentTimes_; // of parents that were added once there was a later version
    ObjectRegistry<Template> children_;
    /// Children that are not shown, because another object of the same key has their place or had
    /// this template's place among their parents, but must learn of this template's end.
    SortedObjectList<Template> unlistedChildren_;
    /// Templates that go on showing this one as a child although another of the same key has taken
    /// their place among the parents.
    PointerList<Template> formerParents_;
    /// What was not asked for yet, or hardly; null where all is in the lists below.
    std::unique_ptr<InheritedProperties> inherited_;
    SortedObjectList<Property> propertiesByName_;
    PointerList<Property> properties_;
    /// Former properties that living property instances still refer to; owned.
    PointerList<Property> retiredProperties_;
    /// Properties that were taken out but go on naming this template as their owner.
    PointerList<Property> removedProperties_;
    TemplateViews views_{*this};
    int instanceCount_ = 0;
    unsigned creationTime_;

    mutable std::vector<Property*> instanceProperties_;
    mutable std::uint64_t instancePropertiesRevision_ = 0;
    mutable std::uint64_t lastWalk_ = 0;
};

} // namespace Kor
