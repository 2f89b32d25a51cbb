#include "EventRecorder.h"

using namespace Kor;
using namespace Kor::XMLTest;
using namespace std::string_literals;

namespace {

/// The events of a start tag with that text between "<e" and ">".
Events ReadTag(const std::string& text) {
    return ReadContent("<e" + text + ">");
}

} // namespace

TEST(XMLParserAttributes, AreHandedOverInByteOrderOfTheirNames) {
    EXPECT_EQ(ReadTag(" b='1' a='2' B='3' _='4' `='5' a1='6'"),
              (Events{"start e B=3 _=4 `=5 a=2 a1=6 b=1", "true"}));
}

TEST(XMLParserAttributes, MayHaveBlanksRoundTheEqualSign) {
    EXPECT_EQ(ReadTag(" a = 'x'"), (Events{"start e a=x", "true"}));
    EXPECT_EQ(ReadTag("\n\ta\r=\xA0\x01'x'  "), (Events{"start e a=x", "true"}));
}

TEST(XMLParserAttributes, MayBeQuotedByAnyByte) {
    EXPECT_EQ(ReadTag(" a=|x|"), (Events{"start e a=x", "true"}));
    EXPECT_EQ(ReadTag(" a=\"it's\" b='\"'"), (Events{"start e a=it's b=\"", "true"}));
    EXPECT_EQ(ReadTag(" a=xyx b==y="), (Events{"start e a=y b=y", "true"}));
}

TEST(XMLParserAttributes, QuotedBySlashesAlsoEndTheElement) {
    EXPECT_EQ(ReadTag(" a=/x/"), (Events{"start e a=x", "end e", "true"}));
}

TEST(XMLParserAttributes, NeedNoBlankBetweenThem) {
    EXPECT_EQ(ReadTag(" a='1'b='2'"), (Events{"start e a=1 b=2", "true"}));
    EXPECT_EQ(ReadTag("'a='1'"), (Events{"start e a=1", "true"}));
}

TEST(XMLParserAttributes, SkipBytesFrom128OnLikeBlanks) {
    EXPECT_EQ(ReadTag(" a='1'\xA0\x80\xFF"
                      "b='2'"),
              (Events{"start e a=1 b=2", "true"}));
}

TEST(XMLParserAttributes, KeepTheFirstOfTwoWithOneName) {
    EXPECT_EQ(ReadTag(" a='x' a='y' b='' a='z' b='1'"), (Events{"start e a=x b=", "true"}));
}

TEST(XMLParserAttributes, AreDecoded) {
    EXPECT_EQ(ReadTag(" a='1&amp;2&#65;' b='&apos;&quot;&lt;&gt;'/"),
              (Events{"start e a=1&2&#65; b='\"<>", "end e", "true"}));
}

TEST(XMLParserAttributes, KeepBlanksAndNewlinesInTheirValues) {
    EXPECT_EQ(ReadTag(" a=' \n\t '"), (Events{"start e a= \n\t ", "true"}));
}

TEST(XMLParserAttributes, WithoutEqualSignEndTheReadingOfTheTag) {
    const Events expected{"line 1: Missing equal operator", "start e a=1", "true"};
    EXPECT_EQ(ReadTag(" a='1' bc c='2'"), expected);
    EXPECT_EQ(ReadTag(" a='1' bc"), expected);
    EXPECT_EQ(ReadTag(" a='1' bc  "), expected);
    EXPECT_EQ(ReadTag(" a='1' b-c='2'"), expected);
    EXPECT_EQ(ReadTag(" a='1' b/"),
              (Events{"line 1: Missing equal operator", "start e a=1", "end e", "true"}));
}

TEST(XMLParserAttributes, OfOneByteAtTheVeryEndOfTheTagArePassedOver) {
    EXPECT_EQ(ReadTag(" b"), (Events{"start e", "true"}));
    EXPECT_EQ(ReadTag(" a='1'b"), (Events{"start e a=1", "true"}));
    EXPECT_EQ(ReadTag(" a='1' b"),
              (Events{"line 1: Missing equal operator", "start e a=1", "true"}));
}

TEST(XMLParserAttributes, WithoutClosingQuoteEndTheReadingOfTheTag) {
    const Events expected{"line 1: Missing closing quote", "start e a=1", "true"};
    EXPECT_EQ(ReadTag(" a='1' b='2"), expected);
    EXPECT_EQ(ReadTag(" a='1' b='"), expected);
    EXPECT_EQ(ReadTag(" a='1' b=\"2' c='3'"), expected);
    EXPECT_EQ(ReadTag(" a='1' b='2/"),
              (Events{"line 1: Missing closing quote", "start e a=1", "end e", "true"}));
}

TEST(XMLParserAttributes, WithNothingBehindTheEqualSignLackTheClosingQuote) {
    const Events expected{"line 1: Missing closing quote", "start e", "true"};
    EXPECT_EQ(ReadTag(" b="), expected);
    EXPECT_EQ(ReadTag(" b= \xA0 "), expected);
    EXPECT_EQ(ReadTag(" b= \0 "s), expected);
}

TEST(XMLParserAttributes, EndAtTheFirstByteThatBeginsNoName) {
    EXPECT_EQ(ReadTag(" a='1' ='2' b='3'"), (Events{"start e a=1", "true"}));
    EXPECT_EQ(ReadTag(" a='1' / b='3'"), (Events{"start e a=1", "true"}));
    EXPECT_EQ(ReadTag(" a='1'.b='3'"), (Events{"start e a=1", "true"}));
}

TEST(XMLParserAttributes, CannotHoldAClosingBracket) {
    EXPECT_EQ(ReadContent("<e a='1>2'/><f/>"), (Events{"line 1: Missing closing quote", "start e",
                                                       "text 2'/>", "start f", "end f", "true"}));
}

TEST(XMLParserAttributes, FaultsAreReportedInTheLineOfTheTagsEnd) {
    EXPECT_EQ(ReadTag("\na\n'x'\n\n"),
              (Events{"line 5: Missing equal operator", "start e", "true"}));
}

TEST(XMLParserAttributes, LoseTheByteBehindTheElementName) {
    EXPECT_EQ(ReadTag("=a='1'"), (Events{"start e a=1", "true"}));
    EXPECT_EQ(ReadTag("-"), (Events{"start e", "true"}));
    EXPECT_EQ(ReadTag("//"), (Events{"start e", "end e", "true"}));
}
