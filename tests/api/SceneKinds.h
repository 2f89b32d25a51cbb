#pragma once

#include <set>
#include <string>

#include "ovi/ovi.h"

/// What kinds of property instances the assets of the scene have, and what kinds of values, in
/// words such as "anchor", "bound node", "FLOAT", "several FLOAT" or "enumeration of STRING".
class SceneKinds {
public:
    static std::set<std::string> Collect() {
        SceneKinds kinds;
        for (int i = 0; i < OviAssetManager_GetAssetCount(); ++i) {
            OviAsset* asset = OviAssetManager_GetAssetAt(i);
            for (int j = 0; j < OviInstance_GetTemplateCount(asset); ++j)
                kinds.AddProperties(asset, OviInstance_GetTemplateAt(asset, j));
        }
        return kinds.found_;
    }

private:
    void AddProperties(OviInstance* instance, OviTemplate* type) {
        for (int i = 0; i < OviTemplate_GetParentCount(type); ++i)
            AddProperties(instance, OviTemplate_GetParentAt(type, i));
        for (int i = 0; i < OviTemplate_GetPropertyCount(type); ++i) {
            const char* name = OviProperty_GetFullName(OviTemplate_GetPropertyAt(type, i, true));
            Add(OviInstance_GetPropertyInstance(instance, name, false));
        }
    }

    void Add(OviPropertyInstance* property) {
        switch (OviObject_GetClass(property)) {
        case OVI_CLASS_NODE_INSTANCE:
            AddBound("node", static_cast<OviNodeInstance*>(property));
            break;
        case OVI_CLASS_ANCHOR_INSTANCE:
            AddAnchor(static_cast<OviAnchorInstance*>(property));
            break;
        case OVI_CLASS_GEOMETRY_INSTANCE:
            AddGeometry(static_cast<OviGeometryInstance*>(property));
            break;
        case OVI_CLASS_ATTRIBUTE_INSTANCE:
            AddAttribute(static_cast<OviAttributeInstance*>(property));
            break;
        default:
            found_.insert("unknown");
        }
    }

    void AddBound(const std::string& word, OviAttributeInstance* bindable) {
        found_.insert((*OviAttributeInstance_GetBinding(bindable) ? "bound " : "") + word);
    }

    void AddAnchor(OviAnchorInstance* anchor) {
        auto* property = static_cast<OviAnchorProperty*>(OviPropertyInstance_GetProperty(anchor));
        const std::string word =
            OviAnchorProperty_IsChild(property) ? "child anchor" : "parent anchor";
        AddBound(word, anchor);
        if (*OviAnchorInstance_GetAttachedAnchor(anchor))
            found_.insert("attached " + word);
    }

    void AddGeometry(OviGeometryInstance* geometry) {
        auto* property =
            static_cast<OviGeometryProperty*>(OviPropertyInstance_GetProperty(geometry));
        found_.insert("geometry");
        for (int i = 0; i < OviGeometryProperty_GetAlternateCount(property); ++i)
            AddBound("alternate", OviGeometryInstance_GetNodeInstanceAt(geometry, i));
    }

    void AddAttribute(OviAttributeInstance* attribute) {
        auto* property =
            static_cast<OviAttributeProperty*>(OviPropertyInstance_GetProperty(attribute));
        AddBound(OviAttributeProperty_IsReference(property) ? "reference" : "attribute", attribute);
        if (!OviPropertyInstance_IsValid(attribute)) // the scene gives it no value
            return;
        found_.insert((OviAttributeInstance_GetDimension(attribute) > 1 ? "several " : "") +
                      WordFor(OviAttributeProperty_GetType(property)));
    }

    /// The built-in type below all names.
    static std::string WordFor(OviType* type) {
        if (OviObject_ImplementsClass(type, OVI_CLASS_TEMPLATE))
            return "instance";
        const bool isEnumeration = OviObject_ImplementsClass(type, OVI_CLASS_ENUMERATION);
        while (OviType_GetBaseType(type))
            type = OviType_GetBaseType(type);
        return (isEnumeration ? "enumeration of " : "") + std::string(OviType_GetFullName(type));
    }

    std::set<std::string> found_;
};
