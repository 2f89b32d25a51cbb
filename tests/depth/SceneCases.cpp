// Assets inside the values of assets, and geometry in many levels of detail.

#include "SceneCases.h"

#include <cstdint>
#include <string>
#include <vector>

#include "ovi/ovi.h"

namespace {

constexpr const char* kNextInstance = "Link.next";

/// The instances in an attribute's value.
OviInstance** ValueOf(OviInstance* instance, const char* attribute) {
    return static_cast<OviInstance**>(
        OviAttributeInstance_GetValue(static_cast<OviAttributeInstance*>(
            OviInstance_GetPropertyInstance(instance, attribute, false))));
}

/// How many assets stand in each other.
int CountNested() {
    int count = 0;
    OviInstance* current = OviAssetManager_GetAsset("Outermost");
    while (current) {
        ++count;
        OviInstance** value = ValueOf(current, kNextInstance);
        current = value ? *value : nullptr;
    }
    return count;
}

} // namespace

void RunNested(Run& run) {
    const std::string schema =
        run.Write("link.template", "<templates><template name='Link'>"
                                   "<attribute name='next' type='Link' reference='true'/>"
                                   "</template></templates>");
    std::string text = "<assets><asset name='Outermost'>";
    const std::string open = "<implements template='Link' version='1'/>"
                             "<attribute property='Link.next'>";
    for (int i = 0; i < run.Size(); ++i)
        text += open + "<asset name='Inner'>\n";
    for (int i = 0; i < run.Size(); ++i)
        text += "</asset></attribute>\n";
    const std::string path = run.Write("nested.asset", text + "</asset></assets>");
    const std::string saved = run.Path("saved.asset");

    OviTemplateManager_LoadTemplateFile(schema.c_str());
    run.Step("load", [&] { return OviAssetManager_LoadScene(path.c_str()); });
    run.Step("look up", [&] { return CountNested() == run.Size() + 1; });
    run.Step("measure and pack", [&] {
        OviAsset* asset = OviAssetManager_GetAsset("Outermost");
        OviInstance_GetSize(asset);
        char room[64];
        OviInstance_WriteToBinary(asset, room, sizeof room);
        return OviInstance_IsValid(asset);
    });
    run.Step("save", [&] { return OviAssetManager_SaveScene(saved.c_str()); });
    run.NoteSize(saved);
    run.Step("clear", [] { return OviAssetManager_NewScene(); });
    run.Step("load what was saved", [&] {
        return OviAssetManager_LoadScene(saved.c_str()) && CountNested() == run.Size() + 1;
    });
    run.Step("clear again", [] { return OviAssetManager_NewScene(); });
}

void RunAlternates(Run& run) {
    std::string levels = "<templates>";
    std::string alternates;
    std::string bindings;
    for (int i = 0; i < run.Size(); ++i) {
        const std::string level = " lod='L" + std::to_string(i) + "'";
        levels += "<lod name='L" + std::to_string(i) + "'/>\n";
        alternates += "<alternate" + level + "/>\n";
        bindings += "<alternate" + level + " binding='node'/>\n";
    }
    const std::string schema =
        run.Write("levels.template", levels + "<template name='Mesh'><geometry name='shape'>" +
                                         alternates + "</geometry></template></templates>");
    const std::string path = run.Write(
        "mesh.asset", "<assets><asset name='Thing'><implements template='Mesh'/><geometry "
                      "property='Mesh.shape'>" +
                          bindings + "</geometry></asset></assets>");
    const std::string saved = run.Path("saved.asset");
    const auto isBound = [] {
        return OviPropertyInstance_IsValid(OviInstance_GetPropertyInstance(
            OviAssetManager_GetAsset("Thing"), "Mesh.shape", false));
    };
    run.Step("load the schema",
             [&] { return OviTemplateManager_LoadTemplateFile(schema.c_str()); });
    run.Step("load", [&] { return OviAssetManager_LoadScene(path.c_str()) && isBound(); });
    run.Step("save", [&] { return OviAssetManager_SaveScene(saved.c_str()); });
    run.Step("clear", [] { return OviAssetManager_NewScene(); });
    run.Step("load what was saved",
             [&] { return OviAssetManager_LoadScene(saved.c_str()) && isBound(); });
    run.Step("clear again", [] { return OviAssetManager_NewScene(); });
    run.Step("unload the schema",
             [&] { return OviTemplateManager_UnloadTemplateFile(schema.c_str()); });
}

void RunFormerValues(Run& run) {
    const std::string schema = run.Write(
        "outer.template", "<templates><template name='Inner'/><template name='Outer'>"
                          "<attribute name='inner' type='Inner'/></template></templates>");
    OviTemplateManager_LoadTemplateFile(schema.c_str());
    OviTemplate* outer = OviTemplateManager_GetTemplate("Outer");
    std::vector<OviInstance*> held;
    run.Step("make", [&] {
        for (int i = 0; i < run.Size(); ++i) {
            OviAsset* asset = OviAssetManager_NewAsset(nullptr);
            OviInstance_AddTemplate(asset, outer);
            held.push_back(*ValueOf(asset, "Outer.inner"));
        }
        return OviAssetManager_GetAssetCount() == run.Size();
    });
    run.Step("clear", [] { return OviAssetManager_NewScene(); });
    run.Step("delete what was held", [&] {
        for (OviInstance* instance : held)
            OviObject_Delete(instance);
        return true;
    });
}

void RunProperties(Run& run) {
    std::string properties;
    for (int i = 0; i < run.Size(); ++i)
        properties += "<attribute name='p" + std::to_string(i) + "' type='INT32'/>\n";
    const std::string schema =
        run.Write("both.template", "<templates><template name='Base'>" + properties +
                                       "</template><template name='Above'>" + properties +
                                       "</template></templates>");
    OviTemplateManager_LoadTemplateFile(schema.c_str());
    OviAsset* asset = OviAssetManager_NewAsset("both");
    OviInstance_AddTemplate(asset, OviTemplateManager_GetTemplate("Base"));
    run.Step("add the second template", [&] {
        OviInstance_AddTemplate(asset, OviTemplateManager_GetTemplate("Above"));
        return OviInstance_GetPropertyInstance(asset, "Above.p1", false) != nullptr;
    });
    run.Step("clear", [] { return OviAssetManager_NewScene(); });
}
