#pragma once

#include <cstddef>
#include <vector>

namespace Kor {

class AttributeInstance;
class Instance;
class PropertyInstance;

/// The instances whose elements a scene reader has open, the innermost last, each with the property
/// instance whose element is open in it. A file may replace the value that it is just filling, and
/// callbacks of the host may delete anything: what dies is forgotten here, in constant time.
class OpenInstances {
public:
    struct Place {
        Instance* instance;                     ///< Null once it died.
        PropertyInstance* property = nullptr;   ///< Whose element is open, if any is.
        AttributeInstance* attribute = nullptr; ///< The same, while that is an attribute element.
        int nestedCount = 0;                    ///< Instances met so far in the attribute.
        int nextProperty = 0;                   ///< Where the next property instance is expected.
        bool skipped = false;                   ///< The open attribute is unknown, or it died.
        size_t outer = 0;                       ///< One past the same instance's place further out.
    };

    /// Readers end in the reverse order of their beginning: a second one runs in a callback.
    OpenInstances() : places_(Places()), base_(places_.size()) {}
    ~OpenInstances();
    OpenInstances(const OpenInstances&) = delete;
    OpenInstances& operator=(const OpenInstances&) = delete;

    /// Whether this reader has no instance open; another one further out may.
    bool IsEmpty() const { return places_.size() == base_; }

    /// The innermost instance; there must be one.
    Place& Top() const { return places_.back(); }

    /// Opens an instance inside of the others, and closes the innermost one.
    void Push(Instance& instance);
    void Pop();

    /// Called by an instance that is open somewhere: it dies, or it loses one or all (null) of its
    /// property instances.
    static void ForgetInstance(const Instance& instance);
    static void ForgetPropertyInstance(const Instance& instance, const PropertyInstance* lost);

private:
    static std::vector<Place>& Places();

    std::vector<Place>& places_;
    size_t base_;
};

} // namespace Kor
