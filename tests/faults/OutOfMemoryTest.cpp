// Memory may run out at any allocation: no exception leaves the library, and it goes on working.

#include <cstdlib>
#include <new>
#include <string>

#include <gtest/gtest.h>

#include "core/BlockPool.h"
#include "ovi/ovi.h"

namespace {

/// Allocations until the next one fails; below 0 none does.
long allocationsLeft = -1;
bool hasFailed = false;

/// Larger blocks are refused, as they are by systems that promise no memory they do not have.
constexpr std::size_t kLargest = std::size_t{1} << 36;

void* Allocate(std::size_t size) {
    if (allocationsLeft == 0 || size > kLargest) {
        hasFailed = true;
        throw std::bad_alloc();
    }
    if (allocationsLeft > 0)
        --allocationsLeft;
    if (void* memory = std::malloc(size == 0 ? 1 : size))
        return memory;
    throw std::bad_alloc();
}

} // namespace

void* operator new(std::size_t size) {
    return Allocate(size);
}
void* operator new[](std::size_t size) {
    return Allocate(size);
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    return std::malloc(size == 0 ? 1 : size);
}
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
    return std::malloc(size == 0 ? 1 : size);
}
void operator delete(void* memory, const std::nothrow_t&) noexcept {
    std::free(memory);
}
void operator delete[](void* memory, const std::nothrow_t&) noexcept {
    std::free(memory);
}
void operator delete(void* memory) noexcept {
    std::free(memory);
}
void operator delete[](void* memory) noexcept {
    std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}
void operator delete[](void* memory, std::size_t) noexcept {
    std::free(memory);
}

namespace {

/// Runs the calls again and again, each time with one allocation more before all further ones
/// fail, until there are enough.
template <class Prepare, class Calls, class Check>
void RunOutOfMemory(Prepare prepare, Calls calls, Check check) {
    for (long allocations = 0; allocations < 2000; ++allocations) {
        Ovi_Initialize();
        prepare();
        hasFailed = false;
        allocationsLeft = allocations;
        calls();
        allocationsLeft = -1;
        check();
        Ovi_Terminate();
        if (!hasFailed)
            return;
    }
    FAIL() << "still not enough memory";
}

TEST(OutOfMemory, NamesAndTextsStayWhole) {
    OviCustomType* type = nullptr;
    const std::string text(100, 'x');
    const std::string newName = "after." + text;
    RunOutOfMemory([&] { type = OviCustomType_New("before.Type", 1); },
                   [&] {
                       OviNamedObject_SetName(type, newName.c_str());
                       OviNamedObject_SetComment(type, text.c_str());
                       OviNamedObject_SetLabel(type, "en", text.c_str());
                       OviNamedObject_SetDescription(type, nullptr, text.c_str());
                   },
                   [&] {
                       const std::string package = OviType_GetPackageName(type);
                       const std::string name = OviNamedObject_GetName(type);
                       EXPECT_EQ(OviType_GetFullName(type), package + "." + name);
                       OviObject_Delete(type);
                   });
}

TEST(OutOfMemory, DiagnosticsAreDroppedOrWhole) {
    const std::string message(100, 'm');
    RunOutOfMemory([] {},
                   [&] {
                       for (int i = 0; i < 3; ++i)
                           OviErrorManager_AddErrorItem(1, message.c_str(), i, message.c_str());
                   },
                   [&] {
                       const int count = OviErrorManager_GetErrorItemCount(1);
                       for (int i = 0; i < count; ++i)
                           EXPECT_EQ(OviErrorItem_GetMessage(OviErrorManager_GetErrorItemAt(i)),
                                     message);
                       EXPECT_EQ(OviErrorManager_GetErrorItemAt(count), nullptr);
                   });
}

TEST(OutOfMemory, RenamedAssetsStayInTheScene) {
    constexpr int kCount = 600; // more than stand together: a new place may need memory
    OviAsset* renamed = nullptr;
    RunOutOfMemory(
        [&] {
            for (int i = 0; i < kCount; ++i)
                renamed = OviAssetManager_NewAsset(("a" + std::to_string(1000 + i)).c_str());
        },
        [&] { OviNamedObject_SetName(renamed, "a1100_and_behind_it_a_long_name"); },
        [&] {
            EXPECT_EQ(OviAssetManager_GetAssetCount(), kCount);
            EXPECT_EQ(OviAssetManager_GetAsset(OviNamedObject_GetName(renamed)), renamed);
        });
}

TEST(OutOfMemory, DeclarationsAreCopiedWholeOrNotAtAll) {
    const std::string text(3000, 'x');
    OviCustomType* type = nullptr;
    uint32_t bytes = 0;
    int size = 0;
    OviInstance* instance = nullptr;
    RunOutOfMemory(
        [&] {
            bytes = 0;
            size = 0;
            type = OviCustomType_New("Type", 1);
            OviNamedObject_SetComment(type, text.c_str());
            instance = OviInstance_New("Thing");
            OviNamedObject_SetLabel(instance, nullptr, text.c_str());
        },
        [&] {
            OviType_WriteToXML(type, 1, &size, nullptr);
            OviInstance_WriteToXML(instance, 1, &bytes, nullptr);
        },
        [&] {
            EXPECT_TRUE(size == 0 || size > 3000);
            OviObject_Delete(type);
            OviObject_Delete(instance);
        });
    EXPECT_GT(size, 3000);
    EXPECT_GT(bytes, 0u);
}

TEST(OutOfMemory, MoreInstancesThanEverFitAreNotBegun) {
    Ovi_Initialize();
    hasFailed = false;
    EXPECT_EQ(OviType_NewValue(OviTemplateManager_GetRoot(), nullptr, 2000000000), nullptr);
    EXPECT_TRUE(hasFailed);
    Ovi_Terminate();
}

TEST(OutOfMemory, GroupsAreDeletedAllTheSame) {
    Ovi_Initialize();
    OviGroup* group = OviGroup_New("outer");
    OviGroup* inner = group;
    for (int i = 0; i < 100; ++i) {
        OviGroup* next = OviGroup_New("inner");
        OviGroup_AddViewItemAt(inner, OviGroup_New("empty"), -1);
        OviGroup_AddViewItemAt(inner, next, -1);
        OviGroup_AddViewItemAt(inner, OviViewProperty_New("leaf", nullptr), -1);
        inner = next;
    }
    hasFailed = false;
    allocationsLeft = 0;
    OviObject_Delete(group);
    allocationsLeft = -1;
    EXPECT_FALSE(hasFailed);
    Ovi_Terminate();
}

#ifndef __SANITIZE_ADDRESS__ // with which every block comes from the heap

TEST(OutOfMemory, ASingleObjectIsMadeAgainWithoutTheHeap) {
    constexpr size_t kSize = 192;
    Kor::BlockPool::Give(Kor::BlockPool::Take(kSize), kSize);
    hasFailed = false;
    allocationsLeft = 0;
    void* again = Kor::BlockPool::Take(kSize);
    allocationsLeft = -1;
    EXPECT_FALSE(hasFailed);
    Kor::BlockPool::Give(again, kSize);
}

#endif

} // namespace
