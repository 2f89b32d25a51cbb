// The part of the template listener that takes the events and reads templates and texts.

#include "formats/XMLTemplateListener.h"

#include "core/IErrorListener.h"
#include "core/Names.h"
#include "formats/AttributeTexts.h"
#include "formats/Quoted.h"
#include "manager/TemplateManager.h"
#include "schema/ViewItem.h"
#include "xml/XMLParser.h"

namespace Kor {

XMLTemplateListener::XMLTemplateListener(XMLParser& parser)
    : parser_(parser), manager_(*TemplateManager::Get()) {
    using_.Insert(""); // built-in types and names in full resolve in every file
}

XMLTemplateListener::~XMLTemplateListener() {
    if (template_)
        ReportUnclosed("template", template_->GetFullName());
    if (member_)
        ReportUnclosed("property", member_->GetNameView());
    if (enumeration_)
        ReportUnclosed("enumeration", enumeration_->GetNameView());
    if (lod_)
        ReportUnclosed("level of detail", lod_->GetNameView());
    if (viewItem_)
        ReportUnclosed("view item", viewItem_->GetNameView());
    KeepWaitingView();
}

/// What was read before the file's end stays, where there is memory for it.
void XMLTemplateListener::KeepWaitingView() try {
    if (waitingView_)
        AddView(std::move(waitingView_));
} catch (const std::bad_alloc&) {
    return;
}

/// Called at the listener's end, where no exception may get out: without memory nothing is said.
void XMLTemplateListener::ReportUnclosed(const char* kind, std::string_view name) try {
    Error(std::string("Missing closing element for ") + kind + ": " + Quoted(name));
} catch (const std::bad_alloc&) {
    return;
}

void XMLTemplateListener::Error(const std::string& message) {
    parser_.Report(kError, message);
}

void XMLTemplateListener::Warn(const std::string& message) {
    parser_.Report(kWarning, message);
}

// -- events ---------------------------------------------------------------------------------------

const XMLTemplateListener::Element* XMLTemplateListener::FindElement(std::string_view name) {
    using Listener = XMLTemplateListener;
    static constexpr Element kElements[] = {
        {"template", &Listener::StartTemplate, nullptr, true},
        {"type", &Listener::StartType, nullptr, false},
        {"node", &Listener::StartNode, &Listener::EndMember, true},
        {"anchor", &Listener::StartAnchor, &Listener::EndMember, true},
        {"attribute", &Listener::StartAttribute, &Listener::EndMember, true},
        {"geometry", &Listener::StartGeometry, &Listener::EndMember, true},
        {"alternate", &Listener::StartAlternate, nullptr, false},
        {"extends", &Listener::StartExtends, nullptr, false},
        {"lod", &Listener::StartLOD, &Listener::EndLOD, true},
        {"shape", &Listener::StartShape, nullptr, false},
        {"label", &Listener::StartLabel, &Listener::EndLabel, true},
        {"description", &Listener::StartDescription, &Listener::EndDescription, true},
        {"view", &Listener::StartView, &Listener::EndGroup, false},
        {"group", &Listener::StartGroup, &Listener::EndGroup, false},
        {"property", &Listener::StartViewProperty, &Listener::EndViewProperty, false},
        {"enum", &Listener::StartEnum, &Listener::EndEnum, true},
        {"item", &Listener::StartItem, nullptr, false},
        {"command", &Listener::StartCommand, nullptr, false},
        {"asset", &Listener::StartAsset, nullptr, false},
        {"using", &Listener::StartUsing, nullptr, false},
        {"templates", &Listener::StartTemplates, nullptr, false},
        {"action", &Listener::Ignore, nullptr, false},
        {"lods", &Listener::Ignore, nullptr, false},
    };
    for (const Element& element : kElements) {
        if (EqualsIgnoreCase(element.name, name))
            return &element;
    }
    return nullptr;
}

bool XMLTemplateListener::StartElement(std::string_view name, const XMLAttributes& attributes) {
    if (skippedDepth_ > 0) {
        if (EqualsIgnoreCase(name, "template"))
            ++skippedDepth_;
        return true;
    }
    if (const Element* element = FindElement(name))
        (this->*element->handler)(attributes);
    else
        Warn("Unknown element <" + std::string(name) + "> was ignored and will not be saved");
    return true;
}

bool XMLTemplateListener::EndElement(std::string_view name) {
    if (EqualsIgnoreCase(name, "template")) {
        if (skippedDepth_ > 0)
            --skippedDepth_;
        template_ = nullptr;
        return true;
    }
    const Element* element = FindElement(name);
    if (element && element->end && skippedDepth_ == 0)
        (this->*element->end)();
    if (!element || !element->keepsComment)
        comment_.clear();
    return true;
}

bool XMLTemplateListener::Comment(std::string_view text) {
    comment_ = text;
    return true;
}

bool XMLTemplateListener::Characters(std::string_view text) {
    if (language_)
        text_ += text;
    return true;
}

// -- file -----------------------------------------------------------------------------------------

void XMLTemplateListener::StartTemplates(const XMLAttributes& attributes) {
    const char* package = attributes.Find("package");
    if (!package)
        return;
    package_ = package;
    using_.Insert(package_);
}

void XMLTemplateListener::StartUsing(const XMLAttributes& attributes) {
    const char* package = attributes.Find("package");
    if (!package)
        return;
    using_.Insert(package);
    // Packages use packages as deep as their files say: whoever reads this file loads the package
    // before it goes on, without one reading inside the other.
    wantedPackage_ = package;
    parser_.Pause();
}

void XMLTemplateListener::AnswerWantedPackage(bool loaded) {
    if (!loaded)
        Warn("Package not found: " + wantedPackage_);
}

// -- templates ------------------------------------------------------------------------------------

bool XMLTemplateListener::HasName(const char* element, const XMLAttributes& attributes) {
    if (attributes.Find("name"))
        return true;
    Error(std::string("<") + element + "> element must have an 'name' attribute");
    return false;
}

const char* XMLTemplateListener::Require(const XMLAttributes& attributes, const char* name,
                                         const char* message) {
    const char* value = attributes.Find(name);
    if (!value)
        Error(message);
    return value;
}

void XMLTemplateListener::ReportInvalidName(const char* word, const char* name) {
    Error(std::string("Invalid ") + word + " name: " + Quoted(name) +
          ". Valid characters must be in the range [A-Z][a-z][0-9][_]. Ignoring " + word + ".");
}

bool XMLTemplateListener::HasValidName(const char* word, const char* name) {
    const bool valid = IsValidName(name);
    if (!valid)
        ReportInvalidName(word, name);
    return valid;
}

bool XMLTemplateListener::IsInsideTemplate(const char* element) {
    if (template_)
        return true;
    Error(std::string("<") + element + "> must occur inside a <template> element");
    return false;
}

std::string XMLTemplateListener::Qualify(std::string_view name) const {
    std::string qualified = package_;
    if (!qualified.empty())
        qualified += '.';
    return qualified.append(name);
}

void XMLTemplateListener::GiveComment(NamedObject& object) const {
    if (!comment_.empty())
        object.SetComment(comment_);
}

void XMLTemplateListener::StartTemplate(const XMLAttributes& attributes) {
    if (template_) {
        Error("Unexpected nested <template> elements");
        return;
    }
    if (!HasName("template", attributes))
        return;
    const char* name = attributes.Find("name");
    const std::string fullName = Qualify(name);
    if (!IsValidFullName(fullName)) {
        ReportInvalidName("template", name);
        skippedDepth_ = 1;
        return;
    }
    const Template* known = manager_.GetTemplate(fullName);
    const bool redefined = known && known->IsRecycled();
    Template* created = manager_.CreateTemplate(fullName);
    const std::string otherFile = created ? created->GetFileName() : std::string();
    if (!created) {
        skippedDepth_ = 1;
    } else if (!redefined && !otherFile.empty() &&
               !EqualsIgnoreCase(otherFile, parser_.GetSourceName())) {
        Error("Template '" + fullName + "' is already defined in file '" + otherFile +
              "'. Ignoring new definition.");
        skippedDepth_ = 1;
    } else {
        created->SetFileName(parser_.GetSourceName());
        GiveComment(*created);
        template_ = created;
    }
}

/// The template of that name and exactly that version, by the using list's prefixes.
Template* XMLTemplateListener::FindTemplateVersion(std::string_view name, int version) const {
    return manager_.ResolveTemplateVersion(name, version, using_);
}

void XMLTemplateListener::StartExtends(const XMLAttributes& attributes) {
    if (!IsInsideTemplate("extends"))
        return;
    const char* name = Require(attributes, "template", "<extends> requires a 'template' attribute");
    if (!name)
        return;
    Template* parent = FindTemplateVersion(name, ReadVersion(attributes, "templateVersion"));
    if (!parent) {
        Error("Template not found: " + Quoted(name));
        return;
    }
    manager_.AddParentFromVersion(template_->GetFullName(), ReadVersion(attributes, "version"),
                                  parent);
}

// -- labels and descriptions ----------------------------------------------------------------------

NamedObject* XMLTemplateListener::GetTextOwner() const {
    if (member_)
        return member_;
    return viewItem_ ? static_cast<NamedObject*>(viewItem_) : template_;
}

void XMLTemplateListener::StartText(const char* element, const XMLAttributes& attributes) {
    if (!GetTextOwner()) {
        Error(std::string("<") + element +
              "> must occur inside a <template>, <attribute>, <view>, <group>, or a <property> "
              "element");
        return;
    }
    // A language that begins with "-" is none, unless it is said to be meant as it stands.
    const char* language = attributes.Find("language");
    const bool isNone = language && *language == '-' && !ReadFlag(attributes.Find("exact"));
    language_ = language && !isNone ? language : "";
    text_.clear();
}

void XMLTemplateListener::StoreText(bool isLabel) {
    NamedObject* owner = GetTextOwner();
    if (owner && language_)
        (isLabel ? owner->EditLabels() : owner->EditDescriptions())
            .Set(language_->c_str(), text_.c_str());
    text_.clear();
    language_.reset();
}

} // namespace Kor
