// Where objects live, and how the living are told from the dead.

#include <memory>
#include <vector>

#include <gtest/gtest.h>

#include "core/BlockPool.h"
#include "core/ErrorItem.h"
#include "core/HeapObjects.h"
#include "core/NamedObject.h"
#include "core/Quarantine.h"

namespace {

using namespace Kor;

/// Keeps the memory of dead objects while a test runs.
class ObjectMemory : public ::testing::Test {
protected:
    void SetUp() override { BlockPool::KeepDead(true); }
    void TearDown() override { BlockPool::KeepDead(false); }
};

TEST_F(ObjectMemory, AnObjectIsAliveFromItsBeginningToItsEnd) {
    auto object = std::make_unique<NamedObject>("x");
    const void* address = object.get();
    EXPECT_EQ(BlockPool::FindObject(address).state, ObjectAt::kAlive);
    object.reset();
    const ObjectAt found = BlockPool::FindObject(address);
    EXPECT_EQ(found.state, ObjectAt::kDead);
    EXPECT_EQ(found.classId, kNamedObjectClass);
}

TEST_F(ObjectMemory, TheDeadKeepTheNumbersOfTheirOwnClasses) {
    const std::vector<Object*> objects{new Object, new NamedObject, new ErrorItem(1, "", 1, "")};
    for (Object* object : objects) {
        const int classId = object->GetClass();
        delete object;
        EXPECT_EQ(BlockPool::FindObject(object).classId, classId);
    }
}

TEST_F(ObjectMemory, NothingBeginsInTheMiddleOfAnObjectOrElsewhere) {
    const auto object = std::make_unique<ErrorItem>(1, "", 1, "");
    const auto* bytes = reinterpret_cast<const char*>(object.get());
    for (size_t i = 1; i < sizeof(ErrorItem); ++i)
        EXPECT_EQ(BlockPool::FindObject(bytes + i).state, ObjectAt::kNothing) << i;
    EXPECT_EQ(BlockPool::FindObject(&object).state, ObjectAt::kNothing);
    EXPECT_EQ(BlockPool::FindObject(nullptr).state, ObjectAt::kNothing);
}

TEST_F(ObjectMemory, OtherBlocksAreNoObjects) {
    void* block = BlockPool::Take(64);
    *static_cast<void**>(block) = nullptr;
    EXPECT_EQ(BlockPool::FindObject(block).state, ObjectAt::kNothing);
    BlockPool::Give(block, 64);
}

TEST_F(ObjectMemory, TheMemoryOfTheDeadIsNotUsedAgainAtOnce) {
    const void* dead = new NamedObject;
    delete static_cast<const NamedObject*>(dead);
    std::vector<std::unique_ptr<NamedObject>> others(1000);
    for (auto& other : others) {
        other = std::make_unique<NamedObject>();
        EXPECT_NE(other.get(), dead);
    }
}

TEST(Quarantine, GivesTheOldestFirstOnceItIsFull) {
    std::vector<DeadObject> dead(Quarantine::kCapacity + 2);
    Quarantine quarantine;
    for (size_t i = 0; i < Quarantine::kCapacity; ++i)
        ASSERT_EQ(quarantine.Put(&dead[i]), nullptr);
    EXPECT_EQ(quarantine.Put(&dead[Quarantine::kCapacity]), &dead[0]);
    EXPECT_EQ(quarantine.Put(&dead[Quarantine::kCapacity + 1]), &dead[1]);
    for (size_t i = 2; i < dead.size(); ++i)
        ASSERT_EQ(quarantine.TakeOldest(), &dead[i]);
    EXPECT_EQ(quarantine.TakeOldest(), nullptr);
    EXPECT_EQ(quarantine.Put(&dead[0]), nullptr);
    EXPECT_EQ(quarantine.TakeOldest(), &dead[0]);
}

TEST(HeapObjects, FindsTheLivingAndTheDeadThatItKeeps) {
    const auto objects = std::make_unique<HeapObjects>();
    std::vector<void*> blocks;
    for (int i = 0; i < 1000; ++i)
        blocks.push_back(objects->Take(40));
    for (const void* block : blocks)
        EXPECT_EQ(objects->Find(block).state, ObjectAt::kAlive);
    objects->KeepDead(true);
    objects->Give(blocks[500], kAssetClass);
    EXPECT_EQ(objects->Find(blocks[500]).state, ObjectAt::kDead);
    EXPECT_EQ(objects->Find(blocks[500]).classId, kAssetClass);
    objects->KeepDead(false);
    EXPECT_EQ(objects->Find(blocks[500]).state, ObjectAt::kNothing);
    blocks.erase(blocks.begin() + 500);
    for (void* block : blocks)
        objects->Give(block, kAssetClass);
    EXPECT_EQ(objects->Find(blocks[0]).state, ObjectAt::kNothing);
}

} // namespace
