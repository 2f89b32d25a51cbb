// Saving where the file system lacks something, or where somebody foresaw the name of a text that
// is not complete yet.

#include "faults/FileSystemCalls.h"
#include "platform/FileNames.h"
#include "platform/FileTest.h"

#include <sys/stat.h>

namespace {

using namespace Kor;
namespace fs = std::filesystem;

class OutputFileFault : public FileTest {
protected:
    void TearDown() override {
        FileSystemCalls::RefuseUnnamedFiles(false);
        FileSystemCalls::ForeseeRandomBytes(-1);
    }

    /// The name that a text gets by random bytes of one value.
    static std::string NameFor(unsigned char byte) {
        TemporaryNameBytes random;
        random.fill(byte);
        return MakeTemporaryName(random);
    }
};

TEST_F(OutputFileFault, TakesTheProcesssMaskWhereThereAreNoFilesWithoutNames) {
    FileSystemCalls::RefuseUnnamedFiles(true);
    const long before = FileSystemCalls::GetRefusedCount();
    const mode_t previous = umask(0);
    for (const mode_t mask : {0027U, 0002U, 0077U}) {
        umask(mask);
        EXPECT_TRUE(WriteAll(At("file"), "text"));
        EXPECT_EQ(umask(0), mask) << "the process's own again";
        EXPECT_EQ(fs::status(root_ / "file").permissions(), fs::perms(0666 & ~mask));
        fs::remove(root_ / "file");
    }
    umask(previous);
    EXPECT_EQ(FileSystemCalls::GetRefusedCount(), before + 3);
}

TEST_F(OutputFileFault, WritesThroughNoLinkThatSomebodyPutInThePlaceOfTheText) {
    Put("victim", "untouched");
    fs::create_symlink("victim", root_ / NameFor(7));
    fs::create_symlink("missing", root_ / NameFor(8));
    Put(NameFor(9), "another's");
    FileSystemCalls::ForeseeRandomBytes(7);
    EXPECT_TRUE(WriteAll(At("file"), "new"));
    EXPECT_EQ(Get("file"), "new");
    EXPECT_EQ(Get("victim"), "untouched");
    EXPECT_EQ(Get(NameFor(9)), "another's");
    EXPECT_EQ(fs::read_symlink(root_ / NameFor(7)), "victim");
    EXPECT_EQ(fs::read_symlink(root_ / NameFor(8)), "missing");
    EXPECT_EQ(CountFiles(), 5) << "and nothing else is left";
}

TEST_F(OutputFileFault, GivesUpWhereEveryNameIsTaken) {
    for (int byte = 0; byte < 128; ++byte)
        Put(NameFor(static_cast<unsigned char>(byte)), "another's");
    FileSystemCalls::ForeseeRandomBytes(0);
    EXPECT_FALSE(WriteAll(At("file"), "new"));
    EXPECT_EQ(CountFiles(), 128);
}

} // namespace
