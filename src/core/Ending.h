#pragma once

namespace Kor {

class NamedObject;

/// How objects end. What ends leaves every list and registry at once, so that no look-up finds it
/// any more. Its memory goes at once, too, unless callbacks of the host are running: whoever called
/// them may be in the middle of working on the object, so that it stays until the outermost call of
/// the library returns. What others still use (a type, a property) then belongs to them, and the
/// last of its users ends it.
class Ending {
public:
    /// Ends an object of the heap. Null, and one that has ended already, are left alone.
    static void End(NamedObject* object) noexcept;

    /// Ends an object that belonged to its users, the last of which let go of it. One after the
    /// other where the end of one is the last use of the next: chains of base types can be long.
    static void EndUnused(NamedObject* object) noexcept;

    /// Ends an object that nobody can reach when the outermost call returns.
    static void EndLater(NamedObject* object) noexcept { Wait(object); }

    /// Whether callbacks are running, so that nothing is freed.
    static bool IsDeferred() { return deferrals_ > 0; }

    /// Whether objects that have ended are still there.
    static bool IsAnyWaiting() { return hasWaiting_; }

    /// Lives as long as callbacks are running, or whatever else must not see memory freed. They
    /// nest: callbacks call the library.
    class Deferral {
    public:
        Deferral() { ++deferrals_; }
        ~Deferral() { --deferrals_; }
        Deferral(const Deferral&) = delete;
        Deferral& operator=(const Deferral&) = delete;
    };

    /// At the end of an exported call, the outermost of which frees what waits for it.
    class Call {
    public:
        Call() = default;
        ~Call() {
            if (hasWaiting_ && !IsDeferred())
                FreeWaiting();
        }
        Call(const Call&) = delete;
        Call& operator=(const Call&) = delete;
    };

    /// Something else than a model object that is to go when the outermost call returns.
    class Remains {
    public:
        Remains() = default;
        virtual ~Remains() = default;
        Remains(const Remains&) = delete;
        Remains& operator=(const Remains&) = delete;

    private:
        friend class Ending;
        Remains* next_ = nullptr;
    };

    /// Deletes it now, or with the outermost call.
    static void Free(Remains* remains) noexcept;

private:
    static void Wait(NamedObject* object) noexcept;
    static void FreeWaiting() noexcept;
    static void Bury(NamedObject* object) noexcept;

    static inline int deferrals_ = 0;
    static inline bool hasWaiting_ = false;
    static inline NamedObject* objects_ = nullptr;
    static inline Remains* remains_ = nullptr;
};

} // namespace Kor
