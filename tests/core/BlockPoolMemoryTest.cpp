// What the pool takes from the system, and what it gives back.

#include <array>
#include <cstddef>
#include <new>
#include <set>
#include <vector>

#include <gtest/gtest.h>

#include "core/BlockPool.h"
#include "core/PieceStore.h"

#ifndef _WIN32
#include <cstdio>
#include <sys/resource.h>
#include <unistd.h>
#endif

#if !defined(__SANITIZE_ADDRESS__) && !defined(OVI_NO_POOL) // else every block comes from the heap

namespace {

using Kor::BlockPool;
using Kor::PieceStore;

using Blocks = std::vector<void*>;

void TakeMore(Blocks& blocks, size_t count, size_t size) {
    for (size_t i = 0; i < count; ++i)
        blocks.push_back(BlockPool::Take(size));
}

void GiveAll(Blocks& blocks, size_t size) {
    for (void* block : blocks)
        BlockPool::Give(block, size);
    blocks.clear();
}

size_t PieceOf(const void* block) {
    return reinterpret_cast<std::uintptr_t>(block) / Kor::kPieceSize;
}

TEST(BlockPoolMemory, ASingleObjectIsMadeAgainWithoutANewPiece) {
    constexpr size_t kSize = 192;
    BlockPool::GiveSpareBack();
    const size_t before = PieceStore::CountPieces();
    void* first = BlockPool::Take(kSize);
    BlockPool::Give(first, kSize);
    EXPECT_EQ(PieceStore::CountPieces(), before + 1);
    EXPECT_EQ(BlockPool::Take(kSize), first);
    BlockPool::Give(first, kSize);
}

TEST(BlockPoolMemory, AllButOnePieceIsGivenBackOnceNoBlockIsInUse) {
    constexpr size_t kSize = 208;
    BlockPool::GiveSpareBack();
    const size_t before = PieceStore::CountPieces();
    Blocks blocks;
    for (int round = 0; round < 2; ++round) {
        TakeMore(blocks, 3000, kSize);
        EXPECT_GE(PieceStore::CountPieces(), before + 10);
        EXPECT_LE(PieceStore::CountPieces(), before + 11);
        GiveAll(blocks, kSize);
        EXPECT_EQ(PieceStore::CountPieces(), before + 1);
    }
}

TEST(BlockPoolMemory, OneBlockKeepsNoMoreThanItsPieceAndASpareOne) {
    constexpr size_t kSize = 112;
    constexpr size_t kCount = 500000;
    BlockPool::GiveSpareBack();
    const size_t pieces = PieceStore::CountPieces();
    const size_t regions = PieceStore::CountRegions();
    for (const size_t kept : {size_t{0}, kCount / 2, kCount - 1}) {
        Blocks blocks;
        TakeMore(blocks, kCount, kSize);
        EXPECT_GT(PieceStore::CountRegions(), regions + 20);
        void* survivor = blocks[kept];
        blocks.erase(blocks.begin() + static_cast<std::ptrdiff_t>(kept));
        GiveAll(blocks, kSize);
        EXPECT_LE(PieceStore::CountPieces(), pieces + 2);
        EXPECT_LE(PieceStore::CountRegions(), regions + 2);
        BlockPool::Give(survivor, kSize);
    }
}

TEST(BlockPoolMemory, NewBlocksGatherInThePiecesThatAreFuller) {
    constexpr size_t kSize = 176;
    constexpr size_t kPerPiece = 371;
    Blocks blocks;
    TakeMore(blocks, 10 * kPerPiece, kSize);
    std::set<size_t> sparse;
    for (size_t i = 0; i < blocks.size(); ++i) { // every other piece keeps a tenth, or nine tenths
        const bool isSparse = PieceOf(blocks[i]) % 2 == 0;
        const bool goes = isSparse ? i % 10 != 0 : i % 10 == 0;
        if (isSparse)
            sparse.insert(PieceOf(blocks[i]));
        if (goes) {
            BlockPool::Give(blocks[i], kSize);
            blocks[i] = nullptr;
        }
    }
    for (int i = 0; i < 100; ++i) {
        blocks.push_back(BlockPool::Take(kSize));
        EXPECT_EQ(sparse.count(PieceOf(blocks.back())), 0u);
    }
    GiveAll(blocks, kSize);
}

TEST(BlockPoolMemory, TheSparePieceIsGivenBackWhenAskedUnlessABlockIsInUse) {
    constexpr size_t kSize = 224;
    BlockPool::GiveSpareBack();
    const size_t before = PieceStore::CountPieces();
    void* block = BlockPool::Take(kSize);
    BlockPool::GiveSpareBack();
    EXPECT_EQ(PieceStore::CountPieces(), before + 1);
    BlockPool::Give(block, kSize);
    EXPECT_EQ(PieceStore::CountPieces(), before + 1);
    BlockPool::GiveSpareBack();
    BlockPool::GiveSpareBack();
    EXPECT_EQ(PieceStore::CountPieces(), before);
    BlockPool::Give(BlockPool::Take(kSize), kSize); // a shelf begins anew
    EXPECT_EQ(PieceStore::CountPieces(), before + 1);
}

TEST(BlockPoolMemory, OnlyAddressesInPiecesInUseAreFound) {
    constexpr size_t kSize = 240;
    BlockPool::GiveSpareBack();
    auto* block = static_cast<char*>(BlockPool::Take(kSize));
    EXPECT_EQ(PieceStore::Find(block + 5), Kor::Piece::Of(block));
    EXPECT_EQ(PieceStore::Find(&block), nullptr);
    EXPECT_EQ(PieceStore::Find(nullptr), nullptr);
    EXPECT_EQ(PieceStore::Find(reinterpret_cast<void*>(UINTPTR_MAX)), nullptr);
    BlockPool::Give(block, kSize);
    BlockPool::GiveSpareBack();
    EXPECT_EQ(PieceStore::Find(block), nullptr);
}

#ifndef _WIN32
/// Lets the process have no more memory than it has.
class NoMoreMemory {
public:
    NoMoreMemory() {
        getrlimit(RLIMIT_AS, &before_);
        long pages = 0;
        if (std::FILE* file = std::fopen("/proc/self/statm", "r")) {
            if (std::fscanf(file, "%ld", &pages) != 1)
                pages = 0;
            std::fclose(file);
        }
        rlimit limit = before_;
        limit.rlim_cur = static_cast<rlim_t>(pages) * static_cast<rlim_t>(sysconf(_SC_PAGESIZE));
        setrlimit(RLIMIT_AS, &limit);
    }
    ~NoMoreMemory() { setrlimit(RLIMIT_AS, &before_); }
    NoMoreMemory(const NoMoreMemory&) = delete;
    NoMoreMemory& operator=(const NoMoreMemory&) = delete;

private:
    rlimit before_{};
};

/// Takes blocks until there is no more memory, which is no earlier than where they begin to fail.
bool TakeUntilNoneIsLeft(Blocks& blocks, size_t size) {
    const NoMoreMemory none;
    try {
        while (blocks.size() < blocks.capacity())
            blocks.push_back(BlockPool::Take(size));
    } catch (const std::bad_alloc&) {
        return true;
    }
    return false;
}

TEST(BlockPoolMemory, NothingIsLostWhereTheSystemHasNoMore) {
    constexpr size_t kSize = 224;
    BlockPool::Give(BlockPool::Take(kSize), kSize); // the piece that stays
    for (const size_t before : {size_t{10}, size_t{1000}, size_t{80000}}) {
        const size_t piecesBefore = PieceStore::CountPieces();
        Blocks blocks;
        blocks.reserve(200000);
        TakeMore(blocks, before, kSize);
        EXPECT_TRUE(TakeUntilNoneIsLeft(blocks, kSize));
        TakeMore(blocks, 1, kSize);
        const std::set<void*> different(blocks.begin(), blocks.end());
        EXPECT_EQ(different.size(), blocks.size());
        GiveAll(blocks, kSize);
        EXPECT_EQ(PieceStore::CountPieces(), piecesBefore);
    }
}
#endif

} // namespace

#endif
