// What the pool asks of the heap, and what it gives back.

#include <cstddef>
#include <cstdlib>
#include <new>
#include <set>
#include <vector>

#include <gtest/gtest.h>

#include "core/BlockPool.h"

#if !defined(__SANITIZE_ADDRESS__) && !defined(OVI_NO_POOL) // else every block comes from the heap

namespace {

long heapBlocks = 0;
long heapCalls = 0;
bool heapIsEmpty = false;

/// What the heap gave, or failed to give.
void* Count(void* memory) {
    if (!memory)
        throw std::bad_alloc();
    ++heapBlocks;
    ++heapCalls;
    return memory;
}

} // namespace

void* operator new(std::size_t size) {
    return Count(heapIsEmpty ? nullptr : std::malloc(size == 0 ? 1 : size));
}
void operator delete(void* memory) noexcept {
    heapBlocks -= memory ? 1 : 0;
    std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
    operator delete(memory);
}

#ifndef _WIN32 // where large pages are like all others
void* operator new(std::size_t size, std::align_val_t alignment) {
    const auto step = static_cast<std::size_t>(alignment);
    return Count(heapIsEmpty ? nullptr : std::aligned_alloc(step, (size + step - 1) / step * step));
}
void operator delete(void* memory, std::align_val_t) noexcept {
    operator delete(memory);
}
void operator delete(void* memory, std::size_t, std::align_val_t) noexcept {
    operator delete(memory);
}
#endif

namespace {

using Kor::BlockPool;

TEST(BlockPoolMemory, ASingleObjectIsMadeAgainWithoutTheHeap) {
    constexpr size_t kSize = 192;
    BlockPool::Give(BlockPool::Take(kSize), kSize);
    const long before = heapCalls;
    BlockPool::Give(BlockPool::Take(kSize), kSize);
    EXPECT_EQ(heapCalls, before);
}

TEST(BlockPoolMemory, AllButOnePieceIsGivenBackOnceNoBlockIsInUse) {
    constexpr size_t kSize = 208;
    std::vector<void*> blocks(3000);
    BlockPool::Give(BlockPool::Take(kSize), kSize); // the piece that stays
    const long before = heapBlocks;
    for (int round = 0; round < 2; ++round) {
        for (void*& block : blocks)
            block = BlockPool::Take(kSize);
        EXPECT_GT(heapBlocks, before + 5);
        EXPECT_LT(heapBlocks, before + 20);
        for (void* block : blocks)
            BlockPool::Give(block, kSize);
        EXPECT_EQ(heapBlocks, before);
    }
}

/// Takes blocks until the heap has no more, which is no earlier than where they begin to fail.
bool TakeUntilTheHeapIsEmpty(std::vector<void*>& blocks, size_t size) {
    heapIsEmpty = true;
    bool failed = false;
    try {
        while (blocks.size() < blocks.capacity())
            blocks.push_back(BlockPool::Take(size));
    } catch (const std::bad_alloc&) {
        failed = true;
    }
    heapIsEmpty = false;
    return failed;
}

TEST(BlockPoolMemory, NothingIsLostWhereTheHeapHasNoMore) {
    constexpr size_t kSize = 224;
    BlockPool::Give(BlockPool::Take(kSize), kSize);                        // the piece that stays
    for (const size_t before : {size_t{10}, size_t{1000}, size_t{8000}}) { // and large pages
        const long heapBefore = heapBlocks;
        {
            std::vector<void*> blocks;
            blocks.reserve(20000);
            while (blocks.size() < before)
                blocks.push_back(BlockPool::Take(kSize));
            EXPECT_TRUE(TakeUntilTheHeapIsEmpty(blocks, kSize));
            blocks.push_back(BlockPool::Take(kSize));
            const std::set<void*> different(blocks.begin(), blocks.end());
            EXPECT_EQ(different.size(), blocks.size());
            for (void* block : blocks)
                BlockPool::Give(block, kSize);
        }
        EXPECT_EQ(heapBlocks, heapBefore);
    }
}

TEST(BlockPoolMemory, TheSparePieceIsGivenBackWhenAskedUnlessABlockIsInUse) {
    constexpr size_t kSize = 224;
    BlockPool::GiveSpareBack();
    const long before = heapBlocks;
    void* block = BlockPool::Take(kSize);
    BlockPool::GiveSpareBack();
    EXPECT_EQ(heapBlocks, before + 1);
    BlockPool::Give(block, kSize);
    EXPECT_EQ(heapBlocks, before + 1);
    BlockPool::GiveSpareBack();
    BlockPool::GiveSpareBack();
    EXPECT_EQ(heapBlocks, before);
    BlockPool::Give(BlockPool::Take(kSize), kSize); // a shelf begins anew
    EXPECT_EQ(heapBlocks, before + 1);
}

} // namespace

#endif
