#include "calls/World.h"

#include <algorithm>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <iterator>

#include "calls/Files.h"
#include "instances/Asset.h"
#include "instances/AttributeInstance.h"
#include "manager/TemplateManager.h"
#include "schema/Command.h"
#include "schema/GeometryAlternate.h"
#include "schema/View.h"
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

Objects& World::GetObjects() {
    if (!isCurrent_)
        objects_.Collect(host_);
    isCurrent_ = true;
    return objects_;
}

void World::Own(OviObject* object) {
    auto* owned = reinterpret_cast<Object*>(object);
    if (owned && std::find(host_.begin(), host_.end(), owned) == host_.end())
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
        return type->IsRegistered() || type->IsDisplaced() || type->IsLeftToUsers();
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

/// A type that was left to its users may go in the call.
World::Transfer::Transfer(World& world) : world_(world) {
    for (Object* object : world.GetObjects().GetAll()) {
        const auto* type = ObjectCast<Type>(object);
        if (IsOwned(*object) && !(type && type->IsLeftToUsers()))
            owned_.push_back(object);
    }
}

World::Transfer::~Transfer() {
    for (Object* object : owned_) {
        if (!IsOwned(*object))
            world_.Own(reinterpret_cast<OviObject*>(object));
    }
    std::vector<Object*>& host = world_.host_;
    host.erase(std::remove_if(host.begin(), host.end(),
                              [](const Object* object) { return IsOwned(*object); }),
               host.end());
}

void World::Terminate() {
    Objects ended(objects_);
    ended.HideManaged(host_);
    const Template* root = TemplateManager::Get()->GetRoot();
    Ovi_Terminate(); // in which a new manager may begin
    if (!TemplateManager::Exists() || TemplateManager::Get()->GetRoot() != root)
        objects_ = std::move(ended);
    Forget();
}

bool World::MayDelete(Object& object) {
    if (const auto* definition = ObjectCast<Template>(&object))
        return definition == TemplateManager::Get()->GetRoot() ||
               (definition->GetChildCount() == 0 && !definition->IsInUse() &&
                !definition->IsUsedByInstances());
    if (const auto* property = ObjectCast<Property>(&object))
        return !property->IsInUse();
    return true;
}

/// What refers to others goes first: instances, then properties with their values; types, which may
/// need each other, go last.
void World::End() {
    Forget();
    std::vector<Object*> left = TakeWhatNobodyOwns();
    do
        Ovi_Terminate();
    while (TemplateManager::Exists()); // there may have been several starts
    Ovi_SetChecks(false);
    for (Object* object : left)
        DropValues(object);
    const auto end = [&left](auto isNext) {
        const auto rest = std::stable_partition(left.begin(), left.end(), isNext);
        std::for_each(left.begin(), rest, &Delete);
        left.erase(left.begin(), rest);
    };
    end([](const Object* object) { return ObjectCast<PropertyInstance>(object) != nullptr; });
    end([](const Object* object) { return ObjectCast<Instance>(object) != nullptr; });
    end([](const Object* object) {
        return ObjectCast<Property>(object) && !ObjectCast<GeometryAlternate>(object);
    });
    for (Object* object : left)
        Unlink(object, left);
    end([](const Object* object) { return !ObjectCast<Type>(object); });
    end([](const Object*) { return true; });
    host_.clear();
}

void World::Delete(Object* object) {
    OviObject_Delete(reinterpret_cast<OviObject*>(Traced(object)));
}

/// Values may hold instances that need properties of any template. Of those that a template
/// declares some may be hidden behind others of the same name.
void World::DropValues(Object* object) {
    const auto drop = [](Object* property) {
        auto* attribute = reinterpret_cast<OviAttributeProperty*>(property);
        OviAttributeProperty_SetDefaultValue(attribute, nullptr);
        OviAttributeProperty_SetMinValue(attribute, nullptr);
        OviAttributeProperty_SetMaxValue(attribute, nullptr);
    };
    drop(object); // nothing happens unless it is an attribute
    const auto* definition = ObjectCast<Template>(object);
    if (!definition)
        return;
    for (int i = 0; i < definition->GetPropertyCount(); ++i)
        drop(definition->GetPropertyByName(i));
    for (Property* property : definition->GetDeclaredProperties())
        drop(property);
}

/// Takes away what a type refers to, so that none is deleted while another one needs it; what is
/// left by itself has its own turn.
void World::Unlink(Object* object, const std::vector<Object*>& left) {
    OviType_SetBaseType(reinterpret_cast<OviType*>(object), nullptr);
    const auto* definition = ObjectCast<Template>(object);
    while (definition && !definition->GetDeclaredProperties().empty()) {
        Property* property = definition->GetDeclaredProperties().back();
        if (std::find(left.begin(), left.end(), property) == left.end())
            Delete(property);
        else
            OviTemplate_RemoveProperty(reinterpret_cast<OviTemplate*>(object),
                                       reinterpret_cast<OviProperty*>(property));
    }
}

/// The host's objects, and those that the library never deletes by intent.
std::vector<Object*> World::TakeWhatNobodyOwns() {
    std::vector<Object*> left = host_;
    for (Object* object : GetObjects().GetAll()) {
        const auto* alternate = ObjectCast<GeometryAlternate>(object);
        const bool isNobodys = ObjectCast<Command>(object) || ObjectCast<LOD>(object) ||
                               (alternate && !alternate->GetOwner() && !alternate->GetKeeper()) ||
                               (ObjectCast<Instance>(object) && !ObjectCast<Asset>(object));
        if (isNobodys && std::find(host_.begin(), host_.end(), object) == host_.end())
            left.push_back(object);
    }
    return left;
}
