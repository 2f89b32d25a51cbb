#include "core/HeapObjects.h"

#include <new>

#if defined(__SANITIZE_ADDRESS__)
#define KOR_HAS_POISON 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define KOR_HAS_POISON 1
#endif
#endif
#ifdef KOR_HAS_POISON
#include <sanitizer/asan_interface.h>
#endif

namespace Kor {

namespace {

/// What reads a dead object is found although its memory is kept.
void Poison([[maybe_unused]] const void* memory, [[maybe_unused]] size_t size) {
#ifdef KOR_HAS_POISON
    __asan_poison_memory_region(memory, size);
#endif
}

void Unpoison([[maybe_unused]] const void* memory, [[maybe_unused]] size_t size) {
#ifdef KOR_HAS_POISON
    __asan_unpoison_memory_region(memory, size);
#endif
}

} // namespace

HeapObjects::Head* HeapObjects::HeadOf(const void* object) {
    return reinterpret_cast<Head*>(static_cast<char*>(const_cast<void*>(object)) - kHeadSize);
}

void* HeapObjects::ObjectOf(Head* head) {
    return reinterpret_cast<char*>(head) + kHeadSize;
}

std::uintptr_t& HeapObjects::ChainOf(const void* object) {
    return chains_[(reinterpret_cast<std::uintptr_t>(object) >> 4) % chains_.size()];
}

void* HeapObjects::Take(size_t size) {
    auto* head = new (::operator new(kHeadSize + size)) Head{};
    void* object = ObjectOf(head);
    head->size = size;
    head->isAlive = true;
    head->next = ChainOf(object);
    ChainOf(object) = ~reinterpret_cast<std::uintptr_t>(head);
    return object;
}

void HeapObjects::Give(void* object, int classId) noexcept {
    Head* head = HeadOf(object);
    head->isAlive = false;
    head->dead.classId = classId;
    if (quarantine_.IsOn()) {
        Poison(object, head->size);
        head = reinterpret_cast<Head*>(quarantine_.Put(&head->dead));
    }
    if (head)
        Free(head);
}

void HeapObjects::Free(Head* head) noexcept {
    std::uintptr_t* link = &ChainOf(ObjectOf(head));
    while (~*link != reinterpret_cast<std::uintptr_t>(head))
        link = &reinterpret_cast<Head*>(~*link)->next;
    *link = head->next;
    Unpoison(ObjectOf(head), head->size);
    ::operator delete(head);
}

/// Only the heads are read, never what an unknown address points to.
ObjectAt HeapObjects::Find(const void* address) const noexcept {
    std::uintptr_t link = const_cast<HeapObjects*>(this)->ChainOf(address);
    while (link != 0) {
        auto* head = reinterpret_cast<Head*>(~link);
        if (ObjectOf(head) == address)
            return {head->isAlive ? ObjectAt::kAlive : ObjectAt::kDead, head->dead.classId};
        link = head->next;
    }
    return {};
}

void HeapObjects::KeepDead(bool keep) noexcept {
    quarantine_.SetOn(keep);
    if (keep)
        return;
    while (DeadObject* dead = quarantine_.TakeOldest())
        Free(reinterpret_cast<Head*>(dead));
}

} // namespace Kor
