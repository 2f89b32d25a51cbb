#pragma once

#include "TreePrinter.h"
#include "ValueText.h"

#include <map>
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
    std::string DescribeValue(OviAttributeInstance* attribute, OviType* type) const;
    static std::string DescribeState(OviPropertyInstance* propertyInstance, const char* origin);
    void PushNested(OviAttributeInstance* attribute, int depth);
    const std::vector<std::string>& GetPropertyNames(OviTemplate* implemented);

    TreePrinter& tree_;
    const ChangeRecorder& recorder_;
    bool all_;
    mutable ValueText values_;
    std::vector<Entry> pending_; ///< The next one last.
    std::map<OviTemplate*, std::vector<std::string>> propertyNames_;
    std::vector<std::string> freePropertyNames_;
};

} // namespace OviTool
