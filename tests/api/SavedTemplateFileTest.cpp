// What belongs to a template file that is saved, and what saving says of it.

#include "api/PackageHost.h"

namespace {

class SavedTemplateFileTest : public PackageTest {
protected:
    /// Loads a file with these contents and gives its path.
    std::string LoadFile(const std::string& name, const std::string& templates) {
        const std::string file = WriteSchema(name, templates);
        EXPECT_TRUE(OviTemplateManager_LoadTemplateFile(file.c_str()));
        EXPECT_EQ(Errors(), Names{});
        return file;
    }

    /// Saves a file elsewhere and gives the text.
    std::string Save(const std::string& file) {
        const std::string output = PathOf("out/Saved.template");
        EXPECT_TRUE(OviTemplateManager_SaveTemplateFile(file.c_str(), output.c_str()));
        return ReadFile(output);
    }
};

TEST_F(SavedTemplateFileTest, HasThePackageOfTheFirstTemplateThatIsItsOwnLatestVersion) {
    const std::string file = LoadFile("F.template", "<templates><template name='a'>"
                                                    "<attribute name='x' type='BOOL' version='2'/>"
                                                    "</template></templates>");
    OviType_SetFileName(Make("q.B"), file.c_str());
    OviType_SetFileName(Make("r.C"), file.c_str());
    OviTemplate* latest = OviTemplateManager_GetTemplateVersion("a", 2);
    OviTemplateManager_RemoveTemplate(latest);
    const std::string text = Save(file);
    EXPECT_NE(text.find("<templates package='q'>"), std::string::npos) << text;
    OviTemplateManager_AddTemplate(latest);
    EXPECT_NE(Save(file).find("<templates>"), std::string::npos) << "a is the first, without one";
}

TEST_F(SavedTemplateFileTest, UsesItsOwnPackageInNoCase) {
    LoadFile("V.template", "<templates package='P'><type name='V' type='FLOAT'/></templates>");
    LoadFile("W.template", "<templates package='Q'><type name='W' type='FLOAT'/></templates>");
    const std::string file =
        LoadFile("F.template", "<templates package='p'><template name='T'><attribute name='v' "
                               "type='P.V'/><attribute name='w' type='Q.W'/></template>"
                               "</templates>");
    const std::string text = Save(file);
    EXPECT_NE(text.find("type='P.V'"), std::string::npos) << text;
    EXPECT_EQ(text.find("<using package='P'/>"), std::string::npos) << text;
    EXPECT_NE(text.find("<using package='Q'/>"), std::string::npos) << text;
}

TEST_F(SavedTemplateFileTest, HoldsWhatWasDefinedUnderItsNameInAnyCase) {
    std::string file = LoadFile("a.template", "<templates><type name='V' type='FLOAT'/>"
                                              "<enum name='E' type='INT32'/><lod name='L'/>"
                                              "<template name='T'/></templates>");
    const std::string expected = Save(file);
    file.replace(file.rfind("a.template"), 10, "A.TEMPLATE");
    EXPECT_EQ(Save(file), expected);
    for (const char* element : {"<type name='V'", "<enum name='E'", "<lod name='L'", "name='T'"})
        EXPECT_NE(expected.find(element), std::string::npos) << element;
}

TEST_F(SavedTemplateFileTest, DoesNotCountAsLoadedWhereItCouldNotBeWritten) {
    Write("F.template");
    const std::string file = PathOf("F.template");
    const std::string output = Directory() + "/missing/F.template";
    EXPECT_FALSE(OviTemplateManager_SaveTemplateFile(file.c_str(), output.c_str()));
    EXPECT_TRUE(OviTemplateManager_LoadTemplateFile(file.c_str()));
    EXPECT_EQ(Schema(), Names{"F#1"}) << "read, not taken for loaded";
}

} // namespace
