#include "instances/PropertyInstance.h"

#include <utility>

#include "instances/Instance.h"
#include "notify/NotificationManager.h"
#include "schema/Property.h"
#include "schema/Template.h"

namespace Kor {

PropertyInstance::PropertyInstance(Instance& instance, Property& property)
    : property_(&property), instance_(&instance) {
    property.AddUse();
}

void PropertyInstance::Leave() noexcept {
    LetGo();
    NamedObject::Leave();
}

void PropertyInstance::LetGo() noexcept {
    if (instance_)
        std::exchange(instance_, nullptr)->ForgetPropertyInstance(*this);
    if (std::exchange(usesProperty_, false))
        property_->ReleaseUse();
}

std::string_view PropertyInstance::GetKey() const {
    return property_->GetFullName();
}

Template* PropertyInstance::GetTemplate() const {
    const Template* owner = property_->GetOwner();
    return owner && instance_ ? instance_->GetTemplate(owner->GetFullName()) : nullptr;
}

bool PropertyInstance::SetBindingLocked(bool locked) {
    ChangeLock(bindingLocked_, locked, kBindingLockedChanged);
    return true;
}

bool PropertyInstance::SetValueLocked(bool locked) {
    ChangeLock(valueLocked_, locked, kValueLockedChanged);
    return true;
}

/// The event goes out even when the flag does not change.
void PropertyInstance::ChangeLock(bool& stored, bool locked, int event) {
    bool proposed = locked;
    if (NotificationManager* notifications = NotificationManager::Get())
        notifications->NotifyPropertyInstance(this, event, &proposed);
    stored = proposed;
}

void PropertyInstance::CopyFrom(const PropertyInstance& source) {
    CopyTexts(source);
    bindingLocked_ = source.bindingLocked_;
    valueLocked_ = source.valueLocked_;
}

} // namespace Kor
