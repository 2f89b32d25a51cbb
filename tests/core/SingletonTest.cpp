// The managers come into being on first use and go with their last use.

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "core/ErrorManager.h"
#include "instances/Asset.h"
#include "instances/AssetManager.h"
#include "manager/TemplateManager.h"
#include "notify/NotificationManager.h"
#include "ovi/ovi.h"
#include "types/CustomType.h"

namespace {

using namespace Kor;

/// How many of the four managers exist.
int CountManagers() {
    return int(ErrorManager::Exists()) + int(NotificationManager::Exists()) +
           int(TemplateManager::Exists()) + int(AssetManager::Exists());
}

/// The managers that exist, by their initials, the first to go in front.
std::string ManagersAlive() {
    std::string managers;
    managers += AssetManager::Exists() ? 'A' : '-';
    managers += TemplateManager::Exists() ? 'T' : '-';
    managers += NotificationManager::Exists() ? 'N' : '-';
    managers += ErrorManager::Exists() ? 'E' : '-';
    return managers;
}

using Notes = std::vector<std::string>;

/// An object that notes which managers exist at its end.
template <class Base> class Witness : public Base {
public:
    template <class... Arguments>
    explicit Witness(Notes& notes, const char* name, Arguments... arguments)
        : Base(name, arguments...), notes_(notes) {}
    ~Witness() override { notes_.push_back(std::string(this->GetName()) + " " + ManagersAlive()); }

private:
    Notes& notes_;
};

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

// A dying template manager cannot be reached, unlike the others.
TEST_F(SingletonTest, ManagersGoInReverseOrderWithWhatTheyOwn) {
    Notes notes;
    Ovi_Initialize();
    AssetManager::Get()->AddAsset(new Witness<Asset>(notes, "asset"));
    TemplateManager::Get()->AddType(new Witness<CustomType>(notes, "type", 1));
    Ovi_Terminate();
    EXPECT_EQ(notes, (Notes{"asset ATNE", "type --NE"}));
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
