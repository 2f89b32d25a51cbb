// Enumerations and plain types of files that are unloaded while other files use them.

#include "api/UnloadHost.h"

namespace {

class UnloadedTypesTest : public UnloadHost {
protected:
    static OviEnumeration* Enumeration(const char* name) {
        return OviTemplateManager_GetEnumeration(name);
    }

    static bool IsValid(const char* property, int value) {
        auto* found = static_cast<OviAttributeProperty*>(OviTemplateManager_GetProperty(property));
        return OviAttributeProperty_IsValueValid(found, &value);
    }

    static constexpr const char* kTypes = "<enum name='E' type='INT32'><item name='I' value='1'/>"
                                          "<item name='J' value='2'/></enum>"
                                          "<type name='T' type='INT16' dim='3'/>";
    static constexpr const char* kUser = "<template name='User'><attribute name='e' type='E'/>"
                                         "<attribute name='t' type='T'/></template>";
};

TEST_F(UnloadedTypesTest, WhatStaysKeepsWhatItSays) {
    const std::string file = Load("types.template", kTypes);
    Load("user.template", kUser);
    Unload(file);
    ASSERT_TRUE(IsRecycled(Enumeration("E")));
    EXPECT_EQ(OviEnumeration_GetItemCount(Enumeration("E")), 2);
    EXPECT_TRUE(IsValid("User.e", 2));
    EXPECT_FALSE(IsValid("User.e", 3));
    OviType* type = OviTemplateManager_GetType("T");
    ASSERT_TRUE(IsRecycled(type));
    EXPECT_EQ(OviType_GetBaseType(type), OviTemplateManager_GetType("INT16"));
    EXPECT_EQ(OviType_GetValueSize(Find("User"), nullptr, 1), 4 + 3 * 2);
}

TEST_F(UnloadedTypesTest, DefinedAnewTheyAreOthersAndTheirUsersKeepTheOldOnes) {
    const std::string file = Load("types.template", kTypes);
    const std::string user = Load("user.template", kUser);
    OviType* const old[] = {TypeOf("User.e"), TypeOf("User.t")};
    Unload(file);
    Load("types.template", "<enum name='E' type='INT32'><item name='K' value='3'/></enum>"
                           "<type name='T' type='FLOAT'/>");
    OviType* const made[] = {Enumeration("E"), OviTemplateManager_GetType("T")};
    for (int i = 0; i < 2; ++i) {
        EXPECT_NE(made[i], old[i]);
        EXPECT_FALSE(IsRecycled(made[i]));
    }
    EXPECT_EQ(TypeOf("User.e"), old[0]);
    EXPECT_EQ(TypeOf("User.t"), old[1]);
    EXPECT_TRUE(IsValid("User.e", 2));
    EXPECT_FALSE(IsValid("User.e", 3));
    EXPECT_TRUE(Unload(user));
    EXPECT_TRUE(Unload(file));
    EXPECT_EQ(OviTemplateManager_GetTypeCount(), 14);
    EXPECT_EQ(OviTemplateManager_GetEnumerationCount(), 0);
}

TEST_F(UnloadedTypesTest, TheResultIsThatOfTheFirstEnumerationByNameWithoutPlainTypes) {
    for (const char* used : {"A", "Z"}) { // handled from the last to the first
        const bool firstGoes = *used == 'Z';
        const std::string file = Load("types.template", "<template name='M'/>"
                                                        "<enum name='A' type='INT32'/>"
                                                        "<enum name='Z' type='INT32'/>");
        const std::string user =
            Load("user.template", "<template name='U'><attribute name='m' type='M'/>"
                                  "<attribute name='e' type='" +
                                      std::string(used) + "'/></template>");
        EXPECT_EQ(Unload(file), firstGoes) << used;
        EXPECT_EQ(Enumeration("A") == nullptr, firstGoes);
        Unload(user);
        Unload(file);
    }
}

} // namespace
