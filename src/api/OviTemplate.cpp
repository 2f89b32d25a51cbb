#include "ovi/template.h"

#include "api/Barrier.h"
#include "schema/Template.h"

using namespace Kor;
using namespace Kor::Api;

namespace {

OviTemplate* const kNoTemplate = nullptr;
OviProperty* const kNoProperty = nullptr;
OviView* const kNoView = nullptr;

} // namespace

int OviTemplate_GetVersion(OviTemplate* self) {
    return With<Template>(self, 0, [](Template& target) { return target.GetVersion(); });
}

int OviTemplate_GetLatestVersion(OviTemplate* self) {
    return With<Template>(self, 0, [](Template& target) { return target.GetLatestVersion(); });
}

int OviTemplate_AddParent(OviTemplate* self, OviTemplate* parent) {
    return WithBoth<Template, Template>(self, parent, -1, [](Template& target, Template& other) {
        return target.AddParent(&other);
    });
}

int OviTemplate_RemoveParent(OviTemplate* self, OviTemplate* parent) {
    return WithBoth<Template, Template>(self, parent, -1, [](Template& target, Template& other) {
        return target.RemoveParent(&other);
    });
}

int OviTemplate_GetParentCount(OviTemplate* self) {
    return With<Template>(self, 0, [](Template& target) { return target.GetParentCount(); });
}

OviTemplate* OviTemplate_GetParentAt(OviTemplate* self, int index) {
    return With<Template>(self, kNoTemplate, [index](Template& target) {
        return To<OviTemplate>(target.GetParentAt(index));
    });
}

OviTemplate* OviTemplate_GetParent(OviTemplate* self, const char* key) {
    return With<Template>(self, kNoTemplate, [key](Template& target) {
        return To<OviTemplate>(target.GetParent(Text(key)));
    });
}

int OviTemplate_GetChildCount(OviTemplate* self) {
    return With<Template>(self, 0, [](Template& target) { return target.GetChildCount(); });
}

OviTemplate* OviTemplate_GetChildAt(OviTemplate* self, int index) {
    return With<Template>(self, kNoTemplate, [index](Template& target) {
        return To<OviTemplate>(target.GetChildAt(index));
    });
}

OviTemplate* OviTemplate_GetChild(OviTemplate* self, const char* key) {
    return With<Template>(self, kNoTemplate, [key](Template& target) {
        return To<OviTemplate>(target.GetChild(Text(key)));
    });
}

bool OviTemplate_IsChildOf(OviTemplate* self, OviTemplate* other) {
    return WithBoth<Template, Template>(self, other, false, [](Template& target, Template& parent) {
        return target.IsChildOf(&parent);
    });
}

bool OviTemplate_IsDescendantOf(OviTemplate* self, OviTemplate* other) {
    return WithBoth<Template, Template>(
        self, other, false,
        [](Template& target, Template& ancestor) { return target.IsDescendantOf(&ancestor); });
}

int OviTemplate_AddProperty(OviTemplate* self, OviProperty* property, int position) {
    return WithBoth<Template, Property>(self, property, -1,
                                        [position](Template& target, Property& added) {
                                            return target.AddProperty(&added, position);
                                        });
}

int OviTemplate_RemoveProperty(OviTemplate* self, OviProperty* property) {
    return WithBoth<Template, Property>(
        self, property, -1,
        [](Template& target, Property& removed) { return target.RemoveProperty(&removed); });
}

int OviTemplate_GetPropertyCount(OviTemplate* self) {
    return With<Template>(self, 0, [](Template& target) { return target.GetPropertyCount(); });
}

OviProperty* OviTemplate_GetPropertyAt(OviTemplate* self, int index, bool sortedByName) {
    return With<Template>(self, kNoProperty, [=](Template& target) {
        return To<OviProperty>(sortedByName ? target.GetPropertyByName(index)
                                            : target.GetDeclaredAt(index));
    });
}

OviProperty* OviTemplate_GetProperty(OviTemplate* self, const char* name) {
    return With<Template>(self, kNoProperty, [name](Template& target) {
        return To<OviProperty>(target.GetProperty(Text(name), true));
    });
}

int OviTemplate_CreateView(OviTemplate* self, const char* name) {
    return With<Template>(
        self, -1, [name](Template& target) { return target.GetViews().Create(Text(name)); });
}

int OviTemplate_AddView(OviTemplate* self, OviView* view) {
    return WithBoth<Template, View>(self, view, -1, [](Template& target, View& added) {
        return target.GetViews().Add(&added);
    });
}

int OviTemplate_RemoveView(OviTemplate* self, OviView* view) {
    return WithBoth<Template, View>(self, view, -1, [](Template& target, View& removed) {
        return target.GetViews().Remove(&removed);
    });
}

int OviTemplate_GetViewCount(OviTemplate* self) {
    return With<Template>(self, 0, [](Template& target) { return target.GetViews().GetCount(); });
}

OviView* OviTemplate_GetViewAt(OviTemplate* self, int index) {
    return With<Template>(self, kNoView, [index](Template& target) {
        return To<OviView>(target.GetViews().GetAt(index));
    });
}

OviView* OviTemplate_GetView(OviTemplate* self, const char* name, bool includeInherited) {
    return With<Template>(self, kNoView, [=](Template& target) {
        return To<OviView>(target.GetView(Text(name), includeInherited));
    });
}
