#pragma once

#include <string_view>
#include <utility>

#include "core/CompactString.h"
#include "core/LocalizedTextTable.h"
#include "core/NameAndTexts.h"
#include "core/Object.h"

namespace Kor {

/// An object with a checked name, a comment, and labels and descriptions per language.
class NamedObject : public Object {
public:
    static constexpr int kClassId = kNamedObjectClass;
    KOR_OBJECT_MEMORY

    NamedObject() = default;
    /// Takes the name when it passes the name rule; otherwise the name stays empty.
    explicit NamedObject(std::string_view name);
    ~NamedObject() override { TellWatcher(); }

    int GetClass() const override { return kClassId; }
    bool ImplementsClass(int id) const override {
        return id == kClassId || Object::ImplementsClass(id);
    }

    /// The text by which sorted lists and lookups identify the object; here the name.
    virtual std::string_view GetKey() const { return GetNameView(); }

    const char* GetName() const { return nameAndTexts_.GetName().CStr(); }

    /// Takes the name and returns true when it passes the name rule; else changes nothing.
    virtual bool SetName(const char* name);

    std::string_view GetNameView() const { return nameAndTexts_.GetName().View(); }

    const char* GetComment() const;
    void SetComment(std::string_view comment);

    /// The tables to read; a shared empty one when none was ever written.
    const LocalizedTextTable& GetLabels() const;
    const LocalizedTextTable& GetDescriptions() const;

    /// The tables to change.
    LocalizedTextTable& EditLabels() { return nameAndTexts_.EditTexts().labels; }
    LocalizedTextTable& EditDescriptions() { return nameAndTexts_.EditTexts().descriptions; }

    // -- the end --------------------------------------------------------------------------------

    /// Takes the object out of every list and registry and lets go of all that it owns or uses, as
    /// its destructor does. What is left can be destroyed, and until then be used without harm.
    virtual void Leave() noexcept { TellWatcher(); }

    /// Whether others still use the object, which it therefore has to outlive.
    virtual bool IsNeeded() const { return false; }

    /// From now on the object belongs to its users: the last of them ends it.
    virtual void StayForUsers() {}

    /// Whether the object has ended; its memory waits for the end of the call.
    bool HasEnded() const { return nameAndTexts_.IsReplaced(); }

    /// Has the watchers told of this object's end, whoever deletes it, and of every change of its
    /// key. Throws std::bad_alloc.
    using Watcher = void (*)(NamedObject*);
    void Watch(Watcher ofEnd, Watcher ofKey) {
        nameAndTexts_.Watch();
        endWatcher_ = ofEnd;
        keyWatcher_ = ofKey;
    }

protected:
    NamedObject(const NamedObject& other) = default;

    /// Stores a name that has been checked.
    void StoreName(std::string_view name) {
        nameAndTexts_.EditName().Assign(name);
        TellOfKey();
    }

    /// Exchanges the name for one that has been checked; never fails.
    void SwapName(CompactString& name) {
        std::swap(nameAndTexts_.EditName(), name);
        TellOfKey();
    }

    /// Called when the key has changed otherwise than by the name.
    void TellOfKey() {
        if (nameAndTexts_.IsWatched())
            keyWatcher_(this);
    }

    /// Takes over another object's labels, descriptions and comment.
    void CopyTexts(const NamedObject& other) { nameAndTexts_.CopyTexts(other.nameAndTexts_); }

private:
    friend class Ending; // keeps those that ended in a list that runs through their names

    void TellWatcher() {
        if (nameAndTexts_.IsWatched())
            endWatcher_(this);
    }

    NameAndTexts nameAndTexts_;

    static inline Watcher endWatcher_ = nullptr;
    static inline Watcher keyWatcher_ = nullptr;
};

} // namespace Kor
