#include "api/SceneHost.h"

namespace {

class FileReferenceTest : public SceneTest {
protected:
    void SetUp() override {
        SceneTest::SetUp();
        a_ = OviAssetManager_NewAsset("a");
        b_ = OviAssetManager_NewAsset("b");
        StartRecording();
    }

    OviAsset* a_ = nullptr;
    OviAsset* b_ = nullptr;
};

} // namespace

TEST_F(FileReferenceTest, IsEmptyAtFirst) {
    EXPECT_STREQ(OviAsset_GetReference(a_), "");
    EXPECT_EQ(OviAsset_GetAssetNode(a_), nullptr);
}

TEST_F(FileReferenceTest, IsAnnouncedBeforeTheFile) {
    EXPECT_TRUE(OviAsset_SetReference(a_, "file"));
    EXPECT_STREQ(OviAsset_GetReference(a_), "file");
    EXPECT_EQ(Events(), (Lines{"0x100A a file", "0x1008 a file"}));
}

TEST_F(FileReferenceTest, AnnouncesAFileOnceForAllItsAssets) {
    OviAsset_SetReference(a_, "file");
    OviAsset_SetReference(b_, "file");
    OviAsset_SetReference(a_, "");
    OviAsset_SetReference(b_, "");
    EXPECT_EQ(Events(), (Lines{"0x100A a file", "0x1008 a file", "0x100A b file", "0x100A a ",
                               "0x100A b ", "0x1009 b file"}));
}

TEST_F(FileReferenceTest, LetsGoOfTheOldFileBeforeItTakesTheNew) {
    OviAsset_SetReference(a_, "old");
    TakeEvents();
    OviAsset_SetReference(a_, "new");
    EXPECT_EQ(Events(), (Lines{"0x100A a new", "0x1009 a old", "0x1008 a new"}));
}

TEST_F(FileReferenceTest, IsNotAnnouncedAsAFileAgainOnceLetGo) {
    OviAsset_SetReference(a_, "file");
    OviAsset_SetReference(a_, "");
    TakeEvents();
    OviAsset_SetReference(a_, "file"); // not announced: the file stays known
    OviAsset_SetReference(a_, "");
    EXPECT_EQ(Events(), (Lines{"0x100A a file", "0x100A a ", "0x1009 a file"}));
}

TEST_F(FileReferenceTest, SetToItselfIsLetGoAndTakenAgain) {
    OviAsset_SetReference(a_, "a file name that is longer than short texts are");
    TakeEvents();
    const std::string file = OviAsset_GetReference(a_);
    EXPECT_TRUE(OviAsset_SetReference(a_, OviAsset_GetReference(a_)));
    EXPECT_EQ(OviAsset_GetReference(a_), file);
    EXPECT_EQ(Events(), (Lines{"0x100A a " + file, "0x1009 a " + file}));
}

TEST_F(FileReferenceTest, TakesFileNamesAsTheyAre) {
    OviAsset_SetReference(a_, "File");
    OviAsset_SetReference(b_, "file");
    EXPECT_EQ(Events(),
              (Lines{"0x100A a File", "0x1008 a File", "0x100A b file", "0x1008 b file"}));
}

TEST_F(FileReferenceTest, ReadsNullAsEmpty) {
    OviAsset_SetReference(a_, "file");
    TakeEvents();
    EXPECT_TRUE(OviAsset_SetReference(a_, nullptr));
    EXPECT_STREQ(OviAsset_GetReference(a_), "");
    EXPECT_EQ(Events(), (Lines{"0x100A a ", "0x1009 a file"}));
}

TEST_F(FileReferenceTest, ShowsCallbacksTheOldReferenceUntilTheFileIsReferenced) {
    OviAsset_SetReference(a_, "old");
    Lines seen;
    const Reaction look([&](OviObject*, int, void*) { seen.push_back(OviAsset_GetReference(a_)); });
    OviAsset_SetReference(a_, "new");
    EXPECT_EQ(seen, (Lines{"old", "old", "new"}));
}

TEST_F(FileReferenceTest, StaysAsGivenWhateverCallbacksDo) {
    OviAsset_SetReference(a_, "old");
    {
        const Reaction interfere([&](OviObject*, int event, void* argument) {
            if (event != OVI_EVENT_REFERENCE_CHANGED)
                return;
            static_cast<char*>(argument)[0] = '#';
            OviAsset_SetReference(a_, "between");
        });
        OviAsset_SetReference(a_, "new");
    }
    EXPECT_STREQ(OviAsset_GetReference(a_), "new");
    // The file in between was let go again: the next reference to it is the only one.
    OviAsset_SetReference(b_, "between");
    TakeEvents();
    OviAsset_SetReference(b_, "");
    EXPECT_EQ(Events(), (Lines{"0x100A b ", "0x1009 b between"}));
}

TEST_F(FileReferenceTest, IsCountedOnceWhateverCallbacksDoWhenAFileIsLetGo) {
    OviAsset_SetReference(a_, "old");
    {
        const Reaction interfere([&](OviObject*, int event, void*) {
            if (event == OVI_EVENT_UNREFERENCE_FILE)
                OviAsset_SetReference(a_, "between");
        });
        OviAsset_SetReference(a_, "new");
    }
    EXPECT_STREQ(OviAsset_GetReference(a_), "new");
    for (const std::string file : {"between", "old", "new"}) {
        OviAsset_SetReference(a_, "");
        OviAsset_SetReference(b_, file.c_str());
        TakeEvents();
        OviAsset_SetReference(b_, "");
        EXPECT_EQ(Events(), (Lines{"0x100A b ", "0x1009 b " + file}));
    }
}

TEST_F(FileReferenceTest, IsLetGoByACallbackThatClearsItMeanwhile) {
    OviAsset_SetReference(a_, "old");
    {
        const Reaction clear([&](OviObject*, int event, void*) {
            if (event == OVI_EVENT_UNREFERENCE_FILE)
                OviAsset_SetReference(a_, "");
        });
        OviAsset_SetReference(a_, "");
    }
    OviAsset_SetReference(b_, "old");
    TakeEvents();
    OviAsset_SetReference(b_, "");
    EXPECT_EQ(Events(), (Lines{"0x100A b ", "0x1009 b old"}));
}

TEST_F(FileReferenceTest, OutlivesTheAssetAndTheScene) {
    OviAsset_SetReference(a_, "file");
    OviAssetManager_NewScene();
    EXPECT_EQ(TakeEvents().size(), 2u);
    OviAsset_SetReference(OviAssetManager_NewAsset("c"), "file");
    EXPECT_EQ(Events(), (Lines{"0x1005 c 0", "0x100A c file"}));
}

TEST_F(FileReferenceTest, ComesFromScenesWithItsEvents) {
    EXPECT_TRUE(Load("<asset name='c' reference='file'/><asset name='a' reference='file'/>"
                     "<asset name='a' reference=''/>"));
    EXPECT_EQ(Events(), (Lines{"0x1005 c 2", "0x100A c file", "0x1008 c file", "0x100A a file",
                               "0x100A a "}));
    EXPECT_STREQ(OviAsset_GetReference(OviAssetManager_GetAsset("c")), "file");
}

TEST_F(FileReferenceTest, IsNotWrittenWithTheScene) {
    OviAsset_SetReference(a_, "file");
    EXPECT_EQ(XMLOf(a_), "\n<asset name='a'/>");
}

TEST_F(FileReferenceTest, OfNullDoesNothing) {
    EXPECT_FALSE(OviAsset_SetReference(nullptr, "file"));
    EXPECT_STREQ(OviAsset_GetReference(nullptr), "");
    EXPECT_EQ(OviAsset_GetAssetNode(nullptr), nullptr);
    EXPECT_TRUE(Events().empty());
}
