// Saving where writing is not possible. What a full disk or a protected directory does can only be
// had where the system lets a test arrange it.
#ifndef _WIN32

#include <cstdlib>
#include <filesystem>

#include <unistd.h>

#include "api/SceneHost.h"
#include "support/FileSizeLimit.h"

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

/// Whom permissions bind, also when the tests are run by root.
class OrdinaryUser {
public:
    OrdinaryUser() : previous_(getuid()) {
        bound_ = previous_ != 0 || setresuid(kNobody, kNobody, previous_) == 0;
    }
    ~OrdinaryUser() {
        if (getuid() != previous_ && setresuid(previous_, previous_, previous_) != 0)
            std::abort();
    }
    bool IsBound() const { return bound_; }

private:
    static constexpr uid_t kNobody = 65534;
    uid_t previous_;
    bool bound_ = false;
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

TEST_F(SceneFileFailureTest, ReportsADeviceThatIsFull) {
    if (!fs::is_character_file("/dev/full"))
        GTEST_SKIP() << "this system has no such device";
    const std::string link = PathOf("links/full.asset");
    fs::create_symlink("/dev/full", link);
    EXPECT_FALSE(OviAssetManager_SaveScene(link.c_str()));
    EXPECT_EQ(Errors(), Lines{"1 -1 Unable to open file for writing"});
    EXPECT_TRUE(fs::is_symlink(link));
    EXPECT_TRUE(fs::is_character_file("/dev/full"));
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
OVI_NOT_ON_WINDOWS(SceneFileFailureTest, ReportsADeviceThatIsFull,
                   "there is no device that is always full")

#endif

TEST_F(SceneFileFailureTest, ReportsAMissingDirectory) {
    const std::string path = Directory() + "/nowhere/scene.asset";
    EXPECT_FALSE(OviAssetManager_SaveScene(path.c_str()));
    EXPECT_EQ(Errors(), Lines{"1 -1 Unable to open file for writing"});
    EXPECT_FALSE(fs::exists(path));
}
