// What all types have in common: names, packages, files, declarations.

#include "api/Host.h"
#include "api/Values.h"

namespace {

class TypeTest : public HostTest {
protected:
    void SetUp() override {
        HostTest::SetUp();
        type_ = OviCustomType_New("Vector", 1);
    }
    void TearDown() override {
        OviObject_Delete(type_);
        HostTest::TearDown();
    }

    /// Package, name and full name, with blanks between them.
    std::string Names() {
        return std::string(OviType_GetPackageName(type_)) + " " + OviNamedObject_GetName(type_) +
               " " + OviType_GetFullName(type_);
    }

    /// The file name that a search path gives to a type.
    static std::string FileBelow(const char* path, OviType* type) {
        OviType_SetSearchPath(type, path);
        return OviType_GetFileName(type);
    }

    OviCustomType* type_ = nullptr;
};

// -- names ----------------------------------------------------------------------------------------

TEST_F(TypeTest, ANameMayCarryItsPackage) {
    EXPECT_EQ(Names(), " Vector Vector");
    EXPECT_TRUE(OviNamedObject_SetName(type_, "pkg.sub.Name"));
    EXPECT_EQ(Names(), "pkg.sub Name pkg.sub.Name");
    EXPECT_TRUE(OviNamedObject_SetName(type_, "3D"));
    EXPECT_EQ(Names(), "pkg.sub 3D pkg.sub.3D"); // the package stays
    EXPECT_TRUE(OviNamedObject_SetName(type_, "x.Y"));
    EXPECT_EQ(Names(), "x Y x.Y");
}

TEST_F(TypeTest, OnlyTheLastPartOfANameIsChecked) {
    EXPECT_TRUE(OviNamedObject_SetName(type_, "not valid!..Name"));
    EXPECT_EQ(Names(), "not valid!. Name not valid!..Name");
    for (const char* name : {"Name.", ".Name", ".", "..", "", "a.b c", "a b", "a.b.", "a.-",
                             static_cast<const char*>(nullptr)}) {
        EXPECT_FALSE(OviNamedObject_SetName(type_, name)) << name;
        EXPECT_EQ(Names(), "not valid!. Name not valid!..Name");
    }
}

TEST_F(TypeTest, ADotThatOnlyFollowsAnotherIsStillNotTheFirst) {
    EXPECT_TRUE(OviNamedObject_SetName(type_, "..Name"));
    EXPECT_EQ(Names(), ". Name ..Name");
}

TEST_F(TypeTest, TheNameRuleHoldsForNewTypesToo) {
    const auto fullNameOf = [](const char* name) {
        OviCustomType* type = OviCustomType_New(name, 1);
        const std::string fullName = OviType_GetFullName(type);
        OviObject_Delete(type);
        return fullName;
    };
    EXPECT_EQ(fullNameOf("a.b.Vector"), "a.b.Vector");
    EXPECT_EQ(fullNameOf("Vector."), "");
    EXPECT_EQ(fullNameOf(".Vector"), "");
    EXPECT_EQ(fullNameOf("a.not valid"), "");
    EXPECT_EQ(fullNameOf(nullptr), "");
}

TEST_F(TypeTest, ThePackageShowsInTheFullNameAtOnce) {
    OviType_SetPackageName(type_, "math.linear");
    EXPECT_EQ(Names(), "math.linear Vector math.linear.Vector");
    OviType_SetPackageName(type_, "any text!");
    EXPECT_EQ(Names(), "any text! Vector any text!.Vector");
    OviType_SetPackageName(type_, "");
    EXPECT_EQ(Names(), " Vector Vector");
    OviType_SetPackageName(type_, "a");
    OviType_SetPackageName(type_, nullptr);
    EXPECT_EQ(Names(), " Vector Vector");
}

TEST_F(TypeTest, NamesMayBeSetFromTheTypeItself) {
    OviNamedObject_SetName(type_, "a.long.package.name.beyond.any.small.buffer.Vector");
    EXPECT_TRUE(OviNamedObject_SetName(type_, OviType_GetFullName(type_)));
    EXPECT_STREQ(OviType_GetFullName(type_), "a.long.package.name.beyond.any.small.buffer.Vector");
    OviType_SetPackageName(type_, OviNamedObject_GetName(type_));
    EXPECT_EQ(Names(), "Vector Vector Vector.Vector");
}

TEST_F(TypeTest, ARegisteredTypeIsFoundUnderItsNewName) {
    auto* type = OviCustomType_New("Before", 1);
    OviTemplateManager_AddType(type);
    OviNamedObject_SetName(type, "pkg.After");
    EXPECT_EQ(TypeNamed("Before"), nullptr);
    EXPECT_EQ(TypeNamed("pkg.After"), type);
    OviType_SetPackageName(type, "");
    EXPECT_EQ(TypeNamed("After"), type);
}

// -- plain members --------------------------------------------------------------------------------

TEST_F(TypeTest, BaseTypeAndAlignmentAreStoredAsGiven) {
    EXPECT_EQ(OviType_GetBaseType(type_), nullptr);
    OviType_SetBaseType(type_, TypeNamed("INT8"));
    EXPECT_EQ(OviType_GetBaseType(type_), TypeNamed("INT8"));
    OviType_SetBaseType(type_, nullptr);
    EXPECT_EQ(OviType_GetBaseType(type_), nullptr);
    EXPECT_EQ(OviType_GetAlignment(type_), 1);
    for (const int alignment : {16, 3, 0, -4}) {
        OviType_SetAlignment(type_, alignment);
        EXPECT_EQ(OviType_GetAlignment(type_), alignment);
    }
    EXPECT_FALSE(OviType_IsRecycled(type_));
}

TEST_F(TypeTest, BuiltInTypesHaveTheirAlignments) {
    const std::vector<std::pair<const char*, int>> alignments{
        {"BOOL", 1},   {"INT8", 1},   {"UINT8", 1},  {"INT16", 2},    {"UINT16", 2},
        {"INT32", 4},  {"UINT32", 4}, {"INT64", 8},  {"UINT64", 8},   {"FLOAT", 4},
        {"DOUBLE", 8}, {"VOID", 4},   {"STRING", 4}, {"REFERENCE", 4}};
    EXPECT_EQ(OviTemplateManager_GetTypeCount(), static_cast<int>(alignments.size()));
    for (const auto& [name, alignment] : alignments) {
        OviType* type = TypeNamed(name);
        ASSERT_NE(type, nullptr) << name;
        EXPECT_EQ(OviType_GetAlignment(type), alignment) << name;
        EXPECT_STREQ(OviType_GetPackageName(type), "");
        EXPECT_STREQ(OviType_GetFileName(type), "");
        EXPECT_EQ(OviType_GetBaseType(type), nullptr);
        EXPECT_EQ(DeclarationOf(type).find("dim"), std::string::npos) << name;
    }
    EXPECT_EQ(OviType_GetAlignment(OviTemplateManager_GetRoot()), 1);
}

// -- files ----------------------------------------------------------------------------------------

TEST_F(TypeTest, ASearchPathPlacesTheFileByPackageAndName) {
    OviNamedObject_SetName(type_, "Color");
    EXPECT_EQ(FileBelow("C:\\types\\", type_), "C:\\types\\Color.template");
    OviCustomType* vector = OviCustomType_New("math.linear.Vector", 1);
    EXPECT_EQ(FileBelow("C:\\types", vector), "C:\\types\\math\\linear\\Vector.template");
    OviObject_Delete(vector);
}

TEST_F(TypeTest, ASearchPathKeepsTheFilesOwnName) {
    OviType_SetFileName(type_, "D:\\old\\colors.template");
    EXPECT_EQ(FileBelow("C:\\types\\", type_), "C:\\types\\colors.template");
    OviType_SetPackageName(type_, "a.b");
    EXPECT_EQ(FileBelow("", type_), "a\\b\\colors.template");
    OviType_SetFileName(type_, "bare");
    EXPECT_EQ(FileBelow("E:", type_), "E:\\a\\b\\bare");
    OviType_SetFileName(type_, "folder/with.slashes");
    EXPECT_EQ(FileBelow("/srv", type_), "/srv\\a\\b\\folder/with.slashes");
}

TEST_F(TypeTest, AnEmptySearchPathLeavesTheNameAlone) {
    EXPECT_EQ(FileBelow("", type_), "Vector.template");
    EXPECT_EQ(FileBelow(nullptr, type_), "Vector.template");
}

TEST_F(TypeTest, ATypeMovesFromFileToFile) {
    auto* type = OviCustomType_New("Registered", 1);
    OviTemplateManager_AddType(type);
    OviType_SetFileName(type, "C:\\a.template");
    EXPECT_STREQ(OviType_GetFileName(type), "C:\\a.template");
    EXPECT_EQ(OviTemplateManager_GetTypesByFileName("c:\\A.TEMPLATE", nullptr, 0), 1);
    OviType_SetFileName(type, "C:\\b.template");
    EXPECT_EQ(OviTemplateManager_GetTypesByFileName("C:\\a.template", nullptr, 0), 0);
    EXPECT_EQ(OviTemplateManager_GetTypesByFileName("C:\\b.template", nullptr, 0), 1);
    OviType_SetFileName(type, OviType_GetFileName(type));
    EXPECT_STREQ(OviType_GetFileName(type), "C:\\b.template");
}

TEST_F(TypeTest, AFileThatATypeMovedToCountsAsLoaded) {
    const std::string path =
        WriteFile("later.template", TemplateFile("<template name=\"Unread\"/>"));
    auto* type = OviCustomType_New("Registered", 1);
    OviTemplateManager_AddType(type);
    OviType_SetFileName(type, path.c_str());
    EXPECT_TRUE(OviTemplateManager_LoadTemplateFile(path.c_str()));
    EXPECT_EQ(OviTemplateManager_GetTemplate("Unread"), nullptr);
    OviType_SetFileName(type, "elsewhere"); // nothing of the file is left: it can be read again
    EXPECT_TRUE(OviTemplateManager_LoadTemplateFile(path.c_str()));
    EXPECT_NE(OviTemplateManager_GetTemplate("Unread"), nullptr);
}

// -- declarations ---------------------------------------------------------------------------------

TEST_F(TypeTest, TheDeclarationTellsNameBaseAndDimension) {
    EXPECT_EQ(DeclarationOf(type_), "\n<type name='Vector'/>");
    OviType_SetPackageName(type_, "math");
    OviType_SetBaseType(type_, TypeNamed("FLOAT"));
    EXPECT_EQ(DeclarationOf(type_), "\n<type name='Vector' type='FLOAT'/>");
    OviCustomType* three = OviCustomType_New("Three", 3);
    OviType_SetBaseType(three, type_);
    EXPECT_EQ(DeclarationOf(three), "\n<type name='Three' type='math.Vector' dim='3'/>");
    OviObject_Delete(three);
    OviCustomType* many = OviCustomType_New("Many", 0);
    EXPECT_EQ(DeclarationOf(many), "\n<type name='Many' dim='0'/>");
    OviObject_Delete(many);
}

TEST_F(TypeTest, TheDeclarationTellsTheCommentButNoLabels) {
    OviNamedObject_SetComment(type_, "three numbers");
    OviNamedObject_SetLabel(type_, "de", "Vektor");
    OviNamedObject_SetDescription(type_, nullptr, "x, y, z");
    EXPECT_EQ(DeclarationOf(type_), "\n<!--three numbers-->\n<type name='Vector'/>");
}

TEST_F(TypeTest, TheDeclarationIsCopiedAsFarAsItFits) {
    const std::string whole = DeclarationOf(type_);
    const int needed = static_cast<int>(whole.size()) + 1;
    for (int given = 0; given <= needed + 2; ++given) {
        std::string buffer(whole.size() + 3, '?');
        int size = given;
        OviType_WriteToXML(type_, 0, &size, buffer.data());
        std::string expected = whole + '\0';
        expected = expected.substr(0, static_cast<size_t>(given));
        expected.resize(buffer.size(), '?');
        EXPECT_EQ(buffer, expected) << given;
        EXPECT_EQ(size, given < needed ? needed : given);
    }
}

TEST_F(TypeTest, TheDeclarationStartsAtTheGivenDepth) {
    EXPECT_EQ(DeclarationOf(type_, 2), "\n\t\t<type name='Vector'/>");
    EXPECT_EQ(DeclarationOf(type_, -1), "\n<type name='Vector'/>");
}

} // namespace
