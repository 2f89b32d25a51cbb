#pragma once

#include <string>
#include <vector>

#include "api/Host.h"
#include "api/SchemaDump.h"

/// A host that loads and saves template files. The file under test is p/F.template below a
/// directory "in" that is no search path unless a test makes it one.
class TemplateFileTest : public HostTest {
protected:
    using Lines = std::vector<std::string>;

    /// The text between the header and the end of a file of the package "p".
    static std::string Wrap(const std::string& content) {
        return "<?xml version='1.0'?>\n<templates package='p'>\n" + content + "\n</templates>";
    }

    /// Loads a whole text as the file under test.
    bool LoadText(const std::string& text) {
        path_ = WriteFile("in/p/F.template", text);
        return OviTemplateManager_LoadTemplateFile(path_.c_str());
    }

    /// Loads the content of a file, whose first line is line 3, and gives what is reported.
    Lines Load(const std::string& content) {
        EXPECT_TRUE(LoadText(Wrap(content)));
        return Errors();
    }

    /// Saves the file under test elsewhere and gives the text.
    std::string Save() {
        const std::string output = PathOf("out/p/F.template");
        EXPECT_TRUE(OviTemplateManager_SaveTemplateFile(path_.c_str(), output.c_str()));
        return ReadFile(output);
    }

    /// What stands between the header and the end of the saved file.
    std::string SavedContent() {
        const std::string text = Save();
        const std::string head =
            "<?xml version='1.0' encoding='UTF-8'?>\n<templates package='p'>\n";
        const std::string tail = "\n</templates>";
        EXPECT_EQ(text.substr(0, head.size()), head);
        EXPECT_GE(text.size(), head.size() + tail.size());
        return text.substr(head.size(), text.size() - head.size() - tail.size());
    }

    /// Ends the library and starts it with an empty registry.
    static void Restart() {
        Ovi_Terminate();
        Ovi_Initialize();
        OviErrorManager_Clear();
    }

    /// Expects that the loaded file, saved and loaded into an empty registry, gives the same
    /// model, without a finding, and the same bytes when it is saved again.
    void ExpectRoundTrip() {
        const std::string before = SchemaDump::Of(Directory() + "/in/");
        const std::string text = Save();
        Restart();
        path_ = PathOf("out/p/F.template");
        EXPECT_TRUE(OviTemplateManager_LoadTemplateFile(path_.c_str()));
        EXPECT_EQ(Errors(), Lines{}) << text;
        EXPECT_EQ(SchemaDump::Of(Directory() + "/out/"), before) << text;
        const std::string again = PathOf("again/p/F.template");
        EXPECT_TRUE(OviTemplateManager_SaveTemplateFile(path_.c_str(), again.c_str()));
        EXPECT_EQ(ReadFile(again), text);
    }

    // -- looking at what was read ---------------------------------------------------------------

    static OviTemplate* Get(const char* name, unsigned version = 1) {
        return OviTemplateManager_GetTemplateVersion(name, version);
    }

    static OviAttributeProperty* Attribute(OviTemplate* type, const char* name) {
        return static_cast<OviAttributeProperty*>(OviTemplate_GetProperty(type, name));
    }

    static std::string TypeOf(OviAttributeProperty* attribute) {
        OviType* type = OviAttributeProperty_GetType(attribute);
        return type ? OviType_GetFullName(type) : "none";
    }

    /// The text of the first element of a value of an attribute's type.
    static std::string TextOf(OviAttributeProperty* attribute, const void* value) {
        if (!value)
            return "none";
        std::string text(256, '\0');
        const int length = OviType_GetValueAsString(OviAttributeProperty_GetType(attribute), value,
                                                    0, text.data());
        return text.substr(0, static_cast<size_t>(length));
    }

    static std::string DefaultOf(OviAttributeProperty* attribute) {
        return TextOf(attribute, OviAttributeProperty_GetDefaultValue(attribute));
    }

    static std::string BoundsOf(OviAttributeProperty* attribute) {
        return TextOf(attribute, OviAttributeProperty_GetMinValue(attribute)) + " " +
               TextOf(attribute, OviAttributeProperty_GetMaxValue(attribute));
    }

    static std::string CommentOf(OviNamedObject* object) {
        return OviNamedObject_GetComment(object);
    }

    std::string path_;
};
