// The packed form of an instance: its attribute values, one behind the other.

#include <cstring>

#include "instances/Instance.h"
#include "schema/AttributeProperty.h"
#include "schema/TemplateSize.h"
#include "types/BinaryPacker.h"

namespace Kor {

namespace {

/// What is left of a buffer behind an offset, as the value writers take it.
int Remaining(unsigned bufferSize, unsigned offset) {
    return static_cast<int>(bufferSize - offset);
}

} // namespace

unsigned Instance::GetSize() {
    Instance* self = this;
    unsigned size = 0;
    const std::vector<Template*> implemented(templates_.begin(), templates_.end());
    for (const Template* type : implemented)
        size += static_cast<unsigned>(MeasureTemplateValue(*type, &self, 1));
    return size;
}

/// The padding in front of a value is counted from the block's start and leaves the gap as it was;
/// the padding behind a template is counted on the address and filled with zeroes, even past the
/// end. The two differ on purpose.
unsigned Instance::WriteToBinary(void* buffer, unsigned bufferSize) {
    auto* block = static_cast<char*>(buffer);
    unsigned offset = 0;
    for (const Template* implemented : templates_) {
        for (const Property* property : implemented->GetOwnProperties()) {
            const auto* attribute = ObjectCast<AttributeProperty>(property);
            // Deliberately under the short name, which few property instances go by.
            const PropertyInstance* found =
                attribute ? propertyInstances_.Get(property->GetNameView()) : nullptr;
            if (!found || !attribute->GetType())
                continue;
            offset += static_cast<unsigned>(attribute->GetPadding(static_cast<int>(offset)));
            offset += static_cast<unsigned>(
                found->WriteToBinary(block + offset, Remaining(bufferSize, offset)));
        }
        const int padding = PaddingOfAddress(block + offset, implemented->GetAlignment());
        std::memset(block + offset, 0, static_cast<size_t>(padding));
        offset += static_cast<unsigned>(padding);
    }
    return offset;
}

} // namespace Kor
