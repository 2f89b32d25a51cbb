// The subtree below a template, walked in descending key order.

#include "schema/Managed.h"

namespace Kor {
namespace {

class TemplateDescendantsTest : public ManagedTest {
protected:
    static std::vector<std::string> Walk(Template& top) {
        std::vector<std::string> names;
        for (int i = 0; Template* found = top.GetDescendantAt(i); ++i)
            names.emplace_back(found->GetNameView());
        return names;
    }
};

TEST_F(TemplateDescendantsTest, ATemplateAloneIsItsOnlyDescendant) {
    Template& a = Make("A");
    EXPECT_EQ(a.GetDescendantCount(), 1);
    EXPECT_EQ(a.GetDescendantAt(0), &a);
    EXPECT_EQ(a.GetDescendantAt(1), nullptr);
    EXPECT_EQ(a.GetDescendantAt(-1), nullptr);
}

TEST_F(TemplateDescendantsTest, ChildrenComeInDescendingKeyOrderEachWithItsSubtree) {
    Template& a = Make("A");
    Make("C", {&a});
    Template& b = Make("B", {&a});
    Make("B2", {&b});
    Make("B1", {&b});
    Make("D");
    EXPECT_EQ(Walk(a), (std::vector<std::string>{"A", "C", "B", "B2", "B1"}));
    EXPECT_EQ(a.GetDescendantCount(), 5);
    Template* root = Manager().GetRoot();
    EXPECT_EQ(root->GetDescendantAt(1)->GetNameView(), "D") << "the greatest key";
    EXPECT_EQ(root->GetDescendantCount(), 7);
}

TEST_F(TemplateDescendantsTest, ATemplateReachedAlongTwoPathsCountsTwice) {
    Template& top = Make("Top");
    Make("Bottom", {&Make("L", {&top}), &Make("R", {&top})});
    EXPECT_EQ(Walk(top), (std::vector<std::string>{"Top", "R", "Bottom", "L", "Bottom"}));
    EXPECT_EQ(top.GetDescendantCount(), 5);
}

TEST_F(TemplateDescendantsTest, FindingIgnoresCaseAndPackagesAndTakesTheFirstInWalkingOrder) {
    Template& a = Make("A");
    Template& b = Make("x.Thing", {&a});
    Template& c = Make("y.THING", {&a});
    EXPECT_EQ(a.FindDescendant("thing"), &c);
    EXPECT_EQ(b.FindDescendant("thing"), &b);
    EXPECT_EQ(a.FindDescendant("a"), &a);
    EXPECT_EQ(a.FindDescendant("x.Thing"), nullptr);
    EXPECT_EQ(b.FindDescendant("a"), nullptr);
}

TEST_F(TemplateDescendantsTest, StackedDiamondsAreCountedOncePerPathUpToTheLimitOfAnInt) {
    std::vector<Template*> tops{&Make("D0")};
    for (int i = 1; i <= 64; ++i) {
        const std::string level = std::to_string(i);
        Template& left = Make("L" + level, {tops.back()});
        Template& right = Make("R" + level, {tops.back()});
        tops.push_back(&Make("D" + level, {&left, &right}));
    }
    EXPECT_EQ(tops[64]->GetDescendantCount(), 1);
    EXPECT_EQ(tops[63]->GetDescendantCount(), 5);
    EXPECT_EQ(tops[62]->GetDescendantCount(), 3 + 2 * 5);
    EXPECT_EQ(tops[0]->GetDescendantCount(), 2147483647);
    EXPECT_NE(tops[0]->GetDescendantAt(2147483646), nullptr);
    EXPECT_EQ(tops[0]->FindDescendant("l64")->GetNameView(), "L64");
}

} // namespace
} // namespace Kor
