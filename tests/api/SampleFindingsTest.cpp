// The faulty sample files draw exactly the findings that the tables of the samples' README list.

#include <filesystem>
#include <map>
#include <set>
#include <sstream>

#include "api/Host.h"

namespace {

namespace fs = std::filesystem;
using Lines = std::vector<std::string>;

const fs::path kExamples = fs::path(OVI_SOURCE_DIR) / "examples";

class SampleFindings : public HostTest {
protected:
    /// By file: the rows "| file | line | level | `message` |", as "level line message".
    static std::map<std::string, Lines> ReadTables() {
        std::map<std::string, Lines> findings;
        std::istringstream readme(ReadFile((kExamples / "README.md").string()));
        for (std::string row; std::getline(readme, row);) {
            std::istringstream cells(row);
            std::string file, line, level, message;
            char bar = 0;
            if (!(cells >> bar >> file >> bar >> line >> bar >> level >> bar) || bar != '|')
                continue;
            const size_t open = row.find('`');
            const size_t close = row.rfind('`');
            if (open == std::string::npos || close <= open)
                continue;
            findings[file].push_back(level + " " + line + " " +
                                     row.substr(open + 1, close - open - 1));
        }
        return findings;
    }

    static Lines Expected(const std::string& file, const std::string& path) {
        static const std::string kPath = "<path>";
        Lines lines = ReadTables()[file];
        for (std::string& line : lines) {
            const size_t found = line.find(kPath);
            if (found != std::string::npos)
                line.replace(found, kPath.size(), path);
        }
        return lines;
    }

    static std::set<std::string> Files(const fs::path& directory, const std::string& extension) {
        std::set<std::string> files;
        for (const auto& entry : fs::directory_iterator(directory)) {
            if (extension.empty() || entry.path().extension() == extension)
                files.insert(entry.path().filename().string());
        }
        return files;
    }

    static void Restart() {
        Ovi_Terminate();
        Ovi_Initialize();
        OviErrorManager_Clear();
    }

    static void LoadSchema() {
        OviTemplateManager_AddSearchPath((kExamples / "schema").string().c_str(), true);
        ASSERT_EQ(Errors(), Lines{});
    }
};

TEST_F(SampleFindings, TablesListEveryFaultyFileAndNoOther) {
    std::set<std::string> listed;
    for (const auto& [file, findings] : ReadTables())
        listed.insert(file);
    EXPECT_EQ(listed.erase("older-version.asset"), 1u);
    EXPECT_EQ(listed, Files(kExamples / "faulty", ""));
}

TEST_F(SampleFindings, OfTemplateFilesAreThoseOfTheTable) {
    for (const std::string& file : Files(kExamples / "faulty", ".template")) {
        Restart();
        const std::string path = (kExamples / "faulty" / file).string();
        const bool loaded = OviTemplateManager_LoadTemplateFile(path.c_str());
        EXPECT_EQ(Errors(), Expected(file, path)) << file;
        const bool fails =
            file == "missing-closing-bracket.template" || file == "no-header.template";
        EXPECT_EQ(loaded, !fails) << file;
    }
}

TEST_F(SampleFindings, OfTemplateFilesDoNotDependOnTheSchema) {
    for (const std::string& file : Files(kExamples / "faulty", ".template")) {
        Restart();
        LoadSchema();
        const std::string path = (kExamples / "faulty" / file).string();
        OviTemplateManager_LoadTemplateFile(path.c_str());
        EXPECT_EQ(Errors(), Expected(file, path)) << file;
    }
}

TEST_F(SampleFindings, OfSceneFilesAreThoseOfTheTable) {
    for (const std::string& file : Files(kExamples / "faulty", ".asset")) {
        Restart();
        LoadSchema();
        const std::string path = (kExamples / "faulty" / file).string();
        EXPECT_EQ(OviAssetManager_LoadScene(path.c_str()), file != "missing-closing-bracket.asset");
        EXPECT_EQ(Errors(), Expected(file, path)) << file;
    }
}

TEST_F(SampleFindings, OfTheSceneWithOlderVersionsAreThoseOfTheTable) {
    LoadSchema();
    const std::string path = (kExamples / "scenes" / "older-version.asset").string();
    EXPECT_TRUE(OviAssetManager_LoadScene(path.c_str()));
    EXPECT_EQ(Errors(), Expected("older-version.asset", path));
}

} // namespace
