#pragma once

#include <algorithm>
#include <cstdlib>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "ovi/ovi.h"

/// The whole schema as text, taken through the exported functions alone: two registries are equal
/// when their texts are. Properties are numbered in the order in which they are met, so that the
/// text also tells whether two versions share a property or have a copy each.
class SchemaDump {
public:
    /// File names are shown as they go on behind `root`.
    static std::string Of(const std::string& root = "") { return SchemaDump(root).TakeAll(); }

    /// Only what one file defines.
    static std::string OfFile(const std::string& file) {
        SchemaDump dump("");
        dump.onlyFile_ = file;
        return dump.TakeAll();
    }

private:
    explicit SchemaDump(const std::string& root) : root_(root) {}

    std::string TakeAll() {
        for (int i = 0; i < OviTemplateManager_GetTypeCount(); ++i)
            Take(OviTemplateManager_GetTypeAt(i), &SchemaDump::TakeType);
        for (int i = 0; i < OviTemplateManager_GetEnumerationCount(); ++i)
            Take(OviTemplateManager_GetEnumerationAt(i), &SchemaDump::TakeEnumeration);
        for (int i = 0; i < OviTemplateManager_GetTemplateCount(); ++i)
            Take(OviTemplateManager_GetTemplateAt(i), &SchemaDump::TakeTemplate);
        // Levels of detail do not tell their file.
        for (int i = 0; onlyFile_.empty() && i < OviTemplateManager_GetLODCount(); ++i)
            TakeLOD(OviTemplateManager_GetLODAt(i));
        return text_;
    }

    template <class T> void Take(T* type, void (SchemaDump::*take)(T*)) {
        if (onlyFile_.empty() || onlyFile_ == OviType_GetFileName(type))
            (this->*take)(type);
    }

    // -- objects --------------------------------------------------------------------------------

    void TakeType(OviType* type) {
        Line("type " + KeyOf(type) + Declared(type));
        TakeTexts(type);
    }

    void TakeEnumeration(OviEnumeration* enumeration) {
        Line("enumeration " + KeyOf(enumeration) + Declared(enumeration));
        TakeTexts(enumeration);
        for (int i = 0; i < OviEnumeration_GetItemCount(enumeration); ++i) {
            OviEnumerationItem* item = OviEnumeration_GetItemAt(enumeration, i);
            Line(" item " + KeyOf(item) + " " + XMLOf(item));
            TakeTexts(item);
        }
    }

    void TakeTemplate(OviTemplate* type) {
        Line("template " + KeyOf(type) + Declared(type) + " latest " +
             std::to_string(OviTemplate_GetLatestVersion(type)));
        TakeTexts(type);
        for (int i = 0; i < OviTemplate_GetParentCount(type); ++i)
            Line(" parent " + KeyOf(OviTemplate_GetParentAt(type, i)));
        for (int i = 0; i < OviTemplate_GetChildCount(type); ++i)
            Line(" child " + KeyOf(OviTemplate_GetChildAt(type, i)));
        Line(" properties by name: " + std::to_string(OviTemplate_GetPropertyCount(type)));
        for (int i = 0; i < OviTemplate_GetPropertyCount(type); ++i)
            Line(" named " + NumberOf(OviTemplate_GetPropertyAt(type, i, true)));
        // Beyond the count: older definitions, which stay in the declaration order.
        for (int i = 0; OviProperty* property = OviTemplate_GetPropertyAt(type, i, false); ++i)
            TakeProperty(property);
        for (int i = 0; i < OviTemplate_GetViewCount(type); ++i)
            TakeView(OviTemplate_GetViewAt(type, i));
    }

    void TakeLOD(OviLOD* lod) {
        Line("level of detail " + std::string(OviNamedObject_GetName(lod)) + " " +
             OviLOD_GetTypeName(lod) + " threshold " + std::to_string(OviLOD_GetThreshold(lod)) +
             " shapes " + std::to_string(OviLOD_GetMaxShapes(lod)) + " of " +
             OviLOD_GetAllowedShapeNames(lod));
        TakeTexts(lod);
    }

    void TakeProperty(OviProperty* property) {
        OviTemplate* owner = OviProperty_GetTemplate(property);
        Line(" declared " + NumberOf(property) + " " + OviProperty_GetFullName(property) + " of " +
             KeyOf(owner));
        TakeTexts(property);
        TakeKind(property);
        for (int i = 0; i < OviProperty_GetCommandCount(property); ++i) {
            OviCommand* command = OviProperty_GetCommandAt(property, i);
            Line("  command " + std::string(OviNamedObject_GetName(command)));
            TakeTexts(command);
        }
    }

    void TakeKind(OviProperty* property) {
        if (OviObject_ImplementsClass(property, OVI_CLASS_NODE_PROPERTY))
            TakeNode(static_cast<OviNodeProperty*>(property));
        else if (OviObject_ImplementsClass(property, OVI_CLASS_ATTRIBUTE_PROPERTY))
            TakeAttribute(static_cast<OviAttributeProperty*>(property));
        if (OviObject_ImplementsClass(property, OVI_CLASS_ANCHOR_PROPERTY))
            TakeAnchor(static_cast<OviAnchorProperty*>(property));
        if (OviObject_ImplementsClass(property, OVI_CLASS_GEOMETRY_PROPERTY))
            TakeGeometry(static_cast<OviGeometryProperty*>(property));
    }

    void TakeNode(OviNodeProperty* node) {
        Line("  node below '" + std::string(OviNodeProperty_GetAncestor(node)) + "' at distance " +
             std::to_string(OviNodeProperty_GetAncestorDistance(node)));
        TakeAttribute(node);
    }

    void TakeAnchor(OviAnchorProperty* anchor) {
        Line(OviAnchorProperty_IsChild(anchor) ? "  child anchor" : "  parent anchor");
        for (int i = 0; i < OviAnchorProperty_GetAnchorTypeCount(anchor); ++i)
            Line("  anchor type " +
                 std::string(OviNamedObject_GetName(OviAnchorProperty_GetAnchorTypeAt(anchor, i))));
    }

    void TakeGeometry(OviGeometryProperty* geometry) {
        Line("  geometry");
        for (int i = 0; i < OviGeometryProperty_GetAlternateCount(geometry); ++i) {
            OviGeometryAlternate* alternate = OviGeometryProperty_GetAlternateAt(geometry, i);
            Line("  alternate " + std::string(OviProperty_GetFullName(alternate)) + " for level " +
                 OviNamedObject_GetName(OviGeometryAlternate_GetLOD(alternate)));
            TakeTexts(alternate);
            TakeNode(alternate);
        }
    }

    /// A view with all its groups, however deep a file nests them.
    void TakeView(OviView* view) {
        std::vector<std::pair<OviViewItem*, size_t>> open{{view, 1}};
        while (!open.empty()) {
            const auto [item, depth] = open.back();
            open.pop_back();
            TakeViewItem(item, depth);
            if (!OviObject_ImplementsClass(item, OVI_CLASS_GROUP))
                continue;
            auto* group = static_cast<OviGroup*>(item);
            for (int i = OviGroup_GetViewItemCount(group); i-- > 0;)
                open.emplace_back(OviGroup_GetViewItemAt(group, i), depth + 1);
        }
    }

    /// A view, a group or a view property.
    void TakeViewItem(OviViewItem* item, size_t depth) {
        std::string line = std::string(depth, ' ') + "item of class " +
                           std::to_string(OviObject_GetClass(item)) + " " +
                           OviNamedObject_GetName(item);
        if (OviObject_ImplementsClass(item, OVI_CLASS_VIEW_PROPERTY))
            line += " for " +
                    NumberOf(OviViewProperty_GetProperty(static_cast<OviViewProperty*>(item)));
        Line(line);
        TakeTexts(item);
    }

    void TakeAttribute(OviAttributeProperty* attribute) {
        OviType* type = OviAttributeProperty_GetType(attribute);
        Line("  type " + KeyOf(type) +
             (OviAttributeProperty_IsReference(attribute) ? " by reference" : "") + " bind '" +
             OviAttributeProperty_GetAutoBind(attribute) + "'");
        TakeValue("default", type, OviAttributeProperty_GetDefaultValue(attribute));
        TakeValue("minimum", type, OviAttributeProperty_GetMinValue(attribute));
        TakeValue("maximum", type, OviAttributeProperty_GetMaxValue(attribute));
    }

    void TakeValue(const char* which, OviType* type, const void* value) {
        if (!value)
            return;
        std::string line = std::string("  ") + which;
        for (int i = 0; i < DimensionOf(type); ++i)
            line += " [" + ElementOf(type, value, i) + "]";
        Line(line);
    }

    // -- texts of parts -------------------------------------------------------------------------

    void TakeTexts(OviNamedObject* object) {
        if (*OviNamedObject_GetComment(object))
            Line("  comment [" + std::string(OviNamedObject_GetComment(object)) + "]");
        for (int i = 0; i < OviNamedObject_GetLabelCount(object); ++i)
            Line("  label " + Language(OviNamedObject_GetLabelLanguageAt(object, i)) + " [" +
                 OviNamedObject_GetLabelTextAt(object, i) + "]");
        for (int i = 0; i < OviNamedObject_GetDescriptionCount(object); ++i)
            Line("  description " + Language(OviNamedObject_GetDescriptionLanguageAt(object, i)) +
                 " [" + OviNamedObject_GetDescriptionTextAt(object, i) + "]");
    }

    static std::string Language(const char* language) { return language ? language : "default"; }

    std::string Declared(OviType* type) const {
        std::string line = " class " + std::to_string(OviObject_GetClass(type)) + " package '" +
                           OviType_GetPackageName(type) + "' file '" + FileOf(type) + "' base " +
                           KeyOf(OviType_GetBaseType(type)) + " alignment " +
                           std::to_string(OviType_GetAlignment(type)) + " dimension " +
                           std::to_string(DimensionOf(type));
        return line + (OviType_IsRecycled(type) ? " recycled" : "");
    }

    std::string FileOf(OviType* type) const {
        std::string file = OviType_GetFileName(type);
        std::replace(file.begin(), file.end(), '\\', '/');
        const size_t found = root_.empty() ? std::string::npos : file.find(root_);
        return found == std::string::npos ? file : file.substr(found + root_.size());
    }

    static std::string KeyOf(OviType* type) {
        if (!type)
            return "none";
        std::string key = OviType_GetFullName(type);
        if (OviObject_ImplementsClass(type, OVI_CLASS_TEMPLATE))
            key += "#" + std::to_string(OviTemplate_GetVersion(static_cast<OviTemplate*>(type)));
        return key;
    }

    static std::string XMLOf(OviType* type) {
        int size = 0;
        OviType_WriteToXML(type, 0, &size, nullptr);
        std::string text(static_cast<size_t>(size), '\0');
        OviType_WriteToXML(type, 0, &size, text.data());
        return text.substr(0, text.find('\0'));
    }

    /// No exported function tells the dimension; the declaration does.
    static int DimensionOf(OviType* type) {
        const std::string declaration = XMLOf(type);
        const size_t tagEnd = declaration.find('>', declaration.find(" name='"));
        const size_t found = declaration.find(" dim='");
        return found == std::string::npos || found > tagEnd
                   ? 1
                   : std::atoi(declaration.c_str() + found + 6);
    }

    static std::string ElementOf(OviType* type, const void* value, int index) {
        if (OviObject_ImplementsClass(type, OVI_CLASS_TEMPLATE))
            return InstanceText(static_cast<OviInstance* const*>(value)[index]);
        const int length = OviType_GetValueAsString(type, value, index, nullptr);
        std::string text(static_cast<size_t>(length), '\0');
        OviType_GetValueAsString(type, value, index, text.data());
        return text;
    }

    static std::string InstanceText(OviInstance* instance) {
        if (!instance)
            return "null";
        std::string text = OviNamedObject_GetName(instance);
        if (OviObject_ImplementsClass(instance, OVI_CLASS_ASSET))
            text += std::string(" asset of '") +
                    OviAsset_GetReference(static_cast<OviAsset*>(instance)) + "' comment '" +
                    OviNamedObject_GetComment(instance) + "'";
        for (int i = 0; i < OviInstance_GetTemplateCount(instance); ++i)
            text += " " + KeyOf(OviInstance_GetTemplateAt(instance, i));
        return text;
    }

    std::string NumberOf(OviProperty* property) {
        const auto number = numbers_.emplace(property, numbers_.size() + 1).first->second;
        return "p" + std::to_string(number) + " " + OviNamedObject_GetName(property);
    }

    void Line(const std::string& line) { text_ += line + "\n"; }

    std::string root_;
    std::string onlyFile_;
    std::string text_;
    std::map<OviProperty*, size_t> numbers_;
};
