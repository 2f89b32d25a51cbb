// The part of the template writer that arranges: views, and levels of detail.

#include <vector>

#include "schema/LOD.h"
#include "schema/Property.h"
#include "schema/Template.h"
#include "schema/ViewProperty.h"
#include "xml/XMLTemplateWriter.h"
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

/// Opens the element of an item. A view property without a property has none.
bool XMLTemplateWriter::StartViewItem(const ViewItem& item) {
    if (const auto* leaf = ObjectCast<ViewProperty>(&item)) {
        if (!leaf->GetProperty())
            return false;
        StartObject(item, "property");
        writer_.WriteAttribute("name", leaf->GetProperty()->GetNameView());
    } else if (const auto* view = ObjectCast<View>(&item)) {
        StartObject(item, "view");
        writer_.WriteAttribute("name", item.GetNameView());
        if (const Template* owner = view->GetTemplate()) {
            writer_.WriteAttribute("template", owner->GetFullName());
            if (owner->GetVersion() != 1)
                writer_.WriteAttribute("version", owner->GetVersion());
        }
    } else {
        StartObject(item, "group");
        writer_.WriteAttribute("name", item.GetNameView());
    }
    item.NamedObject::WriteToXML(writer_);
    return true;
}

/// Groups nest as deeply as a file says, so the open ones stand in a list.
void XMLTemplateWriter::WriteViewItem(const ViewItem& item) {
    if (!StartViewItem(item))
        return;
    std::vector<OpenGroup> path;
    if (const auto* group = ObjectCast<Group>(&item))
        path.push_back({group});
    else
        EndObject(true);
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
