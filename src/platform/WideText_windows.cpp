#include "platform/WideText_windows.h"

#ifndef NOMINMAX
#define NOMINMAX
#endif
#define WIN32_LEAN_AND_MEAN
#include <windows.h>

namespace Kor {

namespace {

/// The path made absolute by the system, which the unlimited form demands.
std::wstring MakeAbsolute(const std::wstring& path) {
    const DWORD size = GetFullPathNameW(path.c_str(), 0, nullptr, nullptr);
    std::wstring absolute(size, L'\0');
    const DWORD length = GetFullPathNameW(path.c_str(), size, absolute.data(), nullptr);
    absolute.resize(length < size ? length : 0);
    return absolute;
}

} // namespace

unsigned GetCodePageOf(const std::string& text) {
    const int length = static_cast<int>(text.size());
    const bool isUtf8 = text.empty() || MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS,
                                                            text.data(), length, nullptr, 0) > 0;
    return isUtf8 ? CP_UTF8 : CP_ACP;
}

std::wstring ToWide(const std::string& text) {
    const unsigned codePage = GetCodePageOf(text);
    const int length = static_cast<int>(text.size());
    const int size = MultiByteToWideChar(codePage, 0, text.data(), length, nullptr, 0);
    std::wstring wide(static_cast<size_t>(size), L'\0');
    MultiByteToWideChar(codePage, 0, text.data(), length, wide.data(), size);
    return wide;
}

std::string FromWide(const std::wstring& text, unsigned codePage) {
    const int length = static_cast<int>(text.size());
    const int size =
        WideCharToMultiByte(codePage, 0, text.data(), length, nullptr, 0, nullptr, nullptr);
    std::string narrow(static_cast<size_t>(size), '\0');
    WideCharToMultiByte(codePage, 0, text.data(), length, narrow.data(), size, nullptr, nullptr);
    return narrow;
}

std::wstring ToWidePath(const std::string& path) {
    constexpr size_t kSafeLength = MAX_PATH - 32; // a directory's limit, with room for a name
    const std::wstring wide = ToWide(path);
    if (wide.compare(0, 4, L"\\\\?\\") == 0)
        return wide;
    const std::wstring absolute = MakeAbsolute(wide); // the limit is one of the whole path
    if (absolute.size() < kSafeLength)
        return wide;
    if (absolute.compare(0, 2, L"\\\\") == 0)
        return L"\\\\?\\UNC\\" + absolute.substr(2);
    return L"\\\\?\\" + absolute;
}

} // namespace Kor
