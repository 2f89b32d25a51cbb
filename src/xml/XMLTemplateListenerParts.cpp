// The part of the template listener that reads nodes, anchors, geometry, levels of detail and
// views.

#include <algorithm>
#include <string>

#include "core/Names.h"
#include "core/NumberText.h"
#include "manager/TemplateManager.h"
#include "schema/AnchorProperty.h"
#include "schema/GeometryProperty.h"
#include "schema/ViewProperty.h"
#include "xml/TemplateAttributes.h"
#include "xml/XMLParser.h"
#include "xml/XMLTemplateListener.h"

namespace Kor {

namespace {

std::string Quoted(const char* text) {
    return std::string("'") + text + "'";
}

} // namespace

// -- nodes and anchors ----------------------------------------------------------------------------

void XMLTemplateListener::SetAncestor(NodeProperty& node, const XMLAttributes& attributes) {
    if (const char* ancestor = attributes.Find("ancestor"))
        node.SetAncestor(ancestor);
    if (const char* distance = attributes.Find("distance"))
        node.SetAncestorDistance(ParseInt(distance));
    if (const char* autoBind = attributes.Find("autoBind"))
        node.SetAutoBind(autoBind);
}

void XMLTemplateListener::StartNode(const XMLAttributes& attributes) {
    if (!CanStartMember("node", "Unexpected nested <node> elements", attributes) ||
        !HasValidName("node", attributes.Find("name")))
        return;
    auto node = std::make_unique<NodeProperty>(attributes.Find("name"),
                                               ReadTemplateVersion(attributes, "version"));
    SetAncestor(*node, attributes);
    AddProperty(std::move(node));
}

void XMLTemplateListener::StartAnchor(const XMLAttributes& attributes) {
    if (!CanStartMember("anchor", "Unexpected nested <anchor> elements", attributes) ||
        !HasValidName("anchor", attributes.Find("name")))
        return;
    auto anchor = std::make_unique<AnchorProperty>(attributes.Find("name"),
                                                   ReadTemplateVersion(attributes, "version"));
    anchor->SetChild(ReadTemplateFlag(attributes.Find("child")));
    SetAncestor(*anchor, attributes);
    AddProperty(std::move(anchor));
}

// -- geometry and levels of detail ----------------------------------------------------------------

void XMLTemplateListener::StartGeometry(const XMLAttributes& attributes) {
    if (!CanStartMember("geometry", "Unexpected nested <geometry> element", attributes) ||
        !HasValidName("geometry", attributes.Find("name")))
        return;
    AddProperty(std::make_unique<GeometryProperty>(attributes.Find("name"),
                                                   ReadTemplateVersion(attributes, "version")));
}

void XMLTemplateListener::StartAlternate(const XMLAttributes& attributes) {
    auto* geometry = ObjectCast<GeometryProperty>(member_);
    if (!geometry) {
        Error("<alternate> must occur inside a <geometry> element");
        return;
    }
    const char* name = attributes.Find("lod");
    if (!name) {
        Error("<alternate> element must have an 'lod' attribute");
        return;
    }
    if (!HasValidName("alternate", name))
        return;
    LOD* lod = manager_.GetLOD(name);
    if (!lod) { // the message deliberately quotes the version instead of the name
        const char* version = attributes.Find("version");
        Error("Level of detail not found: " + Quoted(version ? version : ""));
        return;
    }
    auto alternate =
        std::make_unique<GeometryAlternate>(lod, ReadTemplateVersion(attributes, "version"));
    GiveComment(*alternate);
    GeometryAlternate* replaced = nullptr;
    geometry->AddAlternate(alternate.release(), &replaced);
    const std::unique_ptr<GeometryAlternate> unused(replaced);
}

void XMLTemplateListener::StartLOD(const XMLAttributes& attributes) {
    if (lod_) {
        Error("Unexpected nested <lod> element");
        return;
    }
    if (!HasName("lod", attributes))
        return;
    lod_ = std::make_unique<LOD>(attributes.Find("name"));
    lod_->SetFileName(parser_.GetSourceName());
    GiveComment(*lod_);
    const char* type = attributes.Find("type");
    if (type && EqualsIgnoreCase(type, "boundingvolume"))
        lod_->SetType(LOD::kBoundingVolume);
    else if (type && EqualsIgnoreCase(type, "collision"))
        lod_->SetType(LOD::kCollision);
    else if (type && EqualsIgnoreCase(type, "surface"))
        lod_->SetType(LOD::kSurface);
    else if (type)
        Error("Type not found: " + Quoted(type));
    // Both numbers are deliberately read from the text of the type.
    if (attributes.Find("threshold"))
        lod_->SetThreshold(ParseInt(type));
    if (attributes.Find("maxShapes"))
        lod_->SetMaxShapes(ParseInt(type));
}

void XMLTemplateListener::EndLOD() {
    if (lod_)
        manager_.AddLOD(lod_.release());
}

void XMLTemplateListener::StartShape(const XMLAttributes& attributes) {
    if (!lod_) {
        Error("<shape> must occur inside a <lod> element");
        return;
    }
    const char* type = attributes.Find("type");
    if (!type) {
        Error("<shape> element must have an 'type' attribute");
        return;
    }
    for (const LODShape& shape : kLODShapes) {
        if (EqualsIgnoreCase(type, shape.fileName)) {
            lod_->AllowShape(shape.bit);
            return;
        }
    }
    Error("Unknown shape type");
}

// -- views ----------------------------------------------------------------------------------------

void XMLTemplateListener::StartView(const XMLAttributes& attributes) {
    if (!openGroups_.empty()) {
        Error("Unexpected nested <view> element");
        return;
    }
    const char* name = attributes.Find("name");
    const char* templateName = attributes.Find("template");
    if (!name) {
        Error("<view> requires a 'name' attribute");
        return;
    }
    if (!templateName) {
        Error("<view> requires a 'template' attribute");
        return;
    }
    if (!HasValidName("view", name))
        return;
    Template* owner = FindTemplateVersion(templateName, ReadTemplateVersion(attributes, "version"));
    if (!owner) {
        Error("View " + Quoted(name) + " referring to unknown template " + Quoted(templateName));
        return;
    }
    auto view = std::make_unique<View>(name, owner);
    GiveComment(*view);
    // A view of the same name that this file gave would belong to nobody.
    View* former = owner->GetView(name, false);
    owner->AddView(view.get());
    const auto own = std::find(views_.begin(), views_.end(), former);
    if (own != views_.end()) {
        views_.erase(own);
        delete former;
    }
    views_.push_back(view.get());
    viewItem_ = view.get();
    openGroups_.push_back(view.release());
}

bool XMLTemplateListener::IsInsideView(const char* element) {
    if (!openGroups_.empty())
        return true;
    Error(std::string("<") + element + "> must occur inside a <view> or a <group> element");
    return false;
}

/// The innermost open group takes the item over.
void XMLTemplateListener::AddViewItem(ViewItem* item) {
    GiveComment(*item);
    openGroups_.back()->AddViewItemAt(item, -1);
    viewItem_ = item;
}

void XMLTemplateListener::StartGroup(const XMLAttributes& attributes) {
    if (!IsInsideView("group"))
        return;
    const char* name = attributes.Find("name");
    if (!name) {
        Error("<group> requires a 'name' attribute");
        return;
    }
    if (!HasValidName("group", name))
        return;
    auto* group = new Group(name);
    AddViewItem(group);
    openGroups_.push_back(group);
}

void XMLTemplateListener::StartViewProperty(const XMLAttributes& attributes) {
    if (!IsInsideView("property"))
        return;
    const char* name = attributes.Find("name");
    if (!name) {
        Error("<property> requires a 'name' attribute");
        return;
    }
    const Template* owner = static_cast<View*>(openGroups_.front())->GetTemplate();
    Property* property = owner ? owner->GetProperty(name, true) : nullptr;
    if (!property) {
        Error(std::string("Unknown property: ") + name);
        return;
    }
    AddViewItem(new ViewProperty(name, property));
}

void XMLTemplateListener::EndGroup() {
    if (!openGroups_.empty())
        openGroups_.pop_back();
    EndViewProperty();
}

void XMLTemplateListener::EndViewProperty() {
    viewItem_ = openGroups_.empty() ? nullptr : openGroups_.back();
    comment_.clear();
}

} // namespace Kor
