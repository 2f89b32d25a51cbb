#include "manager/TemplateManager.h"

#include <algorithm>
#include <cstdint>

#include "core/Names.h"
#include "core/NumberText.h"
#include "core/Undo.h"
#include "manager/RetiredSchema.h"
#include "types/BoolType.h"
#include "types/FloatType.h"
#include "types/IntType.h"
#include "types/StringType.h"

namespace Kor {

// -- life -----------------------------------------------------------------------------------------

TemplateManager::TemplateManager(std::unique_ptr<RetiredSchema> retired)
    : retired_(std::move(retired)) {}

/// Whatever throws in here finds the manager complete, whose end frees what there is so far.
TemplateManager::TemplateManager() : TemplateManager(std::make_unique<RetiredSchema>()) {
    auto root = std::make_unique<Template>("Object", 1, 1);
    Register(templates_, root.get());
    root_ = root.release(); // the registry has it now
    RegisterBuiltInTypes();
}

void TemplateManager::RegisterBuiltInTypes() {
    const auto add = [this](Type* type) {
        std::unique_ptr<Type> added(type);
        Register(types_, type);
        static_cast<void>(added.release());
    };
    add(new BoolType("BOOL", 1, 1));
    add(new IntType<std::int8_t>("INT8", 1, 1));
    add(new IntType<std::uint8_t>("UINT8", 1, 1));
    add(new IntType<std::int16_t>("INT16", 1, 2));
    add(new IntType<std::uint16_t>("UINT16", 1, 2));
    add(new IntType<std::int32_t>("INT32", 1, 4));
    add(new IntType<std::uint32_t>("UINT32", 1, 4));
    add(new IntType<std::int64_t>("INT64", 1, 8));
    add(new IntType<std::uint64_t>("UINT64", 1, 8));
    add(new FloatType<float>("FLOAT", 1, 4));
    add(new FloatType<double>("DOUBLE", 1, 8));
    // Void and reference are text types that differ only in name: hosts know what the texts mean.
    add(new StringType("VOID", 1, 4));
    add(new StringType("STRING", 1, 4));
    add(new StringType("REFERENCE", 1, 4));
}

TemplateManager::~TemplateManager() {
    Empty();
}

void TemplateManager::Empty() {
    if (!retired_)
        return;
    const ObjectRegistry<LOD> lods(std::move(lods_));
    lods_ = ObjectRegistry<LOD>();
    versions_.Clear();
    lods.ForEach([](LOD* lod) { lod->SetRegistered(false); });
    retired_->TakeOver(std::move(templates_), std::move(enumerations_), std::move(types_),
                       std::move(displaced_));
    RetiredSchema::Retire(std::move(retired_));
}

/// The pointer is forgotten first, so that whoever asks for the manager while it is being destroyed
/// gets a new, empty one instead of the dying one.
void TemplateManager::Terminate() {
    if (!DropUser())
        return;
    Forget();
    if (Ending::IsDeferred())
        Empty();
    Ending::Free(this);
}

/// What leaving a registry means: a file without definitions counts as unloaded.
void TemplateManager::Unregistered(Type* type) {
    if (auto* version = ObjectCast<Template>(type))
        versions_.Remove(*version);
    UnlistFile(*type);
    type->SetOwner(Owner::kHost);
    if (!FindFile(type->GetFileName()))
        RemoveLoadedFile(type->GetFileName());
}

/// Removal goes by key: where another object has it, that one is taken out.
template <class T> int TemplateManager::Remove(ObjectRegistry<T>& registry, T* object) {
    const std::string_view key = object->GetKey();
    T* entry = registry.Contains(object) ? object : registry.Get(key);
    if (!entry)
        return registry.Find(key);
    const int index = registry.Remove(entry);
    Unregistered(entry);
    return index;
}

// -- templates ------------------------------------------------------------------------------------

Template* TemplateManager::GetTemplateVersion(std::string_view name, unsigned version) const {
    char digits[16];
    key_.assign(name).append(1, '#').append(digits, FormatInteger(version, digits, sizeof digits));
    return templates_.Get(key_);
}

Template* TemplateManager::GetTemplate(std::string_view name) const {
    Template* first = GetTemplateVersion(name, 1);
    if (!first || first->IsRecycled() || first->GetLatestVersion() == 1)
        return first;
    return GetTemplateVersion(name, static_cast<unsigned>(first->GetLatestVersion()));
}

Template* TemplateManager::CreateTemplate(std::string_view name) {
    if (!IsValidFullName(name))
        return nullptr;
    if (Template* existing = GetTemplate(name)) {
        if (existing->IsRecycled()) {
            existing->BeginRedefinition(existing != root_ ? root_ : nullptr);
            existing->SetLatestVersion(GetHighestDefined(*existing));
            existing->SetRecycled(false);
        }
        return existing;
    }
    auto created = std::make_unique<Template>(name, 1, 1);
    if (AddTemplate(created.get()) >= 0)
        return created.release();
    Remove(templates_, created.get());
    return nullptr;
}

int TemplateManager::AddTemplate(Template* added) {
    const bool isOrphan = added->GetParentCount() == 0 && added != root_;
    if (!isOrphan || templates_.Get(added->GetKey()))
        return Register(templates_, added);
    added->AddParent(root_);
    Undo parent([&] { added->RemoveParent(root_); });
    const int result = Register(templates_, added);
    parent.Commit();
    return result;
}

int TemplateManager::RemoveTemplate(Template* removed) {
    // The root is what everything falls back to: it stays, also where another template stands for
    // it by having its key.
    const bool standsForRoot =
        !templates_.Contains(removed) && templates_.Get(removed->GetKey()) == root_;
    return removed == root_ || standsForRoot ? -1 : Remove(templates_, removed);
}

// -- enumerations and plain types -----------------------------------------------------------------

Enumeration* TemplateManager::GetEnumeration(std::string_view name) const {
    return enumerations_.Get(name);
}

int TemplateManager::AddEnumeration(Enumeration* enumeration) {
    return Register(enumerations_, enumeration);
}

int TemplateManager::RemoveEnumeration(Enumeration* enumeration) {
    return Remove(enumerations_, enumeration);
}

int TemplateManager::AddType(Type* type) {
    if (auto* added = ObjectCast<Template>(type))
        return AddTemplate(added);
    if (auto* enumeration = ObjectCast<Enumeration>(type))
        return AddEnumeration(enumeration);
    const int result = Register(types_, type);
    auto* item = ObjectCast<EnumerationItem>(type);
    if (item && item->GetEnumeration())
        item->GetEnumeration()->RemoveItem(item); // or both would delete it
    return result;
}

int TemplateManager::RemoveType(Type* type) {
    if (auto* removed = ObjectCast<Template>(type))
        return RemoveTemplate(removed);
    if (auto* enumeration = ObjectCast<Enumeration>(type))
        return RemoveEnumeration(enumeration);
    return Remove(types_, type);
}

int TemplateManager::GetTypesByFileName(std::string_view fileName, Type** found,
                                        int capacity) const {
    const auto* types = FindFile(fileName);
    if (!types)
        return 0;
    const auto count = static_cast<int>(types->size());
    if (!found || capacity <= 0)
        return count;
    const auto rank = [](const Type* type) {
        if (ObjectCast<Template>(type))
            return 1;
        return ObjectCast<Enumeration>(type) ? 2 : 0;
    };
    std::vector<Type*> sorted(types->begin(), types->end());
    std::sort(sorted.begin(), sorted.end(), [&rank](const Type* a, const Type* b) {
        return rank(a) != rank(b) ? rank(a) < rank(b) : a->GetKey() < b->GetKey();
    });
    std::copy_n(sorted.begin(), std::min(count, capacity), found);
    return count;
}

// -- levels of detail -----------------------------------------------------------------------------

int TemplateManager::AddLOD(LOD* lod) {
    LOD* replaced = nullptr;
    const int result = lods_.Insert(lod, &replaced);
    if (replaced)
        replaced->SetRegistered(false);
    lod->SetRegistered(true);
    return result;
}

/// Removal goes by key, as for types.
int TemplateManager::RemoveLOD(LOD* lod) {
    LOD* entry = lod->IsRegistered() ? lod : lods_.Get(lod->GetKey());
    if (!entry)
        return lods_.Find(lod->GetKey());
    entry->SetRegistered(false);
    return lods_.Remove(entry);
}

// -- parts that no registry has ------------------------------------------------------------------

template <class Part> void TemplateManager::Own(std::unique_ptr<Part> part) {
    if (retired_)
        retired_->Own(*part.release());
    else // a callback has ended the manager while the file was read
        Ending::End(part.release());
}

template void TemplateManager::Own(std::unique_ptr<LOD> part);
template void TemplateManager::Own(std::unique_ptr<GeometryAlternate> part);
template void TemplateManager::Own(std::unique_ptr<Command> part);

// -- registration ---------------------------------------------------------------------------------

/// Enters an object into a registry, with all that this means for it and for the one it replaces;
/// without memory nothing has changed. The list's result.
template <class T> int TemplateManager::Register(ObjectRegistry<T>& registry, T* object) {
    registry.MakeRoomFor(object->GetKey());
    NoteTypeName(*object);
    ListFile(*object, object->GetFileName());
    Undo listed([&] {
        if (!object->IsRegistered())
            UnlistFile(*object);
    });
    const bool isListed = registry.Contains(object);
    Type* former = isListed ? nullptr : registry.Get(object->GetKey());
    if (former)
        displaced_.insert(former);
    listed.Commit();
    const int result = registry.Insert(object); // there is room
    if (former)
        Displace(*former);
    auto* version = isListed ? nullptr : ObjectCast<Template>(object);
    if (version)
        versions_.Add(*version);
    TakeBack(*object);
    if (object->GetOwner() == Owner::kEndedSchema)
        RetiredSchema::Forget(*object);
    object->SetOwner(Owner::kRegistry);
    return result;
}

template int TemplateManager::Register(ObjectRegistry<Template>& registry, Template* object);

void TemplateManager::Displace(Type& type) {
    if (auto* version = ObjectCast<Template>(&type))
        versions_.Remove(*version);
    UnlistFile(type);
    type.SetOwner(Owner::kManager);
}

void TemplateManager::GiveAway(Type& type) {
    if (type.IsRegistered())
        RemoveType(&type);
    TakeBack(type);
}

/// Once displaced, a type is no more when it gets a place again.
void TemplateManager::TakeBack(Type& type) {
    if (type.GetOwner() == Owner::kManager) {
        type.SetOwner(Owner::kHost);
        displaced_.erase(&type);
    }
}

const std::unordered_set<Type*>* TemplateManager::FindFile(std::string_view fileName) const {
    const auto found = typesByFile_.find(fileName);
    return found == typesByFile_.end() ? nullptr : &found->second;
}

void TemplateManager::ListFile(Type& type, const std::string& fileName) {
    const auto entry = typesByFile_.try_emplace(fileName).first;
    Undo made([&] {
        if (entry->second.empty())
            typesByFile_.erase(entry);
    });
    entry->second.insert(&type);
    made.Commit();
}

void TemplateManager::UnlistFile(Type& type) {
    const auto found = typesByFile_.find(type.GetFileName());
    if (found == typesByFile_.end())
        return;
    found->second.erase(&type);
    if (found->second.empty())
        typesByFile_.erase(found);
}

void TemplateManager::MakeRoomFor(const Type& type) {
    if (ObjectCast<Template>(&type))
        templates_.MakeRoom();
    else if (ObjectCast<Enumeration>(&type))
        enumerations_.MakeRoom();
    else
        types_.MakeRoom();
}

void TemplateManager::Unlist(Type& type) {
    if (auto* listed = ObjectCast<Template>(&type)) {
        versions_.Remove(*listed);
        templates_.RemoveExactly(listed);
    } else if (auto* enumeration = ObjectCast<Enumeration>(&type))
        enumerations_.RemoveExactly(enumeration);
    else
        types_.RemoveExactly(&type);
}

void TemplateManager::List(Type& type) {
    NoteTypeName(type);
    if (auto* listed = ObjectCast<Template>(&type)) {
        versions_.Add(*listed);
        templates_.Place(listed);
    } else if (auto* enumeration = ObjectCast<Enumeration>(&type))
        enumerations_.Place(enumeration);
    else
        types_.Place(&type);
}

// -- loaded files ---------------------------------------------------------------------------------

void TemplateManager::AddLoadedFile(std::string_view path) {
    loadedFiles_.Add(path);
}

void TemplateManager::RemoveLoadedFile(std::string_view path) {
    loadedFiles_.Remove(path);
}

} // namespace Kor
