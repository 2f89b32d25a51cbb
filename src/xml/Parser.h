#pragma once

#include <cstddef>
#include <cstring>
#include <memory>
#include <string>

namespace Kor {

class ByteSource;
class IErrorListener;

/// The base of the readers: takes bytes in blocks, cuts them at terminators in its own buffer, and
/// knows the current line. A reader can be used for one text after another.
class Parser {
public:
    static constexpr size_t kDefaultBlockSize = 256 * 1024;

    virtual ~Parser();
    Parser(const Parser&) = delete;
    Parser& operator=(const Parser&) = delete;

    /// Reads the whole source once. The name goes into every diagnostic; it is not copied.
    virtual bool Parse(const char* sourceName, ByteSource& source) = 0;

    /// Where diagnostics go; null drops them.
    void SetErrorListener(IErrorListener* listener) { errorListener_ = listener; }
    IErrorListener* GetErrorListener() const { return errorListener_; }

    /// The name given to Parse; never null.
    const char* GetSourceName() const { return sourceName_; }

    /// The line of the last byte taken, from 1.
    int GetLineNumber() const;

    /// Sends a diagnostic with the source name and the current line.
    void Report(int level, const std::string& message) const;

protected:
    explicit Parser(size_t blockSize);

    /// Starts on a new text at line 1.
    void Begin(const char* sourceName, ByteSource& source);

    /// Makes the bytes up to the next terminator, which is taken too, the current token. False at
    /// the end of the source; everything is taken then.
    bool ReadUntil(char terminator) {
        tokenBegin_ = position_;
        auto* hit =
            static_cast<char*>(std::memchr(position_, terminator, Distance(position_, end_)));
        if (!hit)
            return ReadOn(terminator);
        tokenEnd_ = hit;
        position_ = hit + 1;
        return true;
    }

    /// Adds a block behind the token, which may move; false at the end of the source.
    bool ReadBlock();

    /// Whether the source failed where it seemed to end.
    bool HasSourceFailed() const;

    /// The line in which the current token begins.
    int GetTokenLine() const;

    /// Puts a NUL byte in a taken byte's place without losing count of the lines.
    void Terminate(char* place) {
        if (*place == '\n' && place >= counted_)
            ++lineNumber_;
        *place = '\0';
    }

    char* tokenBegin_ = nullptr; ///< The current token, without its terminator.
    char* tokenEnd_ = nullptr;
    char* position_ = nullptr; ///< The first byte not taken.
    char* end_ = nullptr;      ///< The end of what was read ahead.
    bool sawNul_ = false;      ///< Whether the source held a NUL byte so far.

    static size_t Distance(const char* begin, const char* end) {
        return static_cast<size_t>(end - begin);
    }

private:
    bool ReadOn(char terminator);
    void MoveTokenToFront();
    void Grow(size_t capacity);
    void Rebase(char* front);
    void CountLinesBefore(const char* place) const;

    const char* sourceName_ = "";
    ByteSource* source_ = nullptr;
    IErrorListener* errorListener_ = nullptr;
    size_t blockSize_;
    size_t capacity_ = 0;
    std::unique_ptr<char[]> buffer_;

    // Lines are counted when somebody asks or the bytes leave the buffer, not byte by byte.
    mutable const char* counted_ = nullptr;
    mutable unsigned lineNumber_ = 1;
};

} // namespace Kor
