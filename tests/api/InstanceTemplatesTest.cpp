#include <algorithm>

#include "api/SceneHost.h"

namespace {

/// D extends B and C, which both extend A.
class InstanceTemplatesTest : public SceneTest {
protected:
    void SetUp() override {
        SceneTest::SetUp();
        Schema("<template name='A'><attribute name='a' type='INT32' default='1'/></template>"
               "<template name='B'><extends template='A'/>"
               "<attribute name='b' type='INT32' default='1'/></template>"
               "<template name='C'><extends template='A'/>"
               "<attribute name='c' type='INT32' default='1'/></template>"
               "<template name='D'><extends template='B'/><extends template='C'/>"
               "<attribute name='d2' type='INT32' default='1'/>"
               "<attribute name='d1' type='INT32' default='1'/></template>");
        asset_ = OviAssetManager_NewAsset("asset");
        StartRecording();
    }

    OviAsset* asset_ = nullptr;
};

} // namespace

TEST_F(InstanceTemplatesTest, BringPropertyInstancesOfAllAncestors) {
    EXPECT_EQ(OviInstance_AddTemplate(asset_, TemplateOf("D")), 0);
    EXPECT_EQ(PropertiesOf(asset_), (Lines{"A.a", "B.b", "C.c", "D.d1", "D.d2"}));
    EXPECT_EQ(OviInstance_GetTemplateCount(asset_), 1);
    EXPECT_EQ(Events(), Lines{"0x1001 asset D#1"});
}

TEST_F(InstanceTemplatesTest, AreAnnouncedBeforeTheirPropertyInstancesExist) {
    int count = -1;
    bool there = true;
    const Reaction look([&](OviObject*, int, void*) {
        count = OviInstance_GetTemplateCount(asset_);
        there = PropertyOf(asset_, "A.a") != nullptr;
    });
    OviInstance_AddTemplate(asset_, TemplateOf("A"));
    EXPECT_EQ(count, 1);
    EXPECT_FALSE(there);
    EXPECT_NE(PropertyOf(asset_, "A.a"), nullptr);
}

TEST_F(InstanceTemplatesTest, ShareThePropertyInstancesOfACommonAncestor) {
    OviInstance_AddTemplate(asset_, TemplateOf("B"));
    OviPropertyInstance* shared = PropertyOf(asset_, "A.a");
    OviInstance_AddTemplate(asset_, TemplateOf("C"));
    OviInstance_AddTemplate(asset_, TemplateOf("A"));
    EXPECT_EQ(PropertyOf(asset_, "A.a"), shared);
    EXPECT_EQ(PropertiesOf(asset_), (Lines{"A.a", "B.b", "C.c"}));
}

TEST_F(InstanceTemplatesTest, StandInKeyOrderWhateverTheOrderOfAdding) {
    EXPECT_EQ(OviInstance_AddTemplate(asset_, TemplateOf("C")), 0);
    EXPECT_EQ(OviInstance_AddTemplate(asset_, TemplateOf("A")), 0);
    EXPECT_EQ(OviInstance_AddTemplate(asset_, TemplateOf("B")), 1);
    EXPECT_EQ(OviInstance_GetTemplateAt(asset_, 0), TemplateOf("A"));
    EXPECT_EQ(OviInstance_GetTemplateAt(asset_, 1), TemplateOf("B"));
    EXPECT_EQ(OviInstance_GetTemplateAt(asset_, 2), TemplateOf("C"));
    EXPECT_EQ(OviInstance_GetTemplateAt(asset_, 3), nullptr);
}

TEST_F(InstanceTemplatesTest, AddedTwiceKeepOneEntryAndTheirValues) {
    OviInstance_AddTemplate(asset_, TemplateOf("A"));
    OviInstance_AddTemplate(asset_, TemplateOf("B"));
    OviAttributeInstance* attribute = AttributeOf(asset_, "B.b");
    const int32_t five = 5;
    OviAttributeInstance_SetValue(attribute, &five);
    TakeEvents();
    EXPECT_EQ(OviInstance_AddTemplate(asset_, TemplateOf("B")), ~1);
    EXPECT_EQ(OviInstance_GetTemplateCount(asset_), 2);
    EXPECT_EQ(ValueOf<int32_t>(AttributeOf(asset_, "B.b")), 5);
    EXPECT_EQ(Events(), Lines{"0x1001 asset B#1"});
}

TEST_F(InstanceTemplatesTest, TakeOnlyTheirOwnPropertyInstancesWithThem) {
    OviInstance_AddTemplate(asset_, TemplateOf("D"));
    OviInstance_AddTemplate(asset_, TemplateOf("A"));
    TakeEvents();
    EXPECT_EQ(OviInstance_RemoveTemplate(asset_, TemplateOf("D")), 1);
    EXPECT_EQ(Events(), (Lines{"0x2006 asset D.d1", "0x2006 asset D.d2", "0x1002 asset D#1"}));
    EXPECT_EQ(PropertiesOf(asset_), (Lines{"A.a", "B.b", "C.c"}));
    EXPECT_EQ(OviInstance_GetTemplateCount(asset_), 1);
}

TEST_F(InstanceTemplatesTest, ShowCallbacksAPropertyInstanceThatLeftTheListButLives) {
    OviInstance_AddTemplate(asset_, TemplateOf("B"));
    OviAttributeInstance_SetBinding(AttributeOf(asset_, "B.b"), "bound");
    std::string binding;
    bool listed = true;
    const Reaction look([&](OviObject*, int event, void* argument) {
        if (event != OVI_EVENT_PROPERTY_REMOVED)
            return;
        binding = OviAttributeInstance_GetBinding(static_cast<OviAttributeInstance*>(argument));
        listed = PropertyOf(asset_, "B.b") != nullptr;
    });
    OviInstance_RemoveTemplate(asset_, TemplateOf("B"));
    EXPECT_EQ(binding, "bound");
    EXPECT_FALSE(listed);
}

TEST_F(InstanceTemplatesTest, LetCallbacksDeleteThePropertyInstanceThatIsRemoved) {
    OviInstance_AddTemplate(asset_, TemplateOf("D"));
    int deleted = 0;
    const Reaction remove([&](OviObject*, int event, void* argument) {
        if (event != OVI_EVENT_PROPERTY_REMOVED)
            return;
        OviObject_Delete(static_cast<OviObject*>(argument));
        ++deleted;
    });
    EXPECT_EQ(OviInstance_RemoveTemplate(asset_, TemplateOf("D")), 0);
    EXPECT_EQ(deleted, 2);
    EXPECT_EQ(PropertiesOf(asset_), (Lines{"A.a", "B.b", "C.c"}));
}

TEST_F(InstanceTemplatesTest, LetCallbacksKeepTheNodeInstanceThatIsRemoved) {
    Schema("<lod name='High'/><template name='N'><node name='n'/></template>"
           "<template name='M'><geometry name='g'><alternate lod='High'/></geometry></template>",
           "nodes");
    OviInstance_AddTemplate(asset_, TemplateOf("M"));
    OviInstance_AddTemplate(asset_, TemplateOf("N"));
    auto* geometry = static_cast<OviGeometryInstance*>(PropertyOf(asset_, "M.g"));
    OviObject_Delete(OviGeometryInstance_GetNodeInstanceAt(geometry, 0));
    auto* node = static_cast<OviNodeInstance*>(PropertyOf(asset_, "N.n"));
    const Reaction keep([&](OviObject*, int event, void*) {
        if (event == OVI_EVENT_PROPERTY_REMOVED)
            OviGeometryInstance_SetNodeInstanceAt(geometry, 0, node);
    });
    EXPECT_EQ(OviInstance_RemoveTemplate(asset_, TemplateOf("N")), 1);
    EXPECT_EQ(OviGeometryInstance_GetNodeInstanceAt(geometry, 0), node);
    OviAttributeInstance_SetBinding(node, "kept");
    EXPECT_STREQ(OviAttributeInstance_GetBinding(node), "kept");
}

TEST_F(InstanceTemplatesTest, GetANewPropertyInstanceForOneThatCallbacksAskForWhileItGoes) {
    OviInstance_AddTemplate(asset_, TemplateOf("A"));
    OviPropertyInstance* old = PropertyOf(asset_, "A.a");
    OviPropertyInstance* made = nullptr;
    const Reaction ask([&](OviObject*, int event, void*) {
        if (event == OVI_EVENT_PROPERTY_REMOVED)
            made = OviInstance_GetPropertyInstance(asset_, "A.a", true);
    });
    OviInstance_RemoveTemplate(asset_, TemplateOf("A"));
    EXPECT_NE(made, old);
    EXPECT_EQ(PropertyOf(asset_, "A.a"), made);
}

TEST_F(InstanceTemplatesTest, KeepTheirOrderWhenTheyAreRenamed) {
    for (const char* name : {"A", "B", "C"})
        OviInstance_AddTemplate(asset_, TemplateOf(name));
    OviTemplate* renamed = TemplateOf("A");
    OviNamedObject_SetName(renamed, "Z");
    EXPECT_EQ(OviInstance_GetTemplateAt(asset_, 0), TemplateOf("B"));
    EXPECT_EQ(OviInstance_GetTemplateAt(asset_, 2), renamed);
    EXPECT_EQ(OviInstance_AddTemplate(asset_, renamed), ~2);
    EXPECT_EQ(OviInstance_GetTemplateCount(asset_), 3);
    EXPECT_NE(XMLOf(asset_).find("'B' version='1'/>\n\t<implements template='C' version='1'/>"
                                 "\n\t<implements template='Z'"),
              std::string::npos);
    EXPECT_EQ(OviInstance_RemoveTemplate(asset_, renamed), 2);
    EXPECT_EQ(OviInstance_GetTemplateCount(asset_), 2);
}

TEST_F(InstanceTemplatesTest, AreUpdatedInTheirNewOrderWhenTheyWereRenamed) {
    OviTemplate* second = VersionOf("A", 2);
    OviTemplate* first = OviTemplateManager_GetTemplateVersion("A", 1);
    OviInstance_AddTemplate(asset_, first);
    OviInstance_AddTemplate(asset_, TemplateOf("C"));
    OviNamedObject_SetName(first, "Z");
    OviNamedObject_SetName(second, "Z");
    EXPECT_EQ(OviInstance_UpdateTemplate(asset_, first), 1);
    EXPECT_EQ(OviInstance_GetTemplateAt(asset_, 1), second);
    EXPECT_EQ(OviInstance_GetTemplateCount(asset_), 2);
}

TEST_F(InstanceTemplatesTest, RemovedAreTheVeryOnesWhereTwoShareAName) {
    OviTemplate* b = TemplateOf("B");
    OviTemplate* c = TemplateOf("C");
    OviInstance_AddTemplate(asset_, b);
    OviInstance_AddTemplate(asset_, c);
    OviNamedObject_SetName(c, "B");
    EXPECT_EQ(OviInstance_RemoveTemplate(asset_, c), 1);
    EXPECT_EQ(OviInstance_GetTemplateAt(asset_, 0), b);
}

TEST_F(InstanceTemplatesTest, AreFoundInAVersionNewerThanTheLatestKnown) {
    Schema("<template name='V'><attribute name='x' type='INT32' version='2'/></template>",
           "versions");
    OviTemplate* first = OviTemplateManager_GetTemplateVersion("V", 1);
    OviInstance_AddTemplate(asset_, first);
    OviInstance_AddTemplate(asset_, OviTemplateManager_GetTemplateVersion("V", 2));
    OviTemplateManager_UnloadTemplateFile(PathOf("versions.template").c_str());
    Schema("<template name='V'/>", "again");
    ASSERT_EQ(TemplateOf("V"), first);
    EXPECT_EQ(OviTemplate_GetLatestVersion(first), 1);
    EXPECT_EQ(OviInstance_GetTemplateCount(asset_), 2);
    EXPECT_EQ(OviInstance_GetTemplate(asset_, "V"), first);
}

TEST_F(InstanceTemplatesTest, ComeToManyPropertyInstancesInOrder) {
    constexpr int kCount = 2000;
    std::string text[2];
    Lines expected;
    for (int i = 0; i < kCount; ++i) {
        const std::string name = "p" + std::to_string(100000 + i);
        text[i % 2] += "<attribute name='" + name + "' type='INT32'/>";
        expected.push_back((i % 2 == 0 ? "Q." : "Q2.") + name);
    }
    std::sort(expected.begin(), expected.end());
    Schema("<template name='Q'>" + text[0] + "</template><template name='Q2'>" + text[1] +
               "</template><template name='Q3'><extends template='Q'/><extends template='Q2'/>"
               "<extends template='D'/></template>",
           "many");
    OviInstance_AddTemplate(asset_, TemplateOf("Q2"));
    OviInstance_AddTemplate(asset_, TemplateOf("Q"));
    EXPECT_EQ(PropertiesOf(asset_), expected);
    OviPropertyInstance* kept = PropertyOf(asset_, "Q.p100000");
    OviInstance_AddTemplate(asset_, TemplateOf("Q3"));
    EXPECT_EQ(PropertyOf(asset_, "Q.p100000"), kept);
    expected.insert(expected.begin(), {"A.a", "B.b", "C.c", "D.d1", "D.d2"});
    EXPECT_EQ(PropertiesOf(asset_), expected);
}

TEST_F(InstanceTemplatesTest, NotImplementedAreRemovedInNameOnly) {
    OviInstance_AddTemplate(asset_, TemplateOf("B"));
    TakeEvents();
    EXPECT_EQ(OviInstance_RemoveTemplate(asset_, TemplateOf("C")), ~1);
    EXPECT_EQ(OviInstance_RemoveTemplate(asset_, TemplateOf("A")), ~0);
    // The property instance that B brought belongs to A's own property and goes all the same.
    EXPECT_EQ(Events(), (Lines{"0x1002 asset C#1", "0x2006 asset A.a", "0x1002 asset A#1"}));
    EXPECT_EQ(OviInstance_GetTemplateCount(asset_), 1);
}

TEST_F(InstanceTemplatesTest, MayBeAddedByACallbackOfTheirOwnEvent) {
    const Reaction add([&](OviObject*, int event, void*) {
        if (event == OVI_EVENT_TEMPLATE_ADDED)
            OviInstance_AddTemplate(asset_, TemplateOf("C"));
    });
    OviInstance_AddTemplate(asset_, TemplateOf("B"));
    EXPECT_EQ(PropertiesOf(asset_), (Lines{"A.a", "B.b", "C.c"}));
    EXPECT_EQ(OviInstance_GetTemplateCount(asset_), 2);
}

TEST_F(InstanceTemplatesTest, MayBeRemovedByACallback) {
    OviInstance_AddTemplate(asset_, TemplateOf("B"));
    OviInstance_AddTemplate(asset_, TemplateOf("C"));
    const Reaction remove([&](OviObject*, int event, void*) {
        if (event == OVI_EVENT_PROPERTY_REMOVED)
            OviInstance_RemoveTemplate(asset_, TemplateOf("C"));
    });
    EXPECT_EQ(OviInstance_RemoveTemplate(asset_, TemplateOf("B")), 0);
    EXPECT_EQ(OviInstance_GetTemplateCount(asset_), 0);
    EXPECT_EQ(PropertiesOf(asset_), Lines{"A.a"});
}

TEST_F(InstanceTemplatesTest, AreFoundInTheHighestVersionImplemented) {
    OviTemplate* second = VersionOf("A", 2);
    OviTemplate* first = OviTemplateManager_GetTemplateVersion("A", 1);
    OviInstance_AddTemplate(asset_, first);
    EXPECT_EQ(OviInstance_GetTemplate(asset_, "A"), first);
    OviInstance_AddTemplate(asset_, second);
    EXPECT_EQ(OviInstance_GetTemplateCount(asset_), 2);
    EXPECT_EQ(OviInstance_GetTemplate(asset_, "A"), second);
    OviInstance_RemoveTemplate(asset_, second);
    EXPECT_EQ(OviInstance_GetTemplate(asset_, "A"), first);
    OviInstance_RemoveTemplate(asset_, first);
    EXPECT_EQ(OviInstance_GetTemplate(asset_, "A"), nullptr);
}

TEST_F(InstanceTemplatesTest, AreFoundByTheirExactFullNameOnly) {
    Schema("<template name='Packed'/>", "other");
    OviTemplate* packed = OviTemplateManager_CreateTemplate("deep.pack.Thing");
    OviInstance_AddTemplate(asset_, packed);
    EXPECT_EQ(OviInstance_GetTemplate(asset_, "deep.pack.Thing"), packed);
    EXPECT_EQ(OviInstance_GetTemplate(asset_, "Thing"), nullptr);
    EXPECT_EQ(OviInstance_GetTemplate(asset_, "deep.pack.thing"), nullptr);
    EXPECT_EQ(OviInstance_GetTemplate(asset_, "deep.pack.Thing#1"), nullptr);
    EXPECT_EQ(OviInstance_GetTemplate(asset_, "Packed"), nullptr); // known, not implemented
    EXPECT_EQ(OviInstance_GetTemplate(asset_, "Unknown"), nullptr);
    EXPECT_EQ(OviInstance_GetTemplate(asset_, ""), nullptr);
}

TEST_F(InstanceTemplatesTest, DecideOnValidityWithTheirOwnPropertiesOnly) {
    EXPECT_TRUE(OviInstance_IsValid(asset_));
    OviInstance_AddTemplate(asset_, TemplateOf("B"));
    EXPECT_FALSE(OviInstance_IsValid(asset_));
    OviAttributeInstance_GetValue(AttributeOf(asset_, "B.b"));
    EXPECT_TRUE(OviInstance_IsValid(asset_)); // A.a, inherited, has no value
    EXPECT_FALSE(OviInstance_IsPropertyInstanceValid(asset_, "A.a"));
    OviObject_Delete(PropertyOf(asset_, "B.b"));
    EXPECT_FALSE(OviInstance_IsValid(asset_));
    EXPECT_FALSE(OviInstance_IsPropertyInstanceValid(asset_, "B.b"));
}

TEST_F(InstanceTemplatesTest, KeepTheFirstDefinitionMetOfAPropertyInSeveralVersions) {
    Schema("<template name='V'><attribute name='x' type='INT32' default='1'/>"
           "<attribute name='x' type='INT32' default='2' version='2'/></template>"
           "<template name='W'><extends template='V' templateVersion='1'/></template>",
           "versions");
    OviInstance_AddTemplate(asset_, TemplateOf("W"));
    OviInstance_AddTemplate(asset_, TemplateOf("V"));
    EXPECT_EQ(OviInstance_GetTemplate(asset_, "V"), VersionOf("V", 2));
    EXPECT_EQ(PropertiesOf(asset_), Lines{"V.x"});
    EXPECT_EQ(ValueOf<int32_t>(AttributeOf(asset_, "V.x")), 1);
}

TEST_F(InstanceTemplatesTest, KeepASchemaFromBeingDeletedWithItsFile) {
    const std::string file = OviType_GetFileName(TemplateOf("D"));
    OviInstance_AddTemplate(asset_, TemplateOf("B"));
    OviTemplateManager_UnloadTemplateFile(file.c_str());
    EXPECT_STREQ(OviType_GetFullName(OviInstance_GetTemplateAt(asset_, 0)), "B");
    EXPECT_TRUE(OviType_IsRecycled(OviInstance_GetTemplateAt(asset_, 0)));
    EXPECT_EQ(ValueOf<int32_t>(AttributeOf(asset_, "A.a")), 1);
    EXPECT_EQ(TemplateOf("D"), nullptr);
}
