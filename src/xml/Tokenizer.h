#pragma once

#include "xml/Parser.h"

namespace Kor {

/// Receives the tokens of a Tokenizer.
class ITokenSink {
public:
    virtual ~ITokenSink() = default;

    /// The bytes live during the call only, with no NUL byte behind them.
    virtual void Token(const char* bytes, size_t length) = 0;
};

/// Splits a text into runs of word bytes, runs of other printable bytes, and single quotes, double
/// quotes, parentheses and newlines; blanks only separate.
class Tokenizer : public Parser {
public:
    explicit Tokenizer(size_t blockSize = kDefaultBlockSize);

    /// Who receives the tokens; null drops them.
    void SetTokenSink(ITokenSink* sink) { sink_ = sink; }

    /// Reads to the end; always true.
    bool Parse(const char* sourceName, ByteSource& source) override;

private:
    enum class Kind { kBlank, kNewline, kSingle, kWord, kOther };

    static Kind KindOf(char c);
    void Flush(Kind kind);

    ITokenSink* sink_ = nullptr;
};

} // namespace Kor
