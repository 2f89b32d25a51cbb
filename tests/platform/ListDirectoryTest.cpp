#include "platform/FileTest.h"

#ifndef _WIN32
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>
#endif

#include "support/NotOnWindows.h"

using namespace Kor;
namespace fs = std::filesystem;

using ListDirectoryTest = FileTest;

TEST_F(ListDirectoryTest, GivesFilesAndDirectoriesAsAsked) {
    Put("b.template", "");
    Put("a/inner", "");
    EXPECT_EQ(List(root_.string(), true, false), (Names{"b.template"}));
    EXPECT_EQ(List(root_.string(), false, true), (Names{"a"}));
    EXPECT_EQ(List(root_.string(), true, true), (Names{"a", "b.template"}));
    EXPECT_EQ(List(root_.string(), false, false), Names());
}

TEST_F(ListDirectoryTest, IsInAscendingOrderWithoutRegardToCase) {
    for (const char* name : {"beta", "Alpha", "a_b", "aab", "ABC", "B", "a", "2", "10"})
        Put(name, "");
    EXPECT_EQ(List(root_.string(), true, false),
              (Names{"10", "2", "a", "aab", "ABC", "Alpha", "a_b", "B", "beta"}));
}

TEST_F(ListDirectoryTest, SkipsNamesThatBeginWithADot) {
    Put(".hidden", "");
    Put(".dir/inner", "");
    Put("x.y", "");
    EXPECT_EQ(List(root_.string(), true, true), (Names{"x.y"}));
}

TEST_F(ListDirectoryTest, TakesTheDirectoryWithOrWithoutASeparatorAtItsEnd) {
    Put("Dir/file", "");
    EXPECT_EQ(List(At("Dir"), true, true), (Names{"file"}));
    EXPECT_EQ(List(At("Dir\\"), true, true), (Names{"file"}));
    EXPECT_EQ(List(At("dir\\"), true, true), (Names{"file"}));
}

TEST_F(ListDirectoryTest, FailsWithoutADirectory) {
    Put("file", "");
    Names names{"old"};
    EXPECT_FALSE(ListDirectory(At("missing"), true, true, names));
    EXPECT_FALSE(ListDirectory(At("file"), true, true, names));
    EXPECT_EQ(names, Names());
}

#ifndef _WIN32

/// Leaves the entry that a program makes where others may talk to it.
void MakeSocket(const std::string& path) {
    const int number = socket(AF_UNIX, SOCK_STREAM, 0);
    const fs::path previous = fs::current_path();
    fs::current_path(fs::path(path).parent_path()); // the system takes short paths alone
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    fs::path(path).filename().string().copy(address.sun_path, sizeof address.sun_path - 1);
    EXPECT_EQ(bind(number, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
    fs::current_path(previous);
    close(number);
}

TEST_F(ListDirectoryTest, CountsLinksToDirectoriesAsDirectories) {
    fs::create_directory(root_ / "dir");
    Put("file", "");
    fs::create_symlink("dir", root_ / "dirLink");
    fs::create_symlink("file", root_ / "fileLink");
    fs::create_symlink("missing", root_ / "lostLink");
    EXPECT_EQ(List(root_.string(), false, true), (Names{"dir", "dirLink"}));
    EXPECT_EQ(List(root_.string(), true, false), (Names{"file", "fileLink"}));
}

TEST_F(ListDirectoryTest, LeavesOutWhatIsNeitherFileNorDirectory) {
    Put("file", "");
    ASSERT_EQ(mkfifo(At("pipe").c_str(), 0600), 0);
    MakeSocket(At("socket"));
    fs::create_symlink("/dev/null", root_ / "device");
    fs::create_symlink("pipe", root_ / "pipeLink");
    fs::create_symlink("self", root_ / "self");
    EXPECT_EQ(List(root_.string(), true, true), (Names{"file"}));
}

TEST_F(ListDirectoryTest, PutsNamesThatDifferOnlyInCaseInByteOrder) {
    for (const char* name : {"b", "B", "a", "A"})
        Put(name, "");
    EXPECT_EQ(List(root_.string(), true, false), (Names{"A", "a", "B", "b"}));
}

#else

OVI_NOT_ON_WINDOWS(ListDirectoryTest, CountsLinksToDirectoriesAsDirectories,
                   "making links is for administrators")
OVI_NOT_ON_WINDOWS(ListDirectoryTest, LeavesOutWhatIsNeitherFileNorDirectory,
                   "directories hold nothing else")
OVI_NOT_ON_WINDOWS(ListDirectoryTest, PutsNamesThatDifferOnlyInCaseInByteOrder,
                   "names that differ in case are one file")

#endif
