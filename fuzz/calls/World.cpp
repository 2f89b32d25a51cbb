#include "calls/World.h"

#include <algorithm>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <iterator>

#include "calls/Files.h"
#include "core/BlockPool.h"
#include "instances/Asset.h"
#include "instances/AttributeInstance.h"
#include "instances/LivingInstances.h"
#include "manager/TemplateManager.h"
#include "schema/Command.h"
#include "schema/GeometryAlternate.h"
#include "schema/View.h"
#include "support/Finding.h"
#include "types/EnumerationItem.h"

using namespace Kor;

// -- arguments ------------------------------------------------------------------------------------

namespace {

/// With OVI_FUZZ_TRACE set, says what is handed in.
Object* Traced(Object* object) {
    static const bool kIsOn = std::getenv("OVI_FUZZ_TRACE") != nullptr;
    if (!kIsOn)
        return object;
    const auto* named = ObjectCast<NamedObject>(object);
    std::fprintf(stderr, "        %p of class %d '%.40s'\n", static_cast<void*>(object),
                 object ? object->GetClass() : -1,
                 named ? std::string(named->GetKey()).c_str() : "");
    return object;
}

} // namespace

Object* World::PickObject(int classId) {
    constexpr std::uint8_t kNull = 255;
    constexpr std::uint8_t kAny = 254;
    constexpr std::uint8_t kRareAbove = 240; // makes null and odd objects rare but near
    const std::uint8_t choice = input_.TakeByte();
    if (choice == kNull)
        return nullptr;
    const auto& found = GetObjects().Get(choice == kAny ? kObjectClass : classId);
    if (choice > kRareAbove && choice != kAny && !found.empty())
        return Traced(found.back());
    return Traced(found.empty() ? nullptr : found[choice % found.size()]);
}

Object* World::PickExactly(int classId) {
    const auto& found = GetObjects().Get(classId);
    return Traced(found.empty() ? nullptr : found[input_.TakeIndex(found.size())]);
}

/// Calls in callbacks have texts of their own, since the call around them still reads its own.
std::string& World::NextText() {
    auto& texts = texts_[callDepth_];
    nextText_ = (nextText_ + 1) % std::size(texts);
    texts[nextText_].clear();
    return texts[nextText_];
}

const char* World::NameOfAnObject() {
    Object* object = PickExactly(kNamedObjectClass);
    std::string& text = NextText();
    if (auto* type = ObjectCast<Type>(object))
        text = input_.TakeByte() % 2 ? type->GetFullName() : std::string(type->GetKey());
    else if (auto* property = ObjectCast<Property>(object))
        text = input_.TakeByte() % 2 ? property->GetFullName() : std::string(property->GetKey());
    else if (auto* named = ObjectCast<NamedObject>(object))
        text = named->GetKey();
    return text.c_str();
}

const char* World::PickText() {
    static const char* const kTexts[] = {
        "",     "A",       "x",        "T",      "T.n", "N",       "Object",    "Object#1",
        "T#2",  "T#2.i32", "a.b.C",    ".",      "x.",  ".x",      "T.missing", "p",
        "a b",  "'<&>\"",  "\xff\xfe", "\x80",   "en",  "en_GB",   "-",         "1",
        "true", "0.5",     "lib",      "Asset1", "Odd", "lib.sub", "High",      "studio.base",
    };
    constexpr size_t kLong = 3000;
    const std::uint8_t choice = input_.TakeByte();
    if (choice < 128)
        return NameOfAnObject();
    if (choice < 200)
        return kTexts[choice % std::size(kTexts)];
    if (choice == 200)
        return nullptr;
    std::string& text = NextText();
    if (choice == 201)
        text.assign(kLong, 'L');
    else
        text = input_.TakeBytes(choice % 8 + 1);
    return text.c_str();
}

int World::PickInt() {
    static const int kInts[] = {0, 1, 2, 3, -1, INT_MAX, INT_MIN, INT_MAX - 1, -2, 1000, 41, 4};
    const std::uint8_t choice = input_.TakeByte();
    return choice < 128 ? choice % 8 : kInts[choice % std::size(kInts)];
}

int World::PickCount() {
    static const int kCounts[] = {0, 1, 2, 3, -1, INT_MIN, 17, 300};
    return kCounts[input_.TakeByte() % std::size(kCounts)];
}

const char* World::PickTemplatePath() {
    const auto& paths = Files::Get().GetTemplatePaths();
    return paths[input_.TakeIndex(paths.size())].c_str();
}

const char* World::PickOutputPath() {
    const auto& paths = Files::Get().GetOutputPaths();
    return paths[input_.TakeIndex(paths.size())].c_str();
}

// -- lives ----------------------------------------------------------------------------------------

World::World(Input input) : input_(input) {
    SetChecks(Ovi_GetChecks());
}

bool World::IsAlive(const void* object) {
    if (BlockPool::FindObject(object).state != ObjectAt::kAlive)
        return false;
    const auto* named = ObjectCast<NamedObject>(static_cast<const Object*>(object));
    return !named || !named->HasEnded();
}

void World::SetChecks(bool on) {
    if (on || Ovi_GetChecks())
        Ovi_SetChecks(on);
    BlockPool::KeepDead(true);
}

Objects& World::GetObjects() {
    if (isCurrent_)
        return objects_;
    host_.erase(std::remove_if(host_.begin(), host_.end(), std::not_fn(&IsAlive)), host_.end());
    objects_.Collect(host_);
    seen_.insert(objects_.GetAll().begin(), objects_.GetAll().end());
    isCurrent_ = true;
    return objects_;
}

void World::Own(OviObject* object) {
    auto* owned = reinterpret_cast<Object*>(object);
    if (!owned || !IsAlive(owned))
        return;
    seen_.insert(owned);
    if (std::find(host_.begin(), host_.end(), owned) == host_.end())
        host_.push_back(owned);
}

void World::Disown(const Object* object) {
    host_.erase(std::remove(host_.begin(), host_.end(), object), host_.end());
}

/// Properties are followed by the calls that add and remove them.
bool World::IsOwned(const Object& object) {
    if (const auto* item = ObjectCast<EnumerationItem>(&object); item && item->GetEnumeration())
        return true;
    if (const auto* type = ObjectCast<Type>(&object))
        return type->GetOwner() != Owner::kHost;
    if (const auto* asset = ObjectCast<Asset>(&object))
        return asset->IsListed();
    if (const auto* instance = ObjectCast<Instance>(&object))
        return instance->GetHolder() != nullptr;
    if (const auto* member = ObjectCast<PropertyInstance>(&object))
        return member->GetInstance() != nullptr;
    if (const auto* view = ObjectCast<View>(&object); view && view->IsListed())
        return true;
    if (const auto* item = ObjectCast<ViewItem>(&object))
        return !item->GetGroups().empty();
    return false;
}

World::Transfer::Transfer(World& world) : world_(world) {
    for (Object* object : world.GetObjects().GetAll()) {
        if (IsOwned(*object))
            owned_.push_back(object);
    }
}

World::Transfer::~Transfer() {
    for (Object* object : owned_) {
        if (IsAlive(object) && !IsOwned(*object))
            world_.Own(reinterpret_cast<OviObject*>(object));
    }
    std::vector<Object*>& host = world_.host_;
    const auto isNotTheHosts = [](const Object* object) {
        return !IsAlive(object) || IsOwned(*object);
    };
    host.erase(std::remove_if(host.begin(), host.end(), isNotTheHosts), host.end());
}

Object* World::GetHeard() const {
    Object* heard = heard_[callDepth_];
    return heard && IsAlive(heard) ? heard : nullptr;
}

void World::End() {
    Forget();
    static_cast<void>(GetObjects());
    do
        Ovi_Terminate();
    while (TemplateManager::Exists()); // there may have been several starts
    DeleteAll();
    for (const Object* object : seen_) {
        if (IsAlive(object))
            Traced(const_cast<Object*>(object));
        Expect(!IsAlive(object), "an object outlives the library and all that the host had");
    }
    Ovi_SetChecks(false);
    BlockPool::KeepDead(false);
}

/// What the host has, and commands, levels and alternates of its own, which their lists never free.
/// Instances of values stay once the host may know them, by an event perhaps.
void World::DeleteAll() {
    std::vector<Object*> left(host_);
    for (Object* object : seen_) {
        const bool isNobodys =
            IsAlive(object) && (ObjectCast<Command>(object) || ObjectCast<LOD>(object) ||
                                ObjectCast<GeometryAlternate>(object));
        if (isNobodys)
            left.push_back(object);
    }
    LivingInstances::ForEach([&left](Instance& instance) { left.push_back(&instance); });
    for (Object* object : left) {
        if (IsAlive(object))
            OviObject_Delete(reinterpret_cast<OviObject*>(Traced(object)));
    }
    host_.clear();
}
