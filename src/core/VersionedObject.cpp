#include "core/VersionedObject.h"

namespace Kor {

VersionedObject::VersionedObject(const VersionedObject& source)
    : version_(source.version_), status_(source.status_) {
    SetPrevious(const_cast<VersionedObject*>(&source));
}

VersionedObject::~VersionedObject() {
    LeaveVersions();
}

void VersionedObject::LeaveVersions() noexcept {
    Unlink();
    while (firstSuccessor_)
        firstSuccessor_->SetPrevious(nullptr);
}

void VersionedObject::SetPrevious(VersionedObject* previous) {
    Unlink();
    previous_ = previous;
    if (!previous)
        return;
    nextSibling_ = previous->firstSuccessor_;
    if (nextSibling_)
        nextSibling_->previousSibling_ = this;
    previous->firstSuccessor_ = this;
}

void VersionedObject::Unlink() {
    if (!previous_)
        return;
    if (previousSibling_)
        previousSibling_->nextSibling_ = nextSibling_;
    else
        previous_->firstSuccessor_ = nextSibling_;
    if (nextSibling_)
        nextSibling_->previousSibling_ = previousSibling_;
    previous_ = nextSibling_ = previousSibling_ = nullptr;
}

} // namespace Kor
