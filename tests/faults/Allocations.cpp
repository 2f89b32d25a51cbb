#include "faults/Allocations.h"

#include <cstddef>
#include <new>

namespace {

bool armed = false;
bool failed = false;
long count = 0;
long failing = 0;
Allocations::Mode mode = Allocations::kOnce;
unsigned long long largest = 0;

bool Fails(std::size_t size) {
    if (largest > 0 && size > largest) {
        failed = true;
        return true;
    }
    if (!armed)
        return false;
    ++count;
    const bool fails =
        failing > 0 && (mode == Allocations::kOnce ? count == failing : count >= failing);
    failed = failed || fails;
    return fails;
}

} // namespace

void Allocations::Arm(long n, Mode chosen) {
    count = 0;
    failing = n;
    mode = chosen;
    failed = false;
    armed = true;
}

void Allocations::Disarm() {
    armed = false;
}

long Allocations::GetCount() {
    return count;
}

bool Allocations::HasFailed() {
    return failed;
}

void Allocations::RefuseAbove(unsigned long long bytes) {
    failed = false;
    largest = bytes;
}

// The names are the linker's: with "--wrap=malloc" the program's calls of malloc reach
// __wrap_malloc, and __real_malloc is the system's.
// NOLINTBEGIN(bugprone-reserved-identifier,readability-identifier-naming)
extern "C" {
void* __real_malloc(std::size_t size);
void* __real_calloc(std::size_t number, std::size_t size);
void* __real_realloc(void* memory, std::size_t size);
void __real_free(void* memory);

void* __wrap_malloc(std::size_t size) {
    return Fails(size) ? nullptr : __real_malloc(size);
}
void* __wrap_calloc(std::size_t number, std::size_t size) {
    return Fails(number * size) ? nullptr : __real_calloc(number, size);
}
void* __wrap_realloc(void* memory, std::size_t size) {
    return Fails(size) ? nullptr : __real_realloc(memory, size);
}
void __wrap_free(void* memory) {
    __real_free(memory);
}
}

namespace {

void* Allocate(std::size_t size) {
    void* memory = Fails(size) ? nullptr : __real_malloc(size == 0 ? 1 : size);
    if (!memory)
        throw std::bad_alloc();
    return memory;
}

void* AllocateOrNull(std::size_t size) noexcept {
    return Fails(size) ? nullptr : __real_malloc(size == 0 ? 1 : size);
}

} // namespace

void* operator new(std::size_t size) {
    return Allocate(size);
}
void* operator new[](std::size_t size) {
    return Allocate(size);
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    return AllocateOrNull(size);
}
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
    return AllocateOrNull(size);
}
void operator delete(void* memory, const std::nothrow_t&) noexcept {
    __real_free(memory);
}
void operator delete[](void* memory, const std::nothrow_t&) noexcept {
    __real_free(memory);
}
void operator delete(void* memory) noexcept {
    __real_free(memory);
}
void operator delete[](void* memory) noexcept {
    __real_free(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
    __real_free(memory);
}
void operator delete[](void* memory, std::size_t) noexcept {
    __real_free(memory);
}
// NOLINTEND(bugprone-reserved-identifier,readability-identifier-naming)
