#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <vector>

namespace OviTool {

class Findings;

/// A file or a package to load.
struct InputFile {
    enum class Kind { kTemplates, kScene, kPackage };

    std::string path; ///< As the library is to know it; a package's name.
    Kind kind;
};

/// Whether a file's name is that of a template file.
bool IsTemplateFile(const std::string& path);

/// The files and packages to load, in load order and each of them once. Files that cannot be read
/// are left out and noted as unreadable.
class InputFiles {
public:
    static constexpr std::size_t kNone = static_cast<std::size_t>(-1);

    explicit InputFiles(Findings& findings) : findings_(findings) {}

    /// Makes a directory a search path, so that files find their packages.
    void AddSearchPath(const std::string& path);

    /// Adds a package, which is to be found through the search paths.
    void AddPackage(const std::string& name);

    /// Adds a template file, or all template files below a directory: its own first, ascending
    /// without regard to case, then those of its subdirectories likewise. Names that begin with a
    /// dot are left out. The directory becomes a search path.
    void AddSchema(const std::string& path);

    /// Adds a template or scene file and gives its index, that of the first when it is there
    /// already, or kNone when it cannot be read.
    std::size_t Add(const std::string& path);

    const std::vector<InputFile>& GetAll() const { return files_; }

private:
    struct SearchPath {
        std::string path;      ///< As the library knows it, without a separator at the end.
        std::string canonical; ///< With a separator at the end.
    };

    void AddDirectory(const std::string& root);

    /// Adds the files of one directory and gives its subdirectories, both relative to the root.
    std::vector<std::string> AddFilesOf(const std::string& root, const std::string& relative);

    std::size_t AddAs(const std::string& path, const std::string& libraryPath);

    /// The path by which the library would find a file through a search path; empty for none.
    std::string FindLibraryPath(const std::string& canonicalPath) const;

    Findings& findings_;
    std::vector<InputFile> files_;
    std::vector<SearchPath> searchPaths_;
    std::map<std::string, std::size_t> indices_; ///< By canonical path.
};

} // namespace OviTool
