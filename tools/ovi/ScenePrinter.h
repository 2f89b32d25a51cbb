#pragma once

#include "PropertyInstanceText.h"
#include "PropertyInstances.h"
#include "TreePrinter.h"

#include <string>
#include <vector>

namespace OviTool {

class ChangeRecorder;

/// Prints the assets of the scene with their templates and property instances as a tree.
class ScenePrinter {
public:
    /// With `all`, also the property instances that the file said nothing about.
    ScenePrinter(TreePrinter& tree, const ChangeRecorder& recorder, bool all);

    void Print(const std::string& title);

private:
    /// A line that is still to be printed, with what belongs below it.
    struct Entry {
        OviInstance* instance; ///< Null when the entry is a property instance.
        OviPropertyInstance* propertyInstance;
        int depth;
    };

    void PrintTree(OviAsset* asset);
    void PrintInstance(const Entry& entry);
    void PrintTemplates(OviInstance* instance, int depth);
    void PushPropertyInstances(OviInstance* instance, int depth);
    void PrintPropertyInstance(const Entry& entry);
    void PrintAlternates(OviGeometryInstance* geometry, int depth);
    void PushNested(OviAttributeInstance* attribute, int depth);

    TreePrinter& tree_;
    bool all_;
    PropertyInstances propertyInstances_;
    PropertyInstanceText texts_;
    std::vector<Entry> pending_; ///< The next one last.
};

} // namespace OviTool
