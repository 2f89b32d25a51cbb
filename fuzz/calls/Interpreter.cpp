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

std::vector<Call> FindDrastic() {
    std::vector<Call> found;
    for (const Call& call : AllCalls()) {
        if (call.traits & Call::kDrastic)
            found.push_back(call);
    }
    return found;
}

/// Every second call of a callback is one that those around it may suffer from.
const Call& PickCall(World& world) {
    static const std::vector<Call> kDrastic = FindDrastic();
    const bool isDrastic = world.GetCallDepth() > 0 && world.GetInput().TakeByte() % 2 != 0;
    const std::vector<Call>& calls = isDrastic ? kDrastic : AllCalls();
    return calls[world.GetInput().TakeIndex(calls.size())];
}

} // namespace

void RunNextCall(World& world) {
    const Call& call = PickCall(world);
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
