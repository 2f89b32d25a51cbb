#pragma once

#include <string_view>

namespace Kor {

class Instance;
class PropertyInstance;

/// Watches, on the stack, a property instance that callbacks hear of while no list has it: they may
/// give it to another owner, and delete one that goes. Whoever took it out must not touch it then.
class UnlistedPropertyInstance {
public:
    enum Fate {
        kGoes,      ///< It was removed and is about to be deleted.
        kComesBack, ///< It is listed again after the event, so it still counts as there.
    };

    UnlistedPropertyInstance(PropertyInstance& watched, Fate fate)
        : watched_(&watched), fate_(fate), outer_(innermost_) {
        innermost_ = this;
    }
    ~UnlistedPropertyInstance() { innermost_ = outer_; }
    UnlistedPropertyInstance(const UnlistedPropertyInstance&) = delete;
    UnlistedPropertyInstance& operator=(const UnlistedPropertyInstance&) = delete;

    /// The property instance; null once it died or went to another owner.
    PropertyInstance* Get() const { return watched_; }

    /// Called when a property instance dies or leaves its instance.
    static void Forget(const PropertyInstance& gone);

    /// The property instance of that full name that comes back to the instance, or null.
    static PropertyInstance* Find(const Instance& instance, std::string_view fullName) {
        return innermost_ ? Search(instance, fullName) : nullptr;
    }

private:
    static PropertyInstance* Search(const Instance& instance, std::string_view fullName);

    PropertyInstance* watched_;
    Fate fate_;
    UnlistedPropertyInstance* outer_; // events nest: callbacks call back into the library

    static inline UnlistedPropertyInstance* innermost_ = nullptr;
};

} // namespace Kor
