// A disk that is full, or a write that fails at any byte: the old file stays whole, the fault is
// reported and the result is false.

#include <filesystem>
#include <fstream>
#include <iterator>
#include <utility>

#include <gtest/gtest.h>

#include "faults/FaultTables.h"
#include "faults/Model.h"
#include "support/FileSizeLimit.h"

#include <sys/mount.h>

namespace {

namespace fs = std::filesystem;

std::string ReadFile(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

bool SaveScene(const std::string& path) {
    return OviAssetManager_SaveScene(path.c_str());
}

bool SaveSchema(const std::string& path) {
    return OviTemplateManager_SaveTemplateFile(Model::SchemaFile().c_str(), path.c_str());
}

/// A directory of its own with one file in it, which a model is saved over.
class FileFault : public ::testing::Test {
protected:
    using Save = bool (*)(const std::string& path);

    void Begin(const std::string& file) {
        path_ = file;
        fs::create_directories(Directory());
        PutOld();
    }

    fs::path Directory() const { return fs::path(path_).parent_path(); }
    void PutOld() const { std::ofstream(path_, std::ios::binary) << "the old text"; }

    void ExpectFailure(Save save) const {
        OviErrorManager_Clear();
        EXPECT_FALSE(save(path_));
        EXPECT_EQ(ReadFile(path_), "the old text");
        EXPECT_EQ(std::distance(fs::directory_iterator(Directory()), fs::directory_iterator()), 1);
        EXPECT_EQ(OviErrorManager_GetErrorItemCount(OVI_LEVEL_ERROR), 1);
        OviErrorItem* item = OviErrorManager_GetErrorItemAt(0);
        EXPECT_STREQ(OviErrorItem_GetMessage(item), "Unable to open file for writing");
        EXPECT_EQ(OviErrorItem_GetSourceName(item), path_);
    }

    static void Note(const char* fault, long tried,
                     const char* outcome = "the old file is whole; reported, and false") {
        FaultTables::Note(FaultTables::kWrites, fault, tried, outcome);
    }

    /// Lets the file grow by one byte more each time, until it is whole.
    void FailAtEveryByte(const char* fault, Save save) {
        const Model model;
        ASSERT_TRUE(save(path_));
        const std::string fresh = ReadFile(path_);
        ASSERT_GT(fresh.size(), 1000u);
        PutOld();
        for (size_t size = 0; size < fresh.size() && !HasFailure(); ++size) {
            SCOPED_TRACE(size);
            const FileSizeLimit limit(size);
            ExpectFailure(save);
        }
        const FileSizeLimit limit(fresh.size());
        EXPECT_TRUE(save(path_));
        EXPECT_TRUE(ReadFile(path_) == fresh);
        Note(fault, static_cast<long>(fresh.size()));
    }

    std::string path_;
};

TEST_F(FileFault, LeavesTheOldSceneAtWhicheverByteWritingFails) {
    Begin(Model::Path("scenebytes/scene.asset"));
    FailAtEveryByte("A scene that may grow to 0, 1, 2, ... bytes", &SaveScene);
}

TEST_F(FileFault, LeavesTheOldTemplateFileAtWhicheverByteWritingFails) {
    Begin(Model::Path("schemabytes/schema.template"));
    FailAtEveryByte("A template file that may grow to 0, 1, 2, ... bytes", &SaveSchema);
}

/// A file system with room for a few pages, while it lives.
class SmallDisk {
public:
    explicit SmallDisk(const fs::path& directory) : directory_(directory) {
        fs::create_directories(directory);
        isMounted_ = mount("tmpfs", directory.c_str(), "tmpfs", 0, "size=16k") == 0;
    }
    ~SmallDisk() {
        if (isMounted_)
            umount(directory_.c_str());
    }
    bool IsMounted() const { return isMounted_; }

private:
    fs::path directory_;
    bool isMounted_ = false;
};

TEST_F(FileFault, LeavesTheOldSceneOnADiskThatFillsUp) {
    const SmallDisk disk(Model::Path("disk"));
    if (!disk.IsMounted())
        GTEST_SKIP() << "whoever runs this may not mount a disk";
    Begin(Model::Path("disk/scenes/scene.asset"));
    const Model model;
    for (int i = 0; i < 1000; ++i)
        OviAssetManager_NewAsset(nullptr);
    ExpectFailure(&SaveScene);
    Note("A scene larger than what is left of a disk", 1);
    OviAssetManager_NewScene();
    OviErrorManager_Clear();
    EXPECT_TRUE(SaveScene(path_)) << "what there is room for is still saved";
    EXPECT_EQ(OviErrorManager_GetErrorItemCount(OVI_LEVEL_ERROR), 0);
}

/// The device takes the place of the file, and stays.
TEST_F(FileFault, ReportsADeviceInThePlaceOfTheFile) {
    const Model model;
    for (const auto& [file, save] : {std::pair<const char*, Save>{"device/scene.asset", &SaveScene},
                                     {"device/schema.template", &SaveSchema}}) {
        const std::string path = Model::Path(file);
        fs::create_directories(fs::path(path).parent_path());
        fs::create_symlink("/dev/null", path);
        OviErrorManager_Clear();
        EXPECT_FALSE(save(path));
        EXPECT_EQ(OviErrorManager_GetErrorItemCount(OVI_LEVEL_ERROR), 1);
        EXPECT_STREQ(OviErrorItem_GetMessage(OviErrorManager_GetErrorItemAt(0)),
                     "Unable to open file for writing");
        EXPECT_TRUE(fs::is_symlink(path) && fs::is_character_file(path));
        Note("A device in the place of the file", 1, "reported, and false");
    }
}

} // namespace
