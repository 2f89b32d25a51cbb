#include "schema/GeometryAlternate.h"

// An alternate writes its own declaration, whose form the writer of template files knows.
#include "xml/XMLTemplateWriter.h"

#include "core/Undo.h"
#include "schema/GeometryProperty.h"

namespace Kor {

GeometryAlternate::GeometryAlternate(LOD* lod, int version)
    : NodeProperty(std::string_view(), version), lod_(lod) {
    if (lod)
        StoreName(lod->GetNameView());
    UpdateFullName();
    if (lod)
        lod->AddAlternate(this); // last: an alternate that could not be made is not known
}

GeometryAlternate::GeometryAlternate(const GeometryAlternate& source)
    : NodeProperty(source), lod_(source.lod_) {
    if (lod_)
        lod_->AddAlternate(this);
}

GeometryAlternate::~GeometryAlternate() {
    LeaveSortedLists();
    if (lod_)
        lod_->RemoveAlternate(this);
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

void GeometryAlternate::ComposeFullName(std::string& fullName) const {
    NodeProperty::ComposeFullName(fullName);
    if (lod_)
        fullName.append(1, '.').append(lod_->GetNameView());
}

void GeometryAlternate::SetLOD(LOD* lod) {
    LOD* former = lod_;
    if (lod && lod != former)
        lod->AddAlternate(this);
    lod_ = lod;
    Undo changed([&] {
        lod_ = former;
        if (lod && lod != former)
            lod->RemoveAlternate(this);
    });
    UpdateFullName();
    changed.Forget();
    if (former && former != lod)
        former->RemoveAlternate(this);
}

void GeometryAlternate::ForgetLOD() {
    LeaveSortedLists();
    lod_ = nullptr;
    EnterSortedLists();
}

void GeometryAlternate::RemoveLister(GeometryProperty* lister) {
    listers_.TakeOut(lister);
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
