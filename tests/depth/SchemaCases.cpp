// Templates that inherit from each other, types over types, groups in groups, packages that use
// packages, many files.

#include "SchemaCases.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <vector>

#include "ovi/ovi.h"

namespace {

std::string Number(int value) {
    return std::to_string(value);
}

/// What a host does with a schema and one asset of its last template.
void UseSchema(Run& run, const std::string& path, const std::string& last, const char* inherited) {
    const std::string scene = run.Path("scene.asset");
    OviAsset* asset = nullptr;
    run.Step("load", [&] { return OviTemplateManager_LoadTemplateFile(path.c_str()); });
    OviTemplate* heir = OviTemplateManager_GetTemplate(last.c_str());
    run.Step("look up", [&] { return OviTemplate_GetProperty(heir, "AssetNode") != nullptr; });
    run.Step("make an asset", [&] {
        asset = OviAssetManager_NewAsset("Thing");
        OviInstance_AddTemplate(asset, heir);
        return OviInstance_GetPropertyInstance(asset, inherited, false) != nullptr;
    });
    run.Step("save the scene", [&] { return OviAssetManager_SaveScene(scene.c_str()); });
    run.Step("clear the scene", [] { return OviAssetManager_NewScene(); });
    run.Step("load the scene", [&] {
        return OviAssetManager_LoadScene(scene.c_str()) && OviAssetManager_GetAssetCount() == 1;
    });
    run.Step("clear it again", [] { return OviAssetManager_NewScene(); });
}

/// Stacked diamonds over the template A0.
std::string Diamonds(int count) {
    std::string text;
    for (int i = 1; i <= count; ++i) {
        const std::string below = "'><extends template='A" + Number(i - 1) + "'/></template>\n";
        text += "<template name='L" + Number(i) + below + "<template name='R" + Number(i) + below;
        text += "<template name='A" + Number(i) + "'><extends template='L" + Number(i) +
                "'/><extends template='R" + Number(i) + "'/></template>\n";
    }
    return text;
}

/// Makes an asset of a template whose node the host has.
void BindAsset(const std::string& templateName, const char* node) {
    OviAsset* asset = OviAssetManager_NewAsset("Thing");
    OviInstance_AddTemplate(asset, OviTemplateManager_GetTemplate(templateName.c_str()));
    OviAttributeInstance_SetBinding(
        static_cast<OviNodeInstance*>(OviInstance_GetPropertyInstance(asset, node, false)), "node");
}

} // namespace

void SaveAndUnload(Run& run, const std::string& path) {
    const std::string saved = run.Path("saved.template");
    const int before = OviTemplateManager_GetTemplateCount();
    const auto unload = [&] {
        OviTemplateManager_UnloadTemplateFile(path.c_str());
        return OviTemplateManager_GetTemplateCount() == 1; // the root stays
    };
    run.Step("save",
             [&] { return OviTemplateManager_SaveTemplateFile(path.c_str(), saved.c_str()); });
    run.NoteSize(saved);
    run.Step("unload", unload);
    run.Step("load what was saved", [&] {
        return OviTemplateManager_LoadTemplateFile(saved.c_str()) &&
               OviTemplateManager_GetTemplateCount() == before;
    });
    OviTemplateManager_UnloadTemplateFile(saved.c_str());
}

void RunChain(Run& run) {
    std::string text = "<templates><template name='T0'><node name='AssetNode'/></template>\n";
    for (int i = 1; i <= run.Size(); ++i)
        text += "<template name='T" + Number(i) + "'><extends template='T" + Number(i - 1) +
                "'/><attribute name='a' type='INT32' default='" + Number(i) + "'/></template>\n";
    const std::string path = run.Write("chain.template", text + "</templates>");
    UseSchema(run, path, "T" + Number(run.Size()), "T0.AssetNode");
    SaveAndUnload(run, path);
}

void RunDiamonds(Run& run) {
    const std::string path =
        run.Write("diamonds.template", "<templates><template name='A0'><node name='AssetNode'/>"
                                       "<anchor name='hook' child='true'/></template>\n" +
                                           Diamonds(run.Size()) + "</templates>");
    const std::string last = "A" + Number(run.Size());
    UseSchema(run, path, last, "A0.AssetNode");

    BindAsset(last, "A0.AssetNode");
    OviAnchorProperty* seeker = OviAnchorProperty_New("seeker", 1);
    run.Step("count compatible anchors", [&] {
        // One for every path: 2^size, for as long as an int can tell.
        const int found = OviAnchorProperty_GetCompatibleAnchors(seeker, 0, nullptr);
        return found == (run.Size() < 31 ? 1 << run.Size() : std::numeric_limits<int>::max());
    });
    OviObject_Delete(seeker);
    OviAssetManager_NewScene();
    SaveAndUnload(run, path);
}

void RunContained(Run& run) {
    std::string text = "<templates><template name='T0'><node name='AssetNode'/></template>\n";
    for (int i = 1; i <= run.Size(); ++i)
        text += "<template name='T" + Number(i) + "'><node name='AssetNode'/>" +
                "<attribute name='a' type='T" + Number(i - 1) + "'/></template>\n";
    const std::string last = "T" + Number(run.Size());
    const std::string path = run.Write("contained.template", text + "</templates>");
    UseSchema(run, path, last, (last + ".a").c_str());
    run.Step("measure", [&] {
        OviTemplate* outermost = OviTemplateManager_GetTemplate(last.c_str());
        return OviType_GetValueSize(outermost, nullptr, 1) == 0; // nodes have no value
    });
    SaveAndUnload(run, path);
}

void RunAnchors(Run& run) {
    constexpr int kDiamonds = 8;
    std::string text = "<templates><template name='C0'><node name='AssetNode'/>"
                       "<anchor name='hook' child='true'/></template>\n";
    for (int i = 1; i <= run.Size(); ++i)
        text += "<template name='C" + Number(i) + "'><extends template='C" + Number(i - 1) +
                "'/></template>\n";
    text += "<template name='A0'><extends template='C" + Number(run.Size()) + "'/></template>\n" +
            Diamonds(kDiamonds) + "</templates>";
    const std::string path = run.Write("anchors.template", text);
    OviTemplateManager_LoadTemplateFile(path.c_str());
    BindAsset("A" + Number(kDiamonds), "C0.AssetNode");
    OviAnchorProperty* seeker = OviAnchorProperty_New("seeker", 1);
    std::vector<OviPropertyInstance*> found(1 << kDiamonds);
    run.Step("list compatible anchors", [&] {
        const int capacity = static_cast<int>(found.size());
        return OviAnchorProperty_GetCompatibleAnchors(seeker, capacity, found.data()) == capacity &&
               found.front() && found.back() == found.front();
    });
    OviObject_Delete(seeker);
}

void RunViews(Run& run) {
    std::string text = "<templates><template name='T'><node name='AssetNode'/></template>\n";
    for (int i = run.Size(); i > 0; --i)
        text +=
            "<view name='v" + Number(i) + "' template='T'><property name='AssetNode'/></view>\n";
    const std::string path = run.Write("views.template", text + "</templates>");
    UseSchema(run, path, "T", "T.AssetNode");
    SaveAndUnload(run, path);
}

void RunTypes(Run& run) {
    std::string text = "<templates><type name='Y0' type='INT32' dim='2'/>\n";
    for (int i = 1; i <= run.Size(); ++i)
        text += "<type name='Y" + Number(i) + "' type='Y" + Number(i - 1) + "' dim='2'/>\n";
    const std::string last = "Y" + Number(run.Size());
    text += "<template name='T'><node name='AssetNode'/><attribute name='a' type='" + last +
            "' default='7'/></template>\n";
    const std::string path = run.Write("types.template", text + "</templates>");
    UseSchema(run, path, "T", "T.a");
    run.Step("measure a value", [&] {
        OviType* type = OviTemplateManager_GetType(last.c_str());
        void* value = OviType_NewValue(type, nullptr, 2);
        const int size = OviType_GetValueSize(type, value, 2);
        OviType_DeleteValue(type, value, 2);
        return size == 8;
    });
    SaveAndUnload(run, path);
}

void RunGroups(Run& run) {
    std::string text = "<templates><template name='T'><node name='AssetNode'/></template>\n"
                       "<view name='v' template='T'>";
    for (int i = 0; i < run.Size(); ++i)
        text += "<group name='g'>";
    text += "<property name='AssetNode'/>";
    for (int i = 0; i < run.Size(); ++i)
        text += "</group>\n";
    const std::string path = run.Write("groups.template", text + "</view></templates>");
    UseSchema(run, path, "T", "T.AssetNode");
    run.Step("copy the view", [] {
        OviView* view = OviTemplate_GetView(OviTemplateManager_GetTemplate("T"), "v", false);
        auto* copy = static_cast<OviView*>(OviObject_Clone(view));
        const bool made = OviGroup_GetViewItemCount(copy) == 1;
        OviObject_Delete(copy);
        return made;
    });
    SaveAndUnload(run, path);
}

void RunPackages(Run& run) {
    for (int i = 0; i <= run.Size(); ++i) {
        const std::string name = "p" + Number(i);
        std::string text = "<templates package='" + name + "'>";
        if (i > 0)
            text += "<using package='p" + Number(i - 1) + "'/>";
        text += "<template name='T'>";
        if (i > 0)
            text += "<extends template='p" + Number(i - 1) + ".T'/>";
        run.Write("packages/" + name + "/T.template", text + "</template></templates>");
    }
    OviTemplateManager_AddSearchPath(run.Path("packages").c_str(), false);
    const std::string last = "p" + Number(run.Size());
    run.Step("load", [&] { return OviTemplateManager_LoadPackage(last.c_str()); });
    run.Step("look up", [&] {
        return OviTemplateManager_GetTemplate((last + ".T").c_str()) &&
               OviTemplateManager_GetTemplateCount() == run.Size() + 2;
    });
}

void RunFiles(Run& run) {
    std::vector<std::string> paths;
    for (int i = 0; i < run.Size(); ++i)
        paths.push_back(run.Write("F" + Number(i) + ".template",
                                  "<templates><template name='F" + Number(i) + "'/></templates>"));
    const auto all = [&paths](bool (*work)(const char*)) {
        return std::all_of(paths.begin(), paths.end(),
                           [work](const std::string& path) { return work(path.c_str()); });
    };
    run.Step("load", [&] { return all(&OviTemplateManager_LoadTemplateFile); });
    run.Step("load again", [&] { return all(&OviTemplateManager_LoadTemplateFile); });
    run.Step("unload", [&] {
        return all(&OviTemplateManager_UnloadTemplateFile) &&
               OviTemplateManager_GetTemplateCount() == 1; // the root stays
    });
}
