#pragma once

#include <cstddef>
#include <set>
#include <vector>

namespace Kor {
class AttributeInstance;
class AttributeProperty;
class Instance;
class Object;
class Property;
class Type;
} // namespace Kor

/// What the library leaves to the host by intent: commands, alternates, levels of detail, and
/// instances inside values. A fuzzer makes so many of them that they have to be collected while
/// their owners still know them, and deleted when these are gone.
class Leftovers {
public:
    /// All that the templates of the registry refer to.
    void TakeSchema();

    /// All that the assets of the scene hold in their values.
    void TakeScene();

    /// Deletes what was taken; called when neither schema nor scene refer to it any more.
    void Delete();

private:
    void TakeProperty(const Kor::Property& property);
    void TakeValues(const Kor::AttributeProperty& attribute);
    void TakeBlock(const Kor::Type& type, const void* block);
    void TakeNested(const Kor::AttributeInstance& attribute);
    void WalkInstances(std::size_t first);
    void TakeInstance(Kor::Instance* instance);

    std::vector<Kor::Object*> taken_;
    std::set<const Kor::Object*> known_;
    std::vector<Kor::Instance*> instances_; // taken ones, and assets that are only looked into
};
