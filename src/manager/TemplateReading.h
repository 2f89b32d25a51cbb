#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "core/ByteStreams.h"

namespace Kor {

class PackageFinder;
class TemplateManager;

/// Reads one template file, and the packages that it uses, and those that these use. Files wait
/// for the packages they use in a list, so that no chain of packages can exhaust the stack. Where
/// memory runs out, that is reported with the file that was being read, and everything ends.
class TemplateReading {
public:
    explicit TemplateReading(TemplateManager& manager);
    ~TemplateReading();

    /// Reads a text as the template file of that path; false when the reader gave up.
    bool ReadFile(const char* path, ByteSource& source);

    /// Loads a package; false when no search path has it or one of its files fails.
    bool LoadPackage(std::string_view name);

private:
    struct OpenFile;
    struct OpenPackage;

    bool Run();
    void StartPackage(std::string_view name);
    std::shared_ptr<PackageFinder> GetFinder();
    bool TryNextSearchPath(OpenPackage& package);
    void AdvanceFile();
    void AdvancePackage();
    void FinishFile(bool read);
    void FinishPackage(bool loaded);
    void ReportOutOfMemory(std::string_view begun) const;

    TemplateManager& manager_;
    std::shared_ptr<PackageFinder> finder_; ///< made for the first package
    unsigned finderRevision_ = 0;           ///< of the search paths that it knows
    /// What is being read, outermost first: a file waits for the package behind it, a package for
    /// its file.
    struct Step {
        std::unique_ptr<OpenFile> file;
        std::unique_ptr<OpenPackage> package;
    };
    std::vector<Step> open_;
    bool result_ = false;
};

} // namespace Kor
