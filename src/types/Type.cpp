#include "types/Type.h"

#include <algorithm>

// Registered types are sorted by name and counted by file: only their manager can follow a change.
#include "manager/TemplateManager.h"

// A schema whose manager is gone learns that one of its types is ended before.
#include "manager/RetiredSchema.h"

#include "core/Ending.h"
#include "core/Names.h"
#include "core/Undo.h"

namespace Kor {

Type::Type(std::string_view name, int dimension, int alignment)
    : dimension_(dimension), alignment_(alignment) {
    const size_t dot = name.rfind('.');
    const bool qualified = dot != std::string_view::npos && dot > 0;
    const std::string_view shortName = qualified ? name.substr(dot + 1) : name;
    if (!IsValidName(shortName))
        return;
    NamedObject::StoreName(shortName);
    if (qualified)
        packageName_ = name.substr(0, dot);
    Type::UpdateFullName();
}

Type::Type(const Type& other)
    : NamedObject(other), base_(other.base_), fileName_(other.fileName_),
      packageName_(other.packageName_), fullName_(other.fullName_), dimension_(other.dimension_),
      alignment_(other.alignment_) {}

Type::~Type() {
    LeaveOwner();
}

void Type::LeaveOwner() noexcept {
    if (owner_ == Owner::kRegistry || owner_ == Owner::kManager)
        TemplateManager::Get()->GiveAway(*this);
    if (owner_ == Owner::kEndedSchema)
        RetiredSchema::Forget(*this);
    owner_ = Owner::kHost;
}

void Type::Leave() noexcept {
    LeaveOwner();
    // What values do not need could only be a circle that keeps the type alive for ever.
    if (useCount_ == 0 || GetValueCarrier() != GetBaseType() || !GetStorageType())
        SetBaseType(nullptr);
    NamedObject::Leave();
}

bool Type::SetName(const char* name) {
    const std::string_view text = TextOf(name);
    const size_t dot = text.rfind('.');
    if (dot != std::string_view::npos && dot > 0)
        return StoreName(text.substr(0, dot), text.substr(dot + 1));
    return StoreName(packageName_, text);
}

bool Type::StoreName(std::string_view packageName, std::string_view name) {
    if (!IsValidName(name))
        return false;
    Rename(CompactString(name), std::string(packageName));
    return true;
}

void Type::SetPackageName(std::string_view packageName) {
    Rename(CompactString(GetNameView()), std::string(packageName));
}

void Type::Rename(CompactString name, std::string packageName) {
    std::string fullName(fullName_);
    const auto exchange = [&] {
        SwapName(name);
        packageName_.swap(packageName);
    };
    MakeRoomInSortedLists();
    LeaveSortedLists();
    exchange();
    try {
        UpdateFullName();
    } catch (...) { // out of memory: name, package and full name must go on fitting together
        exchange();
        fullName_.swap(fullName);
        EnterSortedLists();
        throw;
    }
    EnterSortedLists();
}

void Type::Redeclare(std::string_view name, std::string_view packageName, Type* base) {
    StoreName(packageName, name);
    StoreFileName(std::string());
    SetComment({});
    SetBaseType(base);
}

void Type::UpdateFullName() {
    std::string fullName(packageName_);
    if (!fullName.empty())
        fullName += '.';
    fullName += GetNameView();
    fullName_.swap(fullName);
    TellOfKey();
}

void Type::MakeRoomInSortedLists() {
    if (IsRegistered())
        TemplateManager::Get()->MakeRoomFor(*this);
}

void Type::LeaveSortedLists() {
    if (IsRegistered())
        TemplateManager::Get()->Unlist(*this);
}

void Type::EnterSortedLists() {
    if (IsRegistered())
        TemplateManager::Get()->List(*this);
}

void Type::SetFileName(std::string_view fileName) {
    TemplateManager* manager = TemplateManager::Get();
    const std::string oldFileName = fileName_;
    if (!manager)
        return StoreFileName(std::string(fileName));
    const bool isNew = !manager->GetLoadedFiles().Contains(fileName);
    manager->AddLoadedFile(fileName);
    Undo entered([&] {
        if (isNew)
            manager->RemoveLoadedFile(fileName);
    });
    StoreFileName(std::string(fileName));
    entered.Commit();
    if (oldFileName != fileName_ && manager->GetTypesByFileName(oldFileName, nullptr, 0) == 0)
        manager->RemoveLoadedFile(oldFileName);
}

void Type::SetSearchPath(std::string_view path) {
    std::string fileName(path);
    if (!fileName.empty() && fileName.back() != '\\')
        fileName += '\\';
    for (const char c : packageName_)
        fileName += c == '.' ? '\\' : c;
    if (!packageName_.empty())
        fileName += '\\';
    if (fileName_.empty())
        fileName.append(GetNameView()).append(".template");
    else
        fileName.append(fileName_, fileName_.rfind('\\') + 1); // npos + 1 is the whole name
    StoreFileName(std::move(fileName));
}

void Type::StoreFileName(std::string fileName) {
    if (IsRegistered()) {
        TemplateManager::Get()->ListFile(*this, fileName);
        if (!EqualsIgnoreCase(fileName, fileName_))
            TemplateManager::Get()->UnlistFile(*this);
    }
    fileName_.swap(fileName);
}

void Type::CollectPackages(std::set<std::string>& packages) const {
    // Base types may form a long chain, or by mistake a circle: a second pointer moves at half
    // the speed and is met again in a circle.
    const Type* slow = this;
    bool moveSlow = false;
    for (const Type* type = this; type; type = type->GetBaseType()) {
        packages.insert(type->GetPackageName());
        if (moveSlow)
            slow = slow->GetBaseType();
        moveSlow = !moveSlow;
        if (type->GetBaseType() == slow)
            return;
    }
}

const Type* Type::FollowCarriers() const {
    const Type* slow = this;
    bool moveSlow = false;
    const Type* type = this;
    while (const Type* next = type->GetValueCarrier()) {
        type = next;
        if (moveSlow)
            slow = slow->GetValueCarrier();
        moveSlow = !moveSlow;
        if (type == slow)
            return nullptr;
    }
    return type == this ? nullptr : type;
}

void Type::CollectUsedTypes(std::vector<Type*>& types) const {
    if (base_)
        types.push_back(base_.Get());
}

bool Type::RefersTo(const Type* other, const char* fileName) const {
    if (other != this && (!other || other != GetBaseType()))
        return false;
    return !fileName || !EqualsIgnoreCase(fileName_, fileName);
}

std::string Type::GetReadableText(const void* value, int index) const {
    const Type* storage = GetStorageType();
    if (storage && storage != this)
        return storage->GetReadableText(value, index);
    std::string text;
    GetValueAsString(value, text, index);
    return text;
}

void Type::ReleaseUse() {
    if (--useCount_ > 0 || owner_ != Owner::kUsers)
        return;
    owner_ = Owner::kHost;
    Ending::EndUnused(this);
}

} // namespace Kor
