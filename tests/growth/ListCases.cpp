// Lists that belong to one object: what enters and leaves them does so in every order.

#include <functional>

#include "Cases.h"
#include "Orders.h"
#include "ovi/ovi.h"

namespace {

using Change = std::function<void(int)>;

/// Lets everything enter in one order after the other, and leave in the next one.
void EnterAndLeave(Run& run, const Change& enter, const Change& leave,
                   const std::function<int()>& count) {
    for (size_t i = 0; i < std::size(kOrders); ++i) {
        const Order in = kOrders[i];
        const Order out = kOrders[(i + 2) % std::size(kOrders)];
        const int before = count();
        run.Step((std::string("enter ") + NameOf(in)).c_str(), [&] {
            for (const int number : NumbersBelow(run.Size(), in))
                enter(number);
            return count() == before + run.Size();
        });
        run.Step((std::string("leave ") + NameOf(out)).c_str(), [&] {
            for (const int number : NumbersBelow(run.Size(), out))
                leave(number);
            return count() == before;
        });
    }
}

template <class T> std::vector<T*> MakeMany(int count, const std::function<T*(int)>& make) {
    std::vector<T*> all;
    for (int i = 0; i < count; ++i)
        all.push_back(make(i));
    return all;
}

template <class T> T* At(const std::vector<T*>& all, int number) {
    return all[static_cast<size_t>(number)];
}

template <class T> void DeleteInNoOrder(Run& run, const char* step, const std::vector<T*>& all) {
    run.Step(step, [&] {
        for (const int number : NumbersBelow(run.Size(), Order::kScattered))
            OviObject_Delete(At(all, number));
        return true;
    });
}

void Load(Run& run, const std::string& text) {
    const std::string path = run.Write("schema.template", "<templates>" + text + "</templates>");
    run.Step("load", [&] { return OviTemplateManager_LoadTemplateFile(path.c_str()); });
}

OviProperty* GetProperty(const char* templateName, const char* name) {
    return OviTemplate_GetProperty(OviTemplateManager_GetTemplate(templateName), name);
}

} // namespace

void RunLabels(Run& run) {
    OviTemplate* owner = OviTemplateManager_CreateTemplate("T");
    EnterAndLeave(
        run, [&](int i) { OviNamedObject_SetLabel(owner, NameFor("l", i).c_str(), "text"); },
        [&](int i) { OviNamedObject_SetLabel(owner, NameFor("l", i).c_str(), nullptr); },
        [&] { return OviNamedObject_GetLabelCount(owner); });
}

void RunAssetsOfOneName(Run& run) {
    for (const Order order : kOrders) {
        const auto assets = MakeMany<OviAsset>(
            run.Size(), [](int i) { return OviAssetManager_NewAsset(NameFor("a", i).c_str()); });
        run.Step("name all the same", [&] {
            for (OviAsset* asset : assets)
                OviNamedObject_SetName(asset, "Same");
            return OviAssetManager_GetAsset("Same") == assets.front();
        });
        run.Step("find", [&] {
            bool found = true;
            for (int i = 0; i < run.Size(); ++i)
                found = OviAssetManager_GetAsset("Same") == assets.front() && found;
            return found;
        });
        run.Step((std::string("name anew ") + NameOf(order)).c_str(), [&] {
            for (const int i : NumbersBelow(run.Size(), order))
                OviNamedObject_SetName(At(assets, i), i % 2 ? "Same" : "Other");
            return OviAssetManager_GetAssetCount() == run.Size();
        });
        run.Step((std::string("remove ") + NameOf(order)).c_str(), [&] {
            for (const int i : NumbersBelow(run.Size(), order))
                OviAssetManager_RemoveAsset(At(assets, i));
            return OviAssetManager_GetAssetCount() == 0;
        });
        DeleteInNoOrder(run, "delete", assets);
    }
    for (int i = 0; i < run.Size(); ++i)
        OviNamedObject_SetName(OviAssetManager_NewAsset("New"), "Same");
    run.Step("clear", [] { return OviAssetManager_NewScene(); });
}

void RunCallbacks(Run& run) {
    std::vector<char> users(static_cast<size_t>(run.Size()));
    const auto listen = [](void*, void*, int, void*) {};
    int count = 0;
    EnterAndLeave(
        run,
        [&](int i) {
            count += OviNotificationManager_RegisterInstanceCallback(listen,
                                                                     &users[static_cast<size_t>(i)])
                         ? 0
                         : 1;
        },
        [&](int i) {
            count -=
                OviNotificationManager_UnregisterInstanceCallback(&users[static_cast<size_t>(i)])
                    ? 1
                    : 0;
        },
        [&] { return count; });
}

void RunChildren(Run& run) {
    OviTemplate* parent = OviTemplateManager_CreateTemplate("Parent");
    const auto children = MakeMany<OviTemplate>(run.Size(), [](int i) {
        return OviTemplateManager_CreateTemplate(NameFor("C", i).c_str());
    });
    EnterAndLeave(
        run, [&](int i) { OviTemplate_AddParent(At(children, i), parent); },
        [&](int i) { OviTemplate_RemoveParent(At(children, i), parent); },
        [&] { return OviTemplate_GetChildCount(parent); });
    const auto clones = MakeMany<OviTemplate>(run.Size(), [&](int i) {
        return static_cast<OviTemplate*>(OviObject_Clone(At(children, i)));
    });
    DeleteInNoOrder(run, "delete clones", clones);
    DeleteInNoOrder(run, "delete children", children);
}

void RunParents(Run& run) {
    OviTemplate* child = OviTemplateManager_CreateTemplate("Child");
    OviTemplate_AddParent(child, OviTemplateManager_CreateTemplate("First"));
    const auto parents = MakeMany<OviTemplate>(run.Size(), [](int i) {
        return OviTemplateManager_CreateTemplate(NameFor("P", i).c_str());
    });
    EnterAndLeave(
        run, [&](int i) { OviTemplate_AddParent(child, At(parents, i)); },
        [&](int i) { OviTemplate_RemoveParent(child, At(parents, i)); },
        [&] { return OviTemplate_GetParentCount(child); });
    for (OviTemplate* parent : parents)
        OviTemplate_AddParent(child, parent);
    DeleteInNoOrder(run, "delete parents", parents);
}

void RunDeclarations(Run& run) {
    OviTemplate* owner = OviTemplateManager_CreateTemplate("T");
    const auto properties = MakeMany<OviProperty>(
        run.Size(), [](int i) { return OviNodeProperty_New(NameFor("p", i).c_str(), 1); });
    for (const int place : {-1, 0}) {
        EnterAndLeave(
            run, [&](int i) { OviTemplate_AddProperty(owner, At(properties, i), place); },
            [&](int i) { OviTemplate_RemoveProperty(owner, At(properties, i)); },
            [&] { return OviTemplate_GetPropertyCount(owner); });
    }
    for (const int i : NumbersBelow(run.Size(), Order::kScattered))
        OviTemplate_AddProperty(owner, At(properties, i), i / 2);
    DeleteInNoOrder(run, "delete", properties);
}

void RunViews(Run& run) {
    OviTemplate* owner = OviTemplateManager_CreateTemplate("T");
    OviTemplate_CreateView(owner, "pattern");
    OviObject* pattern = OviTemplate_GetView(owner, "pattern", false);
    const auto views = MakeMany<OviView>(run.Size(), [&](int i) {
        auto* view = static_cast<OviView*>(OviObject_Clone(pattern));
        OviNamedObject_SetName(view, NameFor("v", i).c_str());
        return view;
    });
    EnterAndLeave(
        run, [&](int i) { OviTemplate_AddView(owner, At(views, i)); },
        [&](int i) { OviTemplate_RemoveView(owner, At(views, i)); },
        [&] { return OviTemplate_GetViewCount(owner); });
    for (OviView* view : views)
        OviTemplate_AddView(owner, view);
    DeleteInNoOrder(run, "delete", views);
}

void RunGroupItems(Run& run) {
    OviGroup* group = OviGroup_New("g");
    const auto items =
        MakeMany<OviViewItem>(run.Size(), [](int) { return OviViewProperty_New("item", nullptr); });
    for (const int divisor : {1, 2, 1000000000}) { // at the end, in the middle, in front
        EnterAndLeave(
            run, [&](int i) { OviGroup_AddViewItemAt(group, At(items, i), i / divisor); },
            [&](int) { OviGroup_RemoveViewItemAt(group, OviGroup_GetViewItemCount(group) / 2); },
            [&] { return OviGroup_GetViewItemCount(group); });
    }
    run.Step("one item many times", [&] {
        for (int i = 0; i < run.Size(); ++i)
            OviGroup_AddViewItemAt(group, items.front(), i / 2);
        for (int i = 0; i < run.Size(); ++i)
            OviGroup_RemoveViewItemAt(group, i % OviGroup_GetViewItemCount(group));
        return OviGroup_GetViewItemCount(group) == 0;
    });
    for (OviViewItem* item : items)
        OviGroup_AddViewItemAt(group, item, -1);
    DeleteInNoOrder(run, "delete", items);
    OviObject_Delete(group);
}

void RunCommands(Run& run) {
    std::string text = "<template name='T'><node name='other'/><node name='n'>";
    for (int i = run.Size(); i-- > 0;)
        text += "<command execute='" + NameFor("c", i) + "' notification='BindingChanged'/>\n";
    Load(run, text + "</node></template>");
    OviProperty* property = GetProperty("T", "n");
    OviProperty* other = GetProperty("T", "other");
    const auto commands = MakeMany<OviCommand>(
        run.Size(), [&](int i) { return OviProperty_GetCommandAt(property, i); });
    EnterAndLeave(
        run, [&](int i) { OviProperty_AddCommand(other, At(commands, i)); },
        [&](int i) { OviProperty_RemoveCommand(other, At(commands, i)); },
        [&] { return OviProperty_GetCommandCount(other); });
    DeleteInNoOrder(run, "delete", commands);
}

void RunAlternates(Run& run) {
    std::string text;
    for (int i = run.Size(); i-- > 0;)
        text += "<lod name='" + NameFor("L", i) + "' type='Surface'/>\n";
    text += "<template name='T'><geometry name='g'>";
    for (int i = run.Size(); i-- > 0;)
        text += "<alternate lod='" + NameFor("L", i) + "'/>\n";
    Load(run, text + "</geometry></template>");
    auto* geometry = static_cast<OviGeometryProperty*>(GetProperty("T", "g"));
    OviGeometryProperty* other = OviGeometryProperty_New("other", 1);
    const auto alternates = MakeMany<OviGeometryAlternate>(
        run.Size(), [&](int i) { return OviGeometryProperty_GetAlternateAt(geometry, i); });
    EnterAndLeave(
        run, [&](int i) { OviGeometryProperty_AddAlternate(other, At(alternates, i)); },
        [&](int i) { OviGeometryProperty_RemoveAlternate(other, At(alternates, i)); },
        [&] { return OviGeometryProperty_GetAlternateCount(other); });
    DeleteInNoOrder(run, "delete", alternates);
    OviObject_Delete(other);
}

void RunLevels(Run& run) {
    Load(run, "<lod name='Pattern' type='Surface'/>");
    OviObject* pattern = OviTemplateManager_GetLOD("Pattern");
    const auto levels = MakeMany<OviLOD>(run.Size(), [&](int i) {
        auto* level = static_cast<OviLOD*>(OviObject_Clone(pattern));
        OviNamedObject_SetName(level, NameFor("L", i).c_str());
        return level;
    });
    EnterAndLeave(
        run, [&](int i) { OviTemplateManager_AddLOD(At(levels, i)); },
        [&](int i) { OviTemplateManager_RemoveLOD(At(levels, i)); },
        [] { return OviTemplateManager_GetLODCount(); });
    for (OviLOD* level : levels)
        OviTemplateManager_AddLOD(level);
    DeleteInNoOrder(run, "delete", levels);
}

void RunEnumerationItems(Run& run) {
    std::string text = "<enum name='Other' type='INT32'/><enum name='E' type='INT32'>";
    for (int i = run.Size(); i-- > 0;)
        text += "<item name='" + NameFor("i", i) + "' value='" + std::to_string(i) + "'/>\n";
    Load(run, text + "</enum>");
    OviEnumeration* enumeration = OviTemplateManager_GetEnumeration("E");
    OviEnumeration* other = OviTemplateManager_GetEnumeration("Other");
    const auto items = MakeMany<OviEnumerationItem>(
        run.Size(), [&](int i) { return OviEnumeration_GetItemAt(enumeration, i); });
    EnterAndLeave(
        run, [&](int i) { OviEnumeration_AddItem(other, At(items, i)); },
        [&](int i) { OviEnumeration_RemoveItem(other, At(items, i)); },
        [&] { return OviEnumeration_GetItemCount(other); });
    for (OviEnumerationItem* item : items)
        OviEnumeration_AddItem(other, item);
    DeleteInNoOrder(run, "delete", items);
}
