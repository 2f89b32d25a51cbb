#pragma once

#include <chrono>
#include <cstddef>
#include <string>

namespace OviTool {

/// Shows on the standard error stream how far a long load has come: files as a bar, the assets of
/// a long scene as a turning sign. Does nothing when that stream is no terminal. Must not outlive
/// the session.
class Progress {
public:
    explicit Progress(std::size_t fileCount);
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    /// Takes the line away.
    ~Progress();

    /// Tells which file is being loaded.
    void StartFile(const std::string& path);

private:
    using Clock = std::chrono::steady_clock;

    static void OnInstanceEvent(void* userData, void* object, int event, void* argument);
    void DrawWhenDue();
    std::string MakeLine() const;
    void Write(std::string line);

    bool active_;
    std::size_t fileCount_;
    std::size_t startedCount_ = 0;
    std::size_t assetCount_ = 0;
    std::size_t drawnCount_ = 0;
    std::string path_;
    Clock::time_point nextDraw_;
};

} // namespace OviTool
