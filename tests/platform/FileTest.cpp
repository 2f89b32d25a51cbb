#include "platform/File.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>

#ifndef _WIN32
#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>
#endif

using namespace Kor;
using namespace std::string_literals;
namespace fs = std::filesystem;

namespace {

/// Gives every test an empty directory of its own.
class FileTest : public testing::Test {
protected:
    void SetUp() override {
        const auto* info = testing::UnitTest::GetInstance()->current_test_info();
        root_ = fs::path(OVI_TEST_OUTPUT_DIR) / info->test_suite_name() / info->name();
        fs::remove_all(root_);
        fs::create_directories(root_);
    }

    std::string At(const std::string& name) const { return (root_ / name).string(); }

    void Put(const std::string& name, const std::string& text) const {
        fs::create_directories((root_ / name).parent_path());
        std::ofstream(At(name), std::ios::binary) << text;
    }

    std::string Get(const std::string& name) const {
        std::ifstream file(At(name), std::ios::binary);
        return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    }

    /// How many files of any name, hidden ones too, are in the test's directory.
    std::ptrdiff_t CountFiles() const {
        return std::distance(fs::directory_iterator(root_), fs::directory_iterator());
    }

    fs::path root_;
};

using InputFileTest = FileTest;
using OutputFileTest = FileTest;
using ListDirectoryTest = FileTest;

/// All that a file holds, read in small pieces; "none" when it cannot be opened.
std::string ReadAll(const std::string& path) {
    const auto file = InputFile::Open(path.c_str());
    if (!file)
        return "none";
    std::string text;
    char buffer[7];
    while (const size_t taken = file->Read(buffer, sizeof buffer))
        text.append(buffer, taken);
    EXPECT_EQ(file->Read(buffer, sizeof buffer), 0u) << "the end stays the end";
    return text;
}

bool WriteAll(const std::string& path, const std::string& text) {
    const auto file = OutputFile::Create(path.c_str());
    return file && file->Write(text) && file->Commit();
}

using Names = std::vector<std::string>;

Names List(const std::string& directory, bool files, bool directories) {
    Names names{"old"};
    EXPECT_TRUE(ListDirectory(directory, files, directories, names));
    return names;
}

} // namespace

// ------------------------------------------------------------------------------------------- input

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

// ------------------------------------------------------------------------------------------ output

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

#ifndef _WIN32

TEST_F(InputFileTest, PrefersThePathAsWritten) {
    Put("File", "1");
    Put("file", "2");
    Put("FILE", "3");
    EXPECT_EQ(ReadAll(At("file")), "2");
    EXPECT_EQ(ReadAll(At("File")), "1");
    EXPECT_EQ(ReadAll(At("fILE")), "3") << "the first in byte order";
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

TEST_F(OutputFileTest, ReplacesNoFileWhoseNameDiffersInCase) {
    Put("Scene.asset", "other");
    EXPECT_TRUE(WriteAll(At("scene.asset"), "x"));
    EXPECT_EQ(Get("Scene.asset"), "other");
    EXPECT_EQ(Get("scene.asset"), "x");
}

TEST_F(OutputFileTest, FailsWhenTheDeviceIsFull) {
    if (!fs::is_character_file("/dev/full"))
        GTEST_SKIP() << "this system has no such device";
    const auto file = OutputFile::Create("/dev/full");
    ASSERT_TRUE(file);
    EXPECT_FALSE(file->Write("x"));
    EXPECT_FALSE(file->Write(""));
    EXPECT_FALSE(file->Commit());
    EXPECT_TRUE(fs::is_character_file("/dev/full"));
}

TEST_F(OutputFileTest, WritesToPipesDirectly) {
    ASSERT_EQ(mkfifo(At("pipe").c_str(), 0600), 0);
    const int reader = open(At("pipe").c_str(), O_RDONLY | O_NONBLOCK);
    ASSERT_GE(reader, 0);
    EXPECT_TRUE(WriteAll(At("pipe"), "text"));
    char buffer[8];
    EXPECT_EQ(read(reader, buffer, sizeof buffer), 4);
    close(reader);
    EXPECT_TRUE(fs::is_fifo(root_ / "pipe"));
    EXPECT_EQ(CountFiles(), 1);
}

namespace {

/// Lets no file grow beyond a size while it lives, so that writes fail as on a full disk.
class FileSizeLimit {
public:
    explicit FileSizeLimit(rlim_t size) : handler_(std::signal(SIGXFSZ, SIG_IGN)) {
        getrlimit(RLIMIT_FSIZE, &previous_);
        const rlimit limit{size, previous_.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FileSizeLimit() {
        setrlimit(RLIMIT_FSIZE, &previous_);
        std::signal(SIGXFSZ, handler_);
    }

private:
    void (*handler_)(int);
    rlimit previous_{};
};

} // namespace

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

TEST_F(OutputFileTest, KeepsThePermissionsOfTheOldFile) {
    Put("file", "old");
    fs::permissions(root_ / "file", fs::perms(0640));
    EXPECT_TRUE(WriteAll(At("file"), "new"));
    EXPECT_EQ(fs::status(root_ / "file").permissions(), fs::perms(0640));
    fs::permissions(root_ / "file", fs::perms(0666));
    EXPECT_TRUE(WriteAll(At("file"), "newer"));
    EXPECT_EQ(fs::status(root_ / "file").permissions(), fs::perms(0666));
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

#endif

// ----------------------------------------------------------------------------------------- listing

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
