// rand_s, the system's source of chance, has to be asked for before any header.
#define _CRT_RAND_S // NOLINT(bugprone-reserved-identifier): the system's name
#include <cstdlib>

#include "platform/File.h"

#include "core/Names.h"
#include "platform/FileNames.h"
#include "platform/WideText_windows.h"

#ifndef NOMINMAX
#define NOMINMAX
#endif
#define WIN32_LEAN_AND_MEAN
#include <windows.h>

#include <algorithm>
#include <utility>

namespace Kor {

namespace {

constexpr size_t kMaxTransfer = size_t{1} << 30; // the system counts in 32 bits
constexpr DWORD kNoFile = FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_DEVICE;
constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

/// An open file, closed with its owner.
class Handle {
public:
    explicit Handle(HANDLE value = INVALID_HANDLE_VALUE) : value_(value) {}
    Handle(Handle&& other) noexcept : value_(other.value_) { other.value_ = INVALID_HANDLE_VALUE; }
    Handle& operator=(Handle&& other) noexcept {
        std::swap(value_, other.value_);
        return *this;
    }
    ~Handle() { Close(); }

    HANDLE Get() const { return value_; }
    bool IsOpen() const { return value_ != INVALID_HANDLE_VALUE; }

    bool Close() {
        const bool closed = !IsOpen() || CloseHandle(value_);
        value_ = INVALID_HANDLE_VALUE;
        return closed;
    }

private:
    HANDLE value_;
};

Handle OpenFile(const std::wstring& path, DWORD access, DWORD share, DWORD disposition,
                DWORD flags = 0) {
    return Handle(CreateFileW(path.c_str(), access, share, nullptr, disposition,
                              FILE_ATTRIBUTE_NORMAL | flags, nullptr));
}

/// Whether the system takes a path for one of its devices (NUL, CON, COM1, ...), whatever directory
/// and extension it has; to open some of them is to wait.
bool NamesDevice(const std::wstring& path) {
    std::wstring whole(GetFullPathNameW(path.c_str(), 0, nullptr, nullptr), L'\0');
    GetFullPathNameW(path.c_str(), static_cast<DWORD>(whole.size()), whole.data(), nullptr);
    constexpr std::wstring_view kDevices = L"\\\\.\\";
    return whole.compare(0, kDevices.size(), kDevices) == 0;
}

/// Neither device nor pipe nor directory nor a whole disk, of which the system knows no number.
bool IsRegular(const Handle& file) {
    BY_HANDLE_FILE_INFORMATION about;
    return file.IsOpen() && GetFileType(file.Get()) == FILE_TYPE_DISK &&
           GetFileInformationByHandle(file.Get(), &about) &&
           (about.dwFileAttributes & kNoFile) == 0;
}

class WindowsInputFile : public InputFile {
public:
    explicit WindowsInputFile(Handle file) : file_(std::move(file)) {}

    size_t Read(char* buffer, size_t capacity) override {
        const auto wanted = static_cast<DWORD>(std::min(capacity, kMaxTransfer));
        DWORD taken = 0;
        if (ReadFile(file_.Get(), buffer, wanted, &taken, nullptr))
            return taken;
        failed_ = true;
        return 0;
    }

    bool HasFailed() const override { return failed_; }

private:
    Handle file_;
    bool failed_ = false;
};

/// Gives the new file the access rights of the old one, as far as the system allows.
void CopyPermissions(const std::wstring& old, const std::wstring& file) {
    DWORD size = 0;
    GetFileSecurityW(old.c_str(), DACL_SECURITY_INFORMATION, nullptr, 0, &size);
    std::string descriptor(size, '\0');
    if (GetFileSecurityW(old.c_str(), DACL_SECURITY_INFORMATION, descriptor.data(), size, &size))
        SetFileSecurityW(file.c_str(), DACL_SECURITY_INFORMATION, descriptor.data());
}

/// Puts the file in the place of the target. Programs that watch files, such as virus scanners,
/// hold a fresh one for a moment, in which the system refuses.
bool Replace(const std::wstring& target, const std::wstring& file) {
    constexpr DWORD kFlags = MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH;
    constexpr int kMaxTries = 10;
    constexpr DWORD kPause = 25; // milliseconds
    for (int i = 0; i < kMaxTries; ++i) {
        if (MoveFileExW(file.c_str(), target.c_str(), kFlags))
            return true;
        const DWORD error = GetLastError();
        if (error != ERROR_SHARING_VIOLATION && error != ERROR_ACCESS_DENIED)
            return false;
        Sleep(kPause);
    }
    return false;
}

class WindowsOutputFile : public OutputFile {
public:
    explicit WindowsOutputFile(std::wstring target) : target_(std::move(target)) {}

    ~WindowsOutputFile() override {
        file_.Close(); // an open file could not be deleted
        if (!temporary_.empty())
            DeleteFileW(temporary_.c_str());
    }

    /// Makes the file that is to take the target's place; false when that cannot be done. Once it
    /// is there nothing needs memory, so that it never stays behind. While it is open nobody else
    /// can open it, and a link of that name would count as there.
    bool MakeTemporary(std::wstring path) {
        file_ = OpenFile(path, GENERIC_WRITE, 0, CREATE_NEW, FILE_FLAG_OPEN_REPARSE_POINT);
        if (file_.IsOpen())
            temporary_ = std::move(path);
        return file_.IsOpen();
    }

    bool Write(std::string_view bytes) override {
        while (!failed_ && !bytes.empty()) {
            const auto wanted = static_cast<DWORD>(std::min(bytes.size(), kMaxTransfer));
            DWORD taken = 0;
            failed_ = !WriteFile(file_.Get(), bytes.data(), wanted, &taken, nullptr) || taken == 0;
            bytes.remove_prefix(taken);
        }
        return !failed_ && file_.IsOpen();
    }

    bool Commit() override {
        bool done = file_.IsOpen() && !failed_;
        if (done)
            done = FlushFileBuffers(file_.Get());
        done = file_.Close() && done;
        if (done) {
            // Not earlier: they may forbid to take the temporary file away again.
            CopyPermissions(target_, temporary_);
            done = Replace(target_, temporary_);
            if (done)
                temporary_.clear();
        }
        return done;
    }

private:
    Handle file_;
    std::wstring temporary_;
    std::wstring target_;
    bool failed_ = false;
};

/// The path of an open file behind all links; the given one when the system cannot tell.
std::wstring GetFinalPath(const Handle& file, const std::wstring& given) {
    const DWORD size = GetFinalPathNameByHandleW(file.Get(), nullptr, 0, FILE_NAME_NORMALIZED);
    std::wstring path(size, L'\0');
    const DWORD length =
        GetFinalPathNameByHandleW(file.Get(), path.data(), size, FILE_NAME_NORMALIZED);
    if (length == 0 || length >= size)
        return given;
    path.resize(length);
    return path;
}

bool IsReadOnly(const std::wstring& path) {
    const DWORD attributes = GetFileAttributesW(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_READONLY) != 0;
}

bool FillWithChance(TemporaryNameBytes& bytes) {
    for (unsigned char& byte : bytes) {
        unsigned number = 0;
        if (rand_s(&number) != 0)
            return false;
        byte = static_cast<unsigned char>(number);
    }
    return true;
}

std::unique_ptr<OutputFile> CreateBeside(const std::wstring& target) {
    constexpr int kMaxTries = 100; // one is enough, as nobody can know the names beforehand
    TemporaryNameBytes random;
    const size_t nameAt = target.find_last_of(L"\\/:") + 1;
    auto file = std::make_unique<WindowsOutputFile>(target);
    for (int i = 0; i < kMaxTries && FillWithChance(random); ++i) {
        if (file->MakeTemporary(target.substr(0, nameAt) + ToWide(MakeTemporaryName(random))))
            return file;
        if (GetLastError() != ERROR_FILE_EXISTS)
            break;
    }
    return nullptr;
}

} // namespace

std::unique_ptr<InputFile> InputFile::Open(const char* path) {
    const std::wstring given = ToWidePath(std::string(TextOf(path)));
    if (NamesDevice(given))
        return nullptr;
    // Other programs may go on reading, writing and replacing the file.
    Handle file = OpenFile(given, GENERIC_READ, kShareAll, OPEN_EXISTING);
    return IsRegular(file) ? std::make_unique<WindowsInputFile>(std::move(file)) : nullptr;
}

std::unique_ptr<OutputFile> OutputFile::Create(const char* path) {
    const std::wstring given = ToWidePath(std::string(TextOf(path)));
    if (NamesDevice(given))
        return nullptr;
    // Opening what is there tells whether it may be written, and finds directories out.
    Handle old = OpenFile(given, GENERIC_WRITE, kShareAll, OPEN_EXISTING);
    if (!old.IsOpen())
        return GetLastError() == ERROR_FILE_NOT_FOUND ? CreateBeside(given) : nullptr;
    const std::wstring target = GetFinalPath(old, given);
    // Some users may open such a file all the same; it is not to be replaced by them either.
    if (!IsRegular(old) || IsReadOnly(target))
        return nullptr;
    old.Close();
    return CreateBeside(target);
}

bool ListDirectory(const std::string& directory, bool files, bool directories,
                   std::vector<std::string>& names) {
    names.clear();
    const bool ended = directory.empty() || directory.back() == '\\' || directory.back() == '/';
    WIN32_FIND_DATAW entry;
    const HANDLE search =
        FindFirstFileW(ToWidePath(directory + (ended ? "*" : "\\*")).c_str(), &entry);
    if (search == INVALID_HANDLE_VALUE)
        return false;
    const std::unique_ptr<void, decltype(&FindClose)> closer(search, &FindClose);
    // The names come in the directory's own code page, so that both together are valid again.
    const unsigned codePage = GetCodePageOf(directory);
    do {
        const bool isDirectory = (entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
        const bool isFile = (entry.dwFileAttributes & kNoFile) == 0;
        if (entry.cFileName[0] != L'.' && ((isDirectory && directories) || (isFile && files)))
            names.push_back(FromWide(entry.cFileName, codePage));
    } while (FindNextFileW(search, &entry));
    const bool whole = GetLastError() == ERROR_NO_MORE_FILES;
    if (!whole) // half a list would look like a whole one
        names.clear();
    SortFileNames(names);
    return whole;
}

} // namespace Kor
