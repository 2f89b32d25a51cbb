// How values become elements and attributes.

#include "formats/XMLSceneWriter.h"

#include <cstdint>
#include <string>

#include <gtest/gtest.h>

#include "core/ByteStreams.h"
#include "types/CustomType.h"
#include "types/IntType.h"
#include "types/StringType.h"
#include "xml/XMLWriter.h"

namespace {

using namespace Kor;

/// An element "e" with the value inside.
std::string ElementWith(const Type& type, const void* value, int count) {
    StringSink sink;
    XMLWriter writer;
    writer.Open(sink, false);
    writer.StartElement("e");
    XMLSceneWriter(writer).WriteValue(type, value, count);
    writer.EndElement();
    writer.Close();
    return sink.GetText();
}

TEST(XMLSceneWriter, OneElementIsAnAttributeSeveralAreElements) {
    const IntType<int> type("INT32", 1, 4);
    const int numbers[] = {1, 2, 3};
    EXPECT_EQ(ElementWith(type, numbers, 0), "\n<e/>");
    EXPECT_EQ(ElementWith(type, numbers, -1), "\n<e/>");
    EXPECT_EQ(ElementWith(type, numbers, 1), "\n<e value='1'/>");
    EXPECT_EQ(ElementWith(type, numbers, 3), "\n<e>\n\t<value>1</value>\n\t<value>2</value>"
                                             "\n\t<value>3</value>\n</e>");
    EXPECT_EQ(ElementWith(type, nullptr, 2), "\n<e/>");
}

TEST(XMLSceneWriter, TextsDoNotRunIntoEachOther) {
    const StringType type("STRING", 1, 4);
    const char* texts[] = {"a<b", nullptr, "c"};
    EXPECT_EQ(ElementWith(type, texts, 3), "\n<e>\n\t<value>a&lt;b</value>\n\t<value></value>"
                                           "\n\t<value>c</value>\n</e>");
    EXPECT_EQ(ElementWith(type, texts, 1), "\n<e value='a&lt;b'/>");
}

TEST(XMLSceneWriter, ACustomTypeWritesValuesAsItsBaseDoesAndNothingWithoutOne) {
    StringType text("STRING", 1, 4);
    CustomType alias("Alias", 2);
    const char* texts[] = {"a", "b"};
    EXPECT_EQ(ElementWith(alias, texts, 1), "\n<e/>");
    EXPECT_EQ(ElementWith(alias, texts, 2), "\n<e/>");
    alias.SetBaseType(&text);
    EXPECT_EQ(ElementWith(alias, texts, 1), "\n<e value='a'/>");
    EXPECT_EQ(ElementWith(alias, texts, 2), ElementWith(text, texts, 2));
    alias.SetBaseType(nullptr);
}

TEST(XMLSceneWriter, AnEightBitIntegerIsWrittenAsItsCharacter) {
    const std::uint8_t letter = 65;
    EXPECT_EQ(ElementWith(IntType<std::uint8_t>("UINT8", 1, 1), &letter, 1), "\n<e value='A'/>");
}

} // namespace
