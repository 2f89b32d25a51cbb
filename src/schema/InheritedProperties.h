#pragma once

#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

#include "core/BlockPool.h"
#include "schema/Property.h"
#include "schema/PrototypeTree.h"
#include "types/Type.h"

namespace Kor {

class Template;

/// Deletes a copy of a property that nobody has seen, with all that it has.
struct UnseenDelete {
    void operator()(Property* copy) const {
        copy->DropUnseenParts();
        delete copy;
    }
};
using UnseenProperty = std::unique_ptr<Property, UnseenDelete>;

/// The properties that a version has from the template that it was made from. A host gets a copy
/// of each that belongs to this version alone; but it is made when it is first asked for, from a
/// prototype that this version shares with others. So a version costs what is new in it.
///
/// An entry is a prototype in the tree, by its index there. Some of them are touched: they have
/// been copied, or are no longer in one of the two lists of the template, by name and in the order
/// of declaration.
class InheritedProperties : public Pooled {
public:
    /// For a version that is made from `source` now, which has these properties, inherited (null:
    /// none) and own. Null where they cannot be shared, because some have the same name or follow
    /// the name of a level of detail.
    static std::unique_ptr<InheritedProperties> Make(Template& source,
                                                     const InheritedProperties* inherited,
                                                     const SortedObjectList<Property>& own,
                                                     const Template& version);

    int GetCount() const { return tree_.GetCount(); }
    int GetListedCount() const { return GetCount() - (touched_.empty() ? 0 : CountUnlisted()); }
    int GetDeclaredCount() const { return GetCount() - (touched_.empty() ? 0 : CountUndeclared()); }

    /// The entry that is listed under a name, or the complement of the place where it would be.
    int FindListed(std::string_view name) const;

    /// The entry whose prototype has a name, listed or not, or -1.
    int FindEntry(std::string_view name) const;

    /// The entry of a copy, or -1.
    int FindCopy(const Property& copy) const;

    /// How many listed or declared entries come before an entry, and the entry before which so many
    /// come.
    int CountListedBefore(int index) const { return index - SumBefore(index).unlisted; }
    int CountDeclaredBefore(int index) const { return index - SumBefore(index).undeclared; }
    int GetListedAt(int place) const;
    int GetDeclaredAt(int place) const;

    bool IsListed(int index) const;
    bool IsDeclared(int index) const;

    /// The copy if there is one, else the prototype, which is only to be read.
    Property& Peek(int index) const;
    Property* GetCopy(int index) const;

    /// Room to touch an entry: what follows needs no memory then. Throws std::bad_alloc.
    void MakeRoom();
    void SetCopy(int index, Property* copy);
    void Unlist(int index);
    void Undeclare(int index);

    /// Takes a copy that ends out of both lists.
    void Forget(const Property& copy) noexcept;

    /// Orders the copies by their names, those of one name by their addresses, for a template that
    /// lets go of all entries: from the last one on.
    void SortForTheEnd();
    Property* GetLastCopy() const { return touched_.empty() ? nullptr : touched_.back().copy; }
    void DropLastCopy() { touched_.pop_back(); }
    int CountCopies() const { return static_cast<int>(touched_.size()); }

    /// Whether so much was asked for that plain lists of all would take little more.
    bool HasManyTouched() const;

    /// The version of the template from which all was copied: what that version introduced, this
    /// one owns.
    int GetSourceVersion() const { return sourceVersion_; }

    /// Copies made from now on have no values.
    void DropValues() { hasValues_ = false; }
    bool HasValues() const { return hasValues_; }

    /// The entries of a version. A version that introduces what it inherited is the owner of copies
    /// to come, which have its name then: no prototype of before shows them.
    std::vector<int> FindOfVersion(int version) const { return tree_.FindOfVersion(version); }

    /// The first untouched entry from an index on whose copies share a type that was left to its
    /// users; the count when there is none.
    int FindLeftType(int index);

    /// Calls a function with each property, copies where there are some, that is listed or
    /// declared; with a walk's number, without those that the same walk met elsewhere.
    template <class Body> void VisitListed(std::uint64_t walk, const Body& body) const {
        Visit(walk, [&](int index, Property& prototype) {
            if (IsListed(index))
                body(touched_.empty() ? prototype : Peek(index));
        });
    }
    template <class Body> void VisitDeclared(std::uint64_t walk, const Body& body) const {
        Visit(walk, [&](int index, Property& prototype) {
            if (IsDeclared(index))
                body(touched_.empty() ? prototype : Peek(index));
        });
    }

    /// Calls a function with each copy in the order of the entries, which must not change.
    template <class Body> void ForEachCopy(const Body& body) const {
        for (const Touched& touched : touched_) {
            if (touched.copy)
                body(*touched.copy);
        }
    }

    /// Calls a function with the index of each untouched entry and with its prototype where no
    /// other version has that; lets go of those for which it returns true, which are the caller's
    /// then. Must be the last that is done with the entries.
    template <class Body> void TakeUnshared(const Body& body) {
        tree_.TakeUnshared(
            [&](int index, Property& prototype) { return !Find(index) && body(index, prototype); });
    }

private:
    struct Touched {
        int index;
        Property* copy = nullptr;
        bool isListed = true;
        bool isDeclared = true;
        int unlisted = 0; ///< So many up to here and with this one.
        int undeclared = 0;
    };
    struct Sum {
        int unlisted = 0;
        int undeclared = 0;
    };
    using TouchedList = std::vector<Touched, PoolAllocator<Touched>>;

    InheritedProperties(PrototypeTree tree, int sourceVersion)
        : tree_(std::move(tree)), sourceVersion_(sourceVersion), typesLeft_(Type::GetLeftCount()) {}

    int CountUnlisted() const { return touched_.back().unlisted; }
    int CountUndeclared() const { return touched_.back().undeclared; }
    TouchedList::const_iterator FindPlace(int index) const;
    const Touched* Find(int index) const;
    Touched& Touch(int index);
    void AddUp();
    Sum SumBefore(int index) const;

    template <class Body> void Visit(std::uint64_t walk, const Body& body) const {
        tree_.Visit(
            walk,
            [this, walk](int first, int end) {
                const auto found = touched_.empty() ? touched_.end() : FindPlace(first);
                return walk == 0 || (found != touched_.end() && found->index < end);
            },
            body);
    }

    PrototypeTree tree_;
    TouchedList touched_; ///< By index.
    int sourceVersion_;
    unsigned typesLeft_;
    bool hasValues_ = true;
    bool isSortedForTheEnd_ = false;
};

} // namespace Kor
