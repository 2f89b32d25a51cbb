// Paths as hosts write them: with either separator, blanks, letters beyond ASCII, and on Windows
// with drives. They stay as they were given wherever the library names them.

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <string>
#include <vector>

#include "api/Host.h"

namespace fs = std::filesystem;

namespace {

using Names = std::vector<std::string>;

std::string WithBackslashes(std::string path) {
    std::replace(path.begin(), path.end(), '/', '\\');
    return path;
}

#ifdef _WIN32
/// "Z:\directory\file".
std::string WithDrive(const std::string& path) {
    return WithBackslashes(fs::absolute(fs::u8path(path)).u8string());
}

std::string WithSmallDriveAndSlashes(const std::string& path) {
    std::string written = fs::absolute(fs::u8path(path)).generic_u8string();
    written[0] = static_cast<char>(written[0] + ('a' - 'A'));
    return written;
}

std::string WithoutLimit(const std::string& path) {
    return "\\\\?\\" + WithDrive(path);
}
#endif

constexpr const char* kFolder = "two words/\xC3\xA4\xC3\x9F/\xE6\xBC\xA2\xE5\xAD\x97";
constexpr const char* kHead = "<?xml version='1.0' encoding='UTF-8'?>\n";

class PathTest : public HostTest, public ::testing::WithParamInterface<const char*> {
protected:
    /// The path of a file in the folder, in the form under test.
    std::string Written(const std::string& name) { return InForm(PathOf(kFolder + ("/" + name))); }

    static std::string InForm(const std::string& path) {
        const std::string form = GetParam();
#ifdef _WIN32
        if (form == "Drive")
            return WithDrive(path);
        if (form == "SmallDriveAndSlashes")
            return WithSmallDriveAndSlashes(path);
        if (form == "WithoutLimit")
            return WithoutLimit(path);
#endif
        return form == "Backslashes" ? WithBackslashes(path) : path;
    }

    /// Writes a template file with a warning in line 3.
    std::string WriteTemplate(const std::string& name, const std::string& package = "") {
        WriteFile(kFolder + ("/" + name), kHead + ("<templates package='" + package) +
                                              "'>\n<sparkle/><template name='Cup'/></templates>");
        return Written(name);
    }

    static std::string SourceOfFirstError() {
        return OviErrorItem_GetSourceName(OviErrorManager_GetErrorItemAt(0));
    }

    static Names Packages() {
        int size = 0;
        OviTemplateManager_EnumeratePackages(false, &size, nullptr);
        std::string buffer(static_cast<size_t>(size), '\0');
        OviTemplateManager_EnumeratePackages(false, &size, buffer.data());
        Names names;
        for (const char* name = buffer.data(); *name; name += std::strlen(name) + 1)
            names.emplace_back(name);
        return names;
    }
};

TEST_P(PathTest, NamesATemplateFileInWhatIsLoadedAndReported) {
    const std::string path = WriteTemplate("Cup \xC3\xBC.template");
    EXPECT_TRUE(OviTemplateManager_LoadTemplateFile(path.c_str()));
    EXPECT_EQ(OviType_GetFileName(OviTemplateManager_GetTemplate("Cup")), path);
    EXPECT_EQ(Errors(), Names{"2 3 Unknown element <sparkle> was ignored and will not be saved"});
    EXPECT_EQ(SourceOfFirstError(), path);
}

TEST_P(PathTest, IsWhereATemplateFileIsSaved) {
    const std::string path = WriteTemplate("Cup.template");
    const std::string saved = Written("saved \xC3\xB6.template");
    ASSERT_TRUE(OviTemplateManager_LoadTemplateFile(path.c_str()));
    EXPECT_TRUE(OviTemplateManager_SaveTemplateFile(path.c_str(), saved.c_str()));
    EXPECT_EQ(ReadFile(PathOf(kFolder + std::string("/saved \xC3\xB6.template"))),
              kHead + std::string("<templates>\n\t<template name='Cup'/>\n</templates>"));
}

TEST_P(PathTest, IsWhereASceneIsSavedAndFoundAgain) {
    const std::string path = Written("room \xE6\xBC\xA2.asset");
    OviAssetManager_NewAsset("kept");
    EXPECT_TRUE(OviAssetManager_SaveScene(path.c_str()));
    EXPECT_EQ(ReadFile(PathOf(kFolder + std::string("/room \xE6\xBC\xA2.asset"))),
              kHead + std::string("<assets>\n\t<asset name='kept'/>\n</assets>"));
    OviAssetManager_NewScene();
    EXPECT_TRUE(OviAssetManager_LoadScene(path.c_str()));
    EXPECT_NE(OviAssetManager_GetAsset("kept"), nullptr);
    EXPECT_EQ(Errors(), Names{});
}

TEST_P(PathTest, OfASearchPathLeadsToItsPackages) {
    WriteTemplate("one two/Cup.template", "one two");
    WriteTemplate("\xC3\xA4/inner/Cup.template");
    const std::string root = InForm(Directory() + "/" + kFolder);
    OviTemplateManager_AddSearchPath(root.c_str(), false);
    EXPECT_EQ(Packages(), (Names{"one two", "\xC3\xA4", "\xC3\xA4.inner"}));
    EXPECT_TRUE(OviTemplateManager_LoadPackage("\xC3\xA4.inner"));
    EXPECT_EQ(OviType_GetFileName(OviTemplateManager_GetTemplate("Cup")),
              root + "\\\xC3\xA4\\inner\\Cup.template");
    EXPECT_EQ(SourceOfFirstError(), root + "\\\xC3\xA4\\inner\\Cup.template");
}

TEST_P(PathTest, OfAFileThatIsMissingIsReportedAsItWasGiven) {
    const std::string path = Written("missing \xC3\xA4.template");
    EXPECT_FALSE(OviTemplateManager_LoadTemplateFile(path.c_str()));
    EXPECT_EQ(Errors(), Names{"1 -1 Unable to open file '" + path + "' for reading"});
    EXPECT_EQ(SourceOfFirstError(), path);
}

#ifdef _WIN32
const auto kForms =
    ::testing::Values("Slashes", "Backslashes", "Drive", "SmallDriveAndSlashes", "WithoutLimit");
#else
const auto kForms = ::testing::Values("Slashes", "Backslashes");
#endif

INSTANTIATE_TEST_SUITE_P(Forms, PathTest, kForms,
                         [](const auto& test) { return std::string(test.param); });

} // namespace
