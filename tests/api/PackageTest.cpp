// Packages: directories of template files below the search paths.

#include <algorithm>
#include <filesystem>

#include "api/PackageHost.h"

namespace {

TEST_F(PackageTest, EveryDirectoryAtEveryDepthIsAPackage) {
    Write("defs/studio/props/Cup.template");
    PathOf("defs/studio/empty/x");
    PathOf("defs/a/b/c/d/x");
    PathOf("defs/.hidden/inner/x");
    WriteFile("defs/file.txt", "");
    EXPECT_EQ(Packages(), Names{"none"});
    AddPath("defs");
    EXPECT_EQ(Packages(),
              (Names{"a", "a.b", "a.b.c", "a.b.c.d", "studio", "studio.empty", "studio.props"}));
}

TEST_F(PackageTest, PackagesOfAllPathsAreListedOnceInByteOrder) {
    for (const char* directory : {"one/b/x", "one/a/x", "two/b/x", "two/B/x", "two/_/x"})
        PathOf(directory);
    AddPath("one");
    AddPath("missing/deeper");
    std::filesystem::remove_all(Directory() + "/missing");
    AddPath("two");
#ifdef _WIN32
    EXPECT_EQ(Packages(), (Names{"_", "a", "b"}));
#else
    EXPECT_EQ(Packages(), (Names{"B", "_", "a", "b"}));
#endif
}

TEST_F(PackageTest, ASmallBufferTakesTheNamesThatFit) {
    for (const char* directory : {"defs/aaaa/x", "defs/bb/x", "defs/cccccc/x"})
        PathOf(directory);
    AddPath("defs");
    const int needed = 5 + 3 + 7 + 1;
    for (int given = 0; given <= needed + 2; ++given) {
        std::string buffer(32, '?');
        int size = given;
        EXPECT_EQ(OviTemplateManager_EnumeratePackages(false, &size, buffer.data()), 3);
        EXPECT_EQ(size, needed);
        std::string expected(32, '?');
        const std::pair<size_t, std::string> parts[] = {
            {0, "aaaa"}, {5, "bb"}, {8, "cccccc"}, {15, ""}};
        for (const auto& [at, text] : parts) {
            if (static_cast<int>(at + text.size()) < given)
                expected.replace(at, text.size() + 1, text.c_str(), text.size() + 1);
        }
        EXPECT_EQ(buffer, expected) << given;
    }
    EXPECT_EQ(OviTemplateManager_EnumeratePackages(false, nullptr, nullptr), 3);
    int negative = -5;
    EXPECT_EQ(OviTemplateManager_EnumeratePackages(false, &negative, nullptr), 3);
    EXPECT_EQ(negative, needed);
}

TEST_F(PackageTest, AnEmptySearchPathListsAnEmptyText) {
    AddPath("defs");
    int size = 3;
    char buffer[] = "???";
    EXPECT_EQ(OviTemplateManager_EnumeratePackages(false, &size, buffer), 0);
    EXPECT_EQ(size, 1);
    EXPECT_STREQ(buffer, "");
}

// The call succeeds where a search path was listed, and loaded packages need none.
TEST_F(PackageTest, TheLoadedPackagesAloneAreRefused) {
    Write("defs/a/X.template");
    AddPath("defs", true);
    int size = 100;
    char buffer[100] = "untouched";
    EXPECT_EQ(OviTemplateManager_EnumeratePackages(true, &size, buffer), -1);
    EXPECT_EQ(size, 100);
    EXPECT_STREQ(buffer, "untouched");
}

TEST_F(PackageTest, WithoutAPathThatCanBeListedTheSizeStaysAsItWas) {
    OviTemplateManager_AddSearchPath((Directory() + "/missing").c_str(), false);
    int size = 77;
    EXPECT_EQ(OviTemplateManager_EnumeratePackages(false, &size, nullptr), -1);
    EXPECT_EQ(size, 77);
}

// -- loading --------------------------------------------------------------------------------------

TEST_F(PackageTest, APackageLoadsTheTemplateFilesOfItsDirectoryAlone) {
    for (const char* name : {"Cup.template", "Plate.TEMPLATE", "deeper/Fork.template"})
        Write(std::string("defs/studio/props/") + name);
    WriteFile("defs/studio/props/.Hidden.template", "not read");
    WriteFile("defs/studio/props/template", "not read");
    WriteFile("defs/studio/props/.template", "not read");
    WriteFile("defs/studio/props/Cup.template.bak", "not read");
    WriteFile("defs/studio/props/Cuptemplate", "not read");
    PathOf("defs/studio/props/Directory.template/x");
    AddPath("defs");
    EXPECT_TRUE(Load("studio.props"));
    EXPECT_EQ(Schema(), (Names{"studio.props.Cup#1", "studio.props.Plate#1"}));
    EXPECT_EQ(Errors(), Names{});
    EXPECT_EQ(OviType_GetFileName(OviTemplateManager_GetTemplate("studio.props.Cup")),
              Directory() + "/defs\\studio\\props\\Cup.template");
}

TEST_F(PackageTest, APackageIsLoadedOnce) {
    Write("defs/a/X.template");
    AddPath("defs");
    EXPECT_TRUE(Load("a"));
    Write("defs/a/Y.template");
    EXPECT_TRUE(Load("a"));
    EXPECT_EQ(Schema(), Names{"a.X#1"});
    EXPECT_FALSE(Load("b"));
    EXPECT_EQ(Errors(), Names{});
    OviTemplateManager_UnloadTemplateFile((Directory() + "/defs\\a\\X.template").c_str());
    EXPECT_TRUE(Load("a")) << "it stays among the loaded ones";
    EXPECT_EQ(Schema(), Names{});
}

TEST_F(PackageTest, TheFirstPathThatHasThePackageGivesIt) {
    Write("one/a/X.template");
    Write("two/a/Y.template");
    Write("two/b/Z.template");
    AddPath("one");
    AddPath("two");
    EXPECT_TRUE(Load("a"));
    EXPECT_TRUE(Load("b"));
    EXPECT_EQ(Schema(), (Names{"a.X#1", "b.Z#1"}));
}

TEST_F(PackageTest, ADirectoryWithoutTemplateFilesIsAPackageToo) {
    PathOf("one/a/x");
    Write("two/a/Y.template");
    AddPath("one");
    AddPath("two");
    EXPECT_TRUE(Load("a"));
    EXPECT_EQ(Schema(), Names{});
}

TEST_F(PackageTest, AFaultyFileStopsItsDirectoryAndTheNextPathIsTried) {
    Write("one/a/A.template");
    WriteFile("one/a/b.template", "no header");
    Write("one/a/C.template");
    Write("two/a/D.template");
    AddPath("one");
    EXPECT_FALSE(Load("a"));
    EXPECT_EQ(Schema(), Names{"a.A#1"}) << "what came before stays";
    EXPECT_EQ(Errors(), Names{"1 1 Missing XML header element"});
    AddPath("two");
    EXPECT_TRUE(Load("a"));
    EXPECT_EQ(Schema(), (Names{"a.A#1", "a.D#1"}));
}

TEST_F(PackageTest, AFaultyFileDoesNotCountAsLoaded) {
    WriteSchema("defs/a/A.template", "<templates package='a'><template name='A'/></templates");
    AddPath("defs");
    EXPECT_FALSE(Load("a"));
    EXPECT_EQ(Schema(), Names{"a.A#1"});
    Write("defs/a/A.template");
    WriteSchema("defs/a/A.template", "<templates package='a'><template name='A'>"
                                     "<attribute name='x' type='INT32'/></template></templates>");
    EXPECT_TRUE(Load("a"));
    EXPECT_NE(OviTemplate_GetProperty(OviTemplateManager_GetTemplate("a.A"), "x"), nullptr);
}

TEST_F(PackageTest, AFileThatDefinesNoTypesDoesNotCountAsLoadedWithItsPackage) {
    WriteSchema("defs/a/L.template", "<templates><lod name='L'/></templates>");
    AddPath("defs");
    EXPECT_TRUE(Load("a"));
    EXPECT_NE(OviTemplateManager_GetLOD("L"), nullptr);
    WriteSchema("defs/a/L.template", "<templates><template name='T'/></templates>");
    const std::string path = Directory() + "/defs\\a\\L.template";
    EXPECT_TRUE(OviTemplateManager_LoadTemplateFile(path.c_str()));
    EXPECT_EQ(Schema(), Names{"T#1"}) << "read again";
}

TEST_F(PackageTest, FilesAreReadInAscendingOrderWithoutRegardToCase) {
    const auto write = [this](const char* file, const char* parent) {
        WriteSchema(std::string("defs/pkg/") + file + ".template",
                    std::string("<templates package='pkg'><template name='") + file +
                        "'><extends template='" + parent + "'/></template></templates>");
    };
    write("a", "Object");
    write("B", "a");
    write("c", "B");
    write("D", "c");
    AddPath("defs");
    EXPECT_TRUE(Load("pkg"));
    EXPECT_EQ(Errors(), Names{});
    EXPECT_EQ(ParentsOf(OviTemplateManager_GetTemplate("pkg.D")), Names{"pkg.c#1"});
}

TEST_F(PackageTest, EveryFileOfAPackageStartsAfresh) {
    WriteSchema("defs/a/1.template", "<templates package='a'><using package='b'/>"
                                     "<template name='One'>"); // left open
    WriteSchema("defs/a/2.template", "<templates><template name='Two'>"
                                     "<extends template='Base'/></template></templates>");
    Write("defs/b/Base.template");
    AddPath("defs");
    EXPECT_TRUE(Load("a"));
    EXPECT_EQ(Schema(), (Names{"Two#1", "a.One#1", "b.Base#1"}));
    const Names errors = Errors();
    EXPECT_NE(std::find(errors.begin(), errors.end(), "1 2 Template not found: 'Base'"),
              errors.end());
}

TEST_F(PackageTest, PackagesMayUseEachOtherInACircle) {
    WriteSchema("defs/a/A.template", "<templates package='a'><using package='b'/>"
                                     "<template name='A'/></templates>");
    WriteSchema("defs/b/B.template", "<templates package='b'><using package='a'/>"
                                     "<template name='B'/></templates>");
    AddPath("defs");
    EXPECT_TRUE(Load("a"));
    EXPECT_EQ(Schema(), (Names{"a.A#1", "b.B#1"}));
    EXPECT_EQ(Errors(), Names{});
}

TEST_F(PackageTest, AMissingPackageIsAWarningWhereItIsUsed) {
    WriteSchema("defs/a/A.template", "<templates package='a'><using package='no.where'/>"
                                     "<template name='A'/></templates>");
    AddPath("defs");
    EXPECT_TRUE(Load("a"));
    EXPECT_EQ(Errors(), Names{"2 2 Package not found: no.where"});
}

TEST_F(PackageTest, ASearchPathCanLoadAllItsPackages) {
    Write("defs/b/B.template");
    Write("defs/a/inner/A.template");
    Write("defs/Above.template");
    EXPECT_EQ(AddPath("defs", true), ~0);
    EXPECT_EQ(Schema(), (Names{"a.inner.A#1", "b.B#1"}));
    EXPECT_EQ(AddPath("defs", true), 0);
}

TEST_F(PackageTest, TheEmptyNameIsTheSearchPathItself) {
    Write("defs/Above.template");
    AddPath("defs");
    EXPECT_TRUE(Load(""));
    EXPECT_EQ(Schema(), Names{"Above#1"});
    EXPECT_TRUE(Load(nullptr));
}

TEST_F(PackageTest, DirectoriesAndFilesAreFoundWhateverTheirCase) {
    Write("Defs/Studio/Props/Cup.template");
    OviTemplateManager_AddSearchPath((Directory() + "\\DEFS").c_str(), false);
    EXPECT_TRUE(Load("studio.PROPS"));
    EXPECT_EQ(Schema(), Names{"Studio.Props.Cup#1"});
    EXPECT_TRUE(OviTemplateManager_LoadTemplate("STUDIO.props.cup"));
    EXPECT_EQ(Packages(), (Names{"Studio", "Studio.Props"}));
}

// -- single templates -----------------------------------------------------------------------------

TEST_F(PackageTest, ATemplateIsLoadedFromTheFileOfItsFullName) {
    Write("one/studio/props/Cup.template");
    Write("two/studio/props/Cup.template");
    Write("two/Top.template");
    AddPath("one");
    AddPath("two");
    EXPECT_TRUE(OviTemplateManager_LoadTemplate("studio.props.Cup"));
    EXPECT_EQ(OviType_GetFileName(OviTemplateManager_GetTemplate("studio.props.Cup")),
              Directory() + "/one\\studio\\props\\Cup.template");
    EXPECT_TRUE(OviTemplateManager_LoadTemplate("studio.props.Cup")) << "loaded already";
    EXPECT_TRUE(OviTemplateManager_LoadTemplate("Top"));
    for (const char* name : {"Cup", "studio.props", "", static_cast<const char*>(nullptr)})
        EXPECT_FALSE(OviTemplateManager_LoadTemplate(name));
    EXPECT_EQ(Errors(), Names{}) << "nothing is reported";
}

TEST_F(PackageTest, AFaultyTemplateFileIsPassedOver) {
    WriteFile("one/Cup.template", "no header");
    Write("two/Cup.template");
    AddPath("one");
    AddPath("two");
    EXPECT_TRUE(OviTemplateManager_LoadTemplate("Cup"));
    EXPECT_EQ(Errors(), Names{"1 1 Missing XML header element"});
    EXPECT_EQ(Schema(), Names{"Cup#1"});
}

// -- saving ---------------------------------------------------------------------------------------

TEST_F(PackageTest, ASavedFileNamesItsPackageAndTheOnesItUses) {
    OviTemplate* cup = Make("studio.props.Cup");
    AddAttribute(cup, "maker", Make("people.Maker"));
    const std::string file = PathOf("Cup.template");
    OviType_SetFileName(cup, file.c_str());
    EXPECT_TRUE(OviTemplateManager_SaveTemplateFile(file.c_str(), nullptr));
    const std::string text = ReadFile(file);
    EXPECT_NE(text.find("<templates package='studio.props'>"), std::string::npos) << text;
    EXPECT_NE(text.find("<using package='people'/>"), std::string::npos) << text;
    EXPECT_EQ(text.find("<using package='studio.props'"), std::string::npos) << text;
}

TEST_F(PackageTest, ASavedFileCountsAsLoadedUnderItsOwnName) {
    const std::string file = PathOf("New.template");
    const std::string copy = PathOf("Copy.template");
    OviType_SetFileName(Make("New"), file.c_str());
    OviObject_Delete(OviTemplateManager_GetTemplate("New"));
    EXPECT_TRUE(OviTemplateManager_SaveTemplateFile(file.c_str(), copy.c_str()));
    EXPECT_EQ(ReadFile(file), "");
    EXPECT_NE(ReadFile(copy), "");
    WriteSchema("New.template", "<templates><template name='Read'/></templates>");
    EXPECT_TRUE(OviTemplateManager_LoadTemplateFile(file.c_str()));
    EXPECT_EQ(Schema(), Names{});
}

TEST_F(PackageTest, AFileThatCannotBeWrittenIsReported) {
    const std::string path = Directory() + "/missing/New.template";
    EXPECT_FALSE(OviTemplateManager_SaveTemplateFile("any.template", path.c_str()));
    EXPECT_EQ(Errors(), Names{"1 -1 Unable to open file for writing"});
    EXPECT_STREQ(OviErrorItem_GetSourceName(OviErrorManager_GetErrorItemAt(0)), path.c_str());
    EXPECT_FALSE(OviTemplateManager_SaveTemplateFile(nullptr, nullptr));
}

} // namespace
