#include "schema/GeometryProperty.h"

#include <algorithm>
#include <limits>

// A property makes its own value side; the instances' headers know the schema, not the reverse.
#include "instances/GeometryInstance.h"

#include "xml/XMLTemplateWriter.h"

namespace Kor {

GeometryProperty::GeometryProperty(const GeometryProperty& source) : Property(source) {
    alternates_.Reserve(source.alternates_.GetCount());
    for (const GeometryAlternate* alternate : source.alternates_)
        alternates_.Append(static_cast<GeometryAlternate*>(alternate->Clone().release()));
}

std::unique_ptr<Object> GeometryProperty::Clone() const {
    return std::unique_ptr<Object>(new GeometryProperty(*this));
}

void GeometryProperty::WriteToXML(XMLWriter& writer) const {
    XMLTemplateWriter(writer).WriteGeometry(*this);
}

int GeometryProperty::GetValueSize() const {
    int sum = 0;
    for (const GeometryAlternate* alternate : alternates_) {
        const int size = alternate->GetValueSize();
        if (size < 1)
            return 0;
        sum += std::min(size, std::numeric_limits<int>::max() - sum);
    }
    return sum;
}

std::unique_ptr<PropertyInstance> GeometryProperty::CreateInstance(Instance& instance) {
    return std::make_unique<GeometryInstance>(instance, *this);
}

} // namespace Kor
