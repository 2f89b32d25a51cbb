#include "xml/XMLWriter.h"

#include "core/ByteStreams.h"
#include "EventRecorder.h"

#include <cmath>
#include <functional>
#include <limits>

using namespace Kor;
using namespace std::string_literals;

namespace {

/// What is written without a header, everything closed.
std::string Write(const std::function<void(XMLWriter&)>& write) {
    StringSink sink;
    XMLWriter writer;
    writer.Open(sink, false);
    write(writer);
    EXPECT_TRUE(writer.Close());
    return sink.GetText();
}

std::string WriteAttributeText(std::string_view value) {
    return Write([&](XMLWriter& writer) {
        writer.StartElement("e");
        writer.WriteAttribute("a", value);
    });
}

template <class Number> std::string WriteNumber(Number value) {
    return Write([&](XMLWriter& writer) {
        writer.StartElement("e");
        writer.WriteAttribute("a", value);
    });
}

} // namespace

TEST(XMLWriter, LaysElementsOutOnePerLine) {
    StringSink sink;
    XMLWriter writer;
    writer.Open(sink, true);
    writer.StartElement("a");
    writer.StartElement("b");
    writer.WriteAttribute("x", 1);
    writer.EndElement();
    writer.StartElement("c");
    writer.EndElement();
    writer.EndElement();
    EXPECT_TRUE(writer.Close());
    EXPECT_EQ(sink.GetText(), "<?xml version='1.0' encoding='UTF-8'?>\n"
                              "<a>\n"
                              "\t<b x='1'/>\n"
                              "\t<c/>\n"
                              "</a>");
}

TEST(XMLWriter, BeginsWithALineBreakWithoutAHeader) {
    EXPECT_EQ(Write([](XMLWriter& writer) { writer.StartElement("a"); }), "\n<a/>");
    EXPECT_EQ(Write([](XMLWriter&) {}), "");
}

TEST(XMLWriter, KeepsAnElementWithTextOnOneLine) {
    EXPECT_EQ(Write([](XMLWriter& writer) {
                  writer.StartElement("a");
                  writer.WriteText("x");
                  writer.WriteText(" y");
                  writer.EndElement();
              }),
              "\n<a>x y</a>");
}

TEST(XMLWriter, ClosesTheStartTagForAnEmptyText) {
    EXPECT_EQ(Write([](XMLWriter& writer) {
                  writer.StartElement("a");
                  writer.WriteText("");
              }),
              "\n<a></a>");
}

TEST(XMLWriter, PutsTheEndTagBehindTextOnALineOfItsOwnWhenThereWasAChild) {
    EXPECT_EQ(Write([](XMLWriter& writer) {
                  writer.StartElement("a");
                  writer.StartElement("b");
                  writer.EndElement();
                  writer.WriteText("x");
                  writer.EndElement();
              }),
              "\n<a>\n\t<b/>x\n</a>");
}

TEST(XMLWriter, ForgetsAnEarlierSiblingsChildrenAtEveryStart) {
    EXPECT_EQ(Write([](XMLWriter& writer) {
                  writer.StartElement("a");
                  writer.StartElement("b");
                  writer.EndElement();
                  writer.StartElement("c");
                  writer.WriteText("x");
                  writer.EndElement();
              }),
              "\n<a>\n\t<b/>\n\t<c>x</c>\n</a>");
}

TEST(XMLWriter, EscapesValuesTextsAndComments) {
    const std::string_view plain = "a'b\"c&d<e>f";
    const std::string escaped = "a&apos;b&quot;c&amp;d&lt;e&gt;f";
    EXPECT_EQ(WriteAttributeText(plain), "\n<e a='" + escaped + "'/>");
    EXPECT_EQ(Write([&](XMLWriter& writer) {
                  writer.StartElement("e");
                  writer.WriteText(plain);
                  writer.WriteComment(plain);
              }),
              "\n<e>" + escaped + "\n\t<!--" + escaped + "--></e>");
}

TEST(XMLWriter, PassesAllOtherBytesThrough) {
    std::string text;
    for (int c = 1; c < 256; ++c) {
        if (std::string_view("\"&'<>").find(static_cast<char>(c)) == std::string_view::npos)
            text += static_cast<char>(c);
    }
    EXPECT_EQ(WriteAttributeText(text), "\n<e a='" + text + "'/>");
}

TEST(XMLWriter, EscapesSpecialBytesAtTheEndsOfATextAndInARow) {
    EXPECT_EQ(WriteAttributeText("<&>"), "\n<e a='&lt;&amp;&gt;'/>");
    EXPECT_EQ(WriteAttributeText("&amp;"), "\n<e a='&amp;amp;'/>");
    EXPECT_EQ(WriteAttributeText(""), "\n<e a=''/>");
}

TEST(XMLWriter, EndsTextsAtANulByte) {
    EXPECT_EQ(WriteAttributeText("a<\0b>"s), "\n<e a='a&lt;'/>");
    EXPECT_EQ(WriteAttributeText("\0b"s), "\n<e a=''/>");
    EXPECT_EQ(Write([](XMLWriter& writer) {
                  writer.WriteComment("a\0b"s);
                  writer.WriteText("c\0d"s);
              }),
              "\n<!--a-->c");
}

TEST(XMLWriter, WritesTextsOfEveryKindAsText) {
    const std::string text = "t";
    const char* pointer = "p";
    EXPECT_EQ(Write([&](XMLWriter& writer) {
                  writer.StartElement("e");
                  writer.WriteAttribute("a", text);
                  writer.WriteAttribute("b", pointer);
                  writer.WriteAttribute("c", "l");
              }),
              "\n<e a='t' b='p' c='l'/>");
}

TEST(XMLWriter, WritesIntegersInDecimal) {
    EXPECT_EQ(WriteNumber(0), "\n<e a='0'/>");
    EXPECT_EQ(WriteNumber(-12), "\n<e a='-12'/>");
    EXPECT_EQ(WriteNumber(std::numeric_limits<int>::min()), "\n<e a='-2147483648'/>");
}

TEST(XMLWriter, WritesDoublesWithSixDigits) {
    EXPECT_EQ(WriteNumber(0.1), "\n<e a='0.1'/>");
    EXPECT_EQ(WriteNumber(1234567.0), "\n<e a='1.23457e+06'/>");
    EXPECT_EQ(WriteNumber(-HUGE_VAL), "\n<e a='-inf'/>");
    EXPECT_EQ(WriteNumber(0.1f), "\n<e a='0.1'/>");
}

TEST(XMLWriter, WritesNoAttributeOutsideAStartTag) {
    EXPECT_EQ(Write([](XMLWriter& writer) {
                  writer.WriteAttribute("a", "1");
                  writer.StartElement("e");
                  writer.WriteText("x");
                  writer.WriteAttribute("b", "1");
                  writer.EndElement();
                  writer.WriteAttribute("c", 1.0);
              }),
              "\n<e>x</e>");
}

TEST(XMLWriter, IndentsCommentsLikeElements) {
    EXPECT_EQ(Write([](XMLWriter& writer) {
                  writer.StartElement("a");
                  writer.WriteComment(" c ");
                  writer.StartElement("b");
                  writer.EndElement();
                  writer.EndElement();
              }),
              "\n<a>\n\t<!-- c -->\n\t<b/>\n</a>");
}

TEST(XMLWriter, EndsAnElementThatHoldsOnlyACommentRightBehindIt) {
    EXPECT_EQ(Write([](XMLWriter& writer) {
                  writer.StartElement("a");
                  writer.WriteComment("c");
                  writer.EndElement();
              }),
              "\n<a>\n\t<!--c--></a>");
}

TEST(XMLWriter, IndentsByUnnamedLevels) {
    EXPECT_EQ(Write([](XMLWriter& writer) {
                  writer.AddIndent(2);
                  writer.WriteComment("c");
                  writer.StartElement("a");
                  writer.EndElement();
                  writer.AddIndent(0);
                  writer.AddIndent(-3);
              }),
              "\n\t\t<!--c-->\n\t\t<a/>\n\t</>\n</>");
}

TEST(XMLWriter, ClosesUnnamedLevelsByTheSameRules) {
    EXPECT_EQ(Write([](XMLWriter& writer) {
                  writer.StartElement("a");
                  writer.AddIndent(1);
              }),
              "\n<a/>\n</a>");
    EXPECT_EQ(Write([](XMLWriter& writer) { writer.AddIndent(2); }), "</>\n</>");
}

TEST(XMLWriter, EndsUnnamedLevelsInsideAndAroundNamedElements) {
    EXPECT_EQ(Write([](XMLWriter& writer) {
                  writer.AddIndent(1);
                  writer.StartElement("a");
                  writer.AddIndent(2);
                  writer.StartElement("b");
                  writer.EndElement();
                  writer.EndElement(); // an unnamed level inside of "a"
                  writer.EndElement(); // the other one
                  writer.EndElement();
                  writer.AddIndent(1);
                  writer.StartElement("c");
              }),
              "\n\t<a>\n\t\t\t\t<b/>\n\t\t\t</>\n\t\t</>\n\t</a>\n\t\t<c/>\n\t</>\n</>");
}

TEST(XMLWriter, CountsUnnamedLevelsInsteadOfKeepingThem) {
    StringSink sink(0);
    XMLWriter writer;
    writer.Open(sink, false);
    for (int i = 0; i < 1000; ++i)
        writer.AddIndent(std::numeric_limits<int>::max());
    writer.Abandon();
    EXPECT_EQ(sink.GetSize(), 0u);
}

TEST(XMLWriter, DropsLevelsFromBeforeOpen) {
    StringSink sink;
    XMLWriter writer;
    writer.AddIndent(3);
    writer.Open(sink, false);
    writer.StartElement("a");
    EXPECT_TRUE(writer.Close());
    EXPECT_EQ(sink.GetText(), "\n<a/>");
}

TEST(XMLWriter, IgnoresAnEndWithNothingOpen) {
    EXPECT_EQ(Write([](XMLWriter& writer) {
                  writer.EndElement();
                  writer.StartElement("a");
                  writer.EndElement();
                  writer.EndElement();
              }),
              "\n<a/>");
}

TEST(XMLWriter, WritesWhatTheReaderReadsBack) {
    std::string value;
    for (int c = 1; c < 256; ++c)
        value += static_cast<char>(c);
    StringSink sink;
    XMLWriter writer;
    writer.Open(sink, true);
    writer.StartElement("a");
    writer.WriteAttribute("v", value);
    writer.WriteText(value);
    writer.WriteComment(value);
    EXPECT_TRUE(writer.Close());
    EXPECT_EQ(XMLTest::Read(sink.GetText()),
              (XMLTest::Events{"text \n", "start a v=" + value, "text " + value + "\n\t",
                               "comment " + value, "end a", "true"}));
}
