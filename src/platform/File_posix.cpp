#include "platform/File.h"

#include "core/Names.h"
#include "platform/FileNames.h"
#include "platform/PathLookup_posix.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdio>
#include <ctime>
#include <utility>

namespace Kor {

namespace {

/// An open file, closed with its owner.
class Descriptor {
public:
    explicit Descriptor(int number = -1) : number_(number) {}
    Descriptor(Descriptor&& other) noexcept : number_(other.number_) { other.number_ = -1; }
    Descriptor& operator=(Descriptor&& other) noexcept {
        std::swap(number_, other.number_);
        return *this;
    }
    ~Descriptor() { Close(); }

    int Get() const { return number_; }
    bool IsOpen() const { return number_ >= 0; }

    bool Close() {
        const bool closed = !IsOpen() || close(number_) == 0;
        number_ = -1;
        return closed;
    }

private:
    int number_;
};

Descriptor OpenFile(const std::string& path, int flags) {
    constexpr mode_t kMode = 0666; // less what the process masks out
    int number = -1;
    do
        number = open(path.c_str(), flags | O_CLOEXEC, kMode);
    while (number < 0 && errno == EINTR);
    return Descriptor(number);
}

class PosixInputFile : public InputFile {
public:
    explicit PosixInputFile(Descriptor file) : file_(std::move(file)) {}

    size_t Read(char* buffer, size_t capacity) override {
        ssize_t taken = -1;
        do
            taken = read(file_.Get(), buffer, capacity);
        while (taken < 0 && errno == EINTR);
        failed_ = failed_ || taken < 0;
        return taken > 0 ? static_cast<size_t>(taken) : 0;
    }

    bool HasFailed() const override { return failed_; }

private:
    Descriptor file_;
    bool failed_ = false;
};

/// Where a file may not grow, or nobody reads a pipe any more, the system sends a signal beside the
/// error, which would end the host. While this lives, such signals are held back.
class HeldSignals {
public:
    HeldSignals() {
        sigemptyset(&signals_);
        sigaddset(&signals_, SIGXFSZ);
        sigaddset(&signals_, SIGPIPE);
        sigpending(&waiting_);
        pthread_sigmask(SIG_BLOCK, &signals_, &previous_);
    }
    ~HeldSignals() { pthread_sigmask(SIG_SETMASK, &previous_, nullptr); }
    HeldSignals(const HeldSignals&) = delete;
    HeldSignals& operator=(const HeldSignals&) = delete;

    /// Takes back the signal that came with an error; one that waited for the host before stays.
    void TakeBackSignalOf(int error) const {
        const int signal = error == EFBIG ? SIGXFSZ : SIGPIPE;
        if ((error != EFBIG && error != EPIPE) || sigismember(&waiting_, signal) == 1)
            return;
        sigset_t own;
        sigemptyset(&own);
        sigaddset(&own, signal);
        const timespec noTime{};
        while (sigtimedwait(&own, nullptr, &noTime) < 0 && errno == EINTR) {
        }
    }

private:
    sigset_t signals_{};
    sigset_t waiting_{}; ///< for the host, before the write
    sigset_t previous_{};
};

class PosixOutputFile : public OutputFile {
public:
    explicit PosixOutputFile(std::string target) : target_(std::move(target)) {}

    ~PosixOutputFile() override {
        if (!temporary_.empty())
            unlink(temporary_.c_str());
    }

    /// Opens the target itself; false when that cannot be done.
    bool OpenTarget() {
        file_ = OpenFile(target_, O_WRONLY);
        return file_.IsOpen();
    }

    /// Makes the file that is to take the target's place; false when that cannot be done. Once it
    /// is there nothing needs memory, so that it never stays behind.
    bool MakeTemporary(std::string path) {
        file_ = OpenFile(path, O_WRONLY | O_CREAT | O_EXCL);
        if (file_.IsOpen())
            temporary_ = std::move(path);
        return file_.IsOpen();
    }

    /// Gives the new file the owner, as far as the system allows, and the permissions of the old
    /// one.
    void CopyPermissions(const struct stat& old) const {
        constexpr mode_t kPermissions = S_IRWXU | S_IRWXG | S_IRWXO;
        if (fchown(file_.Get(), old.st_uid, old.st_gid) != 0)
            errno = 0;
        if (fchmod(file_.Get(), old.st_mode & kPermissions) != 0)
            errno = 0;
    }

    bool Write(std::string_view bytes) override {
        const HeldSignals signals;
        while (file_.IsOpen() && !failed_ && !bytes.empty()) {
            const ssize_t taken = write(file_.Get(), bytes.data(), bytes.size());
            if (taken > 0) {
                bytes.remove_prefix(static_cast<size_t>(taken));
                continue;
            }
            const int error = taken == 0 ? 0 : errno;
            failed_ = error != EINTR;
            signals.TakeBackSignalOf(error);
        }
        return !failed_ && file_.IsOpen();
    }

    bool Commit() override {
        bool done = file_.IsOpen() && !failed_;
        if (done && !temporary_.empty())
            done = fsync(file_.Get()) == 0;
        done = file_.Close() && done;
        if (done && !temporary_.empty()) {
            done = rename(temporary_.c_str(), target_.c_str()) == 0;
            if (done)
                temporary_.clear();
        }
        return done;
    }

private:
    Descriptor file_;
    std::string temporary_;
    std::string target_;
    bool failed_ = false;
};

/// The path behind symbolic links, whether there is a file at their end or not.
std::string FollowLinks(std::string path) {
    constexpr int kMaxLinks = 40;
    char link[PATH_MAX];
    for (int i = 0; i < kMaxLinks; ++i) {
        const ssize_t length = readlink(path.c_str(), link, sizeof link);
        if (length <= 0)
            break;
        const std::string_view next(link, static_cast<size_t>(length));
        path = next.front() == '/' ? std::string() : GetDirectoryPart(path);
        path += next;
    }
    return path;
}

/// Devices and pipes cannot be replaced: they are written as the text comes.
std::unique_ptr<OutputFile> OpenDirectly(const std::string& path) {
    auto file = std::make_unique<PosixOutputFile>(path);
    if (!file->OpenTarget())
        return nullptr;
    return file;
}

std::unique_ptr<OutputFile> CreateBeside(const std::string& target, const struct stat* old) {
    constexpr int kMaxTries = 100;
    auto file = std::make_unique<PosixOutputFile>(target);
    for (int i = 0; i < kMaxTries; ++i) {
        if (file->MakeTemporary(GetDirectoryPart(target) +
                                MakeTemporaryName(static_cast<unsigned long>(getpid())))) {
            if (old)
                file->CopyPermissions(*old);
            return file;
        }
        if (errno != EEXIST)
            break;
    }
    return nullptr;
}

/// Whether an entry is a directory or a link to one.
bool IsDirectory(DIR* directory, const char* name) {
    struct stat status;
    return fstatat(dirfd(directory), name, &status, 0) == 0 && S_ISDIR(status.st_mode);
}

} // namespace

std::unique_ptr<InputFile> InputFile::Open(const char* path) {
    Descriptor file = OpenFile(FindPath(std::string(TextOf(path))), O_RDONLY);
    struct stat status;
    if (!file.IsOpen() || fstat(file.Get(), &status) != 0 || S_ISDIR(status.st_mode))
        return nullptr;
    return std::make_unique<PosixInputFile>(std::move(file));
}

std::unique_ptr<OutputFile> OutputFile::Create(const char* path) {
    const std::string written = FindPathToCreate(std::string(TextOf(path)));
    if (written.empty() || written.back() == '/')
        return nullptr;
    struct stat old;
    if (stat(written.c_str(), &old) != 0)
        return errno == ENOENT ? CreateBeside(FollowLinks(written), nullptr) : nullptr;
    if (S_ISDIR(old.st_mode))
        return nullptr;
    if (!S_ISREG(old.st_mode))
        return OpenDirectly(written);
    if (access(written.c_str(), W_OK) != 0)
        return nullptr; // a rename would replace a file that may not be written
    return CreateBeside(FollowLinks(written), &old);
}

bool ListDirectory(const std::string& directory, bool files, bool directories,
                   std::vector<std::string>& names) {
    names.clear();
    const DirectoryHandle open = OpenDirectory(FindPath(directory));
    if (!open)
        return false;
    while (const dirent* entry = readdir(open.get())) {
        const bool taken = IsDirectory(open.get(), entry->d_name) ? directories : files;
        if (taken && entry->d_name[0] != '.')
            names.emplace_back(entry->d_name);
    }
    SortFileNames(names);
    return true;
}

} // namespace Kor
