#include "ViewPrinter.h"

#include "NamedObjectTexts.h"
#include "TreePrinter.h"

#include <string>
#include <vector>

namespace OviTool {

namespace {

/// An item that is still to be printed.
struct PendingItem {
    OviViewItem* item;
    int depth;
};

std::string Describe(OviViewItem* item) {
    const std::string name = OviNamedObject_GetName(item);
    if (OviObject_ImplementsClass(item, OVI_CLASS_VIEW))
        return "view " + name;
    if (OviObject_ImplementsClass(item, OVI_CLASS_GROUP))
        return "group " + name;
    OviProperty* const shown = OviViewProperty_GetProperty(static_cast<OviViewProperty*>(item));
    return shown ? std::string("shows ") + OviProperty_GetFullName(shown) : "shows nothing";
}

} // namespace

/// Groups nest as deeply as a file says, so the items to come stand in a list.
void PrintView(TreePrinter& tree, int depth, OviView* view) {
    std::vector<PendingItem> pending{{view, depth}};
    while (!pending.empty()) {
        const PendingItem next = pending.back();
        pending.pop_back();
        tree.Line(next.depth, Describe(next.item));
        PrintTexts(tree, next.depth + 1, next.item);
        if (!OviObject_ImplementsClass(next.item, OVI_CLASS_GROUP))
            continue;
        auto* const group = static_cast<OviGroup*>(next.item);
        for (int i = OviGroup_GetViewItemCount(group); i > 0; --i)
            pending.push_back({OviGroup_GetViewItemAt(group, i - 1), next.depth + 1});
    }
}

} // namespace OviTool
