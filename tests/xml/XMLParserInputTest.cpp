// Large, broken and arbitrary input.

#include "EventRecorder.h"
#include "PlainReader.h"

#include <algorithm>
#include <random>

using namespace Kor;
using namespace Kor::XMLTest;
using namespace std::string_literals;

namespace {

const std::string kSample = "\xEF\xBB\xBF<?xml version='1.0'\n encoding='UTF-8'?>\n"
                            "<!-- a scene &amp; more -->\n"
                            "<assets>\n\t<asset name='A' reference=\"C:\\a&lt;b\"\n>\n"
                            "\t\t<implements template = 'a.b.C' version='2'/>\n"
                            "\t\tR&amp;D &#65; & text</asset >\n</asset><x =''/><!DOCTYPE y>\n"
                            "\t<e f g='1'/><e g=1/></assets>\n";

/// Random bytes of the given alphabet.
std::string MakeText(std::mt19937& random, std::string_view alphabet, size_t size) {
    std::uniform_int_distribution<size_t> pick(0, alphabet.size() - 1);
    std::string text;
    for (size_t i = 0; i < size; ++i)
        text += alphabet[pick(random)];
    return text;
}

/// Counts events, and keeps nothing else of them.
class CountingListener : public IXMLListener {
public:
    bool StartElement(std::string_view, const XMLAttributes& attributes) override {
        ++starts;
        attributeCount = attributes.GetCount();
        return true;
    }
    bool EndElement(std::string_view) override {
        ++ends;
        return true;
    }
    bool Comment(std::string_view) override { return true; }
    bool Characters(std::string_view text) override {
        textSize += text.size();
        return true;
    }

    size_t starts = 0;
    size_t ends = 0;
    size_t textSize = 0;
    int attributeCount = 0;
};

bool Count(const std::string& text, CountingListener& listener) {
    XMLParser parser;
    EventRecorder faults;
    parser.SetXMLListener(&listener);
    parser.SetErrorListener(&faults);
    MemorySource source(text);
    const bool result = parser.Parse("test.xml", source);
    EXPECT_EQ(faults.GetEvents(), Events());
    return result;
}

} // namespace

TEST(XMLParserInput, IsReadByTheRulesWhereverItIsCutShort) {
    for (size_t size = 0; size <= kSample.size(); ++size) {
        const std::string text = kSample.substr(0, size);
        EXPECT_EQ(Read(text), PlainReader(text).Run()) << "cut behind byte " << size;
    }
}

/// A file on a disk or in a network that gives some bytes, and fails then.
class BrokenSource : public ByteSource {
public:
    explicit BrokenSource(std::string_view text) : text_(text) {}

    size_t Read(char* buffer, size_t capacity) override {
        const size_t taken = text_.Read(buffer, capacity);
        failed_ = taken == 0;
        return taken;
    }
    bool HasFailed() const override { return failed_; }

private:
    MemorySource text_;
    bool failed_ = false;
};

TEST(XMLParserInput, IsRefusedWhereItsSourceFails) {
    for (size_t size = 0; size <= kSample.size(); ++size) {
        XMLParser parser;
        EventRecorder recorder;
        parser.SetXMLListener(&recorder);
        parser.SetErrorListener(&recorder);
        BrokenSource source(std::string_view(kSample).substr(0, size));
        EXPECT_FALSE(parser.Parse("test.xml", source)) << "behind byte " << size;
        EXPECT_FALSE(recorder.GetEvents().empty());
    }
}

TEST(XMLParserInput, IsReportedWhereItsSourceFailsBetweenElements) {
    XMLParser parser;
    EventRecorder faults;
    parser.SetErrorListener(&faults);
    BrokenSource source("<?xml version='1.0'?>\n<assets>\n<asset/>\n");
    EXPECT_FALSE(parser.Parse("test.xml", source));
    EXPECT_EQ(faults.GetEvents(), Events{"line 4: Unable to read the file to its end"});
}

TEST(XMLParserInput, IsReadByTheRulesWhicheverByteIsLost) {
    for (size_t at = 0; at < kSample.size(); ++at) {
        std::string text = kSample;
        text.erase(at, 1);
        EXPECT_EQ(Read(text), PlainReader(text).Run()) << "without byte " << at;
    }
}

TEST(XMLParserInput, IsReadByTheRulesWhicheverByteIsReplaced) {
    for (size_t at = 0; at < kSample.size(); ++at) {
        for (const char c : "\0\n<>/='&;a\xA0"s) {
            std::string text = kSample;
            text[at] = c;
            EXPECT_EQ(ReadInBlocks(text, 5), PlainReader(text).Run()) << "with byte " << at;
        }
    }
}

TEST(XMLParserInput, OfRandomTagsIsReadByTheRules) {
    std::mt19937 random(1);
    const std::string alphabet = "<<<>>>///==''\"ab !-\n&lt;\0\xA0|"s;
    for (int i = 0; i < 4000; ++i) {
        const std::string text = WithHeader(MakeText(random, alphabet, 60));
        EXPECT_EQ(ReadInBlocks(text, 1 + random() % 9), PlainReader(text).Run()) << text;
    }
}

TEST(XMLParserInput, OfRandomAttributesIsReadByTheRules) {
    std::mt19937 random(2);
    const std::string alphabet = "aabb  ==''''&&ltamp;;x\n/-\0"s;
    for (int i = 0; i < 4000; ++i) {
        const std::string text = WithHeader("<e " + MakeText(random, alphabet, 30) + "></e>");
        EXPECT_EQ(ReadInBlocks(text, 1 + random() % 9), PlainReader(text).Run()) << text;
    }
}

TEST(XMLParserInput, OfRandomBytesIsReadByTheRules) {
    std::mt19937 random(3);
    std::string alphabet;
    for (int c = 0; c < 256; ++c)
        alphabet += static_cast<char>(c);
    for (int i = 0; i < 50; ++i) {
        const std::string bytes = MakeText(random, alphabet, 5000);
        EXPECT_EQ(ReadInBlocks(bytes, 100), PlainReader(bytes).Run());
        EXPECT_EQ(ReadInBlocks(WithHeader(bytes), 100), PlainReader(WithHeader(bytes)).Run());
    }
}

TEST(XMLParserInput, MayBeOneVeryLongLine) {
    const size_t size = 10'000'000;
    CountingListener text;
    EXPECT_TRUE(Count(WithHeader("<a>" + std::string(size, 'x') + "</a>"), text));
    EXPECT_EQ(text.textSize, size);

    CountingListener value;
    EXPECT_TRUE(Count(WithHeader("<a b='" + std::string(size, 'x') + "'/>"), value));
    EXPECT_EQ(value.ends, 1u);
    EXPECT_EQ(value.attributeCount, 1);

    EXPECT_EQ(ReadInBlocks(std::string(size, 'x'), Parser::kDefaultBlockSize),
              (Events{"line 1: Missing XML header element", "false"}));
    EXPECT_EQ(ReadInBlocks(WithHeader("<" + std::string(size, '\n')), Parser::kDefaultBlockSize),
              (Events{"line 10000001: Element opened on line 1 has no closing bracket", "false"}));
}

TEST(XMLParserInput, MayBeAllEntities) {
    const size_t count = 1'000'000;
    std::string text;
    for (size_t i = 0; i < count; ++i)
        text += "&amp;";
    CountingListener listener;
    EXPECT_TRUE(Count(WithHeader("<a>" + text + "</a>"), listener));
    EXPECT_EQ(listener.textSize, count);
}

TEST(XMLParserInput, MayNestAMillionLevels) {
    const size_t depth = 1'000'000;
    std::string text(kHeader);
    for (size_t i = 0; i < depth; ++i)
        text += "<level>";
    CountingListener open;
    EXPECT_TRUE(Count(text, open));
    EXPECT_EQ(open.starts, depth);
    EXPECT_EQ(open.ends, 0u);

    for (size_t i = 0; i < depth; ++i)
        text += "</level>";
    CountingListener closed;
    EXPECT_TRUE(Count(text, closed));
    EXPECT_EQ(closed.starts, depth);
    EXPECT_EQ(closed.ends, depth);
}

TEST(XMLParserInput, MayHaveAMillionAttributesInOneTag) {
    const int count = 1'000'000;
    std::string text = WithHeader("<e");
    for (int i = 0; i < count; ++i)
        text += " a" + std::to_string(i % (count / 2)) + "='1'";
    CountingListener listener;
    EXPECT_TRUE(Count(text + "/>", listener));
    EXPECT_EQ(listener.attributeCount, count / 2);
}

namespace {

/// A source that gives few bytes at a time although more fit.
class HesitantSource : public ByteSource {
public:
    explicit HesitantSource(std::string_view text) : source_(text) {}
    size_t Read(char* buffer, size_t capacity) override {
        turn_ = turn_ % 5 + 1;
        return source_.Read(buffer, std::min(capacity, turn_));
    }

private:
    MemorySource source_;
    size_t turn_ = 0;
};

} // namespace

TEST(XMLParserInput, MayArriveInPiecesOfAnySize) {
    EventRecorder recorder;
    XMLParser parser;
    parser.SetXMLListener(&recorder);
    parser.SetErrorListener(&recorder);
    HesitantSource source(kSample);
    EXPECT_TRUE(parser.Parse("test.xml", source));
    Events expected = PlainReader(kSample).Run();
    expected.pop_back();
    EXPECT_EQ(recorder.GetEvents(), expected);
}
