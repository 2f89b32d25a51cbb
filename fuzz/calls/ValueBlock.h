#pragma once

#include "calls/World.h"
#include "types/Type.h"

/// A value block of a type, with elements read from texts of the input's choice. Freed in the end
/// unless it was handed over.
class ValueBlock {
public:
    /// With as many elements as the dimension says, or as the input chooses where it does not.
    ValueBlock(World& world, const Kor::Type& type);
    ValueBlock(World& world, const Kor::Type& type, int count);
    ~ValueBlock();
    ValueBlock(const ValueBlock&) = delete;
    ValueBlock& operator=(const ValueBlock&) = delete;

    void* Get() const { return block_; }
    int GetCount() const { return count_; }

    /// An index of an element; now and then one below 0.
    int PickIndex(World& world) const;

    void* HandOver();

private:
    void Fill(World& world);
    static void Delete(OviObject* instance);

    Kor::TypeRef type_; // which could go when its last property lets go of it
    int count_;
    void* block_;
};
