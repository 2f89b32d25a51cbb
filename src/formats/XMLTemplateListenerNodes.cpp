// The part of the template listener that reads nodes, anchors, geometry and levels of detail.

#include "formats/XMLTemplateListener.h"

#include "core/Names.h"
#include "core/NumberText.h"
#include "formats/AttributeTexts.h"
#include "formats/Quoted.h"
#include "manager/TemplateManager.h"
#include "schema/AnchorProperty.h"
#include "schema/GeometryProperty.h"
#include "xml/XMLParser.h"

namespace Kor {

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
    auto node =
        std::make_unique<NodeProperty>(attributes.Find("name"), ReadVersion(attributes, "version"));
    SetAncestor(*node, attributes);
    AddProperty(std::move(node));
}

void XMLTemplateListener::StartAnchor(const XMLAttributes& attributes) {
    if (!CanStartMember("anchor", "Unexpected nested <anchor> elements", attributes) ||
        !HasValidName("anchor", attributes.Find("name")))
        return;
    auto anchor = std::make_unique<AnchorProperty>(attributes.Find("name"),
                                                   ReadVersion(attributes, "version"));
    anchor->SetChild(ReadFlag(attributes.Find("child")));
    SetAncestor(*anchor, attributes);
    AddProperty(std::move(anchor));
}

// -- geometry and levels of detail ----------------------------------------------------------------

void XMLTemplateListener::StartGeometry(const XMLAttributes& attributes) {
    if (!CanStartMember("geometry", "Unexpected nested <geometry> element", attributes) ||
        !HasValidName("geometry", attributes.Find("name")))
        return;
    AddProperty(std::make_unique<GeometryProperty>(attributes.Find("name"),
                                                   ReadVersion(attributes, "version")));
}

void XMLTemplateListener::StartAlternate(const XMLAttributes& attributes) {
    auto* geometry = ObjectCast<GeometryProperty>(member_);
    if (!geometry) {
        Error("<alternate> must occur inside a <geometry> element");
        return;
    }
    const char* name =
        Require(attributes, "lod", "<alternate> element must have an 'lod' attribute");
    if (!name || !HasValidName("alternate", name))
        return;
    LOD* lod = manager_.GetLOD(name);
    if (!lod) { // the message quotes the version of the alternate, not the name of the level
        const char* version = attributes.Find("version");
        Error("Level of detail not found: " + Quoted(version ? version : ""));
        return;
    }
    auto alternate = std::make_unique<GeometryAlternate>(lod, ReadVersion(attributes, "version"));
    GiveComment(*alternate);
    geometry->AddAlternate(alternate.get());
    manager_.Own(std::move(alternate));
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
    lod_->SetPackageName(package_);
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
    // Both numbers are read from the text of the type: with a type that is known they become 0.
    if (attributes.Find("threshold"))
        lod_->SetThreshold(ParseInt(type));
    if (attributes.Find("maxShapes"))
        lod_->SetMaxShapes(ParseInt(type));
}

void XMLTemplateListener::EndLOD() {
    if (!lod_)
        return;
    manager_.AddLOD(lod_.get());
    manager_.Own(std::move(lod_));
}

void XMLTemplateListener::StartShape(const XMLAttributes& attributes) {
    if (!lod_) {
        Error("<shape> must occur inside a <lod> element");
        return;
    }
    const char* type = Require(attributes, "type", "<shape> element must have an 'type' attribute");
    if (!type)
        return;
    for (const LODShape& shape : kLODShapes) {
        if (EqualsIgnoreCase(type, shape.fileName)) {
            lod_->AllowShape(shape.bit);
            return;
        }
    }
    Error("Unknown shape type");
}

} // namespace Kor
