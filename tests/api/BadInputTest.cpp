// Files that are no template files or scenes at all, or only parts of them: diagnostics with
// lines, a result, and everything that was loaded before as it was.

#include <algorithm>
#include <filesystem>
#include <random>

#include "api/SceneHost.h"
#include "api/SchemaDump.h"

namespace {

/// How a file of one of the two formats is read.
struct Format {
    const char* name;
    const char* extension;
    bool (*load)(const char* path);
    const char* root;
    const char* good; ///< What stands in the root of a file without faults.
};

void PrintTo(const Format& format, std::ostream* stream) {
    *stream << format.name;
}

const Format kFormats[] = {
    {"Template", ".template", &OviTemplateManager_LoadTemplateFile, "templates",
     "<type name='BadType' type='FLOAT' dim='3'/><!-- c -->\n"
     "<enum name='BadEnum' type='INT32'><item name='I' value='1'/></enum>\n"
     "<template name='BadBase'/><template name='Bad'>\n<extends template='BadBase' version='2'/>"
     "<label language='de'>&lt;L&gt;</label><attribute name='a' type='BadType' default='1' min='0' "
     "max='2'/><attribute name='b' type='BadBase'><asset name='x' reference='f'/></attribute>\n"
     "<attribute name='c' type='BadEnum' version='3' autoBind='x'><command execute='e' "
     "notification='BindingChanged'/><description>d</description></attribute></template>"},
    {"Scene", ".asset", &OviAssetManager_LoadScene, "assets",
     "<!-- c --><asset name='x' reference='f'>\n<implements template='Holder' version='1'/>"
     "<attribute property='Holder.numbers' binding='&amp;b'><value>1</value><value>2</value>"
     "</attribute>\n<attribute property='Holder.nested'><asset name='n'><implements "
     "template='Kept'/><attribute property='Kept.a' value='7' lockValue='1'/></asset></attribute>"
     "</asset><assetRef name='y'/>"},
};

class BadInput : public SceneTest, public ::testing::WithParamInterface<Format> {
protected:
    void SetUp() override {
        SceneTest::SetUp();
        Schema("<type name='Numbers' type='INT32' dim='0'/><template name='Kept'>"
               "<attribute name='a' type='INT32' default='4'/></template><template name='Holder'>"
               "<attribute name='numbers' type='Numbers'/><attribute name='nested' type='Kept'/>"
               "</template>");
        AssetOf("Kept", "kept");
        int value = 5;
        OviAttributeInstance_SetValue(AttributeOf(OviAssetManager_GetAsset("kept"), "Kept.a"),
                                      &value);
        keptSchema_ = KeptSchema();
    }

    /// The result of loading a text of the format; the diagnostics start anew.
    bool LoadText(const std::string& text) {
        OviErrorManager_Clear();
        const std::string path =
            WriteFile("bad" + std::to_string(files_++) + GetParam().extension, text);
        const bool loaded = GetParam().load(path.c_str());
        std::filesystem::remove(path);
        return loaded;
    }

    static std::string Wrap(const std::string& content) {
        const std::string root = GetParam().root;
        return "<?xml version='1.0'?>\n<" + root + ">\n" + content + "\n</" + root + ">";
    }

    /// The library still has what it had, and still works.
    void ExpectNothingLost() {
        EXPECT_EQ(KeptSchema(), keptSchema_);
        OviAsset* kept = OviAssetManager_GetAsset("kept");
        ASSERT_TRUE(kept);
        EXPECT_EQ(ValueOf<int>(AttributeOf(kept, "Kept.a")), 5);
    }

    /// Every diagnostic has a level, a message, and a line of the file.
    static void ExpectSoundFindings(int lines) {
        for (int i = 0; OviErrorItem* item = OviErrorManager_GetErrorItemAt(i); ++i) {
            const int line = OviErrorItem_GetLineNumber(item);
            EXPECT_TRUE(line == -1 || (line >= 1 && line <= lines)) << line;
            EXPECT_STRNE(OviErrorItem_GetMessage(item), "");
            EXPECT_GE(OviErrorItem_GetErrorLevel(item), 1);
        }
    }

    /// Unloads what a bad template file may have defined, and all assets but one.
    void Forget() {
        for (int i = OviAssetManager_GetAssetCount() - 1; i >= 0; --i) {
            OviAsset* asset = OviAssetManager_GetAssetAt(i);
            if (OviNamedObject_GetName(asset) == std::string("kept"))
                continue;
            OviAssetManager_RemoveAsset(asset);
            OviObject_Delete(asset);
        }
        const std::string path = PathOf("bad" + std::to_string(files_ - 1) + GetParam().extension);
        OviTemplateManager_UnloadTemplateFile(path.c_str());
    }

private:
    std::string KeptSchema() { return SchemaDump::OfFile(PathOf("test.template")); }

    std::string keptSchema_;
    int files_ = 0;
};

INSTANTIATE_TEST_SUITE_P(Formats, BadInput, ::testing::ValuesIn(kFormats),
                         [](const auto& paramInfo) { return std::string(paramInfo.param.name); });

// -- no such file -----------------------------------------------------------------------------

TEST_P(BadInput, GoodFileOfThisTestIsGood) {
    EXPECT_TRUE(LoadText(Wrap(GetParam().good)));
    EXPECT_EQ(Errors(), Lines{});
    ExpectNothingLost();
}

TEST_P(BadInput, EmptyFileHasNoHeader) {
    for (const char* text : {"", " \n\t", "no brackets"}) {
        EXPECT_FALSE(LoadText(text));
        ASSERT_GE(Errors().size(), 1u);
        EXPECT_EQ(Errors()[0].substr(1),
                  (text[0] == ' ' ? " 2 " : " 1 ") + std::string("Missing XML header element"));
    }
    ExpectNothingLost();
}

TEST_P(BadInput, DirectoryIsNoFile) {
    const std::string path = PathOf(std::string("dir") + GetParam().extension + "/x");
    EXPECT_FALSE(GetParam().load(path.substr(0, path.size() - 2).c_str()));
    ExpectNothingLost();
}

// -- parts of files ---------------------------------------------------------------------------

TEST_P(BadInput, CutShortAtEveryByteIsReadAsFarAsItGoes) {
    const std::string text = Wrap(GetParam().good);
    const auto lines = static_cast<int>(std::count(text.begin(), text.end(), '\n')) + 1;
    for (size_t length = 0; length < text.size(); ++length) {
        SCOPED_TRACE(text.substr(length > 20 ? length - 20 : 0, length > 20 ? 20 : length));
        const bool cutInTag = text.rfind('<', length - 1) != std::string::npos && length > 0 &&
                              text.find('>', text.rfind('<', length - 1)) >= length;
        EXPECT_EQ(LoadText(text.substr(0, length)), length > 0 && !cutInTag);
        ExpectSoundFindings(lines);
        EXPECT_TRUE(!cutInTag || !Errors().empty());
        Forget();
    }
    ExpectNothingLost();
}

TEST_P(BadInput, PiecesLeftOutAnywhereDoNoHarm) {
    const std::string text = Wrap(GetParam().good);
    const auto lines = static_cast<int>(std::count(text.begin(), text.end(), '\n')) + 1;
    std::mt19937 random(1);
    for (int i = 0; i < 1500; ++i) {
        std::string part = text;
        const size_t at = 22 + random() % (text.size() - 22); // behind the header
        part.erase(at, 1 + random() % 40);
        LoadText(part);
        ExpectSoundFindings(lines);
        Forget();
    }
    ExpectNothingLost();
}

TEST_P(BadInput, PiecesInOtherPlacesDoNoHarm) {
    const std::string text = Wrap(GetParam().good);
    std::mt19937 random(2);
    for (int i = 0; i < 1500; ++i) {
        std::string mixed = text;
        for (int moves = 0; moves < 3; ++moves) {
            const size_t from = 22 + random() % (text.size() - 22);
            const size_t to = 22 + random() % (text.size() - 22);
            mixed.insert(to, text.substr(from, 1 + random() % 60));
        }
        LoadText(mixed);
        Forget();
    }
    ExpectNothingLost();
}

// -- other bytes ------------------------------------------------------------------------------

TEST_P(BadInput, RandomBytesAreNoFile) {
    std::mt19937 random(3);
    for (int i = 0; i < 300; ++i) {
        std::string bytes(random() % 3000, '\0');
        for (char& c : bytes)
            c = static_cast<char>(random());
        EXPECT_FALSE(LoadText(bytes));
        EXPECT_GE(Errors().size(), 1u);
        LoadText(Wrap(bytes));
        Forget();
    }
    ExpectNothingLost();
}

TEST_P(BadInput, FlippedBytesDoNoHarm) {
    const std::string text = Wrap(GetParam().good);
    std::mt19937 random(4);
    for (int i = 0; i < 1500; ++i) {
        std::string flipped = text;
        for (int flips = 0; flips < 4; ++flips)
            flipped[22 + random() % (text.size() - 22)] = "<>/'\"=&;! -\n\0x\xff"[random() % 15];
        LoadText(flipped);
        Forget();
    }
    ExpectNothingLost();
}

TEST_P(BadInput, NulBytesEndTextsButNotTheFile) {
    const std::string nul(1, '\0');
    EXPECT_TRUE(LoadText(Wrap("<nonsense" + nul + " a='" + nul + "'/>" + nul + GetParam().good)));
    ExpectNothingLost();
    EXPECT_TRUE(OviTemplateManager_GetTemplate("Bad") || OviAssetManager_GetAsset("y"));
}

} // namespace
