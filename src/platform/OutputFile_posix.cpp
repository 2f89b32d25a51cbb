#include "platform/File.h"

#include "core/Names.h"
#include "platform/Descriptor_posix.h"
#include "platform/FileNames.h"
#include "platform/HeldSignal_posix.h"
#include "platform/PathLookup_posix.h"

#include <fcntl.h>
#include <sys/random.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <climits>
#include <cstdio>
#include <optional>
#include <utility>

namespace Kor {

namespace {

constexpr mode_t kAllBits = 07777;
constexpr mode_t kUsualBits = 0666; // less what the process masks out

/// What a new file of this process may be used for in a directory. Where the directory itself says
/// so (by a default access list), only a file made there can tell; one without a name does.
mode_t GetUsualMode(const std::string& directory) {
    const char* path = directory.empty() ? "." : directory.c_str();
    const Descriptor unnamed(open(path, O_TMPFILE | O_WRONLY | O_CLOEXEC, kUsualBits));
    struct stat status;
    if (unnamed.IsRegular(status))
        return status.st_mode & kAllBits;
    const mode_t masked = umask(S_IRWXG | S_IRWXO); // other threads' files are stricter meanwhile
    umask(masked);
    return kUsualBits & ~masked;
}

class PosixOutputFile : public OutputFile {
public:
    /// `old` is what is to be replaced, if anything is.
    PosixOutputFile(std::string target, const std::optional<struct stat>& old)
        : target_(std::move(target)), directory_(GetDirectoryPart(target_)), old_(old) {}

    ~PosixOutputFile() override {
        if (!temporary_.empty())
            unlink(temporary_.c_str());
    }

    const std::string& GetDirectory() const { return directory_; }

    /// Makes the file that is to take the target's place; false when that cannot be done. Once it
    /// is there nothing needs memory, so that it never stays behind.
    bool MakeTemporary(std::string path) {
        file_ = Descriptor::Open(path, O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW);
        if (file_.IsOpen())
            temporary_ = std::move(path);
        return file_.IsOpen();
    }

    bool Write(std::string_view bytes) override {
        const HeldSignal signal;
        while (file_.IsOpen() && !failed_ && !bytes.empty()) {
            const ssize_t taken = write(file_.Get(), bytes.data(), bytes.size());
            if (taken > 0) {
                bytes.remove_prefix(static_cast<size_t>(taken));
                continue;
            }
            const int error = taken == 0 ? 0 : errno;
            failed_ = error != EINTR;
            signal.TakeBackSignalOf(error);
        }
        return !failed_ && file_.IsOpen();
    }

    bool Commit() override {
        bool done = file_.IsOpen() && !failed_;
        if (done) {
            Publish();
            done = fsync(file_.Get()) == 0;
        }
        done = file_.Close() && done;
        if (done)
            done = rename(temporary_.c_str(), target_.c_str()) == 0;
        if (done)
            temporary_.clear();
        return done;
    }

private:
    /// Until the text is complete nobody else may see it. Then the file gets the group, the owner
    /// and the permissions of the old one, each as far as the system allows. What runs with the
    /// rights of its owner or its group does so no longer where these are others now.
    void Publish() const {
        mode_t mode = old_ ? old_->st_mode & kAllBits : GetUsualMode(directory_);
        if (old_ && fchown(file_.Get(), static_cast<uid_t>(-1), old_->st_gid) != 0)
            mode &= ~static_cast<mode_t>(S_ISGID);
        if (old_ && fchown(file_.Get(), old_->st_uid, static_cast<gid_t>(-1)) != 0)
            mode &= ~static_cast<mode_t>(S_ISUID);
        if (fchmod(file_.Get(), mode) != 0)
            errno = 0; // it stays private
    }

    Descriptor file_;
    std::string temporary_;
    std::string target_;
    std::string directory_;
    std::optional<struct stat> old_;
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

std::unique_ptr<OutputFile> CreateBeside(const std::string& target,
                                         const std::optional<struct stat>& old) {
    constexpr int kMaxTries = 100; // one is enough, as nobody can know the names beforehand
    auto file = std::make_unique<PosixOutputFile>(target, old);
    TemporaryNameBytes random;
    for (int i = 0; i < kMaxTries; ++i) {
        if (getrandom(random.data(), random.size(), 0) != static_cast<ssize_t>(random.size()))
            break;
        if (file->MakeTemporary(file->GetDirectory() + MakeTemporaryName(random)))
            return file;
        if (errno != EEXIST)
            break;
    }
    return nullptr;
}

} // namespace

std::unique_ptr<OutputFile> OutputFile::Create(const char* path) {
    const std::string written = FindPathToCreate(std::string(TextOf(path)));
    if (written.empty() || written.back() == '/')
        return nullptr;
    struct stat old;
    if (stat(written.c_str(), &old) != 0)
        return errno == ENOENT ? CreateBeside(FollowLinks(written), std::nullopt) : nullptr;
    // A rename would also replace what may not be written, and what is no file.
    if (!S_ISREG(old.st_mode) || faccessat(AT_FDCWD, written.c_str(), W_OK, AT_EACCESS) != 0)
        return nullptr;
    return CreateBeside(FollowLinks(written), old);
}

} // namespace Kor
