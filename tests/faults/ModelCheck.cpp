#include "faults/ModelCheck.h"

#include <algorithm>
#include <map>
#include <set>

#include "instances/AssetManager.h"
#include "instances/AttributeInstance.h"
#include "manager/TemplateManager.h"
#include "schema/AnchorProperty.h"
#include "schema/GeometryProperty.h"
#include "schema/View.h"
#include "schema/ViewProperty.h"

namespace {

using namespace Kor;

class Check {
public:
    std::vector<std::string> Run() {
        CheckTypes();
        CheckFiles();
        CheckLevels();
        for (int i = 0; i < manager_.GetTemplateCount(); ++i)
            CheckTemplate(*manager_.GetTemplateAt(i));
        CheckAssets();
        return problems_;
    }

private:
    void Expect(bool holds, std::string_view what, std::string_view who) {
        if (!holds)
            problems_.push_back(std::string(what) + ": " + std::string(who));
    }

    /// A list sorted by key: `at` gives its entries, `get` finds by key.
    template <class At, class Get>
    void CheckList(const char* what, int count, const At& at, const Get& get) {
        for (int i = 0; i < count; ++i) {
            const auto* entry = at(i);
            Expect(entry != nullptr, what, "an entry is missing");
            if (!entry)
                continue;
            Expect(get(entry->GetKey()) == entry, what, "not found by its key");
            Expect(i == 0 || !at(i - 1) || at(i - 1)->GetKey() < entry->GetKey(), what,
                   "not in order");
        }
        Expect(at(count) == nullptr && at(-1) == nullptr, what, "shows more than it counts");
    }

    void CheckTypes() {
        CheckList(
            "type", manager_.GetTypeCount(), [this](int i) { return manager_.GetTypeAt(i); },
            [this](std::string_view key) { return manager_.GetType(key); });
        CheckList(
            "enumeration", manager_.GetEnumerationCount(),
            [this](int i) { return manager_.GetEnumerationAt(i); },
            [this](std::string_view key) { return manager_.GetEnumeration(key); });
        CheckList(
            "template", manager_.GetTemplateCount(),
            [this](int i) { return manager_.GetTemplateAt(i); },
            [this](std::string_view key) {
                const size_t hash = key.rfind('#');
                return manager_.GetTemplateVersion(
                    key.substr(0, hash),
                    static_cast<unsigned>(std::stoul(std::string(key.substr(hash + 1)))));
            });
        for (int i = 0; i < manager_.GetTypeCount(); ++i)
            Note(*manager_.GetTypeAt(i));
        for (int i = 0; i < manager_.GetTemplateCount(); ++i)
            Note(*manager_.GetTemplateAt(i));
        for (int i = 0; i < manager_.GetEnumerationCount(); ++i)
            CheckEnumeration(*manager_.GetEnumerationAt(i));
    }

    void Note(const Type& type) {
        Expect(type.IsRegistered() && !type.IsDisplaced(), "not marked as registered",
               type.GetKey());
        std::string file = type.GetFileName();
        std::transform(file.begin(), file.end(), file.begin(),
                       [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
        files_[file].insert(&type);
        const std::string& package = type.GetPackageName();
        const std::string full = package.empty() ? std::string(type.GetNameView())
                                                 : package + "." + std::string(type.GetNameView());
        Expect(type.GetFullName() == full, "full name does not fit", full);
    }

    void CheckEnumeration(const Enumeration& enumeration) {
        Note(enumeration);
        CheckList(
            "item", enumeration.GetItemCount(), [&](int i) { return enumeration.GetItemAt(i); },
            [&](std::string_view key) { return enumeration.GetItem(key); });
        for (int i = 0; i < enumeration.GetItemCount(); ++i)
            Expect(enumeration.GetItemAt(i)->GetEnumeration() == &enumeration,
                   "an item does not know its enumeration", enumeration.GetKey());
    }

    /// Each file has exactly the registered definitions that name it.
    void CheckFiles() {
        for (const auto& [file, types] : files_) {
            std::vector<Type*> found(types.size() + 8);
            const int count =
                manager_.GetTypesByFileName(file, found.data(), static_cast<int>(found.size()));
            Expect(count == static_cast<int>(types.size()), "definitions of a file", file);
            for (int i = 0; i < std::min(count, static_cast<int>(found.size())); ++i)
                Expect(types.count(found[static_cast<size_t>(i)]) == 1,
                       "a definition that is not of the file", file);
        }
    }

    void CheckLevels() {
        CheckList(
            "level", manager_.GetLODCount(), [this](int i) { return manager_.GetLODAt(i); },
            [this](std::string_view key) { return manager_.GetLOD(key); });
        CheckList(
            "anchor type", manager_.GetAnchorTypeCount(),
            [this](int i) { return manager_.GetAnchorTypeAt(i); },
            [this](std::string_view key) { return manager_.GetAnchorType(key); });
    }

    // -- templates --------------------------------------------------------------------------------

    void CheckTemplate(const Template& type) {
        Expect(type.GetKey() == type.GetFullName() + "#" + std::to_string(type.GetVersion()),
               "key does not fit", type.GetKey());
        Expect(&type == manager_.GetRoot() || type.GetParentCount() > 0 || type.IsRecycled(),
               "template without parent", type.GetKey());
        CheckList(
            "parent", type.GetParentCount(), [&](int i) { return type.GetParentAt(i); },
            [&](std::string_view key) { return type.GetParent(key); });
        CheckList(
            "child", type.GetChildCount(), [&](int i) { return type.GetChildAt(i); },
            [&](std::string_view key) { return type.GetChild(key); });
        for (const Template* parent : type.GetParents()) // another one of the key may hide it
            Expect(parent->GetChild(type.GetKey()) != nullptr, "parent does not know its child",
                   type.GetKey());
        for (int i = 0; i < type.GetChildCount(); ++i)
            Expect(type.GetChildAt(i)->GetParent(type.GetKey()) == &type,
                   "child does not know its parent", type.GetKey());
        CheckProperties(type);
        CheckList(
            "view", type.GetViews().GetCount(), [&](int i) { return type.GetViews().GetAt(i); },
            [&](std::string_view key) { return type.GetView(key, false); });
        for (int i = 0; i < type.GetViews().GetCount(); ++i) {
            Expect(type.GetViews().GetAt(i)->IsListed(), "view does not know its template",
                   type.GetKey());
            CheckGroup(*type.GetViews().GetAt(i));
        }
    }

    void CheckProperties(const Template& type) {
        const auto& declared = type.GetDeclaredProperties();
        CheckList(
            "property", type.GetPropertyCount(), [&](int i) { return type.GetPropertyByName(i); },
            [&](std::string_view key) { return type.GetProperty(key, false); });
        for (const Property* property : type.GetOwnProperties())
            Expect(std::find(declared.begin(), declared.end(), property) != declared.end(),
                   "property found but not declared", property->GetFullName());
        for (const Property* property : declared)
            CheckProperty(type, *property);
    }

    void CheckProperty(const Template& holder, const Property& property) {
        const auto& declared = holder.GetDeclaredProperties();
        const auto& holders = property.GetHolders();
        Expect(std::count(declared.begin(), declared.end(), &property) ==
                   std::count(holders.begin(), holders.end(), &holder),
               "property does not know its holder", property.GetFullName());
        if (const Template* owner = property.GetOwner()) {
            const auto& owned = owner->GetDeclaredProperties();
            Expect(std::find(owned.begin(), owned.end(), &property) != owned.end(),
                   "owner does not declare the property", property.GetFullName());
        }
        const bool canGo = property.GetOwner() || property.GetKeeper();
        Expect(canGo, "nobody deletes the property", property.GetFullName());
        if (const auto* geometry = ObjectCast<GeometryProperty>(&property))
            CheckList(
                "alternate", geometry->GetAlternateCount(),
                [&](int i) { return geometry->GetAlternateAt(i); },
                [&](std::string_view key) { return geometry->GetAlternate(key); });
        if (const auto* anchor = ObjectCast<AnchorProperty>(&property))
            CheckList(
                "anchor type of an anchor", anchor->GetAnchorTypeCount(),
                [&](int i) { return anchor->GetAnchorTypeAt(i); },
                [&](std::string_view key) { return anchor->GetAnchorType(key); });
    }

    void CheckGroup(const Group& group) {
        for (int i = 0; i < group.GetViewItemCount(); ++i) {
            const ViewItem* item = group.GetViewItemAt(i);
            const auto& groups = item->GetGroups();
            Expect(std::find(groups.begin(), groups.end(), &group) != groups.end(),
                   "item does not know its group", item->GetKey());
            if (const auto* inner = ObjectCast<Group>(item))
                CheckGroup(*inner);
        }
    }

    // -- scene ------------------------------------------------------------------------------------

    void CheckAssets() {
        const AssetManager& scene = *AssetManager::Get();
        CheckList(
            "asset", scene.GetAssetCount(), [&](int i) { return scene.GetAssetAt(i); },
            [&](std::string_view key) { return scene.GetAsset(key); });
        for (int i = 0; i < scene.GetAssetCount(); ++i) {
            Expect(scene.GetAssetAt(i)->IsListed(), "asset not marked as listed",
                   scene.GetAssetAt(i)->GetKey());
            CheckInstance(*scene.GetAssetAt(i));
        }
    }

    void CheckInstance(const Instance& instance) {
        const auto& held = instance.GetPropertyInstances();
        CheckList(
            "property instance", held.GetCount(), [&](int i) { return held.GetAt(i); },
            [&](std::string_view key) { return held.Get(key); });
        for (const PropertyInstance* one : held) {
            Expect(one->GetInstance() == &instance, "property instance of another", one->GetKey());
            Expect(one->GetProperty()->IsInUse(), "property not in use", one->GetKey());
            const auto* attribute = ObjectCast<AttributeInstance>(one);
            for (int i = 0; attribute && i < attribute->GetDimension(); ++i)
                CheckNested(*attribute, attribute->GetNestedInstance(i));
        }
        for (int i = 0; i < instance.GetTemplateCount(); ++i)
            Expect(instance.GetTemplateAt(i)->IsUsedByInstances(), "template not in use",
                   instance.GetTemplateAt(i)->GetKey());
    }

    void CheckNested(const AttributeInstance& holder, const Instance* nested) {
        if (!nested)
            return;
        Expect(nested->GetHolder() == &holder, "nested instance does not know its holder",
               holder.GetKey());
        CheckInstance(*nested);
    }

    TemplateManager& manager_ = *TemplateManager::Get();
    std::map<std::string, std::set<const Type*>> files_;
    std::vector<std::string> problems_;
};

/// Names that sort the other way round.
class Renaming {
public:
    void Run() {
        TemplateManager& manager = *TemplateManager::Get();
        for (Template* type : Collect<Template>(manager.GetTemplateCount(),
                                                [&](int i) { return manager.GetTemplateAt(i); }))
            RenameIn(*type);
        for (Enumeration* enumeration :
             Collect<Enumeration>(manager.GetEnumerationCount(),
                                  [&](int i) { return manager.GetEnumerationAt(i); })) {
            for (EnumerationItem* item : Collect<EnumerationItem>(
                     enumeration->GetItemCount(), [&](int i) { return enumeration->GetItemAt(i); }))
                Rename(*item);
            Rename(*enumeration);
        }
        for (LOD* lod :
             Collect<LOD>(manager.GetLODCount(), [&](int i) { return manager.GetLODAt(i); }))
            Rename(*lod);
        const AssetManager& scene = *AssetManager::Get();
        for (Asset* asset :
             Collect<Asset>(scene.GetAssetCount(), [&](int i) { return scene.GetAssetAt(i); }))
            Rename(*asset);
    }

private:
    template <class T, class At> static std::vector<T*> Collect(int count, const At& at) {
        std::vector<T*> all;
        for (int i = 0; i < count; ++i)
            all.push_back(at(i));
        return all;
    }

    void Rename(NamedObject& object) {
        if (renamed_.insert(&object).second)
            object.SetName(("z" + std::to_string(next_--) + "_renamed").c_str());
    }

    void RenameIn(Template& type) {
        for (Property* property : type.GetDeclaredProperties().ToVector()) {
            for (Command* command : Collect<Command>(
                     property->GetCommandCount(), [&](int i) { return property->GetCommandAt(i); }))
                Rename(*command);
            Rename(*property);
        }
        for (View* view : Collect<View>(type.GetViews().GetCount(),
                                        [&](int i) { return type.GetViews().GetAt(i); }))
            Rename(*view);
        if (&type != TemplateManager::Get()->GetRoot() && type.GetVersion() == 1 &&
            type.GetLatestVersion() == 1)
            Rename(type);
    }

    int next_ = 9999;
    std::set<const NamedObject*> renamed_; // versions share properties
};

} // namespace

std::vector<std::string> CheckModel() {
    return Check().Run();
}

std::vector<std::string> CheckAfterRenaming() {
    Renaming().Run();
    return CheckModel();
}
