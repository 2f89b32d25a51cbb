// The part of the template manager that loads, unloads and saves template files.

#include <algorithm>
#include <new>
#include <unordered_set>

// Instances that outlive their values let go of a schema before it goes.
#include "instances/AbandonedInstances.h"

#include "core/ErrorManager.h"
#include "core/Names.h"
#include "manager/OuterReferences.h"
#include "manager/TemplateManager.h"
#include "manager/TemplateReading.h"
#include "manager/TypeGroup.h"
#include "platform/File.h"

namespace Kor {

namespace {

std::vector<Template*> TemplatesAmong(const std::vector<Type*>& types) {
    std::vector<Template*> templates;
    for (Type* type : types) {
        if (auto* definition = ObjectCast<Template>(type))
            templates.push_back(definition);
    }
    return templates;
}

/// Clears the templates that no living instance uses, and keeps the others. Clearing one may leave
/// others unused, which only instances inside its default values used.
void ClearUnused(TypeGroup& definitions, Template* root) {
    std::vector<Template*> pending = TemplatesAmong(definitions.GetAll());
    Template::SortForClearing(pending);
    std::reverse(pending.begin(), pending.end()); // taken from the end
    std::unordered_set<const Template*> left(pending.begin(), pending.end());
    size_t looked = 0;
    AbandonedInstances::Strip(looked);
    while (!pending.empty()) {
        Template* next = pending.back();
        pending.pop_back();
        if (next->IsUsedByInstances() || left.erase(next) == 0)
            continue;
        next->Clear(root);
        for (Template* released : AbandonedInstances::Strip(looked)) {
            if (left.count(released) > 0)
                pending.push_back(released);
        }
    }
    for (const Template* definition : left)
        definitions.Keep(definition);
}

void KeepReferenced(const TemplateManager& manager, TypeGroup& definitions) {
    const OuterReferences references(manager, definitions.GetAll());
    for (const Type* type : definitions.GetAll()) {
        if (references.Contains(type))
            definitions.Keep(type);
    }
}

} // namespace

bool TemplateManager::LoadTemplateFile(const char* path) {
    return LoadFile(path, path);
}

/// The path as it is named, and as the system has it.
bool TemplateManager::LoadFile(const char* path, const char* found) {
    std::unique_ptr<InputFile> file;
    try {
        file = InputFile::Open(found);
    } catch (const std::bad_alloc&) {
        if (ErrorManager* errors = ErrorManager::Get())
            errors->ReportOutOfMemory(path);
        throw;
    }
    return file && LoadTemplateStream(path, *file);
}

bool TemplateManager::LoadTemplateStream(const char* path, ByteSource& source) {
    if (loadedFiles_.Contains(path))
        return true;
    return TemplateReading(*this).ReadFile(path, source);
}

bool TemplateManager::UnloadTemplateFile(std::string_view path) {
    if (path.empty()) // the built-in types belong to no file
        return false;
    TypeGroup definitions(GetDefinitionsToUnload(path));
    if (EqualsIgnoreCase(root_->GetFileName(), path)) {
        // The root stays, since everything falls back to it; it only loses what the file gave it.
        root_->BeginRedefinition(nullptr);
        root_->SetRecycled(true);
    }
    // What stays can be defined anew; so can all, should memory run out from here on.
    loadedFiles_.RemoveInAnyCase(path);
    for (Type* type : definitions.GetAll())
        type->SetRecycled(true);
    ClearUnused(definitions, root_);
    KeepReferenced(*this, definitions);
    // What leaves while a property, a type or a value uses it lives on until the last of them goes.
    TypeGroup leaving(definitions.Select(false));
    leaving.KeepUsed();
    const std::vector<Type*> used = leaving.Select(true);
    const std::vector<Type*> unused = leaving.Select(false);
    for (Type* type : leaving.GetAll()) { // nothing from here on needs memory
        Unlist(*type);
        Unregistered(type);
        type->SetRecycled(false);
    }
    const auto& all = definitions.GetAll();
    const bool lastWasDeleted = !all.empty() && !definitions.IsKept(all.back());
    TypeGroup::LeaveToUsers(used);
    TypeGroup::Delete(unused);
    return lastWasDeleted;
}

/// All but the root. Templates come first, then enumerations, then plain types, each from the last
/// to the first.
std::vector<Type*> TemplateManager::GetDefinitionsToUnload(std::string_view path) const {
    std::vector<Type*> found(static_cast<size_t>(GetTypesByFileName(path, nullptr, 0)));
    GetTypesByFileName(path, found.data(), static_cast<int>(found.size()));
    found.erase(std::remove(found.begin(), found.end(), root_), found.end());
    std::reverse(found.begin(), found.end());
    const auto rank = [](const Type* type) {
        if (ObjectCast<Template>(type))
            return 0;
        return ObjectCast<Enumeration>(type) ? 1 : 2;
    };
    std::stable_sort(found.begin(), found.end(),
                     [&rank](const Type* a, const Type* b) { return rank(a) < rank(b); });
    return found;
}

} // namespace Kor
