#pragma once

#include <unordered_set>
#include <utility>
#include <vector>

#include "core/MakeRoom.h"
#include "core/PointerList.h"
#include "schema/LOD.h"
#include "schema/NodeProperty.h"

namespace Kor {

class GeometryProperty;

/// One form of a geometry: a node bound to a level of detail, which is borrowed.
class GeometryAlternate : public NodeProperty, public SchemaPart<GeometryAlternate> {
public:
    static constexpr int kClassId = kGeometryAlternateClass;
    KOR_OBJECT_MEMORY

    /// Takes the level's name as its own.
    GeometryAlternate(LOD* lod, int version);

    ~GeometryAlternate() override { GeometryAlternate::Leave(); }

    int GetClass() const override { return kClassId; }
    bool ImplementsClass(int id) const override {
        return id == kClassId || NodeProperty::ImplementsClass(id);
    }
    std::unique_ptr<Object> Clone() const override;

    /// The level's key, also when the level is renamed.
    std::string_view GetKey() const override;

    /// As for every property, whose key is the level's name here, and then that name once more:
    /// "High.High" without an owner.
    void ComposeFullName(std::string& fullName) const override;

    LOD* GetLOD() const { return lod_; }

    /// Changes key and full name, not the own name. The place in a geometry's list stays: the nodes
    /// of its instances stand in the same order.
    void SetLOD(LOD* lod);

    /// Called by the level at its end; the full name stays.
    void ForgetLOD();

    /// Kept by the geometries that list the alternate, once for each entry.
    void MakeRoomForLister() { MakeRoom(listers_); }
    void AddLister(GeometryProperty* lister) { listers_.push_back(lister); }
    void RemoveLister(GeometryProperty* lister);

    /// Takes itself out of the geometries that list it.
    void Leave() noexcept override;

    /// The sorted lists that have alternates, left around a change of the name of their level.
    class Places {
    public:
        /// Throws std::bad_alloc; what follows needs no memory.
        explicit Places(const std::unordered_set<GeometryAlternate*>& alternates);
        void Leave();
        void Enter();

    private:
        const std::unordered_set<GeometryAlternate*>& alternates_;
        std::vector<std::pair<Template*, GeometryAlternate*>> templates_;
    };

private:
    /// No geometry lists the copy.
    GeometryAlternate(const GeometryAlternate& source);

    void LeaveGeometries();
    void EnterGeometries();
    void ChangeKey(LOD* lod);

    LOD* lod_;
    PointerList<GeometryProperty> listers_;
};

} // namespace Kor
