#include "formats/XMLTemplateListener.h"

#include "core/ByteStreams.h"
#include "core/ErrorManager.h"
#include "manager/TemplateManager.h"
#include "schema/AttributeProperty.h"
#include "xml/XMLAttributes.h"
#include "xml/XMLParser.h"

#include <gtest/gtest.h>

using namespace Kor;

namespace {

class XMLTemplateListenerTest : public ::testing::Test {
protected:
    void SetUp() override {
        ErrorManager::Get()->Initialize();
        TemplateManager::Get()->Initialize();
    }
    void TearDown() override {
        TemplateManager::Get()->Terminate();
        ErrorManager::Get()->Terminate();
    }

    /// Reads a text as the file "f", reporting to the error manager if told to. No package is
    /// found.
    static bool Read(const std::string& content, bool reports, size_t blockSize = 65536) {
        const std::string text = "<?xml?>" + content;
        MemorySource source(text);
        XMLParser parser(blockSize);
        if (reports)
            parser.SetErrorListener(ErrorManager::Get());
        XMLTemplateListener listener(parser);
        parser.SetXMLListener(&listener);
        bool read = parser.Parse("f", source);
        while (read && parser.IsPaused()) {
            listener.AnswerWantedPackage(false);
            read = parser.Resume();
        }
        return read;
    }

    static int CountErrors() { return ErrorManager::Get()->GetErrorItemCount(15); }
};

const char* const kFaults =
    "<extends/><attribute/><template/><template name='a b'><x/></template><enum/><item/><type/>"
    "<using package='nowhere'/><nonsense/><label/><asset/><command/><template name='T'>"
    "<attribute/><attribute name='a'/><attribute name='a b'/><attribute name='c' type='none'/>"
    "<extends template='none'/>";

TEST_F(XMLTemplateListenerTest, EveryEventGoesOnWithoutAnErrorListener) {
    EXPECT_TRUE(Read(kFaults, false));
    EXPECT_EQ(CountErrors(), 0);
    EXPECT_TRUE(TemplateManager::Get()->GetTemplate("T"));
}

TEST_F(XMLTemplateListenerTest, EveryEventGoesOnWithAnErrorListener) {
    EXPECT_TRUE(Read(kFaults, true));
    EXPECT_EQ(CountErrors(), 18);
    EXPECT_TRUE(TemplateManager::Get()->GetTemplate("T"));
}

TEST_F(XMLTemplateListenerTest, FindsTheSameInBlocksOfAnySize) {
    for (const size_t blockSize : {1u, 2u, 7u, 64u}) {
        const std::string name = "T" + std::to_string(blockSize);
        EXPECT_TRUE(Read("<!-- c --><template name='" + name +
                             "'><label>a&lt;b</label><attribute name='x' type='INT32' "
                             "default='17'/></template>",
                         true, blockSize));
        const Template* type = TemplateManager::Get()->GetTemplate(name);
        ASSERT_TRUE(type);
        EXPECT_STREQ(type->GetComment(), " c ");
        EXPECT_STREQ(type->GetLabels().GetAt(0).text.c_str(), "a<b");
        const auto* attribute = static_cast<AttributeProperty*>(type->GetProperty("x", false));
        EXPECT_EQ(*static_cast<const int*>(attribute->GetDefaultValue()), 17);
    }
    EXPECT_EQ(CountErrors(), 0);
}

TEST_F(XMLTemplateListenerTest, EndTagsWithoutStartDoNothing) {
    EXPECT_TRUE(Read("</template></attribute></enum></label></description></item></nonsense>"
                     "<template name='T'/>",
                     false));
    EXPECT_TRUE(TemplateManager::Get()->GetTemplate("T"));
}

TEST_F(XMLTemplateListenerTest, CharactersOutsideLabelsAreIgnored) {
    EXPECT_TRUE(
        Read("a<template name='T'>b<label>c</label>d<label language='de'/>e</template>", true));
    const Template* type = TemplateManager::Get()->GetTemplate("T");
    ASSERT_EQ(type->GetLabels().GetCount(), 2);
    EXPECT_STREQ(type->GetLabels().GetAt(0).text.c_str(), "c");
    EXPECT_STREQ(type->GetLabels().GetAt(1).text.c_str(), "");
}

TEST_F(XMLTemplateListenerTest, ReportsWhatIsOpenWhenItIsDestroyed) {
    XMLParser parser;
    parser.SetErrorListener(ErrorManager::Get());
    {
        XMLTemplateListener listener(parser);
        MemorySource source("<?xml?>\n<template name='T'>\n<attribute name='a' type='BOOL'>");
        parser.SetXMLListener(&listener);
        EXPECT_TRUE(parser.Parse("f", source));
        EXPECT_EQ(CountErrors(), 0);
    }
    ASSERT_EQ(CountErrors(), 2);
    const ErrorItem* item = ErrorManager::Get()->GetErrorItemAt(1);
    EXPECT_STREQ(item->GetMessage(), "Missing closing element for property: 'a'");
    EXPECT_EQ(item->GetLineNumber(), 3);
}

} // namespace
