#include "instances/GeometryInstance.h"

#include <cstdint>
#include <cstring>

#include <gtest/gtest.h>

#include "instances/Instance.h"
#include "types/FloatType.h"
#include "types/IntType.h"

namespace Kor {

namespace {

/// A geometry of two levels in an instance. The parts that hosts do not reach.
class GeometryInstanceTest : public ::testing::Test {
protected:
    GeometryInstanceTest() {
        shape.AddAlternate(&high);
        shape.AddAlternate(&low);
    }

    void SetTypes(Type& highType, Type& lowType) {
        high.SetType(&highType);
        low.SetType(&lowType);
    }

    IntType<std::int32_t> int32{"INT32", 1, 4};
    IntType<std::int16_t> int16{"INT16", 1, 2};
    FloatType<double> real{"DOUBLE", 1, 8};
    LOD highLevel{"High"};
    LOD lowLevel{"Low"};
    GeometryAlternate high{&highLevel, 1};
    GeometryAlternate low{&lowLevel, 1};
    GeometryProperty shape{"shape", 1};
    Instance owner{"owner"};
};

TEST_F(GeometryInstanceTest, ItsSizeIsTheSumUnlessANodeHasNone) {
    SetTypes(int32, real);
    EXPECT_EQ(GeometryInstance(owner, shape).GetBinarySize(), 12);
    low.SetType(nullptr);
    EXPECT_EQ(GeometryInstance(owner, shape).GetBinarySize(), 0);
    GeometryProperty none("none", 1);
    EXPECT_EQ(GeometryInstance(owner, none).GetBinarySize(), 0);
}

TEST_F(GeometryInstanceTest, ABlockTooSmallForTheCountIsLeftAlone) {
    SetTypes(int32, int32);
    const GeometryInstance geometry(owner, shape);
    char block[4] = {7, 7, 7, 7};
    EXPECT_EQ(geometry.WriteToBinary(block, 3), 0);
    EXPECT_EQ(geometry.WriteToBinary(block, 0), 0);
    EXPECT_EQ(geometry.WriteToBinary(block, -1), 0);
    EXPECT_EQ(std::string(block, 4), "\7\7\7\7");
    EXPECT_EQ(geometry.WriteToBinary(block, 4), 4);
    EXPECT_EQ(block[0], 2);
}

// The nodes have no places of their own in the packed form, so only the count counts.
TEST_F(GeometryInstanceTest, WritesTheCountAndTheNodesOneOverTheOther) {
    SetTypes(int32, int16);
    GeometryInstance geometry(owner, shape);
    const std::int32_t first = 0x11223344;
    const std::int16_t second = 0x5566;
    geometry.GetNodeInstanceAt(0)->SetValue(&first);
    geometry.GetNodeInstanceAt(1)->SetValue(&second);
    alignas(8) unsigned char block[12];
    std::memset(block, 0xEE, sizeof block);
    EXPECT_EQ(geometry.WriteToBinary(block, sizeof block), 4);
    const unsigned char expected[12] = {2, 0, 0, 0, 0x66, 0x55, 0x22, 0x11, 0xEE, 0xEE, 0xEE, 0xEE};
    EXPECT_EQ(std::memcmp(block, expected, sizeof block), 0);
}

TEST_F(GeometryInstanceTest, ValuesWithoutRoomAreNotWritten) {
    SetTypes(real, real);
    GeometryInstance geometry(owner, shape);
    const double value = 1.5;
    geometry.GetNodeInstanceAt(0)->SetValue(&value);
    unsigned char block[8] = {};
    EXPECT_EQ(geometry.WriteToBinary(block, 8), 4);
}

TEST_F(GeometryInstanceTest, AsksEachNodeForPaddingWithTheLargestSoFar) {
    SetTypes(int32, real);
    const GeometryInstance geometry(owner, shape);
    EXPECT_EQ(geometry.GetPadding(0), 0);
    EXPECT_EQ(geometry.GetPadding(4), 0);
    EXPECT_EQ(geometry.GetPadding(5), 5) << "3 for the first; the second is asked with 3";
}

} // namespace

} // namespace Kor
