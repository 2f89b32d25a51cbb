// Reads the text in front of the first NUL byte as a template file, then makes the calls that the
// bytes behind it say: any exported function, in any order, with any arguments that the headers
// allow.

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <new>
#include <string_view>

#include "calls/CallTable.h"
#include "calls/Callbacks.h"
#include "calls/Files.h"
#include "calls/Interpreter.h"
#include "core/ByteStreams.h"
#include "instances/AssetManager.h"
#include "manager/TemplateManager.h"

namespace {

/// Without a text of its own an input gets the sample of all kinds.
void LoadSchema(std::string_view text) {
    if (text.empty()) {
        OviTemplateManager_LoadTemplateFile(OVI_SOURCE_DIR "/fuzz/Kinds.template");
        return;
    }
    std::ofstream(Files::Get().GetPath(), std::ios::binary) << text; // for calls that load it again
    Kor::MemorySource source(text);
    try {
        Kor::TemplateManager::Get()->LoadTemplateStream(Files::Get().GetPath().c_str(), source);
    } catch (const std::bad_alloc&) {
        return; // a file that asks for more memory than there is
    }
}

/// Many inputs have callbacks from the beginning, for which few bytes would have to be found.
void Run(std::string_view text, std::string_view bytes) {
    constexpr int kMaxCalls = 200;
    Files::Get().Clear();
    Ovi_Initialize();
    LoadSchema(text);
    World world{Input(bytes)};
    Callbacks::SetWorld(&world);
    if (!bytes.empty() && bytes.back() % 2 != 0)
        Callbacks::Register();
    for (int i = 0; i < kMaxCalls && !world.GetInput().IsEmpty(); ++i)
        RunNextCall(world);
    Callbacks::SetWorld(nullptr);
    world.End();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, size_t size) {
    const std::string_view input(reinterpret_cast<const char*>(data), size);
    const size_t end = input.find('\0');
    if (end != std::string_view::npos)
        Run(input.substr(0, end), input.substr(end + 1));
    return 0;
}
