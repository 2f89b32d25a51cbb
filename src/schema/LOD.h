#pragma once

#include <string>
#include <unordered_set>

#include "core/NamedObject.h"
#include "schema/SchemaParts.h"

namespace Kor {

class GeometryAlternate;

/// A level of detail: a kind of geometry, a threshold and limits on its shapes. The numbers are
/// stored for the host and not interpreted.
class LOD : public NamedObject, public SchemaPart<LOD> {
public:
    static constexpr int kClassId = kLODClass;
    KOR_OBJECT_MEMORY

    /// Kinds of levels.
    enum LevelType : int { kBoundingVolume = 0, kCollision = 1, kSurface = 2 };

    /// A level's name is not bound to the name rule.
    explicit LOD(std::string_view name) { StoreName(name); }

    ~LOD() override { LOD::Leave(); }

    int GetClass() const override { return kClassId; }
    bool ImplementsClass(int id) const override {
        return id == kClassId || NamedObject::ImplementsClass(id);
    }
    std::unique_ptr<Object> Clone() const override {
        return std::unique_ptr<Object>(new LOD(*this));
    }

    /// The manager's registry and the geometries that list alternates of the level follow its new
    /// name.
    bool SetName(const char* name) override;

    /// Takes itself away from the registry and from the alternates that stand for it.
    void Leave() noexcept override;

    /// Kept by the alternates that stand for the level.
    void AddAlternate(GeometryAlternate* alternate) { alternates_.insert(alternate); }
    void RemoveAlternate(GeometryAlternate* alternate) {
        alternates_.erase(alternate);
        EndIfUnlisted();
    }

    /// Whether the template manager's registry has the level.
    bool IsRegistered() const { return registered_; }
    void SetRegistered(bool registered) {
        registered_ = registered;
        EndIfUnlisted();
    }

    int GetType() const { return type_; }
    void SetType(int type) { type_ = type; }

    /// "Bounding Volume", "Collision" or "Surface"; "" for any other type.
    const char* GetTypeName() const;

    int GetThreshold() const { return threshold_; }
    void SetThreshold(int threshold) { threshold_ = threshold; }
    int GetMaxShapes() const { return maxShapes_; }
    void SetMaxShapes(int count) { maxShapes_ = count; }

    /// Shapes as bits, from 1 for polygons to 32 for pyramids.
    int GetAllowedShapes() const { return allowedShapes_; }
    void AllowShape(int shapes);
    void DisallowShape(int shapes);

    /// Asks the maximum number of shapes for the bits; GetAllowedShapes has those that are allowed.
    bool IsShapeAllowed(int shapes) const { return (maxShapes_ & shapes) == shapes; }

    /// The names of the allowed shapes, in bit order, with ", " in between.
    const char* GetAllowedShapeNames();

    /// The template file that defined the level; "" for none.
    const std::string& GetFileName() const { return fileName_; }
    void SetFileName(std::string_view fileName) { fileName_ = fileName; }

    /// The package of that file. Levels are found by their names alone; but a file whose alternates
    /// stand for a level has to use its package.
    const std::string& GetPackageName() const { return packageName_; }
    void SetPackageName(std::string_view packageName) { packageName_ = packageName; }

private:
    /// No alternate stands for the copy.
    LOD(const LOD& source);

    void EndIfUnlisted() noexcept {
        if (!registered_ && alternates_.empty())
            EndUnlisted();
    }

    bool registered_ = false;
    int type_ = kSurface;
    int threshold_ = 0;
    int maxShapes_ = 0;
    int allowedShapes_ = 0;
    std::string allowedShapeNames_; // made when asked for, dropped when the shapes change
    std::string fileName_;
    std::string packageName_;
    std::unordered_set<GeometryAlternate*> alternates_;
};

/// A shape by its bit, with the names that hosts see and that files use.
struct LODShape {
    int bit;
    const char* name;
    const char* fileName;
};
constexpr LODShape kLODShapes[] = {{1, "Polygons", "polygons"}, {2, "Cube", "cube"},
                                   {4, "Sphere", "sphere"},     {8, "Cylinder", "cylinder"},
                                   {16, "Cone", "cone"},        {32, "Pyramid", "pyramid"}};

} // namespace Kor
