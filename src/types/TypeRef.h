#pragma once

namespace Kor {

class Type;

/// A borrowed type that knows it is in use: a type with users outlives the unloading of its file,
/// and a custom type that belongs to the properties using it goes with the last of them.
class TypeRef {
public:
    TypeRef() = default;
    explicit TypeRef(Type* type) { Reset(type); }
    TypeRef(const TypeRef& other) { Reset(other.type_); }
    TypeRef(TypeRef&& other) noexcept : type_(other.type_) { other.type_ = nullptr; }
    ~TypeRef() { Reset(nullptr); }

    TypeRef& operator=(const TypeRef& other) {
        Reset(other.type_);
        return *this;
    }
    TypeRef& operator=(TypeRef&& other) noexcept;

    void Reset(Type* type);

    Type* Get() const { return type_; }
    Type* operator->() const { return type_; }
    explicit operator bool() const { return type_ != nullptr; }

private:
    Type* type_ = nullptr;
};

} // namespace Kor
