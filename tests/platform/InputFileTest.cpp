#include "platform/FileTest.h"

#include "support/NotOnWindows.h"

using namespace Kor;
using namespace std::string_literals;
namespace fs = std::filesystem;

using InputFileTest = FileTest;

TEST_F(InputFileTest, ReadsBytesAsTheyAre) {
    const std::string bytes = "a\r\nb\n\0\x1A\xFF"s;
    Put("file", bytes);
    EXPECT_EQ(ReadAll(At("file")), bytes);
    Put("empty", "");
    EXPECT_EQ(ReadAll(At("empty")), "");
}

TEST_F(InputFileTest, OpensNothingButFiles) {
    EXPECT_EQ(ReadAll(At("missing")), "none");
    EXPECT_EQ(ReadAll(root_.string()), "none");
    EXPECT_EQ(ReadAll(""), "none");
    EXPECT_EQ(InputFile::Open(nullptr), nullptr);
}

TEST_F(InputFileTest, TakesBackslashesAsSeparators) {
    Put("a/b/file", "x");
    EXPECT_EQ(ReadAll(root_.string() + "\\a\\b\\file"), "x");
    EXPECT_EQ(ReadAll(root_.string() + "\\a/b\\\\file"), "x");
}

TEST_F(InputFileTest, FindsPathsWithoutRegardToCase) {
    Put("Vehicles/Cars/Sedan.template", "x");
    EXPECT_EQ(ReadAll(At("vehicles\\CARS\\sedan.TEMPLATE")), "x");
    EXPECT_EQ(ReadAll(At("Vehicles/cars/../Cars/./SEDAN.template")), "x");
    EXPECT_EQ(ReadAll(At("vehicles/bikes/Sedan.template")), "none");
    EXPECT_EQ(ReadAll(At("vehicles/cars/Sedan")), "none");
}

TEST_F(InputFileTest, ReadsTextsInUtf8Paths) {
    const std::string name = "\xC3\xA4\xE6\x97\xA5.txt";
    ASSERT_TRUE(WriteAll(root_.string() + "/" + name, "x"));
    EXPECT_EQ(ReadAll(root_.string() + "/" + name), "x");
    EXPECT_EQ(List(root_.string(), true, false), (Names{name}));
}

TEST_F(InputFileTest, FindsRelativePaths) {
    Put("Dir/File", "x");
    const fs::path previous = fs::current_path();
    fs::current_path(root_);
    EXPECT_EQ(ReadAll("dir\\file"), "x");
    EXPECT_EQ(ReadAll(".\\DIR\\FILE"), "x");
    EXPECT_TRUE(WriteAll("plain", "y"));
    EXPECT_EQ(List("", true, true), (Names{"Dir", "plain"}));
    fs::current_path(previous);
    EXPECT_EQ(Get("plain"), "y");
}

#ifndef _WIN32

TEST_F(InputFileTest, PrefersThePathAsWritten) {
    Put("File", "1");
    Put("file", "2");
    Put("FILE", "3");
    EXPECT_EQ(ReadAll(At("file")), "2");
    EXPECT_EQ(ReadAll(At("File")), "1");
    EXPECT_EQ(ReadAll(At("fILE")), "3") << "the first in byte order";
}

TEST_F(InputFileTest, TellsAFailureFromTheEnd) {
    char buffer[8];
    Put("file", "x");
    const auto file = InputFile::Open(At("file").c_str());
    while (file->Read(buffer, sizeof buffer) > 0)
        EXPECT_FALSE(file->HasFailed());
    EXPECT_FALSE(file->HasFailed());
    // Nothing of a process's memory is at address 0.
    const auto broken = InputFile::Open("/proc/self/mem");
    if (!broken)
        GTEST_SKIP() << "this system has no such file";
    EXPECT_EQ(broken->Read(buffer, sizeof buffer), 0u);
    EXPECT_TRUE(broken->HasFailed());
}

#else

OVI_NOT_ON_WINDOWS(InputFileTest, TellsAFailureFromTheEnd, "no file fails on demand")
OVI_NOT_ON_WINDOWS(InputFileTest, PrefersThePathAsWritten, "names that differ in case are one file")

#endif
