#pragma once

#include <algorithm>
#include <cstring>
#include <filesystem>

#include "api/Schema.h"

/// A host with packages below search paths.
class PackageTest : public SchemaTest {
protected:
    /// A file with one template of the file's own package, "studio/props/Cup.template".
    void Write(const std::string& name) {
        const std::filesystem::path path(name);
        std::string package = path.parent_path().generic_string();
        package.erase(0, package.find('/') == std::string::npos ? package.size()
                                                                : package.find('/') + 1);
        std::replace(package.begin(), package.end(), '/', '.');
        WriteSchema(name, "<templates package='" + package + "'><template name='" +
                              path.stem().string() + "'/></templates>");
    }

    /// Adds a directory of the test as search path.
    int AddPath(const std::string& name, bool load = false) {
        PathOf(name + "/.");
        return OviTemplateManager_AddSearchPath((Directory() + "/" + name).c_str(), load);
    }

    static bool Load(const char* package) { return OviTemplateManager_LoadPackage(package); }

    /// All packages below the search paths.
    static Names Packages() {
        int size = 0;
        const int count = OviTemplateManager_EnumeratePackages(false, &size, nullptr);
        if (count < 0)
            return {"none"};
        std::string buffer(static_cast<size_t>(size), '?');
        EXPECT_EQ(OviTemplateManager_EnumeratePackages(false, &size, buffer.data()), count);
        Names names;
        for (const char* name = buffer.data(); *name; name += std::strlen(name) + 1)
            names.push_back(name);
        EXPECT_EQ(names.size(), static_cast<size_t>(count));
        return names;
    }

    Names Schema() {
        Names templates = Templates();
        templates.erase(std::find(templates.begin(), templates.end(), "Object#1"));
        return templates;
    }
};
