#pragma once

#include <string>

namespace Kor {

/// The code page in which an 8-bit text is taken: UTF-8 when it is valid UTF-8, otherwise the
/// system's.
unsigned GetCodePageOf(const std::string& text);

/// The text as the system's 16-bit text.
std::wstring ToWide(const std::string& text);

/// The 16-bit text in a code page.
std::string FromWide(const std::wstring& text, unsigned codePage);

/// The path as the system's functions take it, in the form without a limit to its length where it
/// needs that.
std::wstring ToWidePath(const std::string& path);

} // namespace Kor
