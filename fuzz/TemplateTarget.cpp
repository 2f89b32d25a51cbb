// Reads the input as a template file, looks at everything it made, and saves it: what was saved
// must give the same model and the same file again.

#include <algorithm>
#include <cstdint>
#include <new>
#include <string>
#include <vector>

#include "api/SchemaDump.h"
#include "core/ByteStreams.h"
#include "formats/XMLTemplateFileWriter.h"
#include "manager/TemplateManager.h"
#include "ovi/ovi.h"
#include "support/Finding.h"

using namespace Kor;

namespace {

constexpr const char* kPath = "fuzz\\F.template";

std::string Save() {
    StringSink sink;
    XMLTemplateFileWriter(*TemplateManager::Get(), kPath).Write(sink);
    return sink.GetText();
}

/// A life of the library, with the sample packages in reach and one file loaded.
class LoadedFile {
public:
    explicit LoadedFile(std::string_view text) {
        Ovi_Initialize();
        OviTemplateManager_AddSearchPath(OVI_SOURCE_DIR "/fuzz/packages", false);
        MemorySource source(text);
        TemplateManager::Get()->LoadTemplateStream(kPath, source);
    }

    ~LoadedFile() { Ovi_Terminate(); }

    LoadedFile(const LoadedFile&) = delete;
    LoadedFile& operator=(const LoadedFile&) = delete;
};

/// Goes through a text line by line.
template <class Take> void ForEachLine(const std::string& text, Take take) {
    for (size_t begin = 0; begin < text.size();) {
        const size_t end = text.find('\n', begin);
        take(text.substr(begin, end - begin));
        begin = end + 1;
    }
}

/// The model that the file defines, without what files do not say:
/// - An attribute without a type comes back with a type that has neither a name nor values.
/// - The root as a parent beside other ones is not written.
/// - Templates of other files are children too, unless these are not loaded.
std::string DescribeModel() {
    std::string model;
    ForEachLine(SchemaDump::OfFile(kPath), [&model](std::string line) {
        if (line == " parent Object#1" || line.rfind(" child ", 0) == 0)
            return;
        if (line.rfind("  type  bind", 0) == 0)
            line.insert(7, "none");
        model += line + "\n";
    });
    return model;
}

/// Whether the file belongs to a package that it uses or that is used by one: loaded alone it would
/// not find its fellows.
bool IsPartOfALoadedPackage() {
    const TemplateManager& manager = *TemplateManager::Get();
    std::vector<Type*> types(static_cast<size_t>(manager.GetTypesByFileName(kPath, nullptr, 0)));
    manager.GetTypesByFileName(kPath, types.data(), static_cast<int>(types.size()));
    return std::any_of(types.begin(), types.end(), [&](const Type* type) {
        return manager.IsPackageLoaded(type->GetPackageName());
    });
}

/// What a file gives: the model, and the text it is saved as.
struct Reading {
    std::string model;
    std::string saved;
    bool isWhole; ///< Nothing was refused, and no other file is needed.
};

Reading Read(std::string_view text) {
    const LoadedFile file(text);
    Reading reading;
    reading.saved = Save();
    reading.isWhole =
        OviErrorManager_GetErrorItemCount(OVI_LEVEL_ERROR) == 0 && !IsPartOfALoadedPackage();
    reading.model = DescribeModel();
    ExpectSame("looking changes what is saved", reading.saved, Save());
    return reading;
}

/// The package of a file is that of its templates: without any it is saved without one.
bool HasTemplates(const std::string& model) {
    return model.rfind("template ", 0) == 0 || model.find("\ntemplate ") != std::string::npos;
}

/// What a faulty file leaves behind is saved as far as files can say it; that counts then.
void Run(std::string_view text) {
    Reading first = Read(text);
    for (int i = 0; i < 2 && !(first.isWhole && HasTemplates(first.model)); ++i)
        first = Read(first.saved);
    if (!first.isWhole)
        return;
    const Reading second = Read(first.saved);
    Expect(second.isWhole, "a saved file is refused");
    ExpectSame("saved file, loaded and saved again", first.saved, second.saved);
    ExpectSame("model of the saved file\n" + first.saved, first.model, second.model);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, size_t size) {
    try {
        Run(std::string_view(reinterpret_cast<const char*>(data), size));
    } catch (const std::bad_alloc&) {
        return 0; // a file that asks for more memory than there is
    }
    return 0;
}
