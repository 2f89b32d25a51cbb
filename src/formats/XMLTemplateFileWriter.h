#pragma once

#include <set>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

namespace Kor {

class ByteSink;
class LOD;
class Template;
class TemplateManager;
class Type;
class XMLTemplateWriter;

/// Writes all definitions of a template file: plain types, enumerations, levels of detail,
/// templates; in each group what others need first, otherwise in key order.
class XMLTemplateFileWriter {
public:
    XMLTemplateFileWriter(const TemplateManager& manager, std::string_view fileName);

    /// Writes all definitions of a file to `output`, or to the file itself without one. Failures
    /// are reported to the ErrorManager.
    static bool Save(TemplateManager& manager, const char* fileName, const char* output);

    /// False when the sink failed.
    bool Write(ByteSink& sink) const;

private:
    std::set<std::string> CollectUsedPackages() const;
    void WriteGroup(const std::vector<const Type*>& types, XMLTemplateWriter& elements) const;
    void WriteTemplates(const std::vector<const Type*>& types, XMLTemplateWriter& elements) const;
    void DeclareMentioned(const Type& type, std::unordered_set<const Type*>& unknown,
                          XMLTemplateWriter& elements) const;

    std::vector<const Type*> plainTypes_;
    std::vector<const Type*> enumerations_;
    std::vector<const LOD*> lods_;
    std::vector<const Type*> templates_; // latest versions
    std::string package_;
};

} // namespace Kor
