#include "formats/XMLInstanceListener.h"

#include "core/ByteStreams.h"
#include "core/ErrorManager.h"
#include "instances/AssetManager.h"
#include "manager/TemplateManager.h"
#include "schema/AttributeProperty.h"
#include "schema/GeometryProperty.h"
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
        Template* type = TemplateManager::Get()->CreateTemplate("T");
        type->AddProperty(std::make_unique<AttributeProperty>("a", 1).release(), -1);
        type->AddProperty(std::make_unique<GeometryProperty>("g", 1).release(), -1);
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
        Case{"AttributeOutside", "<attribute/>", false}, Case{"NodeOutside", "<node/>", false},
        Case{"AnchorOutside", "<anchor/>", false}, Case{"GeometryOutside", "<geometry/>", false},
        Case{"AttributeWithoutProperty", "<asset name='x'><attribute/></asset>", false},
        Case{"NodeWithoutProperty", "<asset name='x'><node/></asset>", false},
        Case{"AnchorWithoutProperty", "<asset name='x'><anchor/></asset>", false},
        Case{"GeometryWithoutProperty", "<asset name='x'><geometry/></asset>", false},
        Case{"GeometryInsideAnother",
             "<asset name='x'><geometry property='T.g'><geometry property='T.g'/></geometry>"
             "</asset>",
             false},
        Case{"AlternateOutside", "<asset name='x'><alternate lod='L' binding='b'/></asset>", false},
        Case{"AlternateWithoutLevel",
             "<asset name='x'><geometry property='T.g'><alternate binding='b'/></geometry></asset>",
             false},
        Case{"AlternateWithoutBinding",
             "<asset name='x'><geometry property='T.g'><alternate lod='L'/></geometry></asset>",
             false},
        Case{"NoAttribute", "<asset name='x'><attribute property='T.g'/></asset>", false},
        Case{"UnknownLevel",
             "<asset name='x'><geometry property='T.g'><alternate lod='L' binding='b'/></geometry>"
             "</asset>",
             false},
        Case{"UnknownTemplate", "<asset name='x'><implements template='U'/></asset>", false},
        Case{"UnknownProperty", "<asset name='x'><attribute property='T.b'/></asset>", false},
        Case{"InvalidName", "<asset name='a b'/>", false}),
    [](const auto& paramInfo) { return std::string(paramInfo.param.name); });

} // namespace
