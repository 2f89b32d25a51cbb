// The part of a template that makes it a type: its values are arrays of references to instances.

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <new>
#include <utility>
#include <vector>

#include "schema/Template.h"

// A template makes and reads instances; their headers know the schema, not the reverse.
#include "instances/Instance.h"
#include "manager/TemplateManager.h"

#include "core/Ending.h"
#include "core/Names.h"
#include "core/Undo.h"
#include "schema/TemplateSize.h"
#include "types/BinaryPacker.h"

namespace Kor {

namespace {

Instance* At(const void* value, int index) {
    return value ? static_cast<Instance* const*>(value)[index] : nullptr;
}

/// Fails where so many instances can never fit, before the memory is full of the first of them.
void ExpectRoom(size_t count) {
    constexpr size_t kFew = 100000;
    if (count > kFew)
        ::operator delete(::operator new(count*(sizeof(Instance) + sizeof(void*))));
}

std::string_view NameOf(const Instance* instance) {
    return instance ? instance->GetNameView() : std::string_view();
}

/// Null where a callback that was told of the instance ended it.
Instance* MakeForElement(std::string_view name, Template& type) {
    auto* made = new Instance(name, Instance::kInsideValue);
    Undo undo([made] { Ending::End(made); });
    made->AddTemplate(&type, true);
    if (made->HasEnded())
        return nullptr;
    undo.Commit();
    return made;
}

} // namespace

void* Template::NewValue(const void* initial, int count) const {
    if (count <= 0)
        return nullptr;
    ExpectRoom(static_cast<size_t>(count));
    std::vector<std::unique_ptr<Instance>> made(static_cast<size_t>(count));
    for (int i = 0; i < count; ++i) {
        auto& element = made[static_cast<size_t>(i)];
        if (initial) {
            element = At(initial, i) ? At(initial, i)->CopyForValue() : nullptr;
        } else {
            element = std::make_unique<Instance>("", Instance::kInsideValue);
            element->AddTemplate(const_cast<Template*>(this), false);
        }
    }
    auto* block = static_cast<Instance**>(std::malloc(made.size() * sizeof(void*)));
    if (!block)
        throw std::bad_alloc();
    std::transform(made.begin(), made.end(), block,
                   [](auto& element) { return element.release(); });
    return block;
}

void Template::HandOut(const Type& type, void* value, int count) {
    if (!ObjectCast<Template>(type.GetStorageType()))
        return;
    for (int i = 0; value && i < count; ++i) {
        if (Instance* instance = At(value, i))
            instance->HandOut();
    }
}

void* Template::NewEmptyValue(int count) {
    if (count < 1)
        return nullptr;
    void* block = std::calloc(static_cast<size_t>(count), sizeof(void*));
    if (!block)
        throw std::bad_alloc();
    return block;
}

void Template::DeleteValue(void* value, int count) const {
    // The array stays, since whoever has it may go on reading it, and so do the instances that
    // hosts know. They only learn that nobody holds them any more, so that they do not keep a
    // schema from being unloaded.
    for (int i = 0; value && i < count; ++i) {
        if (Instance* instance = At(value, i))
            instance->LoseValue();
    }
}

int Template::CompareValues(const void* a, const void* b, int count) const {
    for (int i = 0; i < count; ++i) {
        if (const int order = CompareIgnoreCase(NameOf(At(a, i)), NameOf(At(b, i))))
            return order;
    }
    return 0;
}

bool Template::IsValueValid(const void* value, const void*, const void*, int count) const {
    if (!value)
        return false;
    for (int i = 0; i < count; ++i) {
        if (!At(value, i))
            return false;
    }
    return true;
}

int Template::GetValueAsString(const void* value, std::string& text, int index) const {
    text = index >= 0 ? NameOf(At(value, index)) : std::string_view();
    return static_cast<int>(text.size());
}

int Template::GetValueFromString(const char* text, void* value, int index) const {
    const std::string_view name = TextOf(text);
    TemplateManager* manager = TemplateManager::Get();
    Template* type = manager ? manager->GetTemplate(name) : nullptr;
    if (type && value && index >= 0) {
        Instance*& element = static_cast<Instance**>(value)[index];
        Instance* made = MakeForElement(name, *type);
        Ending::End(std::exchange(element, made));
    }
    return static_cast<int>(name.size());
}

int Template::GetValueSize(const void* value, int count) const {
    return MeasureTemplateValue(*this, static_cast<Instance* const*>(value), count);
}

void Template::WriteCountToBinary(int count, BinaryPacker& packer) const {
    if (GetDimension() != 0)
        return;
    constexpr int kCountSize = static_cast<int>(sizeof(std::int32_t));
    packer.PadWithin(GetAlignment());
    if (packer.GetRemaining() < kCountSize)
        return;
    // Behind the padding, right in front of the instances; BinaryPacker::WriteCount, for other
    // types, writes to the first bytes.
    packer.PadWithin(kCountSize);
    if (packer.GetRemaining() >= kCountSize)
        packer.WriteInt(count);
}

/// InstancePacker writes the same without recursion: a change here is a change there.
int Template::WriteValueToBinary(const void* value, int count, void* buffer, int bufferSize) const {
    if (!buffer || bufferSize < 0)
        return 0;
    BinaryPacker packer(buffer, bufferSize);
    WriteCountToBinary(count, packer);
    for (int i = 0; i < count; ++i) {
        if (const Instance* instance = At(value, i)) {
            const int size = std::max(packer.GetRemaining(), 0);
            packer.Skip(static_cast<int>(instance->WriteToBinary(
                static_cast<char*>(buffer) + packer.GetPosition(), static_cast<unsigned>(size))));
        }
    }
    return packer.GetPosition();
}

} // namespace Kor
