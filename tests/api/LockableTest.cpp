// The lock state that the library keeps for hosts.

#include <climits>

#include "api/Host.h"
#include "api/Values.h"

namespace {

using LockableTest = HostTest;

TEST_F(LockableTest, PropertiesAndViewItemsHaveALockState) {
    OviTemplate* mesh = OviTemplateManager_CreateTemplate("Mesh");
    OviTemplate_CreateView(mesh, "main");
    OviAttributeProperty* property = OviAttributeProperty_New("size", 1);
    for (OviObject* object : {static_cast<OviObject*>(property),
                              static_cast<OviObject*>(OviTemplate_GetViewAt(mesh, 0))}) {
        OviLockable* lockable = OviObject_GetLockable(object);
        ASSERT_NE(lockable, nullptr);
        EXPECT_EQ(OviLockable_GetLockState(lockable), 0);
        for (const int state : {1, -1, 42, INT_MAX, INT_MIN, 0}) {
            OviLockable_SetLockState(lockable, state);
            EXPECT_EQ(OviLockable_GetLockState(lockable), state);
        }
    }
    OviObject_Delete(property);
}

TEST_F(LockableTest, OtherObjectsHaveNone) {
    OviAsset* asset = OviAssetManager_NewAsset(nullptr);
    OviErrorManager_AddErrorItem(1, "", 1, "");
    OviCustomType* custom = OviCustomType_New("Custom", 1);
    for (OviObject* object :
         {static_cast<OviObject*>(asset), static_cast<OviObject*>(custom),
          static_cast<OviObject*>(OviTemplateManager_GetRoot()),
          static_cast<OviObject*>(OviErrorManager_GetErrorItemAt(0)),
          static_cast<OviObject*>(TypeNamed("INT8")), static_cast<OviObject*>(nullptr)})
        EXPECT_EQ(OviObject_GetLockable(object), nullptr);
    OviObject_Delete(custom);
}

TEST_F(LockableTest, APropertysCopyTakesTheLockStateAViewsCopyDoesNot) {
    OviTemplate* mesh = OviTemplateManager_CreateTemplate("Mesh");
    OviTemplate_CreateView(mesh, "main");
    OviAttributeProperty* property = OviAttributeProperty_New("size", 1);
    const auto lockStateOfCopy = [](OviObject* source) {
        OviLockable_SetLockState(OviObject_GetLockable(source), 7);
        OviObject* copy = OviObject_Clone(source);
        const int state = OviLockable_GetLockState(OviObject_GetLockable(copy));
        OviObject_Delete(copy);
        return state;
    };
    EXPECT_EQ(lockStateOfCopy(property), 7);
    EXPECT_EQ(lockStateOfCopy(OviTemplate_GetViewAt(mesh, 0)), 0);
    OviObject_Delete(property);
}

} // namespace
