#include "schema/LOD.h"

#include <utility>

// The registry of levels is sorted by name: only the manager can follow a change.
#include "manager/TemplateManager.h"

#include "core/Names.h"
#include "schema/GeometryAlternate.h"

namespace Kor {

namespace {

/// False when the registry does not have the level.
bool Unlist(LOD& lod) {
    return lod.IsRegistered() && TemplateManager::Exists() &&
           TemplateManager::Get()->UnlistLOD(lod);
}

} // namespace

LOD::LOD(const LOD& source)
    : NamedObject(source), SchemaPart(source), type_(source.type_), threshold_(source.threshold_),
      maxShapes_(source.maxShapes_), allowedShapes_(source.allowedShapes_),
      fileName_(source.fileName_), packageName_(source.packageName_) {}

void LOD::Leave() noexcept {
    Unlist(*this);
    registered_ = false;
    for (GeometryAlternate* alternate : alternates_)
        alternate->ForgetLOD();
    alternates_.clear();
    NamedObject::Leave();
}

bool LOD::SetName(const char* name) {
    if (!IsValidName(TextOf(name)))
        return false;
    CompactString stored(TextOf(name)); // first, since no list has the level while it is renamed
    if (TemplateManager::Exists())
        TemplateManager::Get()->MakeRoomForLOD();
    GeometryAlternate::Places places(alternates_); // they have the level's key
    const bool registered = Unlist(*this);
    places.Leave();
    SwapName(stored);
    places.Enter();
    if (registered)
        TemplateManager::Get()->ListLOD(*this);
    return true;
}

const char* LOD::GetTypeName() const {
    static constexpr const char* kNames[] = {"Bounding Volume", "Collision", "Surface"};
    return type_ >= kBoundingVolume && type_ <= kSurface ? kNames[type_] : "";
}

void LOD::AllowShape(int shapes) {
    allowedShapes_ |= shapes;
    allowedShapeNames_.clear();
}

void LOD::DisallowShape(int shapes) {
    allowedShapes_ &= ~shapes;
    allowedShapeNames_.clear();
}

const char* LOD::GetAllowedShapeNames() {
    if (!allowedShapeNames_.empty())
        return allowedShapeNames_.c_str();
    std::string names;
    for (const LODShape& shape : kLODShapes) {
        if (!(allowedShapes_ & shape.bit))
            continue;
        if (!names.empty())
            names += ", ";
        names += shape.name;
    }
    allowedShapeNames_ = std::move(names);
    return allowedShapeNames_.c_str();
}

} // namespace Kor
