// The part of the template manager that finds types by the names that files use.

#include <new>
#include <string>
#include <utility>

#include "manager/TemplateManager.h"
#include "manager/UsingList.h"

namespace Kor {

Type* TemplateManager::FindExactly(std::string_view name) const {
    if (Type* type = GetType(name))
        return type;
    if (Type* enumeration = GetEnumeration(name))
        return enumeration;
    return GetTemplate(name);
}

/// Looks a name up with one prefix after the other until something is found.
template <class LookUp>
auto TemplateManager::Resolve(std::string_view name, const UsingList& prefixes,
                              const LookUp& lookUp) const -> decltype(lookUp(name)) {
    const auto lookUpWith = [&](const std::string& prefix) {
        // A plain comparison: a name that merely begins like a package is taken as complete.
        const bool complete = name.compare(0, prefix.size(), prefix) == 0;
        std::string composed;
        if (!complete)
            composed.append(prefix).append(1, '.').append(name);
        return lookUp(complete ? name : std::string_view(composed));
    };
    if (prefixes.IsShort()) {
        for (const std::string& prefix : prefixes) {
            if (auto* found = lookUpWith(prefix))
                return found;
        }
        return nullptr;
    }
    FillTypeNames();
    for (const std::string* prefix : typeNames_.GetPrefixes(name, prefixes)) {
        if (auto* found = lookUpWith(*prefix))
            return found;
    }
    return nullptr;
}

Type* TemplateManager::ResolveType(std::string_view name, const UsingList& prefixes) const {
    return Resolve(name, prefixes, [this](std::string_view full) { return FindExactly(full); });
}

Template* TemplateManager::ResolveTemplateVersion(std::string_view name, int version,
                                                  const UsingList& prefixes) const {
    return Resolve(name, prefixes, [this, version](std::string_view full) {
        return GetTemplateVersion(full, static_cast<unsigned>(version));
    });
}

/// From the first need on, names are entered as they are registered.
void TemplateManager::FillTypeNames() const {
    if (!typeNames_.IsEmpty())
        return;
    TypeNameIndex names;
    const auto add = [&names](const Type* type) { names.Add(type->GetFullName()); };
    types_.ForEach(add);
    enumerations_.ForEach(add);
    templates_.ForEach(add);
    typeNames_ = std::move(names);
}

/// Without memory the names are forgotten until the next question.
void TemplateManager::NoteTypeName(const Type& type) noexcept {
    try {
        if (!typeNames_.IsEmpty())
            typeNames_.Add(type.GetFullName());
    } catch (const std::bad_alloc&) {
        typeNames_ = TypeNameIndex();
    }
}

} // namespace Kor
