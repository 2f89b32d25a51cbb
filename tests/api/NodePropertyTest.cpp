// Node properties: attributes whose instances stand for nodes of the host's scene.

#include "api/Schema.h"

namespace {

class NodePropertyTest : public SchemaTest {
protected:
    void SetUp() override {
        SchemaTest::SetUp();
        node = OviNodeProperty_New("body", 1);
    }

    void TearDown() override {
        OviObject_Delete(node);
        SchemaTest::TearDown();
    }

    OviNodeProperty* node = nullptr;
};

TEST_F(NodePropertyTest, IsOfItsOwnClassAndThoseOfAttributeProperties) {
    EXPECT_EQ(OviObject_GetClass(node), OVI_CLASS_NODE_PROPERTY);
    for (int id : {14, 3, 15, 31, 0})
        EXPECT_TRUE(OviObject_ImplementsClass(node, id)) << id;
    for (int id : {28, 9, 7, 13})
        EXPECT_FALSE(OviObject_ImplementsClass(node, id)) << id;
}

TEST_F(NodePropertyTest, StartsWithoutAnAncestor) {
    EXPECT_STREQ(OviNamedObject_GetName(node), "body");
    EXPECT_STREQ(OviNodeProperty_GetAncestor(node), "");
    EXPECT_EQ(OviNodeProperty_GetAncestorDistance(node), -1);
    EXPECT_EQ(OviAttributeProperty_GetType(node), nullptr);
    EXPECT_EQ(OviProperty_GetTemplate(node), nullptr);
}

TEST_F(NodePropertyTest, CopiesTheAncestorText) {
    std::string text = "root|group";
    OviNodeProperty_SetAncestor(node, text.c_str());
    text.assign(text.size(), '-');
    EXPECT_STREQ(OviNodeProperty_GetAncestor(node), "root|group");
    OviNodeProperty_SetAncestor(node, OviNodeProperty_GetAncestor(node));
    EXPECT_STREQ(OviNodeProperty_GetAncestor(node), "root|group");
    OviNodeProperty_SetAncestor(node, nullptr);
    EXPECT_STREQ(OviNodeProperty_GetAncestor(node), "");
}

TEST_F(NodePropertyTest, StoresAnyDistance) {
    for (int distance : {0, 7, -5, 2147483647, -2147483647 - 1}) {
        OviNodeProperty_SetAncestorDistance(node, distance);
        EXPECT_EQ(OviNodeProperty_GetAncestorDistance(node), distance);
    }
}

TEST_F(NodePropertyTest, ACopyHasTheAncestorAndTheDistance) {
    OviNodeProperty_SetAncestor(node, "root");
    OviNodeProperty_SetAncestorDistance(node, 2);
    OviAttributeProperty_SetAutoBind(node, "auto");
    OviNodeProperty* copy = CloneOf(node);
    EXPECT_EQ(OviObject_GetClass(copy), OVI_CLASS_NODE_PROPERTY);
    EXPECT_STREQ(OviNamedObject_GetName(copy), "body");
    EXPECT_STREQ(OviNodeProperty_GetAncestor(copy), "root");
    EXPECT_EQ(OviNodeProperty_GetAncestorDistance(copy), 2);
    EXPECT_STREQ(OviAttributeProperty_GetAutoBind(copy), "auto");
    OviNodeProperty_SetAncestor(copy, "other");
    EXPECT_STREQ(OviNodeProperty_GetAncestor(node), "root");
    OviObject_Delete(copy);
}

TEST_F(NodePropertyTest, AnInvalidNameIsNotStored) {
    OviNodeProperty* nameless = OviNodeProperty_New("two words", 1);
    ASSERT_NE(nameless, nullptr);
    EXPECT_STREQ(OviNamedObject_GetName(nameless), "");
    OviObject_Delete(nameless);
}

TEST_F(NodePropertyTest, ATemplateTakesItOverAndItsVersionsCopyIt) {
    OviTemplate* mesh = Make("Mesh");
    EXPECT_EQ(OviTemplate_AddProperty(mesh, node, -1), 0);
    EXPECT_STREQ(OviProperty_GetFullName(node), "Mesh.body");
    OviNodeProperty_SetAncestor(node, "root");
    OviTemplate* second = OviTemplateManager_CreateTemplateVersion("Mesh", 2);
    OviProperty* later = OviTemplate_GetProperty(second, "body");
    ASSERT_TRUE(OviObject_ImplementsClass(later, OVI_CLASS_NODE_PROPERTY));
    EXPECT_STREQ(OviNodeProperty_GetAncestor(static_cast<OviNodeProperty*>(later)), "root");
    EXPECT_EQ(OviProperty_GetTemplate(node), mesh);
    OviTemplate_RemoveProperty(mesh, node); // for TearDown
    for (OviTemplate* version : {mesh, second})
        OviTemplate_RemoveProperty(version, node);
}

TEST_F(NodePropertyTest, MayHaveAValueLikeAnyAttribute) {
    OviAttributeProperty_SetType(node, TypeNamed("INT32"));
    OviTemplate* mesh = Make("Mesh");
    OviTemplate_AddProperty(mesh, node, -1);
    EXPECT_EQ(OviType_GetValueSize(mesh, nullptr, 1), 4);
    OviTemplate_RemoveProperty(mesh, node);
}

} // namespace
