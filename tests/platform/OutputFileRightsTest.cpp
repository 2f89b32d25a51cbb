// To whom a file belongs that replaces another one.

#include "platform/FileTest.h"

#ifndef _WIN32
#include <cstdlib>
#include <optional>
#include <sstream>

#include <grp.h>
#include <sys/stat.h>
#include <unistd.h>

#include "support/OrdinaryUser.h"
#endif

#include "support/NotOnWindows.h"

using namespace Kor;
namespace fs = std::filesystem;

using OutputFileRightsTest = FileTest;

#ifndef _WIN32

/// The owner, the group and all bits of a file.
std::string RightsOf(const std::string& path) {
    struct stat status {};
    EXPECT_EQ(stat(path.c_str(), &status), 0);
    std::ostringstream text;
    text << status.st_uid << ' ' << status.st_gid << ' ' << std::oct << (status.st_mode & 07777);
    return text.str();
}

TEST_F(OutputFileRightsTest, KeepsOwnerGroupAndAllPermissions) {
    if (geteuid() != 0)
        GTEST_SKIP() << "only root may give files away";
    Put("file", "old");
    ASSERT_EQ(chown(At("file").c_str(), 65534, 65533), 0);
    ASSERT_EQ(chmod(At("file").c_str(), 06750), 0);
    EXPECT_TRUE(WriteAll(At("file"), "new"));
    EXPECT_EQ(RightsOf(At("file")), "65534 65533 6750");
}

TEST_F(OutputFileRightsTest, KeepsTheGroupWhereItCannotKeepTheOwner) {
    if (geteuid() != 0)
        GTEST_SKIP() << "only root may take on another's rights";
    fs::permissions(root_, fs::perms(0777));
    Put("mine/file", "old");
    fs::permissions(root_ / "mine", fs::perms(0777));
    ASSERT_EQ(chown(At("mine/file").c_str(), 1, 65533), 0);
    ASSERT_EQ(chmod(At("mine/file").c_str(), 06666), 0);
    bool written = false;
    {
        const OrdinaryUser user(65533);
        if (!user.CanReach(At("mine/file")))
            GTEST_SKIP() << "the directories above are closed to others";
        written = WriteAll(At("mine/file"), "new");
    }
    EXPECT_TRUE(written);
    EXPECT_EQ(RightsOf(At("mine/file")), "65534 65533 2666")
        << "whoever saves is no other's stand-in";
}

TEST_F(OutputFileRightsTest, RunsWithTheRightsOfNoGroupWhereItCannotKeepTheGroup) {
    if (geteuid() != 0)
        GTEST_SKIP() << "only root may give files away";
    Put("mine/file", "old");
    fs::permissions(root_ / "mine", fs::perms(0777));
    ASSERT_EQ(chown(At("mine/file").c_str(), 65534, 65533), 0);
    ASSERT_EQ(chmod(At("mine/file").c_str(), 02666), 0);
    bool written = false;
    {
        const OrdinaryUser user;
        if (!user.CanReach(At("mine/file")))
            GTEST_SKIP() << "the directories above are closed to others";
        written = WriteAll(At("mine/file"), "new");
    }
    EXPECT_TRUE(written);
    EXPECT_EQ(RightsOf(At("mine/file")), "65534 " + std::to_string(getegid()) + " 666");
}

std::vector<gid_t> GetGroups() {
    std::vector<gid_t> groups(static_cast<size_t>(getgroups(0, nullptr)));
    groups.resize(static_cast<size_t>(getgroups(static_cast<int>(groups.size()), groups.data())));
    return groups;
}

/// A group that this process belongs to besides the one that its files get. Root joins one while
/// this lives.
class OtherGroup {
public:
    OtherGroup() : before_(GetGroups()) {
        constexpr gid_t kJoined = 65533;
        hasJoined_ = geteuid() == 0 && setgroups(1, &kJoined) == 0;
    }
    ~OtherGroup() {
        if (hasJoined_ && setgroups(before_.size(), before_.data()) != 0)
            std::abort();
    }
    OtherGroup(const OtherGroup&) = delete;
    OtherGroup& operator=(const OtherGroup&) = delete;

    static std::optional<gid_t> Get() {
        for (const gid_t group : GetGroups()) {
            if (group != getegid())
                return group;
        }
        return std::nullopt;
    }

private:
    std::vector<gid_t> before_;
    bool hasJoined_ = false;
};

TEST_F(OutputFileRightsTest, KeepsAGroupThatTheUserBelongsToBesidesTheFirst) {
    const OtherGroup joined;
    const auto group = OtherGroup::Get();
    if (!group)
        GTEST_SKIP() << "whoever runs this belongs to one group alone";
    Put("mine/file", "old");
    fs::permissions(root_ / "mine", fs::perms(0777));
    const uid_t owner = geteuid() == 0 ? 65534 : geteuid();
    ASSERT_EQ(chown(At("mine/file").c_str(), owner, *group), 0);
    ASSERT_EQ(chmod(At("mine/file").c_str(), 0664), 0);
    bool written = false;
    {
        const OrdinaryUser user;
        if (!user.CanReach(At("mine/file")))
            GTEST_SKIP() << "the directories above are closed to others";
        written = WriteAll(At("mine/file"), "new");
    }
    EXPECT_TRUE(written);
    EXPECT_EQ(RightsOf(At("mine/file")),
              std::to_string(owner) + " " + std::to_string(*group) + " 664");
}

#else

OVI_NOT_ON_WINDOWS(OutputFileRightsTest, KeepsOwnerGroupAndAllPermissions,
                   "there are no permission bits")
OVI_NOT_ON_WINDOWS(OutputFileRightsTest, KeepsTheGroupWhereItCannotKeepTheOwner,
                   "there are no permission bits")
OVI_NOT_ON_WINDOWS(OutputFileRightsTest, RunsWithTheRightsOfNoGroupWhereItCannotKeepTheGroup,
                   "there are no permission bits")
OVI_NOT_ON_WINDOWS(OutputFileRightsTest, KeepsAGroupThatTheUserBelongsToBesidesTheFirst,
                   "there are no permission bits")

#endif
