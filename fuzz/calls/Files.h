#pragma once

#include <filesystem>
#include <string>
#include <vector>

/// The files that calls may name: some to read, and some to write, in a directory of this process
/// (in memory where the system has such a place).
class Files {
public:
    static Files& Get();

    ~Files();
    Files(const Files&) = delete;
    Files& operator=(const Files&) = delete;

    /// The path that the input's template file is loaded under.
    const std::string& GetPath() const { return outputPaths_.front(); }

    const std::vector<std::string>& GetTemplatePaths() const { return templatePaths_; }
    const std::vector<std::string>& GetOutputPaths() const { return outputPaths_; }

    /// Deletes what was written, so that no input sees the files of another.
    void Clear() const;

private:
    Files();

    std::filesystem::path directory_;
    std::vector<std::string> outputPaths_;
    std::vector<std::string> templatePaths_;
};
