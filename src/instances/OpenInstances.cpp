#include "instances/OpenInstances.h"

#include "core/Kept.h"

#include "instances/Instance.h"

namespace Kor {

namespace {

void ForgetProperty(OpenInstances::Place& place) {
    place.skipped = place.skipped || place.attribute;
    place.property = nullptr;
    place.attribute = nullptr;
}

} // namespace

/// One stack for all readers, so that an instance need only know the last of its places.
std::vector<OpenInstances::Place>& OpenInstances::Places() {
    static NeverDestroyed<std::vector<Place>> places;
    static const EmptiedAtEnd<std::vector<Place>> emptied(places.Get());
    return places.Get();
}

OpenInstances::~OpenInstances() {
    while (!IsEmpty())
        Pop();
}

void OpenInstances::Push(Instance& instance) {
    places_.push_back({&instance, nullptr, nullptr, 0, 0, false, instance.GetOpenPlace()});
    instance.SetOpenPlace(places_.size());
}

void OpenInstances::Pop() {
    if (Instance* instance = Top().instance)
        instance->SetOpenPlace(Top().outer);
    places_.pop_back();
}

void OpenInstances::ForgetInstance(const Instance& instance) {
    ForgetPropertyInstance(instance, nullptr);
    for (size_t at = instance.GetOpenPlace(); at > 0; at = Places()[at - 1].outer)
        Places()[at - 1].instance = nullptr;
}

void OpenInstances::ForgetPropertyInstance(const Instance& instance, const PropertyInstance* lost) {
    for (size_t at = instance.GetOpenPlace(); at > 0; at = Places()[at - 1].outer) {
        Place& place = Places()[at - 1];
        if (!lost || place.property == lost)
            ForgetProperty(place);
    }
}

} // namespace Kor
