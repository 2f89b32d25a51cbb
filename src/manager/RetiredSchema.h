#pragma once

#include <memory>
#include <unordered_set>
#include <vector>

#include "core/ObjectRegistry.h"
#include "schema/Template.h"
#include "types/Enumeration.h"

namespace Kor {

/// The schema objects of a template manager that is gone. They are deleted at once, unless
/// instances that the host holds, or values of properties that it holds, still refer to them: then
/// with the last of those. Where memory runs out on the way they wait for the next occasion, since
/// nobody could be told.
class RetiredSchema {
public:
    RetiredSchema() = default;
    RetiredSchema(const RetiredSchema&) = delete;
    RetiredSchema& operator=(const RetiredSchema&) = delete;

    /// Takes the objects over, none of which counts as registered then.
    void TakeOver(ObjectRegistry<Template> templates, ObjectRegistry<Enumeration> enumerations,
                  ObjectRegistry<Type> types, std::unordered_set<Type*> displaced) noexcept;

    /// Deletes the objects, now or later.
    static void Retire(std::unique_ptr<RetiredSchema> schema) noexcept;

    /// Called by a type that ends before the schema does.
    static void Forget(Type& type) noexcept;

    /// Called when something may have been the last that needed a schema.
    static void Release() noexcept;

private:
    static void Wait(std::unique_ptr<RetiredSchema> schema) noexcept;
    void Drop(Type& type) noexcept;
    bool TryToDelete() noexcept;
    bool Delete();
    std::vector<Type*> Collect() const;

    ObjectRegistry<Template> templates_;
    ObjectRegistry<Enumeration> enumerations_;
    ObjectRegistry<Type> types_;
    std::unordered_set<Type*> displaced_;
    RetiredSchema* next_ = nullptr; ///< The next one that waits.
};

} // namespace Kor
