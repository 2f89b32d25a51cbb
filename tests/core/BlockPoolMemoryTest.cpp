// What the pool asks of the heap, and what it gives back.

#include <cstddef>
#include <cstdlib>
#include <new>
#include <vector>

#include <gtest/gtest.h>

#include "core/BlockPool.h"

#if !defined(__SANITIZE_ADDRESS__) && !defined(OVI_NO_POOL) // else every block comes from the heap

namespace {

long heapBlocks = 0;
long heapCalls = 0;

} // namespace

void* operator new(std::size_t size) {
    void* memory = std::malloc(size == 0 ? 1 : size);
    if (!memory)
        throw std::bad_alloc();
    ++heapBlocks;
    ++heapCalls;
    return memory;
}
void operator delete(void* memory) noexcept {
    heapBlocks -= memory ? 1 : 0;
    std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
    operator delete(memory);
}

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

} // namespace

#endif
