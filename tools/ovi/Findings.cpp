#include "Findings.h"

#include "ExitCode.h"
#include "Json.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <iostream>

namespace OviTool {

namespace {

const char* GetLevelName(int level) {
    if (level & OVI_LEVEL_ERROR)
        return "error";
    return level & OVI_LEVEL_WARNING ? "warning" : "note";
}

/// The path as this system writes it: the library joins directories with backslashes everywhere.
std::string ToNativePath(std::string path) {
#if !defined(_WIN32)
    std::replace(path.begin(), path.end(), '\\', '/');
#endif
    return path;
}

Finding MakeFinding(OviErrorItem* item) {
    const std::string source = OviErrorItem_GetSourceName(item);
    Finding finding{OviErrorItem_GetErrorLevel(item), ToNativePath(source),
                    OviErrorItem_GetLineNumber(item), OviErrorItem_GetMessage(item)};
    if (source.empty() || source == finding.file)
        return finding;
    std::size_t at = finding.message.find(source);
    while (at != std::string::npos) {
        finding.message.replace(at, source.size(), finding.file);
        at = finding.message.find(source, at + source.size());
    }
    return finding;
}

nlohmann::ordered_json ToJson(const Finding& finding) {
    nlohmann::ordered_json entry;
    entry["file"] = finding.file;
    if (finding.line > 0)
        entry["line"] = finding.line;
    else
        entry["line"] = nullptr;
    entry["level"] = GetLevelName(finding.level);
    entry["message"] = finding.message;
    return entry;
}

} // namespace

std::size_t Findings::Collect() {
    const std::size_t before = findings_.size();
    for (int i = 0; OviErrorItem* item = OviErrorManager_GetErrorItemAt(i); ++i)
        findings_.push_back(MakeFinding(item));
    OviErrorManager_Clear();
    return findings_.size() - before;
}

void Findings::AddUnreadable(const std::string& file, const std::string& reason) {
    unreadable_.push_back({file, reason});
}

void Findings::PrintText(std::ostream& out) const {
    for (const Finding& finding : findings_) {
        out << finding.file << ':';
        if (finding.line > 0)
            out << finding.line << ':';
        out << ' ' << GetLevelName(finding.level) << ": " << finding.message << '\n';
    }
}

void Findings::PrintJson(std::ostream& out) const {
    nlohmann::ordered_json document;
    document["findings"] = nlohmann::ordered_json::array();
    for (const Finding& finding : findings_)
        document["findings"].push_back(ToJson(finding));
    document["unreadable"] = nlohmann::ordered_json::array();
    for (const UnreadableFile& file : unreadable_)
        document["unreadable"].push_back({{"file", file.file}, {"reason", file.reason}});
    document["summary"] = {{"files", fileCount_},
                           {"errors", Count(OVI_LEVEL_ERROR)},
                           {"warnings", Count(OVI_LEVEL_WARNING)},
                           {"unreadable", unreadable_.size()}};
    OviTool::PrintJson(out, document);
}

void Findings::PrintUnreadable(std::ostream& out) const {
    for (const UnreadableFile& file : unreadable_)
        out << "ovi: error: cannot read '" << file.file << "': " << file.reason << '\n';
}

void Findings::Report() const {
    std::cout.flush();
    PrintText(std::cerr);
    PrintUnreadable(std::cerr);
}

void Findings::PrintSummary(std::ostream& out) const {
    out << Counted(fileCount_, "file") << ", " << Counted(Count(OVI_LEVEL_ERROR), "error") << ", "
        << Counted(Count(OVI_LEVEL_WARNING), "warning");
    if (!unreadable_.empty())
        out << ", " << unreadable_.size() << " unreadable";
    out << '\n';
}

int Findings::GetExitCode() const {
    if (!unreadable_.empty())
        return kCouldNotRun;
    return findings_.empty() ? kClean : kHasFindings;
}

bool Findings::HasErrorsIn(const std::string& libraryPath) const {
    const std::string path = ToNativePath(libraryPath);
    const auto isError = [&path](const Finding& finding) {
        return finding.file == path && (finding.level & OVI_LEVEL_ERROR) != 0;
    };
    const auto isUnreadable = [&libraryPath](const UnreadableFile& file) {
        return file.file == libraryPath;
    };
    return std::any_of(findings_.begin(), findings_.end(), isError) ||
           std::any_of(unreadable_.begin(), unreadable_.end(), isUnreadable);
}

std::size_t Findings::Count(int levelBit) const {
    return static_cast<std::size_t>(
        std::count_if(findings_.begin(), findings_.end(), [levelBit](const Finding& finding) {
            return (finding.level & levelBit) != 0;
        }));
}

std::string Counted(std::size_t count, const char* noun) {
    return std::to_string(count) + " " + noun + (count == 1 ? "" : "s");
}

} // namespace OviTool
