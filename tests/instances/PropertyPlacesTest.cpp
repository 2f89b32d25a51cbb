// Where the search for a property instance begins: whatever was found last, the answer is the same.

#include "instances/PropertyPlaces.h"

#include <gtest/gtest.h>

#include <string>

#include "ovi/ovi.h"

namespace {

using Kor::PropertyPlaces;

TEST(PropertyPlaces, RemembersTheLastPlaceOfAName) {
    EXPECT_EQ(PropertyPlaces("Places.never").Guess(), -1);
    PropertyPlaces("Places.a").Remember(3);
    EXPECT_EQ(PropertyPlaces("Places.a").Guess(), 3);
    PropertyPlaces("Places.a").Remember(4);
    EXPECT_EQ(PropertyPlaces("Places.a").Guess(), 4);
}

class PropertyPlacesTest : public testing::Test {
protected:
    void SetUp() override { Ovi_Initialize(); }
    void TearDown() override { Ovi_Terminate(); }

    static OviTemplate* Make(const std::string& name, int first, int count) {
        OviTemplate* made = OviTemplateManager_CreateTemplate(name.c_str());
        for (int i = first; i < first + count; ++i) {
            const std::string property = "p" + std::to_string(i);
            OviTemplate_AddProperty(made, OviAttributeProperty_New(property.c_str(), 1), -1);
        }
        return made;
    }

    static OviPropertyInstance* Find(OviInstance* instance, const std::string& name) {
        return OviInstance_GetPropertyInstance(instance, name.c_str(), false);
    }
};

TEST_F(PropertyPlacesTest, InstancesMayHaveOnePropertyAtDifferentPlaces) {
    OviTemplate* first = Make("A", 10, 20);
    OviTemplate* second = Make("B", 10, 20);
    OviAsset* one = OviAssetManager_NewAsset("one");
    OviAsset* both = OviAssetManager_NewAsset("both");
    OviInstance_AddTemplate(one, second);
    OviInstance_AddTemplate(both, first);
    OviInstance_AddTemplate(both, second);
    for (int round = 0; round < 2; ++round) {
        for (int i = 10; i < 30; ++i) {
            const std::string name = "B.p" + std::to_string(i);
            for (OviAsset* asset : {one, both}) {
                OviPropertyInstance* found = Find(asset, name);
                ASSERT_TRUE(found);
                EXPECT_EQ(name, OviProperty_GetFullName(OviPropertyInstance_GetProperty(found)));
            }
            EXPECT_EQ(Find(one, "A.p" + std::to_string(i)), nullptr);
        }
    }
}

TEST_F(PropertyPlacesTest, WhatIsTakenOutIsNotFoundAtItsOldPlace) {
    OviTemplate* owner = Make("A", 10, 5);
    OviAsset* asset = OviAssetManager_NewAsset("asset");
    OviInstance_AddTemplate(asset, owner);
    OviPropertyInstance* last = Find(asset, "A.p14");
    OviObject_Delete(Find(asset, "A.p12"));
    EXPECT_EQ(Find(asset, "A.p12"), nullptr);
    EXPECT_EQ(Find(asset, "A.p14"), last);
}

} // namespace
