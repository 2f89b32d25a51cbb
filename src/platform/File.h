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

/// A regular file, or what a link to one leads to, read as bytes. Nothing else can be opened: a
/// pipe or a device would keep the host waiting, or never end.
class InputFile : public ByteSource {
public:
    /// Null when the path is no readable regular file.
    static std::unique_ptr<InputFile> Open(const char* path);
};

/// A file that replaces its predecessor only when its new text is complete: the bytes go to a
/// temporary file beside it, which nobody else may use and which takes its place in Commit. Without
/// a successful Commit the old file stays as it was. A symbolic link keeps pointing to its file. A
/// write that is refused says so; the signal that Linux sends beside it never reaches the host.
class OutputFile : public ByteSink {
public:
    /// Null when the path cannot be written, or is there and no regular file.
    static std::unique_ptr<OutputFile> Create(const char* path);

    /// Puts the new file in place, with the permissions, owner and group of the old one, each as
    /// far as the system allows. False when this or any write before it failed. Nothing can be
    /// written afterwards.
    virtual bool Commit() = 0;
};

/// The names in a directory that do not begin with ".", ascending without regard to ASCII case:
/// those of regular files, of directories, or of both. A link counts as what it leads to; whatever
/// is neither is left out. False when the directory cannot be listed.
bool ListDirectory(const std::string& directory, bool files, bool directories,
                   std::vector<std::string>& names);

} // namespace Kor
