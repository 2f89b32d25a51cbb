#pragma once

#include "schema/GeometryAlternate.h"
#include "schema/Property.h"

namespace Kor {

/// A piece of geometry with alternative forms, one per level of detail. The alternates are not
/// deleted with it: the schema or the host owns them.
class GeometryProperty : public Property {
public:
    static constexpr int kClassId = kGeometryPropertyClass;
    KOR_OBJECT_MEMORY

    GeometryProperty(std::string_view name, int version) : Property(name, version) {}
    ~GeometryProperty() override { GeometryProperty::Leave(); }

    int GetClass() const override { return kClassId; }
    bool ImplementsClass(int id) const override {
        return id == kClassId || Property::ImplementsClass(id);
    }
    std::unique_ptr<Object> Clone() const override;

    /// The index, or the complement of the index of the alternate of that level that was
    /// overwritten.
    int AddAlternate(GeometryAlternate* alternate);
    int RemoveAlternate(GeometryAlternate* alternate);
    int GetAlternateCount() const { return alternates_.GetCount(); }
    GeometryAlternate* GetAlternateAt(int index) const { return alternates_.GetAt(index); }
    GeometryAlternate* GetAlternate(std::string_view lod) const { return alternates_.Get(lod); }

    /// The sum of the alternates' sizes; 0 when one of them has none.
    int GetValueSize() const override;
    std::unique_ptr<PropertyInstance> CreateInstance(Instance& instance) override;

    /// A geometry has no value of its own.
    int WriteValueToBinary(const void*, int, void*, int) const override { return 0; }

    void Leave() noexcept override;

    void BecomePrototype(Template* source) override;
    void BecomeCopy() override;
    void DropUnseenParts() override;
    bool SharesLeftType() const override;

    /// Called by an alternate around a change of its key and at its end.
    void UnlistAlternate(GeometryAlternate& alternate) { alternates_.RemoveExactly(&alternate); }
    void ListAlternate(GeometryAlternate& alternate) { alternates_.Place(&alternate); }

private:
    GeometryProperty(const GeometryProperty& source);

    void AppendCopy(const GeometryAlternate& source);
    void DropUnseenAlternates();

    SortedObjectList<GeometryAlternate> alternates_;
};

} // namespace Kor
