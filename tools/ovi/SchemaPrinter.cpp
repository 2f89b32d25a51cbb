#include "SchemaPrinter.h"

#include "Declaration.h"
#include "Findings.h"
#include "NamedObjectTexts.h"
#include "ViewPrinter.h"
#include "XmlScanner.h"

#include <algorithm>
#include <set>
#include <vector>

namespace OviTool {

namespace {

template <class Handle> std::vector<Handle*> Select(const std::vector<OviType*>& types, int id) {
    std::vector<Handle*> selected;
    for (OviType* type : types) {
        if (OviObject_ImplementsClass(type, id))
            selected.push_back(static_cast<Handle*>(type));
    }
    return selected;
}

std::vector<OviType*> FindTypesOfFile(const std::string& path) {
    const int count = OviTemplateManager_GetTypesByFileName(path.c_str(), nullptr, 0);
    std::vector<OviType*> types(static_cast<std::size_t>(count));
    OviTemplateManager_GetTypesByFileName(path.c_str(), types.data(), count);
    return types;
}

/// Numbers of versions in their order as numbers, unlike in the library's keys.
bool ComesBefore(OviTemplate* a, OviTemplate* b) {
    const std::string x = OviType_GetFullName(a);
    const std::string y = OviType_GetFullName(b);
    return x != y ? x < y : OviTemplate_GetVersion(a) < OviTemplate_GetVersion(b);
}

/// "FLOAT", "FLOAT, 3 elements" or "FLOAT, any number of elements".
std::string WithDimension(const std::string& name, int dimension) {
    if (dimension == 1)
        return name;
    return dimension == 0 ? name + ", any number of elements"
                          : name + ", " + std::to_string(dimension) + " elements";
}

/// The library does not hand out which file defined a level of detail, so the file is asked.
std::vector<OviLOD*> FindLevelsOfFile(const std::string& file) {
    std::string content;
    ReadFile(file, content);
    XmlScanner scanner(content);
    std::set<std::string> names;
    for (XmlItem item = scanner.Next(); item.kind != XmlItem::Kind::kNothing;
         item = scanner.Next()) {
        const std::string* const name = item.Find("name");
        if (item.kind == XmlItem::Kind::kStart && item.name == "lod" && name)
            names.insert(*name);
    }
    std::vector<OviLOD*> levels;
    for (const std::string& name : names) {
        if (OviLOD* const level = OviTemplateManager_GetLOD(name.c_str()))
            levels.push_back(level);
    }
    return levels;
}

} // namespace

void SchemaPrinter::Print(const std::string& title, const std::string& path) {
    std::vector<OviType*> types = FindTypesOfFile(path);
    auto templates = Select<OviTemplate>(types, OVI_CLASS_TEMPLATE);
    const auto enumerations = Select<OviEnumeration>(types, OVI_CLASS_ENUMERATION);
    types.erase(std::remove_if(types.begin(), types.end(),
                               [](OviType* type) {
                                   return OviObject_ImplementsClass(type, OVI_CLASS_TEMPLATE) ||
                                          OviObject_ImplementsClass(type, OVI_CLASS_ENUMERATION);
                               }),
                types.end());
    std::stable_sort(templates.begin(), templates.end(), ComesBefore);
    const std::vector<OviLOD*> levels = FindLevelsOfFile(title);
    tree_.Line(0, title + ": " + Counted(types.size(), "type") + ", " +
                      Counted(enumerations.size(), "enumeration") + ", " +
                      (levels.empty() ? "" : Counted(levels.size(), "level") + " of detail, ") +
                      Counted(templates.size(), "template"));
    for (OviType* type : types)
        PrintType(type);
    for (OviEnumeration* enumeration : enumerations)
        PrintEnumeration(enumeration);
    for (OviLOD* level : levels)
        PrintLevel(level);
    for (OviTemplate* definition : templates)
        PrintTemplate(definition);
}

void SchemaPrinter::PrintType(OviType* type) {
    const std::string base = ValueText::DescribeType(OviType_GetBaseType(type));
    tree_.Line(1, std::string("type ") + OviType_GetFullName(type) + ": " +
                      WithDimension(base, GetDimension(type)));
    PrintTexts(tree_, 2, type);
}

void SchemaPrinter::PrintEnumeration(OviEnumeration* enumeration) {
    OviType* const base = OviType_GetBaseType(enumeration);
    tree_.Line(1, std::string("enumeration ") + OviType_GetFullName(enumeration) + ": " +
                      WithDimension(ValueText::DescribeType(base), GetDimension(enumeration)));
    PrintTexts(tree_, 2, enumeration);
    for (int i = 0; i < OviEnumeration_GetItemCount(enumeration); ++i) {
        OviEnumerationItem* const item = OviEnumeration_GetItemAt(enumeration, i);
        const std::string value = Declaration(item).Get("value", "");
        const bool isText = base && values_.HoldsTexts(base);
        tree_.Line(2, std::string(OviNamedObject_GetName(item)) + " = " +
                          (isText ? Quoted(value) : value));
        PrintTexts(tree_, 3, item);
    }
}

void SchemaPrinter::PrintLevel(OviLOD* level) {
    tree_.Line(1, std::string("level of detail ") + OviNamedObject_GetName(level) + ": " +
                      DescribeLevel(level));
    PrintTexts(tree_, 2, level);
}

void SchemaPrinter::PrintTemplate(OviTemplate* definition) {
    const int version = OviTemplate_GetVersion(definition);
    const int latest = OviTemplate_GetLatestVersion(definition);
    tree_.Line(1, std::string("template ") + OviType_GetFullName(definition) + ", version " +
                      std::to_string(version) +
                      (latest == version ? "" : " (the latest is " + std::to_string(latest) + ")"));
    PrintTexts(tree_, 2, definition);
    if (OviType* const base = OviType_GetBaseType(definition))
        tree_.Line(2, "made from " +
                          WithDimension(OviType_GetFullName(base), GetDimension(definition)));
    for (int i = 0; i < OviTemplate_GetParentCount(definition); ++i) {
        OviTemplate* const parent = OviTemplate_GetParentAt(definition, i);
        tree_.Line(2, std::string("extends ") + OviType_GetFullName(parent) + ", version " +
                          std::to_string(OviTemplate_GetVersion(parent)));
    }
    for (OviProperty* property : GetOwnProperties(definition))
        properties_.Print(2, property);
    for (int i = 0; i < OviTemplate_GetViewCount(definition); ++i)
        PrintView(tree_, 2, OviTemplate_GetViewAt(definition, i));
}

} // namespace OviTool
