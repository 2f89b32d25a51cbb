#pragma once

#include "core/ByteStreams.h"

#include <memory>
#include <string>
#include <vector>

namespace Kor {

// Paths are 8-bit text and keep their backslashes everywhere else in the library; here they meet
// the file system. Windows takes them as UTF-8 when they are valid UTF-8, otherwise in the system's
// code page. Linux takes a backslash as "/", and looks for a path that does not exist as written
// without regard to ASCII case, component by component.

/// A file read as bytes.
class InputFile : public ByteSource {
public:
    /// Null when the path is no readable file.
    static std::unique_ptr<InputFile> Open(const char* path);
};

/// A file that replaces its predecessor only when its new text is complete: the bytes go to a
/// temporary file beside it, which takes its place in Commit. Without a successful Commit the old
/// file stays as it was. A symbolic link keeps pointing to its file; a device is written directly.
/// A write that is refused says so; the signals that Linux sends beside it never reach the host.
class OutputFile : public ByteSink {
public:
    /// Null when the path cannot be written.
    static std::unique_ptr<OutputFile> Create(const char* path);

    /// Puts the new file in place, with the permissions of the old one. False when this or any
    /// write before it failed. Nothing can be written afterwards.
    virtual bool Commit() = 0;
};

/// The names in a directory that do not begin with ".", ascending without regard to ASCII case.
/// False when the directory cannot be listed.
bool ListDirectory(const std::string& directory, bool files, bool directories,
                   std::vector<std::string>& names);

} // namespace Kor
