#include "platform/FileTest.h"

#ifndef _WIN32
#include <csignal>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "support/Deadline.h"
#include "support/FileSizeLimit.h"
#endif

#include "support/NotOnWindows.h"

using namespace Kor;
using namespace std::string_literals;
namespace fs = std::filesystem;

using OutputFileTest = FileTest;

TEST_F(OutputFileTest, MakesAFileOfTheBytesAsTheyAre) {
    EXPECT_TRUE(WriteAll(At("file"), "a\r\nb\n\0\xFF"s));
    EXPECT_EQ(Get("file"), "a\r\nb\n\0\xFF"s);
    EXPECT_EQ(CountFiles(), 1);
}

TEST_F(OutputFileTest, MakesAnEmptyFile) {
    EXPECT_TRUE(WriteAll(At("file"), ""));
    EXPECT_TRUE(fs::is_regular_file(root_ / "file"));
    EXPECT_EQ(Get("file"), "");
}

TEST_F(OutputFileTest, ReplacesAFileOnlyAtCommit) {
    Put("file", "old text");
    const auto file = OutputFile::Create(At("file").c_str());
    ASSERT_TRUE(file);
    EXPECT_TRUE(file->Write("ne"));
    EXPECT_TRUE(file->Write("w"));
    EXPECT_EQ(Get("file"), "old text");
    EXPECT_TRUE(file->Commit());
    EXPECT_EQ(Get("file"), "new");
    EXPECT_EQ(CountFiles(), 1);
}

TEST_F(OutputFileTest, LeavesTheOldFileWithoutCommit) {
    Put("file", "old");
    {
        const auto file = OutputFile::Create(At("file").c_str());
        ASSERT_TRUE(file);
        EXPECT_TRUE(file->Write("new"));
        EXPECT_EQ(List(root_.string(), true, true), (Names{"file"}))
            << "nothing half-written shows";
    }
    EXPECT_EQ(Get("file"), "old");
    EXPECT_EQ(CountFiles(), 1);
}

TEST_F(OutputFileTest, LeavesNoFileWithoutCommit) {
    ASSERT_TRUE(OutputFile::Create(At("file").c_str()));
    EXPECT_EQ(CountFiles(), 0);
}

TEST_F(OutputFileTest, TakesNothingAfterCommit) {
    const auto file = OutputFile::Create(At("file").c_str());
    ASSERT_TRUE(file && file->Write("x") && file->Commit());
    EXPECT_FALSE(file->Write("y"));
    EXPECT_FALSE(file->Commit());
    EXPECT_EQ(Get("file"), "x");
}

TEST_F(OutputFileTest, LetsTwoWritersOfOneFileBeIndependent) {
    const auto first = OutputFile::Create(At("file").c_str());
    const auto second = OutputFile::Create(At("file").c_str());
    ASSERT_TRUE(first && second);
    EXPECT_TRUE(first->Write("first") && second->Write("second"));
    EXPECT_TRUE(second->Commit());
    EXPECT_TRUE(first->Commit());
    EXPECT_EQ(Get("file"), "first");
    EXPECT_EQ(CountFiles(), 1);
}

TEST_F(OutputFileTest, CannotBeMadeWhereNoFileCanBe) {
    EXPECT_EQ(OutputFile::Create(At("missing/file").c_str()), nullptr);
    EXPECT_EQ(OutputFile::Create(root_.string().c_str()), nullptr);
    EXPECT_EQ(OutputFile::Create(At("new/").c_str()), nullptr);
    EXPECT_EQ(OutputFile::Create(""), nullptr);
    EXPECT_EQ(OutputFile::Create(nullptr), nullptr);
    EXPECT_EQ(CountFiles(), 0);
}

TEST_F(OutputFileTest, FindsItsDirectoryWithoutRegardToCase) {
    fs::create_directories(root_ / "Scenes" / "Old");
    EXPECT_TRUE(WriteAll(At("scenes\\OLD\\a.asset"), "x"));
    EXPECT_EQ(Get("Scenes/Old/a.asset"), "x");
}

TEST_F(OutputFileTest, NamesTheTextsOfTwoWritersWithoutARule) {
    const auto first = OutputFile::Create(At("file").c_str());
    const auto second = OutputFile::Create(At("file").c_str());
    ASSERT_TRUE(first && second);
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(root_))
        names.push_back(entry.path().filename().string());
    ASSERT_EQ(names.size(), 2u);
    ASSERT_EQ(names[0].size(), names[1].size());
    int same = 0;
    for (size_t i = 0; i < names[0].size(); ++i)
        same += names[0][i] == names[1][i] ? 1 : 0;
    EXPECT_LT(same, 21) << names[0] << " " << names[1] << ": a few hits, and what all names have";
}

#ifndef _WIN32

TEST_F(OutputFileTest, ReplacesNoFileWhoseNameDiffersInCase) {
    Put("Scene.asset", "other");
    EXPECT_TRUE(WriteAll(At("scene.asset"), "x"));
    EXPECT_EQ(Get("Scene.asset"), "other");
    EXPECT_EQ(Get("scene.asset"), "x");
}

TEST_F(OutputFileTest, ReplacesAndWritesNothingButRegularFiles) {
    ASSERT_EQ(mkfifo(At("pipe").c_str(), 0600), 0);
    fs::create_symlink("pipe", root_ / "link");
    const int reader = open(At("pipe").c_str(), O_RDONLY | O_NONBLOCK);
    ASSERT_GE(reader, 0);
    for (const std::string& path : {At("pipe"), At("link"), std::string("/dev/null")})
        EXPECT_EQ(OutputFile::Create(path.c_str()), nullptr) << path;
    char buffer[8];
    EXPECT_EQ(read(reader, buffer, sizeof buffer), 0) << "nothing came through";
    close(reader);
    EXPECT_TRUE(fs::is_fifo(root_ / "pipe") && fs::is_symlink(root_ / "link"));
    EXPECT_TRUE(fs::is_character_file("/dev/null"));
    EXPECT_EQ(CountFiles(), 2);
}

TEST_F(OutputFileTest, WaitsForNobodyWhoWouldReadAPipe) {
    ASSERT_EQ(mkfifo(At("pipe").c_str(), 0600), 0);
    const Deadline deadline;
    EXPECT_EQ(OutputFile::Create(At("pipe").c_str()), nullptr);
}

TEST_F(OutputFileTest, LeavesTheOldFileWhenAWriteFailed) {
    Put("file", "old");
    {
        const FileSizeLimit limit(1000);
        const auto file = OutputFile::Create(At("file").c_str());
        ASSERT_TRUE(file);
        EXPECT_TRUE(file->Write(std::string(900, 'x')));
        EXPECT_FALSE(file->Write(std::string(900, 'x')));
        EXPECT_FALSE(file->Write("x"));
        EXPECT_FALSE(file->Commit());
    }
    EXPECT_EQ(Get("file"), "old");
    EXPECT_EQ(CountFiles(), 1);
}

/// The signals that a host blocks, or those that wait for it until it lets them in.
sigset_t GetSignals(int (*ask)(sigset_t*)) {
    sigset_t signals;
    ask(&signals);
    return signals;
}
int GetBlocked(sigset_t* signals) {
    return pthread_sigmask(SIG_BLOCK, nullptr, signals);
}

TEST_F(OutputFileTest, LeavesTheHostsSignalsAsTheyWere) {
    const FileSizeLimit limit(0);
    ASSERT_FALSE(WriteAll(At("file"), "text"));
    const sigset_t blocked = GetSignals(&GetBlocked);
    EXPECT_EQ(sigismember(&blocked, SIGXFSZ), 0);
}

TEST_F(OutputFileTest, LeavesASignalThatWaitedForTheHost) {
    sigset_t mine;
    sigset_t previous;
    sigemptyset(&mine);
    sigaddset(&mine, SIGXFSZ);
    pthread_sigmask(SIG_BLOCK, &mine, &previous);
    const FileSizeLimit limit(0);
    EXPECT_FALSE(WriteAll(At("file"), "text"));
    const sigset_t none = GetSignals(&sigpending);
    EXPECT_EQ(sigismember(&none, SIGXFSZ), 0) << "the write's own signal is gone";

    raise(SIGXFSZ);
    EXPECT_FALSE(WriteAll(At("file"), "text"));
    const sigset_t waiting = GetSignals(&sigpending);
    EXPECT_EQ(sigismember(&waiting, SIGXFSZ), 1);

    const timespec noTime{};
    EXPECT_EQ(sigtimedwait(&mine, nullptr, &noTime), SIGXFSZ);
    pthread_sigmask(SIG_SETMASK, &previous, nullptr);
}

TEST_F(OutputFileTest, KeepsThePermissionsOfTheOldFile) {
    Put("file", "old");
    fs::permissions(root_ / "file", fs::perms(0640));
    EXPECT_TRUE(WriteAll(At("file"), "new"));
    EXPECT_EQ(fs::status(root_ / "file").permissions(), fs::perms(0640));
    fs::permissions(root_ / "file", fs::perms(0666));
    EXPECT_TRUE(WriteAll(At("file"), "newer"));
    EXPECT_EQ(fs::status(root_ / "file").permissions(), fs::perms(0666));
}

/// The permissions of the only file that no listing shows: the one being written.
fs::perms PermissionsOfHidden(const fs::path& directory) {
    for (const auto& entry : fs::directory_iterator(directory)) {
        if (entry.path().filename().string().front() == '.')
            return entry.status().permissions();
    }
    return fs::perms::unknown;
}

TEST_F(OutputFileTest, ShowsNobodyATextThatIsNotCompleteYet) {
    Put("file", "old");
    fs::permissions(root_ / "file", fs::perms(0666));
    for (const char* name : {"file", "new"}) {
        const auto file = OutputFile::Create(At(name).c_str());
        EXPECT_EQ(PermissionsOfHidden(root_), fs::perms(0600)) << name;
        ASSERT_TRUE(file && file->Write("text"));
        EXPECT_EQ(PermissionsOfHidden(root_), fs::perms(0600)) << name;
    }
}

/// The names that a process could take one after the other are there already.
TEST_F(OutputFileTest, HasANameForItsTextThatNobodyForesees) {
    const std::string process = std::to_string(getpid());
    constexpr int kTaken = 3000;
    for (int i = 0; i < kTaken; ++i)
        Put(".ovi-" + process + "-" + std::to_string(i) + ".tmp", "");
    EXPECT_TRUE(WriteAll(At("file"), "new"));
    EXPECT_EQ(Get("file"), "new");
    EXPECT_EQ(CountFiles(), kTaken + 1);
}

TEST_F(OutputFileTest, GivesANewFileTheUsualPermissions) {
    Put("usual", "");
    EXPECT_TRUE(WriteAll(At("file"), "x"));
    EXPECT_EQ(fs::status(root_ / "file").permissions(), fs::status(root_ / "usual").permissions());
}

TEST_F(OutputFileTest, RefusesAFileThatMayNotBeWritten) {
    Put("file", "old");
    fs::permissions(root_ / "file", fs::perms(0444));
    if (std::ofstream(At("file"), std::ios::app))
        GTEST_SKIP() << "whoever runs this may write everything";
    EXPECT_EQ(OutputFile::Create(At("file").c_str()), nullptr);
    EXPECT_EQ(Get("file"), "old");
    EXPECT_EQ(CountFiles(), 1);
    fs::permissions(root_ / "file", fs::perms(0644));
}

TEST_F(OutputFileTest, WritesThroughSymbolicLinks) {
    Put("there/file", "old");
    fs::create_symlink("there/file", root_ / "first");
    fs::create_symlink(root_ / "first", root_ / "second");
    EXPECT_TRUE(WriteAll(At("second"), "new"));
    EXPECT_TRUE(fs::is_symlink(root_ / "first"));
    EXPECT_TRUE(fs::is_symlink(root_ / "second"));
    EXPECT_EQ(Get("there/file"), "new");
}

TEST_F(OutputFileTest, MakesTheFileThatASymbolicLinkLacks) {
    fs::create_symlink("missing", root_ / "link");
    EXPECT_TRUE(WriteAll(At("link"), "x"));
    EXPECT_TRUE(fs::is_symlink(root_ / "link"));
    EXPECT_EQ(Get("missing"), "x");
}

TEST_F(OutputFileTest, RefusesALinkToItself) {
    fs::create_symlink("link", root_ / "link");
    EXPECT_EQ(OutputFile::Create(At("link").c_str()), nullptr);
    EXPECT_EQ(ReadAll(At("link")), "none");
}

TEST_F(OutputFileTest, FailsToCommitWhenItsDirectoryIsGone) {
    fs::create_directory(root_ / "dir");
    const auto file = OutputFile::Create(At("dir/file").c_str());
    ASSERT_TRUE(file && file->Write("x"));
    fs::remove_all(root_ / "dir");
    EXPECT_FALSE(file->Commit());
}

#else

OVI_NOT_ON_WINDOWS(OutputFileTest, ReplacesNoFileWhoseNameDiffersInCase,
                   "names that differ in case are one file")
OVI_NOT_ON_WINDOWS(OutputFileTest, ReplacesAndWritesNothingButRegularFiles,
                   "pipes have no place in the file system; FileWindowsTest has devices")
OVI_NOT_ON_WINDOWS(OutputFileTest, WaitsForNobodyWhoWouldReadAPipe,
                   "pipes have no place in the file system")
OVI_NOT_ON_WINDOWS(OutputFileTest, LeavesTheOldFileWhenAWriteFailed,
                   "a process cannot limit its files")
OVI_NOT_ON_WINDOWS(OutputFileTest, LeavesTheHostsSignalsAsTheyWere, "there are no such signals")
OVI_NOT_ON_WINDOWS(OutputFileTest, LeavesASignalThatWaitedForTheHost, "there are no such signals")
OVI_NOT_ON_WINDOWS(OutputFileTest, KeepsThePermissionsOfTheOldFile, "there are no permission bits")
OVI_NOT_ON_WINDOWS(OutputFileTest, ShowsNobodyATextThatIsNotCompleteYet,
                   "there are no permission bits; FileWindowsTest opens such a file")
OVI_NOT_ON_WINDOWS(OutputFileTest, HasANameForItsTextThatNobodyForesees,
                   "FileWindowsTest has the same")
OVI_NOT_ON_WINDOWS(OutputFileTest, GivesANewFileTheUsualPermissions, "there are no permission bits")
OVI_NOT_ON_WINDOWS(OutputFileTest, RefusesAFileThatMayNotBeWritten,
                   "there are no permission bits; FileWindowsTest has read-only files")
OVI_NOT_ON_WINDOWS(OutputFileTest, WritesThroughSymbolicLinks, "making links is for administrators")
OVI_NOT_ON_WINDOWS(OutputFileTest, MakesTheFileThatASymbolicLinkLacks,
                   "making links is for administrators")
OVI_NOT_ON_WINDOWS(OutputFileTest, RefusesALinkToItself, "making links is for administrators")
OVI_NOT_ON_WINDOWS(OutputFileTest, FailsToCommitWhenItsDirectoryIsGone,
                   "a directory with an open file cannot be removed")

#endif
