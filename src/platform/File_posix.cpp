#include "platform/File.h"

#include "core/Names.h"
#include "platform/Descriptor_posix.h"
#include "platform/FileNames.h"
#include "platform/PathLookup_posix.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <utility>

namespace Kor {

namespace {

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

/// What an entry of a directory is: DT_REG, DT_DIR or something else; of a link, what it leads to.
unsigned char KindOf(DIR* directory, const dirent& entry) {
    if (entry.d_type != DT_LNK && entry.d_type != DT_UNKNOWN)
        return entry.d_type;
    struct stat status;
    if (fstatat(dirfd(directory), entry.d_name, &status, 0) != 0)
        return DT_UNKNOWN;
    return static_cast<unsigned char>(IFTODT(status.st_mode));
}

bool IsWanted(unsigned char kind, bool files, bool directories) {
    return kind == DT_DIR ? directories : files && kind == DT_REG;
}

} // namespace

std::unique_ptr<InputFile> InputFile::Open(const char* path) {
    const std::string found = FindPath(std::string(TextOf(path)));
    struct stat status;
    // Devices and pipes are not even opened, which somebody at their other end may be waiting for;
    // what may have come in the file's place since then is found out behind it.
    if (stat(found.c_str(), &status) != 0 || !S_ISREG(status.st_mode))
        return nullptr;
    Descriptor file = Descriptor::Open(found, O_RDONLY);
    return file.IsRegular(status) ? std::make_unique<PosixInputFile>(std::move(file)) : nullptr;
}

bool ListDirectory(const std::string& directory, bool files, bool directories,
                   std::vector<std::string>& names) {
    names.clear();
    const DirectoryHandle open = OpenDirectory(FindPath(directory));
    if (!open)
        return false;
    errno = 0;
    while (const dirent* entry = readdir(open.get())) {
        if (entry->d_name[0] != '.' && IsWanted(KindOf(open.get(), *entry), files, directories))
            names.emplace_back(entry->d_name);
        errno = 0;
    }
    if (errno != 0) { // half a list would look like a whole one
        names.clear();
        return false;
    }
    SortFileNames(names);
    return true;
}

} // namespace Kor
