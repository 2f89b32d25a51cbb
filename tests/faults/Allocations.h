#pragma once

/// Makes allocations of the library fail on request: those by operator new, and those by malloc and
/// its relatives, which the linker passes on (see CMakeLists.txt).
class Allocations {
public:
    enum Mode {
        kOnce,      ///< One allocation fails, and there is memory again behind it.
        kFromThenOn ///< All further ones fail too.
    };

    /// From now on the n-th allocation fails, counted from 1; 0 lets all succeed and only counts.
    static void Arm(long n, Mode mode);

    /// No further allocation fails.
    static void Disarm();

    /// How many there were since Arm.
    static long GetCount();

    /// Whether one has failed since Arm.
    static bool HasFailed();

    /// Refuses allocations above this many bytes, as systems do that promise no memory they do not
    /// have; 0 refuses none.
    static void RefuseAbove(unsigned long long bytes);
};
