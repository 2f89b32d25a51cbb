// Schemas that are deep or full of diamonds, on a small stack: no walk may recurse along them, or
// take time along every path.

#include "schema/Managed.h"

#include "instances/Instance.h"
#include "schema/GeometryProperty.h"
#include "support/SmallThread.h"
#include "types/CustomType.h"

namespace Kor {
namespace {

/// The whole test runs on the small stack, start and end of the manager included.
class DeepSchemaTest : public ::testing::Test {
protected:
    static TemplateManager& Manager() { return *TemplateManager::Get(); }

    static Template& Make(const std::string& name, const std::vector<Template*>& parents) {
        Template* made = Manager().CreateTemplate(name);
        for (Template* parent : parents)
            made->AddParent(parent);
        return *made;
    }

    static void AddAttribute(Template& owner, const char* name, Type* type, bool reference) {
        auto* made = new AttributeProperty(name, 1);
        made->SetReference(reference);
        made->SetType(type);
        owner.AddProperty(made, -1);
    }

    static void Run(const std::function<void()>& body) {
        RunOnSmallStack([&] {
            Manager().Initialize();
            body();
            Manager().Terminate();
        });
    }
};

constexpr int kDepth = 10000;

/// T0 with an attribute, and 10,000 heirs one below the other.
Template& MakeChain(TemplateManager& manager) {
    Template* below = manager.CreateTemplate("T0");
    auto* property = new AttributeProperty("x", 1);
    property->SetType(manager.GetType("INT32"));
    below->AddProperty(property, -1);
    for (int i = 1; i <= kDepth; ++i) {
        Template* heir = manager.CreateTemplate("T" + std::to_string(i));
        heir->AddParent(below);
        heir->SetFileName("chain.template");
        below = heir;
    }
    return *below;
}

TEST_F(DeepSchemaTest, AChainOfHeirsIsSearchedToItsEnd) {
    Run([] {
        Template& last = MakeChain(Manager());
        Template* first = Manager().GetTemplate("T0");
        EXPECT_TRUE(last.IsDescendantOf(first));
        EXPECT_EQ(first->AddParent(&last), -1);
        EXPECT_NE(last.GetProperty("x", true), nullptr);
        EXPECT_EQ(last.GetProperty("y", true), nullptr);
        EXPECT_EQ(last.GetView("v", true), nullptr);
        EXPECT_TRUE(last.RefersTo(first, nullptr));
        EXPECT_EQ(first->GetDescendantCount(), kDepth + 1);
        EXPECT_EQ(first->GetDescendantAt(kDepth), &last);
        EXPECT_EQ(first->FindDescendant("t10000"), &last);
        EXPECT_EQ(last.GetValueSize(nullptr, 1), 4);
    });
}

TEST_F(DeepSchemaTest, AnInstanceOfTheLastHeirHasThePropertyOfTheFirst) {
    Run([] {
        Template& last = MakeChain(Manager());
        Instance instance("Deep");
        instance.AddTemplate(&last, false);
        EXPECT_NE(instance.GetPropertyInstance("T0.x", false), nullptr);
        EXPECT_EQ(instance.GetSize(), 4U);
        EXPECT_TRUE(instance.IsValid());
    });
}

TEST_F(DeepSchemaTest, AChainOfHeirsIsUnloaded) {
    Run([] {
        MakeChain(Manager());
        EXPECT_TRUE(Manager().UnloadTemplateFile("chain.template"));
        EXPECT_EQ(Manager().GetTemplateCount(), 2);
    });
}

TEST_F(DeepSchemaTest, AChainOfHeirsIsDeletedFromTheTop) {
    Run([] {
        MakeChain(Manager());
        for (int i = 0; i <= kDepth; ++i) {
            Template* next = Manager().GetTemplate("T" + std::to_string(i));
            Manager().RemoveTemplate(next);
            delete next;
        }
        EXPECT_EQ(Manager().GetRoot()->GetDescendantCount(), 1);
    });
}

TEST_F(DeepSchemaTest, ManyVersionsOfOneTemplateAreMadeAndUnloaded) {
    Run([] {
        Template& first = Make("Mesh", {});
        first.SetFileName("mesh.template");
        AddAttribute(first, "x", Manager().GetType("INT32"), false);
        for (int version = 2; version <= 1000; ++version)
            Manager().CreateTemplateVersion("Mesh", version);
        EXPECT_EQ(first.GetLatestVersion(), 1000);
        EXPECT_TRUE(Manager().UnloadTemplateFile("mesh.template"));
        EXPECT_EQ(Manager().GetTemplateCount(), 1);
    });
}

TEST_F(DeepSchemaTest, TemplatesContainedInEachOtherMayBeDeep) {
    Run([] {
        Template* inner = &Make("T0", {});
        AddAttribute(*inner, "x", Manager().GetType("INT32"), false);
        for (int i = 1; i <= kDepth; ++i) {
            Template& outer = Make("T" + std::to_string(i), {});
            AddAttribute(outer, "inner", inner, false);
            inner = &outer;
        }
        EXPECT_EQ(inner->GetValueSize(nullptr, 1), 4);
        EXPECT_TRUE(inner->RefersTo(Manager().GetTemplate("T0"), nullptr));
        std::set<std::string> packages;
        inner->CollectPackages(packages);
        EXPECT_EQ(packages.size(), 1U);
    });
}

TEST_F(DeepSchemaTest, GeometriesMayNestTemplatesDeep) {
    Run([] {
        LOD level("High");
        Template* inner = &Make("T0", {});
        AddAttribute(*inner, "x", Manager().GetType("INT32"), false);
        std::vector<std::unique_ptr<GeometryAlternate>> alternates;
        for (int i = 1; i <= kDepth; ++i) {
            Template& outer = Make("T" + std::to_string(i), {});
            auto* geometry = new GeometryProperty("shape", 1);
            alternates.push_back(std::make_unique<GeometryAlternate>(&level, 1));
            alternates.back()->SetType(inner);
            geometry->AddAlternate(alternates.back().get());
            outer.AddProperty(geometry, -1);
            inner = &outer;
        }
        EXPECT_EQ(inner->GetValueSize(nullptr, 1), 4);
        EXPECT_EQ(Manager().GetTemplate("T1")->GetProperty("shape", false)->GetValueSize(), 4);
        alternates.front()->SetType(inner);
        EXPECT_EQ(inner->GetValueSize(nullptr, 1), 0) << "a circle";
        for (const auto& alternate : alternates)
            alternate->SetType(nullptr);
    });
}

TEST_F(DeepSchemaTest, ArraysOfTemplatesInEachOtherAreMeasuredAtOnce) {
    Run([] {
        const auto array = [](Template* of, int dimension) {
            auto* made = new CustomType("C" + std::to_string(Manager().GetTypeCount()), 1);
            made->SetBaseType(of);
            made->SetDimension(dimension);
            Manager().AddType(made);
            return made;
        };
        Template* inner = &Make("T0", {});
        Template& empty = Make("Empty", {});
        AddAttribute(empty, "nothing", array(inner, 2147483647), false);
        EXPECT_EQ(empty.GetValueSize(nullptr, 2147483647), 0);
        AddAttribute(*inner, "x", Manager().GetType("INT32"), false);
        EXPECT_EQ(empty.GetValueSize(nullptr, 1), 2147483647);
        for (int i = 1; i <= 30; ++i) {
            Template& outer = Make("T" + std::to_string(i), {});
            AddAttribute(outer, "inner", array(inner, 100), false);
            inner = &outer;
        }
        EXPECT_EQ(inner->GetValueSize(nullptr, 1), 2147483647);
    });
}

TEST_F(DeepSchemaTest, ChainsOfBaseTypesMayBeLong) {
    Run([] {
        Type* below = Manager().GetType("INT32");
        for (int i = 0; i < kDepth; ++i) {
            auto* above = new CustomType("C" + std::to_string(i), 1);
            above->SetBaseType(below);
            Manager().AddType(above);
            below = above;
        }
        EXPECT_EQ(below->GetValueSize(nullptr, 1), 4);
    });
    RunOnSmallStack([] {
        // A property that outlives the manager keeps the whole chain until its own end.
        Manager().Initialize();
        Type* below = Manager().GetType("INT32");
        for (int i = 0; i < kDepth; ++i) {
            auto* above = new CustomType("C" + std::to_string(i), 1);
            above->SetBaseType(below);
            Manager().AddType(above);
            below = above;
        }
        AttributeProperty survivor("x", 1);
        survivor.SetType(below);
        Manager().Terminate();
        EXPECT_EQ(survivor.GetValueSize(), 4);
    });
}

// -- diamonds -------------------------------------------------------------------------------------

/// 64 diamonds, one on top of the other: 2^64 paths lead from the last template to the first.
Template& MakeDiamonds(TemplateManager& manager) {
    Template* below = manager.CreateTemplate("D0");
    const auto above = [&manager](const std::string& name,
                                  std::initializer_list<Template*> parents) {
        Template* made = manager.CreateTemplate(name);
        for (Template* parent : parents)
            made->AddParent(parent);
        made->SetFileName("diamonds.template");
        return made;
    };
    for (int i = 1; i <= 64; ++i) {
        const std::string level = std::to_string(i);
        Template* left = above("L" + level, {below});
        Template* right = above("R" + level, {below});
        below = above("D" + level, {left, right});
    }
    return *below;
}

TEST_F(DeepSchemaTest, DiamondsAreSearchedOncePerTemplate) {
    Run([] {
        Template& top = MakeDiamonds(Manager());
        Template* bottom = Manager().GetTemplate("D0");
        AddAttribute(*bottom, "x", Manager().GetType("INT32"), false);
        EXPECT_TRUE(top.IsDescendantOf(bottom));
        EXPECT_FALSE(bottom->IsDescendantOf(&top));
        EXPECT_EQ(bottom->AddParent(&top), -1);
        EXPECT_NE(top.GetProperty("x", true), nullptr);
        EXPECT_EQ(top.GetProperty("y", true), nullptr);
        EXPECT_EQ(top.GetView("v", true), nullptr);
        EXPECT_TRUE(top.RefersTo(bottom, nullptr));
        EXPECT_EQ(top.GetValueSize(nullptr, 1), 2147483647);
        EXPECT_EQ(bottom->GetDescendantCount(), 2147483647);
        EXPECT_EQ(bottom->FindDescendant("nobody"), nullptr);
        Manager().CreateTemplateVersion("D64", 2);
    });
}

TEST_F(DeepSchemaTest, AnInstanceOverDiamondsHasEachPropertyOnce) {
    Run([] {
        Template& top = MakeDiamonds(Manager());
        AddAttribute(*Manager().GetTemplate("D0"), "x", Manager().GetType("INT32"), false);
        Instance instance("Deep");
        instance.AddTemplate(&top, false);
        EXPECT_EQ(instance.GetPropertyInstances().GetCount(), 1);
        EXPECT_EQ(instance.GetSize(), 2147483647U);
        instance.RemoveTemplate(&top, false);
    });
}

TEST_F(DeepSchemaTest, DiamondsAreUnloaded) {
    Run([] {
        MakeDiamonds(Manager());
        EXPECT_TRUE(Manager().UnloadTemplateFile("DIAMONDS.template"));
        EXPECT_EQ(Manager().GetTemplateCount(), 2);
    });
}

TEST_F(DeepSchemaTest, DiamondsThatReferToThemselvesAreMeasured) {
    Run([] {
        Template& top = MakeDiamonds(Manager());
        for (int i = 0; i <= 64; ++i) {
            Template* level = Manager().GetTemplate("D" + std::to_string(i));
            AddAttribute(*level, "top", &top, true);
        }
        EXPECT_EQ(top.GetValueSize(nullptr, 1), 0) << "nothing but itself";
        AddAttribute(*Manager().GetTemplate("D64"), "x", Manager().GetType("INT32"), false);
        EXPECT_EQ(top.GetValueSize(nullptr, 1), 4);
        EXPECT_GT(Manager().GetTemplate("D1")->GetValueSize(nullptr, 1), 0);
    });
}

TEST_F(DeepSchemaTest, RingsOfReferencesAreMeasured) {
    Run([] {
        constexpr int kRing = 300;
        for (int i = 0; i < kRing; ++i)
            AddAttribute(Make("T" + std::to_string(i), {}), "x", Manager().GetType("INT32"), false);
        for (int i = 0; i < kRing; ++i) {
            for (const int step : {1, 2}) {
                Template* next = Manager().GetTemplate("T" + std::to_string((i + step) % kRing));
                AddAttribute(*Manager().GetTemplate("T" + std::to_string(i)),
                             step == 1 ? "near" : "far", next, true);
            }
        }
        EXPECT_GT(Manager().GetTemplate("T0")->GetValueSize(nullptr, 1), 0);
    });
}

} // namespace
} // namespace Kor
