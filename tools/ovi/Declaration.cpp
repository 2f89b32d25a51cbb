#include "Declaration.h"

#include "XmlText.h"

#include <cstdlib>
#include <cstring>

namespace OviTool {

namespace {

std::string WriteXml(OviType* type) {
    int size = 0;
    OviType_WriteToXML(type, 0, &size, nullptr);
    std::string xml(static_cast<std::size_t>(size), '\0');
    OviType_WriteToXML(type, 0, &size, xml.data());
    xml.resize(std::strlen(xml.c_str()));
    return xml;
}

} // namespace

Declaration::Declaration(OviType* type) {
    Read(WriteXml(type));
}

std::string Declaration::Get(const std::string& name, const std::string& fallback) const {
    const auto found = attributes_.find(name);
    return found != attributes_.end() ? found->second : fallback;
}

/// Reads the first start tag, which comments may precede. The library writes attributes as
/// name='value' and escapes "<", ">" and quotes everywhere else.
void Declaration::Read(const std::string& xml) {
    std::size_t at = xml.find('<');
    while (at != std::string::npos && xml.compare(at, 4, "<!--") == 0)
        at = xml.find('<', at + 1);
    const std::size_t end = xml.find('>', at);
    for (;;) {
        const std::size_t blank = xml.find(' ', at);
        const std::size_t open = xml.find("='", blank);
        const std::size_t close = open == std::string::npos ? open : xml.find('\'', open + 2);
        if (blank >= end || close >= end)
            return;
        attributes_[xml.substr(blank + 1, open - blank - 1)] =
            Unescaped(xml.substr(open + 2, close - open - 2));
        at = close + 1;
    }
}

int GetDimension(OviType* type) {
    // A template is declared with all it contains, and without a dimension, unless it is made from
    // another one.
    if (OviObject_ImplementsClass(type, OVI_CLASS_TEMPLATE) && !OviType_GetBaseType(type))
        return 1;
    return std::atoi(Declaration(type).Get("dim", "1").c_str());
}

} // namespace OviTool
