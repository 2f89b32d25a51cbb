#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "instances/OpenInstances.h"
#include "xml/AlternatesByLevel.h"
#include "xml/IXMLListener.h"

namespace Kor {

class AssetManager;
class Asset;
class AttributeInstance;
class PropertyInstance;
class Template;
class TemplateManager;
class XMLParser;

/// Turns the elements of a scene file into assets, templates and values.
class XMLInstanceListener : public IXMLListener {
public:
    /// Takes source name, line and error listener from the parser.
    explicit XMLInstanceListener(XMLParser& parser);

    bool StartElement(std::string_view name, const XMLAttributes& attributes) override;
    bool EndElement(std::string_view name) override;
    bool Comment(std::string_view) override { return true; }
    bool Characters(std::string_view text) override;

private:
    using Handler = bool (XMLInstanceListener::*)(const XMLAttributes&);
    struct Element {
        std::string_view name;
        Handler start;
        void (XMLInstanceListener::*end)();
    };
    static const Element* FindElement(std::string_view name);

    // -- elements; false ends the reading -------------------------------------------------------
    bool StartAsset(const XMLAttributes& attributes);
    bool StartAssetRef(const XMLAttributes& attributes);
    bool StartImplements(const XMLAttributes& attributes);
    bool StartAttribute(const XMLAttributes& attributes);
    bool StartNode(const XMLAttributes& attributes);
    bool StartAnchor(const XMLAttributes& attributes);
    bool StartGeometry(const XMLAttributes& attributes);
    bool StartAlternate(const XMLAttributes& attributes);
    bool StartValue(const XMLAttributes& attributes);
    void EndAsset();
    void EndProperty();
    void EndValue();
    void EndNothing() {}

    // -- parts of them --------------------------------------------------------------------------
    Asset* FindOrMakeAsset(const char* name);
    void StartNested(const char* name);
    bool SkipsAssets() const;
    PropertyInstance* OpenPropertyInstance() const;
    AttributeInstance* OpenAttribute() const;
    Template* FindTemplate(const char* name, const char* version);
    PropertyInstance* FindPropertyInstance(const char* element, const XMLAttributes& attributes);
    PropertyInstance* OpenProperty(const char* element, const XMLAttributes& attributes);
    void SkipAttribute();
    void SetBindingAndLocks(const XMLAttributes& attributes);
    void StoreValues();

    void Error(const std::string& message);
    void ReportInvalidName(const char* name);

    /// Reports a structural error; false, ending the reading, when nobody listens.
    bool Refuse(const std::string& message);

    XMLParser& parser_;
    AssetManager& assets_;
    TemplateManager& templates_;
    OpenInstances open_; // host callbacks may delete any of it whenever something is set
    AlternatesByLevel alternates_;
    int ignoredDepth_ = 0; // elements inside and with an ignored asset
    bool valueOpen_ = false;
    size_t valueCount_ = 0;
    std::vector<std::string> values_; // kept to be used again; the first valueCount_ are those met
    std::vector<const char*> valueTexts_;
};

} // namespace Kor
