#include "schema/GeometryAlternate.h"

#include "xml/XMLTemplateWriter.h"

namespace Kor {

GeometryAlternate::GeometryAlternate(LOD* lod, int version)
    : NodeProperty(std::string_view(), version), lod_(lod) {
    if (lod)
        StoreName(lod->GetNameView());
    GeometryAlternate::UpdateFullName();
}

std::unique_ptr<Object> GeometryAlternate::Clone() const {
    return std::unique_ptr<Object>(new GeometryAlternate(*this));
}

void GeometryAlternate::WriteToXML(XMLWriter& writer) const {
    XMLTemplateWriter(writer).WriteAlternate(*this);
}

std::string_view GeometryAlternate::GetKey() const {
    return lod_ ? lod_->GetKey() : NodeProperty::GetKey();
}

void GeometryAlternate::UpdateFullName() {
    NodeProperty::UpdateFullName();
    if (lod_)
        StoreFullName(GetFullName() + "." + lod_->GetName());
}

void GeometryAlternate::SetLOD(LOD* lod) {
    lod_ = lod;
    UpdateFullName();
}

} // namespace Kor
