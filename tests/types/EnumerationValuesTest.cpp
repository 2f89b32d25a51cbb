// Enumerations of many items beside the plainest search among them.

#include <algorithm>
#include <array>
#include <limits>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "types/CustomType.h"
#include "types/Enumeration.h"
#include "types/EnumerationItem.h"
#include "types/FloatType.h"
#include "types/IntType.h"
#include "types/StringType.h"

namespace {

using namespace Kor;

/// Whether a block is the text of a name. The block may be shorter: nothing behind the first
/// difference is read.
bool IsName(const std::string& name, const void* block) {
    const auto* bytes = static_cast<const char*>(block);
    size_t at = 0;
    while (at < name.size() && bytes[at] == name[at])
        ++at;
    return at == name.size() && bytes[at] == '\0';
}

/// Whether a value is that of an item, each being looked at.
bool IsAnItems(const Enumeration& enumeration, const Type& carrier, const void* value, int count) {
    std::string text;
    carrier.GetValueAsString(value, text, 0);
    const int elements = std::min(carrier.GetDimension(), std::max(count, 1));
    for (int i = 0; i < enumeration.GetItemCount(); ++i) {
        const EnumerationItem& item = *enumeration.GetItemAt(i);
        const void* other = item.GetValueOfStorage(&carrier);
        const bool equals = other && carrier.CompareValues(value, other, elements) == 0;
        if (equals || item.GetFullName() == text || IsName(item.GetFullName(), value))
            return true;
    }
    return false;
}

class ManyItems : public testing::TestWithParam<unsigned> {
public:
    int Below(int end) { return static_cast<int>(random_() % static_cast<unsigned>(end)); }

protected:
    std::string RandomName() { return "n" + std::to_string(Below(3000)); }

    /// Changes the enumeration in every way and asks about random values after each step.
    template <class MakeValue> void Compare(Type& carrier, const MakeValue& makeValue) {
        Enumeration enumeration("E", &carrier);
        for (int step = 0; step < 1500; ++step) {
            const int kind = Below(8);
            const int count = enumeration.GetItemCount();
            EnumerationItem* item = count ? enumeration.GetItemAt(Below(count)) : nullptr;
            if (kind < 3 || count < 40)
                AddItem(enumeration, carrier, makeValue(*this));
            else if (kind == 3)
                item->SetValue(makeValue(*this).data());
            else if (kind == 4)
                item->SetName(RandomName().c_str());
            else if (kind == 5)
                DeleteItem(enumeration, item);
            const auto value = makeValue(*this);
            for (const int elements : {carrier.GetDimension(), 1})
                ASSERT_EQ(enumeration.IsValueValid(value.data(), nullptr, nullptr, elements),
                          IsAnItems(enumeration, carrier, value.data(), elements))
                    << "step " << step;
        }
    }

private:
    template <class Value>
    void AddItem(Enumeration& enumeration, Type& carrier, const Value& value) {
        auto item = std::make_unique<EnumerationItem>(RandomName(), &carrier, "");
        item->SetValue(value.data());
        EnumerationItem* replaced = enumeration.GetItem(item->GetFullName());
        enumeration.AddItem(item.release());
        delete replaced;
    }

    static void DeleteItem(Enumeration& enumeration, EnumerationItem* item) {
        enumeration.RemoveItem(item);
        delete item;
    }

    std::mt19937 random_{GetParam()};
};

INSTANTIATE_TEST_SUITE_P(Seeds, ManyItems, testing::Range(1U, 5U));

TEST_P(ManyItems, KnowsNumbersAsAPlainSearchDoes) {
    IntType<int> number("Number", 1, 4);
    Compare(number, [](ManyItems& test) { return std::array<int, 1>{test.Below(400) - 200}; });
}

TEST_P(ManyItems, KnowsNumbersOfSeveralElementsAsAPlainSearchDoes) {
    IntType<int> three("Three", 3, 4);
    Compare(three, [](ManyItems& test) {
        return std::array<int, 3>{test.Below(100), test.Below(2), 0};
    });
}

TEST_P(ManyItems, KnowsFloatsAsAPlainSearchDoesAlsoWhatIsNoNumber) {
    for (const int dimension : {1, 2}) {
        FloatType<float> type("Float", dimension, 4);
        Compare(type, [](ManyItems& test) {
            constexpr float kInfinity = std::numeric_limits<float>::infinity();
            const std::array<float, 4> odd{std::numeric_limits<float>::quiet_NaN(), kInfinity,
                                           -kInfinity, -0.0F};
            const auto next = [&] {
                const auto at = static_cast<size_t>(test.Below(600));
                return at < odd.size() ? odd[at] : static_cast<float>(test.Below(1500)) / 4;
            };
            return std::array<float, 2>{next(), next()};
        });
    }
}

TEST_P(ManyItems, KnowsTextsAsAPlainSearchDoes) {
    static const auto& texts = *new std::vector<std::string>([] {
        std::vector<std::string> all;
        for (int i = 0; i < 400; ++i)
            all.push_back("n" + std::to_string(i));
        return all;
    }());
    StringType text("Text", 1, 4);
    Compare(text, [](ManyItems& test) {
        const auto at = static_cast<size_t>(test.Below(405));
        const char* none = at == 404 ? nullptr : "";
        return std::array<const char*, 2>{at < texts.size() ? texts[at].c_str() : none, nullptr};
    });
}

TEST(Enumeration, FollowsItsBaseToAnotherFormOfValues) {
    IntType<int> number("Number", 1, 4);
    FloatType<float> real("Real", 1, 4);
    CustomType alias("Alias", 1);
    alias.SetBaseType(&number);
    Enumeration enumeration("E", &alias);
    for (int i = 0; i < 100; ++i)
        enumeration.AddItem(
            new EnumerationItem("i" + std::to_string(i), &number, std::to_string(i).c_str()));
    const int seven = 7;
    const float realSeven = 7;
    EXPECT_TRUE(enumeration.IsValueValid(&seven, nullptr, nullptr, 1));
    alias.SetBaseType(&real);
    EXPECT_FALSE(enumeration.IsValueValid(&realSeven, nullptr, nullptr, 1));
    enumeration.AddItem(new EnumerationItem("real", &real, "7"));
    EXPECT_TRUE(enumeration.IsValueValid(&realSeven, nullptr, nullptr, 1));
    alias.SetBaseType(&number);
    EXPECT_TRUE(enumeration.IsValueValid(&seven, nullptr, nullptr, 1));
    enumeration.DeleteItems();
    EXPECT_FALSE(enumeration.IsValueValid(&seven, nullptr, nullptr, 1));
}

/// The block ends with the memory that it was given, which a sanitizer knows.
TEST(Enumeration, ReadsNoFurtherThanTheFirstByteThatNoNameHas) {
    IntType<int> number("Number", 1, 4);
    Enumeration enumeration("E", &number);
    for (int i = 0; i < 100; ++i)
        enumeration.AddItem(new EnumerationItem("Name" + std::to_string(i), &number, "1000000"));
    for (const char* text : {"Name7", "Name", "Name100", "Na", "", "Zebra", "A", "Name5x"}) {
        const size_t length = std::strlen(text);
        const auto block = std::make_unique<char[]>(std::max<size_t>(length + 1, sizeof(int)));
        std::memcpy(block.get(), text, length + 1);
        const bool isName = enumeration.GetItem(text) != nullptr;
        EXPECT_EQ(enumeration.IsValueValid(block.get(), nullptr, nullptr, 1), isName) << text;
    }
    const std::array<char, 4> bytes{'N', 'a', 'm', 'x'};
    const auto open = std::make_unique<char[]>(bytes.size());
    std::copy(bytes.begin(), bytes.end(), open.get());
    EXPECT_FALSE(enumeration.IsValueValid(open.get(), nullptr, nullptr, 1));
}

} // namespace
