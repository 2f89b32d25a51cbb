// Names, comments, and texts per language.

#include "api/Host.h"

namespace {

/// Labels and descriptions follow the same rules through functions of their own.
struct TextFunctions {
    const char* name;
    const char* (*get)(OviNamedObject*, const char*);
    void (*set)(OviNamedObject*, const char*, const char*);
    int (*count)(OviNamedObject*);
    const char* (*languageAt)(OviNamedObject*, int);
    const char* (*textAt)(OviNamedObject*, int);
};

void PrintTo(const TextFunctions& functions, std::ostream* out) {
    *out << functions.name;
}

const TextFunctions kLabels{"Labels",
                            OviNamedObject_GetLabel,
                            OviNamedObject_SetLabel,
                            OviNamedObject_GetLabelCount,
                            OviNamedObject_GetLabelLanguageAt,
                            OviNamedObject_GetLabelTextAt};
const TextFunctions kDescriptions{"Descriptions",
                                  OviNamedObject_GetDescription,
                                  OviNamedObject_SetDescription,
                                  OviNamedObject_GetDescriptionCount,
                                  OviNamedObject_GetDescriptionLanguageAt,
                                  OviNamedObject_GetDescriptionTextAt};

class NamedObjectTest : public HostTest {
protected:
    void SetUp() override {
        HostTest::SetUp();
        object_ = OviInstance_New("First");
    }
    void TearDown() override {
        OviObject_Delete(object_);
        HostTest::TearDown();
    }

    OviInstance* object_ = nullptr;
};

class NamedObjectTextsTest : public NamedObjectTest,
                             public ::testing::WithParamInterface<TextFunctions> {
protected:
    const char* Get(const char* language) { return GetParam().get(object_, language); }
    void Set(const char* language, const char* text) { GetParam().set(object_, language, text); }

    /// All entries in order, as "language=text"; "*" stands for a null language.
    std::vector<std::string> Entries() {
        std::vector<std::string> entries;
        for (int i = 0; i < GetParam().count(object_); ++i) {
            const char* language = GetParam().languageAt(object_, i);
            entries.push_back(std::string(language ? language : "*") + "=" +
                              GetParam().textAt(object_, i));
        }
        return entries;
    }
};

using Texts = std::vector<std::string>;

// -- names and comments ---------------------------------------------------------------------------

TEST_F(NamedObjectTest, NamesAreMadeOfLettersDigitsAndUnderscores) {
    for (const char* name : {"a", "Z", "9lives", "_", "_x", "3D", "A_b_9", "azAZ09_"})
        EXPECT_TRUE(OviNamedObject_IsValidName(name)) << name;
    for (const char* name : {"", " ", "a b", "a.b", ".", "a-b", "\x80", "caf\xc3\xa9", "a\xff", "@",
                             "[", "`", "{", "/", ":", "a\n"})
        EXPECT_FALSE(OviNamedObject_IsValidName(name)) << name;
    EXPECT_FALSE(OviNamedObject_IsValidName(nullptr));
}

TEST_F(NamedObjectTest, EveryByteIsJudgedTheSameFirstOrLast) {
    for (int byte = 1; byte < 256; ++byte) {
        const bool valid = (byte >= '0' && byte <= '9') || (byte >= 'A' && byte <= 'Z') ||
                           (byte >= 'a' && byte <= 'z') || byte == '_';
        const char c = static_cast<char>(byte);
        EXPECT_EQ(OviNamedObject_IsValidName(std::string{c, 'x'}.c_str()), valid) << byte;
        EXPECT_EQ(OviNamedObject_IsValidName(std::string{'x', c}.c_str()), valid) << byte;
    }
}

TEST_F(NamedObjectTest, AnInvalidNameChangesNothing) {
    EXPECT_TRUE(OviNamedObject_SetName(object_, "Second"));
    for (const char* name : {"", "a b", "a.b", static_cast<const char*>(nullptr)})
        EXPECT_FALSE(OviNamedObject_SetName(object_, name));
    EXPECT_STREQ(OviNamedObject_GetName(object_), "Second");
    EXPECT_TRUE(Errors().empty());
}

TEST_F(NamedObjectTest, AnObjectMadeWithAnInvalidNameHasNone) {
    OviInstance* nameless = OviInstance_New("not a name");
    EXPECT_STREQ(OviNamedObject_GetName(nameless), "");
    OviObject_Delete(nameless);
}

TEST_F(NamedObjectTest, ANameMayBeSetToItself) {
    EXPECT_TRUE(OviNamedObject_SetName(object_, OviNamedObject_GetName(object_)));
    EXPECT_STREQ(OviNamedObject_GetName(object_), "First");
}

TEST_F(NamedObjectTest, NamesAreCopied) {
    std::string name = "Mine";
    OviNamedObject_SetName(object_, name.c_str());
    name = "Else";
    EXPECT_STREQ(OviNamedObject_GetName(object_), "Mine");
}

TEST_F(NamedObjectTest, AnyTextIsAComment) {
    EXPECT_STREQ(OviNamedObject_GetComment(object_), "");
    for (const char* comment : {"two words -- and <more>", "\xff", "", "x"}) {
        OviNamedObject_SetComment(object_, comment);
        EXPECT_STREQ(OviNamedObject_GetComment(object_), comment);
    }
    OviNamedObject_SetComment(object_, nullptr);
    EXPECT_STREQ(OviNamedObject_GetComment(object_), "");
}

// -- texts per language ---------------------------------------------------------------------------

TEST_P(NamedObjectTextsTest, AreEmptyAtFirst) {
    EXPECT_EQ(Entries(), Texts());
    EXPECT_EQ(Get(nullptr), nullptr);
    EXPECT_EQ(Get("en"), nullptr);
}

TEST_P(NamedObjectTextsTest, FallBackToTheLanguageAndThenToTheDefault) {
    Set("en", "Colour");
    EXPECT_STREQ(Get("en_GB"), "Colour");
    EXPECT_EQ(Get("fr"), nullptr);
    EXPECT_EQ(Get(nullptr), nullptr);
    Set(nullptr, "Color");
    EXPECT_STREQ(Get("fr"), "Color");
    EXPECT_STREQ(Get("fr_FR"), "Color");
    EXPECT_STREQ(Get(nullptr), "Color");
    EXPECT_STREQ(Get("en_GB"), "Colour");
    EXPECT_STREQ(Get("EN"), "Color"); // case matters
}

TEST_P(NamedObjectTextsTest, FallBackToThePartBeforeTheFirstUnderscore) {
    Set("zh", "one");
    Set("zh_Hans", "two");
    EXPECT_STREQ(Get("zh_Hans"), "two");
    EXPECT_STREQ(Get("zh_Hans_CN"), "one");
    EXPECT_EQ(Get("_zh"), nullptr);
    Set("", "default");
    EXPECT_STREQ(Get("_zh"), "default");
}

TEST_P(NamedObjectTextsTest, StandInByteOrderWithTheDefaultFirst) {
    Set("de", "D");
    Set("ab", "A");
    Set(nullptr, "N");
    EXPECT_EQ(Entries(), (Texts{"*=N", "ab=A", "de=D"}));
    Set("\xc3", "last");
    Set("Z", "capital");
    EXPECT_EQ(Entries(), (Texts{"*=N", "Z=capital", "ab=A", "de=D", "\xc3=last"}));
}

TEST_P(NamedObjectTextsTest, AreReplacedAndRemovedByExactLanguage) {
    for (const char* language : {"de", "en", "fr"})
        Set(language, language);
    Set("en", "new");
    EXPECT_EQ(Entries(), (Texts{"de=de", "en=new", "fr=fr"}));
    Set("de_AT", nullptr); // no fallback here
    Set("xx", nullptr);
    Set(nullptr, nullptr);
    EXPECT_EQ(Entries(), (Texts{"de=de", "en=new", "fr=fr"}));
    Set("de", nullptr);
    EXPECT_EQ(Entries(), (Texts{"en=new", "fr=fr"}));
}

TEST_P(NamedObjectTextsTest, TellTheEmptyTextFromNone) {
    Set("", "");
    EXPECT_EQ(Entries(), (Texts{"*="}));
    EXPECT_STREQ(Get(nullptr), "");
    Set(nullptr, nullptr);
    EXPECT_EQ(Entries(), Texts());
}

TEST_P(NamedObjectTextsTest, MayBeSetFromThemselves) {
    Set("en", "a text that is too long to stand inside a string object");
    Set("en", Get("en"));
    Set("aa", Get("en"));
    EXPECT_STREQ(Get("aa"), Get("en"));
    EXPECT_STREQ(Get("en"), "a text that is too long to stand inside a string object");
}

TEST_P(NamedObjectTextsTest, OutsideTheTableAreNoneAndEmpty) {
    Set("en", "text");
    for (const int index : {-1, 1, 1000}) {
        EXPECT_EQ(GetParam().languageAt(object_, index), nullptr);
        EXPECT_STREQ(GetParam().textAt(object_, index), "");
    }
}

TEST_P(NamedObjectTextsTest, LeaveTheOtherTableAlone) {
    const bool isLabels = GetParam().name == std::string(kLabels.name);
    const TextFunctions& other = isLabels ? kDescriptions : kLabels;
    Set("en", "text");
    EXPECT_EQ(other.count(object_), 0);
    EXPECT_EQ(other.get(object_, "en"), nullptr);
}

INSTANTIATE_TEST_SUITE_P(Tables, NamedObjectTextsTest, ::testing::Values(kLabels, kDescriptions),
                         [](const auto& test) { return std::string(test.param.name); });

} // namespace
