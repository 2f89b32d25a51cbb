// Whole scenes: the XML reader alone, loading, saving and clearing.

#include "Session.h"

#include "ovi/ovi.h"
#include "platform/File.h"
#include "xml/IXMLListener.h"
#include "xml/XMLParser.h"

#include <expat.h>
#include <pugixml.hpp>

#include <cstdio>
#include <memory>

namespace {

const char* GetScenePath() {
    return GetSettings().scene.c_str();
}

/// Where a scene is saved to: beside the one that was read.
std::string GetSavedPath(const char* suffix) {
    return GetSettings().scene + suffix + ".asset";
}

// -- the reader alone -----------------------------------------------------------------------------

class IgnoringListener : public Kor::IXMLListener {
public:
    bool StartElement(std::string_view, const Kor::XMLAttributes&) override { return true; }
    bool EndElement(std::string_view) override { return true; }
    bool Comment(std::string_view) override { return true; }
    bool Characters(std::string_view) override { return true; }
};

bool ReadWithOurs() {
    const auto file = Kor::InputFile::Open(GetScenePath());
    IgnoringListener listener;
    Kor::XMLParser parser;
    parser.SetXMLListener(&listener);
    return file && parser.Parse(GetScenePath(), *file);
}

void ReadOvi(benchmark::State& state) {
    if (!HasScene(state))
        return;
    for (auto _ : state) {
        if (!ReadWithOurs())
            state.SkipWithError("the reader failed");
    }
    ReportPeakMemory(state);
}
BENCHMARK(ReadOvi)->Name("read/ovi")->Iterations(1);

// -- the others' readers --------------------------------------------------------------------------

void XMLCALL OnStart(void*, const XML_Char*, const XML_Char**) {}
void XMLCALL OnEnd(void*, const XML_Char*) {}
void XMLCALL OnText(void*, const XML_Char*, int) {}

/// Feeds the file in blocks of the size that our reader takes.
bool ReadWithExpat() {
    constexpr int kBlockSize = 256 * 1024;
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen(GetScenePath(), "rb"),
                                                               std::fclose);
    const std::unique_ptr<XML_ParserStruct, void (*)(XML_Parser)> parser(XML_ParserCreate(nullptr),
                                                                         XML_ParserFree);
    if (!file || !parser)
        return false;
    std::setvbuf(file.get(), nullptr, _IONBF, 0);
    XML_SetElementHandler(parser.get(), OnStart, OnEnd);
    XML_SetCharacterDataHandler(parser.get(), OnText);
    for (;;) {
        void* block = XML_GetBuffer(parser.get(), kBlockSize);
        if (!block)
            return false;
        const auto taken = static_cast<int>(std::fread(block, 1, kBlockSize, file.get()));
        const bool last = taken < kBlockSize;
        if (XML_ParseBuffer(parser.get(), taken, last) != XML_STATUS_OK)
            return false;
        if (last)
            return true;
    }
}

void ReadExpat(benchmark::State& state) {
    if (!HasScene(state))
        return;
    for (auto _ : state) {
        if (!ReadWithExpat())
            state.SkipWithError("expat failed");
    }
    ReportPeakMemory(state);
}
BENCHMARK(ReadExpat)->Name("read/expat")->Iterations(1);

void ReadPugixml(benchmark::State& state) {
    if (!HasScene(state))
        return;
    pugi::xml_document document;
    for (auto _ : state) {
        if (!document.load_file(GetScenePath()))
            state.SkipWithError("pugixml failed");
    }
    ReportPeakMemory(state);
}
BENCHMARK(ReadPugixml)->Name("read/pugixml")->Iterations(1);

// -- loading --------------------------------------------------------------------------------------

void LoadOvi(benchmark::State& state) {
    if (!HasScene(state))
        return;
    const Session session;
    for (auto _ : state) {
        if (!session.LoadScene(state))
            break;
    }
    ReportPeakMemory(state);
}
BENCHMARK(LoadOvi)->Name("load/ovi")->Iterations(1);

// -- saving ---------------------------------------------------------------------------------------

void SaveOvi(benchmark::State& state) {
    const Session session;
    if (!HasScene(state) || !session.LoadScene(state))
        return;
    const std::string path = GetSavedPath(".ovi");
    for (auto _ : state) {
        if (!OviAssetManager_SaveScene(path.c_str()))
            state.SkipWithError("the scene was not saved");
    }
    ReportPeakMemory(state);
}
BENCHMARK(SaveOvi)->Name("save/ovi")->Iterations(1);

void SavePugixml(benchmark::State& state) {
    pugi::xml_document document;
    if (!HasScene(state) || !document.load_file(GetScenePath()))
        return;
    const std::string path = GetSavedPath(".pugixml");
    for (auto _ : state) {
        if (!document.save_file(path.c_str()))
            state.SkipWithError("pugixml did not save");
    }
    ReportPeakMemory(state);
}
BENCHMARK(SavePugixml)->Name("save/pugixml")->Iterations(1);

// -- clearing -------------------------------------------------------------------------------------

void ClearOvi(benchmark::State& state) {
    const Session session;
    if (!HasScene(state) || !session.LoadScene(state))
        return;
    for (auto _ : state)
        OviAssetManager_NewScene();
    if (OviAssetManager_GetAssetCount() != 0)
        state.SkipWithError("the scene is not empty");
    ReportPeakMemory(state);
}
BENCHMARK(ClearOvi)->Name("clear/ovi")->Iterations(1);

} // namespace
