// Packages that use packages. How many stand one behind the other is decided by whoever writes the
// files: nothing may depend on the size of the stack. Hosts call from threads with small ones.
#include "api/Schema.h"
#include "support/SmallThread.h"

namespace {

class PackageChainTest : public SchemaTest {
protected:
    /// A file that gives up behind its first template.
    static constexpr const char* kBroken =
        "<?xml version='1.0'?>\n<templates package='bad'><template name='Before'/><template";

    void AddPath(const std::string& name = "lib", bool load = false) {
        OviTemplateManager_AddSearchPath((Directory() + "/" + name).c_str(), load);
    }

    static std::string Using(const std::string& package) {
        return "<using package='" + package + "'/>";
    }

    static std::string Empty(const std::string& name) { return "<template name='" + name + "'/>"; }

    /// Writes a file of a package; the elements stand on line 2.
    std::string WritePackageFile(const std::string& package, const std::string& elements,
                                 const std::string& file = "F", const std::string& path = "lib") {
        std::string directory = package;
        for (char& c : directory)
            c = c == '.' ? '/' : c;
        return WriteSchema(path + "/" + directory + "/" + file + ".template",
                           "<templates package='" + package + "'>" + elements + "</templates>");
    }

    static bool Has(const std::string& name) {
        return OviTemplateManager_GetTemplate(name.c_str()) != nullptr;
    }

    static bool Load(const char* package) { return OviTemplateManager_LoadPackage(package); }
};

TEST_F(PackageChainTest, TwoThousandPackagesEachUsingTheNextLoadOnASmallStack) {
    constexpr int kCount = 2000;
    for (int i = 0; i < kCount; ++i) {
        const std::string next = "p" + std::to_string(i + 1);
        std::string text = i + 1 < kCount ? Using(next) : std::string();
        text += "<template name='T'>";
        text += i + 1 < kCount ? "<extends template='" + next + ".T'/>" : std::string();
        WritePackageFile("p" + std::to_string(i), text + "</template>");
    }
    AddPath();
    RunOnSmallStack([] { EXPECT_TRUE(Load("p0")); });
    EXPECT_EQ(Errors(), Names{});
    EXPECT_EQ(OviTemplateManager_GetTemplateCount(), kCount + 1);
    EXPECT_TRUE(OviTemplate_IsDescendantOf(OviTemplateManager_GetTemplate("p0.T"),
                                           OviTemplateManager_GetTemplate("p1999.T")));
}

TEST_F(PackageChainTest, AChainEndingInAMissingPackageReportsThatOneOnly) {
    WritePackageFile("a", Using("b") + Empty("T"));
    WritePackageFile("b", Using("c") + Empty("T"));
    WritePackageFile("c", "\n" + Using("d") + Empty("T"));
    AddPath();
    EXPECT_TRUE(Load("a"));
    EXPECT_EQ(Errors(), Names{"2 3 Package not found: d"});
    for (const char* name : {"a.T", "b.T", "c.T"})
        EXPECT_TRUE(Has(name)) << name;
    EXPECT_FALSE(Load("d"));
}

TEST_F(PackageChainTest, PackagesMayUseEachOtherInACircle) {
    WritePackageFile("a", Using("b") + "<template name='T'><extends template='b.T'/></template>");
    WritePackageFile("b", Using("c") + Empty("T"));
    WritePackageFile("c", Using("a") + Using("c") + Empty("T"));
    AddPath();
    EXPECT_TRUE(Load("a"));
    EXPECT_EQ(Errors(), Names{});
    for (const char* name : {"a.T", "b.T", "c.T"})
        EXPECT_TRUE(Has(name)) << name;
    EXPECT_EQ(ParentsOf(OviTemplateManager_GetTemplate("a.T")), Names{"b.T#1"});
}

TEST_F(PackageChainTest, APackageIsReadWhereItIsUsedAndNotBefore) {
    WritePackageFile("a", "<template name='Early'><extends template='b.T'/></template>" +
                              Using("b") +
                              "<template name='Late'><extends template='T'/></template>");
    WritePackageFile("b", Empty("T"));
    AddPath();
    EXPECT_TRUE(Load("a"));
    EXPECT_EQ(Errors(), Names{"1 2 Template not found: 'b.T'"});
    EXPECT_EQ(ParentsOf(OviTemplateManager_GetTemplate("a.Late")), Names{"b.T#1"});
}

TEST_F(PackageChainTest, AFileGoesOnWithItsOwnStateAfterAPackage) {
    WritePackageFile("b", "<template name='T'/>");
    const std::string path = WriteSchema(
        "F.template", "<templates package='a'>\n<template name='Open'><node name='n'>" +
                          Using("b") + "<label>L</label></node></template></templates>");
    AddPath();
    EXPECT_TRUE(OviTemplateManager_LoadTemplateFile(path.c_str()));
    EXPECT_EQ(Errors(), Names{});
    OviProperty* node = OviTemplate_GetProperty(OviTemplateManager_GetTemplate("a.Open"), "n");
    ASSERT_NE(node, nullptr);
    EXPECT_STREQ(OviNamedObject_GetLabel(node, nullptr), "L");
    EXPECT_STREQ(OviType_GetFileName(OviTemplateManager_GetTemplate("a.Open")), path.c_str());
}

TEST_F(PackageChainTest, AFaultyFileEndsItsPackageAndIsNotTakenForLoaded) {
    WritePackageFile("a", Using("bad") + Empty("T"));
    WritePackageFile("bad", Empty("A"), "A");
    WriteFile("lib/bad/B.template", kBroken);
    WritePackageFile("bad", Empty("C"), "C");
    AddPath();
    EXPECT_TRUE(Load("a"));
    const Names errors = Errors();
    ASSERT_EQ(errors.size(), 2u);
    EXPECT_EQ(errors.back(), "2 2 Package not found: bad");
    EXPECT_TRUE(Has("bad.A"));
    EXPECT_TRUE(Has("bad.Before")) << "what was read before the fault stays";
    EXPECT_FALSE(Has("bad.C"));
    OviErrorManager_Clear();
    WritePackageFile("bad", Empty("Before") + Empty("Mended"), "B");
    EXPECT_TRUE(Load("bad"));
    EXPECT_EQ(Errors(), Names{});
    EXPECT_TRUE(Has("bad.Mended"));
    EXPECT_TRUE(Has("bad.C"));
}

TEST_F(PackageChainTest, TheNextSearchPathIsTriedAfterAFaultyOne) {
    WriteFile("one/a/F.template", kBroken);
    WritePackageFile("a", Empty("T"), "F", "two");
    WritePackageFile("b", Empty("One"), "F", "one");
    WritePackageFile("b", Empty("Two"), "F", "two");
    WritePackageFile("c", Using("b") + Empty("T"), "F", "two");
    AddPath("one");
    AddPath("two");
    EXPECT_TRUE(Load("a"));
    EXPECT_TRUE(Has("a.T"));
    EXPECT_TRUE(Load("c"));
    EXPECT_TRUE(Has("b.One"));
    EXPECT_FALSE(Has("b.Two")) << "the first search path that has the package serves";
}

TEST_F(PackageChainTest, ASearchPathIsLoadedWithEverythingBelowIt) {
    WritePackageFile("a.deep", Using("z") + Empty("T"));
    WritePackageFile("z", Using("a") + Empty("T"));
    WriteFile("lib/a/readme.txt", "no template");
    AddPath("lib", true);
    EXPECT_EQ(Errors(), Names{});
    EXPECT_TRUE(Has("a.deep.T"));
    EXPECT_TRUE(Has("z.T"));
    EXPECT_TRUE(Load("a"));
}

TEST_F(PackageChainTest, AFileOfAPackageIsReadOnce) {
    const std::string path = WritePackageFile("a", Empty("T"));
    AddPath();
    EXPECT_TRUE(Load("a"));
    WritePackageFile("a", Empty("Later"));
    EXPECT_TRUE(Load("a"));
    EXPECT_FALSE(Has("a.Later"));
}

TEST_F(PackageChainTest, ALongPackageFileIsReadInPieces) {
    std::string text = Using("b");
    for (int i = 0; i < 3000; ++i)
        text += (i % 500 == 0 ? Using("b") : "") + Empty("T" + std::to_string(i));
    WritePackageFile("a", text);
    WritePackageFile("b", Empty("T"));
    AddPath();
    EXPECT_TRUE(Load("a"));
    EXPECT_EQ(Errors(), Names{});
    EXPECT_EQ(OviTemplateManager_GetTemplateCount(), 3002);
}

} // namespace
