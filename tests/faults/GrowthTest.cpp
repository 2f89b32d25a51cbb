// How the work with many search paths, packages and files grows: by what the file system is asked
// and what is allocated, which no other load of the machine changes.

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <functional>
#include <string>

#include <gtest/gtest.h>

#include "faults/Allocations.h"
#include "faults/FileSystemCalls.h"
#include "faults/Model.h"
#include "ovi/ovi.h"

namespace {

namespace fs = std::filesystem;

class Growth : public ::testing::Test {
protected:
    static constexpr int kFew = 30;

    /// Makes the input of a size in an empty directory and begins the library; then calls, which is
    /// what counts. Tenfold input must take no more than about tenfold work.
    static void ExpectLinear(const std::function<void(int)>& prepare,
                             const std::function<bool(int)>& call) {
        const long few = CountWork(kFew, prepare, call);
        const long many = CountWork(10 * kFew, prepare, call);
        EXPECT_GE(few, kFew) << "it did not look";
        EXPECT_LE(many, 15 * few);
    }

    static std::string Directory() { return Model::Path("growth"); }

    /// Of one of many packages, in an order that is none; longer than what strings hold by
    /// themselves.
    static std::string PackageName(int i, int count) {
        return "a_package_with_a_long_name" + std::to_string(1000 + i * 37 % count);
    }

    /// A template file that uses all packages.
    static std::string UsingFile() { return Directory() + "/using.template"; }
    static void WriteUsingFile(int count) {
        std::ofstream file(UsingFile());
        file << "<?xml version='1.0'?>\n<templates>";
        for (int i = 0; i < count; ++i)
            file << "<using package='" << PackageName(i, count) << "'/>\n";
        file << "</templates>";
    }

    static void AddPath(const std::string& name) {
        OviTemplateManager_AddSearchPath((Directory() + "/" + name).c_str(), false);
    }
    static bool LoadUsingFile() { return OviTemplateManager_LoadTemplateFile(UsingFile().c_str()); }
    static int CountWarnings() { return OviErrorManager_GetErrorItemCount(OVI_LEVEL_WARNING); }

private:
    static long CountWork(int size, const std::function<void(int)>& prepare,
                          const std::function<bool(int)>& call) {
        fs::remove_all(Directory());
        fs::create_directories(Directory());
        Ovi_Initialize();
        prepare(size);
        FileSystemCalls::Begin();
        Allocations::Arm(0, Allocations::kOnce);
        EXPECT_TRUE(call(size));
        Allocations::Disarm();
        const long work = FileSystemCalls::GetCount() + Allocations::GetCount();
        Ovi_Terminate();
        fs::remove_all(Directory());
        return work;
    }
};

std::string Number(int value) {
    return std::to_string(value);
}

TEST_F(Growth, OfPackagesAlongSearchPathsIsLinear) {
    ExpectLinear(
        [](int size) {
            for (int i = 0; i < size; ++i) {
                fs::create_directories(Directory() + "/path" + Number(i) + "/" +
                                       PackageName(i, size));
                AddPath("path" + Number(i));
            }
            WriteUsingFile(size);
        },
        [](int) { return LoadUsingFile() && CountWarnings() == 0; });
}

TEST_F(Growth, OfPackagesInsideOfOneThatAllSearchPathsHaveIsLinear) {
    ExpectLinear(
        [](int size) {
            for (int i = 0; i < size; ++i) {
                fs::create_directories(Directory() + "/path" + Number(i) + "/studio/" +
                                       PackageName(i, size));
                AddPath("path" + Number(i));
            }
            std::ofstream file(UsingFile());
            file << "<?xml version='1.0'?>\n<templates>";
            for (int i = 0; i < size; ++i)
                file << "<using package='studio." << PackageName(i, size) << "'/>\n";
            file << "</templates>";
        },
        [](int) { return LoadUsingFile() && CountWarnings() == 0; });
}

TEST_F(Growth, OfSearchPathsInAnotherCaseIsLinear) {
    ExpectLinear(
        [](int size) {
            for (int i = 0; i < size; ++i) {
                fs::create_directories(Directory() + "/path" + Number(i) + "/" +
                                       PackageName(i, size));
                AddPath("PATH" + Number(i));
            }
        },
        [](int size) {
            return !OviTemplateManager_LoadTemplate("Missing") &&
                   OviTemplateManager_EnumeratePackages(false, nullptr, nullptr) == size;
        });
}

TEST_F(Growth, OfMissingPackagesBesideManyFilesIsLinear) {
    ExpectLinear(
        [](int size) {
            fs::create_directories(Directory() + "/library");
            for (int i = 0; i < size; ++i)
                std::ofstream(Directory() + "/library/a_file_with_a_long_name" + Number(i));
            AddPath("library");
            WriteUsingFile(size);
        },
        [](int size) { return LoadUsingFile() && CountWarnings() == size; });
}

TEST_F(Growth, OfAllPackagesOfALastSearchPathIsLinear) {
    ExpectLinear(
        [](int size) {
            for (int i = 0; i < size; ++i) {
                fs::create_directories(Directory() + "/last/" + PackageName(i, size));
                fs::create_directories(Directory() + "/path" + Number(i));
                AddPath("path" + Number(i));
            }
        },
        [](int) {
            OviTemplateManager_AddSearchPath((Directory() + "/last").c_str(), true);
            return true;
        });
}

} // namespace
