#include "schema/Managed.h"

namespace Kor {
namespace {

class VersionedPropertiesTest : public ManagedTest {};

TEST_F(VersionedPropertiesTest, RemovalStopsAtTheFirstVersionWithoutThePropertyAndAddingDoesNot) {
    Template& first = Make("T");
    Template* versions[5] = {nullptr, &first};
    for (int i = 2; i <= 4; ++i)
        versions[i] = Manager().CreateTemplateVersion("T", i);
    auto property = std::make_unique<AttributeProperty>("x", 1);
    AttributeProperty* x = property.get();
    EXPECT_EQ(Manager().AddPropertyFromVersion("T", x), &first);
    versions[3]->RemoveProperty(x);
    EXPECT_EQ(Manager().RemovePropertyFromVersion("T", x), &first);
    EXPECT_EQ(versions[2]->GetProperty("x", true), nullptr);
    EXPECT_EQ(versions[4]->GetProperty("x", true), x);
    Manager().AddPropertyFromVersion("T", x);
    EXPECT_EQ(versions[3]->GetProperty("x", true), x);
    versions[1]->RemoveProperty(x);
    EXPECT_EQ(Manager().RemovePropertyFromVersion("T", x), &first); // not there: no other loses it
    EXPECT_EQ(versions[2]->GetProperty("x", true), x);
}

TEST_F(VersionedPropertiesTest, NothingHappensWithoutALowerVersion) {
    AttributeProperty x("x", 2);
    EXPECT_EQ(Manager().AddPropertyFromVersion("Unknown", &x), nullptr);
    EXPECT_EQ(Manager().RemovePropertyFromVersion("Unknown", &x), nullptr);
}

} // namespace
} // namespace Kor
