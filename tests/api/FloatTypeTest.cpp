// Numbers of 32 and 64 bits with a fraction.

#include <cfloat>
#include <clocale>
#include <cmath>
#include <limits>
#include <locale>

#include "api/Host.h"
#include "api/Values.h"

namespace {

/// How a host in another country writes numbers.
class Comma : public std::numpunct<char> {
protected:
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
};

/// The rest of the test runs in a host with commas.
class CommaHost {
public:
    CommaHost()
        : before_(std::locale::global(std::locale(std::locale::classic(), new Comma))),
          beforeC_(std::setlocale(LC_ALL, nullptr)) {
        for (const char* name : {"de_DE.UTF-8", "de_DE.utf8", "de_DE", "fr_FR.UTF-8", "German"}) {
            if (std::setlocale(LC_ALL, name))
                break;
        }
    }
    ~CommaHost() {
        std::locale::global(before_);
        std::setlocale(LC_ALL, beforeC_.c_str());
    }

private:
    std::locale before_;
    std::string beforeC_;
};

template <class Number> struct FloatCase;
template <> struct FloatCase<float> { static constexpr const char* kName = "FLOAT"; };
template <> struct FloatCase<double> { static constexpr const char* kName = "DOUBLE"; };

template <class Number> class FloatTypeTest : public HostTest {
protected:
    void SetUp() override {
        HostTest::SetUp();
        type_ = TypeNamed(FloatCase<Number>::kName);
        ASSERT_NE(type_, nullptr);
    }

    std::string TextOf(double number) {
        const Number element = static_cast<Number>(number);
        return Block(type_, &element, 1).Text();
    }

    Number Read(const char* text) {
        Block block(type_, nullptr, 1);
        EXPECT_EQ(block.Read(text), static_cast<int>(sizeof(Number)));
        return block.At<Number>(0);
    }

    bool IsValid(Number value, Number minimum, Number maximum) {
        OviAttributeProperty* property = OviAttributeProperty_New("number", 1);
        OviAttributeProperty_SetType(property, type_);
        OviAttributeProperty_SetMinValue(property, OviType_NewValue(type_, &minimum, 1));
        OviAttributeProperty_SetMaxValue(property, OviType_NewValue(type_, &maximum, 1));
        const bool valid = OviAttributeProperty_IsValueValid(property, &value);
        OviObject_Delete(property);
        return valid;
    }

    static constexpr Number kNan = std::numeric_limits<Number>::quiet_NaN();
    static constexpr Number kInfinity = std::numeric_limits<Number>::infinity();

    OviType* type_ = nullptr;
};

using Numbers = ::testing::Types<float, double>;
TYPED_TEST_SUITE(FloatTypeTest, Numbers);

TYPED_TEST(FloatTypeTest, SizeIsCountTimesWidth) {
    const int width = static_cast<int>(sizeof(TypeParam));
    for (const int count : {0, 1, 3})
        EXPECT_EQ(OviType_GetValueSize(this->type_, nullptr, count), count * width);
    EXPECT_EQ(OviType_GetValueSize(this->type_, nullptr, -1), 0);
}

TYPED_TEST(FloatTypeTest, SizesBeyondAnIntStopAtTheLargest) {
    EXPECT_EQ(OviType_GetValueSize(this->type_, nullptr, 2000000000), 2147483647);
}

TYPED_TEST(FloatTypeTest, NewValuesCopyEveryElement) {
    const TypeParam initial[] = {TypeParam(1.5), TypeParam(-2), TypeParam(3)};
    Block block(this->type_, initial, 3);
    Block zeroes(this->type_, nullptr, 3);
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(block.At<TypeParam>(i), initial[i]);
        EXPECT_EQ(zeroes.At<TypeParam>(i), 0);
    }
    EXPECT_EQ(OviType_NewValue(this->type_, initial, 0), nullptr);
    EXPECT_EQ(OviType_NewValue(this->type_, initial, -3), nullptr);
}

TYPED_TEST(FloatTypeTest, TextHasSixSignificantDigits) {
    EXPECT_EQ(this->TextOf(0.1), "0.1");
    EXPECT_EQ(this->TextOf(0), "0");
    EXPECT_EQ(this->TextOf(-0.5), "-0.5");
    EXPECT_EQ(this->TextOf(3.14159265), "3.14159");
    EXPECT_EQ(this->TextOf(123456), "123456");
    EXPECT_EQ(this->TextOf(1234567), "1.23457e+06");
    EXPECT_EQ(this->TextOf(1e6), "1e+06");
    EXPECT_EQ(this->TextOf(0.0001), "0.0001");
    EXPECT_EQ(this->TextOf(0.00001), "1e-05");
    EXPECT_EQ(this->TextOf(static_cast<double>(this->kInfinity)), "inf");
    EXPECT_EQ(this->TextOf(-static_cast<double>(this->kInfinity)), "-inf");
    EXPECT_EQ(this->TextOf(static_cast<double>(this->kNan)), "nan");
}

TYPED_TEST(FloatTypeTest, TextIsReadAsFarAsItIsANumber) {
    EXPECT_EQ(this->Read("0.1"), TypeParam(0.1));
    EXPECT_EQ(this->Read("  -2.5e2xyz"), TypeParam(-250));
    EXPECT_EQ(this->Read("1,5"), TypeParam(1));
    EXPECT_EQ(this->Read("none"), TypeParam(0));
    EXPECT_EQ(this->Read(""), TypeParam(0));
    EXPECT_EQ(this->Read(nullptr), TypeParam(0));
    EXPECT_EQ(this->Read("0x1p4"), TypeParam(16));
    EXPECT_EQ(this->Read("inf"), this->kInfinity);
    EXPECT_EQ(this->Read("-1e999"), -this->kInfinity);
    EXPECT_TRUE(std::isnan(this->Read("nan")));
}

TYPED_TEST(FloatTypeTest, NumbersTooLargeForTheWidthBecomeInfinite) {
    const bool fits = sizeof(TypeParam) == 8;
    EXPECT_EQ(std::isinf(this->Read("1e39")), !fits);
    if (fits)
        return;
    // Rounding to the nearest: what lies below the middle to the next power of two still fits.
    EXPECT_EQ(this->Read("3.4028235e38"), TypeParam(FLT_MAX));
    EXPECT_EQ(this->Read("-3.40282356e38"), TypeParam(-FLT_MAX));
    EXPECT_TRUE(std::isinf(this->Read("3.40282357e38")));
}

TYPED_TEST(FloatTypeTest, TextIsTheSameInEveryLocaleOfTheHost) {
    const CommaHost host;
    EXPECT_EQ(this->TextOf(1234.5), "1234.5");
    EXPECT_EQ(this->TextOf(1e6), "1e+06");
    EXPECT_EQ(this->Read("0.5"), TypeParam(0.5));
    EXPECT_EQ(this->Read("1,5"), TypeParam(1));
    Block integer(TypeNamed("INT32"), nullptr, 1);
    integer.Read("1234567");
    EXPECT_EQ(integer.Text(), "1234567");
    EXPECT_EQ(DeclarationOf(OviTemplateManager_GetType("INT64")), "\n<type name='INT64'/>");
}

TYPED_TEST(FloatTypeTest, TheHostsLocaleStaysAsItIs) {
    const CommaHost host;
    const std::string before = std::setlocale(LC_ALL, nullptr);
    this->TextOf(0.1);
    this->Read("0.1");
    EXPECT_EQ(std::setlocale(LC_ALL, nullptr), before);
    EXPECT_EQ(std::use_facet<std::numpunct<char>>(std::locale()).decimal_point(), ',');
}

TYPED_TEST(FloatTypeTest, ComparisonIsNumericAndANaNEqualsEverything) {
    const auto compare = [this](TypeParam a, TypeParam b) {
        return OviType_CompareValues(this->type_, &a, &b, 1);
    };
    EXPECT_EQ(compare(1, 2), -1);
    EXPECT_EQ(compare(2, -1), 1);
    EXPECT_EQ(compare(TypeParam(0.0), TypeParam(-0.0)), 0);
    EXPECT_EQ(compare(this->kNan, 1), 0);
    EXPECT_EQ(compare(1, this->kNan), 0);
    const TypeParam a[] = {1, 2};
    const TypeParam b[] = {1, 3};
    EXPECT_EQ(OviType_CompareValues(this->type_, a, b, 2), -1);
    EXPECT_EQ(OviType_CompareValues(this->type_, a, b, 1), 0);
}

TYPED_TEST(FloatTypeTest, BoundsAreInclusiveAndZeroIsNone) {
    EXPECT_TRUE(this->IsValid(-5, 0, 10));
    EXPECT_FALSE(this->IsValid(TypeParam(10.5), 0, 10));
    EXPECT_TRUE(this->IsValid(10, 0, 10));
    EXPECT_TRUE(this->IsValid(TypeParam(0.5), TypeParam(0.5), 0));
    EXPECT_FALSE(this->IsValid(TypeParam(0.25), TypeParam(0.5), 0));
    EXPECT_TRUE(this->IsValid(this->kNan, 1, 2));
    EXPECT_TRUE(this->IsValid(5, this->kNan, this->kNan));
    EXPECT_FALSE(this->IsValid(this->kInfinity, 0, 10));
}

} // namespace
