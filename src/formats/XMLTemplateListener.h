#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "manager/UsingList.h"
#include "schema/View.h"
#include "xml/IXMLListener.h"

namespace Kor {

class AttributeProperty;
class Enumeration;
class Group;
class LOD;
class NamedObject;
class NodeProperty;
class Property;
class Template;
class TemplateManager;
class Type;
class ViewItem;
class XMLParser;

/// Turns the elements of a template file into schema objects. No fault stops the reading: a faulty
/// element is reported and ignored, its children are still read.
class XMLTemplateListener : public IXMLListener {
public:
    /// Takes source name, line and error listener from the parser.
    explicit XMLTemplateListener(XMLParser& parser);

    /// Reports the elements that are still open.
    ~XMLTemplateListener() override;

    bool StartElement(std::string_view name, const XMLAttributes& attributes) override;
    bool EndElement(std::string_view name) override;
    bool Comment(std::string_view text) override;
    bool Characters(std::string_view text) override;

    /// The package that a `using` element asks for while the parser is paused.
    const std::string& GetWantedPackage() const { return wantedPackage_; }

    /// Says whether the wanted package could be loaded.
    void AnswerWantedPackage(bool loaded);

private:
    using Handler = void (XMLTemplateListener::*)(const XMLAttributes&);
    struct Element {
        const char* name;
        Handler handler;
        void (XMLTemplateListener::*end)(); // null: nothing else happens at the end
        bool keepsComment;                  // for what follows the end of the element
    };
    static const Element* FindElement(std::string_view name);

    // -- elements -------------------------------------------------------------------------------
    void StartTemplates(const XMLAttributes& attributes);
    void StartUsing(const XMLAttributes& attributes);
    void StartTemplate(const XMLAttributes& attributes);
    void StartExtends(const XMLAttributes& attributes);
    void StartAttribute(const XMLAttributes& attributes);
    void StartAsset(const XMLAttributes& attributes);
    void StartNode(const XMLAttributes& attributes);
    void StartAnchor(const XMLAttributes& attributes);
    void StartGeometry(const XMLAttributes& attributes);
    void StartAlternate(const XMLAttributes& attributes);
    void StartCommand(const XMLAttributes& attributes);
    void StartEnum(const XMLAttributes& attributes);
    void StartItem(const XMLAttributes& attributes);
    void StartType(const XMLAttributes& attributes);
    void StartLOD(const XMLAttributes& attributes);
    void StartShape(const XMLAttributes& attributes);
    void StartView(const XMLAttributes& attributes);
    void StartGroup(const XMLAttributes& attributes);
    void StartViewProperty(const XMLAttributes& attributes);
    void StartText(const char* element, const XMLAttributes& attributes);
    void StartLabel(const XMLAttributes& attributes) { StartText("label", attributes); }
    void StartDescription(const XMLAttributes& attributes) { StartText("description", attributes); }
    void Ignore(const XMLAttributes&) {}
    void EndMember() { member_ = nullptr; }
    void EndEnum() { enumeration_ = nullptr; }
    void EndLabel() { StoreText(true); }
    void EndDescription() { StoreText(false); }

    // -- parts of them --------------------------------------------------------------------------
    bool IsInsideTemplate(const char* element);
    bool CanStartMember(const char* element, const char* nestedMessage,
                        const XMLAttributes& attributes);
    void SetAncestor(NodeProperty& node, const XMLAttributes& attributes);
    bool IsInsideView(const char* element);
    void AddView(std::unique_ptr<View> view);
    void AddViewItem(std::unique_ptr<ViewItem> item);
    void EndLOD();
    void EndGroup();
    void EndViewProperty();
    bool HasName(const char* element, const XMLAttributes& attributes);

    /// An attribute's value; without it null, and the message is reported.
    const char* Require(const XMLAttributes& attributes, const char* name, const char* message);
    void ReportInvalidName(const char* word, const char* name);
    bool HasValidName(const char* word, const char* name);
    void AddProperty(std::unique_ptr<Property> property);
    Type* FindAttributeType(const char* name, std::unique_ptr<Type>& made);
    void SetAttributeValues(AttributeProperty& attribute, const XMLAttributes& attributes);
    Template* FindTemplateVersion(std::string_view name, int version) const;
    std::string Qualify(std::string_view name) const;
    void GiveComment(NamedObject& object) const;
    void StoreText(bool isLabel);
    NamedObject* GetTextOwner() const;
    void KeepWaitingView();
    void ReportUnclosed(const char* kind, std::string_view name);

    void Error(const std::string& message);
    void Warn(const std::string& message);

    XMLParser& parser_;
    TemplateManager& manager_;
    Template* template_ = nullptr;
    Property* member_ = nullptr;
    Enumeration* enumeration_ = nullptr;
    std::unique_ptr<LOD> lod_;
    ViewItem* viewItem_ = nullptr;
    std::unordered_set<View*> views_;   // those that the file gave so far
    std::unique_ptr<View> waitingView_; // of a recycled template, until its end
    std::vector<Group*> openGroups_;    // the view at the bottom
    std::string package_;
    UsingList using_;
    std::string wantedPackage_;
    std::string comment_;
    std::string text_;
    std::optional<std::string> language_; // of the open label or description; "": the default one
    int skippedDepth_ = 0; // open templates inside and with a refused one; 0 when not skipping
    std::vector<std::unique_ptr<Property>> refused_; // properties that no template took
};

} // namespace Kor
