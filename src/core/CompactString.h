#pragma once

#include <cstring>
#include <string_view>

namespace Kor {

/// An owned text in the space of one pointer; the empty text costs no allocation.
/// Scenes hold millions of mostly empty texts, which std::string would pay 32 bytes each for.
class CompactString {
public:
    CompactString() = default;
    explicit CompactString(std::string_view text) { Assign(text); }
    CompactString(const CompactString& other) { Assign(other.View()); }
    CompactString(CompactString&& other) noexcept : data_(other.data_) { other.data_ = nullptr; }
    ~CompactString() { Free(); }

    CompactString& operator=(const CompactString& other);
    CompactString& operator=(CompactString&& other) noexcept;

    /// Replaces the text by a copy; `text` may point into this string. Throws std::bad_alloc
    /// and keeps the old text when memory runs out.
    void Assign(std::string_view text);

    /// The NUL-terminated text; never null.
    const char* CStr() const { return data_ ? data_ + kHeaderSize : ""; }

    std::string_view View() const {
        if (!data_)
            return {};
        unsigned length = 0;
        std::memcpy(&length, data_, kHeaderSize);
        return {data_ + kHeaderSize, length};
    }
    bool IsEmpty() const { return data_ == nullptr; }

private:
    static constexpr int kHeaderSize = sizeof(unsigned); // the length stands before the characters

    void Free();

    char* data_ = nullptr;
};

} // namespace Kor
