#pragma once

#include <cstddef>
#include <cstdint>
#include <exception>
#include <string>
#include <string_view>

namespace Kor {

/// Where a reader takes its bytes from, in blocks.
class ByteSource {
public:
    virtual ~ByteSource() = default;

    /// Reads up to `capacity` bytes; 0 at the end or after a failure.
    virtual size_t Read(char* buffer, size_t capacity) = 0;

    /// Whether what looked like the end was a failure.
    virtual bool HasFailed() const { return false; }
};

/// Where a writer puts its bytes, in blocks.
class ByteSink {
public:
    virtual ~ByteSink() = default;

    /// Takes all of the bytes; false when that failed.
    virtual bool Write(std::string_view bytes) = 0;
};

/// Bytes from memory; the text must outlive the source.
class MemorySource : public ByteSource {
public:
    explicit MemorySource(std::string_view text) : rest_(text) {}

    size_t Read(char* buffer, size_t capacity) override {
        const size_t taken = rest_.copy(buffer, capacity);
        rest_.remove_prefix(taken);
        return taken;
    }

private:
    std::string_view rest_;
};

/// Bytes into a string: as many as it may keep; it counts them all.
class StringSink : public ByteSink {
public:
    explicit StringSink(size_t limit = std::string::npos) : limit_(limit) {}

    /// False when memory runs out: writers also write while they are destroyed.
    bool Write(std::string_view bytes) override {
        try {
            text_.append(bytes.substr(0, limit_ - text_.size()));
        } catch (const std::exception&) {
            isWhole_ = false;
        }
        size_ += bytes.size();
        return isWhole_;
    }

    /// What it kept, and how much it was given.
    const std::string& GetText() const { return text_; }
    std::uint64_t GetSize() const { return size_; }

    /// False when memory ran out.
    bool IsWhole() const { return isWhole_; }

private:
    size_t limit_;
    std::string text_;
    std::uint64_t size_ = 0;
    bool isWhole_ = true;
};

} // namespace Kor
