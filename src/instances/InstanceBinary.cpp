// The part of an instance that packs it: its attribute values, one behind the other.

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <limits>
#include <optional>
#include <vector>

#include "instances/AttributeInstance.h"
#include "instances/Instance.h"
#include "schema/AttributeProperty.h"
#include "schema/TemplateSize.h"
#include "types/BinaryPacker.h"

namespace Kor {

namespace {

/// What is left of a buffer behind an offset, as the value writers take it: below 0 past the end,
/// and never more than they can count.
int Remaining(unsigned bufferSize, unsigned offset) {
    const std::int64_t rest = std::int64_t{bufferSize} - offset;
    constexpr std::int64_t kMost = std::numeric_limits<int>::max();
    return static_cast<int>(std::clamp(rest, -kMost, kMost));
}

/// A value made of instances that are being packed, and the element reached in it.
struct OpenValue {
    const AttributeInstance* attribute;
    char* start;
    BinaryPacker packer;
    int nextElement = 0;
};

/// An instance that is being packed, and the place reached in it.
struct OpenInstance {
    const Instance* instance;
    char* block;
    unsigned size;
    unsigned offset = 0;
    int nextTemplate = 0;
    int nextProperty = 0;
    std::optional<OpenValue> value = std::nullopt;
};

/// Packs an instance. Values nest instances in instances, so it keeps a stack of its own.
class InstancePacker {
public:
    unsigned Run(const Instance& instance, char* block, unsigned size) {
        path_.push_back({&instance, block, size});
        while (!path_.empty()) {
            OpenInstance& open = path_.back();
            if (open.value)
                WriteNextElement(open);
            else if (open.nextTemplate < open.instance->GetTemplateCount())
                WriteNextProperty(open);
            else
                Close();
        }
        return used_;
    }

private:
    void WriteNextProperty(OpenInstance& open) {
        const Template& implemented = *open.instance->GetTemplateAt(open.nextTemplate);
        const Property* property = implemented.GetPropertyByName(open.nextProperty++);
        if (property) {
            WriteProperty(open, *property);
            return;
        }
        PadBehindTemplate(open, implemented);
        ++open.nextTemplate;
        open.nextProperty = 0;
    }

    static void WriteProperty(OpenInstance& open, const Property& property) {
        const auto* declared = ObjectCast<AttributeProperty>(&property);
        // Under the short name: only a property without an owner has its instance there.
        const PropertyInstance* found =
            declared ? open.instance->GetPropertyInstances().Get(property.GetNameView()) : nullptr;
        if (!found || !declared->GetType())
            return;
        open.offset += static_cast<unsigned>(declared->GetPadding(static_cast<int>(open.offset)));
        char* position = open.block + open.offset;
        const int remaining = Remaining(open.size, open.offset);
        const auto* attribute = ObjectCast<AttributeInstance>(found);
        if (attribute && attribute->HoldsInstances() && attribute->GetReadableValue() &&
            remaining >= 0)
            StartValue(open, *attribute, position, remaining);
        else
            open.offset += static_cast<unsigned>(found->WriteToBinary(position, remaining));
    }

    /// As the template's own writing of a value, but with the instances left to the stack.
    static void StartValue(OpenInstance& open, const AttributeInstance& attribute, char* position,
                           int remaining) {
        const auto* type = ObjectCast<Template>(attribute.GetType()->GetStorageType());
        open.value.emplace(OpenValue{&attribute, position, BinaryPacker(position, remaining)});
        type->WriteCountToBinary(attribute.GetDimension(), open.value->packer);
    }

    void WriteNextElement(OpenInstance& open) {
        OpenValue& value = *open.value;
        if (value.nextElement == value.attribute->GetDimension()) {
            open.offset += static_cast<unsigned>(value.packer.GetPosition());
            open.value.reset();
            return;
        }
        const Instance* nested = value.attribute->GetNestedInstance(value.nextElement++);
        if (!nested)
            return;
        const int remaining = std::max(value.packer.GetRemaining(), 0);
        path_.push_back(
            {nested, value.start + value.packer.GetPosition(), static_cast<unsigned>(remaining)});
    }

    /// Counted on the address and filled with zeroes, even past the end, so that what follows the
    /// template is aligned in memory. The padding in front of a value is counted from the block's
    /// start and leaves the gap as it was.
    static void PadBehindTemplate(OpenInstance& open, const Template& implemented) {
        char* position = open.block + open.offset;
        const int padding = PaddingOfAddress(position, implemented.GetAlignment());
        std::memset(position, 0, static_cast<size_t>(padding));
        open.offset += static_cast<unsigned>(padding);
    }

    void Close() {
        used_ = path_.back().offset;
        path_.pop_back();
        if (!path_.empty())
            path_.back().value->packer.Skip(static_cast<int>(used_));
    }

    std::vector<OpenInstance> path_;
    unsigned used_ = 0;
};

} // namespace

unsigned Instance::GetSize() {
    Instance* self = this;
    unsigned size = 0;
    const std::vector<Template*> implemented(Templates().begin(), Templates().end());
    for (const Template* type : implemented)
        size += static_cast<unsigned>(MeasureTemplateValue(*type, &self, 1));
    return size;
}

unsigned Instance::WriteToBinary(void* buffer, unsigned bufferSize) const {
    return InstancePacker().Run(*this, static_cast<char*>(buffer), bufferSize);
}

} // namespace Kor
