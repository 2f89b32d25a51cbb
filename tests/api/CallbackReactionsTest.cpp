// Whatever a callback deletes, clears, unloads or ends: the call that it runs in goes on without
// harm, and nothing finds any more what is gone. The sanitizers see what these tests do not.

#include <functional>
#include <string>
#include <vector>

#include "api/SceneHost.h"

namespace {

constexpr const char* kSchema =
    "<lod name='High'/><lod name='Low'/>"
    "<template name='Base'><attribute name='b' type='INT32' default='1'/></template>"
    "<template name='Wheel'><extends template='Base'/>"
    "<attribute name='r' type='FLOAT'/></template>"
    "<template name='Axle'><attribute name='w' type='Wheel'/></template>"
    "<template name='Car'><extends template='Base'/>"
    "<attribute name='a' type='INT32'/><attribute name='t' type='STRING' dim='2'/>"
    "<attribute name='wheels' type='Wheel'/><attribute name='axle' type='Axle'/>"
    "<node name='n'/><anchor name='h' type='parent'/>"
    "<geometry name='g'><alternate lod='High'/><alternate lod='Low'/></geometry>"
    "<attribute name='later' type='INT32' version='2'/>"
    "<attribute name='a' type='DOUBLE' version='2' status='renamed'/></template>";

constexpr const char* kScene =
    "<asset name='one' reference='x.mb'><implements template='Car' version='1'/>"
    "<attribute property='Car.a' value='3' binding='b' lockBinding='true' lockValue='true'/>"
    "<attribute property='Car.wheels'><asset name='w'><implements template='Wheel'/>"
    "<attribute property='Wheel.r' value='2'/></asset></attribute>"
    "<attribute property='Car.axle'><asset name='x'><implements template='Axle'/>"
    "<attribute property='Axle.w'><asset name='y'><implements template='Wheel'/></asset>"
    "</attribute></asset></attribute>"
    "<geometry property='Car.g'><alternate lod='Low' binding='l'/></geometry>"
    "<anchor property='Car.h' binding='k' attachedAnchor='two'/></asset>"
    "<asset name='two'><implements template='Car'/></asset><assetRef name='three'/>";

/// What runs in every combination: a call that sends events, and what a callback does at one of
/// them.
class CallbackReactionsTest : public SceneTest {
protected:
    using Body = std::function<void()>;

    struct Case {
        const char* name;
        Body body;
    };

    void SetUp() override {
        SceneTest::SetUp();
        schemaFile_ = WriteFile("cars.template",
                                kHeader + ("<templates>" + std::string(kSchema)) + "</templates>");
        sceneFile_ =
            WriteFile("cars.asset", kHeader + ("<assets>" + std::string(kScene)) + "</assets>");
    }

    /// Makes the scene anew, runs the call with a reaction at the event of that number, and gives
    /// whether there was one.
    bool Run(const Body& call, const Body& reaction, int number) {
        Prepare();
        rest_ = number;
        reaction_ = reaction;
        depth_ = 0;
        static char key;
        OviNotificationManager_RegisterInstanceCallback(&Hear, &key);
        OviNotificationManager_RegisterPropertyInstanceCallback(&Hear, &key);
        call();
        OviNotificationManager_UnregisterInstanceCallback(&key);
        OviNotificationManager_UnregisterPropertyInstanceCallback(&key);
        if (ended_)
            Ovi_Initialize();
        LookAtAll();
        return rest_ < 0;
    }

    /// Everything that a host can walk over still answers.
    static void LookAtAll() {
        for (int i = 0; i < OviAssetManager_GetAssetCount(); ++i) {
            OviAsset* asset = OviAssetManager_GetAssetAt(i);
            EXPECT_EQ(OviAssetManager_GetAsset(OviNamedObject_GetName(asset)), asset);
            for (int k = 0; k < OviInstance_GetTemplateCount(asset); ++k)
                OviTemplate_GetPropertyCount(OviInstance_GetTemplateAt(asset, k));
            EXPECT_FALSE(XMLOf(asset).empty());
            OviInstance_IsValid(asset);
            OviInstance_GetSize(asset);
        }
        for (int i = 0; i < OviTemplateManager_GetTemplateCount(); ++i) {
            OviTemplate* found = OviTemplateManager_GetTemplateAt(i);
            for (int k = 0; k < OviTemplate_GetPropertyCount(found); ++k)
                OviProperty_GetFullName(OviTemplate_GetPropertyAt(found, k, false));
        }
    }

    static OviInstance* ValueOfOrNull(OviAttributeInstance* attribute) {
        auto* value = static_cast<OviInstance**>(OviAttributeInstance_GetValue(attribute));
        return value ? value[0] : nullptr;
    }

    std::vector<Case> Calls();
    std::vector<Case> Reactions();

    std::string schemaFile_;
    std::string sceneFile_;

    static inline OviNamedObject* heard_ = nullptr; // the object of the event
    static inline void* argument_ = nullptr;
    static inline int event_ = 0;
    static inline bool ended_ = false;
    static inline bool deleted_ = false; // the object of the event

private:
    void Prepare() {
        OviAssetManager_NewScene();
        OviTemplateManager_UnloadTemplateFile(schemaFile_.c_str());
        ASSERT_TRUE(OviTemplateManager_LoadTemplateFile(schemaFile_.c_str()));
        ASSERT_TRUE(OviAssetManager_LoadScene(sceneFile_.c_str()));
        ended_ = deleted_ = false;
    }

    static void Hear(void*, void* object, int event, void* argument) {
        OviNamedObject_GetName(static_cast<OviNamedObject*>(object));
        if (depth_ > 0 || --rest_ >= 0 || rest_ < -1)
            return;
        heard_ = static_cast<OviNamedObject*>(object);
        argument_ = argument;
        event_ = event;
        ++depth_;
        reaction_();
        --depth_;
        rest_ = -2;
    }

    static inline int rest_ = 0;
    static inline int depth_ = 0;
    static inline Body reaction_;
};

std::vector<CallbackReactionsTest::Case> CallbackReactionsTest::Calls() {
    const auto one = [] { return OviAssetManager_GetAsset("one"); };
    const auto attribute = [one] { return AttributeOf(one(), "Car.a"); };
    return {
        {"load", [this] { OviAssetManager_LoadScene(sceneFile_.c_str()); }},
        {"load into an empty scene",
         [this] {
             OviAssetManager_NewScene();
             OviAssetManager_LoadScene(sceneFile_.c_str());
         }},
        {"new asset", [] { OviAssetManager_NewAsset("new"); }},
        {"remove asset",
         [one] {
             OviAsset* removed = one();
             OviAssetManager_RemoveAsset(removed);
             if (!deleted_) // or else it is the test's
                 OviObject_Delete(removed);
         }},
        {"rename", [one] { OviNamedObject_SetName(one(), "other"); }},
        {"reference", [one] { OviAsset_SetReference(one(), "y.mb"); }},
        {"add template", [one] { OviInstance_AddTemplate(one(), TemplateOf("Axle")); }},
        {"remove template",
         [one] { OviInstance_RemoveTemplate(one(), OviInstance_GetTemplateAt(one(), 0)); }},
        {"update template",
         [one] { OviInstance_UpdateTemplate(one(), OviInstance_GetTemplateAt(one(), 0)); }},
        {"value",
         [attribute] {
             const int value = 7;
             OviAttributeInstance_SetValue(attribute(), &value);
         }},
        {"value of texts",
         [one] {
             const char* texts[] = {"u", "v"};
             OviAttributeInstance_SetValue(AttributeOf(one(), "Car.t"), texts);
         }},
        {"nested value",
         [one] {
             OviAttributeInstance* target = AttributeOf(one(), "Car.wheels");
             OviAttributeInstance_SetValue(target, OviAttributeInstance_GetValue(target));
         }},
        {"nested value read",
         [] {
             OviAsset* asset = OviAssetManager_GetAsset("two");
             OviAttributeInstance_GetValue(AttributeOf(asset, "Car.axle"));
         }},
        {"binding", [attribute] { OviAttributeInstance_SetBinding(attribute(), "node"); }},
        {"binding lock", [attribute] { OviPropertyInstance_SetBindingLocked(attribute(), false); }},
        {"value lock", [attribute] { OviPropertyInstance_SetValueLocked(attribute(), true); }},
        {"delete template", [] { OviObject_Delete(TemplateOf("Car")); }},
        {"delete the template of values", [] { OviObject_Delete(TemplateOf("Wheel")); }},
        {"delete property", [] { OviObject_Delete(OviTemplateManager_GetProperty("Car#1.a")); }},
    };
}

std::vector<CallbackReactionsTest::Case> CallbackReactionsTest::Reactions() {
    return {
        {"delete the object",
         [] {
             OviObject_Delete(heard_);
             deleted_ = true;
         }},
        {"delete the asset", [] { OviObject_Delete(OviAssetManager_GetAsset("one")); }},
        {"delete all assets",
         [] {
             while (OviAsset* asset = OviAssetManager_GetAssetAt(0))
                 OviObject_Delete(asset);
         }},
        {"delete the argument",
         [] {
             const bool isObject =
                 event_ == OVI_EVENT_TEMPLATE_ADDED || event_ == OVI_EVENT_TEMPLATE_UPDATED ||
                 event_ == OVI_EVENT_PROPERTY_UPDATED || event_ == OVI_EVENT_PROPERTY_RENAMED;
             if (isObject)
                 OviObject_Delete(static_cast<OviObject*>(argument_));
         }},
        {"delete the templates",
         [] {
             for (const char* name : {"Wheel", "Car", "Axle", "Base"})
                 OviObject_Delete(TemplateOf(name));
         }},
        {"delete properties",
         [] {
             for (const char* name : {"Car#1.a", "Car#1.wheels", "Car#1.axle", "Car#1.g", "Base.b"})
                 OviObject_Delete(OviTemplateManager_GetProperty(name));
         }},
        {"clear the scene", [] { OviAssetManager_NewScene(); }},
        {"clear the scene and make assets",
         [] {
             OviAssetManager_NewScene();
             AssetOf("Car", "one");
             AssetOf("Axle", "other");
         }},
        {"load once more", [this] { OviAssetManager_LoadScene(sceneFile_.c_str()); }},
        {"unload the schema",
         [this] { OviTemplateManager_UnloadTemplateFile(schemaFile_.c_str()); }},
        {"clear and unload",
         [this] {
             OviAssetManager_NewScene();
             OviTemplateManager_UnloadTemplateFile(schemaFile_.c_str());
         }},
        {"reload the schema",
         [this] {
             OviTemplateManager_UnloadTemplateFile(schemaFile_.c_str());
             OviTemplateManager_LoadTemplateFile(schemaFile_.c_str());
         }},
        {"end the library",
         [] {
             Ovi_Terminate();
             ended_ = true;
         }},
        {"end and start again",
         [this] {
             Ovi_Terminate();
             Ovi_Initialize();
             OviTemplateManager_LoadTemplateFile(schemaFile_.c_str());
             OviAssetManager_LoadScene(sceneFile_.c_str());
         }},
        {"set the value",
         [] {
             const int value = 9;
             OviAttributeInstance_SetValue(AttributeOf(OviAssetManager_GetAsset("one"), "Car.a"),
                                           &value);
         }},
        {"drop a value of instances",
         [] {
             OviAttributeInstance* wheels =
                 AttributeOf(OviAssetManager_GetAsset("one"), "Car.wheels");
             OviObject_Delete(ValueOfOrNull(wheels));
         }},
        {"take the templates away",
         [] {
             OviAsset* asset = OviAssetManager_GetAsset("one");
             while (OviInstance_GetTemplateCount(asset) > 0)
                 OviInstance_RemoveTemplate(asset, OviInstance_GetTemplateAt(asset, 0));
         }},
        {"rename the asset",
         [] { OviNamedObject_SetName(OviAssetManager_GetAsset("one"), "renamed"); }},
    };
}

TEST_F(CallbackReactionsTest, NothingThatACallbackDoesHarmsTheCallThatItRunsIn) {
    for (const Case& call : Calls()) {
        for (const Case& reaction : Reactions()) {
            SCOPED_TRACE(std::string(reaction.name) + " during: " + call.name);
            for (int event = 0; Run(call.body, reaction.body, event) && event < 40; ++event) {
            }
        }
    }
}

TEST_F(CallbackReactionsTest, OnceACallbackEndedTheObjectTheOthersAreNotTold) {
    static int told;
    told = 0;
    static char keys[2];
    const OviCallback end = [](void*, void* object, int, void*) {
        OviObject_Delete(static_cast<OviObject*>(object));
    };
    const OviCallback count = [](void*, void*, int, void*) { ++told; };
    OviNotificationManager_RegisterInstanceCallback(end, &keys[0]);
    OviNotificationManager_RegisterInstanceCallback(count, &keys[1]);
    EXPECT_EQ(OviAssetManager_NewAsset("a"), nullptr);
    EXPECT_EQ(told, 0);
    EXPECT_EQ(OviAssetManager_GetAssetCount(), 0);
    OviNotificationManager_UnregisterInstanceCallback(&keys[0]);
    OviNotificationManager_UnregisterInstanceCallback(&keys[1]);
}

} // namespace
