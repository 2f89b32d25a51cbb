#include "calls/Callbacks.h"

#include "calls/Interpreter.h"
#include "calls/World.h"
#include "support/SceneLook.h"
#include "support/Touch.h"

World* Callbacks::world_ = nullptr;

void Callbacks::SetWorld(World* world) {
    world_ = world;
}

void Callbacks::Register() {
    OviNotificationManager_RegisterInstanceCallback(&HearInstance, &world_);
    OviNotificationManager_RegisterPropertyInstanceCallback(&HearPropertyInstance, &world_);
}

void Callbacks::HearInstance(void*, void* object, int event, void* argument) {
    auto* instance = static_cast<OviInstance*>(object);
    SceneLook::AskName(instance);
    OviInstance_GetTemplateCount(instance);
    OviInstance_GetParentAsset(instance);
    LookAtArgument(event, argument);
    CallBack(object);
}

void Callbacks::HearPropertyInstance(void*, void* object, int event, void* argument) {
    auto* member = static_cast<OviPropertyInstance*>(object);
    SceneLook::AskName(member);
    OviPropertyInstance_GetProperty(member);
    OviPropertyInstance_GetTemplate(member);
    LookAtArgument(event, argument);
    CallBack(object);
}

void Callbacks::LookAtArgument(int event, void* argument) {
    switch (event) {
    case OVI_EVENT_TEMPLATE_DEPRECATED:
    case OVI_EVENT_PROPERTY_DEPRECATED:
        return;
    case OVI_EVENT_ASSET_ADDED:
    case OVI_EVENT_ASSET_REMOVED:
        static_cast<void>(*static_cast<volatile int*>(argument));
        return;
    case OVI_EVENT_BINDING_LOCKED_CHANGED:
    case OVI_EVENT_VALUE_LOCKED_CHANGED:
        if (world_ && world_->GetInput().TakeByte() % 2)
            *static_cast<bool*>(argument) = !*static_cast<bool*>(argument);
        return;
    case OVI_EVENT_TEMPLATE_ADDED:
    case OVI_EVENT_TEMPLATE_REMOVED:
    case OVI_EVENT_TEMPLATE_UPDATED:
    case OVI_EVENT_PROPERTY_UPDATED:
    case OVI_EVENT_PROPERTY_RENAMED:
    case OVI_EVENT_PROPERTY_ADDED:
    case OVI_EVENT_PROPERTY_REMOVED:
        OviObject_GetClass(static_cast<OviObject*>(argument));
        return;
    default:
        Touch(static_cast<const char*>(argument));
    }
}

void Callbacks::CallBack(void* object) {
    if (!world_ || world_->GetCallDepth() >= World::kMaxCallDepth)
        return;
    world_->Forget();
    world_->EnterCallback(object);
    RunNextCall(*world_);
    world_->LeaveCallback();
    world_->Forget();
}
