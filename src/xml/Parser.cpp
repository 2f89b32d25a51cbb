#include "xml/Parser.h"

#include "core/ByteStreams.h"
#include "core/IErrorListener.h"

#include <algorithm>
#include <iterator>
#include <numeric>

namespace Kor {

namespace {

/// Each lane counts what stands at its place of every row, which processors do for all lanes at
/// once; so many rows that no lane overflows.
unsigned CountNewlines(const char* begin, const char* end) {
    constexpr size_t kLanes = 32;
    constexpr size_t kMostRows = 255;
    unsigned count = 0;
    while (static_cast<size_t>(end - begin) >= kLanes) {
        unsigned char lanes[kLanes] = {};
        size_t rows = std::min(static_cast<size_t>(end - begin) / kLanes, kMostRows);
        for (; rows > 0; --rows, begin += kLanes) {
            for (size_t i = 0; i < kLanes; ++i)
                lanes[i] = static_cast<unsigned char>(lanes[i] + (begin[i] == '\n' ? 1 : 0));
        }
        count = std::accumulate(std::begin(lanes), std::end(lanes), count);
    }
    return count + static_cast<unsigned>(std::count(begin, end, '\n'));
}

} // namespace

Parser::Parser(size_t blockSize) : blockSize_(std::max<size_t>(blockSize, 1)) {}

Parser::~Parser() = default;

int Parser::GetLineNumber() const {
    CountLinesBefore(position_);
    return static_cast<int>(lineNumber_);
}

int Parser::GetTokenLine() const {
    CountLinesBefore(tokenBegin_);
    return static_cast<int>(lineNumber_);
}

void Parser::Report(int level, const std::string& message) const {
    if (errorListener_)
        errorListener_->AddErrorItem(level, sourceName_, GetLineNumber(), message.c_str());
}

void Parser::Begin(const char* sourceName, ByteSource& source) {
    sourceName_ = sourceName ? sourceName : "";
    source_ = &source;
    if (!buffer_)
        Grow(blockSize_);
    tokenBegin_ = tokenEnd_ = position_ = end_ = buffer_.get();
    counted_ = position_;
    lineNumber_ = 1;
    sawNul_ = false;
}

/// Goes on where the terminator is not among the bytes read ahead.
bool Parser::ReadOn(char terminator) {
    for (;;) {
        const size_t searched = Distance(tokenBegin_, end_);
        position_ = end_;
        if (!ReadBlock())
            return false;
        char* from = tokenBegin_ + searched;
        auto* hit = static_cast<char*>(std::memchr(from, terminator, Distance(from, end_)));
        if (hit) {
            tokenEnd_ = hit;
            position_ = hit + 1;
            return true;
        }
    }
}

bool Parser::ReadBlock() {
    MoveTokenToFront();
    const size_t used = Distance(buffer_.get(), end_);
    if (used > capacity_ / 2)
        Grow(capacity_ * 2);
    const size_t taken = source_->Read(end_, std::min(blockSize_, capacity_ - used));
    if (!sawNul_)
        sawNul_ = std::memchr(end_, '\0', taken) != nullptr;
    end_ += taken;
    return taken > 0;
}

bool Parser::HasSourceFailed() const {
    return source_->HasFailed();
}

void Parser::MoveTokenToFront() {
    CountLinesBefore(tokenBegin_);
    Rebase(buffer_.get());
}

void Parser::Grow(size_t capacity) {
    std::unique_ptr<char[]> bigger(new char[capacity]);
    if (buffer_)
        Rebase(bigger.get());
    buffer_ = std::move(bigger);
    capacity_ = capacity;
}

void Parser::Rebase(char* front) {
    const size_t counted = Distance(tokenBegin_, counted_);
    const size_t taken = Distance(tokenBegin_, position_);
    const size_t kept = Distance(tokenBegin_, end_);
    if (front != tokenBegin_)
        std::memmove(front, tokenBegin_, kept);
    tokenBegin_ = front;
    counted_ = front + counted;
    position_ = front + taken;
    end_ = front + kept;
}

void Parser::CountLinesBefore(const char* place) const {
    if (counted_ >= place)
        return;
    lineNumber_ += CountNewlines(counted_, place);
    counted_ = place;
}

} // namespace Kor
