// Reads the input as a scene file, asks everything about the scene, and saves it: what was saved
// must give the same file again.

#include <cstdint>
#include <cstring>
#include <new>
#include <string>
#include <string_view>

#include "core/ByteStreams.h"
#include "formats/SceneFile.h"
#include "instances/AssetManager.h"
#include "instances/AttributeInstance.h"
#include "ovi/ovi.h"
#include "support/Finding.h"
#include "support/SampleSchema.h"
#include "support/SceneLook.h"
#include "support/Touch.h"

using namespace Kor;

namespace {

std::string Save() {
    StringSink sink;
    SceneFile::Write(sink);
    return sink.GetText();
}

/// Whether the text of an integer reads back as the same one. 8-bit integers are written as
/// characters and read as numbers; all others are read within 32 bits.
bool Survives(const Type& type, const void* value, int index) {
    std::string text;
    type.GetValueAsString(value, text, index);
    std::int64_t read = 0; // room for the widest
    const int width = type.GetValueFromString(text.c_str(), &read, 0);
    const char* element = static_cast<const char*>(value) + static_cast<long>(index) * width;
    return std::memcmp(&read, element, static_cast<size_t>(width)) == 0;
}

/// Sets integers to 0 that no scene file can hold, so that all others can be compared.
void ReplaceWhatFilesCannotHold(AttributeInstance& attribute) {
    const void* value = attribute.GetReadableValue();
    const Type* type = attribute.GetType();
    const Type* storage = type ? type->GetStorageType() : nullptr;
    if (!value || !storage || storage->GetClass() != OVI_CLASS_INT_TYPE)
        return;
    for (int i = 0; i < attribute.GetDimension(); ++i) {
        if (!Survives(*storage, value, i)) {
            attribute.SetValue(nullptr);
            return;
        }
    }
}

// -- a host that listens --------------------------------------------------------------------------

void HearInstance(void*, void* object, int, void*) {
    auto* instance = static_cast<OviInstance*>(object);
    SceneLook::AskName(instance);
    OviInstance_GetTemplateCount(instance);
}

void HearPropertyInstance(void*, void* object, int event, void* argument) {
    auto* member = static_cast<OviPropertyInstance*>(object);
    SceneLook::AskName(member);
    OviPropertyInstance_GetProperty(member);
    if (event == OVI_EVENT_ATTRIBUTE_VALUE_CHANGED || event == OVI_EVENT_BINDING_CHANGED)
        Touch(static_cast<const char*>(argument));
}

void Start() {
    Ovi_Initialize();
    LoadSampleSchema();
    OviNotificationManager_SetDCC(OVI_HOST_MAYA);
    OviNotificationManager_RegisterInstanceCallback(&HearInstance, nullptr);
    OviNotificationManager_RegisterPropertyInstanceCallback(&HearPropertyInstance, nullptr);
    AssetManager::Get()->Terminate();
}

// -- one input ------------------------------------------------------------------------------------

/// A life of the asset manager with one file loaded. The schema stays.
class LoadedScene {
public:
    explicit LoadedScene(std::string_view text) {
        AssetManager::Get()->Initialize();
        MemorySource source(text);
        SceneFile::Read("fuzz.asset", source);
    }

    ~LoadedScene() {
        AssetManager::Get()->Terminate();
        OviErrorManager_Clear();
    }

    LoadedScene(const LoadedScene&) = delete;
    LoadedScene& operator=(const LoadedScene&) = delete;
};

/// What a scene is saved as: as it was read, and after everything was asked, which makes values.
struct Reading {
    std::string saved;
    std::string asked;
    bool isComparable; ///< Files say all that the scene depends on.
};

Reading Read(std::string_view text) {
    const LoadedScene scene(text);
    const SceneLook look;
    Reading reading;
    look.Visit(&ReplaceWhatFilesCannotHold);
    reading.isComparable = !look.DependsOnTheOrderOfTemplates();
    reading.saved = Save();
    look.AskAll();
    look.Visit(&ReplaceWhatFilesCannotHold);
    reading.asked = Save();
    return reading;
}

void Run(std::string_view text) {
    const Reading first = Read(text);
    if (!first.isComparable)
        return;
    ExpectSame("saved scene, loaded and saved again", first.saved, Read(first.saved).saved);
    ExpectSame("scene saved after it was asked, loaded and saved again", first.asked,
               Read(first.asked).saved);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, size_t size) {
    static const bool kStarted = (Start(), true);
    static_cast<void>(kStarted);
    try {
        Run(std::string_view(reinterpret_cast<const char*>(data), size));
    } catch (const std::bad_alloc&) {
        return 0; // a file that asks for more memory than there is
    }
    return 0;
}
