#pragma once

#include "core/ByteStreams.h"
#include "core/IErrorListener.h"
#include "xml/IXMLListener.h"
#include "xml/XMLAttributes.h"
#include "xml/XMLParser.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace Kor::XMLTest {

using Events = std::vector<std::string>;

/// Writes down every event and every diagnostic, in one list, as one line each.
class EventRecorder : public IXMLListener, public IErrorListener {
public:
    bool StartElement(std::string_view name, const XMLAttributes& attributes) override {
        std::string line = "start " + TextOf(name);
        for (int i = 0; i < attributes.GetCount(); ++i)
            line += " " + TextOf(attributes.GetNameAt(i)) + "=" + TextOf(attributes.GetValueAt(i));
        return Record(line);
    }
    bool EndElement(std::string_view name) override { return Record("end " + TextOf(name)); }
    bool Comment(std::string_view text) override { return Record("comment " + TextOf(text)); }
    bool Characters(std::string_view text) override { return Record("text " + TextOf(text)); }

    void AddErrorItem(int level, const char* sourceName, int lineNumber,
                      const char* message) override {
        EXPECT_EQ(level, 1);
        EXPECT_STREQ(sourceName, "test.xml");
        Record("line " + std::to_string(lineNumber) + ": " + message);
    }

    /// After that many events the listener refuses.
    void RefuseAfter(size_t count) { limit_ = count; }

    const Events& GetEvents() const { return events_; }

private:
    /// What a text says when it is taken as a NUL-terminated one, which it must be.
    static std::string TextOf(std::string_view text) {
        EXPECT_EQ(std::string_view(text.data()), text);
        return std::string(text);
    }

    bool Record(const std::string& line) {
        events_.push_back(line);
        return events_.size() < limit_;
    }

    Events events_;
    size_t limit_ = std::string::npos;
};

constexpr std::string_view kHeader = "<?xml version='1.0' encoding='UTF-8'?>";

inline std::string WithHeader(std::string_view content) {
    return std::string(kHeader) + std::string(content);
}

/// The events of a text read in blocks of that size, the result last.
inline Events ReadInBlocks(std::string_view text, size_t blockSize,
                           size_t refuseAfter = std::string::npos) {
    EventRecorder recorder;
    recorder.RefuseAfter(refuseAfter);
    XMLParser parser(blockSize);
    parser.SetXMLListener(&recorder);
    parser.SetErrorListener(&recorder);
    MemorySource source(text);
    const bool result = parser.Parse("test.xml", source);
    Events events = recorder.GetEvents();
    events.push_back(result ? "true" : "false");
    return events;
}

/// Blocks so small that every token lies across their ends, and a larger one.
constexpr size_t kBlockSizes[] = {1, 2, 3, 7, 4096};

/// The events of a text, which must be the same for every size of block.
inline Events Read(std::string_view text, size_t refuseAfter = std::string::npos) {
    const Events events = ReadInBlocks(text, Parser::kDefaultBlockSize, refuseAfter);
    for (const size_t blockSize : kBlockSizes) {
        EXPECT_EQ(ReadInBlocks(text, blockSize, refuseAfter), events)
            << "in blocks of " << blockSize;
    }
    return events;
}

/// The events of what stands behind a correct header.
inline Events ReadContent(std::string_view content) {
    return Read(WithHeader(content));
}

} // namespace Kor::XMLTest
