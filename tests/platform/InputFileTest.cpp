#include "platform/FileTest.h"

#ifndef _WIN32
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "support/Deadline.h"
#endif

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

TEST_F(InputFileTest, OpensNoDevicesAndNoPipes) {
    ASSERT_EQ(mkfifo(At("pipe").c_str(), 0600), 0);
    fs::create_symlink("pipe", root_ / "link");
    const Deadline deadline;
    for (const std::string& path : {At("pipe"), At("link"), std::string("/dev/zero")})
        EXPECT_EQ(ReadAll(path), "none") << path;
}

TEST_F(InputFileTest, TouchesNoPipeThatSomebodyWaitsAt) {
    ASSERT_EQ(mkfifo(At("pipe").c_str(), 0600), 0);
    const Deadline deadline;
    const int reader = open(At("pipe").c_str(), O_RDONLY | O_NONBLOCK);
    const int writer = open(At("pipe").c_str(), O_WRONLY | O_NONBLOCK);
    ASSERT_EQ(write(writer, "text", 4), 4);
    EXPECT_EQ(ReadAll(At("pipe")), "none");
    char buffer[8];
    EXPECT_EQ(read(reader, buffer, sizeof buffer), 4) << "it is still there";
    close(writer);
    close(reader);
}

TEST_F(InputFileTest, OpensAFileThroughALink) {
    Put("file", "x");
    fs::create_symlink("file", root_ / "link");
    EXPECT_EQ(ReadAll(At("link")), "x");
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

OVI_NOT_ON_WINDOWS(InputFileTest, OpensNoDevicesAndNoPipes, "FileWindowsTest has devices")
OVI_NOT_ON_WINDOWS(InputFileTest, TouchesNoPipeThatSomebodyWaitsAt,
                   "pipes have no place in the file system")
OVI_NOT_ON_WINDOWS(InputFileTest, OpensAFileThroughALink, "making links is for administrators")
OVI_NOT_ON_WINDOWS(InputFileTest, TellsAFailureFromTheEnd, "no file fails on demand")
OVI_NOT_ON_WINDOWS(InputFileTest, PrefersThePathAsWritten, "names that differ in case are one file")

#endif
