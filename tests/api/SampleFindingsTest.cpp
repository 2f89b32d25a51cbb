// The faulty sample files draw exactly the findings that the tables of the samples' README list.

#include <map>
#include <set>
#include <sstream>

#include "api/Samples.h"

namespace {

class SampleFindings : public SampleTest {
protected:
    /// By file: the rows "| file | line | level | `message` |", as "level line message".
    static std::map<std::string, Lines> ReadTables() {
        std::map<std::string, Lines> findings;
        std::istringstream readme(ReadFile((Examples() / "README.md").string()));
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
};

TEST_F(SampleFindings, TablesListEveryFaultyFileAndNoOther) {
    std::set<std::string> listed;
    for (const auto& [file, findings] : ReadTables())
        listed.insert(file);
    EXPECT_EQ(listed.erase("older-version.asset"), 1u);
    std::set<std::string> there;
    for (const char* extension : {".asset", ".template"}) {
        for (const std::string& file : Files(Examples() / "faulty", extension))
            there.insert(file);
    }
    EXPECT_EQ(listed, there);
}

TEST_F(SampleFindings, OfTemplateFilesAreThoseOfTheTable) {
    for (const std::string& file : Files(Examples() / "faulty", ".template")) {
        Restart();
        const std::string path = (Examples() / "faulty" / file).string();
        const bool loaded = OviTemplateManager_LoadTemplateFile(path.c_str());
        EXPECT_EQ(Errors(), Expected(file, path)) << file;
        const bool fails =
            file == "missing-closing-bracket.template" || file == "no-header.template";
        EXPECT_EQ(loaded, !fails) << file;
    }
}

TEST_F(SampleFindings, OfTemplateFilesDoNotDependOnTheSchema) {
    for (const std::string& file : Files(Examples() / "faulty", ".template")) {
        Restart();
        LoadSchema();
        const std::string path = (Examples() / "faulty" / file).string();
        OviTemplateManager_LoadTemplateFile(path.c_str());
        EXPECT_EQ(Errors(), Expected(file, path)) << file;
    }
}

TEST_F(SampleFindings, OfSceneFilesAreThoseOfTheTable) {
    for (const std::string& file : Files(Examples() / "faulty", ".asset")) {
        Restart();
        LoadSchema();
        const std::string path = (Examples() / "faulty" / file).string();
        EXPECT_EQ(OviAssetManager_LoadScene(path.c_str()), file != "missing-closing-bracket.asset");
        EXPECT_EQ(Errors(), Expected(file, path)) << file;
    }
}

TEST_F(SampleFindings, OfTheSceneWithOlderVersionsAreThoseOfTheTable) {
    LoadSchema();
    const std::string path = (Examples() / "scenes" / "older-version.asset").string();
    EXPECT_TRUE(OviAssetManager_LoadScene(path.c_str()));
    EXPECT_EQ(Errors(), Expected("older-version.asset", path));
}

} // namespace
