#pragma once

#include <string_view>
#include <utility>

#include "core/CompactString.h"
#include "core/LocalizedTextTable.h"
#include "core/NameAndTexts.h"
#include "core/Object.h"

namespace Kor {

class XMLWriter;

/// An object with a checked name, a comment, and labels and descriptions per language.
class NamedObject : public Object {
public:
    static constexpr int kClassId = kNamedObjectClass;
    KOR_OBJECT_MEMORY

    NamedObject() = default;
    /// Takes the name when it passes the name rule; otherwise the name stays empty.
    explicit NamedObject(std::string_view name);
    ~NamedObject() override {
        if (endWatcher_)
            endWatcher_(this);
    }

    int GetClass() const override { return kClassId; }
    bool ImplementsClass(int id) const override {
        return id == kClassId || Object::ImplementsClass(id);
    }

    /// The text by which sorted lists and lookups identify the object; here the name.
    virtual std::string_view GetKey() const { return GetNameView(); }

    virtual const char* GetName() const { return nameAndTexts_.GetName().CStr(); }

    /// Takes the name and returns true when it passes the name rule; else changes nothing.
    virtual bool SetName(const char* name);

    /// Writes the labels and then the descriptions as child elements of the open element.
    virtual void WriteToXML(XMLWriter& writer) const;

    std::string_view GetNameView() const { return nameAndTexts_.GetName().View(); }

    const char* GetComment() const;
    void SetComment(std::string_view comment);

    /// The tables to read; a shared empty one when none was ever written.
    const LocalizedTextTable& GetLabels() const;
    const LocalizedTextTable& GetDescriptions() const;

    /// The tables to change.
    LocalizedTextTable& EditLabels() { return nameAndTexts_.EditTexts().labels; }
    LocalizedTextTable& EditDescriptions() { return nameAndTexts_.EditTexts().descriptions; }

    /// From now on the watcher is called with every named object that dies, whoever deletes it.
    using EndWatcher = void (*)(NamedObject*);
    static void WatchEnds(EndWatcher watcher) { endWatcher_ = watcher; }

protected:
    NamedObject(const NamedObject& other) = default;

    /// Stores a name that has been checked.
    void StoreName(std::string_view name) { nameAndTexts_.EditName().Assign(name); }

    /// Exchanges the name for one that has been checked; never fails.
    void SwapName(CompactString& name) { std::swap(nameAndTexts_.EditName(), name); }

    /// Takes over another object's labels, descriptions and comment.
    void CopyTexts(const NamedObject& other) { nameAndTexts_.CopyTexts(other.nameAndTexts_); }

private:
    NameAndTexts nameAndTexts_;

    static inline EndWatcher endWatcher_ = nullptr;
};

} // namespace Kor
