#include "xml/Tokenizer.h"

namespace Kor {

Tokenizer::Tokenizer(size_t blockSize) : Parser(blockSize) {}

bool Tokenizer::Parse(const char* sourceName, ByteSource& source) {
    Begin(sourceName, source);
    Kind last = Kind::kBlank;
    while (position_ != end_ || ReadBlock()) {
        const Kind kind = KindOf(*position_);
        // Words and other runs go on; every other byte stands for itself.
        if (kind != last || (kind != Kind::kWord && kind != Kind::kOther))
            Flush(last);
        ++position_;
        last = kind;
    }
    Flush(last);
    return true;
}

Tokenizer::Kind Tokenizer::KindOf(char c) {
    const auto byte = static_cast<unsigned char>(c);
    if (byte == '\n')
        return Kind::kNewline;
    if (byte <= ' ')
        return Kind::kBlank;
    if (byte == '"' || byte == '\'' || byte == '(' || byte == ')')
        return Kind::kSingle;
    const bool isWord = (byte >= 'A' && byte <= 'Z') || (byte >= '0' && byte <= '9') ||
                        (byte >= '_' && byte <= 'z');
    return isWord ? Kind::kWord : Kind::kOther;
}

/// Hands over what was taken since the last token, unless it is blank.
void Tokenizer::Flush(Kind kind) {
    if (sink_ && kind != Kind::kBlank && tokenBegin_ != position_)
        sink_->Token(tokenBegin_, Distance(tokenBegin_, position_));
    tokenBegin_ = position_;
}

} // namespace Kor
