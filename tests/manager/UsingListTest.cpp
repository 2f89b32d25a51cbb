// Names that long lists of prefixes complete, beside looking each of them up.

#include <random>
#include <string>

#include "manager/TemplateManager.h"
#include "manager/UsingList.h"
#include "schema/Managed.h"
#include "types/CustomType.h"

namespace Kor {
namespace {

class UsingListTest : public ManagedTest {
protected:
    unsigned Below(unsigned end) { return static_cast<unsigned>(random_() % end); }

    /// "a", "b.a", "aa.b": names of which many begin or end like others.
    std::string RandomName() {
        std::string name;
        const unsigned length = 1 + Below(4);
        for (unsigned i = 0; i < length; ++i) {
            if (i > 0 && Below(2) == 0)
                name += '.';
            name += static_cast<char>('a' + Below(4));
        }
        return name;
    }

    /// Adds or removes something of that name.
    static void Change(const std::string& name, bool isPlain) {
        if (Template* known = Manager().GetTemplate(name)) {
            Manager().RemoveTemplate(known);
            delete known;
        } else if (!isPlain) {
            Make(name);
        } else if (!Manager().GetType(name)) {
            Manager().AddType(new CustomType(name, 1));
        }
    }

    static Type* FindExactly(const std::string& name) {
        if (Type* type = Manager().GetType(name))
            return type;
        if (Type* enumeration = Manager().GetEnumeration(name))
            return enumeration;
        return Manager().GetTemplate(name);
    }

    static Type* Resolve(const std::string& name, const SortedStringList& prefixes) {
        for (const std::string& prefix : prefixes) {
            const bool complete = name.compare(0, prefix.size(), prefix) == 0;
            if (Type* type = FindExactly(complete ? name : prefix + '.' + name))
                return type;
        }
        return nullptr;
    }

private:
    std::mt19937 random_{5};
};

TEST_F(UsingListTest, ALongOneResolvesNamesAsLookingUpEachPrefixDoes) {
    for (const bool hasEmpty : {false, true}) {
        UsingList prefixes;
        SortedStringList model;
        if (hasEmpty) {
            prefixes.Insert("");
            model.Insert("");
        }
        for (int step = 0; step < 3000; ++step) {
            const std::string name = RandomName();
            if (step % 4 == 0 && step < 400) {
                prefixes.Insert(name);
                model.Insert(name);
            } else if (step % 7 == 0) {
                Change(name, step % 5 == 0);
            }
            const std::string wanted = RandomName();
            ASSERT_EQ(Manager().ResolveType(wanted, prefixes), Resolve(wanted, model)) << wanted;
        }
        EXPECT_FALSE(prefixes.IsShort());
    }
}

TEST_F(UsingListTest, ALongOneFindsTypesThatCameOrWereRenamedLater) {
    UsingList prefixes;
    for (int i = 0; i < 100; ++i)
        prefixes.Insert("p" + std::to_string(i));
    EXPECT_EQ(Manager().ResolveType("Late", prefixes), nullptr);
    Template& late = Make("p7.Late");
    EXPECT_EQ(Manager().ResolveType("Late", prefixes), &late);
    late.SetName("p8.Later");
    EXPECT_EQ(Manager().ResolveType("Late", prefixes), nullptr);
    EXPECT_EQ(Manager().ResolveType("Later", prefixes), &late);
    EXPECT_EQ(Manager().ResolveTemplateVersion("Later", 1, prefixes), &late);
    EXPECT_EQ(Manager().ResolveTemplateVersion("Later", 2, prefixes), nullptr);
}

} // namespace
} // namespace Kor
