#pragma once

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include "api/Host.h"

/// A host that loads the sample schema as a studio does: three libraries, each a search path of its
/// own, whose packages find each other.
class SampleTest : public HostTest {
protected:
    using Path = std::filesystem::path;
    using Lines = std::vector<std::string>;

    static Path Examples() { return Path(OVI_SOURCE_DIR) / "examples"; }
    static Path Schema() { return Examples() / "schema"; }

    /// Each uses those in front of it only.
    static const Lines& Libraries() {
        static const Lines kLibraries = {"core", "show", "modeling"};
        return kLibraries;
    }

    static void Restart() {
        Ovi_Terminate();
        Ovi_Initialize();
        OviErrorManager_Clear();
    }

    /// Makes the libraries below a directory search paths, with all their packages or none.
    static void AddLibraries(const Path& root, bool load) {
        for (const std::string& library : Libraries())
            OviTemplateManager_AddSearchPath((root / library).generic_string().c_str(), load);
    }

    static void LoadSchema() {
        AddLibraries(Schema(), true);
        EXPECT_EQ(Errors(), Lines{});
    }

    /// The packages below the search paths, in the order of their names.
    static Lines Packages() {
        int size = 0;
        OviTemplateManager_EnumeratePackages(false, &size, nullptr);
        std::string names(static_cast<size_t>(size), '\0');
        OviTemplateManager_EnumeratePackages(false, &size, names.data());
        Lines packages;
        for (const char* name = names.c_str(); *name; name += packages.back().size() + 1)
            packages.emplace_back(name);
        return packages;
    }

    /// The files of a directory, at any depth, with that extension; relative to it, in order.
    static Lines Files(const Path& directory, const std::string& extension) {
        Lines files;
        for (const auto& entry : std::filesystem::recursive_directory_iterator(directory)) {
            if (entry.path().extension() == extension)
                files.push_back(
                    std::filesystem::relative(entry.path(), directory).generic_string());
        }
        std::sort(files.begin(), files.end());
        return files;
    }
};
