#include <algorithm>

#include "api/SceneHost.h"

namespace {

class NotificationTest : public SceneTest {
protected:
    void SetUp() override {
        SceneTest::SetUp();
        Schema("<template name='T'><attribute name='x' type='INT32'/></template>");
    }

    void TearDown() override {
        for (char& key : keys_) {
            OviNotificationManager_UnregisterInstanceCallback(&key);
            OviNotificationManager_UnregisterPropertyInstanceCallback(&key);
        }
        SceneTest::TearDown();
    }

    /// Places to register callbacks under, in the order of their addresses.
    static inline char keys_[8] = {};
    static inline std::string calls_;

    static void Note(void* key, void*, int, void*) {
        calls_ += static_cast<char>('0' + (static_cast<char*>(key) - keys_));
    }
    static void NoteOther(void*, void*, int, void*) { calls_ += '!'; }

    static std::string TakeCalls() {
        std::string taken;
        taken.swap(calls_);
        return taken;
    }
};

} // namespace

TEST_F(NotificationTest, RegistersOneCallbackForEachUserData) {
    OviCallback null = nullptr;
    EXPECT_FALSE(OviNotificationManager_RegisterInstanceCallback(&Note, &keys_[0]));
    EXPECT_TRUE(OviNotificationManager_RegisterInstanceCallback(&NoteOther, &keys_[0]));
    EXPECT_TRUE(OviNotificationManager_RegisterInstanceCallback(null, &keys_[1]));
    OviAssetManager_NewAsset("a");
    EXPECT_EQ(TakeCalls(), "0");
    EXPECT_TRUE(OviNotificationManager_UnregisterInstanceCallback(&keys_[0]));
    EXPECT_FALSE(OviNotificationManager_UnregisterInstanceCallback(&keys_[0]));
    EXPECT_FALSE(OviNotificationManager_UnregisterInstanceCallback(&keys_[1]));
    OviAssetManager_NewAsset("b");
    EXPECT_EQ(TakeCalls(), "");
    EXPECT_FALSE(OviNotificationManager_RegisterInstanceCallback(&NoteOther, &keys_[0]));
    OviAssetManager_NewAsset("c");
    EXPECT_EQ(TakeCalls(), "!");
}

TEST_F(NotificationTest, KeepsTheTwoListsApart) {
    OviAttributeInstance* attribute = AttributeOf(AssetOf("T"), "T.x");
    EXPECT_FALSE(OviNotificationManager_RegisterPropertyInstanceCallback(&Note, &keys_[0]));
    EXPECT_FALSE(OviNotificationManager_RegisterInstanceCallback(&NoteOther, &keys_[0]));
    EXPECT_TRUE(OviNotificationManager_RegisterPropertyInstanceCallback(&NoteOther, &keys_[0]));
    OviAttributeInstance_SetBinding(attribute, "node");
    EXPECT_EQ(TakeCalls(), "0");
    OviAssetManager_NewAsset(nullptr);
    EXPECT_EQ(TakeCalls(), "!");
    EXPECT_TRUE(OviNotificationManager_UnregisterInstanceCallback(&keys_[0]));
    OviAttributeInstance_SetBinding(attribute, "node");
    EXPECT_EQ(TakeCalls(), "0");
    EXPECT_TRUE(OviNotificationManager_UnregisterPropertyInstanceCallback(&keys_[0]));
    EXPECT_FALSE(OviNotificationManager_UnregisterPropertyInstanceCallback(&keys_[0]));
}

TEST_F(NotificationTest, CallsInTheOrderOfUserDataWhateverTheOrderOfRegistration) {
    OviAttributeInstance* attribute = AttributeOf(AssetOf("T"), "T.x");
    std::string order = "01234567";
    do {
        for (char key : order) {
            OviNotificationManager_RegisterInstanceCallback(&Note, &keys_[key - '0']);
            OviNotificationManager_RegisterPropertyInstanceCallback(&Note, &keys_[key - '0']);
        }
        OviAssetManager_NewAsset(nullptr);
        EXPECT_EQ(TakeCalls(), "01234567") << order;
        OviAttributeInstance_SetBinding(attribute, "node");
        EXPECT_EQ(TakeCalls(), "01234567") << order;
        for (char& key : keys_) {
            EXPECT_TRUE(OviNotificationManager_UnregisterInstanceCallback(&key));
            EXPECT_TRUE(OviNotificationManager_UnregisterPropertyInstanceCallback(&key));
        }
        std::rotate(order.begin(), order.begin() + 3, order.end());
        std::swap(order[0], order[1]);
    } while (order != "01234567");
}

TEST_F(NotificationTest, TakesAnyUserDataNullIncluded) {
    EXPECT_FALSE(OviNotificationManager_RegisterInstanceCallback(&NoteOther, nullptr));
    EXPECT_TRUE(OviNotificationManager_RegisterInstanceCallback(&NoteOther, nullptr));
    OviNotificationManager_RegisterInstanceCallback(&Note, &keys_[3]);
    OviAssetManager_NewAsset("a");
    EXPECT_EQ(TakeCalls(), "!3");
    EXPECT_TRUE(OviNotificationManager_UnregisterInstanceCallback(nullptr));
}

TEST_F(NotificationTest, SurvivesCallbacksThatUnregister) {
    // Against the rules; a skipped callback is the worst that may come of it.
    static const auto leave = [](void* key, void*, int, void*) {
        OviNotificationManager_UnregisterInstanceCallback(key);
        calls_ += 'x';
    };
    OviNotificationManager_RegisterInstanceCallback(leave, &keys_[0]);
    OviNotificationManager_RegisterInstanceCallback(&Note, &keys_[1]);
    OviNotificationManager_RegisterInstanceCallback(&Note, &keys_[2]);
    OviAssetManager_NewAsset("a");
    TakeCalls();
    OviAssetManager_NewAsset("b");
    EXPECT_EQ(TakeCalls(), "12");
}

TEST_F(NotificationTest, StoresTheHostCodeAsItIs) {
    EXPECT_EQ(OviNotificationManager_GetDCC(), OVI_HOST_NONE);
    for (int code : {1, 2, 3, -1, 4711, 0}) {
        OviNotificationManager_SetDCC(code);
        EXPECT_EQ(OviNotificationManager_GetDCC(), code);
    }
}

TEST_F(NotificationTest, StartsAnewWithTheLibrary) {
    OviNotificationManager_SetDCC(2);
    OviNotificationManager_RegisterInstanceCallback(&Note, &keys_[0]);
    Ovi_Initialize();
    Ovi_Terminate();
    EXPECT_EQ(OviNotificationManager_GetDCC(), 2);
    Ovi_Terminate();
    Ovi_Initialize();
    EXPECT_EQ(OviNotificationManager_GetDCC(), OVI_HOST_NONE);
    OviAssetManager_NewAsset("a");
    EXPECT_EQ(TakeCalls(), "");
    EXPECT_FALSE(OviNotificationManager_UnregisterInstanceCallback(&keys_[0]));
}

TEST_F(NotificationTest, GivesEveryCallbackTheObjectAndTheArgument) {
    OviAsset* asset = AssetOf("T", "asset");
    OviAttributeInstance* attribute = AttributeOf(asset, "T.x");
    std::vector<OviObject*> objects;
    std::vector<int> events;
    std::vector<std::string> texts;
    const Reaction look([&](OviObject* object, int event, void* argument) {
        objects.push_back(object);
        events.push_back(event);
        texts.push_back(static_cast<const char*>(argument));
    });
    OviAttributeInstance_SetBinding(attribute, "node");
    OviNamedObject_SetName(asset, "renamed");
    EXPECT_EQ(objects, (std::vector<OviObject*>{attribute, asset}));
    EXPECT_EQ(events, (std::vector<int>{OVI_EVENT_BINDING_CHANGED, OVI_EVENT_INSTANCE_RENAMED}));
    EXPECT_EQ(texts, (Lines{"node", "renamed"}));
}

TEST_F(NotificationTest, OrdersTheEventsOfALoadedScene) {
    Schema("<template name='U'><extends template='T'/>"
           "<attribute name='inner' type='T' reference='true'/></template>",
           "more");
    StartRecording();
    EXPECT_TRUE(Load("<asset name='a' reference='f'><implements template='U' version='1'/>"
                     "<attribute property='T.x' value='4' binding='n' lockBinding='1' "
                     "lockValue='F'/>"
                     "<attribute property='U.inner'><asset name='i'><implements template='T'/>"
                     "<attribute property='T.x' value='5'/></asset></attribute></asset>"));
    EXPECT_EQ(Events(), (Lines{"0x1005 a 0", "0x100A a f", "0x1008 a f", "0x4000 T.x 4",
                               "0x3000 T.x n", "0x2000 T.x true", "0x2001 T.x true",
                               "0x4000 U.inner i", "0x1007 i ", "0x4000 T.x 5"}));
    EXPECT_TRUE(Errors().empty());
}
