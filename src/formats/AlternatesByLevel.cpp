#include "formats/AlternatesByLevel.h"

#include "core/Names.h"
#include "schema/GeometryProperty.h"

namespace Kor {

namespace {

constexpr int kFew = 8; // so many are searched faster than they are put in order

const LOD* LevelAt(const GeometryProperty& geometry, int index) {
    const GeometryAlternate* alternate = geometry.GetAlternateAt(index);
    return alternate ? alternate->GetLOD() : nullptr;
}

bool IsOfLevel(const GeometryProperty& geometry, int index, std::string_view name) {
    const LOD* level = LevelAt(geometry, index);
    return level && EqualsIgnoreCase(level->GetNameView(), name);
}

int Search(const GeometryProperty& geometry, std::string_view level) {
    for (int i = 0; i < geometry.GetAlternateCount(); ++i) {
        if (IsOfLevel(geometry, i, level))
            return i;
    }
    return -1;
}

} // namespace

int AlternatesByLevel::Find(const GeometryProperty& geometry, std::string_view level) {
    if (geometry.GetAlternateCount() <= kFew)
        return Search(geometry, level);
    if (geometry_ != &geometry || count_ != geometry.GetAlternateCount())
        Build(geometry);
    const auto found = indexes_.find(ToLowerAscii(level));
    if (found == indexes_.end())
        return -1;
    // A callback may have changed the geometry since.
    return IsOfLevel(geometry, found->second, level) ? found->second : Search(geometry, level);
}

void AlternatesByLevel::Build(const GeometryProperty& geometry) {
    geometry_ = &geometry;
    count_ = geometry.GetAlternateCount();
    indexes_.clear();
    for (int i = 0; i < count_; ++i) {
        if (const LOD* level = LevelAt(geometry, i))
            indexes_.emplace(ToLowerAscii(level->GetNameView()), i); // the first of a name stays
    }
}

} // namespace Kor
