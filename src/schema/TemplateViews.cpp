#include "schema/TemplateViews.h"

#include <memory>

#include "core/Ending.h"
#include "core/Names.h"

namespace Kor {

int TemplateViews::Create(std::string_view name) {
    if (!IsValidName(name))
        return -1;
    auto view = std::make_unique<View>(name, &owner_);
    const int result = Add(view.get());
    static_cast<void>(view.release()); // the list has it now
    return result;
}

int TemplateViews::Add(View* view) {
    listed_.MakeRoomFor(view->GetKey());
    view->MakeRoomForLister();
    MakeRoomToTie();
    View* replaced = nullptr;
    const int result = listed_.Insert(view, &replaced);
    if (replaced)
        replaced->RemoveLister(this);
    view->AddLister(this);
    if (result >= 0)
        view->SetTemplate(&owner_);
    return result;
}

int TemplateViews::Remove(View* view) {
    const std::string_view key = view->GetKey();
    View* removed = listed_.Contains(view) ? view : listed_.Get(key);
    if (!removed)
        return listed_.Find(key);
    removed->RemoveLister(this);
    removed->SetTemplate(nullptr);
    view->SetTemplate(nullptr);
    return listed_.Remove(removed);
}

/// A view may be an item of another one and go with that: it then leaves the list by itself.
void TemplateViews::Drop() noexcept {
    while (!listed_.IsEmpty()) {
        View* view = listed_.GetAt(listed_.GetCount() - 1);
        listed_.RemoveExactly(view);
        view->RemoveLister(this);
        if (view->GetTemplate() == &owner_ || !view->IsListed())
            Ending::End(view);
    }
}

void TemplateViews::LetGo() noexcept {
    while (!tied_.IsEmpty())
        tied_.GetLast()->SetTemplate(nullptr);
}

} // namespace Kor
