#pragma once

#include <string>

#include "core/NamedObject.h"

namespace Kor {

/// A level of detail: a kind of geometry and a limit on its shapes. The numbers are stored for the
/// host and not interpreted.
class LOD : public NamedObject {
public:
    static constexpr int kClassId = kLODClass;

    /// Kinds of levels.
    enum LevelType : int { kBoundingVolume = 0, kCollision = 1, kSurface = 2 };

    /// A level's name is not bound to the name rule.
    explicit LOD(std::string_view name) { StoreName(name); }

    int GetClass() const override { return kClassId; }
    bool ImplementsClass(int id) const override {
        return id == kClassId || NamedObject::ImplementsClass(id);
    }
    std::unique_ptr<Object> Clone() const override {
        return std::unique_ptr<Object>(new LOD(*this));
    }

private:
    LOD(const LOD&) = default;
};

} // namespace Kor
