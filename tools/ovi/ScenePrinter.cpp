#include "ScenePrinter.h"

namespace OviTool {

ScenePrinter::ScenePrinter(TreePrinter& tree, const ChangeRecorder& recorder, bool all)
    : tree_(tree), all_(all), texts_(recorder) {}

void ScenePrinter::Print(const std::string& title) {
    const int count = OviAssetManager_GetAssetCount();
    tree_.Line(0, title + ": " + std::to_string(count) + (count == 1 ? " asset" : " assets"));
    for (int i = 0; i < count; ++i)
        PrintTree(OviAssetManager_GetAssetAt(i));
}

/// Instances nest as deeply as a file makes them, so the way down is kept in a list.
void ScenePrinter::PrintTree(OviAsset* asset) {
    pending_.push_back({asset, nullptr, 1});
    while (!pending_.empty()) {
        const Entry entry = pending_.back();
        pending_.pop_back();
        if (entry.instance)
            PrintInstance(entry);
        else
            PrintPropertyInstance(entry);
    }
}

void ScenePrinter::PrintInstance(const Entry& entry) {
    std::string line = "instance ";
    std::string reference;
    if (OviObject_ImplementsClass(entry.instance, OVI_CLASS_ASSET)) {
        line = "asset ";
        reference = OviAsset_GetReference(static_cast<OviAsset*>(entry.instance));
    }
    line += OviNamedObject_GetName(entry.instance);
    if (!reference.empty())
        line += ", refers to " + Quoted(reference);
    tree_.Line(entry.depth, line);
    PrintTemplates(entry.instance, entry.depth + 1);
    PushPropertyInstances(entry.instance, entry.depth + 1);
}

void ScenePrinter::PrintTemplates(OviInstance* instance, int depth) {
    for (int i = 0; i < OviInstance_GetTemplateCount(instance); ++i) {
        OviTemplate* const implemented = OviInstance_GetTemplateAt(instance, i);
        const int version = OviTemplate_GetVersion(implemented);
        const int latest = OviTemplate_GetLatestVersion(implemented);
        std::string line = std::string("implements ") + OviType_GetFullName(implemented) +
                           ", version " + std::to_string(version);
        if (latest != version)
            line += " (the latest is " + std::to_string(latest) + ")";
        tree_.Line(depth, line);
    }
}

void ScenePrinter::PushPropertyInstances(OviInstance* instance, int depth) {
    const std::vector<OviPropertyInstance*> all = propertyInstances_.Find(instance);
    for (auto next = all.rbegin(); next != all.rend(); ++next) {
        if (all_ || texts_.IsMentioned(*next))
            pending_.push_back({nullptr, *next, depth});
    }
}

void ScenePrinter::PrintPropertyInstance(const Entry& entry) {
    OviPropertyInstance* const self = entry.propertyInstance;
    tree_.Line(entry.depth, texts_.Describe(self));
    if (OviObject_ImplementsClass(self, OVI_CLASS_GEOMETRY_INSTANCE))
        PrintAlternates(static_cast<OviGeometryInstance*>(self), entry.depth + 1);
    else if (texts_.HasNestedInstances(self))
        PushNested(static_cast<OviAttributeInstance*>(self), entry.depth + 1);
}

void ScenePrinter::PrintAlternates(OviGeometryInstance* geometry, int depth) {
    for (int i = 0; i < GetAlternateCount(geometry); ++i)
        tree_.Line(depth, PropertyInstanceText::DescribeAlternate(geometry, i));
}

void ScenePrinter::PushNested(OviAttributeInstance* attribute, int depth) {
    auto* const elements = static_cast<OviInstance**>(OviAttributeInstance_GetValue(attribute));
    for (int i = OviAttributeInstance_GetDimension(attribute); elements && i > 0; --i) {
        if (elements[i - 1])
            pending_.push_back({elements[i - 1], nullptr, depth});
    }
}

} // namespace OviTool
