#pragma once

#include <string>
#include <string_view>

namespace Kor {

/// How messages show a text that a file gave.
inline std::string Quoted(std::string_view text) {
    return std::string(1, '\'').append(text).append(1, '\'');
}

} // namespace Kor
