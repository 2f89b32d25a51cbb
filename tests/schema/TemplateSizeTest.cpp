// Sizes of template-typed values, compared with a count of every single element.

#include "schema/TemplateSize.h"

#include <limits>
#include <random>

#include "schema/Managed.h"
#include "types/CustomType.h"

namespace Kor {
namespace {

constexpr std::int64_t kMost = std::numeric_limits<int>::max();

std::int64_t Aligned(std::int64_t size, int alignment) {
    return (size + alignment - 1) / alignment * alignment;
}

/// The rule as it is said: element by element, property by property.
std::int64_t Count(const Template& type, int count) {
    std::int64_t size = 0;
    for (int element = 0; element < count; ++element) {
        for (int i = 0; i < type.GetParentCount(); ++i)
            size += Count(*type.GetParentAt(i), 1);
        for (const Property* property : type.GetDeclaredProperties()) {
            const Type& held = *static_cast<const AttributeProperty*>(property)->GetType();
            const auto* contained = ObjectCast<Template>(held.GetStorageType());
            const std::int64_t added = contained ? Count(*contained, held.GetDimension())
                                                 : held.GetValueSize(nullptr, held.GetDimension());
            if (added > 0)
                size = Aligned(size, held.GetAlignment()) + added;
        }
        size = Aligned(size, type.GetAlignment());
    }
    return std::min(size * std::max(count, 0), kMost);
}

class TemplateSizeTest : public ManagedTest {
protected:
    int Draw(const std::vector<int>& from) {
        return from[std::uniform_int_distribution<size_t>(0, from.size() - 1)(random_)];
    }

    /// A registered type of some dimension and alignment over another one.
    CustomType& Over(Type& base, int dimension, int alignment) {
        auto* made = new CustomType("C" + std::to_string(Manager().GetTypeCount()), 1);
        made->SetBaseType(&base);
        made->SetDimension(dimension);
        made->SetAlignment(alignment);
        Manager().AddType(made);
        return *made;
    }

    /// Templates that hold and extend those made before them.
    std::vector<Template*> MakeAny(int count) {
        std::vector<Template*> made;
        for (int i = 0; i < count; ++i) {
            std::vector<Template*> parents;
            if (i > 0 && Draw({0, 0, 1}))
                parents.push_back(made[static_cast<size_t>(i) / 2]);
            Template& current = Make("T" + std::to_string(i), parents);
            current.SetAlignment(Draw({1, 1, 2, 4, 6}));
            for (int p = Draw({0, 1, 2, 4}); p > 0; --p) {
                Type& base = i > 0 && Draw({0, 1})
                                 ? *made[static_cast<size_t>(Draw({0, i - 1}))]
                                 : *Manager().GetType(Draw({0, 1}) ? "INT32" : "BOOL");
                AddAttribute(current, ("p" + std::to_string(p)).c_str(),
                             &Over(base, Draw({0, 1, 1, 2, 3, 17}), Draw({1, 3, 4, 8, 10})));
            }
            made.push_back(&current);
        }
        return made;
    }

    std::mt19937 random_{20};
};

TEST_F(TemplateSizeTest, IsWhatCountingEveryElementGives) {
    int exact = 0;
    for (int round = 0; round < 100; ++round) {
        for (const Template* type : MakeAny(4)) {
            for (const int count : {0, 1, 2, 5, 60, 901}) {
                const std::int64_t expected = Count(*type, count);
                EXPECT_EQ(MeasureTemplateValue(*type, nullptr, count), expected) << count;
                exact += expected > 0 && expected < kMost;
            }
        }
        Manager().Terminate();
        Manager().Initialize();
    }
    EXPECT_GT(exact, 500) << "most sizes are to fit";
}

TEST_F(TemplateSizeTest, IsExactUpToTheLargestNumberAndStaysThere) {
    Template& one = Make("One");
    AddAttribute(one, "x", &Over(*Manager().GetType("BOOL"), 1, 1));
    ASSERT_EQ(MeasureTemplateValue(one, nullptr, 1), 1);
    EXPECT_EQ(MeasureTemplateValue(one, nullptr, 46340), 46340 * 46340);
    EXPECT_EQ(MeasureTemplateValue(one, nullptr, 46341), kMost);
    EXPECT_EQ(MeasureTemplateValue(one, nullptr, 2147483647), kMost);
    EXPECT_EQ(MeasureTemplateValue(Make("None"), nullptr, 2147483647), 0);
}

} // namespace
} // namespace Kor
