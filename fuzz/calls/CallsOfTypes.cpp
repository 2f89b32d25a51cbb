// Calls of the functions for types, values and enumerations.

#include "calls/CallTable.h"
#include "calls/ValueBlock.h"
#include "support/Finding.h"
#include "types/EnumerationItem.h"

using namespace Kor;

namespace {

constexpr unsigned kReads = Call::kReads;
constexpr unsigned kAlone = 0;

/// Alignments for which records leave room.
constexpr int kAlignmentRoom = 64;

OviType* ToHandle(Type* type) {
    return reinterpret_cast<OviType*>(static_cast<Object*>(type));
}

// -- values: the type that is called must have made their blocks ----------------------------------

void NewValue(World& world) {
    if (Type* type = world.Pick<Type>())
        ValueBlock(world, *type, world.PickCount());
}

void DeleteValue(World& world) {
    OviType_DeleteValue(Argument<OviType*>::Take(world), nullptr, world.PickInt());
}

void CompareValues(World& world) {
    Type* type = world.Pick<Type>();
    if (!type)
        return;
    const ValueBlock a(world, *type);
    const ValueBlock b(world, *type, a.GetCount());
    const bool withNull = world.GetInput().TakeByte() % 4 == 0;
    OviType_CompareValues(ToHandle(type), a.Get(), withNull ? nullptr : b.Get(), a.GetCount());
}

void GetValueSize(World& world) {
    Type* type = world.Pick<Type>();
    if (!type)
        return;
    const ValueBlock value(world, *type);
    const bool withNull = world.GetInput().TakeByte() % 4 == 0;
    Expect(OviType_GetValueSize(ToHandle(type), withNull ? nullptr : value.Get(),
                                withNull ? world.PickCount() : value.GetCount()) >= 0,
           "a size is below 0");
}

void GetValueAsString(World& world) {
    Type* type = world.Pick<Type>();
    if (!type)
        return;
    const ValueBlock value(world, *type);
    const int index = value.PickIndex(world);
    const int length = OviType_GetValueAsString(ToHandle(type), value.Get(), index, nullptr);
    std::vector<char> buffer(static_cast<size_t>(length));
    OviType_GetValueAsString(ToHandle(type), value.Get(), index, buffer.data());
}

void GetValueFromString(World& world) {
    Type* type = world.Pick<Type>();
    if (!type)
        return;
    const ValueBlock value(world, *type);
    const int index = value.PickIndex(world);
    OviType_GetValueFromString(ToHandle(type), world.PickText(), value.Get(), index);
}

void WriteValueToBinary(World& world) {
    Type* type = world.Pick<Type>();
    if (!type)
        return;
    const ValueBlock value(world, *type);
    const int size = world.GetInput().TakeByte();
    std::vector<char> buffer(static_cast<size_t>(size + kAlignmentRoom));
    const bool withNull = world.GetInput().TakeByte() % 4 == 0;
    OviType_WriteValueToBinary(ToHandle(type), withNull ? nullptr : value.Get(), value.GetCount(),
                               buffer.data(), size);
}

void WriteToXML(World& world) {
    auto* type = Argument<OviType*>::Take(world);
    const int indent = world.PickCount();
    int size = 0;
    OviType_WriteToXML(type, indent, &size, nullptr);
    size = std::max(size - world.GetInput().TakeByte() % 3, 0);
    std::vector<char> buffer(static_cast<size_t>(size));
    OviType_WriteToXML(type, indent, &size, buffer.data());
}

void SetAlignment(World& world) {
    constexpr int kAlignments[] = {1, 2, 4, 8, 16, 3, 0, -1, 32};
    OviType_SetAlignment(Argument<OviType*>::Take(world),
                         kAlignments[world.GetInput().TakeByte() % 9]);
}

void SetItemValue(World& world) {
    auto* item = world.Pick<EnumerationItem>();
    if (!item || !item->GetValueCarrier() || world.GetInput().TakeByte() % 8 == 0) {
        OviEnumerationItem_SetValue(Argument<OviEnumerationItem*>::Take(world), nullptr);
        return;
    }
    const ValueBlock value(world, *item->GetValueCarrier());
    OviEnumerationItem_SetValue(reinterpret_cast<OviEnumerationItem*>(ToHandle(item)), value.Get());
}

void NewCustomType(World& world) {
    const char* name = world.PickText();
    world.Own(OviCustomType_New(name, world.PickCount()));
}

} // namespace

std::vector<Call> CallsOfTypes() {
    return {
        OVI_READS(OviType_GetBaseType),
        OVI_TRANSFERS(OviType_SetBaseType),
        OVI_READS(OviType_GetAlignment),
        OVI_SPECIAL(OviType_SetAlignment, SetAlignment, kAlone),
        OVI_SPECIAL(OviType_GetValueSize, GetValueSize, kAlone),
        OVI_SPECIAL(OviType_NewValue, NewValue, kAlone),
        OVI_SPECIAL(OviType_DeleteValue, DeleteValue, kAlone),
        OVI_SPECIAL(OviType_CompareValues, CompareValues, kAlone),
        OVI_SPECIAL(OviType_GetValueAsString, GetValueAsString, kAlone),
        OVI_SPECIAL(OviType_GetValueFromString, GetValueFromString, kAlone),
        OVI_SPECIAL(OviType_WriteValueToBinary, WriteValueToBinary, kAlone),
        OVI_SPECIAL(OviType_WriteToXML, WriteToXML, kReads),
        OVI_READS(OviType_GetFullName),
        OVI_READS(OviType_GetFileName),
        OVI_CHANGES(OviType_SetFileName),
        OVI_READS(OviType_GetPackageName),
        OVI_CHANGES(OviType_SetPackageName),
        OVI_CHANGES(OviType_SetSearchPath),
        OVI_READS(OviType_IsRecycled),

        OVI_SPECIAL(OviCustomType_New, NewCustomType, kAlone),
        OVI_TRANSFERS(OviEnumeration_AddItem),
        OVI_READS(OviEnumeration_GetItem),
        OVI_READS(OviEnumeration_GetItemCount),
        OVI_READS(OviEnumeration_GetItemAt),
        OVI_TRANSFERS(OviEnumeration_RemoveItem),
        OVI_SPECIAL(OviEnumerationItem_SetValue, SetItemValue, kAlone),
    };
}
