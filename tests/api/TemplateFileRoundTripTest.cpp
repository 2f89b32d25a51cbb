// A saved file, loaded into an empty registry, gives the same model.

#include <algorithm>
#include <iterator>
#include <map>
#include <random>
#include <set>
#include <utility>

#include "api/TemplateFileHost.h"

namespace {

class TemplateFileRoundTrip : public TemplateFileTest {};

// -- what a host changed ----------------------------------------------------------------------

TEST_F(TemplateFileRoundTrip, KeepsTextsThatAHostGaveTheLatestVersion) {
    Load("<!-- c --><template name='T'><label>one</label><attribute name='a' type='BOOL'/>"
         "<attribute name='b' type='BOOL' version='2'/><attribute name='c' type='BOOL' "
         "version='4'/></template>");
    OviNamedObject_SetLabel(Get("p.T", 4), "de", "vier");
    OviNamedObject_SetLabel(Get("p.T", 2), nullptr, "two");
    OviNamedObject_SetComment(Get("p.T", 4), "four");
    ExpectRoundTrip();
    EXPECT_STREQ(OviNamedObject_GetLabel(Get("p.T", 4), "de"), "vier");
    EXPECT_EQ(OviNamedObject_GetLabelCount(Get("p.T")), 1);
}

TEST_F(TemplateFileRoundTrip, KeepsWhatAHostGaveAnAttribute) {
    Load("<type name='V' type='FLOAT'/><template name='T'><attribute name='a' type='BOOL'/>"
         "</template>");
    OviAttributeProperty* attribute = OviAttributeProperty_New("b", 1);
    OviType* type = OviTemplateManager_GetType("INT32");
    OviAttributeProperty_SetType(attribute, type);
    // A maximum alone is not read without the others.
    int maximum = 7;
    OviAttributeProperty_SetMaxValue(attribute, OviType_NewValue(type, &maximum, 1));
    OviAttributeProperty_SetAutoBind(attribute, "'<&>\"");
    OviNamedObject_SetComment(attribute, "a --> b");
    ASSERT_GE(OviTemplate_AddProperty(Get("p.T"), attribute, 0), 0);
    const std::string text = SavedContent();
    EXPECT_NE(text.find("<!--a --&gt; b-->"), std::string::npos) << text;
    EXPECT_NE(text.find("<attribute name='b' type='INT32' default='0' min='0' max='7' "
                        "autoBind='&apos;&lt;&amp;&gt;&quot;'/>"),
              std::string::npos)
        << text;
    const std::string saved = Save();
    Restart();
    ASSERT_TRUE(LoadText(saved));
    ExpectRoundTrip();
    EXPECT_EQ(CommentOf(Attribute(Get("p.T"), "b")), "a --> b");
}

TEST_F(TemplateFileRoundTrip, KeepsTemplatesOfAHostInSeveralPackages) {
    path_ = PathOf("in/p/F.template");
    for (const char* name : {"a.T", "b.c.U", "V", "b.W"})
        OviType_SetFileName(OviTemplateManager_CreateTemplate(name), path_.c_str());
    ExpectRoundTrip();
    EXPECT_TRUE(Get("a.T") && Get("b.c.U") && Get("V") && Get("b.W"));
}

TEST_F(TemplateFileRoundTrip, KeepsAVersionThatAHostMade) {
    Load("<template name='T'><attribute name='a' type='BOOL' default='true'/></template>");
    ASSERT_TRUE(OviTemplateManager_CreateTemplateVersion("p.T", 7));
    ExpectRoundTrip();
    EXPECT_EQ(OviTemplate_GetLatestVersion(Get("p.T")), 7);
}

// -- awkward files ----------------------------------------------------------------------------

TEST_F(TemplateFileRoundTrip, KeepsBoundsOfTemplateTypesAndNamelessDefaults) {
    EXPECT_EQ(Load("<template name='A'/><template name='T'><attribute name='a' type='A' "
                   "default='p.A' min='' max='p.A'/><attribute name='b' type='A' default='none'/>"
                   "<attribute name='c' type='A' default='' min='p.A'><asset name='x'/>"
                   "</attribute></template>"),
              Lines{});
    ExpectRoundTrip();
}

TEST_F(TemplateFileRoundTrip, KeepsCommentsThatLookLikeMarkup) {
    EXPECT_EQ(Load("<!--&lt;!-- -&gt; ---><template name='T'/><!--line\n\tline--><template "
                   "name='U'/><!-- - -- ---><template name='V'/>"),
              Lines{});
    EXPECT_EQ(CommentOf(Get("p.T")), "<!-- -> -");
    EXPECT_EQ(CommentOf(Get("p.V")), " - -- -");
    ExpectRoundTrip();
}

TEST_F(TemplateFileRoundTrip, KeepsACustomTypeMadeOnTheSpot) {
    Load("<template name='T'><attribute name='a' type='x.Vec3'/><attribute name='b' "
         "type='Mat'/></template>");
    const std::string before = SchemaDump::Of(Directory() + "/in/");
    Save();
    Restart();
    ASSERT_TRUE(OviTemplateManager_LoadTemplateFile(PathOf("out/p/F.template").c_str()));
    EXPECT_EQ(SchemaDump::Of(Directory() + "/out/"), before);
    EXPECT_EQ(Errors(), (Lines{"2 3 Package not found: x",
                               "2 5 Unknown type 'x.Vec3', creating custom type dynamically",
                               "2 6 Unknown type 'Mat', creating custom type dynamically"}));
}

TEST_F(TemplateFileRoundTrip, EndsWithTemplatesThatContainEachOtherThroughVersions) {
    // The first version may contain what contains the second, which then shares the property.
    EXPECT_EQ(Load("<template name='T'><attribute name='n' type='BOOL' version='2'/></template>"
                   "<template name='U'><attribute name='t' type='T'/></template>"
                   "<template name='T'><attribute name='u' type='U'/></template>"),
              Lines{});
    const std::string text = SavedContent();
    EXPECT_NE(text.find("<attribute name='t' type='p.T'/>"), std::string::npos) << text;
    EXPECT_NE(text.find("<attribute name='u' type='p.U'/>"), std::string::npos) << text;
    EXPECT_GE(OviType_GetValueSize(Get("p.T", 2), nullptr, 1), 0);
}

TEST_F(TemplateFileRoundTrip, DefaultInstancesDoNotOutliveWhatTheyAreMadeOf) {
    Load("<template name='Z'><attribute name='z' type='BOOL'/></template><template name='A'>"
         "<attribute name='a' type='Z' default='p.Z' min='' max=''/></template><template name='M'>"
         "<attribute name='m' type='A' default='p.A'/><attribute name='s' type='M' reference='1' "
         "default='p.M'/></template>");
    auto** block = static_cast<OviInstance**>(
        OviAttributeProperty_GetDefaultValue(Attribute(Get("p.M"), "m")));
    ASSERT_TRUE(block && block[0]);
    EXPECT_TRUE(OviInstance_GetPropertyInstance(block[0], "A.a", true));
    Restart();
    EXPECT_FALSE(Get("p.M"));
}

TEST_F(TemplateFileRoundTrip, KeepsTheViewsOfVersionsThatDifferInTexts) {
    EXPECT_EQ(Load("<template name='T'><attribute name='a' type='BOOL'/><attribute name='b' "
                   "type='BOOL' version='2'/><label>1</label></template><template name='T'>"
                   "<label>2</label></template><view name='v' template='T'><property name='a'/>"
                   "</view><view name='w' template='T' version='2'/>"),
              Lines{});
    ExpectRoundTrip();
    OviView* view = OviTemplate_GetView(Get("p.T"), "v", false);
    ASSERT_TRUE(view);
    EXPECT_EQ(OviGroup_GetViewItemCount(view), 1);
    EXPECT_TRUE(OviTemplate_GetView(Get("p.T", 2), "w", false));
}

TEST_F(TemplateFileRoundTrip, KeepsTheViewsOfATemplateMadeByATypeElement) {
    EXPECT_EQ(Load("<template name='T'><attribute name='a' type='BOOL'/></template><type name='U' "
                   "type='T'/><!-- c --><view name='x' template='U'><label>X</label></view>"),
              Lines{});
    ExpectRoundTrip();
    OviView* view = OviTemplate_GetView(Get("p.U"), "x", false);
    ASSERT_TRUE(view);
    EXPECT_EQ(CommentOf(view), " c ");
    EXPECT_STREQ(OviNamedObject_GetLabel(view, nullptr), "X");
}

TEST_F(TemplateFileRoundTrip, KeepsTheCommentOfADefaultAsset) {
    EXPECT_EQ(Load("<template name='A'/><!-- a --><template name='T'><!-- b --><attribute name='a' "
                   "type='A'><!-- d --><asset name='x'/></attribute><attribute name='b' type='A'>"
                   "<!----><asset name='y'/></attribute></template>"),
              Lines{});
    ExpectRoundTrip();
    const auto commentOfDefault = [](const char* name) {
        void* block = OviAttributeProperty_GetDefaultValue(Attribute(Get("p.T"), name));
        return CommentOf(static_cast<OviInstance**>(block)[0]);
    };
    EXPECT_EQ(commentOfDefault("a"), " d ");
    EXPECT_EQ(commentOfDefault("b"), "");
}

// -- random files -----------------------------------------------------------------------------

/// Writes files with several templates, each in several elements with properties of every kind,
/// parents and texts of three versions in any order, and views behind them.
class RandomFile {
public:
    explicit RandomFile(unsigned seed) : random_(seed) {}

    std::string Write() {
        text_ = "<type name='V' type='FLOAT' dim='3'/>\n<lod name='High' type='collision'>"
                "<shape type='cube'/></lod>\n";
        Comment();
        text_ += "<lod name='Low'/>\n";
        Comment();
        text_ += "<enum name='E' type='INT32'>";
        Comment();
        text_ += "<item name='A' value='1'/><item name='B' value='2'/></enum>\n";
        for (template_ = 0; template_ < 4; ++template_) {
            for (int elements = 1 + Below(3); elements > 0; --elements)
                WriteTemplate();
        }
        for (int views = Below(5); views > 0; --views)
            WriteView();
        return text_;
    }

private:
    int Below(int limit) { return static_cast<int>(random_() % static_cast<unsigned>(limit)); }
    bool OneIn(int count) { return Below(count) == 0; }
    std::string Digit(int limit, int first = 0) { return std::to_string(first + Below(limit)); }

    void Comment() {
        if (OneIn(3))
            text_ += "<!-- " + Digit(100) + " -->\n";
        else if (OneIn(4))
            text_ += "<!---->\n";
    }

    void WriteTemplate() {
        Comment();
        text_ += "<template name='T" + std::to_string(template_) + "'>\n";
        for (int contents = Below(6); contents > 0; --contents) {
            Comment();
            if (template_ > 0 && OneIn(4))
                text_ += "<extends template='T" + Digit(template_) + "' templateVersion='1' " +
                         "version='" + Version() + "'/>\n";
            else if (OneIn(2))
                WriteAttribute();
            else
                WriteOther();
        }
        text_ += "</template>\n";
    }

    void WriteAttribute() {
        const bool reference = OneIn(4);
        const std::string type = reference || (template_ > 0 && OneIn(5))
                                     ? "T" + Digit(reference ? template_ + 1 : template_)
                                     : kTypes[static_cast<size_t>(Below(7))];
        text_ +=
            "<attribute" + Name() + " type='" + type + "'" + (reference ? " reference='true'" : "");
        if (OneIn(3))
            text_ += " default='" + Digit(4) + "'" + (OneIn(2) ? " min='0' max='9'" : "");
        text_ += OneIn(5) ? " autoBind='x'>" : ">";
        Label();
        Comment();
        Command();
        text_ += "</attribute>\n";
    }

    /// A node, an anchor or a geometry.
    void WriteOther() {
        const std::string kind = std::vector<std::string>{"node", "anchor", "geometry"}.at(
            static_cast<size_t>(Below(3)));
        text_ += "<" + kind + Name();
        if (kind == "anchor" && OneIn(2))
            text_ += " child='true'";
        if (kind != "geometry" && OneIn(2))
            text_ += " ancestor='T" + Digit(4) + "' distance='" + Digit(3) + "'";
        text_ += ">";
        Label();
        for (const char* level : {"Low", "High"}) {
            if (kind != "geometry" || OneIn(2))
                continue;
            Comment();
            text_ += "<alternate lod='" + std::string(level) + "' version='" + Digit(3, 1) + "'/>";
        }
        Command();
        text_ += "</" + kind + ">\n";
    }

    /// Views stand behind all properties: one that is defined anew later would be another one when
    /// the views are read from the saved file.
    void WriteView() {
        const int owner = Below(4);
        const std::set<int> versions = versions_[owner];
        const int version = *std::next(versions.begin(), Below(static_cast<int>(versions.size())));
        Comment();
        text_ += "<view name='v" + Digit(3) + "' template='T" + std::to_string(owner) +
                 "' version='" + std::to_string(version) + "'>";
        WriteItems(owner, version, 3);
        text_ += "</view>\n";
    }

    void WriteItems(int owner, int version, int depth) {
        Label();
        for (int items = Below(4); items > 0; --items) {
            Comment();
            const int name = Below(4);
            if (depth > 0 && OneIn(2)) {
                text_ += "<group name='g" + Digit(9) + "'>";
                WriteItems(owner, version, depth - 1);
                text_ += "</group>";
            } else if (introduced_.count({owner, name}) > 0 &&
                       introduced_[{owner, name}] <= version) {
                text_ += "<property name='" + NameOf(name, owner) + "'>";
                Label();
                text_ += "</property>";
            }
        }
    }

    void Label() {
        if (OneIn(5))
            text_ += "<label language='de'>" + Digit(9) + "</label>";
    }

    void Command() {
        if (OneIn(5))
            text_ += "<command execute='c" + Digit(3) + "' notification='BindingChanged'/>";
    }

    // Names differ from template to template: a name in a parent would hide older ones of it, and
    // whether it does depends on when the parent got it, which an ordered file cannot say.
    std::string Name() {
        const int name = Below(4);
        const std::string version = Version();
        int& first = introduced_.emplace(std::pair(template_, name), 3).first->second;
        first = std::min(first, std::stoi(version));
        return " name='" + NameOf(name, template_) + "' version='" + version + "'";
    }

    static std::string NameOf(int name, int owner) {
        return static_cast<char>('a' + name) + std::to_string(owner);
    }

    /// A version of the open template, which then exists.
    std::string Version() {
        const std::string version = Digit(3, 1);
        versions_[template_].insert(std::stoi(version));
        return version;
    }

    static inline const std::vector<std::string> kTypes = {"FLOAT", "INT32", "STRING", "BOOL",
                                                           "INT8",  "V",     "E"};
    std::mt19937 random_;
    std::string text_;
    int template_ = 0;
    std::map<int, std::set<int>> versions_{{0, {1}}, {1, {1}}, {2, {1}}, {3, {1}}};
    std::map<std::pair<int, int>, int> introduced_; // the lowest version of each name
};

TEST_F(TemplateFileRoundTrip, KeepsRandomHistoriesOfVersions) {
    const int kFiles = 300;
    int tried = 0;
    for (unsigned seed = 0; tried < kFiles && !HasFailure(); ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        Restart();
        const std::string content = RandomFile(seed).Write();
        // Parents that a version does not have yet, and containment in a circle, are faults.
        if (!Load(content).empty())
            continue;
        ++tried;
        ExpectRoundTrip();
        if (HasFailure())
            std::cout << content;
    }
}

} // namespace
