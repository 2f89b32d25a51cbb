#pragma once

#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "core/NamedObject.h"
#include "core/Owner.h"
#include "types/TypeRef.h"

namespace Kor {

/// How values are held in memory, compared, turned into text and back, and packed. A value is a
/// block of elements made and freed by its type; the dimension is the number of elements, 0 for a
/// length that travels with the value.
class Type : public NamedObject {
public:
    static constexpr int kClassId = kTypeClass;
    KOR_OBJECT_MEMORY

    /// The name may carry its package ("a.b.Vector"); an invalid one stays empty.
    Type(std::string_view name, int dimension, int alignment);
    ~Type() override;

    int GetClass() const override { return kClassId; }
    bool ImplementsClass(int id) const override {
        return id == kClassId || NamedObject::ImplementsClass(id);
    }
    std::unique_ptr<Object> Clone() const override = 0;

    /// The full name.
    std::string_view GetKey() const override { return fullName_; }

    /// Takes a name with or without its package; false and no change when it breaks the rules.
    bool SetName(const char* name) override;

    // -- identity -------------------------------------------------------------------------------

    const std::string& GetFullName() const { return fullName_; }
    const std::string& GetPackageName() const { return packageName_; }
    void SetPackageName(std::string_view packageName);

    /// The path of the template file that defines the type.
    const std::string& GetFileName() const { return fileName_; }

    /// Moves the type to another file, with the manager's bookkeeping of loaded files.
    void SetFileName(std::string_view fileName);

    /// Recomputes the file name for a search path from the package and the file's own name.
    void SetSearchPath(std::string_view path);

    Type* GetBaseType() const { return base_.Get(); }
    void SetBaseType(Type* base) { base_.Reset(base); }
    int GetDimension() const { return dimension_; }
    void SetDimension(int dimension) { dimension_ = dimension; }
    int GetAlignment() const { return alignment_; }
    void SetAlignment(int alignment) { alignment_ = alignment; }

    /// Whether the type is registered only because something still uses it, its file being
    /// unloaded.
    bool IsRecycled() const { return recycled_; }
    void SetRecycled(bool recycled) { recycled_ = recycled; }

    /// Turns a clone into the declaration of a new type over its base: without comment and file.
    virtual void Redeclare(std::string_view name, std::string_view packageName, Type* base);

    // -- dependencies ---------------------------------------------------------------------------

    /// Adds the packages that the type's declaration needs.
    virtual void CollectPackages(std::set<std::string>& packages) const;

    /// Whether this type or its base type is `other`, as seen from outside the given file (null:
    /// from anywhere).
    virtual bool RefersTo(const Type* other, const char* fileName) const;

    // -- values ---------------------------------------------------------------------------------

    /// Bytes of a value; which of dimension, count and content sizes it depends on the family.
    virtual int GetValueSize(const void* value, int count) const = 0;

    /// A new block of `count` elements from `initial`, or of zeroes without it; null below 1.
    virtual void* NewValue(const void* initial, int count) const = 0;

    /// A new block with all elements of another one, also where NewValue would repeat the first.
    virtual void* CopyValue(const void* value, int count) const { return NewValue(value, count); }

    /// Frees a block that NewValue of the same type made with the same count.
    virtual void DeleteValue(void* value, int count) const = 0;

    /// Bytes of `count` elements where values of the type may stand inside of another object, which
    /// spares a block of their own; 0 where they may not. They may be moved byte by byte.
    virtual size_t GetInlineSize(int) const { return 0; }

    /// Makes such elements from `initial`, or of zeroes without it, as NewValue would.
    virtual void MakeElements(void*, const void*, int) const {}

    /// Ends such elements; their memory stays.
    virtual void EndElements(void*, int) const {}

    /// -1, 0 or 1.
    virtual int CompareValues(const void* a, const void* b, int count) const = 0;

    virtual bool IsValueValid(const void* value, const void* minimum, const void* maximum,
                              int count) const = 0;

    /// Writes the text of an element into `text` and returns its length.
    virtual int GetValueAsString(const void* value, std::string& text, int index) const = 0;

    /// The text from which GetValueFromString makes the same element again, for template files:
    /// unlike the other text, 8-bit integers as numbers too.
    virtual std::string GetReadableText(const void* value, int index) const;

    /// Parses a text into an element.
    virtual int GetValueFromString(const char* text, void* value, int index) const = 0;

    /// Packs elements into a buffer and returns the bytes used.
    virtual int WriteValueToBinary(const void* value, int count, void* buffer,
                                   int bufferSize) const = 0;

    /// The type that holds this one's values where another does (a base type), else null.
    virtual Type* GetValueCarrier() const { return nullptr; }

    /// The type whose own rules the value blocks follow: this one, or the end of its chain of
    /// carriers; null when that chain runs in a circle.
    const Type* GetStorageType() const { return GetValueCarrier() ? FollowCarriers() : this; }

    /// Adds every type that this one refers to for its values, once for each reference.
    virtual void CollectUsedTypes(std::vector<Type*>& types) const;

    // -- use and ownership ----------------------------------------------------------------------

    /// Whether values, properties or other types refer to this type.
    bool IsInUse() const { return useCount_ > 0; }
    int GetUseCount() const { return useCount_; }

    Owner GetOwner() const { return owner_; }
    void SetOwner(Owner owner) { owner_ = owner; }
    bool IsRegistered() const { return owner_ == Owner::kRegistry; }

    /// Hands a type that nobody but the host owns to those who use it: the last user frees it.
    void LeaveToUsers() {
        leftCount_ += owner_ != Owner::kUsers && useCount_ > 1 ? 1 : 0;
        if (HasEnded())
            TakeFromUsers();
        else if (owner_ == Owner::kHost)
            owner_ = Owner::kUsers;
    }
    void TakeFromUsers() {
        if (owner_ == Owner::kUsers)
            owner_ = Owner::kHost;
    }

    /// The type leaves its registry. It keeps what its values need, since those may live on.
    void Leave() noexcept override;
    bool IsNeeded() const override { return useCount_ > 0; }
    void StayForUsers() override {
        ++leftCount_;
        owner_ = Owner::kUsers;
    }

    /// Moves on whenever a type may have been left to several users.
    static unsigned GetLeftCount() { return leftCount_; }

    /// Counts a user; kept by TypeRef.
    void AddUse() { ++useCount_; }

    /// Counts one user less, and ends a type that was left to its users with the last of them.
    void ReleaseUse();

protected:
    Type(const Type& other);

    /// Recomputes what derives from package and name.
    virtual void UpdateFullName();

    /// Called around every change of the key, so that lists sorted by it stay sorted. Where room
    /// was made before, coming back needs no memory.
    virtual void MakeRoomInSortedLists();
    virtual void LeaveSortedLists();
    virtual void EnterSortedLists();

    /// The last type of the chain of value carriers from this one's; null when there is none or
    /// the chain runs in a circle.
    const Type* FollowCarriers() const;

private:
    void LeaveOwner() noexcept;
    void StoreFileName(std::string fileName);
    bool StoreName(std::string_view packageName, std::string_view name);
    void Rename(CompactString name, std::string packageName);

    static inline unsigned leftCount_ = 0;

    TypeRef base_;
    std::string fileName_;
    std::string packageName_;
    std::string fullName_;
    int dimension_;
    int alignment_;
    int useCount_ = 0;
    bool recycled_ = false;
    Owner owner_ = Owner::kHost;
};

} // namespace Kor
