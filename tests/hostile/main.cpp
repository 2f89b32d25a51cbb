// Loads, saves and unloads input of hostile size, one case a process:
// ovi_hostile CASE SIZE DIRECTORY
//
// Prints a line for each step: its name, the processor time in milliseconds, and by how much memory
// has grown at most since the library began, in kB. The exit code is 0 when every step gave what it
// should.

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <functional>
#include <string>

#include "Input.h"
#include "ovi/ovi.h"

namespace {

/// The largest memory that the process has had, in kB.
long PeakMemory() {
    std::ifstream status("/proc/self/status");
    std::string word;
    long kilobytes = 0;
    while (status >> word) {
        if (word == "VmHWM:")
            status >> kilobytes;
    }
    return kilobytes;
}

bool allWell = true;
long memoryBefore = 0;

void Expect(bool holds, const char* what) {
    if (holds)
        return;
    std::fprintf(stderr, "%s\n", what);
    allWell = false;
}

/// Work that gives whether it was done.
void Step(const char* name, const std::function<bool()>& work) {
    const std::clock_t start = std::clock();
    const bool done = work();
    const double milliseconds = 1e3 * static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
    std::printf("%s;%.1f;%ld\n", name, milliseconds, PeakMemory() - memoryBefore);
    Expect(done, (std::string(name) + " was not done").c_str());
}

void Begin() {
    Ovi_Initialize();
    memoryBefore = PeakMemory();
}

void LoadSchema(const std::string& directory, const std::string& elements) {
    const std::string path = directory + "/schema.template";
    {
        Input input(path);
        input.Put("<templates>" + elements + "</templates>");
    }
    Expect(OviTemplateManager_LoadTemplateFile(path.c_str()), "the schema does not load");
}

/// `isThere` says whether all that the file holds is in the scene.
void LoadAndSaveScene(const std::string& directory, const std::function<bool()>& isThere) {
    const std::string path = directory + "/input.asset";
    const std::string saved = directory + "/saved.asset";
    Step("load", [&] { return OviAssetManager_LoadScene(path.c_str()); });
    Step("save", [&] { return OviAssetManager_SaveScene(saved.c_str()); });
    Expect(isThere(), "the scene is not what the file says");
    Step("clear", [] { return OviAssetManager_NewScene(); });
}

std::string Number(long long number) {
    return std::to_string(number);
}

// -- cases ----------------------------------------------------------------------------------------

/// A scene file of so many bytes.
void RunScene(long long bytes, const std::string& directory) {
    int count = 0;
    {
        Input input(directory + "/input.asset");
        input.Put("<assets>\n");
        for (; input.GetSize() < bytes; ++count)
            input.Put("<asset name='asset" + Number(100000000 + count) +
                      "'><implements template='Part' version='1'/><attribute property='Part.size' "
                      "binding='|a|path|of|the|host' value='" +
                      Number(count) +
                      "'/><attribute property='Part.text' binding='' value='a text of " +
                      Number(count) + "'/></asset>\n");
        input.Put("</assets>\n");
    }
    Begin();
    LoadSchema(directory, "<template name='Part'><attribute name='size' type='INT32'/>"
                          "<attribute name='text' type='STRING'/></template>");
    LoadAndSaveScene(directory, [count] { return OviAssetManager_GetAssetCount() == count; });
}

/// Of the text of the only asset.
size_t GetTextLength() {
    OviPropertyInstance* held =
        OviInstance_GetPropertyInstance(OviAssetManager_GetAsset("a"), "Part.text", false);
    const void* value = OviAttributeInstance_GetValue(static_cast<OviAttributeInstance*>(held));
    return value ? std::strlen(*static_cast<const char* const*>(value)) : 0;
}

/// A scene with an attribute whose value has so many bytes.
void RunValue(long long bytes, const std::string& directory) {
    const std::string text = "a long text with &lt; in it, "; // three characters less when read
    {
        Input input(directory + "/input.asset");
        input.Put("<assets><asset name='a'><implements template='Part' version='1'/>"
                  "<attribute property='Part.text' value='");
        input.Fill(text, bytes);
        input.Put("'/></asset></assets>");
    }
    Begin();
    LoadSchema(directory,
               "<template name='Part'><attribute name='text' type='STRING'/></template>");
    const size_t pieces = (static_cast<size_t>(bytes) + text.size() - 1) / text.size();
    LoadAndSaveScene(directory, [=] { return GetTextLength() == pieces * (text.size() - 3); });
}

/// An element with so many attributes.
void RunAttributes(long long count, const std::string& directory) {
    {
        Input input(directory + "/input.asset");
        input.Put("<assets><asset name='a'");
        for (long long i = 0; i < count; ++i)
            input.Put(" a" + Number(i) + "='" + Number(i) + "'");
        input.Put("/></assets>");
    }
    Begin();
    LoadAndSaveScene(directory, [] { return OviAssetManager_GetAsset("a") != nullptr; });
}

/// A template file with so many templates.
void RunTemplates(long long count, const std::string& directory) {
    const std::string path = directory + "/input.template";
    {
        Input input(path);
        input.Put("<templates>\n");
        for (long long i = 0; i < count; ++i)
            input.Put("<template name='T" + Number(i) +
                      "'><attribute name='size' type='INT32'/></template>\n");
        input.Put("</templates>\n");
    }
    Begin();
    const std::string saved = directory + "/saved.template";
    Step("load", [&] { return OviTemplateManager_LoadTemplateFile(path.c_str()); });
    Step("save", [&] { return OviTemplateManager_SaveTemplateFile(path.c_str(), saved.c_str()); });
    Expect(OviTemplateManager_GetTemplateCount() == count + 1, "templates are missing");
    Step("unload", [&] {
        OviTemplateManager_UnloadTemplateFile(path.c_str());
        return OviTemplateManager_GetTemplateCount() == 1;
    });
}

/// A scene file with so many faults.
void RunErrors(long long count, const std::string& directory) {
    {
        Input input(directory + "/input.asset");
        input.Put("<assets><asset name='a'>\n");
        for (long long i = 0; i < count; ++i)
            input.Put("<attribute property='Unknown.property" + Number(i) + "' value='1'/>\n");
        input.Put("</asset></assets>");
    }
    Begin();
    const std::string path = directory + "/input.asset";
    Step("load", [&] { return OviAssetManager_LoadScene(path.c_str()); });
    Step("read the errors", [count] {
        long long found = 0;
        while (OviErrorManager_GetErrorItemAt(static_cast<int>(found)))
            ++found;
        return found == count && OviErrorManager_GetErrorItemCount(1) == count;
    });
    Step("clear", [] {
        OviErrorManager_Clear();
        return OviErrorManager_GetErrorItemCount(1) == 0;
    });
}

/// Of one of so many packages, in an order that is none.
std::string PackageName(long long i, long long count) {
    return "package" + Number(100000000 + i * 7919 % count);
}

/// A template file that uses so many packages.
std::string UsePackages(long long count, const std::string& directory) {
    const std::string path = directory + "/input.template";
    Input input(path);
    input.Put("<templates>\n");
    for (long long i = 0; i < count; ++i)
        input.Put("<using package='" + PackageName(i, count) + "'/>\n");
    input.Put("</templates>\n");
    return path;
}

/// So many search paths, each with one of the packages that a file uses.
void RunPaths(long long count, const std::string& directory) {
    for (long long i = 0; i < count; ++i)
        std::filesystem::create_directories(directory + "/path" + Number(i) + "/studio/" +
                                            PackageName(i, count));
    const std::string path = UsePackages(count, directory);
    Begin();
    Step("add search paths", [&] {
        for (long long i = 0; i < count; ++i)
            OviTemplateManager_AddSearchPath((directory + "/Path" + Number(i) + "/Studio").c_str(),
                                             false);
        return OviTemplateManager_GetSearchPathCount() == count;
    });
    Step("look for a template", [] { return !OviTemplateManager_LoadTemplate("none.Missing"); });
    Step("load the packages", [&] {
        return OviTemplateManager_LoadTemplateFile(path.c_str()) &&
               OviErrorManager_GetErrorItemCount(OVI_LEVEL_WARNING) == 0;
    });
    Step("list the packages", [count] {
        return OviTemplateManager_EnumeratePackages(false, nullptr, nullptr) == count;
    });
}

/// A search path with so many files in it, and as many packages that are not there.
void RunMissing(long long count, const std::string& directory) {
    const std::string root = directory + "/library";
    std::filesystem::create_directories(root);
    for (long long i = 0; i < count; ++i)
        Input(root + "/a_file_with_a_long_name" + Number(i) + ".txt");
    const std::string path = UsePackages(count, directory);
    Begin();
    OviTemplateManager_AddSearchPath(root.c_str(), false);
    Step("look for packages", [&] {
        return OviTemplateManager_LoadTemplateFile(path.c_str()) &&
               OviErrorManager_GetErrorItemCount(OVI_LEVEL_WARNING) == count;
    });
}

struct Case {
    const char* name;
    void (*run)(long long size, const std::string& directory);
};

constexpr Case kCases[] = {{"scene", &RunScene},           {"value", &RunValue},
                           {"attributes", &RunAttributes}, {"templates", &RunTemplates},
                           {"errors", &RunErrors},         {"paths", &RunPaths},
                           {"missing", &RunMissing}};

} // namespace

int main(int argumentCount, char** arguments) {
    for (const Case& one : kCases) {
        if (argumentCount == 4 && !std::strcmp(arguments[1], one.name)) {
            one.run(std::atoll(arguments[2]), arguments[3]);
            Ovi_Terminate();
            return allWell ? 0 : 1;
        }
    }
    std::fputs(
        "usage: ovi_hostile scene|value|attributes|templates|errors|paths|missing SIZE DIRECTORY\n",
        stderr);
    return 2;
}
