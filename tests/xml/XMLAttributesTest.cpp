#include "xml/XMLAttributes.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace Kor;

namespace {

/// Attributes with the names given, each with its position as its value.
class AttributeSet {
public:
    explicit AttributeSet(std::vector<std::string> names) : names_(std::move(names)) {
        for (size_t i = 0; i < names_.size(); ++i)
            values_.push_back(std::to_string(i));
        for (size_t i = 0; i < names_.size(); ++i)
            attributes_.Add(names_[i], values_[i]);
    }

    const XMLAttributes& Get() const { return attributes_; }

private:
    std::vector<std::string> names_;
    std::vector<std::string> values_;
    XMLAttributes attributes_;
};

/// So many different names, in no order, each twice.
std::vector<std::string> MakeNames(int count) {
    std::vector<std::string> names;
    for (int i = 0; i < 2 * count; ++i)
        names.push_back("n" + std::to_string((i * 7) % count));
    return names;
}

} // namespace

TEST(XMLAttributes, AreNoneAtFirst) {
    const XMLAttributes attributes;
    EXPECT_EQ(attributes.GetCount(), 0);
    EXPECT_EQ(attributes.Find("a"), nullptr);
    EXPECT_EQ(attributes.Find(""), nullptr);
}

TEST(XMLAttributes, AreFoundByTheirExactNames) {
    const AttributeSet set({"name", "nam", "names"});
    EXPECT_STREQ(set.Get().Find("nam"), "1");
    EXPECT_STREQ(set.Get().Find("names"), "2");
    EXPECT_STREQ(set.Get().Find("name"), "0");
    EXPECT_EQ(set.Get().Find("Name"), nullptr);
    EXPECT_EQ(set.Get().Find("na"), nullptr);
    EXPECT_EQ(set.Get().Find(""), nullptr);
}

TEST(XMLAttributes, StandInByteOrderOfTheirNames) {
    const AttributeSet set({"b", "a", "_", "B", "ab"});
    ASSERT_EQ(set.Get().GetCount(), 5);
    std::string order;
    for (int i = 0; i < 5; ++i)
        order += std::string(set.Get().GetNameAt(i)) + std::string(set.Get().GetValueAt(i)) + " ";
    EXPECT_EQ(order, "B3 _2 a1 ab4 b0 ");
}

TEST(XMLAttributes, CountTheFirstOfSeveralWithOneName) {
    const AttributeSet set({"b", "a", "b", "a", "a"});
    EXPECT_STREQ(set.Get().Find("b"), "0");
    EXPECT_EQ(set.Get().GetCount(), 2);
    EXPECT_EQ(set.Get().GetValueAt(0), "1");
    EXPECT_EQ(set.Get().GetValueAt(1), "0");
    EXPECT_STREQ(set.Get().Find("b"), "0");
}

TEST(XMLAttributes, OutOfRangeAreEmptyTexts) {
    const AttributeSet set({"a"});
    for (const int index : {-1, 1, 1000}) {
        EXPECT_EQ(set.Get().GetNameAt(index), "");
        EXPECT_EQ(set.Get().GetValueAt(index), "");
        EXPECT_STREQ(set.Get().GetValueAt(index).data(), "");
    }
}

TEST(XMLAttributes, KeepTheRulesWhateverTheirNumber) {
    for (const int count : {1, 5, 8, 9, 16, 17, 100}) {
        const AttributeSet unsettled(MakeNames(count));
        EXPECT_STREQ(unsettled.Get().Find("n0"), "0") << count;
        const AttributeSet set(MakeNames(count));
        ASSERT_EQ(set.Get().GetCount(), count);
        for (int i = 0; i < count; ++i) {
            const std::string_view name = set.Get().GetNameAt(i);
            EXPECT_TRUE(i == 0 || set.Get().GetNameAt(i - 1) < name);
            EXPECT_LT(std::stoi(std::string(set.Get().GetValueAt(i))), count) << "not the first";
            EXPECT_STREQ(set.Get().Find(name), set.Get().GetValueAt(i).data());
        }
        EXPECT_EQ(set.Get().Find("n"), nullptr);
        EXPECT_EQ(set.Get().Find("zz"), nullptr);
    }
}

TEST(XMLAttributes, AreForgottenByClear) {
    XMLAttributes attributes;
    attributes.Add("a", "1");
    attributes.Clear();
    EXPECT_EQ(attributes.GetCount(), 0);
    attributes.Add("b", "2");
    EXPECT_EQ(attributes.Find("a"), nullptr);
    EXPECT_STREQ(attributes.Find("b"), "2");
}
