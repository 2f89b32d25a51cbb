#pragma once

#include <string>

namespace Kor {

class ByteSink;
class ByteSource;

/// Scene files: read into the current scene, and written from it.
class SceneFile {
public:
    /// Reads a file (the extension is forced to "asset"). One that cannot be opened is reported on
    /// the standard error stream alone.
    static bool Load(const char* path);
    static bool Read(const char* sourceName, ByteSource& source);

    /// Writes the scene (the extension is forced to "asset"). The old file stays whole until the
    /// new one is complete; failures are reported to the ErrorManager.
    static bool Save(const char* path);
    static bool Write(ByteSink& sink);

    /// The path of a scene file: whatever follows the last "." becomes "asset", also where that dot
    /// belongs to a directory, since a path is a plain text until a file is touched. A dot at the
    /// very start does not count.
    static std::string ForceExtension(const char* path);
};

} // namespace Kor
