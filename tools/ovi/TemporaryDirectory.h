#pragma once

#include <filesystem>
#include <string>

namespace OviTool {

/// A new directory for passing files, which goes with this object.
class TemporaryDirectory {
public:
    /// Throws when it cannot be made.
    TemporaryDirectory();
    TemporaryDirectory(const TemporaryDirectory&) = delete;
    TemporaryDirectory& operator=(const TemporaryDirectory&) = delete;
    ~TemporaryDirectory();

    /// The path of a file in it.
    std::string GetFile(const char* name) const { return (path_ / name).u8string(); }

private:
    std::filesystem::path path_;
};

} // namespace OviTool
