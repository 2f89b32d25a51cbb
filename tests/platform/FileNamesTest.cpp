// Names of files, whatever the system.

#include "platform/FileNames.h"

#include <gtest/gtest.h>

#include <set>

using namespace Kor;

TEST(FileNames, ATemporaryNameHasAllOfItsChanceInIt) {
    std::set<std::string> names;
    TemporaryNameBytes random{};
    names.insert(MakeTemporaryName(random));
    for (unsigned char& byte : random) {
        for (int bit = 0; bit < 8; ++bit) {
            byte = static_cast<unsigned char>(1 << bit);
            EXPECT_TRUE(names.insert(MakeTemporaryName(random)).second);
        }
        byte = 0;
    }
}

TEST(FileNames, ATemporaryNameIsHiddenAndNoPath) {
    TemporaryNameBytes random{};
    for (int value = 0; value < 256; ++value) {
        random.fill(static_cast<unsigned char>(value));
        const std::string name = MakeTemporaryName(random);
        EXPECT_EQ(name.front(), '.');
        EXPECT_EQ(name.find_first_of("/\\:*?\"<>|"), std::string::npos) << name;
        for (const char c : name)
            EXPECT_TRUE(c > ' ' && c < 127) << name;
    }
}
