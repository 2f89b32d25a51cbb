// What Windows does to files in its own way.
#ifdef _WIN32

#include "platform/FileTest.h"

#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>

#include <thread>

using namespace Kor;
namespace fs = std::filesystem;

namespace {

/// A file that another program has open, sharing it as it likes.
class FileInUse {
public:
    FileInUse(const fs::path& path, DWORD access, DWORD share)
        : handle_(CreateFileW(path.c_str(), access, share, nullptr, OPEN_EXISTING,
                              FILE_ATTRIBUTE_NORMAL, nullptr)) {
        EXPECT_NE(handle_, INVALID_HANDLE_VALUE);
    }
    ~FileInUse() { CloseHandle(handle_); }
    FileInUse(const FileInUse&) = delete;
    FileInUse& operator=(const FileInUse&) = delete;

private:
    HANDLE handle_;
};

/// A file that may not be written while this lives.
class ReadOnly {
public:
    explicit ReadOnly(const fs::path& path) : path_(path) {
        SetFileAttributesW(path_.c_str(), FILE_ATTRIBUTE_READONLY);
    }
    ~ReadOnly() { SetFileAttributesW(path_.c_str(), FILE_ATTRIBUTE_NORMAL); }
    ReadOnly(const ReadOnly&) = delete;
    ReadOnly& operator=(const ReadOnly&) = delete;

private:
    fs::path path_;
};

using FileWindowsTest = FileTest;

TEST_F(FileWindowsTest, AReadOnlyFileIsReadAndNotReplaced) {
    Put("file", "old");
    const ReadOnly readOnly(root_ / "file");
    EXPECT_EQ(ReadAll(At("file")), "old");
    EXPECT_FALSE(WriteAll(At("file"), "new"));
    EXPECT_EQ(Get("file"), "old");
    EXPECT_EQ(CountFiles(), 1);
}

TEST_F(FileWindowsTest, AFileThatSomebodyReadsStaysAsItWas) {
    Put("file", "old");
    const FileInUse reader(root_ / "file", GENERIC_READ, FILE_SHARE_READ);
    EXPECT_EQ(ReadAll(At("file")), "old");
    EXPECT_FALSE(WriteAll(At("file"), "new"));
    EXPECT_EQ(Get("file"), "old");
    EXPECT_EQ(CountFiles(), 1);
}

TEST_F(FileWindowsTest, AFileThatSomebodyOpensMeanwhileStaysAsItWas) {
    Put("file", "old");
    {
        const auto file = OutputFile::Create(At("file").c_str());
        ASSERT_TRUE(file && file->Write("new"));
        const FileInUse reader(root_ / "file", GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE);
        EXPECT_FALSE(file->Commit());
    }
    EXPECT_EQ(Get("file"), "old");
    EXPECT_EQ(CountFiles(), 1);
}

TEST_F(FileWindowsTest, AFileThatSomebodyLooksAtForAMomentIsReplacedAfterIt) {
    Put("file", "old");
    const auto file = OutputFile::Create(At("file").c_str());
    ASSERT_TRUE(file && file->Write("new"));
    auto reader = std::make_unique<FileInUse>(root_ / "file", GENERIC_READ, FILE_SHARE_READ);
    std::thread moment([&] {
        Sleep(60);
        reader.reset();
    });
    EXPECT_TRUE(file->Commit());
    moment.join();
    EXPECT_EQ(Get("file"), "new");
    EXPECT_EQ(CountFiles(), 1);
}

TEST_F(FileWindowsTest, AFileThatSomebodyKeepsToHimselfCannotBeRead) {
    Put("file", "old");
    const FileInUse owner(root_ / "file", GENERIC_READ | GENERIC_WRITE, 0);
    EXPECT_EQ(ReadAll(At("file")), "none");
    EXPECT_FALSE(WriteAll(At("file"), "new"));
    EXPECT_EQ(CountFiles(), 1);
}

TEST_F(FileWindowsTest, DevicesAreNeitherReadNorWritten) {
    for (const char* name : {"NUL", "nul", "CON", "CONIN$", "COM1", "\\\\.\\NUL",
                             "\\\\.\\PhysicalDrive0", "\\\\.\\pipe\\ovi"}) {
        EXPECT_EQ(InputFile::Open(name), nullptr) << name;
        EXPECT_EQ(OutputFile::Create(name), nullptr) << name;
    }
    EXPECT_EQ(InputFile::Open(At("NUL").c_str()), nullptr);
    EXPECT_EQ(CountFiles(), 0);
}

/// As long as it is open, so that the library can be seen to wait or not.
TEST_F(FileWindowsTest, APipeIsNeitherReadNorWritten) {
    const std::string name = "\\\\.\\pipe\\ovi-" + std::to_string(GetCurrentProcessId());
    const HANDLE pipe =
        CreateNamedPipeA(name.c_str(), PIPE_ACCESS_DUPLEX, PIPE_TYPE_BYTE, 1, 100, 100, 0, nullptr);
    ASSERT_NE(pipe, INVALID_HANDLE_VALUE);
    EXPECT_EQ(InputFile::Open(name.c_str()), nullptr);
    EXPECT_EQ(OutputFile::Create(name.c_str()), nullptr);
    CloseHandle(pipe);
}

TEST_F(FileWindowsTest, ATextThatIsNotCompleteYetCannotBeOpened) {
    const auto file = OutputFile::Create(At("file").c_str());
    ASSERT_TRUE(file && file->Write("text"));
    ASSERT_EQ(CountFiles(), 1);
    const fs::path hidden = fs::directory_iterator(root_)->path();
    EXPECT_EQ(ReadAll(hidden.u8string()), "none");
}

TEST_F(FileWindowsTest, ATextHasANameThatNobodyForesees) {
    const std::string process = std::to_string(GetCurrentProcessId());
    constexpr int kTaken = 1000;
    for (int i = 0; i < kTaken; ++i)
        Put(".ovi-" + process + "-" + std::to_string(i) + ".tmp", "");
    EXPECT_TRUE(WriteAll(At("file"), "new"));
    EXPECT_EQ(Get("file"), "new");
    EXPECT_EQ(CountFiles(), kTaken + 1);
}

TEST_F(FileWindowsTest, ACharacterThatNoNameMayHaveMakesNoFile) {
    for (const char* name : {"a*b", "a?b", "a|b", "a<b"})
        EXPECT_EQ(OutputFile::Create(At(name).c_str()), nullptr) << name;
    EXPECT_EQ(CountFiles(), 0);
}

} // namespace

#endif
