// Calls of the functions for types, values and enumerations.

#include <unordered_set>

#include "calls/CallTable.h"
#include "calls/ValueBlock.h"
#include "support/Finding.h"
#include "types/Enumeration.h"
#include "types/EnumerationItem.h"

using namespace Kor;

namespace {

constexpr unsigned kReads = Call::kReads;
constexpr unsigned kChanges = 0;

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
    auto* handle = reinterpret_cast<OviEnumerationItem*>(ToHandle(item));
    if (World::IsAlive(item))
        OviEnumerationItem_SetValue(handle, value.Get());
}

// -- circles: types that are their own base types, near or far, would stay for ever when deleted --

/// What a type keeps alive: its base type and those of the items that it owns.
std::vector<const Type*> KeptBy(const Type& type) {
    std::vector<const Type*> kept{type.GetBaseType()};
    const auto* enumeration = ObjectCast<Enumeration>(&type);
    for (int i = 0; enumeration && i < enumeration->GetItemCount(); ++i)
        kept.push_back(enumeration->GetItemAt(i)->GetBaseType());
    return kept;
}

bool KeepsItself(const Type& type) {
    std::vector<const Type*> reached = KeptBy(type);
    std::unordered_set<const Type*> seen;
    while (!reached.empty()) {
        const Type* kept = reached.back();
        reached.pop_back();
        if (kept == &type)
            return true;
        if (!kept || !seen.insert(kept).second)
            continue;
        const std::vector<const Type*> next = KeptBy(*kept);
        reached.insert(reached.end(), next.begin(), next.end());
    }
    return false;
}

/// Looks at a type that keeps itself, or its enumeration, before its circle is opened again.
void OpenCircle(World& world, OviObject* handle) {
    auto* type = ObjectCast<Type>(reinterpret_cast<Object*>(handle));
    if (!type)
        return;
    const auto* item = ObjectCast<EnumerationItem>(type);
    const Type* owner = item && item->GetEnumeration() ? item->GetEnumeration() : type;
    if (!KeepsItself(*type) && !KeepsItself(*owner))
        return;
    OviType_GetAlignment(ToHandle(type));
    int size = 0;
    OviType_WriteToXML(ToHandle(type), 0, &size, nullptr);
    { const ValueBlock value(world, *type); }
    if (World::IsAlive(type))
        OviType_SetBaseType(ToHandle(type), nullptr);
}

void SetBaseType(World& world) {
    auto* type = Argument<OviType*>::Take(world);
    OviType_SetBaseType(type, Argument<OviType*>::Take(world));
    OpenCircle(world, type);
}

void AddItem(World& world) {
    auto* enumeration = Argument<OviEnumeration*>::Take(world);
    auto* item = Argument<OviEnumerationItem*>::Take(world);
    OviEnumeration_AddItem(enumeration, item);
    OpenCircle(world, item);
}

void NewCustomType(World& world) {
    const char* name = world.PickText();
    world.Own(OviCustomType_New(name, world.PickCount()));
}

} // namespace

std::vector<Call> CallsOfTypes() {
    return {
        OVI_READS(OviType_GetBaseType),
        OVI_SPECIAL(OviType_SetBaseType, SetBaseType, kChanges),
        OVI_READS(OviType_GetAlignment),
        OVI_SPECIAL(OviType_SetAlignment, SetAlignment, kChanges),
        OVI_SPECIAL(OviType_GetValueSize, GetValueSize, kChanges),
        OVI_SPECIAL(OviType_NewValue, NewValue, kChanges),
        OVI_SPECIAL(OviType_DeleteValue, DeleteValue, kChanges),
        OVI_SPECIAL(OviType_CompareValues, CompareValues, kChanges),
        OVI_SPECIAL(OviType_GetValueAsString, GetValueAsString, kChanges),
        OVI_SPECIAL(OviType_GetValueFromString, GetValueFromString, kChanges),
        OVI_SPECIAL(OviType_WriteValueToBinary, WriteValueToBinary, kChanges),
        OVI_SPECIAL(OviType_WriteToXML, WriteToXML, kReads),
        OVI_READS(OviType_GetFullName),
        OVI_READS(OviType_GetFileName),
        OVI_CHANGES(OviType_SetFileName),
        OVI_READS(OviType_GetPackageName),
        OVI_CHANGES(OviType_SetPackageName),
        OVI_CHANGES(OviType_SetSearchPath),
        OVI_READS(OviType_IsRecycled),

        OVI_SPECIAL(OviCustomType_New, NewCustomType, kChanges),
        OVI_SPECIAL(OviEnumeration_AddItem, AddItem, kChanges),
        OVI_READS(OviEnumeration_GetItem),
        OVI_READS(OviEnumeration_GetItemCount),
        OVI_READS(OviEnumeration_GetItemAt),
        OVI_CHANGES(OviEnumeration_RemoveItem),
        OVI_SPECIAL(OviEnumerationItem_SetValue, SetItemValue, kChanges),
    };
}
