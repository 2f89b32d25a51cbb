#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

/// The bytes that decide what is called and with what. Behind the last one come zeroes.
class Input {
public:
    explicit Input(std::string_view bytes) : rest_(bytes) {}

    bool IsEmpty() const { return rest_.empty(); }

    std::uint8_t TakeByte() {
        if (rest_.empty())
            return 0;
        const auto byte = static_cast<std::uint8_t>(rest_.front());
        rest_.remove_prefix(1);
        return byte;
    }

    /// A number below `count`, or 0 when that is 0.
    size_t TakeIndex(size_t count) {
        size_t number = TakeByte();
        if (count > 256)
            number = number << 8 | TakeByte();
        return count == 0 ? 0 : number % count;
    }

    /// Up to that many bytes.
    std::string_view TakeBytes(size_t count) {
        const std::string_view taken = rest_.substr(0, count);
        rest_.remove_prefix(taken.size());
        return taken;
    }

private:
    std::string_view rest_;
};
