#include "formats/SceneFile.h"

#include <cstdio>
#include <new>

#include "core/ErrorManager.h"
#include "core/Names.h"
#include "formats/XMLInstanceListener.h"
#include "formats/XMLSceneWriter.h"
#include "instances/AssetManager.h"
#include "platform/File.h"
#include "xml/XMLParser.h"
#include "xml/XMLWriter.h"

namespace Kor {

std::string SceneFile::ForceExtension(const char* path) {
    std::string result(TextOf(path));
    const size_t dot = result.rfind('.');
    if (dot != std::string::npos && dot > 0)
        result.erase(dot);
    return result + ".asset";
}

bool SceneFile::Load(const char* path) {
    std::string fileName;
    try {
        fileName = ForceExtension(path);
        if (const auto file = InputFile::Open(fileName.c_str()))
            return Read(fileName.c_str(), *file);
    } catch (const std::bad_alloc&) {
        if (ErrorManager* errors = ErrorManager::Get())
            errors->ReportOutOfMemory(fileName.empty() ? TextOf(path) : fileName);
        return false;
    }
    std::fprintf(stderr, "Unable to open file '%s'\n", fileName.c_str());
    return false;
}

bool SceneFile::Read(const char* sourceName, ByteSource& source) {
    XMLParser parser;
    XMLInstanceListener listener(parser);
    parser.SetXMLListener(&listener);
    parser.SetErrorListener(ErrorManager::Get());
    return parser.Parse(sourceName, source);
}

bool SceneFile::Save(const char* path) {
    const std::string fileName = ForceExtension(path);
    const auto file = OutputFile::Create(fileName.c_str());
    if (file && Write(*file) && file->Commit())
        return true;
    if (ErrorManager* errors = ErrorManager::Get())
        errors->AddErrorItem(kError, fileName.c_str(), -1, "Unable to open file for writing");
    return false;
}

bool SceneFile::Write(ByteSink& sink) {
    XMLWriter writer;
    writer.Open(sink, true);
    writer.StartElement("assets");
    XMLSceneWriter(writer).WriteScene(*AssetManager::Get());
    writer.EndElement();
    return writer.Close();
}

} // namespace Kor
