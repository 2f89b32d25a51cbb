#include "core/CompactString.h"

#include <cstring>
#include <limits>
#include <new>
#include <utility>

#include "core/BlockPool.h"

namespace Kor {

CompactString& CompactString::operator=(const CompactString& other) {
    if (this != &other)
        Assign(other.View());
    return *this;
}

CompactString& CompactString::operator=(CompactString&& other) noexcept {
    std::swap(data_, other.data_);
    return *this;
}

void CompactString::Assign(std::string_view text) {
    char* fresh = nullptr;
    if (!text.empty()) {
        if (text.size() > std::numeric_limits<unsigned>::max() - kHeaderSize - 1)
            throw std::bad_alloc();
        fresh = static_cast<char*>(BlockPool::Take(kHeaderSize + text.size() + 1));
        const auto length = static_cast<unsigned>(text.size());
        std::memcpy(fresh, &length, kHeaderSize);
        std::memcpy(fresh + kHeaderSize, text.data(), text.size());
        fresh[kHeaderSize + text.size()] = '\0';
    }
    Free();
    data_ = fresh;
}

void CompactString::Free() {
    if (data_)
        BlockPool::Give(data_, kHeaderSize + View().size() + 1);
    data_ = nullptr;
}

} // namespace Kor
