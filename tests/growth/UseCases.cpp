// Questions about long lists, and what is made of them.

#include <cstdint>
#include <functional>

#include "Cases.h"
#include "Orders.h"
#include "ovi/ovi.h"

namespace {

std::string Number(int value) {
    return std::to_string(value);
}

/// An enumeration whose items have the numbers below a count as their values, in a text of their
/// own.
std::string EnumerationText(const std::string& name, const std::string& type, int count) {
    std::string text = "<enum name='" + name + "' type='" + type + "'>";
    for (int i = 0; i < count; ++i)
        text += "<item name='" + NameFor("i", i) + "' value='" + Number(i) + "'/>\n";
    return text + "</enum><template name='Of" + name + "'><attribute name='a' type='" + name +
           "'/></template>\n";
}

using Ask = std::function<bool(OviAttributeProperty*, int)>;

void AskAboutAll(Run& run, const char* name, const char* step, const Ask& ask) {
    auto* attribute = static_cast<OviAttributeProperty*>(OviTemplate_GetProperty(
        OviTemplateManager_GetTemplate((std::string("Of") + name).c_str()), "a"));
    run.Step(step, [&] {
        bool known = true;
        for (const int i : NumbersBelow(run.Size(), Order::kScattered))
            known = ask(attribute, i) && known;
        return known;
    });
}

bool IsValid(OviAttributeProperty* attribute, const void* value) {
    return OviAttributeProperty_IsValueValid(attribute, value);
}

} // namespace

/// Neither the packages nor the types are there, which is reported for each of them.
void RunUsing(Run& run) {
    std::string text = "<templates>";
    for (int i = run.Size(); i-- > 0;)
        text += "<using package='" + NameFor("p", i) + "'/>\n";
    text += "<type name='Here' type='INT32'/><template name='T'>\n";
    for (int i = 0; i < run.Size(); ++i)
        text += "<attribute name='" + NameFor("a", i) + "' type='" + NameFor("Gone", i) + "'/>\n";
    for (int i = 0; i < run.Size(); ++i)
        text += "<attribute name='" + NameFor("b", i) + "' type='INT32'/>\n";
    text += "</template>\n";
    for (int i = 0; i < run.Size(); ++i)
        text += "<template name='" + NameFor("C", i) + "'><extends template='Gone'/></template>\n";
    const std::string path = run.Write("using.template", text + "</templates>");
    run.Step("load", [&] {
        const bool loaded = OviTemplateManager_LoadTemplateFile(path.c_str());
        const int reported = OviErrorManager_GetErrorItemCount(1 | 2 | 4 | 8);
        OviErrorManager_Clear();
        return loaded && reported > 0;
    });
}

void RunTemplatesOfAnAsset(Run& run) {
    std::string text = "<templates>";
    for (int i = 0; i < run.Size(); ++i)
        text += "<template name='" + NameFor("T", i) +
                "'><attribute name='a' type='INT32' default='7'/>"
                "<attribute name='b' type='INT32' version='2'/></template>\n";
    const std::string path = run.Write("many.template", text + "</templates>");
    const std::string scene = run.Path("scene.asset");
    run.Step("load the schema", [&] { return OviTemplateManager_LoadTemplateFile(path.c_str()); });
    OviAsset* asset = nullptr;
    for (const Order order : kOrders) {
        OviAssetManager_NewScene();
        asset = OviAssetManager_NewAsset("Thing");
        run.Step((std::string("add ") + NameOf(order)).c_str(), [&] {
            for (const int i : NumbersBelow(run.Size(), order))
                OviInstance_AddTemplate(
                    asset, OviTemplateManager_GetTemplateVersion(NameFor("T", i).c_str(), 1));
            return OviInstance_GetTemplateCount(asset) == run.Size();
        });
    }
    run.Step("look up", [&] {
        bool found = true;
        for (const int i : NumbersBelow(run.Size(), Order::kScattered))
            found = OviInstance_GetTemplate(asset, NameFor("T", i).c_str()) && found;
        return found;
    });
    run.Step("save", [&] { return OviAssetManager_SaveScene(scene.c_str()); });
    run.Step("update", [&] {
        bool updated = true;
        for (const int i : NumbersBelow(run.Size(), Order::kScattered))
            updated = OviInstance_UpdateTemplate(asset, OviTemplateManager_GetTemplateVersion(
                                                            NameFor("T", i).c_str(), 1)) >= 0 &&
                      updated;
        return updated;
    });
    run.Step("remove", [&] {
        for (const int i : NumbersBelow(run.Size(), Order::kScattered))
            OviInstance_RemoveTemplate(asset,
                                       OviTemplateManager_GetTemplate(NameFor("T", i).c_str()));
        return OviInstance_GetTemplateCount(asset) == 0;
    });
    run.Step("load", [&] {
        const bool loaded = OviAssetManager_NewScene() && OviAssetManager_LoadScene(scene.c_str());
        OviErrorManager_Clear(); // that there are newer versions
        return loaded &&
               OviInstance_GetTemplateCount(OviAssetManager_GetAsset("Thing")) == run.Size();
    });
    run.Step("clear", [] { return OviAssetManager_NewScene(); });
}

void RunEnumerationValues(Run& run) {
    const std::string path = run.Write(
        "values.template", "<templates>" + EnumerationText("Numbers", "INT32", run.Size()) +
                               EnumerationText("Floats", "FLOAT", run.Size()) +
                               "<type name='Pair' type='INT32' dim='2'/>" +
                               EnumerationText("Pairs", "Pair", run.Size()) +
                               EnumerationText("Texts", "STRING", run.Size()) + "</templates>");
    run.Step("load", [&] { return OviTemplateManager_LoadTemplateFile(path.c_str()); });
    AskAboutAll(run, "Numbers", "an item's name", [](OviAttributeProperty* attribute, int i) {
        return IsValid(attribute, NameFor("i", i).c_str());
    });
    AskAboutAll(run, "Numbers", "a number", [](OviAttributeProperty* attribute, std::int32_t i) {
        const std::int32_t none = -1 - i;
        return IsValid(attribute, &i) && !IsValid(attribute, &none);
    });
    AskAboutAll(run, "Floats", "a float", [](OviAttributeProperty* attribute, int i) {
        const auto value = static_cast<float>(i);
        const float none = value + 0.25F;
        return IsValid(attribute, &value) && !IsValid(attribute, &none);
    });
    AskAboutAll(run, "Pairs", "two numbers", [](OviAttributeProperty* attribute, int i) {
        const std::int32_t value[] = {i, 0};
        const std::int32_t none[] = {-1 - i, 0};
        return IsValid(attribute, value) && !IsValid(attribute, none);
    });
    AskAboutAll(run, "Texts", "a text", [](OviAttributeProperty* attribute, int i) {
        const std::string text = Number(i);
        const char* value = text.c_str();
        const char* none = "none";
        return IsValid(attribute, &value) && !IsValid(attribute, &none);
    });
    OviEnumeration* numbers = OviTemplateManager_GetEnumeration("Numbers");
    AskAboutAll(run, "Numbers", "after a change each", [&](OviAttributeProperty* attribute, int i) {
        const std::int32_t changed = i + 2 * 1000 * 1000;
        OviEnumerationItem_SetValue(OviEnumeration_GetItemAt(numbers, i), &changed);
        const std::int32_t before = i;
        return IsValid(attribute, &changed) && !IsValid(attribute, &before);
    });
    AskAboutAll(run, "Numbers", "while they go", [&](OviAttributeProperty* attribute, int i) {
        const std::int32_t changed = i + 2 * 1000 * 1000;
        const bool was = IsValid(attribute, &changed);
        OviEnumerationItem* item = OviEnumeration_GetItem(numbers, NameFor("i", i).c_str());
        OviEnumeration_RemoveItem(numbers, item);
        OviObject_Delete(item);
        return was && !IsValid(attribute, &changed);
    });
}
