// What the template manager offers to the readers, beyond the exported functions.

#include <filesystem>
#include <fstream>

#include "core/ErrorManager.h"
#include "instances/Instance.h"
#include "manager/TemplateManager.h"
#include "manager/UsingList.h"
#include "ovi/object.h"
#include "schema/Managed.h"
#include "types/CustomType.h"

namespace Kor {
namespace {

class TemplateManagerTest : public ManagedTest {
protected:
    template <class Names = UsingList> static Names List(std::initializer_list<const char*> texts) {
        Names list;
        for (const char* text : texts)
            list.Insert(text);
        return list;
    }

    static Template* Version(int version) {
        return Manager().CreateTemplateVersion("Foo", version);
    }

    static Template* Find(unsigned version) { return Manager().GetTemplateVersion("Foo", version); }
};

// -- from a version on ----------------------------------------------------------------------------

TEST_F(TemplateManagerTest, APropertyIsAddedPastVersionsThatAreMissing) {
    Make("Foo");
    Version(3);
    Version(5);
    auto* property = new AttributeProperty("x", 2);
    const Template* added = Manager().AddPropertyFromVersion("Foo", property);
    EXPECT_EQ(added, Find(2));
    EXPECT_EQ(property->GetOwner(), Find(2));
    EXPECT_EQ(Find(1)->GetProperty("x", false), nullptr);
    for (const unsigned version : {2U, 3U, 5U})
        EXPECT_EQ(Find(version)->GetProperty("x", false), property) << version;
    EXPECT_EQ(Find(4), nullptr);
}

TEST_F(TemplateManagerTest, APropertyStopsAtAVersionThatHasOrInheritsANewerOne) {
    Template& base = Make("Base");
    base.SetVersion(3);
    AddAttribute(base, "x", Int32());
    Make("Foo");
    Version(2);
    Version(3)->AddParent(&base);
    Version(4);
    Find(4)->RemoveParent(&base);
    auto* property = new AttributeProperty("x", 1);
    Manager().AddPropertyFromVersion("Foo", property);
    EXPECT_EQ(Find(2)->GetProperty("x", false), property);
    EXPECT_EQ(Find(3)->GetProperty("x", false), nullptr);
    EXPECT_EQ(Find(4)->GetProperty("x", false), nullptr) << "the walk has ended";
}

TEST_F(TemplateManagerTest, ARefusedPropertyIsAddedNowhere) {
    AddAttribute(Make("Foo"), "x", Int32());
    const std::unique_ptr<Property> copy(Version(2)->GetProperty("x", false));
    Find(2)->RemoveProperty(copy.get());
    AttributeProperty second("x", 1);
    bool refused = false;
    EXPECT_EQ(Manager().AddPropertyFromVersion("Foo", &second, &refused), Find(1));
    EXPECT_TRUE(refused);
    EXPECT_EQ(Find(2)->GetProperty("x", true), nullptr);
    EXPECT_EQ(Manager().AddPropertyFromVersion("Bar", &second, &refused), nullptr);
    EXPECT_TRUE(refused);
}

TEST_F(TemplateManagerTest, RemovalStopsAtANewerDefinition) {
    Make("Foo");
    Version(2);
    Version(3);
    Version(4);
    AttributeProperty old("x", 1);
    Manager().AddPropertyFromVersion("Foo", &old);
    AddAttribute(*Find(3), "x", Int32());
    EXPECT_EQ(Manager().RemovePropertyFromVersion("Foo", &old), Find(1));
    EXPECT_EQ(Find(1)->GetProperty("x", false), nullptr);
    EXPECT_EQ(Find(2)->GetProperty("x", false), nullptr);
    EXPECT_NE(Find(3)->GetProperty("x", false), nullptr);
    EXPECT_EQ(Find(4)->GetProperty("x", false), &old);
}

TEST_F(TemplateManagerTest, AParentIsAddedToAllLaterVersions) {
    Template& base = Make("Base");
    Make("Foo");
    Version(4);
    const Template* added = Manager().AddParentFromVersion("Foo", 2, &base);
    EXPECT_EQ(added, Find(2));
    EXPECT_EQ(Find(1)->GetParent("Base#1"), nullptr);
    EXPECT_EQ(Find(2)->GetParent("Base#1"), &base);
    EXPECT_EQ(Find(4)->GetParent("Base#1"), &base);
    EXPECT_EQ(base.GetChildCount(), 2);
    EXPECT_EQ(Manager().AddParentFromVersion("Bar", 2, &base), nullptr);
    Manager().AddParentFromVersion("Base", 1, Find(4)); // would be a circle
    EXPECT_EQ(base.GetParent("Foo#4"), nullptr);
}

TEST_F(TemplateManagerTest, VersionsComeInNumericOrder) {
    Make("Foo");
    Make("Foo2");
    for (const int version : {10, 2, 9})
        Version(version);
    std::vector<int> versions;
    for (const Template* version : Manager().GetVersions("Foo"))
        versions.push_back(version->GetVersion());
    EXPECT_EQ(versions, (std::vector<int>{1, 2, 9, 10}));
    EXPECT_TRUE(Manager().GetVersions("Fo").empty());
}

// -- names with prefixes --------------------------------------------------------------------------

TEST_F(TemplateManagerTest, NamesResolveWithThePrefixesInListOrder) {
    Template& bare = Make("Vec");
    Template& inA = Make("a.Vec");
    Template& inB = Make("b.Only");
    EXPECT_EQ(Manager().ResolveType("Vec", List({"", "a", "b"})), &bare);
    EXPECT_EQ(Manager().ResolveType("Vec", List({"a", "b"})), &inA);
    EXPECT_EQ(Manager().ResolveType("Only", List({"", "a", "b"})), &inB);
    EXPECT_EQ(Manager().ResolveType("a.Vec", List({"a"})), &inA);
    EXPECT_EQ(Manager().ResolveType("Vec", List({})), nullptr);
    EXPECT_EQ(Manager().ResolveType("Other", List({"", "a"})), nullptr);
}

TEST_F(TemplateManagerTest, ANameThatBeginsLikeAPrefixIsTakenAsComplete) {
    Template& bare = Make("pkgX");
    Make("pkg.pkgY");
    EXPECT_EQ(Manager().ResolveType("pkgX", List({"pkg"})), &bare);
    EXPECT_EQ(Manager().ResolveType("pkgY", List({"pkg"})), nullptr);
}

TEST_F(TemplateManagerTest, KindsAreTriedForOnePrefixAfterTheOther) {
    Template& inA = Make("a.Thing");
    auto* inB = new CustomType("b.Thing", 1);
    Manager().AddType(inB);
    EXPECT_EQ(Manager().ResolveType("Thing", List({"a", "b"})), &inA);
    auto* plain = new CustomType("a.Thing", 1);
    Manager().AddType(plain);
    EXPECT_EQ(Manager().ResolveType("Thing", List({"a", "b"})), plain);
}

// -- levels of detail -----------------------------------------------------------------------------

TEST_F(TemplateManagerTest, LevelsOfDetailAreListedByNameAndNotOwned) {
    LOD low("low res"), high("high"), twin("high");
    EXPECT_EQ(Manager().AddLOD(&low), 0);
    EXPECT_EQ(Manager().AddLOD(&high), 0);
    EXPECT_EQ(Manager().GetLODCount(), 2);
    EXPECT_EQ(Manager().GetLODAt(1), &low);
    EXPECT_EQ(Manager().GetLODAt(2), nullptr);
    EXPECT_EQ(Manager().GetLOD("high"), &high);
    EXPECT_EQ(Manager().GetLOD("High"), nullptr);
    EXPECT_EQ(Manager().AddLOD(&twin), ~0);
    EXPECT_EQ(Manager().GetLOD("high"), &twin);
    EXPECT_EQ(Manager().RemoveLOD(&high), 0);
    EXPECT_EQ(Manager().RemoveLOD(&high), ~0);
}

// -- files ----------------------------------------------------------------------------------------

TEST_F(TemplateManagerTest, ATemplateIsLookedForWithThePrefixesAfterItsBareName) {
    const auto directory = std::filesystem::path(OVI_TEST_OUTPUT_DIR) / "ManagerPrefixes";
    const auto write = [&](const char* file, const char* name) {
        const auto path = directory / file;
        std::filesystem::create_directories(path.parent_path());
        std::ofstream(path) << "<?xml version='1.0'?><templates><template name='" << name
                            << "'/></templates>";
    };
    std::filesystem::remove_all(directory);
    write("one/x/y/Cup.template", "OfPrefix");
    write("two/Cup.template", "Bare");
    write("two/x/y/Cup.template", "Late");
    for (const char* name : {"one", "two"})
        Manager().AddSearchPath((directory / name).string(), false);
    const auto prefixes = List<SortedStringList>({"", "x.y", "z"});
    EXPECT_TRUE(Manager().LoadTemplate("Cup", &prefixes));
    EXPECT_NE(Manager().GetTemplate("OfPrefix"), nullptr);
    EXPECT_TRUE(Manager().LoadTemplate("Cup", nullptr));
    EXPECT_NE(Manager().GetTemplate("Bare"), nullptr);
    EXPECT_EQ(Manager().GetTemplate("Late"), nullptr);
    EXPECT_FALSE(Manager().LoadTemplate("Plate", &prefixes));
    EXPECT_EQ(Manager().GetLoadedFiles().GetAll().size(), 2U);
}

TEST_F(TemplateManagerTest, APrefixIsTriedAfterAFaultyFileOfTheBareName) {
    const auto directory = std::filesystem::path(OVI_TEST_OUTPUT_DIR) / "ManagerFaulty";
    std::filesystem::remove_all(directory);
    std::filesystem::create_directories(directory / "x");
    std::ofstream(directory / "Cup.template") << "no header";
    std::ofstream(directory / "x" / "Cup.template")
        << "<?xml version='1.0'?><templates><template name='OfPrefix'/></templates>";
    Manager().AddSearchPath(directory.string(), false);
    EXPECT_FALSE(Manager().LoadTemplate("Cup", nullptr));
    EXPECT_EQ(ErrorManager::Get()->GetErrorItemCount(kError), 1);
    ErrorManager::Get()->Clear();
    const auto prefixes = List<SortedStringList>({"x"});
    EXPECT_TRUE(Manager().LoadTemplate("Cup", &prefixes));
    EXPECT_NE(Manager().GetTemplate("OfPrefix"), nullptr);
    EXPECT_EQ(ErrorManager::Get()->GetErrorItemCount(kError), 1);
    ErrorManager::Get()->Clear();
}

TEST_F(TemplateManagerTest, ADeletedTypeWhosePlaceAnotherTookBelongsToItsUsersAlone) {
    auto* former = new CustomType("Foo", 1);
    Manager().AddType(former);
    Manager().AddType(new CustomType("Foo", 1));
    ASSERT_EQ(former->GetOwner(), Owner::kManager);
    AttributeProperty user("x", 1);
    user.SetType(former);
    OviObject_Delete(reinterpret_cast<OviObject*>(static_cast<Object*>(former)));
    EXPECT_EQ(former->GetOwner(), Owner::kUsers);
    EXPECT_NE(former->GetOwner(), Owner::kManager) << "the manager would delete it, too";
}

TEST_F(TemplateManagerTest, ATypeWhosePlaceAnotherTookStaysTheManagersWhenAPropertyTakesIt) {
    auto* former = new CustomType("Foo", 1);
    Manager().AddType(former);
    Manager().AddType(new CustomType("Foo", 1));
    {
        AttributeProperty user("x", 1);
        user.SetType(former);
        EXPECT_NE(former->GetOwner(), Owner::kUsers) << "the property would delete it, too";
    }
    EXPECT_EQ(former->GetOwner(), Owner::kManager);
}

TEST_F(TemplateManagerTest, ATypeThatOutlivesItsManagerStaysItsSchemasWhenAPropertyTakesIt) {
    auto* type = new CustomType("Foo", 1);
    Manager().AddType(type);
    const auto instance = std::make_unique<Instance>("keeps the schema");
    AttributeProperty former("x", 1);
    former.SetType(type);
    Manager().Terminate();
    AttributeProperty user("y", 1);
    user.SetType(former.GetType());
    former.SetType(nullptr);
    EXPECT_NE(type->GetOwner(), Owner::kUsers) << "the property would delete it, too";
}

TEST_F(TemplateManagerTest, TheLoadedFilesFollowTheDefinitions) {
    Template& made = Make("Mesh");
    made.SetFileName("b.template");
    Make("Other").SetFileName("a.template");
    const LoadedFiles& files = Manager().GetLoadedFiles();
    using Paths = std::vector<std::string>;
    EXPECT_EQ(files.GetAll(), (Paths{"a.template", "b.template"}));
    made.SetFileName("A.template"); // another spelling: the list is exact
    EXPECT_EQ(files.GetAll(), (Paths{"A.template", "a.template"}));
    Manager().UnloadTemplateFile("a.TEMPLATE");
    EXPECT_EQ(files.GetAll(), Paths{});
}

} // namespace
} // namespace Kor
