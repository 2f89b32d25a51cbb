#ifdef _WIN32

#include "platform/WideText_windows.h"

#include "platform/File.h"

#include <gtest/gtest.h>

#include <windows.h>

#include <filesystem>

using namespace Kor;
namespace fs = std::filesystem;

TEST(WideText, TakesValidUtf8AsUtf8) {
    EXPECT_EQ(ToWide("a\\b"), L"a\\b");
    EXPECT_EQ(ToWide("\xC3\xA4\xE6\x97\xA5"), L"\u00E4\u65E5");
    EXPECT_EQ(ToWide("\xF0\x9F\x98\x80"), L"\U0001F600");
    EXPECT_EQ(ToWide(""), L"");
    EXPECT_EQ(GetCodePageOf("\xC3\xA4"), static_cast<unsigned>(CP_UTF8));
}

TEST(WideText, TakesOtherTextInTheSystemsCodePage) {
    const std::string text = "caf\xE9";
    EXPECT_EQ(GetCodePageOf(text), static_cast<unsigned>(CP_ACP));
    if (GetACP() == 1252) {
        EXPECT_EQ(ToWide(text), L"caf\u00E9");
    }
}

TEST(WideText, GoesBackInTheSameCodePage) {
    for (const std::string text : {"", "abc", "\xC3\xA4\xE6\x97\xA5", "\xF0\x9F\x98\x80"})
        EXPECT_EQ(FromWide(ToWide(text), CP_UTF8), text);
}

TEST(WideText, MakesLongPathsAbsoluteInTheFormWithoutALimit) {
    const std::string name(100, 'x');
    EXPECT_EQ(ToWidePath("C:/a/b").substr(0, 2), L"C:");
    const std::wstring path = ToWidePath("C:/" + name + "/../" + name + "/" + name + "/" + name);
    const std::wstring wide(100, L'x');
    EXPECT_EQ(path, L"\\\\?\\C:\\" + wide + L"\\" + wide + L"\\" + wide);
    EXPECT_EQ(ToWidePath("\\\\server\\" + name + "\\" + name + "\\" + name),
              L"\\\\?\\UNC\\server\\" + wide + L"\\" + wide + L"\\" + wide);
    EXPECT_EQ(ToWidePath("\\\\?\\C:\\" + name + name + name), L"\\\\?\\C:\\" + wide + wide + wide);
}

// The limit is one of the whole path, to which the current directory belongs.
TEST(WideText, MakesShortPathsBelowALongCurrentDirectoryAbsolute) {
    const fs::path before = fs::current_path();
    const std::string name(100, 'x');
    const fs::path directory = fs::u8path(OVI_TEST_OUTPUT_DIR) / "WideText" / name;
    fs::create_directories(directory);
    fs::current_path(directory);
    const std::wstring path = ToWidePath(name + "/" + name);
    fs::current_path(before);
    const std::wstring wide(100, L'x');
    const std::wstring absolute = fs::absolute(directory).make_preferred().wstring();
    EXPECT_EQ(path, L"\\\\?\\" + absolute + L"\\" + wide + L"\\" + wide);
    EXPECT_EQ(ToWidePath("file"), L"file");
}

TEST(WideText, LetsFilesBeWrittenReadAndListedAtLongPaths) {
    const std::string name(100, 'x');
    std::string directory = OVI_TEST_OUTPUT_DIR "/WideText";
    fs::create_directories(directory);
    for (int i = 0; i < 3; ++i) {
        directory += "/" + name;
        CreateDirectoryW(ToWidePath(directory).c_str(), nullptr);
    }
    const std::string path = directory + "/file";
    const auto output = OutputFile::Create(path.c_str());
    ASSERT_TRUE(output && output->Write("text") && output->Commit());
    const auto input = InputFile::Open(path.c_str());
    char buffer[8];
    ASSERT_TRUE(input);
    EXPECT_EQ(input->Read(buffer, sizeof buffer), 4u);
    std::vector<std::string> names;
    EXPECT_TRUE(ListDirectory(directory, true, true, names));
    EXPECT_EQ(names, std::vector<std::string>{"file"});
}

#endif
