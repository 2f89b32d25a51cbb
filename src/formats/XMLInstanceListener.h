#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "formats/AlternatesByLevel.h"
#include "instances/OpenInstances.h"
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
    struct OpenElement {
        const Element* element;
        bool refused;
        bool skipsAssets;
    };
    static constexpr size_t kElementCount = 9;
    static const Element* GetElements();
    static size_t IndexOf(const Element& element);
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

    /// What the start of an element says when it is refused: its end then closes nothing, and the
    /// assets in an attribute are skipped.
    bool Ignore() {
        refused_ = true;
        return true;
    }

    bool IsForNobody() const;

    // -- parts of them --------------------------------------------------------------------------
    Asset* FindOrMakeAsset(const char* name);
    void StartNested(const char* name);
    bool SkipsAssets() const;
    PropertyInstance* OpenPropertyInstance() const;
    AttributeInstance* OpenAttribute() const;
    Template* FindTemplate(const char* name, const char* version);
    PropertyInstance* FindPropertyInstance(const char* element, const XMLAttributes& attributes);
    PropertyInstance* OpenProperty(const char* element, const XMLAttributes& attributes);
    bool IsPropertyOpen() const;
    void Open(const Element& element);
    void Close(const Element& element);
    void CloseInnermost();
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
    std::vector<OpenElement> elements_; // those of the table, the innermost last
    size_t openCounts_[kElementCount] = {};
    size_t skippingCount_ = 0; // of those that skip the assets in them
    bool refused_ = false;     // what the element at hand is
    bool skipsAssets_ = false; // and what it does
    int ignoredDepth_ = 0;     // elements inside and with an ignored asset
    bool valueOpen_ = false;
    size_t valueCount_ = 0;
    std::vector<std::string> values_; // kept to be used again; the first valueCount_ are those met
    std::vector<const char*> valueTexts_;
};

} // namespace Kor
