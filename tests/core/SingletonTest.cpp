// The managers come into being on first use and go with their last use.

#include <gtest/gtest.h>

#include "core/ErrorManager.h"
#include "instances/AssetManager.h"
#include "manager/TemplateManager.h"
#include "notify/NotificationManager.h"
#include "ovi/ovi.h"

namespace {

using namespace Kor;

/// How many of the four managers exist.
int CountManagers() {
    return int(ErrorManager::Exists()) + int(NotificationManager::Exists()) +
           int(TemplateManager::Exists()) + int(AssetManager::Exists());
}

class SingletonTest : public ::testing::Test {
protected:
    void SetUp() override {
        Ovi_Terminate(); // whatever another test left
        ASSERT_EQ(CountManagers(), 0);
    }
    void TearDown() override {
        Ovi_Terminate();
        EXPECT_EQ(CountManagers(), 0);
    }
};

TEST_F(SingletonTest, InitializeMakesAllManagersAndTheLastTerminateDeletesThem) {
    Ovi_Initialize();
    EXPECT_EQ(CountManagers(), 4);
    Ovi_Initialize();
    Ovi_Terminate();
    EXPECT_EQ(CountManagers(), 4);
    Ovi_Terminate();
    EXPECT_EQ(CountManagers(), 0);
}

TEST_F(SingletonTest, TerminateWithoutInitializeLeavesNoManager) {
    Ovi_Terminate();
    EXPECT_EQ(CountManagers(), 0);
    Ovi_Terminate();
    EXPECT_EQ(CountManagers(), 0);
}

TEST_F(SingletonTest, FirstUseMakesOneManager) {
    EXPECT_EQ(OviErrorManager_GetErrorItemCount(15), 0);
    EXPECT_EQ(CountManagers(), 1);
    EXPECT_TRUE(ErrorManager::Exists());
    EXPECT_EQ(ErrorManager::Get(), ErrorManager::Get());
}

TEST_F(SingletonTest, ObjectsWithoutOwnerNeedNoManager) {
    OviObject_Delete(OviCustomType_New("a.B", 3));
    OviObject_Delete(OviAttributeProperty_New("size", 1));
    EXPECT_EQ(CountManagers(), 0);
}

TEST_F(SingletonTest, ManagersWithContentLeaveNoManagerBehind) {
    Ovi_Initialize();
    OviTemplate* mesh = OviTemplateManager_CreateTemplate("Mesh");
    OviTemplateManager_CreateTemplateVersion("Mesh", 2);
    OviAttributeProperty* property = OviAttributeProperty_New("size", 1);
    OviAttributeProperty_SetType(property, OviTemplateManager_GetType("STRING"));
    OviTemplate_AddProperty(mesh, property, -1);
    OviAsset* asset = OviAssetManager_NewAsset(nullptr);
    OviInstance_AddTemplate(asset, mesh);
    OviAsset_SetReference(asset, "file");
    Ovi_Terminate();
    EXPECT_EQ(CountManagers(), 0);
}

TEST_F(SingletonTest, ManagersThatWereOnlyUsedAreDeletedToo) {
    EXPECT_NE(OviAssetManager_NewAsset(nullptr), nullptr);
    EXPECT_EQ(OviTemplateManager_GetTypeCount(), 14);
    Ovi_Terminate();
    EXPECT_EQ(CountManagers(), 0);
}

} // namespace
