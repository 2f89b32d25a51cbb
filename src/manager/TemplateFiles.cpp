// The template manager's files: loading, unloading and saving.

#include <algorithm>
#include <map>

#include "core/ErrorManager.h"
#include "core/Names.h"
#include "instances/Instance.h"
#include "manager/TemplateManager.h"
#include "manager/TemplateReading.h"
#include "platform/File.h"
#include "xml/XMLTemplateFileWriter.h"

namespace Kor {

namespace {

/// The definitions of a file that is being unloaded.
class FileDefinitions {
public:
    explicit FileDefinitions(std::vector<Type*> types) : types_(std::move(types)) {
        for (Type* type : types_)
            kept_[type] = false;
    }

    const std::vector<Type*>& GetAll() const { return types_; }
    bool IsKept(Type* type) const { return kept_.at(type); }
    void Keep(Type* type) { kept_[type] = true; }

    /// Keeps what is used from elsewhere, and what in turn those that are kept need. References
    /// among definitions that go do not count.
    void KeepUsed() {
        std::map<Type*, int> inner;
        for (Type* type : types_) {
            for (Type* used : UsedBy(type))
                ++inner[used];
        }
        std::vector<Type*> pending;
        for (Type* type : types_) {
            if (kept_[type] || type->GetUseCount() > inner[type])
                pending.push_back(type);
        }
        while (!pending.empty()) {
            Type* type = pending.back();
            pending.pop_back();
            kept_[type] = true;
            for (Type* used : UsedBy(type)) {
                const auto found = kept_.find(used);
                if (found != kept_.end() && !found->second)
                    pending.push_back(used);
            }
        }
    }

private:
    static std::vector<Type*> UsedBy(const Type* type) {
        std::vector<Type*> used;
        type->CollectUsedTypes(used);
        return used;
    }

    std::vector<Type*> types_;
    std::map<Type*, bool> kept_;
};

/// Deletes types in an order in which none is needed any more: enumerations free their items'
/// values through other types, and base types may come before those that build on them.
void DeleteTypes(const std::vector<Type*>& types) {
    std::vector<Type*> others;
    for (Type* type : types) {
        if (ObjectCast<Enumeration>(type))
            delete type;
        else
            others.push_back(type);
    }
    for (Type* type : others)
        type->SetBaseType(nullptr);
    for (Type* type : others)
        delete type;
}

/// Clears the templates that no living instance uses; clearing one may leave another unused.
void ClearUnused(FileDefinitions& definitions, Template* root) {
    std::vector<Template*> used;
    for (Type* type : definitions.GetAll()) {
        if (auto* definition = ObjectCast<Template>(type))
            used.push_back(definition);
    }
    for (size_t before = used.size() + 1; used.size() < before;) {
        before = used.size();
        for (auto at = used.rbegin(); at != used.rend(); ++at) {
            if ((*at)->IsUsedByInstances())
                continue;
            (*at)->Clear(root);
            *at = nullptr;
        }
        used.erase(std::remove(used.begin(), used.end(), nullptr), used.end());
        Instance::StripAbandoned();
    }
    for (Template* definition : used)
        definitions.Keep(definition);
}

} // namespace

bool TemplateManager::LoadTemplateFile(const char* path) {
    const auto file = InputFile::Open(path);
    return file && LoadTemplateStream(path, *file);
}

bool TemplateManager::LoadTemplateStream(const char* path, ByteSource& source) {
    if (loadedFiles_.Contains(path))
        return true;
    AddLoadedFile(path); // taken out again when the reading fails
    return TemplateReading(*this).ReadFile(path, source);
}

void TemplateManager::ForgetLoadedFile(std::string_view path) {
    if (loadedFiles_.Remove(path) >= 0)
        return;
    for (int i = loadedFiles_.GetCount() - 1; i >= 0; --i) {
        if (EqualsIgnoreCase(loadedFiles_.GetAt(i), path))
            loadedFiles_.Remove(std::string(loadedFiles_.GetAt(i)));
    }
}

bool TemplateManager::UnloadTemplateFile(std::string_view path) {
    if (path.empty()) // the built-in types belong to no file
        return false;
    ForgetLoadedFile(path);
    FileDefinitions definitions(GetDefinitionsToUnload(path));
    Instance::StripAbandoned();
    ClearUnused(definitions, root_);
    definitions.KeepUsed();
    // What goes lets go of its base types first, since these may go before it.
    std::vector<Type*> leaving;
    bool lastWasDeleted = false;
    for (Type* type : definitions.GetAll()) {
        lastWasDeleted = !definitions.IsKept(type);
        type->SetRecycled(definitions.IsKept(type));
        if (lastWasDeleted)
            leaving.push_back(type);
    }
    for (Type* type : leaving) {
        Unlist(*type);
        Unregistered(type);
    }
    DeleteTypes(leaving);
    return lastWasDeleted;
}

/// Templates come first, then enumerations, then plain types, each from the last to the first.
std::vector<Type*> TemplateManager::GetDefinitionsToUnload(std::string_view path) const {
    std::vector<Type*> found(static_cast<size_t>(GetTypesByFileName(path, nullptr, 0)));
    GetTypesByFileName(path, found.data(), static_cast<int>(found.size()));
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

bool TemplateManager::SaveTemplateFile(const char* fileName, const char* output) {
    const char* path = output ? output : fileName;
    const auto file = OutputFile::Create(path);
    if (file && XMLTemplateFileWriter(*this, fileName).Write(*file) && file->Commit()) {
        AddLoadedFile(fileName);
        return true;
    }
    if (ErrorManager* errors = ErrorManager::Get())
        errors->AddErrorItem(kError, path, -1, "Unable to open file for writing");
    return false;
}

} // namespace Kor
