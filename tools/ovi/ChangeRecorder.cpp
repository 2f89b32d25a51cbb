#include "ChangeRecorder.h"

namespace OviTool {

ChangeRecorder::ChangeRecorder() {
    OviNotificationManager_RegisterInstanceCallback(&ChangeRecorder::OnInstanceEvent, this);
    OviNotificationManager_RegisterPropertyInstanceCallback(
        &ChangeRecorder::OnPropertyInstanceEvent, this);
}

ChangeRecorder::~ChangeRecorder() {
    OviNotificationManager_UnregisterPropertyInstanceCallback(this);
    OviNotificationManager_UnregisterInstanceCallback(this);
}

bool ChangeRecorder::WasChanged(const OviPropertyInstance* propertyInstance) const {
    return changed_.count(propertyInstance) > 0;
}

bool ChangeRecorder::HasValue(const OviPropertyInstance* propertyInstance) const {
    return withValue_.count(propertyInstance) > 0;
}

void ChangeRecorder::OnInstanceEvent(void* userData, void*, int event, void* argument) {
    if (event != OVI_EVENT_PROPERTY_REMOVED)
        return;
    // Another property instance may soon have this address.
    auto* self = static_cast<ChangeRecorder*>(userData);
    self->changed_.erase(argument);
    self->withValue_.erase(argument);
}

void ChangeRecorder::OnPropertyInstanceEvent(void* userData, void* object, int event, void*) {
    auto* self = static_cast<ChangeRecorder*>(userData);
    self->changed_.insert(object);
    if (event == OVI_EVENT_ATTRIBUTE_VALUE_CHANGED)
        self->withValue_.insert(object);
}

} // namespace OviTool
