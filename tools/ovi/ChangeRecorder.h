#pragma once

#include <ovi/ovi.h>

#include <unordered_set>

namespace OviTool {

/// Remembers which property instances were given something (a value, a binding or a lock) while it
/// lives. The library tells nobody afterwards whether a value was read or is a default. Must not
/// outlive the session.
class ChangeRecorder {
public:
    ChangeRecorder();
    ChangeRecorder(const ChangeRecorder&) = delete;
    ChangeRecorder& operator=(const ChangeRecorder&) = delete;
    ~ChangeRecorder();

    /// Whether the property instance was given anything.
    bool WasChanged(const OviPropertyInstance* propertyInstance) const;

    /// Whether it was given a value.
    bool HasValue(const OviPropertyInstance* propertyInstance) const;

private:
    static void OnInstanceEvent(void* userData, void* object, int event, void* argument);
    static void OnPropertyInstanceEvent(void* userData, void* object, int event, void* argument);

    std::unordered_set<const void*> changed_;
    std::unordered_set<const void*> withValue_;
};

} // namespace OviTool
