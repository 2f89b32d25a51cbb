#pragma once

/// Counts what the library asks the file system: how often it looks at a path, and how many entries
/// of directories it goes through. Besides, it answers like other file systems, or like chance that
/// somebody foresaw. The linker passes these calls on (see CMakeLists.txt).
class FileSystemCalls {
public:
    /// Counts from 0.
    static void Begin();

    /// How many there were since Begin.
    static long GetCount();

    /// Makes no file without a name from now on, as on file systems that have none.
    static void RefuseUnnamedFiles(bool refuses);

    /// How often one was refused.
    static long GetRefusedCount();

    /// The next random bytes are all `first`, those after them all `first + 1`, and so on; below 0
    /// they come from the system.
    static void ForeseeRandomBytes(int first);
};
