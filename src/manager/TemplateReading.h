#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "core/ByteStreams.h"

namespace Kor {

class TemplateManager;

/// Reads one template file, and the packages that it uses, and those that these use. Files wait
/// for the packages they use in a list, so that no chain of packages can exhaust the stack.
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
    bool TryNextSearchPath(OpenPackage& package);
    void AdvanceFile();
    void AdvancePackage();
    void FinishFile(bool read);
    void FinishPackage(bool loaded);

    TemplateManager& manager_;
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
