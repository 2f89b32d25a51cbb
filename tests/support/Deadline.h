#pragma once

#include <unistd.h>

/// Ends the process where what is tried while this lives waits for something that never comes.
class Deadline {
public:
    Deadline() { alarm(kSeconds); }
    ~Deadline() { alarm(0); }
    Deadline(const Deadline&) = delete;
    Deadline& operator=(const Deadline&) = delete;

private:
    static constexpr unsigned kSeconds = 20;
};
