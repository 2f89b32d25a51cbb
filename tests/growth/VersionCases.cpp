// Many versions of one template, each with a property more than the one before.

#include "Cases.h"
#include "Orders.h"
#include "ovi/ovi.h"

namespace {

std::string TextOfVersions(int count) {
    std::string text = "<templates><template name='T'>\n";
    for (int i = 0; i < count; ++i)
        text += "<attribute name='" + NameFor("a", i) + "' type='INT32' version='" +
                std::to_string(i + 1) + "'/>\n";
    return text + "</template></templates>";
}

OviTemplate* LatestOf(int count) {
    return OviTemplateManager_GetTemplateVersion("T", static_cast<unsigned>(count));
}

/// Made as a host does it.
bool MakeVersions(int count) {
    OviTemplate* version = OviTemplateManager_CreateTemplate("T");
    for (int i = 0; i < count; ++i) {
        if (i > 0)
            version = OviTemplateManager_CreateTemplateVersion("T", i + 1);
        OviAttributeProperty* added =
            OviAttributeProperty_New(NameFor("a", i).c_str(), static_cast<unsigned>(i + 1));
        OviAttributeProperty_SetType(added, OviTemplateManager_ResolveType("INT32"));
        OviTemplate_AddProperty(version, added, -1);
    }
    return OviTemplate_GetPropertyCount(version) == count;
}

/// The first property of each version, and the same again.
bool AskEachForOne(int count) {
    bool known = true;
    for (const int i : NumbersBelow(count, Order::kScattered)) {
        OviTemplate* version =
            OviTemplateManager_GetTemplateVersion("T", static_cast<unsigned>(i + 1));
        OviProperty* first = OviTemplate_GetProperty(version, NameFor("a", 0).c_str());
        known = known && first && OviTemplate_GetPropertyAt(version, 0, true) == first;
    }
    return known;
}

bool AskForAll(OviTemplate* version) {
    bool known = true;
    const int count = OviTemplate_GetPropertyCount(version);
    for (const int i : NumbersBelow(count, Order::kScattered)) {
        OviProperty* found = OviTemplate_GetPropertyAt(version, i, false);
        known = known && found &&
                OviTemplate_GetProperty(version, OviNamedObject_GetName(found)) == found;
    }
    return known;
}

bool TakeOneFromEach(int count) {
    bool taken = true;
    for (int i = 1; i < count; ++i) {
        OviTemplate* version =
            OviTemplateManager_GetTemplateVersion("T", static_cast<unsigned>(i + 1));
        OviProperty* first = OviTemplate_GetPropertyAt(version, 0, true);
        taken = OviTemplate_RemoveProperty(version, first) >= 0 && taken;
        OviObject_Delete(first);
    }
    return taken;
}

} // namespace

void RunVersions(Run& run) {
    const std::string path = run.Write("versions.template", TextOfVersions(run.Size()));
    const std::string saved = run.Path("saved.template");
    run.Step("load", [&] { return OviTemplateManager_LoadTemplateFile(path.c_str()); });
    run.Step("save",
             [&] { return OviTemplateManager_SaveTemplateFile(path.c_str(), saved.c_str()); });
    run.Step("ask each for one", [&] { return AskEachForOne(run.Size()); });
    run.Step("ask the latest for all", [&] { return AskForAll(LatestOf(run.Size())); });
    run.Step("take one from each", [&] { return TakeOneFromEach(run.Size()); });
    run.Step("save again",
             [&] { return OviTemplateManager_SaveTemplateFile(path.c_str(), saved.c_str()); });
    run.Step("unload", [&] { return OviTemplateManager_UnloadTemplateFile(path.c_str()); });
    run.Step("make", [&] { return MakeVersions(run.Size()); });
    run.Step("end", [] {
        Ovi_Terminate();
        Ovi_Initialize();
        return OviTemplateManager_GetTemplateCount() == 1;
    });
}
