#pragma once

#include <sys/resource.h>

/// Lets no file grow beyond a size while it lives, so that writes fail as on a full disk. What the
/// system sends to who writes on (SIGXFSZ) ends the process unless the library minds it.
class FileSizeLimit {
public:
    explicit FileSizeLimit(rlim_t size) {
        getrlimit(RLIMIT_FSIZE, &previous_);
        const rlimit limit{size, previous_.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FileSizeLimit() { setrlimit(RLIMIT_FSIZE, &previous_); }

private:
    rlimit previous_{};
};
