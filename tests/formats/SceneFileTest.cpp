#include "formats/SceneFile.h"

#include <string>

#include <gtest/gtest.h>

#include "core/ByteStreams.h"
#include "support/WithManagers.h"

using namespace Kor;

namespace {

class SceneFileTest : public WithManagers {};

/// A sink that takes so many bytes and then fails.
class NarrowSink : public ByteSink {
public:
    explicit NarrowSink(size_t room) : room_(room) {}
    bool Write(std::string_view bytes) override {
        const bool fits = bytes.size() <= room_;
        room_ -= fits ? bytes.size() : room_;
        return fits;
    }

private:
    size_t room_;
};

} // namespace

TEST_F(SceneFileTest, ReplacesWhatFollowsTheLastDot) {
    EXPECT_EQ(SceneFile::ForceExtension("level1.xml"), "level1.asset");
    EXPECT_EQ(SceneFile::ForceExtension("level1"), "level1.asset");
    EXPECT_EQ(SceneFile::ForceExtension("a.b.c"), "a.b.asset");
    EXPECT_EQ(SceneFile::ForceExtension("levels.old\\scene"), "levels.asset");
    EXPECT_EQ(SceneFile::ForceExtension(".hidden"), ".hidden.asset");
    EXPECT_EQ(SceneFile::ForceExtension("."), "..asset");
    EXPECT_EQ(SceneFile::ForceExtension(".."), "..asset");
    EXPECT_EQ(SceneFile::ForceExtension(""), ".asset");
    EXPECT_EQ(SceneFile::ForceExtension(nullptr), ".asset");
}

TEST_F(SceneFileTest, ReadsAndWritesAnyStream) {
    MemorySource source("<?xml version='1.0'?><assets><asset name='b'/><asset name='a'/></assets>");
    EXPECT_TRUE(SceneFile::Read("memory", source));
    StringSink sink;
    EXPECT_TRUE(SceneFile::Write(sink));
    EXPECT_EQ(sink.GetText(), "<?xml version='1.0' encoding='UTF-8'?>\n<assets>"
                              "\n\t<asset name='a'/>\n\t<asset name='b'/>\n</assets>");
}

TEST_F(SceneFileTest, TellsWhenAStreamDoesNotTakeTheWholeScene) {
    for (int i = 0; i < 5000; ++i)
        Scene().NewAsset(nullptr);
    StringSink whole;
    ASSERT_TRUE(SceneFile::Write(whole));
    const size_t size = whole.GetText().size();
    for (size_t room : {size_t(0), size_t(1), size / 2, size - 1}) {
        NarrowSink narrow(room);
        EXPECT_FALSE(SceneFile::Write(narrow)) << room;
    }
    NarrowSink wide(size);
    EXPECT_TRUE(SceneFile::Write(wide));
}
