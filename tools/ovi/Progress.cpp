#include "Progress.h"

#include <ovi/ovi.h>

#include <cstdio>

#if defined(_WIN32)
#include <io.h>
#else
#include <unistd.h>
#endif

namespace OviTool {

namespace {

constexpr std::size_t kLineWidth = 78;
constexpr std::size_t kBarWidth = 24;
/// Short loads show nothing at all.
constexpr std::chrono::milliseconds kDelay(400);
constexpr std::chrono::milliseconds kInterval(100);

bool IsErrorStreamATerminal() {
#if defined(_WIN32)
    return _isatty(_fileno(stderr)) != 0;
#else
    return isatty(STDERR_FILENO) != 0;
#endif
}

} // namespace

Progress::Progress(std::size_t fileCount)
    : active_(IsErrorStreamATerminal()), fileCount_(fileCount), nextDraw_(Clock::now() + kDelay) {
    if (active_)
        OviNotificationManager_RegisterInstanceCallback(&Progress::OnInstanceEvent, this);
}

Progress::~Progress() {
    if (!active_)
        return;
    OviNotificationManager_UnregisterInstanceCallback(this);
    if (drawnCount_ > 0) {
        Write({});
        std::fputc('\r', stderr);
    }
}

void Progress::StartFile(const std::string& path) {
    ++startedCount_;
    assetCount_ = 0;
    path_ = path;
    DrawWhenDue();
}

void Progress::OnInstanceEvent(void* userData, void*, int event, void*) {
    auto* self = static_cast<Progress*>(userData);
    if (event != OVI_EVENT_ASSET_ADDED)
        return;
    ++self->assetCount_;
    self->DrawWhenDue();
}

void Progress::DrawWhenDue() {
    if (!active_ || Clock::now() < nextDraw_)
        return;
    nextDraw_ = Clock::now() + kInterval;
    Write(MakeLine());
    ++drawnCount_;
}

std::string Progress::MakeLine() const {
    const std::size_t done = startedCount_ > 0 ? startedCount_ - 1 : 0;
    const std::size_t filled = fileCount_ > 0 ? done * kBarWidth / fileCount_ : 0;
    std::string line = "[" + std::string(filled, '#') + std::string(kBarWidth - filled, '.') +
                       "] " + std::to_string(done) + "/" + std::to_string(fileCount_) + " files";
    if (assetCount_ > 0)
        line += std::string(", ") + "|/-\\"[drawnCount_ % 4] + " " + std::to_string(assetCount_) +
                " assets";
    const std::size_t space = kLineWidth - line.size() - 2;
    line += path_.size() <= space ? ", " + path_ : ", " + path_.substr(path_.size() - space);
    return line;
}

/// Fills the line up with blanks, which covers what stood there before on every terminal.
void Progress::Write(std::string line) {
    line.resize(kLineWidth, ' ');
    std::fprintf(stderr, "\r%s", line.c_str());
    std::fflush(stderr);
}

} // namespace OviTool
