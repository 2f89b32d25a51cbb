#include "FormatRules.h"

#include "XmlScanner.h"

#include <algorithm>
#include <cstdlib>
#include <map>
#include <set>
#include <vector>

namespace OviTool {

namespace {

using Names = std::set<std::string>;

/// By element, the attributes that tell it from others beside it.
using Identities = std::map<std::string, std::vector<std::string>>;

const Identities kSceneElements = {{"assets", {}},
                                   {"asset", {"name"}},
                                   {"assetref", {"name"}},
                                   {"implements", {"template"}},
                                   {"attribute", {"property"}},
                                   {"node", {"property"}},
                                   {"anchor", {"property"}},
                                   {"geometry", {"property"}},
                                   {"alternate", {"lod"}},
                                   {"value", {}}};

const Identities kTemplateElements = {{"templates", {}},
                                      {"using", {"package"}},
                                      {"template", {"name"}},
                                      {"extends", {"template", "version"}},
                                      {"attribute", {"name", "version"}},
                                      {"node", {"name", "version"}},
                                      {"anchor", {"name", "version"}},
                                      {"geometry", {"name", "version"}},
                                      {"alternate", {"lod"}},
                                      {"asset", {"name"}},
                                      {"command", {"execute"}},
                                      {"type", {"name"}},
                                      {"enum", {"name"}},
                                      {"item", {"name"}},
                                      {"lod", {"name"}},
                                      {"shape", {"type"}},
                                      {"view", {"name"}},
                                      {"group", {"name"}},
                                      {"property", {"name"}},
                                      {"label", {"language"}},
                                      {"description", {"language"}}};

std::string Lowered(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(), [](char c) {
        return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    });
    return text;
}

std::string WithoutPackage(const std::string& name) {
    return name.substr(name.rfind('.') + 1);
}

/// As the library reads flags.
bool IsFalse(const std::string& text) {
    return text.empty() || text[0] == '0' || text[0] == 'f';
}

bool IsNumber(const std::string& text, double& number) {
    char* end = nullptr;
    number = std::strtod(text.c_str(), &end);
    return !text.empty() && *end == '\0' && text.find_first_of(" \t\n") == std::string::npos;
}

} // namespace

bool FormatRules::IsKnown(const std::string& element) const {
    return (isScene_ ? kSceneElements : kTemplateElements).count(element) > 0;
}

bool FormatRules::IsReportedByLibrary(const std::string& unknown) const {
    return !isScene_ && unknown != "lods" && unknown != "action";
}

bool FormatRules::IsLeftToLibrary(const std::string& element) const {
    return !isScene_ && element == "using";
}

bool FormatRules::StandsAnywhere(const std::string& element) const {
    static const Names kAnywhere = {"templates", "template", "type", "enum", "lod", "view"};
    return !isScene_ && kAnywhere.count(element) > 0;
}

bool FormatRules::HasText(const std::string& element) const {
    return isScene_ ? element == "value" : element == "label" || element == "description";
}

std::string FormatRules::GetIdentity(const XmlItem& item) const {
    std::string identity = item.name == "assetref" ? "asset" : item.name;
    const Identities& elements = isScene_ ? kSceneElements : kTemplateElements;
    for (const std::string& attribute : elements.at(item.name)) {
        const std::string* const found = item.Find(attribute);
        std::string value = found ? *found : "";
        if (IsDefault(item.name, attribute, value))
            value.clear();
        if (!isScene_ && (attribute == "template" || item.name == "template"))
            value = WithoutPackage(value);
        if (item.name == "shape" || item.name == "alternate")
            value = Lowered(value);
        identity += ":" + value;
    }
    return identity;
}

bool FormatRules::IsDefault(const std::string& element, const std::string& attribute,
                            const std::string& value) const {
    static const std::map<std::string, std::string> kDefaults = {
        {"version", "1"},   {"templateVersion", "1"}, {"dim", "1"},
        {"threshold", "0"}, {"maxShapes", "0"},       {"distance", "-1"}};
    static const Names kFlags = {"lockBinding", "lockValue", "child"};
    static const Names kTexts = {"binding", "attachedAnchor", "ancestor", "autoBind"};
    if (element == "templates" && attribute == "version")
        return true; // never read
    if (attribute == "reference")
        return element == "asset" ? value.empty() : IsFalse(value);
    if (attribute == "language")
        return value.empty() || value[0] == '-';
    if (kFlags.count(attribute) > 0)
        return IsFalse(value);
    const auto fallback = kDefaults.find(attribute);
    const bool isImplemented = isScene_ && attribute == "version"; // which is always written
    return (kTexts.count(attribute) > 0 && value.empty()) ||
           (!isImplemented && fallback != kDefaults.end() && fallback->second == value);
}

bool FormatRules::SayTheSame(const std::string& attribute, const std::string& a,
                             const std::string& b) {
    if (a == b)
        return true;
    if (attribute == "type" || attribute == "template")
        return Lowered(WithoutPackage(a)) == Lowered(WithoutPackage(b));
    if (attribute == "name")
        return WithoutPackage(a) == WithoutPackage(b);
    static const Names kTrue = {"true", "1"};
    static const Names kFalse = {"false", "0", ""};
    for (const Names* truth : {&kTrue, &kFalse}) {
        if (truth->count(a) > 0 && truth->count(b) > 0)
            return true;
    }
    double x = 0;
    double y = 0;
    return IsNumber(a, x) && IsNumber(b, y) && !(x < y) && !(y < x);
}

} // namespace OviTool
