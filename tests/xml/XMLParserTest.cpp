#include "xml/XMLParser.h"

#include "EventRecorder.h"

using namespace Kor;
using namespace Kor::XMLTest;
using namespace std::string_literals;

// ------------------------------------------------------------------------------------------ header

TEST(XMLParser, RefusesAnEmptyStream) {
    EXPECT_EQ(Read(""), (Events{"line 1: Missing XML header element", "false"}));
}

TEST(XMLParser, CountsTheLinesOfATextWithoutAnyTag) {
    EXPECT_EQ(Read("a\nb\nc"), (Events{"line 3: Missing XML header element", "false"}));
}

TEST(XMLParser, IgnoresWhatStandsBeforeTheHeader) {
    EXPECT_EQ(Read("\xEF\xBB\xBF \n rubbish > <?xml?><a/>"), (Events{"start a", "end a", "true"}));
}

TEST(XMLParser, RefusesAHeaderWithoutEnd) {
    EXPECT_EQ(Read("<?xml\nversion"), (Events{"line 2: Invalid XML header element", "false"}));
}

TEST(XMLParser, AcceptsTheHeaderInAnyCase) {
    EXPECT_EQ(Read("<?XML?><a/>"), (Events{"start a", "end a", "true"}));
    EXPECT_EQ(Read("<?xMl version='9'?>"), (Events{"true"}));
}

TEST(XMLParser, AcceptsTheShortestHeader) {
    EXPECT_EQ(Read("<?xml?>"), (Events{"true"}));
}

TEST(XMLParser, DoesNotExamineTheRestOfTheHeader) {
    EXPECT_EQ(Read("<?xmlrubbish = ' ?>"), (Events{"true"}));
}

TEST(XMLParser, RefusesOtherHeaders) {
    const Events refused{"line 1: Invalid XML header element", "false"};
    for (const char* text : {"<>", "<?>", "<?xml>", "<xml?>", "<?xm?>", "<?xm ?>", "<?xmk?>",
                             "<?xml version='1.0'>", "<?xml? >", "<assets/>", "<!-- -->"})
        EXPECT_EQ(Read(text), refused) << text;
}

TEST(XMLParser, NamesTheLineOfTheHeadersEnd) {
    EXPECT_EQ(Read("\n<?xml\nversion='1.0'\n><a/>"),
              (Events{"line 4: Invalid XML header element", "false"}));
}

// ---------------------------------------------------------------------------------- elements, text

TEST(XMLParser, StartsAndEndsElements) {
    EXPECT_EQ(ReadContent("<a><b/><c></c></a>"),
              (Events{"start a", "start b", "end b", "start c", "end c", "end a", "true"}));
}

TEST(XMLParser, DeliversTextWithItsBlanksAndNewlines) {
    EXPECT_EQ(ReadContent(" \n<a> x\t<b/>\n\n</a>"),
              (Events{"text  \n", "start a", "text  x\t", "start b", "end b", "text \n\n", "end a",
                      "true"}));
}

TEST(XMLParser, DoesNotDeliverTextBehindTheLastTag) {
    EXPECT_EQ(ReadContent("<a/>rest\n"), (Events{"start a", "end a", "true"}));
}

TEST(XMLParser, TakesAClosingBracketInTextAsText) {
    EXPECT_EQ(ReadContent("<a>1 > 0</a>"), (Events{"start a", "text 1 > 0", "end a", "true"}));
}

TEST(XMLParser, DecodesTheFiveEntities) {
    EXPECT_EQ(ReadContent("<a>&lt;&gt;&amp;&quot;&apos;</a>"),
              (Events{"start a", "text <>&\"'", "end a", "true"}));
}

TEST(XMLParser, KeepsOtherAmpersands) {
    EXPECT_EQ(ReadContent("<a>& && &#65; &lt &LT; &nbsp; &</a>"),
              (Events{"start a", "text & && &#65; &lt &LT; &nbsp; &", "end a", "true"}));
}

TEST(XMLParser, DecodesEveryEntityOnce) {
    EXPECT_EQ(ReadContent("<a>&amp;lt;&&amp;amp;&am&amp;p;</a>"),
              (Events{"start a", "text &lt;&&amp;&am&p;", "end a", "true"}));
}

TEST(XMLParser, DoesNotDecodeAcrossTheEndOfAText) {
    EXPECT_EQ(ReadContent("<a>&l<b/>t;</a>"),
              (Events{"start a", "text &l", "start b", "end b", "text t;", "end a", "true"}));
}

TEST(XMLParser, PassesBytesAbove127Through) {
    EXPECT_EQ(ReadContent("<a>\xC3\xA4\xFF</a>"),
              (Events{"start a", "text \xC3\xA4\xFF", "end a", "true"}));
}

TEST(XMLParser, ReadsAnElementNameUpToTheFirstOtherByte) {
    EXPECT_EQ(ReadContent("<ab-cd='x'/>"), (Events{"start ab cd=x", "end ab", "true"}));
    EXPECT_EQ(ReadContent("<a.b/>"),
              (Events{"line 1: Missing equal operator", "start a", "end a", "true"}));
    EXPECT_EQ(ReadContent("<`_Zz09^/>"), (Events{"start `_Zz09", "end `_Zz09", "true"}));
    EXPECT_EQ(ReadContent("<a\xC3\xA4=/>"), (Events{"start a", "end a", "true"}));
}

TEST(XMLParser, StartsAnElementWithoutNameForOtherMarkup) {
    EXPECT_EQ(ReadContent("<!DOCTYPE a><a/>"),
              (Events{"line 1: Missing equal operator", "start ", "start a", "end a", "true"}));
    EXPECT_EQ(ReadContent("<?pi x='1'?></>"),
              (Events{"line 1: Missing equal operator", "start ", "end ", "true"}));
    EXPECT_EQ(ReadContent("<><x>"), (Events{"start ", "start x", "true"}));
}

TEST(XMLParser, ClosesATagThatEndsWithASlash) {
    EXPECT_EQ(ReadContent("<a/><b /><!/>"),
              (Events{"start a", "end a", "start b", "end b", "start ", "end ", "true"}));
}

TEST(XMLParser, DoesNotCloseATagWithABlankBehindItsSlash) {
    EXPECT_EQ(ReadContent("<a/ ></a>"), (Events{"start a", "end a", "true"}));
}

TEST(XMLParser, SaysNothingOfElementsLeftOpen) {
    EXPECT_EQ(ReadContent("<a><b>"), (Events{"start a", "start b", "true"}));
}

// --------------------------------------------------------------------------------------- end tags

TEST(XMLParser, ReportsAnEndTagWithNothingOpen) {
    EXPECT_EQ(ReadContent("\n</a>"),
              (Events{"text \n",
                      "line 2: Attempting to close element <a>, while no element is currently open",
                      "end a", "true"}));
}

TEST(XMLParser, ReportsAnEndTagThatDoesNotMatchAndKeepsTheOpenElement) {
    EXPECT_EQ(ReadContent("<e></f></e></e>"),
              (Events{"start e",
                      "line 1: Attempting to close element <f>, which does not match current "
                      "element <e>",
                      "end f", "end e",
                      "line 1: Attempting to close element <e>, while no element is currently open",
                      "end e", "true"}));
}

TEST(XMLParser, ComparesTheNamesOfEndTagsExactly) {
    for (const std::string name : {"A", "a ", "ab", "", " a", "a/"}) {
        EXPECT_EQ(ReadContent("<a></" + name + ">"),
                  (Events{"start a",
                          "line 1: Attempting to close element <" + name +
                              ">, which does not match current element <a>",
                          "end " + name, "true"}));
    }
}

TEST(XMLParser, DoesNotDecodeTheNameOfAnEndTag) {
    EXPECT_EQ(ReadContent("</&lt;>").back(), "true");
    EXPECT_EQ(ReadContent("</&lt;>")[1], "end &lt;");
}

// --------------------------------------------------------------------------------------- comments

TEST(XMLParser, DeliversCommentsDecoded) {
    EXPECT_EQ(ReadContent("<!-- a &lt; b\n--><!----><!----->"),
              (Events{"comment  a < b\n", "comment ", "comment -", "true"}));
}

TEST(XMLParser, EndsACommentAtTheFirstBracket) {
    EXPECT_EQ(ReadContent("<!-- a > b --><c/>"),
              (Events{"start ", "text  b -->", "start c", "end c", "true"}));
}

TEST(XMLParser, TakesAShorterCommentForAnElement) {
    EXPECT_EQ(ReadContent("<!---><!-->"), (Events{"start ", "start ", "true"}));
}

TEST(XMLParser, AllowsTagsToBeOpenedInsideAComment) {
    EXPECT_EQ(ReadContent("<!-- <a> --><b/>"),
              (Events{"start ", "text  -->", "start b", "end b", "true"}));
}

// ---------------------------------------------------------------------------- lines and refusals

TEST(XMLParser, ReportsATagWithoutEnd) {
    EXPECT_EQ(ReadContent("\n<a>\n\n<b\nx='1'\n"),
              (Events{"text \n", "start a", "text \n\n",
                      "line 6: Element opened on line 4 has no closing bracket", "false"}));
    EXPECT_EQ(ReadContent("<"),
              (Events{"line 1: Element opened on line 1 has no closing bracket", "false"}));
}

TEST(XMLParser, CountsLinesThatItsOwnWorkOverwrites) {
    // Newlines behind names, inside decoded texts and values, and in every other place of a tag.
    EXPECT_EQ(ReadContent("<a\nb\n=\n'&lt;\n&gt;'\n>&amp;\n&amp;&amp;\n<c\n/><d\n\n></x>"),
              (Events{"start a b=<\n>", "text &\n&&\n", "start c", "end c", "start d",
                      "line 11: Attempting to close element <x>, which does not match current "
                      "element <d>",
                      "end x", "true"}));
}

TEST(XMLParser, StopsAtOnceWhenTheListenerRefuses) {
    const std::string text = WithHeader("t<a b='1'>t<!--c--></a><d/><e>");
    const Events all = Read(text);
    ASSERT_EQ(all.size(), 9u);
    for (size_t count = 1; count + 1 < all.size(); ++count) {
        Events expected(all.begin(), all.begin() + static_cast<std::ptrdiff_t>(count));
        expected.push_back("false");
        EXPECT_EQ(Read(text, count), expected);
    }
}

TEST(XMLParser, RefusedStartOfAnEmptyElementIsNotFollowedByItsEnd) {
    EXPECT_EQ(Read(WithHeader("<a/>"), 1), (Events{"start a", "false"}));
}

TEST(XMLParser, ReadsWithoutListeners) {
    XMLParser parser;
    MemorySource good("<?xml?><a>&lt;</b></a>");
    EXPECT_TRUE(parser.Parse("x", good));
    MemorySource bad("");
    EXPECT_FALSE(parser.Parse(nullptr, bad));
    EXPECT_STREQ(parser.GetSourceName(), "");
}

TEST(XMLParser, ForgetsTheLastDocumentWhenItReadsAnother) {
    EventRecorder recorder;
    XMLParser parser(3);
    parser.SetXMLListener(&recorder);
    parser.SetErrorListener(&recorder);
    const std::string firstText = "\n\n<?xml?>\0\n<a>"s;
    MemorySource first(firstText);
    EXPECT_TRUE(parser.Parse("test.xml", first));
    MemorySource second("<?xml?></a>x<");
    EXPECT_FALSE(parser.Parse("test.xml", second));
    EXPECT_EQ(
        recorder.GetEvents(),
        (Events{"text ", "start a",
                "line 1: Attempting to close element <a>, while no element is currently open",
                "end a", "text x", "line 1: Element opened on line 1 has no closing bracket"}));
}

namespace {

/// Notes the line in which the reader is at every event.
class LineRecorder : public EventRecorder {
public:
    explicit LineRecorder(const Parser& parser) : parser_(parser) {}
    bool StartElement(std::string_view, const XMLAttributes&) override { return Note(); }
    bool EndElement(std::string_view) override { return Note(); }
    bool Comment(std::string_view) override { return Note(); }
    bool Characters(std::string_view) override { return Note(); }

    std::vector<int> lines;

private:
    bool Note() {
        lines.push_back(parser_.GetLineNumber());
        lines.push_back(parser_.GetLineNumber());
        return true;
    }

    const Parser& parser_;
};

} // namespace

TEST(XMLParser, KnowsTheCurrentLineAtEveryEvent) {
    for (const size_t blockSize : kBlockSizes) {
        XMLParser parser(blockSize);
        LineRecorder recorder(parser);
        parser.SetXMLListener(&recorder);
        MemorySource source("<?xml\n?>\n&lt;\n<a\nb='\n&lt;&lt;&lt;'\n/>\n<!--\n--></c\n>");
        EXPECT_EQ(parser.GetLineNumber(), 1);
        EXPECT_TRUE(parser.Parse("test.xml", source));
        EXPECT_EQ(recorder.lines, (std::vector<int>{4, 4, 7, 7, 7, 7, 8, 8, 9, 9, 10, 10}));
        EXPECT_EQ(parser.GetLineNumber(), 10);
    }
}

TEST(XMLParser, ReportsForItsListenersWithSourceAndLine) {
    EventRecorder recorder;
    XMLParser parser;
    EXPECT_EQ(parser.GetErrorListener(), nullptr);
    parser.SetErrorListener(&recorder);
    EXPECT_EQ(parser.GetErrorListener(), &recorder);
    MemorySource source("<?xml?>\n\n<a/>");
    EXPECT_TRUE(parser.Parse("test.xml", source));
    parser.Report(kError, "Something else");
    EXPECT_EQ(recorder.GetEvents(), (Events{"line 3: Something else"}));
}

// -------------------------------------------------------------------------------------- NUL bytes

TEST(XMLParser, EndsTextsCommentsAndNamesAtANulByte) {
    EXPECT_EQ(ReadContent("a\0b<!--c\0d--><e></e\0f>"s),
              (Events{"text a", "comment c", "start e", "end e", "true"}));
    EXPECT_EQ(ReadContent("\0<e\0f='1'/>"s), (Events{"text ", "start e f=1", "end e", "true"}));
}

TEST(XMLParser, EndsAValueAtANulByteButReadsOnBehindItsQuote) {
    EXPECT_EQ(ReadContent("<e a='&lt;x\0y&lt;' b='2'\0/>"s),
              (Events{"start e a=<x b=2", "end e", "true"}));
}

TEST(XMLParser, DoesNotCompleteAnEntityBehindANulByte) {
    EXPECT_EQ(ReadContent("&lt\0;&g\0t;<a/>"s), (Events{"text &lt", "start a", "end a", "true"}));
}

TEST(XMLParser, CountsTheLinesBehindANulByte) {
    EXPECT_EQ(ReadContent("a&lt;\0\n\n<b c='&amp;\0\n'/></d>"s),
              (Events{"text a<", "start b c=&", "end b",
                      "line 4: Attempting to close element <d>, while no element is currently open",
                      "end d", "true"}));
}
