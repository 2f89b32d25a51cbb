#include "xml/XMLInstanceListener.h"

#include "core/ByteStreams.h"
#include "core/ErrorManager.h"
#include "instances/AssetManager.h"
#include "manager/TemplateManager.h"
#include "schema/AttributeProperty.h"
#include "xml/XMLAttributes.h"
#include "xml/XMLParser.h"

#include <gtest/gtest.h>

using namespace Kor;

namespace {

struct Case {
    const char* name;
    const char* fault;
    bool stopsUnheard; ///< Whether the reading stops when nobody listens to errors.
};

void PrintTo(const Case& testCase, std::ostream* stream) {
    *stream << testCase.name;
}

class XMLInstanceListenerTest : public ::testing::TestWithParam<Case> {
protected:
    void SetUp() override {
        ErrorManager::Get()->Initialize();
        TemplateManager::Get()->Initialize();
        AssetManager::Get()->Initialize();
        auto attribute = std::make_unique<AttributeProperty>("a", 1);
        TemplateManager::Get()->CreateTemplate("T")->AddProperty(attribute.release(), -1);
    }
    void TearDown() override {
        AssetManager::Get()->Terminate();
        TemplateManager::Get()->Terminate();
        ErrorManager::Get()->Terminate();
    }

    /// Reads the fault and then an asset "behind".
    static bool Read(bool reports) {
        const std::string text =
            std::string("<?xml?>") + GetParam().fault + "<asset name='behind'/>";
        MemorySource source(text);
        XMLParser parser;
        if (reports)
            parser.SetErrorListener(ErrorManager::Get());
        XMLInstanceListener listener(parser);
        parser.SetXMLListener(&listener);
        return parser.Parse("f", source);
    }

    static bool ReadsOn() { return AssetManager::Get()->GetAsset("behind") != nullptr; }
};

TEST_P(XMLInstanceListenerTest, ReadsOnWhenSomebodyListens) {
    EXPECT_TRUE(Read(true));
    EXPECT_TRUE(ReadsOn());
    EXPECT_EQ(ErrorManager::Get()->GetErrorItemCount(1), 1);
}

TEST_P(XMLInstanceListenerTest, StopsUnheardOnlyForMissingNamesAndTemplates) {
    EXPECT_EQ(Read(false), !GetParam().stopsUnheard);
    EXPECT_EQ(ReadsOn(), !GetParam().stopsUnheard);
}

INSTANTIATE_TEST_SUITE_P(
    Faults, XMLInstanceListenerTest,
    ::testing::Values(
        Case{"AssetWithoutName", "<asset/>", true},
        Case{"AssetRefWithoutName", "<assetRef/>", true},
        Case{"ImplementsWithoutTemplate", "<asset name='x'><implements/></asset>", true},
        Case{"ImplementsOutside", "<implements/>", false},
        Case{"AttributeOutside", "<attribute/>", false},
        Case{"AttributeWithoutProperty", "<asset name='x'><attribute/></asset>", false},
        Case{"UnknownTemplate", "<asset name='x'><implements template='U'/></asset>", false},
        Case{"UnknownProperty", "<asset name='x'><attribute property='T.b'/></asset>", false},
        Case{"InvalidName", "<asset name='a b'/>", false}),
    [](const auto& paramInfo) { return std::string(paramInfo.param.name); });

} // namespace
