// The part of the template writer that writes views and levels of detail.

#include <vector>

#include "formats/Texts.h"
#include "formats/XMLTemplateWriter.h"
#include "schema/LOD.h"
#include "schema/Property.h"
#include "schema/Template.h"
#include "schema/ViewProperty.h"
#include "xml/XMLWriter.h"

namespace Kor {

namespace {

/// A group whose element is open, and the place reached in it.
struct OpenGroup {
    const Group* group;
    int next = 0;
};

/// The word for a kind of level in files; null for one that files do not know.
const char* GetFileName(int levelType) {
    static constexpr const char* kNames[] = {"boundingvolume", "collision", "surface"};
    return levelType >= LOD::kBoundingVolume && levelType <= LOD::kSurface ? kNames[levelType]
                                                                           : nullptr;
}

} // namespace

/// The views that each version lists. All versions must be known to a reader by then.
void XMLTemplateWriter::WriteViews(const std::vector<const Template*>& versions) {
    for (const Template* version : versions) {
        for (int i = 0; i < version->GetViews().GetCount(); ++i)
            WriteView(*version->GetViews().GetAt(i), version);
    }
}

/// A view names the version that lists it, which need not be the one that it calls its own.
void XMLTemplateWriter::WriteView(const View& view, const Template* owner) {
    StartObject(view, "view");
    writer_.WriteAttribute("name", view.GetNameView());
    if (owner) {
        writer_.WriteAttribute("template", owner->GetFullName());
        if (owner->GetVersion() != 1)
            writer_.WriteAttribute("version", owner->GetVersion());
    }
    WriteTexts(view, writer_);
    WriteItems(view);
}

/// Opens the element of an item inside a view, where a view is read as a group. A view property
/// without a property has none.
bool XMLTemplateWriter::StartViewItem(const ViewItem& item) {
    const auto* leaf = ObjectCast<ViewProperty>(&item);
    if (leaf && !leaf->GetProperty())
        return false;
    StartObject(item, leaf ? "property" : "group");
    writer_.WriteAttribute("name", leaf ? leaf->GetProperty()->GetKey() : item.GetNameView());
    WriteTexts(item, writer_);
    return true;
}

void XMLTemplateWriter::WriteViewItem(const ViewItem& item) {
    if (const auto* view = ObjectCast<View>(&item))
        WriteView(*view, view->GetTemplate());
    else if (!StartViewItem(item))
        return;
    else if (const auto* group = ObjectCast<Group>(&item))
        WriteItems(*group);
    else
        EndObject(true);
}

/// What an open group holds, and its end. Groups nest as deeply as a file says, so the open ones
/// stand in a list.
void XMLTemplateWriter::WriteItems(const Group& outermost) {
    std::vector<OpenGroup> path{{&outermost}};
    while (!path.empty()) {
        OpenGroup& open = path.back();
        const ViewItem* next = open.group->GetViewItemAt(open.next++);
        if (!next) {
            EndObject(true);
            path.pop_back();
        } else if (StartViewItem(*next)) {
            if (const auto* group = ObjectCast<Group>(next))
                path.push_back({group});
            else
                EndObject(true);
        }
    }
}

void XMLTemplateWriter::WriteLOD(const LOD& lod) {
    StartObject(lod, "lod");
    writer_.WriteAttribute("name", lod.GetNameView());
    if (const char* type = GetFileName(lod.GetType()))
        writer_.WriteAttribute("type", type);
    if (lod.GetThreshold() != 0)
        writer_.WriteAttribute("threshold", lod.GetThreshold());
    if (lod.GetMaxShapes() != 0)
        writer_.WriteAttribute("maxShapes", lod.GetMaxShapes());
    for (const LODShape& shape : kLODShapes) {
        if (!(lod.GetAllowedShapes() & shape.bit))
            continue;
        writer_.StartElement("shape");
        writer_.WriteAttribute("type", shape.fileName);
        EndObject(true);
    }
    EndObject(false);
}

} // namespace Kor
