#include "schema/GeometryAlternate.h"

#include "core/Undo.h"
#include "schema/GeometryProperty.h"
#include "schema/Template.h"

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
    : NodeProperty(source), SchemaPart(source), lod_(source.lod_) {
    if (lod_)
        lod_->AddAlternate(this);
}

void GeometryAlternate::Leave() noexcept {
    LeaveGeometries();
    listers_.clear();
    NodeProperty::Leave(); // lists that have the alternate find it by its key
    if (lod_)
        lod_->RemoveAlternate(this);
    lod_ = nullptr;
}

std::unique_ptr<Object> GeometryAlternate::Clone() const {
    return std::unique_ptr<Object>(new GeometryAlternate(*this));
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
    ChangeKey(lod);
    Undo changed([&] {
        ChangeKey(former);
        if (lod && lod != former)
            lod->RemoveAlternate(this);
    });
    UpdateFullName();
    changed.Commit();
    if (former && former != lod)
        former->RemoveAlternate(this);
}

void GeometryAlternate::ForgetLOD() {
    LeaveGeometries();
    ChangeKey(nullptr);
    EnterGeometries();
}

/// Templates that list the alternate among their own properties follow its key.
void GeometryAlternate::ChangeKey(LOD* lod) {
    LOD* const former = lod_;
    for (Template* holder : GetHolders()) {
        lod_ = former;
        const bool listed = holder->UnlistName(*this);
        lod_ = lod;
        if (listed)
            holder->ListName(*this);
    }
    lod_ = lod;
    TellOfKey();
}

void GeometryAlternate::RemoveLister(GeometryProperty* lister) {
    listers_.TakeOut(lister);
    if (listers_.empty() && GetHolders().empty())
        EndUnlisted();
}

GeometryAlternate::Places::Places(const std::unordered_set<GeometryAlternate*>& alternates)
    : alternates_(alternates) {
    size_t count = 0;
    for (const GeometryAlternate* alternate : alternates)
        count += alternate->GetHolders().size();
    templates_.reserve(count);
}

void GeometryAlternate::Places::Leave() {
    for (GeometryAlternate* alternate : alternates_) {
        alternate->LeaveGeometries();
        for (Template* holder : alternate->GetHolders()) {
            if (holder->UnlistName(*alternate))
                templates_.emplace_back(holder, alternate);
        }
    }
}

void GeometryAlternate::Places::Enter() {
    for (GeometryAlternate* alternate : alternates_) {
        alternate->EnterGeometries();
        alternate->TellOfKey();
    }
    for (const auto& [holder, alternate] : templates_)
        holder->ListName(*alternate);
}

void GeometryAlternate::LeaveGeometries() {
    for (GeometryProperty* lister : listers_)
        lister->UnlistAlternate(*this);
}

void GeometryAlternate::EnterGeometries() {
    for (GeometryProperty* lister : listers_)
        lister->ListAlternate(*this);
}

} // namespace Kor
