#include <cmath>
#include <memory>

#include "api/SceneHost.h"

namespace {

class AttributeInstanceTest : public SceneTest {
protected:
    void SetUp() override {
        SceneTest::SetUp();
        Schema("<type name='Three' type='DOUBLE' dim='3'/><type name='Many' type='INT32' dim='0'/>"
               "<type name='Words' type='STRING' dim='0'/>"
               "<template name='T'>"
               "<attribute name='number' type='INT32' default='5' min='2' max='10'/>"
               "<attribute name='text' type='STRING' default='some text'/>"
               "<attribute name='three' type='Three'/>"
               "<attribute name='many' type='Many'/>"
               "<attribute name='words' type='Words'/>"
               "</template>");
        asset_ = AssetOf("T", "asset");
        number_ = AttributeOf(asset_, "T.number");
        text_ = AttributeOf(asset_, "T.text");
        three_ = AttributeOf(asset_, "T.three");
        many_ = AttributeOf(asset_, "T.many");
        words_ = AttributeOf(asset_, "T.words");
        StartRecording();
    }

    static void Set(OviAttributeInstance* attribute, int32_t value) {
        OviAttributeInstance_SetValue(attribute, &value);
    }

    static void SetText(OviAttributeInstance* attribute, const char* text) {
        OviAttributeInstance_SetValue(attribute, &text);
    }

    /// The property of an attribute, and another type for it.
    static void Retype(OviAttributeInstance* attribute, const char* typeName) {
        auto* property =
            static_cast<OviAttributeProperty*>(OviPropertyInstance_GetProperty(attribute));
        EXPECT_TRUE(OviAttributeProperty_SetType(
            property, typeName ? OviTemplateManager_ResolveType(typeName) : nullptr));
    }

    OviAsset* asset_ = nullptr;
    OviAttributeInstance* number_ = nullptr;
    OviAttributeInstance* text_ = nullptr;
    OviAttributeInstance* three_ = nullptr;
    OviAttributeInstance* many_ = nullptr;
    OviAttributeInstance* words_ = nullptr;
};

} // namespace

TEST_F(AttributeInstanceTest, IsInvalidUntilItsValueIsReadOrSet) {
    EXPECT_FALSE(OviPropertyInstance_IsValid(number_));
    EXPECT_EQ(ValueOf<int32_t>(number_), 5);
    EXPECT_TRUE(OviPropertyInstance_IsValid(number_));
    EXPECT_FALSE(OviPropertyInstance_IsValid(text_));
    SetText(text_, "b");
    EXPECT_TRUE(OviPropertyInstance_IsValid(text_));
    EXPECT_TRUE(OviInstance_IsPropertyInstanceValid(asset_, "T.number"));
    EXPECT_FALSE(OviInstance_IsPropertyInstanceValid(asset_, "T.three"));
}

TEST_F(AttributeInstanceTest, MakesItsValueFromTheDefaultWithoutAnEvent) {
    void* block = OviAttributeInstance_GetValue(text_);
    EXPECT_STREQ(*static_cast<char**>(block), "some text");
    EXPECT_EQ(OviAttributeInstance_GetValue(text_), block);
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(ValueOf<double>(three_, i), 0.0);
    EXPECT_TRUE(Events().empty());
}

TEST_F(AttributeInstanceTest, IsValidWithinTheBoundsOfItsProperty) {
    for (int32_t value : {2, 5, 10}) {
        Set(number_, value);
        EXPECT_TRUE(OviPropertyInstance_IsValid(number_)) << value;
    }
    for (int32_t value : {1, 11, -5}) {
        Set(number_, value);
        EXPECT_FALSE(OviPropertyInstance_IsValid(number_)) << value;
    }
}

TEST_F(AttributeInstanceTest, StoresACopyOfTheBlockGiven) {
    double source[] = {1.5, -0.0, INFINITY};
    OviAttributeInstance_SetValue(three_, source);
    source[0] = 9;
    EXPECT_EQ(ValueOf<double>(three_, 0), 1.5);
    EXPECT_TRUE(std::signbit(ValueOf<double>(three_, 1)));
    EXPECT_EQ(ValueOf<double>(three_, 2), INFINITY);
    EXPECT_NE(OviAttributeInstance_GetValue(three_), static_cast<void*>(source));
    char word[] = "word";
    SetText(text_, word);
    word[0] = 'x';
    EXPECT_STREQ(ValueOf<char*>(text_), "word");
}

TEST_F(AttributeInstanceTest, AnnouncesTheTextOfElement0BeforeTheChange) {
    Set(number_, 3);
    const double source[] = {0.25, 7, 8};
    OviAttributeInstance_SetValue(three_, source);
    SetText(text_, "new");
    SetText(text_, nullptr);
    OviAttributeInstance_SetValue(number_, nullptr);
    EXPECT_EQ(Events(), (Lines{"0x4000 T.number 3", "0x4000 T.three 0.25", "0x4000 T.text new",
                               "0x4000 T.text ", "0x4000 T.number "}));
    EXPECT_EQ(ValueOf<int32_t>(number_), 0);
    int32_t before = -1;
    const Reaction look([&](OviObject*, int, void*) { before = ValueOf<int32_t>(number_); });
    Set(number_, 7);
    EXPECT_EQ(before, 0);
    EXPECT_EQ(ValueOf<int32_t>(number_), 7);
}

TEST_F(AttributeInstanceTest, MayBeGivenItsOwnBlock) {
    SetText(text_, "a text that lives on the heap and not in the object");
    OviAttributeInstance_SetValue(text_, OviAttributeInstance_GetValue(text_));
    EXPECT_STREQ(ValueOf<char*>(text_), "a text that lives on the heap and not in the object");
    Set(number_, 8);
    OviAttributeInstance_SetValue(number_, OviAttributeInstance_GetValue(number_));
    EXPECT_EQ(ValueOf<int32_t>(number_), 8);
}

TEST_F(AttributeInstanceTest, TakesItsOwnBlockAlsoWhenACallbackReplacesIt) {
    SetText(text_, "the text that was there before");
    const Reaction replace([&](OviObject*, int, void*) { SetText(text_, "in between"); });
    OviAttributeInstance_SetValue(text_, OviAttributeInstance_GetValue(text_));
    EXPECT_STREQ(ValueOf<char*>(text_), "the text that was there before");
}

TEST_F(AttributeInstanceTest, TakesTheValueAsGivenWhateverCallbacksDo) {
    const Reaction replace([&](OviObject* object, int event, void* argument) {
        if (object != number_ || event != OVI_EVENT_ATTRIBUTE_VALUE_CHANGED)
            return;
        static_cast<char*>(argument)[0] = '#';
        Set(number_, 9);
        SetText(text_, "set too");
        OviAssetManager_NewAsset(nullptr);
    });
    Set(number_, 3);
    EXPECT_EQ(ValueOf<int32_t>(number_), 3);
    EXPECT_STREQ(ValueOf<char*>(text_), "set too");
    EXPECT_EQ(OviAssetManager_GetAssetCount(), 2);
    EXPECT_EQ(Events(), (Lines{"0x4000 T.number 3", "0x4000 T.number 9", "0x4000 T.text set too",
                               "0x1005 Asset1 0"}));
}

TEST_F(AttributeInstanceTest, KeepsValueAndDimensionTogetherWhenACallbackChangesTheDimension) {
    for (int meanwhile : {0, 1, 50}) {
        OviAttributeInstance_SetDimension(words_, 3);
        const char* texts[] = {"one", "two", "three"};
        const Reaction resize([&](OviObject*, int, void*) {
            OviAttributeInstance_SetDimension(words_, meanwhile);
            OviAttributeInstance_GetValue(words_);
        });
        OviAttributeInstance_SetValue(words_, texts);
        EXPECT_EQ(OviAttributeInstance_GetDimension(words_), 3);
        EXPECT_STREQ(ValueOf<char*>(words_, 2), "three");
    }
}

TEST_F(AttributeInstanceTest, HasTheDimensionOfItsType) {
    EXPECT_EQ(OviAttributeInstance_GetDimension(number_), 1);
    EXPECT_EQ(OviAttributeInstance_GetDimension(three_), 3);
    EXPECT_EQ(OviAttributeInstance_GetDimension(many_), 0);
}

TEST_F(AttributeInstanceTest, RefusesADimensionThatItsTypeForbids) {
    OviAttributeInstance_GetValue(three_);
    void* block = OviAttributeInstance_GetValue(three_);
    for (int dimension : {0, 1, 2, 4, -1, -3})
        EXPECT_FALSE(OviAttributeInstance_SetDimension(three_, dimension)) << dimension;
    EXPECT_TRUE(OviAttributeInstance_SetDimension(three_, 3));
    EXPECT_EQ(OviAttributeInstance_GetValue(three_), block);
    EXPECT_FALSE(OviAttributeInstance_SetDimension(many_, -1));
    EXPECT_EQ(OviAttributeInstance_GetDimension(many_), 0);
    EXPECT_TRUE(Events().empty());
}

TEST_F(AttributeInstanceTest, DropsTheValueWithADifferentDimension) {
    EXPECT_TRUE(OviAttributeInstance_SetDimension(many_, 4));
    EXPECT_EQ(OviAttributeInstance_GetDimension(many_), 4);
    EXPECT_FALSE(OviPropertyInstance_IsValid(many_));
    for (int i = 0; i < 4; ++i)
        static_cast<int32_t*>(OviAttributeInstance_GetValue(many_))[i] = i + 1;
    EXPECT_TRUE(OviPropertyInstance_IsValid(many_));
    EXPECT_TRUE(OviAttributeInstance_SetDimension(many_, 4));
    EXPECT_EQ(ValueOf<int32_t>(many_, 3), 4);
    EXPECT_TRUE(OviAttributeInstance_SetDimension(many_, 2));
    EXPECT_FALSE(OviPropertyInstance_IsValid(many_));
    EXPECT_EQ(ValueOf<int32_t>(many_, 1), 0);
    EXPECT_TRUE(Events().empty());
}

TEST_F(AttributeInstanceTest, OfDimension0HasAnEmptyValidValue) {
    for (OviAttributeInstance* attribute : {many_, words_}) {
        EXPECT_FALSE(OviPropertyInstance_IsValid(attribute));
        EXPECT_NE(OviAttributeInstance_GetValue(attribute), nullptr);
        EXPECT_TRUE(OviPropertyInstance_IsValid(attribute));
        EXPECT_TRUE(OviAttributeInstance_SetDimension(attribute, 2));
        EXPECT_TRUE(OviAttributeInstance_SetDimension(attribute, 0));
        OviAttributeInstance_SetValue(attribute, OviAttributeInstance_GetValue(attribute));
        EXPECT_NE(OviAttributeInstance_GetValue(attribute), nullptr);
    }
    EXPECT_EQ(Events(), (Lines{"0x4000 T.many ", "0x4000 T.words "}));
    EXPECT_NE(XMLOf(asset_).find("<attribute property='T.many' binding=''/>"), std::string::npos);
}

TEST_F(AttributeInstanceTest, ReadsNoElementOfASourceThatHasNone) {
    // With dimension 0 the source has no element to show; it may be any address.
    const auto end = std::make_unique<char[]>(1);
    OviAttributeInstance_SetValue(many_, end.get() + 1);
    EXPECT_EQ(Events(), Lines{"0x4000 T.many "});
}

TEST_F(AttributeInstanceTest, StoresBindingsAsGiven) {
    EXPECT_STREQ(OviAttributeInstance_GetBinding(number_), "");
    OviAttributeInstance_SetBinding(number_, "|any text.at[0] \xC3\xA4");
    EXPECT_STREQ(OviAttributeInstance_GetBinding(number_), "|any text.at[0] \xC3\xA4");
    OviAttributeInstance_SetBinding(number_, nullptr);
    EXPECT_STREQ(OviAttributeInstance_GetBinding(number_), "");
    EXPECT_EQ(Events(), (Lines{"0x3000 T.number |any text.at[0] \xC3\xA4", "0x3000 T.number "}));
    EXPECT_FALSE(OviPropertyInstance_IsValid(number_));
}

TEST_F(AttributeInstanceTest, AnnouncesABindingBeforeTheChangeAndTakesItAsGiven) {
    OviAttributeInstance_SetBinding(number_, "the old binding, long enough for the heap");
    std::string before;
    const Reaction interfere([&](OviObject*, int, void* argument) {
        before = OviAttributeInstance_GetBinding(number_);
        static_cast<char*>(argument)[0] = '#';
        OviAttributeInstance_SetBinding(number_, "from the callback");
    });
    OviAttributeInstance_SetBinding(number_, OviAttributeInstance_GetBinding(number_));
    EXPECT_EQ(before, "the old binding, long enough for the heap");
    EXPECT_STREQ(OviAttributeInstance_GetBinding(number_), before.c_str());
    OviAttributeInstance_SetBinding(number_, "new");
    EXPECT_STREQ(OviAttributeInstance_GetBinding(number_), "new");
}

TEST_F(AttributeInstanceTest, WithoutATypeHasNoValue) {
    Schema("<template name='U'/>", "untyped");
    OviAttributeProperty* property = OviAttributeProperty_New("x", 1);
    OviTemplate_AddProperty(TemplateOf("U"), property, -1);
    OviAttributeInstance* attribute = AttributeOf(AssetOf("U"), "U.x");
    TakeEvents();
    EXPECT_EQ(OviAttributeInstance_GetValue(attribute), nullptr);
    Set(attribute, 3);
    EXPECT_EQ(OviAttributeInstance_GetValue(attribute), nullptr);
    EXPECT_EQ(OviAttributeInstance_GetDimension(attribute), 0);
    EXPECT_FALSE(OviAttributeInstance_SetDimension(attribute, 1));
    EXPECT_FALSE(OviAttributeInstance_SetDimension(attribute, 0));
    EXPECT_FALSE(OviPropertyInstance_IsValid(attribute));
    EXPECT_TRUE(Events().empty());
    OviAttributeInstance_SetBinding(attribute, "still bound");
    EXPECT_EQ(Events(), Lines{"0x3000 U.x still bound"});
}

TEST_F(AttributeInstanceTest, FreesABlockByTheTypeThatMadeIt) {
    SetText(text_, "a text that only a text type can free");
    Retype(text_, "DOUBLE");
    const double one = 1;
    OviAttributeInstance_SetValue(text_, &one);
    EXPECT_EQ(ValueOf<double>(text_), 1);
    Retype(text_, "STRING");
    SetText(text_, "text again");
    EXPECT_STREQ(ValueOf<char*>(text_), "text again");
}

TEST_F(AttributeInstanceTest, IsInvalidWhileItsValueIsOfAnotherTypeThanItsProperty) {
    Set(number_, 5);
    OviAttributeInstance_GetValue(many_);
    for (const char* other : {"STRING", "Three", "Object"}) {
        Retype(many_, other);
        EXPECT_FALSE(OviPropertyInstance_IsValid(many_)) << other;
        EXPECT_NE(OviAttributeInstance_GetValue(many_), nullptr);
        EXPECT_NE(XMLOf(asset_), "");
        char buffer[256];
        EXPECT_LE(OviInstance_WriteToBinary(asset_, buffer, sizeof buffer), sizeof buffer);
    }
    Retype(number_, nullptr);
    EXPECT_FALSE(OviPropertyInstance_IsValid(number_));
}

TEST_F(AttributeInstanceTest, TakesNoDefaultOrBoundOfAnotherType) {
    for (const char* other : {"STRING", "Three", "Object"}) {
        Retype(number_, other);
        EXPECT_NE(OviAttributeInstance_GetValue(number_), nullptr);
        OviPropertyInstance_IsValid(number_);
        OviObject_Delete(number_);
        number_ = static_cast<OviAttributeInstance*>(
            OviInstance_GetPropertyInstance(asset_, "T.number", true));
    }
    Retype(number_, "INT32");
    EXPECT_EQ(ValueOf<int32_t>(number_), 5);
}

TEST_F(AttributeInstanceTest, NullHandlesAreHarmless) {
    const int32_t one = 1;
    EXPECT_EQ(OviAttributeInstance_GetValue(nullptr), nullptr);
    OviAttributeInstance_SetValue(nullptr, &one);
    EXPECT_STREQ(OviAttributeInstance_GetBinding(nullptr), "");
    OviAttributeInstance_SetBinding(nullptr, "x");
    EXPECT_EQ(OviAttributeInstance_GetDimension(nullptr), 0);
    EXPECT_FALSE(OviAttributeInstance_SetDimension(nullptr, 1));
    auto* wrong = reinterpret_cast<OviAttributeInstance*>(asset_);
    EXPECT_EQ(OviAttributeInstance_GetValue(wrong), nullptr);
    EXPECT_TRUE(Events().empty());
}
