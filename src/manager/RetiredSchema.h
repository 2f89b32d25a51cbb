#pragma once

#include <memory>
#include <unordered_set>
#include <vector>

#include "core/ObjectRegistry.h"
#include "schema/Command.h"
#include "schema/GeometryAlternate.h"
#include "schema/LOD.h"
#include "schema/SchemaParts.h"
#include "schema/Template.h"
#include "types/Enumeration.h"

namespace Kor {

/// What a template manager owns, from its end on; the parts of the schema that no registry has,
/// from the beginning. The objects of a manager that is gone are deleted at once, unless instances
/// that the host holds, or values of properties that it holds, still refer to them: then with the
/// last of those. Where memory runs out on the way they wait for the next occasion, since nobody
/// could be told.
class RetiredSchema {
public:
    RetiredSchema() = default;
    RetiredSchema(const RetiredSchema&) = delete;
    RetiredSchema& operator=(const RetiredSchema&) = delete;

    /// Takes the objects over, none of which counts as registered then.
    void TakeOver(ObjectRegistry<Template> templates, ObjectRegistry<Enumeration> enumerations,
                  ObjectRegistry<Type> types, std::unordered_set<Type*> displaced) noexcept;

    /// From now on the schema owns what a file declared beside types.
    void Own(LOD& level) { levels_.Add(level); }
    void Own(GeometryAlternate& alternate) { alternates_.Add(alternate); }
    void Own(Command& command) { commands_.Add(command); }

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
    SchemaPartList<LOD> levels_;
    SchemaPartList<GeometryAlternate> alternates_;
    SchemaPartList<Command> commands_;
    RetiredSchema* next_ = nullptr; ///< The next one that waits.
};

} // namespace Kor
