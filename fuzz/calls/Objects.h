#pragma once

#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace Kor {
class AttributeInstance;
class Group;
class Instance;
class Object;
class Property;
class PropertyInstance;
class Template;
class Type;
} // namespace Kor

/// All objects that a host could have a handle of: what the managers, the scene and the objects of
/// the host lead to. Collected anew after every call that may delete something, so that no handle
/// is ever handed in behind its object's end.
class Objects {
public:
    /// Walks from the managers and from the given objects.
    void Collect(const std::vector<Kor::Object*>& roots);

    /// The objects of a class or a class derived from it, in an order that the calls before decide.
    const std::vector<Kor::Object*>& Get(int classId);

    const std::vector<Kor::Object*>& GetAll() const { return all_; }

private:
    void Add(const Kor::Object* object);
    template <class Part> void AddKnown(Part* part);
    void AddManagers();
    void Follow(Kor::Object& object);
    void FollowType(Kor::Type& type);
    void FollowTemplate(const Kor::Template& definition);
    void FollowProperty(Kor::Property& property);
    void FollowGroup(const Kor::Group& group);
    void FollowInstance(const Kor::Instance& instance);
    void FollowMember(const Kor::PropertyInstance& member);
    void FollowAttribute(const Kor::AttributeInstance& attribute);

    std::vector<Kor::Object*> all_;
    std::unordered_set<const Kor::Object*> known_;
    std::unordered_map<int, std::vector<Kor::Object*>> byClass_;
};
