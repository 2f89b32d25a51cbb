// Documents of the XML writer: how they begin and end, and what their sinks get and refuse.

#include "xml/XMLWriter.h"

#include "core/ByteStreams.h"

#include <limits>

#include <gtest/gtest.h>

using namespace Kor;

namespace {

/// Takes so many bytes and refuses whatever comes then.
class LimitedSink : public ByteSink {
public:
    explicit LimitedSink(size_t limit) : limit_(limit) {}
    bool Write(std::string_view bytes) override {
        ++writes;
        size_ += bytes.size();
        return size_ <= limit_;
    }

    int writes = 0;

private:
    size_t limit_;
    size_t size_ = 0;
};

} // namespace

TEST(XMLWriterDocument, WritesTheHeaderWithoutALineBreak) {
    StringSink sink;
    XMLWriter writer;
    writer.Open(sink, true);
    EXPECT_TRUE(writer.Close());
    EXPECT_EQ(sink.GetText(), "<?xml version='1.0' encoding='UTF-8'?>");
}

TEST(XMLWriterDocument, AbandonHandsOverEverythingAndEndsNothing) {
    StringSink sink;
    {
        XMLWriter writer;
        writer.Open(sink, false);
        writer.AddIndent(1);
        writer.StartElement("a");
        writer.WriteText("x");
        writer.Abandon();
        EXPECT_EQ(sink.GetText(), "\n\t<a>x");
        writer.EndElement();
        writer.WriteText("y");
        writer.Open(sink, false);
        writer.StartElement("b");
    }
    EXPECT_EQ(sink.GetText(), "\n\t<a>x\n<b/>");
}

TEST(XMLWriterDocument, OpenClosesTheLastDocument) {
    StringSink first;
    StringSink second;
    XMLWriter writer;
    writer.Open(first, false);
    writer.StartElement("a");
    writer.Open(second, false);
    writer.StartElement("b");
    EXPECT_TRUE(writer.Close());
    EXPECT_EQ(first.GetText(), "\n<a/>");
    EXPECT_EQ(second.GetText(), "\n<b/>");
}

TEST(XMLWriterDocument, ClosesItsDocumentWhenItGoes) {
    StringSink sink;
    {
        XMLWriter writer;
        writer.Open(sink, false);
        writer.StartElement("a");
        writer.WriteText("x");
    }
    EXPECT_EQ(sink.GetText(), "\n<a>x</a>");
}

TEST(XMLWriterDocument, DoesNothingWithoutADocument) {
    XMLWriter writer;
    writer.EndElement();
    writer.StartElement("a");
    writer.WriteAttribute("b", "c");
    writer.WriteText("d");
    writer.WriteComment("e");
    writer.Flush();
    EXPECT_TRUE(writer.Close());
    EXPECT_TRUE(writer.Close());
    StringSink sink;
    writer.Open(sink, false);
    EXPECT_TRUE(writer.Close());
    EXPECT_EQ(sink.GetText(), "");
}

TEST(XMLWriterDocument, FlushHandsOverEverythingAndClosesNothing) {
    StringSink sink;
    XMLWriter writer;
    writer.Open(sink, false);
    writer.StartElement("a");
    writer.WriteAttribute("b", "1");
    writer.Flush();
    EXPECT_EQ(sink.GetText(), "\n<a b='1'");
    writer.WriteAttribute("c", "2");
    EXPECT_TRUE(writer.Close());
    EXPECT_EQ(sink.GetText(), "\n<a b='1' c='2'/>");
}

TEST(XMLWriterDocument, WritesInBlocks) {
    LimitedSink sink(std::numeric_limits<size_t>::max());
    XMLWriter writer;
    writer.Open(sink, false);
    writer.StartElement("a");
    for (int i = 0; i < 100'000; ++i)
        writer.WriteText("0123456789");
    EXPECT_TRUE(writer.Close());
    EXPECT_GT(sink.writes, 5);
    EXPECT_LT(sink.writes, 50);
}

TEST(XMLWriterDocument, TellsWhenTheSinkFailed) {
    LimitedSink sink(10);
    XMLWriter writer;
    writer.Open(sink, true);
    EXPECT_FALSE(writer.HasFailed());
    writer.StartElement("a");
    writer.Flush();
    EXPECT_TRUE(writer.HasFailed());
    writer.StartElement("b");
    EXPECT_FALSE(writer.Close());
    EXPECT_EQ(sink.writes, 1) << "nothing goes to a sink that has failed";
    EXPECT_TRUE(writer.HasFailed());
    EXPECT_FALSE(writer.Close());

    StringSink good;
    writer.Open(good, false);
    EXPECT_FALSE(writer.HasFailed());
    EXPECT_TRUE(writer.Close());
}

TEST(XMLWriterDocument, TellsOfAFailureInTheVeryLastBlock) {
    LimitedSink sink(0);
    XMLWriter writer;
    writer.Open(sink, true);
    EXPECT_FALSE(writer.Close());
}
