#include "SchemaPrinter.h"

#include "Declaration.h"

#include <algorithm>
#include <utility>

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

std::string Counted(std::size_t count, const char* noun) {
    return std::to_string(count) + " " + noun + (count == 1 ? "" : "s");
}

/// "FLOAT", "FLOAT, 3 elements" or "FLOAT, any number of elements".
std::string WithDimension(const std::string& name, int dimension) {
    if (dimension == 1)
        return name;
    return dimension == 0 ? name + ", any number of elements"
                          : name + ", " + std::to_string(dimension) + " elements";
}

std::string InLanguage(const char* what, const char* language) {
    return language ? std::string(what) + " (" + language + "): " : std::string(what) + ": ";
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
    tree_.Line(0, title + ": " + Counted(types.size(), "type") + ", " +
                      Counted(enumerations.size(), "enumeration") + ", " +
                      Counted(templates.size(), "template"));
    for (OviType* type : types)
        PrintType(type);
    for (OviEnumeration* enumeration : enumerations)
        PrintEnumeration(enumeration);
    for (OviTemplate* definition : templates)
        PrintTemplate(definition);
}

void SchemaPrinter::PrintType(OviType* type) {
    const std::string base = ValueText::DescribeType(OviType_GetBaseType(type));
    tree_.Line(1, std::string("type ") + OviType_GetFullName(type) + ": " +
                      WithDimension(base, GetDimension(type)));
    PrintTexts(2, type);
}

void SchemaPrinter::PrintEnumeration(OviEnumeration* enumeration) {
    OviType* const base = OviType_GetBaseType(enumeration);
    tree_.Line(1, std::string("enumeration ") + OviType_GetFullName(enumeration) + ": " +
                      WithDimension(ValueText::DescribeType(base), GetDimension(enumeration)));
    PrintTexts(2, enumeration);
    for (int i = 0; i < OviEnumeration_GetItemCount(enumeration); ++i) {
        OviEnumerationItem* const item = OviEnumeration_GetItemAt(enumeration, i);
        const std::string value = Declaration(item).Get("value", "");
        const bool isText = base && values_.HoldsTexts(base);
        tree_.Line(2, std::string(OviNamedObject_GetName(item)) + " = " +
                          (isText ? Quoted(value) : value));
        PrintTexts(3, item);
    }
}

void SchemaPrinter::PrintTemplate(OviTemplate* definition) {
    const int version = OviTemplate_GetVersion(definition);
    const int latest = OviTemplate_GetLatestVersion(definition);
    tree_.Line(1, std::string("template ") + OviType_GetFullName(definition) + ", version " +
                      std::to_string(version) +
                      (latest == version ? "" : " (the latest is " + std::to_string(latest) + ")"));
    PrintTexts(2, definition);
    if (OviType* const base = OviType_GetBaseType(definition))
        tree_.Line(2, "made from " +
                          WithDimension(OviType_GetFullName(base), GetDimension(definition)));
    for (int i = 0; i < OviTemplate_GetParentCount(definition); ++i) {
        OviTemplate* const parent = OviTemplate_GetParentAt(definition, i);
        tree_.Line(2, std::string("extends ") + OviType_GetFullName(parent) + ", version " +
                          std::to_string(OviTemplate_GetVersion(parent)));
    }
    PrintProperties(definition);
    for (int i = 0; i < OviTemplate_GetViewCount(definition); ++i)
        tree_.Line(2, std::string("view ") +
                          OviNamedObject_GetName(OviTemplate_GetViewAt(definition, i)));
}

/// In the order of declaration, without the older definitions that stay in that list.
void SchemaPrinter::PrintProperties(OviTemplate* definition) {
    for (int i = 0; OviProperty* property = OviTemplate_GetPropertyAt(definition, i, false); ++i) {
        if (OviTemplate_GetProperty(definition, OviNamedObject_GetName(property)) == property)
            PrintProperty(property);
    }
}

void SchemaPrinter::PrintProperty(OviProperty* property) {
    std::string line = std::string("property ") + OviNamedObject_GetName(property);
    OviAttributeProperty* attribute = nullptr;
    if (OviObject_ImplementsClass(property, OVI_CLASS_ATTRIBUTE_PROPERTY)) {
        attribute = static_cast<OviAttributeProperty*>(property);
        line += OviAttributeProperty_IsReference(attribute) ? ": reference to " : ": ";
        line += ValueText::DescribeType(OviAttributeProperty_GetType(attribute));
    }
    if (OviTemplate* const introducedBy = OviProperty_GetTemplate(property)) {
        if (OviTemplate_GetVersion(introducedBy) > 1)
            line += ", of version " + std::to_string(OviTemplate_GetVersion(introducedBy));
    }
    tree_.Line(2, line);
    PrintTexts(3, property);
    if (attribute)
        PrintAttribute(attribute);
    for (int i = 0; i < OviProperty_GetCommandCount(property); ++i)
        tree_.Line(3, std::string("command ") +
                          OviNamedObject_GetName(OviProperty_GetCommandAt(property, i)));
}

void SchemaPrinter::PrintAttribute(OviAttributeProperty* attribute) {
    const std::string values = DescribeValues(attribute);
    if (!values.empty())
        tree_.Line(3, values);
    const std::string autoBind = OviAttributeProperty_GetAutoBind(attribute);
    if (!autoBind.empty())
        tree_.Line(3, "binds automatically to " + Quoted(autoBind));
}

std::string SchemaPrinter::DescribeValues(OviAttributeProperty* attribute) {
    OviType* const type = OviAttributeProperty_GetType(attribute);
    const void* const block = OviAttributeProperty_GetDefaultValue(attribute);
    if (values_.HoldsInstances(type)) { // bounds mean nothing then
        OviInstance* const first = block ? *static_cast<OviInstance* const*>(block) : nullptr;
        const std::string name = OviNamedObject_GetName(first);
        return !first         ? ""
               : name.empty() ? "default instance without a name"
                              : "default instance " + name;
    }
    const std::pair<const char*, const void*> values[] = {
        {"default ", block},
        {"minimum ", OviAttributeProperty_GetMinValue(attribute)},
        {"maximum ", OviAttributeProperty_GetMaxValue(attribute)}};
    std::string result;
    for (const auto& [label, value] : values) {
        if (type && value)
            result += (result.empty() ? "" : "; ") +
                      (label + values_.Describe(type, value, GetDimension(type)));
    }
    return result;
}

void SchemaPrinter::PrintTexts(int depth, OviNamedObject* object) {
    tree_.Comment(depth, OviNamedObject_GetComment(object));
    for (int i = 0; i < OviNamedObject_GetLabelCount(object); ++i)
        tree_.Line(depth, InLanguage("label", OviNamedObject_GetLabelLanguageAt(object, i)) +
                              Quoted(OviNamedObject_GetLabelTextAt(object, i)));
    for (int i = 0; i < OviNamedObject_GetDescriptionCount(object); ++i)
        tree_.Line(depth,
                   InLanguage("description", OviNamedObject_GetDescriptionLanguageAt(object, i)) +
                       Quoted(OviNamedObject_GetDescriptionTextAt(object, i)));
}

} // namespace OviTool
