// What single calls and objects promise when memory runs out.

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "faults/Allocations.h"
#include "ovi/ovi.h"

namespace {

/// Runs the calls again and again, each time with one allocation more before all further ones
/// fail, until there are enough.
template <class Prepare, class Calls, class Check>
void RunOutOfMemory(Prepare prepare, Calls calls, Check check) {
    for (long first = 1; first < 2000; ++first) {
        Ovi_Initialize();
        prepare();
        Allocations::Arm(first, Allocations::kFromThenOn);
        calls();
        Allocations::Disarm();
        const bool failed = Allocations::HasFailed();
        check();
        Ovi_Terminate();
        if (!failed)
            return;
    }
    FAIL() << "still not enough memory";
}

TEST(OutOfMemory, NamesAndTextsStayWhole) {
    OviCustomType* type = nullptr;
    const std::string text(100, 'x');
    const std::string newName = "after." + text;
    RunOutOfMemory([&] { type = OviCustomType_New("before.Type", 1); },
                   [&] {
                       OviNamedObject_SetName(type, newName.c_str());
                       OviNamedObject_SetComment(type, text.c_str());
                       OviNamedObject_SetLabel(type, "en", text.c_str());
                       OviNamedObject_SetDescription(type, nullptr, text.c_str());
                   },
                   [&] {
                       const std::string package = OviType_GetPackageName(type);
                       const std::string name = OviNamedObject_GetName(type);
                       EXPECT_EQ(OviType_GetFullName(type), package + "." + name);
                       OviObject_Delete(type);
                   });
}

TEST(OutOfMemory, DiagnosticsAreWholeOrOnlyCounted) {
    const std::string message(100, 'm');
    RunOutOfMemory([] {},
                   [&] {
                       for (int i = 0; i < 3; ++i)
                           OviErrorManager_AddErrorItem(1, message.c_str(), i, message.c_str());
                   },
                   [&] {
                       EXPECT_EQ(OviErrorManager_GetErrorItemCount(1), 3);
                       for (int i = 0; i < 3; ++i) {
                           OviErrorItem* item = OviErrorManager_GetErrorItemAt(i);
                           EXPECT_TRUE(!item || OviErrorItem_GetMessage(item) == message);
                       }
                   });
}

TEST(OutOfMemory, RenamedAssetsStayInTheScene) {
    constexpr int kCount = 600; // more than stand together: a new place may need memory
    OviAsset* renamed = nullptr;
    RunOutOfMemory(
        [&] {
            for (int i = 0; i < kCount; ++i)
                renamed = OviAssetManager_NewAsset(("a" + std::to_string(1000 + i)).c_str());
        },
        [&] { OviNamedObject_SetName(renamed, "a1100_and_behind_it_a_long_name"); },
        [&] {
            EXPECT_EQ(OviAssetManager_GetAssetCount(), kCount);
            EXPECT_EQ(OviAssetManager_GetAsset(OviNamedObject_GetName(renamed)), renamed);
        });
}

/// Whether the scene holds exactly these assets, each found by its name, in the order of names.
void ExpectScene(const std::vector<OviAsset*>& assets) {
    ASSERT_EQ(OviAssetManager_GetAssetCount(), static_cast<int>(assets.size()));
    for (OviAsset* asset : assets)
        EXPECT_EQ(OviAssetManager_GetAsset(OviNamedObject_GetName(asset)), asset);
    for (int i = 1; i < OviAssetManager_GetAssetCount(); ++i)
        EXPECT_LT(std::string(OviNamedObject_GetName(OviAssetManager_GetAssetAt(i - 1))),
                  OviNamedObject_GetName(OviAssetManager_GetAssetAt(i)));
}

/// Makes assets in no order, so that most wait for their places in it.
std::vector<OviAsset*> MakeAssetsInNoOrder(int count) {
    std::vector<OviAsset*> assets;
    for (int i = 0; i < count; ++i)
        assets.push_back(
            OviAssetManager_NewAsset(("a" + std::to_string(1000 + i * 7 % count)).c_str()));
    return assets;
}

TEST(OutOfMemory, AssetsThatWaitForTheirPlacesAreRenamedOrStay) {
    for (const int count : {1, 2, 20, 600}) {
        for (const char* name : {"a0", "a1003_and_behind_it_a_long_name", "z"}) {
            std::vector<OviAsset*> assets;
            RunOutOfMemory([&] { assets = MakeAssetsInNoOrder(count); },
                           [&] { OviNamedObject_SetName(assets[assets.size() / 2], name); },
                           [&] { ExpectScene(assets); });
        }
    }
}

TEST(OutOfMemory, AssetsThatWaitForTheirPlacesAreTakenOutAllTheSame) {
    std::vector<OviAsset*> assets;
    RunOutOfMemory([&] { assets = MakeAssetsInNoOrder(600); },
                   [&] {
                       for (const size_t i : {size_t{0}, size_t{1}, size_t{300}}) {
                           const int place = std::stoi(OviNamedObject_GetName(assets[i]) + 1);
                           const int gone = i == 300 ? 2 : static_cast<int>(i);
                           EXPECT_EQ(OviAssetManager_RemoveAsset(assets[i]), place - 1000 - gone);
                           OviObject_Delete(assets[i]);
                       }
                       OviObject_Delete(assets[2]);
                       OviObject_Delete(assets.back());
                   },
                   [&] {
                       assets.erase(assets.begin() + 300);
                       assets.erase(assets.begin(), assets.begin() + 3);
                       assets.pop_back();
                       ExpectScene(assets);
                   });
}

TEST(OutOfMemory, AssetsThatWaitForTheirPlacesAreDeletedWithTheScene) {
    RunOutOfMemory([] { MakeAssetsInNoOrder(600); }, [] { OviAssetManager_NewScene(); },
                   [] { ExpectScene({}); });
}

TEST(OutOfMemory, DeclarationsAreCopiedWholeOrNotAtAll) {
    const std::string text(3000, 'x');
    OviCustomType* type = nullptr;
    uint32_t bytes = 0;
    int size = 0;
    OviInstance* instance = nullptr;
    RunOutOfMemory(
        [&] {
            bytes = 0;
            size = 0;
            type = OviCustomType_New("Type", 1);
            OviNamedObject_SetComment(type, text.c_str());
            instance = OviInstance_New("Thing");
            OviNamedObject_SetLabel(instance, nullptr, text.c_str());
        },
        [&] {
            OviType_WriteToXML(type, 1, &size, nullptr);
            OviInstance_WriteToXML(instance, 1, &bytes, nullptr);
        },
        [&] {
            EXPECT_TRUE(size == 0 || size > 3000);
            OviObject_Delete(type);
            OviObject_Delete(instance);
        });
    EXPECT_GT(size, 3000);
    EXPECT_GT(bytes, 0u);
}

TEST(OutOfMemory, MoreInstancesThanEverFitAreNotBegun) {
    Ovi_Initialize();
    Allocations::RefuseAbove(1ULL << 36);
    EXPECT_EQ(OviType_NewValue(OviTemplateManager_GetRoot(), nullptr, 2000000000), nullptr);
    EXPECT_TRUE(Allocations::HasFailed());
    Allocations::RefuseAbove(0);
    Ovi_Terminate();
}

TEST(OutOfMemory, GroupsAreDeletedAllTheSame) {
    Ovi_Initialize();
    OviGroup* group = OviGroup_New("outer");
    OviGroup* inner = group;
    for (int i = 0; i < 100; ++i) {
        OviGroup* next = OviGroup_New("inner");
        OviGroup_AddViewItemAt(inner, OviGroup_New("empty"), -1);
        OviGroup_AddViewItemAt(inner, next, -1);
        OviGroup_AddViewItemAt(inner, OviViewProperty_New("leaf", nullptr), -1);
        inner = next;
    }
    Allocations::Arm(1, Allocations::kFromThenOn);
    OviObject_Delete(group);
    Allocations::Disarm();
    EXPECT_EQ(Allocations::GetCount(), 0);
    Ovi_Terminate();
}

} // namespace
