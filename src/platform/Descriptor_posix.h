#pragma once

#include <string>

#include <sys/stat.h>

namespace Kor {

/// An open file, closed with its owner.
class Descriptor {
public:
    explicit Descriptor(int number = -1) : number_(number) {}
    Descriptor(Descriptor&& other) noexcept : number_(other.number_) { other.number_ = -1; }
    Descriptor& operator=(Descriptor&& other) noexcept;
    ~Descriptor() { Close(); }

    /// Opens a path, or makes a file there that its owner alone may use. Nothing is waited for:
    /// neither the other end of a pipe nor a device; nor does it become the process's terminal.
    static Descriptor Open(const std::string& path, int flags);

    int Get() const { return number_; }
    bool IsOpen() const { return number_ >= 0; }

    /// False when the system reports a fault that it had kept back.
    bool Close();

    /// Whether it is a regular file, of which the status is given.
    bool IsRegular(struct stat& status) const;

private:
    int number_;
};

} // namespace Kor
