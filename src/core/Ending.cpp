#include "core/Ending.h"

#include <utility>

#include "core/NamedObject.h"

namespace Kor {

void Ending::End(NamedObject* object) noexcept {
    if (!object || object->HasEnded())
        return;
    object->Leave();
    if (IsDeferred())
        Wait(object);
    else
        Bury(object);
}

/// What waits since a callback goes on waiting: the call that the callback ran in may still be
/// working on it.
void Ending::EndUnused(NamedObject* object) noexcept {
    const bool othersWait = hasWaiting_;
    Wait(object);
    if (!othersWait && !IsDeferred())
        FreeWaiting();
}

void Ending::Wait(NamedObject* object) noexcept {
    object->TellWatcher(); // the mark for it goes with the name
    object->nameAndTexts_.ReplaceBy(std::exchange(objects_, object));
    hasWaiting_ = true;
}

void Ending::Bury(NamedObject* object) noexcept {
    if (object->IsNeeded())
        object->StayForUsers();
    else
        delete object;
}

void Ending::Free(Remains* remains) noexcept {
    if (!IsDeferred()) {
        delete remains;
        return;
    }
    remains->next_ = std::exchange(remains_, remains);
    hasWaiting_ = true;
}

/// Those that ended may still use each other, in any order; and freeing one may end others.
void Ending::FreeWaiting() noexcept {
    while (objects_ || remains_) {
        while (NamedObject* object = objects_) {
            objects_ = static_cast<NamedObject*>(object->nameAndTexts_.GetReplacement());
            object->nameAndTexts_.Restore(); // users may go on having it
            Bury(object);
        }
        if (Remains* remains = remains_) {
            remains_ = remains->next_;
            delete remains;
        }
    }
    hasWaiting_ = false;
}

} // namespace Kor
