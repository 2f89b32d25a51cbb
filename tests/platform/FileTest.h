#pragma once

#include "platform/File.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace Kor {

/// Gives every test an empty directory of its own.
class FileTest : public testing::Test {
protected:
    void SetUp() override {
        const auto* info = testing::UnitTest::GetInstance()->current_test_info();
        root_ = std::filesystem::path(OVI_TEST_OUTPUT_DIR) / info->test_suite_name() / info->name();
        std::filesystem::remove_all(root_);
        std::filesystem::create_directories(root_);
    }

    std::string At(const std::string& name) const { return (root_ / name).string(); }

    void Put(const std::string& name, const std::string& text) const {
        std::filesystem::create_directories((root_ / name).parent_path());
        std::ofstream(At(name), std::ios::binary) << text;
    }

    std::string Get(const std::string& name) const {
        std::ifstream file(At(name), std::ios::binary);
        return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    }

    /// How many files of any name, hidden ones too, are in the test's directory.
    std::ptrdiff_t CountFiles() const {
        return std::distance(std::filesystem::directory_iterator(root_),
                             std::filesystem::directory_iterator());
    }

    std::filesystem::path root_;
};

/// All that a file holds, read in small pieces; "none" when it cannot be opened.
inline std::string ReadAll(const std::string& path) {
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

inline bool WriteAll(const std::string& path, const std::string& text) {
    const auto file = OutputFile::Create(path.c_str());
    return file && file->Write(text) && file->Commit();
}

using Names = std::vector<std::string>;

/// What ListDirectory makes of a list that holds something already.
inline Names List(const std::string& directory, bool files, bool directories) {
    Names names{"old"};
    EXPECT_TRUE(ListDirectory(directory, files, directories, names));
    return names;
}

} // namespace Kor
