#include "core/BlockPool.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <set>
#include <vector>

using Kor::BlockPool;

namespace {

/// Takes blocks of a size and fills each with a byte of its own.
std::vector<void*> TakeMany(size_t size, int count) {
    std::vector<void*> blocks;
    for (int i = 0; i < count; ++i) {
        blocks.push_back(BlockPool::Take(size));
        std::memset(blocks.back(), i % 251, size);
    }
    return blocks;
}

void GiveAll(const std::vector<void*>& blocks, size_t size) {
    for (void* block : blocks)
        BlockPool::Give(block, size);
}

struct Small : Kor::Pooled {
    explicit Small(int& count) : count_(count) { ++count_; }
    virtual ~Small() { --count_; }
    int& count_;
};

struct Larger : Small {
    using Small::Small;
    char more[100] = {};
};

TEST(BlockPool, BlocksDoNotOverlapAndAreAligned) {
    for (const size_t size : {1u, 15u, 16u, 17u, 100u, 256u, 257u, 5000u}) {
        const std::vector<void*> blocks = TakeMany(size, 3000);
        for (size_t i = 0; i < blocks.size(); ++i) {
            const auto* bytes = static_cast<const unsigned char*>(blocks[i]);
            EXPECT_EQ(reinterpret_cast<std::uintptr_t>(bytes) % alignof(std::max_align_t), 0u);
            ASSERT_EQ(bytes[0], i % 251) << size;
            ASSERT_EQ(bytes[size - 1], i % 251) << size;
        }
        GiveAll(blocks, size);
    }
}

TEST(BlockPool, BlocksGivenBackAreTakenAgain) {
    const std::vector<void*> blocks = TakeMany(48, 10000);
    for (size_t i = 0; i < blocks.size(); i += 2)
        BlockPool::Give(blocks[i], 48);
    std::set<void*> kept;
    for (size_t i = 1; i < blocks.size(); i += 2)
        kept.insert(blocks[i]);
    for (size_t i = 0; i < blocks.size(); i += 2) {
        void* again = BlockPool::Take(48);
        EXPECT_TRUE(kept.insert(again).second) << "a block in use was given out";
    }
    for (void* block : kept)
        BlockPool::Give(block, 48);
}

TEST(BlockPool, BlocksStandApartBeyondTheFirstPieces) {
    for (int round = 0; round < 2; ++round) { // the second time out of what was given back
        const std::vector<void*> blocks = TakeMany(240, 40000);
        for (size_t i = 0; i < blocks.size(); ++i) {
            const auto* bytes = static_cast<const unsigned char*>(blocks[i]);
            ASSERT_EQ(bytes[0], i % 251);
            ASSERT_EQ(bytes[239], i % 251);
        }
        GiveAll(blocks, 240);
    }
}

TEST(BlockPool, BlocksOfMegabytesAreServedToo) {
    constexpr size_t kSize = size_t{5} * 1024 * 1024;
    const std::vector<void*> blocks = TakeMany(kSize, 3);
    for (size_t i = 0; i < blocks.size(); ++i) {
        EXPECT_EQ(static_cast<const unsigned char*>(blocks[i])[0], i);
        EXPECT_EQ(static_cast<const unsigned char*>(blocks[i])[kSize - 1], i);
    }
    GiveAll(blocks, kSize);
}

TEST(BlockPool, NothingIsFreedByNull) {
    BlockPool::Give(nullptr, 16);
}

TEST(BlockPool, ObjectsOfDerivedClassesFindTheirWayBack) {
    int count = 0;
    std::vector<Small*> objects;
    for (int i = 0; i < 100; ++i) {
        objects.push_back(new Small(count));
        objects.push_back(new Larger(count));
    }
    EXPECT_EQ(count, 200);
    for (Small* object : objects)
        delete object;
    EXPECT_EQ(count, 0);
}

} // namespace
