#include "instances/AssetManager.h"

#include <algorithm>
#include <cstdio>
#include <memory>
#include <new>
#include <utility>

// A scene is read by the listener that fills it.
#include "formats/XMLInstanceListener.h"

#include "core/ErrorManager.h"
#include "core/Names.h"
#include "core/NumberText.h"
#include "notify/NotificationManager.h"
#include "platform/File.h"
#include "xml/XMLParser.h"
#include "xml/XMLWriter.h"

namespace Kor {

namespace {

constexpr std::string_view kGeneratedName = "Asset";

void Announce(Asset* asset, int event, void* argument) {
    if (NotificationManager* notifications = NotificationManager::Get())
        notifications->NotifyInstance(asset, event, argument);
}

} // namespace

std::string ForceSceneExtension(const char* path) {
    std::string result(TextOf(path));
    const size_t dot = result.rfind('.');
    if (dot != std::string::npos && dot > 0)
        result.erase(dot);
    return result + ".asset";
}

// -- scenes ---------------------------------------------------------------------------------------

bool AssetManager::NewScene() {
    Clear();
    lowestFreeNumber_ = 1;
    SetDirty(false);
    return true;
}

bool AssetManager::LoadScene(const char* path) {
    std::string fileName;
    try {
        fileName = ForceSceneExtension(path);
        if (const auto file = InputFile::Open(fileName.c_str()))
            return ReadScene(fileName.c_str(), *file);
    } catch (const std::bad_alloc&) {
        if (ErrorManager* errors = ErrorManager::Get())
            errors->ReportOutOfMemory(fileName.empty() ? TextOf(path) : fileName);
        return false;
    }
    std::fprintf(stderr, "Unable to open file '%s'\n", fileName.c_str());
    return false;
}

bool AssetManager::ReadScene(const char* sourceName, ByteSource& source) {
    XMLParser parser;
    XMLInstanceListener listener(parser);
    parser.SetXMLListener(&listener);
    parser.SetErrorListener(ErrorManager::Get());
    return parser.Parse(sourceName, source);
}

bool AssetManager::SaveScene(const char* path) {
    const std::string fileName = ForceSceneExtension(path);
    const auto file = OutputFile::Create(fileName.c_str());
    if (file && WriteScene(*file) && file->Commit())
        return true;
    if (ErrorManager* errors = ErrorManager::Get())
        errors->AddErrorItem(kError, fileName.c_str(), -1, "Unable to open file for writing");
    return false;
}

bool AssetManager::WriteScene(ByteSink& sink) {
    XMLWriter writer;
    writer.Open(sink, true);
    writer.StartElement("assets");
    for (const Asset* asset : GetAssets().Snapshot())
        asset->WriteToXML(writer);
    writer.EndElement();
    return writer.Close();
}

// -- file references ------------------------------------------------------------------------------

bool AssetManager::ReferenceFile(Asset& asset, std::string file) {
    FileUse& use = fileReferences_.try_emplace(file).first->second;
    ++use.count;
    const bool isNew = !std::exchange(use.announced, true);
    if (isNew)
        Announce(&asset, kReferenceFile, file.data());
    return isNew;
}

bool AssetManager::UnreferenceFile(Asset& asset, const std::string& file) {
    const auto entry = fileReferences_.find(file);
    if (entry == fileReferences_.end() || !entry->second.announced)
        return false;
    std::string name = file;
    if (--entry->second.count != 0)
        return false;
    Announce(&asset, kUnreferenceFile, name.data());
    return true;
}

// -- assets ---------------------------------------------------------------------------------------

Asset* AssetManager::NewAsset(const char* name) {
    const std::string given = name ? std::string(name) : FindFreeName();
    if (!IsValidName(given) || GetAsset(given))
        return nullptr;
    auto created = std::make_unique<Asset>(given);
    NotificationManager* notifications = NotificationManager::Get();
    if (!notifications || !notifications->HasInstanceListeners()) {
        AddNewAsset(created.get()); // nobody is told the index, which costs more than all the rest
        return created.release();
    }
    int index = AddAsset(created.get());
    Asset* asset = created.release();
    Announce(asset, kAssetAdded, &index);
    return asset->HasEnded() ? nullptr : asset;
}

std::string AssetManager::FindFreeName() {
    std::string name;
    do {
        name.assign(kGeneratedName).append(std::to_string(lowestFreeNumber_));
    } while (GetAsset(name) && ++lowestFreeNumber_);
    return name;
}

void AssetManager::NoteFreedName(std::string_view name) {
    if (name.size() > kGeneratedName.size() &&
        name.compare(0, kGeneratedName.size(), kGeneratedName) == 0) {
        const int number = ParseInt(name.data() + kGeneratedName.size());
        lowestFreeNumber_ = std::min(lowestFreeNumber_, std::max(number, 1));
    }
}

int AssetManager::AddAssetAndAnnounce(Asset* asset) {
    int result = AddAsset(asset);
    Announce(asset, kAssetAdded, &result);
    return result;
}

int AssetManager::RemoveAssetAndAnnounce(Asset* asset) {
    int result = RemoveAsset(asset);
    Announce(asset, kAssetRemoved, &result);
    return result;
}

} // namespace Kor
