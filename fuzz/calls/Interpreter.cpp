#include "calls/Interpreter.h"

#include <cstdio>
#include <cstdlib>
#include <optional>

#include "calls/CallTable.h"

const std::vector<Call>& AllCalls() {
    static const std::vector<Call> kCalls = [] {
        std::vector<Call> all;
        for (auto* table :
             {&CallsOfObjects, &CallsOfTypes, &CallsOfSchema, &CallsOfManager, &CallsOfInstances}) {
            const std::vector<Call> calls = table();
            all.insert(all.end(), calls.begin(), calls.end());
        }
        return all;
    }();
    return kCalls;
}

namespace {

/// With OVI_FUZZ_TRACE set, says on the standard error stream which calls an input makes.
void Trace(const Call& call, const World& world) {
    static const bool kIsOn = std::getenv("OVI_FUZZ_TRACE") != nullptr;
    if (kIsOn)
        std::fprintf(stderr, "%*s%s\n", static_cast<int>(world.GetCallDepth() * 4), "", call.name);
}

} // namespace

void RunNextCall(World& world) {
    const Call& call = AllCalls()[world.GetInput().TakeIndex(AllCalls().size())];
    if (world.GetCallDepth() > 0 && (call.traits & Call::kOutside) != 0)
        return;
    Trace(call, world);
    std::optional<World::Transfer> transfer;
    if (!(call.traits & Call::kReads))
        transfer.emplace(world);
    call.run(world);
    if (!(call.traits & Call::kReads))
        world.Forget();
}
