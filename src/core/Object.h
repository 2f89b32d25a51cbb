#pragma once

#include <memory>

#include "core/BlockPool.h"
#include "core/ClassId.h"

/// Stands in every class that has a number: where an object of it dies, the number stays behind and
/// says what the object was.
#define KOR_OBJECT_MEMORY                                                                          \
    static void* operator new(size_t size) {                                                       \
        return BlockPool::TakeObject(size);                                                        \
    }                                                                                              \
    static void operator delete(void* object) noexcept {                                           \
        BlockPool::GiveObject(object, kClassId);                                                   \
    }

namespace Kor {

/// The root of every model class: a class number, a copy, a virtual destructor, and a place among
/// all objects.
class Object {
public:
    static constexpr int kClassId = kObjectClass;
    KOR_OBJECT_MEMORY

    Object() = default;
    virtual ~Object() = default;
    Object& operator=(const Object&) = delete;

    /// The number of the object's most derived class.
    virtual int GetClass() const { return kClassId; }

    /// Whether the object's class is `id` or derives from it.
    virtual bool ImplementsClass(int id) const { return id == kClassId; }

    /// A deep copy of the same class; a class that does not refine this yields a bare Object.
    virtual std::unique_ptr<Object> Clone() const { return std::make_unique<Object>(); }

protected:
    Object(const Object&) = default;
};

/// The object as a T, or null when it is null or of another class.
template <class T> T* ObjectCast(Object* object) {
    return object && object->ImplementsClass(T::kClassId) ? static_cast<T*>(object) : nullptr;
}

template <class T> const T* ObjectCast(const Object* object) {
    return object && object->ImplementsClass(T::kClassId) ? static_cast<const T*>(object) : nullptr;
}

} // namespace Kor
