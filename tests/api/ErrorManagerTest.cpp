// The collector of diagnostics.

#include "api/Host.h"

namespace {

class ErrorManagerTest : public HostTest {
protected:
    static void Add(int level, const char* message = "message") {
        OviErrorManager_AddErrorItem(level, "file", 1, message);
    }

    /// How the counts for the four level bits stand.
    static std::vector<int> Counts() {
        std::vector<int> counts;
        for (const int bit : {1, 2, 4, 8})
            counts.push_back(OviErrorManager_GetErrorItemCount(bit));
        return counts;
    }
};

using Counters = std::vector<int>;

TEST_F(ErrorManagerTest, KeepsWhatItIsGiven) {
    OviErrorManager_AddErrorItem(OVI_LEVEL_WARNING, "C:\\a\\b.template", 12, "Something's wrong");
    OviErrorItem* item = OviErrorManager_GetErrorItemAt(0);
    ASSERT_NE(item, nullptr);
    EXPECT_EQ(OviErrorItem_GetErrorLevel(item), 2);
    EXPECT_STREQ(OviErrorItem_GetSourceName(item), "C:\\a\\b.template");
    EXPECT_EQ(OviErrorItem_GetLineNumber(item), 12);
    EXPECT_STREQ(OviErrorItem_GetMessage(item), "Something's wrong");
}

TEST_F(ErrorManagerTest, CopiesTexts) {
    std::string source = "source";
    std::string message = "message";
    OviErrorManager_AddErrorItem(1, source.c_str(), -1, message.c_str());
    source = message = "xxxxxxx";
    EXPECT_STREQ(OviErrorItem_GetSourceName(OviErrorManager_GetErrorItemAt(0)), "source");
    EXPECT_EQ(Errors(), std::vector<std::string>{"1 -1 message"});
}

TEST_F(ErrorManagerTest, TakesNullTextsAsEmpty) {
    OviErrorManager_AddErrorItem(1, nullptr, 3, nullptr);
    EXPECT_STREQ(OviErrorItem_GetSourceName(OviErrorManager_GetErrorItemAt(0)), "");
    EXPECT_STREQ(OviErrorItem_GetMessage(OviErrorManager_GetErrorItemAt(0)), "");
}

TEST_F(ErrorManagerTest, CountsByLevelAndListsByPosition) {
    Add(1, "first");
    Add(2, "second");
    Add(1, "third");
    EXPECT_EQ(OviErrorManager_GetErrorItemCount(1), 2);
    EXPECT_EQ(OviErrorManager_GetErrorItemCount(2), 1);
    EXPECT_EQ(OviErrorManager_GetErrorItemCount(3), 3);
    EXPECT_EQ(OviErrorManager_GetErrorItemCount(0), 0);
    EXPECT_STREQ(OviErrorItem_GetMessage(OviErrorManager_GetErrorItemAt(1)), "second");
    EXPECT_EQ(Errors(), (std::vector<std::string>{"1 1 first", "2 1 second", "1 1 third"}));
}

TEST_F(ErrorManagerTest, CountsSeveralBitsUnderEach) {
    Add(3);
    EXPECT_EQ(Counts(), (Counters{1, 1, 0, 0}));
    EXPECT_EQ(OviErrorManager_GetErrorItemCount(3), 2);
    Add(15);
    EXPECT_EQ(Counts(), (Counters{2, 2, 1, 1}));
    EXPECT_EQ(OviErrorManager_GetErrorItemCount(15), 6);
    Add(-1);
    EXPECT_EQ(Counts(), (Counters{3, 3, 2, 2}));
}

TEST_F(ErrorManagerTest, StoresItemsWithoutALevelBitUncounted) {
    Add(0, "zero");
    Add(16, "sixteen");
    EXPECT_EQ(Counts(), (Counters{0, 0, 0, 0}));
    EXPECT_EQ(Errors(), (std::vector<std::string>{"0 1 zero", "16 1 sixteen"}));
}

TEST_F(ErrorManagerTest, IgnoresOtherBitsOfTheMask) {
    Add(1);
    Add(4);
    Add(8);
    EXPECT_EQ(OviErrorManager_GetErrorItemCount(16 | 4), 1);
    EXPECT_EQ(OviErrorManager_GetErrorItemCount(-1), 3);
    EXPECT_EQ(OviErrorManager_GetErrorItemCount(~1), 2);
}

TEST_F(ErrorManagerTest, ForgetsEverythingWhenCleared) {
    for (const int level : {1, 2, 4, 8, 0})
        Add(level);
    OviErrorManager_Clear();
    EXPECT_EQ(Counts(), (Counters{0, 0, 0, 0}));
    EXPECT_EQ(OviErrorManager_GetErrorItemAt(0), nullptr);
    Add(2);
    EXPECT_EQ(Counts(), (Counters{0, 1, 0, 0}));
}

TEST_F(ErrorManagerTest, GivesNullOutsideTheList) {
    Add(1);
    for (const int index : {-1, 1, 1000000})
        EXPECT_EQ(OviErrorManager_GetErrorItemAt(index), nullptr);
}

TEST_F(ErrorManagerTest, KeepsItemsWhereTheyAreWhileOthersCome) {
    Add(1, "first");
    OviErrorItem* first = OviErrorManager_GetErrorItemAt(0);
    const char* message = OviErrorItem_GetMessage(first);
    for (int i = 0; i < 1000; ++i)
        Add(1);
    EXPECT_EQ(OviErrorManager_GetErrorItemAt(0), first);
    EXPECT_STREQ(message, "first");
}

TEST_F(ErrorManagerTest, HearsOfAFileThatCannotBeOpened) {
    const std::string path = PathOf("missing.template");
    EXPECT_FALSE(OviTemplateManager_LoadTemplateFile(path.c_str()));
    EXPECT_EQ(Errors(),
              std::vector<std::string>{"1 -1 Unable to open file '" + path + "' for reading"});
    EXPECT_STREQ(OviErrorItem_GetSourceName(OviErrorManager_GetErrorItemAt(0)), path.c_str());
}

TEST_F(ErrorManagerTest, AccumulatesOverSuccessiveLoads) {
    const std::string path = PathOf("missing.template");
    OviTemplateManager_LoadTemplateFile(path.c_str());
    OviTemplateManager_LoadTemplateFile(path.c_str());
    EXPECT_EQ(OviErrorManager_GetErrorItemCount(OVI_LEVEL_ERROR), 2);
}

} // namespace
