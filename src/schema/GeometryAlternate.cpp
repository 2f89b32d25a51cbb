#include "schema/GeometryAlternate.h"

#include "core/TakeOut.h"
#include "schema/GeometryProperty.h"
#include "xml/XMLTemplateWriter.h"

namespace Kor {

GeometryAlternate::GeometryAlternate(LOD* lod, int version)
    : NodeProperty(std::string_view(), version) {
    StoreLOD(lod);
    if (lod)
        StoreName(lod->GetNameView());
    GeometryAlternate::UpdateFullName();
}

GeometryAlternate::GeometryAlternate(const GeometryAlternate& source) : NodeProperty(source) {
    StoreLOD(source.lod_);
}

GeometryAlternate::~GeometryAlternate() {
    LeaveSortedLists();
    StoreLOD(nullptr);
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
    StoreLOD(lod);
    UpdateFullName();
}

void GeometryAlternate::StoreLOD(LOD* lod) {
    if (lod_)
        lod_->RemoveAlternate(this);
    lod_ = lod;
    if (lod_)
        lod_->AddAlternate(this);
}

void GeometryAlternate::LoseLOD() {
    LeaveSortedLists();
    SetLOD(nullptr);
    EnterSortedLists();
}

void GeometryAlternate::RemoveLister(GeometryProperty* lister) {
    TakeOut(listers_, lister);
}

void GeometryAlternate::LeaveSortedLists() {
    for (GeometryProperty* lister : listers_)
        lister->UnlistAlternate(*this);
}

void GeometryAlternate::EnterSortedLists() {
    for (GeometryProperty* lister : listers_)
        lister->ListAlternate(*this);
}

} // namespace Kor
