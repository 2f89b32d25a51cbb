#include "core/NumberText.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <random>
#include <string>
#include <vector>

using namespace Kor;

namespace {

std::string Format(double value) {
    char buffer[kNumberTextCapacity];
    const size_t length = FormatDouble(value, buffer, sizeof buffer);
    EXPECT_EQ(std::strlen(buffer), length);
    return buffer;
}

template <class Integer> std::string FormatWhole(Integer value) {
    char buffer[kNumberTextCapacity];
    const size_t length = FormatInteger(value, buffer, sizeof buffer);
    EXPECT_EQ(std::strlen(buffer), length);
    return buffer;
}

std::string FormatByPrintf(double value) {
    char buffer[64];
    std::snprintf(buffer, sizeof buffer, "%g", value);
    return buffer;
}

uint64_t BitsOf(double value) {
    uint64_t bits = 0;
    std::memcpy(&bits, &value, sizeof bits);
    return bits;
}

double FromBits(uint64_t bits) {
    double value = 0;
    std::memcpy(&value, &bits, sizeof value);
    return value;
}

/// Holds a text against the C library's own reading, down to the sign of 0.
void ExpectReadAsByStrtod(const std::string& text) {
    char* end = nullptr;
    const double number = std::strtod(text.c_str(), &end);
    const double expected = end == text.c_str() ? 0 : number; // Windows gives -0 for a lone "-"
    const double read = ParseDouble(text.c_str());
    if (std::isnan(expected)) {
        EXPECT_TRUE(std::isnan(read)) << text;
    } else {
        EXPECT_EQ(BitsOf(read), BitsOf(expected)) << text << " reads as " << read;
    }
    EXPECT_EQ(std::isnan(ParseDouble(std::string_view(text))), std::isnan(read)) << text;
}

/// Installs a locale with a decimal comma while it lives; says whether there is one.
class CommaLocale {
public:
    CommaLocale() : previous_(std::setlocale(LC_ALL, nullptr)) {
        for (const char* name : {"de_DE.UTF-8", "de_DE.utf8", "fr_FR.UTF-8", "de_DE", "German"}) {
            if (std::setlocale(LC_ALL, name) && *std::localeconv()->decimal_point == ',') {
                isInstalled_ = true;
                break;
            }
        }
    }
    ~CommaLocale() { std::setlocale(LC_ALL, previous_.c_str()); }

    bool IsInstalled() const { return isInstalled_; }

private:
    std::string previous_;
    bool isInstalled_ = false;
};

} // namespace

TEST(NumberText, WritesSixSignificantDigits) {
    EXPECT_EQ(Format(0), "0");
    EXPECT_EQ(Format(-0.0), "-0");
    EXPECT_EQ(Format(0.1), "0.1");
    EXPECT_EQ(Format(static_cast<double>(0.1f)), "0.1");
    EXPECT_EQ(Format(-2.5), "-2.5");
    EXPECT_EQ(Format(123456), "123456");
    EXPECT_EQ(Format(123456.7), "123457");
    EXPECT_EQ(Format(1.0 / 3), "0.333333");
}

TEST(NumberText, WritesExponentsWithTwoDigitsAtLeast) {
    EXPECT_EQ(Format(1e6), "1e+06");
    EXPECT_EQ(Format(1234567), "1.23457e+06");
    EXPECT_EQ(Format(0.00001), "1e-05");
    EXPECT_EQ(Format(0.0001), "0.0001");
    EXPECT_EQ(Format(-1.5e-300), "-1.5e-300");
    EXPECT_EQ(Format(999999.5), "1e+06");
}

TEST(NumberText, WritesWhatIsNoNumberByName) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    EXPECT_EQ(Format(HUGE_VAL), "inf");
    EXPECT_EQ(Format(-HUGE_VAL), "-inf");
    EXPECT_EQ(Format(nan), "nan");
    EXPECT_EQ(Format(std::copysign(nan, -1.0)), "nan");
}

TEST(NumberText, WritesDoublesAsPrintfDoes) {
    std::mt19937_64 random(1);
    for (int i = 0; i < 100'000; ++i) {
        const double any = FromBits(random());
        if (!std::isnan(any)) {
            ASSERT_EQ(Format(any), FormatByPrintf(any));
        }
        const double half = static_cast<double>(random() % 4'000'000) / 2; // ties among them
        ASSERT_EQ(Format(half), FormatByPrintf(half));
        const double tiny = FromBits(random() >> (12 + random() % 50));
        ASSERT_EQ(Format(tiny), FormatByPrintf(tiny));
    }
}

TEST(NumberText, WritesIntegersByTheirSignedness) {
    EXPECT_EQ(FormatWhole(0), "0");
    EXPECT_EQ(FormatWhole(static_cast<short>(-7)), "-7");
    EXPECT_EQ(FormatWhole(std::numeric_limits<int64_t>::min()), "-9223372036854775808");
    EXPECT_EQ(FormatWhole(std::numeric_limits<uint64_t>::max()), "18446744073709551615");
    EXPECT_EQ(FormatWhole(std::numeric_limits<uint32_t>::max()), "4294967295");
}

TEST(NumberText, WritesNothingThatDoesNotFitWithItsNulByte) {
    char buffer[4] = {'x', 'x', 'x', 'x'};
    EXPECT_EQ(FormatInteger(123, buffer, 4), 3u);
    EXPECT_STREQ(buffer, "123");
    EXPECT_EQ(FormatInteger(1234, buffer, 4), 0u);
    EXPECT_EQ(FormatInteger(123u, buffer, 3), 0u);
    EXPECT_EQ(FormatDouble(0.25, buffer, 4), 0u);
    EXPECT_EQ(FormatDouble(0.5, buffer, 4), 3u);
    EXPECT_EQ(FormatDouble(0.5, nullptr, 0), 0u);
    EXPECT_EQ(FormatInteger(1, nullptr, 0), 0u);
    EXPECT_EQ(FormatInteger(1u, nullptr, 0), 0u);
}

TEST(NumberText, ReadsDoublesOfEveryForm) {
    EXPECT_EQ(ParseDouble("1.5"), 1.5);
    EXPECT_EQ(ParseDouble(" \t\n\v\f\r+.5e1x"), 5);
    EXPECT_EQ(ParseDouble("-1.e-1"), -0.1);
    EXPECT_EQ(ParseDouble("1,5"), 1);
    EXPECT_EQ(ParseDouble("0x1.8p1"), 3);
    EXPECT_EQ(ParseDouble("-0XFF"), -255);
    EXPECT_EQ(ParseDouble("-INFinity"), -HUGE_VAL);
    EXPECT_TRUE(std::isnan(ParseDouble("nan")));
    EXPECT_TRUE(std::isnan(ParseDouble("-NaN(1)")));
}

TEST(NumberText, ReadsWhatIsNoNumberAsZero) {
    for (const char* text :
         {"", " ", "abc", "-", "+", ".", "-.", "e5", "+-5", "-+5", "--5", "x1"}) {
        EXPECT_EQ(BitsOf(ParseDouble(text)), BitsOf(0.0)) << text;
        EXPECT_EQ(ParseInt(text), 0) << text;
    }
    EXPECT_EQ(ParseDouble(nullptr), 0);
    EXPECT_EQ(ParseInt(nullptr), 0);
}

TEST(NumberText, ReadsDoublesOutOfRangeAsTheNearest) {
    EXPECT_EQ(ParseDouble("1e400"), HUGE_VAL);
    EXPECT_EQ(ParseDouble("-1e99999999999999999999999"), -HUGE_VAL);
    EXPECT_EQ(ParseDouble("1000e9223372036854775807"),
              HUGE_VAL); // the steps and the digits overflow
    EXPECT_EQ(ParseDouble(".0001e-9223372036854775807"), 0);
    EXPECT_EQ(ParseDouble("1e-400"), 0);
    EXPECT_TRUE(std::signbit(ParseDouble("-1e-400")));
    EXPECT_EQ(ParseDouble("4.9e-324"), std::numeric_limits<double>::denorm_min());
    EXPECT_EQ(ParseDouble("0x1p5000"), HUGE_VAL);
    EXPECT_EQ(ParseDouble("0x1p-5000"), 0);
}

const std::string kZeros(400, '0');
const std::string kNines(400, '9');

/// Forms at the edges of what is a number, and of what a double holds.
const std::string kEdgeForms[] = {
    "0x",
    "0x.",
    "0xg",
    "0x.8",
    "0x1.8p",
    "0x1.8p+",
    "0x3p+-1",
    "0x-5",
    "0x1p1024",
    "0x1p-1074",
    "0x1p-1075",
    "0x1.0000000000001p-1075",
    "0x1.fffffffffffff7ffp1023",
    "0x1.fffffffffffff8p1023",
    "0x0p99999999999999999999",
    "0x1p99999999999999999999",
    "0x1p-99999999999999999999",
    "0x" + kNines,
    "0x" + kNines + "p-1600",
    "0x" + kNines + "p-500",
    "0x0." + kZeros + "1p500",
    "0x0." + kZeros + "1",
    "0x0." + kZeros + "1p1610",
    "1e",
    "1e+",
    "1e5x",
    "1e5e5",
    "1.5.5",
    "00012",
    "1_000",
    "0b1",
    "0e999999999999999999999",
    "1e-99999999999999999999",
    kNines,
    kNines + "e-400",
    "0." + kZeros + "1",
    "0." + kZeros + "1e401",
    "0." + kZeros + "1e+350",
    kZeros + "1e5",
    "2.4703282292062327e-324",
    "2.4703282292062328e-324",
    "2.2250738585072011e-308",
    "1.7976931348623157e308",
    "1.7976931348623158e308",
    "1.7976931348623159e308",
    "-0",
    "-0x0",
    "-0.0e5",
    "infinit",
    "INFINITYx",
    "nan(",
    "nan(a-b)",
    "nan()",
    "nanx",
    "in",
    "na",
    "\xA0"
    "12",
};

TEST(NumberText, ReadsFormsAtTheEdgesAsStrtodDoes) {
    for (const std::string& text : kEdgeForms) {
        ExpectReadAsByStrtod(text);
        ExpectReadAsByStrtod("-" + text);
    }
}

TEST(NumberText, ReadsRandomTextsAsStrtodDoes) {
    std::mt19937_64 random(2);
    const std::string alphabet = "0123456789..eE+-xXpPaAfFinINtyn() ";
    for (int i = 0; i < 100'000; ++i) {
        std::string text;
        for (size_t size = random() % 12; size > 0; --size)
            text += alphabet[random() % alphabet.size()];
        ExpectReadAsByStrtod(text);
        ExpectReadAsByStrtod("0x" + text);
    }
}

TEST(NumberText, ReadsRandomNumbersAsStrtodDoes) {
    std::mt19937_64 random(3);
    char text[64];
    for (int i = 0; i < 50'000; ++i) {
        const double any = FromBits(random());
        const double tiny = FromBits(random() >> (12 + random() % 50));
        const int digits = static_cast<int>(random() % 25);
        std::snprintf(text, sizeof text, "%.17g", any);
        ExpectReadAsByStrtod(text);
        std::snprintf(text, sizeof text, "%a", any);
        ExpectReadAsByStrtod(text);
        std::snprintf(text, sizeof text, "%.*e", digits, tiny);
        ExpectReadAsByStrtod(text);
    }
}

TEST(NumberText, ReadsIntegersWithBlanksAndSign) {
    EXPECT_EQ(ParseInt("12"), 12);
    EXPECT_EQ(ParseInt(" \t\n\v\f\r-12abc"), -12);
    EXPECT_EQ(ParseInt("+7.9"), 7);
    EXPECT_EQ(ParseInt("0x10"), 0);
    EXPECT_EQ(ParseInt("- 5"), 0);
    EXPECT_EQ(ParseInt("007"), 7);
    EXPECT_EQ(ParseInt(std::string_view("123", 2)), 12);
}

TEST(NumberText, ReadsIntegersOutOfRangeAsTheNearestLimit) {
    const int max = std::numeric_limits<int>::max();
    const int min = std::numeric_limits<int>::min();
    EXPECT_EQ(ParseInt("2147483647"), max);
    EXPECT_EQ(ParseInt("2147483648"), max);
    EXPECT_EQ(ParseInt("3000000000"), max);
    EXPECT_EQ(ParseInt("99999999999999999999999999"), max);
    EXPECT_EQ(ParseInt("-2147483647"), -max);
    EXPECT_EQ(ParseInt("-2147483648"), min);
    EXPECT_EQ(ParseInt("-2147483649"), min);
    EXPECT_EQ(ParseInt("-99999999999999999999999999"), min);
    EXPECT_EQ(ParseInt(std::string(100, '0') + "5"), 5);
}

TEST(NumberText, IsTheSameInALocaleWithADecimalComma) {
    const CommaLocale locale;
    if (!locale.IsInstalled())
        GTEST_SKIP() << "this system has no such locale";
    ASSERT_EQ(FormatByPrintf(0.5), "0,5");
    EXPECT_EQ(Format(0.5), "0.5");
    EXPECT_EQ(Format(1234567), "1.23457e+06");
    EXPECT_EQ(ParseDouble("0.5"), 0.5);
    EXPECT_EQ(ParseDouble("0,5"), 0);
}
