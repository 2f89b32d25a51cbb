#include "platform/FileTest.h"

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

TEST_F(ListDirectoryTest, CountsLinksToDirectoriesAsDirectories) {
    fs::create_directory(root_ / "dir");
    Put("file", "");
    fs::create_symlink("dir", root_ / "dirLink");
    fs::create_symlink("file", root_ / "fileLink");
    fs::create_symlink("missing", root_ / "lostLink");
    EXPECT_EQ(List(root_.string(), false, true), (Names{"dir", "dirLink"}));
    EXPECT_EQ(List(root_.string(), true, false), (Names{"file", "fileLink", "lostLink"}));
}

TEST_F(ListDirectoryTest, PutsNamesThatDifferOnlyInCaseInByteOrder) {
    for (const char* name : {"b", "B", "a", "A"})
        Put(name, "");
    EXPECT_EQ(List(root_.string(), true, false), (Names{"A", "a", "B", "b"}));
}

#else

OVI_NOT_ON_WINDOWS(ListDirectoryTest, CountsLinksToDirectoriesAsDirectories,
                   "making links is for administrators")
OVI_NOT_ON_WINDOWS(ListDirectoryTest, PutsNamesThatDifferOnlyInCaseInByteOrder,
                   "names that differ in case are one file")

#endif
