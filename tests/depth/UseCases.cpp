// Templates that are copied, and that values of other templates use.

#include "UseCases.h"

#include "SchemaCases.h"
#include "ovi/ovi.h"

namespace {

std::string Number(int value) {
    return std::to_string(value);
}

/// A number below 2^20 for each number below 2^20, in no order.
int Scatter(int value) {
    return static_cast<int>((static_cast<unsigned>(value) * 48271U) & 0xFFFFFU);
}

int Same(int value) {
    return value;
}

int Reverse(int value) {
    return 0xFFFFF - value;
}

void LoadAndUnloadDefaults(Run& run, const char* order, int (*rank)(int)) {
    // As many digits each, so that the order of the names is that of the numbers.
    const auto name = [rank](int i) { return "T" + Number(2000000 + rank(i)); };
    std::string text = "<templates><template name='" + name(0) + "'/>\n";
    for (int i = 1; i <= run.Size(); ++i)
        text += "<template name='" + name(i) + "'><attribute name='a' type='" + name(i - 1) +
                "' default=''/></template>\n";
    const std::string path = run.Write(std::string(order) + ".template", text + "</templates>");
    run.Step("load", [&] { return OviTemplateManager_LoadTemplateFile(path.c_str()); });
    run.Step(("unload in " + std::string(order)).c_str(), [&] {
        OviTemplateManager_UnloadTemplateFile(path.c_str());
        return OviTemplateManager_GetTemplateCount() == 1; // the root stays
    });
}

std::string Attributes(int count, const std::string& type) {
    std::string text;
    for (int i = 0; i < count; ++i)
        text += "<attribute name='a" + Number(i) + "' type='" + type + "'/>\n";
    return text;
}

} // namespace

void RunChainBesideClone(Run& run) {
    OviObject* clone = OviObject_Clone(OviTemplateManager_GetRoot());
    RunChain(run);
    OviObject_Delete(clone);
}

void RunDefaults(Run& run) {
    LoadAndUnloadDefaults(run, "order", &Same);
    LoadAndUnloadDefaults(run, "reverse", &Reverse);
    LoadAndUnloadDefaults(run, "disorder", &Scatter);
}

void RunVersions(Run& run) {
    std::string text =
        "<templates><template name='P'/><template name='T'>\n" + Attributes(3, "INT32");
    for (int i = 2; i <= run.Size(); ++i)
        text += "<extends template='P' version='" + Number(i) + "'/>\n";
    text += "<attribute name='late' type='INT32'/></template></templates>"; // in all versions
    const std::string path = run.Write("versions.template", text);
    run.Step("load", [&] { return OviTemplateManager_LoadTemplateFile(path.c_str()); });
    SaveAndUnload(run, path);
}

void RunFullVersions(Run& run) {
    const std::string path = run.Write(
        "full.template", "<templates><template name='U'>" + Attributes(run.Size(), "INT32") +
                             "</template>\n<template name='T'>" + Attributes(run.Size(), "U") +
                             "<attribute name='new' type='INT32' version='2'/></template>"
                             "</templates>");
    run.Step("load", [&] { return OviTemplateManager_LoadTemplateFile(path.c_str()); });
    run.Step("look at a default", [] {
        OviTemplate* latest = OviTemplateManager_GetTemplate("T");
        return OviAttributeProperty_GetDefaultValue(static_cast<OviAttributeProperty*>(
                   OviTemplate_GetProperty(latest, "a0"))) != nullptr;
    });
    SaveAndUnload(run, path);
}
