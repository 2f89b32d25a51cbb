// Saving where writing is not possible. What a full disk or a protected directory does can only be
// had where the system lets a test arrange it.
#ifndef _WIN32

#include <cstdlib>
#include <filesystem>

#include <sys/stat.h>

#include "api/SceneHost.h"
#include "support/Deadline.h"
#include "support/FileSizeLimit.h"
#include "support/OrdinaryUser.h"

namespace fs = std::filesystem;

namespace {

/// A scene file with one asset in it, and a scene of many assets that is to replace it.
class SceneFileFailureTest : public SceneTest {
protected:
    void SetUp() override {
        SceneTest::SetUp();
        char name[] = "/tmp/ovi-scenes-XXXXXX";
        ASSERT_NE(mkdtemp(name), nullptr);
        folder_ = name;
        fs::permissions(folder_, fs::perms(0755));
        OviAssetManager_NewAsset("old");
        ASSERT_TRUE(OviAssetManager_SaveScene(Scene().c_str()));
        old_ = ReadFile(Scene());
        for (int i = 0; i < 3000; ++i)
            OviAssetManager_NewAsset(nullptr);
    }

    void TearDown() override {
        fs::remove_all(folder_);
        SceneTest::TearDown();
    }

    /// In a directory of its own that every user can reach: the tests' output may lie below a home.
    std::string Scene() { return folder_ + "/scene.asset"; }

    /// Expects that saving fails, is reported, and leaves the old file and nothing else.
    void ExpectFailure() {
        EXPECT_FALSE(OviAssetManager_SaveScene(Scene().c_str()));
        EXPECT_EQ(Errors(), Lines{"1 -1 Unable to open file for writing"});
        EXPECT_EQ(OviErrorItem_GetSourceName(OviErrorManager_GetErrorItemAt(0)), Scene());
        EXPECT_TRUE(ReadFile(Scene()) == old_) << "the old file changed";
        EXPECT_EQ(std::distance(fs::directory_iterator(folder_), fs::directory_iterator()), 1);
    }

    std::string folder_;
    std::string old_;
};

} // namespace

TEST_F(SceneFileFailureTest, LeavesTheOldFileWhenTheDiskIsFull) {
    for (rlim_t size : {rlim_t(0), rlim_t(1), rlim_t(100), rlim_t(5000)}) {
        OviErrorManager_Clear();
        const FileSizeLimit limit(size);
        ExpectFailure();
    }
    OviErrorManager_Clear();
    EXPECT_TRUE(OviAssetManager_SaveScene(Scene().c_str()));
    EXPECT_NE(ReadFile(Scene()), old_);
    EXPECT_TRUE(Errors().empty());
}

TEST_F(SceneFileFailureTest, LeavesNoFileWhereNoneWas) {
    const FileSizeLimit limit(100);
    const std::string path = PathOf("fresh/scene.asset");
    EXPECT_FALSE(OviAssetManager_SaveScene(path.c_str()));
    EXPECT_TRUE(fs::is_empty(fs::path(path).parent_path()));
}

TEST_F(SceneFileFailureTest, LeavesTheOldFileInADirectoryThatCannotBeWritten) {
    const auto directory = fs::path(Scene()).parent_path();
    fs::permissions(directory, fs::perms(0555));
    {
        const OrdinaryUser user;
        if (!user.IsBound())
            GTEST_SKIP() << "permissions do not bind this user";
        ExpectFailure();
    }
    fs::permissions(directory, fs::perms(0755));
}

TEST_F(SceneFileFailureTest, LeavesAFileThatIsWriteProtected) {
    const auto directory = fs::path(Scene()).parent_path();
    fs::permissions(directory, fs::perms(0777));
    fs::permissions(Scene(), fs::perms(0444));
    {
        const OrdinaryUser user;
        if (!user.IsBound())
            GTEST_SKIP() << "permissions do not bind this user";
        ExpectFailure();
    }
    fs::permissions(Scene(), fs::perms(0644));
}

TEST_F(SceneFileFailureTest, SavesOntoNothingButFiles) {
    const std::string path = PathOf("odd/scene.asset");
    const Deadline deadline;
    for (const char* target : {"/dev/null", "pipe"}) {
        fs::remove(path);
        ASSERT_TRUE(*target == '/' || mkfifo(PathOf("odd/pipe").c_str(), 0600) == 0);
        fs::create_symlink(target, path);
        OviErrorManager_Clear();
        EXPECT_FALSE(OviAssetManager_SaveScene(path.c_str()));
        EXPECT_EQ(Errors(), Lines{"1 -1 Unable to open file for writing"});
        EXPECT_EQ(OviErrorItem_GetSourceName(OviErrorManager_GetErrorItemAt(0)), path);
        EXPECT_TRUE(fs::is_symlink(path) && fs::is_other(path));
        ::testing::internal::CaptureStderr();
        EXPECT_FALSE(OviAssetManager_LoadScene(path.c_str()));
        EXPECT_EQ(::testing::internal::GetCapturedStderr(), "Unable to open file '" + path + "'\n");
    }
}

#else

#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>

#include <filesystem>

#include "api/SceneHost.h"
#include "support/NotOnWindows.h"

namespace fs = std::filesystem;

namespace {

/// A scene file with one asset in it, and a scene of two that is to replace it.
class SceneFileFailureTest : public SceneTest {
protected:
    void SetUp() override {
        SceneTest::SetUp();
        scene_ = PathOf("folder/scene.asset");
        OviAssetManager_NewAsset("old");
        ASSERT_TRUE(OviAssetManager_SaveScene(scene_.c_str()));
        old_ = ReadFile(scene_);
        OviAssetManager_NewAsset("new");
    }

    /// Expects that saving fails, is reported, and leaves the old file and nothing else.
    void ExpectFailure() {
        EXPECT_FALSE(OviAssetManager_SaveScene(scene_.c_str()));
        EXPECT_EQ(Errors(), Lines{"1 -1 Unable to open file for writing"});
        EXPECT_EQ(OviErrorItem_GetSourceName(OviErrorManager_GetErrorItemAt(0)), scene_);
        EXPECT_EQ(ReadFile(scene_), old_);
        const auto folder = fs::u8path(scene_).parent_path();
        EXPECT_EQ(std::distance(fs::directory_iterator(folder), fs::directory_iterator()), 1);
    }

    std::string scene_;
    std::string old_;
};

} // namespace

TEST_F(SceneFileFailureTest, LeavesAFileThatIsWriteProtected) {
    const auto path = fs::u8path(scene_).wstring();
    SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_READONLY);
    ExpectFailure();
    SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_NORMAL);
}

TEST_F(SceneFileFailureTest, LeavesAFileThatAnotherProgramHasOpen) {
    const HANDLE file = CreateFileW(fs::u8path(scene_).wstring().c_str(), GENERIC_READ,
                                    FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
    ASSERT_NE(file, INVALID_HANDLE_VALUE);
    ExpectFailure();
    CloseHandle(file);
    EXPECT_TRUE(OviAssetManager_SaveScene(scene_.c_str()));
    EXPECT_NE(ReadFile(scene_), old_);
}

OVI_NOT_ON_WINDOWS(SceneFileFailureTest, LeavesTheOldFileWhenTheDiskIsFull,
                   "a process cannot limit its files")
OVI_NOT_ON_WINDOWS(SceneFileFailureTest, LeavesNoFileWhereNoneWas,
                   "a process cannot limit its files")
OVI_NOT_ON_WINDOWS(SceneFileFailureTest, LeavesTheOldFileInADirectoryThatCannotBeWritten,
                   "there are no permission bits")
OVI_NOT_ON_WINDOWS(SceneFileFailureTest, SavesOntoNothingButFiles,
                   "FileWindowsTest has devices and pipes")

#endif

TEST_F(SceneFileFailureTest, ReportsAMissingDirectory) {
    const std::string path = Directory() + "/nowhere/scene.asset";
    EXPECT_FALSE(OviAssetManager_SaveScene(path.c_str()));
    EXPECT_EQ(Errors(), Lines{"1 -1 Unable to open file for writing"});
    EXPECT_FALSE(fs::exists(path));
}
