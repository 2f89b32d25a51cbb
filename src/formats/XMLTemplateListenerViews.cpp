// The part of the template listener that reads views.

#include "formats/XMLTemplateListener.h"

#include "core/Undo.h"
#include "formats/AttributeTexts.h"
#include "formats/Quoted.h"
#include "manager/TemplateManager.h"
#include "schema/ViewProperty.h"

namespace Kor {

void XMLTemplateListener::StartView(const XMLAttributes& attributes) {
    if (!openGroups_.empty()) {
        Error("Unexpected nested <view> element");
        return;
    }
    const char* name = Require(attributes, "name", "<view> requires a 'name' attribute");
    if (!name)
        return;
    const char* templateName =
        Require(attributes, "template", "<view> requires a 'template' attribute");
    if (!templateName || !HasValidName("view", name))
        return;
    Template* owner = FindTemplateVersion(templateName, ReadVersion(attributes, "version"));
    if (!owner) {
        Error("View " + Quoted(name) + " referring to unknown template " + Quoted(templateName));
        return;
    }
    auto view = std::make_unique<View>(name, owner);
    GiveComment(*view);
    View* opened = view.get();
    // A recycled template gives up its views when it is defined anew, which may happen before the
    // view's end: then it gets the view.
    if (owner->IsRecycled())
        waitingView_ = std::move(view);
    else
        AddView(std::move(view));
    viewItem_ = opened;
    openGroups_.push_back(opened);
}

/// A view of the same name that this file gave would belong to nobody.
void XMLTemplateListener::AddView(std::unique_ptr<View> view) {
    Template* owner = view->GetTemplate();
    View* former = owner->GetView(view->GetKey(), false);
    views_.insert(view.get());
    Undo given([&] { views_.erase(view.get()); });
    owner->GetViews().Add(view.get());
    given.Forget();
    static_cast<void>(view.release()); // the template has it now
    if (former && views_.erase(former) > 0)
        delete former;
}

bool XMLTemplateListener::IsInsideView(const char* element) {
    if (!openGroups_.empty())
        return true;
    Error(std::string("<") + element + "> must occur inside a <view> or a <group> element");
    return false;
}

/// The innermost open group takes the item over.
void XMLTemplateListener::AddViewItem(std::unique_ptr<ViewItem> item) {
    GiveComment(*item);
    openGroups_.back()->AddViewItemAt(item.get(), -1);
    viewItem_ = item.release();
}

void XMLTemplateListener::StartGroup(const XMLAttributes& attributes) {
    if (!IsInsideView("group"))
        return;
    const char* name = Require(attributes, "name", "<group> requires a 'name' attribute");
    if (!name || !HasValidName("group", name))
        return;
    auto made = std::make_unique<Group>(name);
    Group* group = made.get();
    AddViewItem(std::move(made));
    openGroups_.push_back(group);
}

void XMLTemplateListener::StartViewProperty(const XMLAttributes& attributes) {
    if (!IsInsideView("property"))
        return;
    const char* name = Require(attributes, "name", "<property> requires a 'name' attribute");
    if (!name)
        return;
    const Template* owner = static_cast<View*>(openGroups_.front())->GetTemplate();
    Property* property = owner ? owner->GetProperty(name, true) : nullptr;
    if (!property) {
        Error(std::string("Unknown property: ") + name);
        return;
    }
    AddViewItem(std::make_unique<ViewProperty>(name, property));
}

void XMLTemplateListener::EndGroup() {
    if (!openGroups_.empty())
        openGroups_.pop_back();
    EndViewProperty();
    if (openGroups_.empty() && waitingView_)
        AddView(std::move(waitingView_));
}

void XMLTemplateListener::EndViewProperty() {
    viewItem_ = openGroups_.empty() ? nullptr : openGroups_.back();
}

} // namespace Kor
