#include "ovi/view.h"

#include "api/Barrier.h"
#include "core/Names.h"
#include "schema/Group.h"
#include "schema/Property.h"
#include "schema/ViewProperty.h"

using namespace Kor;
using namespace Kor::Api;

OviGroup* OviGroup_New(const char* name) {
    return Guard(static_cast<OviGroup*>(nullptr), [name] {
        return To<OviGroup>(IsValidName(Text(name)) ? new Group(name) : nullptr);
    });
}

void OviGroup_AddViewItemAt(OviGroup* group, OviViewItem* item, int position) {
    WithOptional<Group, ViewItem>(group, item, [position](Group& self, ViewItem* added) {
        self.AddViewItemAt(added, position);
    });
}

void OviGroup_RemoveViewItemAt(OviGroup* group, int index) {
    With<Group>(group, [index](Group& self) { self.RemoveViewItemAt(index); });
}

int OviGroup_GetViewItemCount(OviGroup* group) {
    return With<Group>(group, 0, [](Group& self) { return self.GetViewItemCount(); });
}

OviViewItem* OviGroup_GetViewItemAt(OviGroup* group, int index) {
    return With<Group>(group, static_cast<OviViewItem*>(nullptr),
                       [index](Group& self) { return To<OviViewItem>(self.GetViewItemAt(index)); });
}

OviViewProperty* OviViewProperty_New(const char* name, OviProperty* property) {
    if (Checks::Refuse(property, __func__))
        return nullptr;
    return Guard(static_cast<OviViewProperty*>(nullptr), [=] {
        return To<OviViewProperty>(
            IsValidName(Text(name)) ? new ViewProperty(name, Cast<Property>(property)) : nullptr);
    });
}

OviProperty* OviViewProperty_GetProperty(OviViewProperty* viewProperty) {
    return With<ViewProperty>(
        viewProperty, static_cast<OviProperty*>(nullptr),
        [](ViewProperty& self) { return To<OviProperty>(self.GetProperty()); });
}

void OviViewProperty_SetProperty(OviViewProperty* viewProperty, OviProperty* property) {
    WithOptional<ViewProperty, Property>(
        viewProperty, property,
        [](ViewProperty& self, Property* given) { self.SetProperty(given); });
}
