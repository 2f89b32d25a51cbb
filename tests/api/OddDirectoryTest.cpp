// Directories that hold what is no file, cannot be listed, or lead in a circle.

#include "api/PackageHost.h"
#include "support/NotOnWindows.h"

#ifndef _WIN32
#include <sys/stat.h>

#include "support/Deadline.h"
#include "support/OrdinaryUser.h"
#endif

namespace {

namespace fs = std::filesystem;

class OddDirectoryTest : public PackageTest {
protected:
    /// The sources of all diagnostics.
    static Names Sources() {
        Names sources;
        for (int i = 0; OviErrorItem* item = OviErrorManager_GetErrorItemAt(i); ++i)
            sources.emplace_back(OviErrorItem_GetSourceName(item));
        return sources;
    }

    /// Makes a package "chain" with links to further directories in it, one in the other, until the
    /// system follows them no more. Gives the path of the first that cannot be reached.
    std::string MakeChainOfLinks() {
        constexpr int kMostLinks = 40;
        for (int i = 0; i <= kMostLinks + 1; ++i)
            PathOf("links/" + std::to_string(i) + "/x");
        for (int i = 0; i <= kMostLinks; ++i)
            fs::create_directory_symlink("../" + std::to_string(i + 1),
                                         PathOf("links/" + std::to_string(i) + "/next"));
        PathOf("defs/x");
        fs::create_directory_symlink("../links/0", PathOf("defs/chain"));
        std::string end = Directory() + "/defs\\chain";
        for (int i = 0; i < kMostLinks; ++i)
            end += "\\next";
        return end;
    }
};

#ifndef _WIN32

TEST_F(OddDirectoryTest, APackageHasNoFilesButRegularOnes) {
    Write("defs/a/X.template");
    Write("elsewhere/Y.template");
    std::filesystem::create_symlink("../../elsewhere/Y.template", PathOf("defs/a/Y.template"));
    std::filesystem::create_symlink("/dev/zero", PathOf("defs/a/Device.template"));
    std::filesystem::create_symlink("missing", PathOf("defs/a/Lost.template"));
    ASSERT_EQ(mkfifo(PathOf("defs/a/Pipe.template").c_str(), 0600), 0);
    AddPath("defs");
    const Deadline deadline;
    EXPECT_TRUE(Load("a"));
    EXPECT_EQ(Schema(), (Names{"Y#1", "a.X#1"}));
    EXPECT_FALSE(OviTemplateManager_LoadTemplate("a.Pipe"));
    EXPECT_EQ(Errors(), Names{});
    const std::string pipe = PathOf("defs/a/Pipe.template");
    EXPECT_FALSE(OviTemplateManager_LoadTemplateFile(pipe.c_str()));
    EXPECT_EQ(Errors(), Names{"1 -1 Unable to open file '" + pipe + "' for reading"});
    OviErrorManager_Clear();
    EXPECT_FALSE(OviTemplateManager_SaveTemplateFile(pipe.c_str(), nullptr));
    EXPECT_EQ(Errors(), Names{"1 -1 Unable to open file for writing"});
}

TEST_F(OddDirectoryTest, ADirectoryThatCannotBeListedHidesNoOther) {
    const std::string end = MakeChainOfLinks();
    Write("defs/a/X.template");
    Write("defs/z/X.template");
    AddPath("defs");
    const Names packages = Packages();
    EXPECT_EQ(packages.size(), 42u);
    EXPECT_EQ(packages.front(), "a");
    EXPECT_EQ(packages.back(), "z");
    ASSERT_FALSE(Errors().empty());
    EXPECT_EQ(Errors()[0], "2 -1 Unable to list directory");
    EXPECT_EQ(Sources()[0], end);
    EXPECT_EQ(OviErrorManager_GetErrorItemCount(OVI_LEVEL_ERROR), 0);
}

TEST_F(OddDirectoryTest, ADirectoryThatCannotBeListedStopsNoLoading) {
    const std::string end = MakeChainOfLinks();
    Write("defs/a/X.template");
    Write("defs/z/X.template");
    EXPECT_EQ(AddPath("defs", true), ~0);
    EXPECT_EQ(Schema(), (Names{"a.X#1", "z.X#1"}));
    EXPECT_EQ(Errors(), Names{"2 -1 Unable to list directory"});
    EXPECT_EQ(Sources(), Names{end});
}

TEST_F(OddDirectoryTest, ADirectoryThatIsClosedHidesNoOther) {
    for (const char* name :
         {"defs/a/X.template", "defs/closed/inner/X.template", "defs/z/X.template"})
        Write(name);
    const std::string root = Directory() + "/defs";
    fs::permissions(root + "/closed", fs::perms::none);
    Names packages;
    {
        const OrdinaryUser user;
        if (!user.IsBound() || !user.CanReach(root))
            GTEST_SKIP() << "permissions do not bind this user, or close the directories above";
        AddPath("defs");
        packages = Packages();
    }
    fs::permissions(root + "/closed", fs::perms(0755));
    EXPECT_EQ(packages, (Names{"a", "z"}));
    ASSERT_FALSE(Errors().empty());
    EXPECT_EQ(Errors()[0], "2 -1 Unable to list directory");
    EXPECT_EQ(Sources()[0], root + "\\closed");
}

TEST_F(OddDirectoryTest, APackageWhoseDirectoryIsClosedIsTakenFromTheNextSearchPath) {
    Write("one/closed/X.template");
    Write("two/closed/Y.template");
    const std::string user = WriteSchema("U.template", "<templates><using package='closed'/>"
                                                       "<template name='U'/></templates>");
    const std::string directory = PathOf("one/closed/.");
    fs::permissions(directory, fs::perms::none);
    Names errors;
    bool loaded[2] = {};
    {
        const OrdinaryUser ordinary;
        if (!ordinary.IsBound() || !ordinary.CanReach(user))
            GTEST_SKIP() << "permissions do not bind this user, or close the directories above";
        OviTemplateManager_AddSearchPath((Directory() + "/one").c_str(), false);
        loaded[0] = Load("closed");
        OviTemplateManager_LoadTemplateFile(user.c_str());
        errors = Errors();
        OviTemplateManager_AddSearchPath((Directory() + "/two").c_str(), false);
        loaded[1] = Load("closed");
    }
    fs::permissions(directory, fs::perms(0755));
    EXPECT_FALSE(loaded[0]);
    EXPECT_EQ(errors, Names{"2 2 Package not found: closed"}) << "and that where it is used alone";
    EXPECT_TRUE(loaded[1]);
    EXPECT_EQ(Schema(), (Names{"U#1", "closed.Y#1"}));
}

TEST_F(OddDirectoryTest, ALinkBackIsPassedOverInSilence) {
    Write("defs/a/inner/X.template");
    Write("defs/z/X.template");
    fs::create_directory_symlink(".", PathOf("defs/self"));
    fs::create_directory_symlink("../..", PathOf("defs/a/inner/up"));
    fs::create_directory_symlink("../../a", PathOf("defs/a/inner/back"));
    EXPECT_EQ(AddPath("defs", true), ~0);
    EXPECT_EQ(Packages(), (Names{"a", "a.inner", "z"}));
    EXPECT_EQ(Schema(), (Names{"a.inner.X#1", "z.X#1"}));
    EXPECT_EQ(Errors(), Names{});
}

TEST_F(OddDirectoryTest, ALinkToADirectoryAsideIsAPackage) {
    Write("defs/a/X.template");
    PathOf("defs/b/x");
    fs::create_directory_symlink("../a", PathOf("defs/b/a"));
    AddPath("defs");
    EXPECT_EQ(Packages(), (Names{"a", "b", "b.a"}));
    EXPECT_EQ(Errors(), Names{});
}

#else

OVI_NOT_ON_WINDOWS(OddDirectoryTest, APackageHasNoFilesButRegularOnes,
                   "directories hold nothing else")
OVI_NOT_ON_WINDOWS(OddDirectoryTest, ADirectoryThatCannotBeListedHidesNoOther,
                   "making links is for administrators")
OVI_NOT_ON_WINDOWS(OddDirectoryTest, ADirectoryThatCannotBeListedStopsNoLoading,
                   "making links is for administrators")
OVI_NOT_ON_WINDOWS(OddDirectoryTest, ADirectoryThatIsClosedHidesNoOther,
                   "there are no permission bits")
OVI_NOT_ON_WINDOWS(OddDirectoryTest, APackageWhoseDirectoryIsClosedIsTakenFromTheNextSearchPath,
                   "there are no permission bits")
OVI_NOT_ON_WINDOWS(OddDirectoryTest, ALinkBackIsPassedOverInSilence,
                   "making links is for administrators")
OVI_NOT_ON_WINDOWS(OddDirectoryTest, ALinkToADirectoryAsideIsAPackage,
                   "making links is for administrators")

#endif

// The search path itself draws no report.
TEST_F(OddDirectoryTest, ASearchPathThatCannotBeListedIsNotReported) {
    WriteFile("file", "");
    OviTemplateManager_AddSearchPath((Directory() + "/file").c_str(), true);
    OviTemplateManager_AddSearchPath((Directory() + "/missing").c_str(), true);
    EXPECT_EQ(Packages(), Names{"none"});
    EXPECT_EQ(Errors(), Names{});
}

// Dots separate the parts of a package's name, so that one inside of a part leads elsewhere.
TEST_F(OddDirectoryTest, ADirectoryWithADotInItsNameIsListedButNotFound) {
    WriteSchema("defs/x.y/T.template", "<templates><template name='T'/></templates>");
    AddPath("defs");
    EXPECT_EQ(Packages(), Names{"x.y"});
    EXPECT_FALSE(Load("x.y"));
    EXPECT_EQ(Schema(), Names{});
    WriteSchema("defs/x/y/U.template", "<templates><template name='U'/></templates>");
    EXPECT_TRUE(Load("x.y"));
    EXPECT_EQ(Schema(), Names{"U#1"});
}

} // namespace
