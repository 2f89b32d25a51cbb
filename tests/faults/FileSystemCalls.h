#pragma once

/// Counts what the library asks the file system: how often it looks at a path, and how many entries
/// of directories it goes through. The linker passes these calls on (see CMakeLists.txt).
class FileSystemCalls {
public:
    /// Counts from 0.
    static void Begin();

    /// How many there were since Begin.
    static long GetCount();
};
