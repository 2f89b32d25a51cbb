#include "notify/NotificationManager.h"

// Commands belong to the property of the property instance that an event concerns.
#include "instances/Instance.h"
#include "schema/Command.h"
#include "schema/Property.h"

namespace Kor {

NotificationManager::NotificationManager()
    : eventCodes_{{"TemplateAdded", kTemplateAdded},
                  {"TemplateRemoved", kTemplateRemoved},
                  {"TemplateUpdated", kTemplateUpdated},
                  {"TemplateDeprecated", kTemplateDeprecated},
                  {"ReferenceFile", kReferenceFile},
                  {"UnreferenceFile", kUnreferenceFile},
                  {"BindingLockedChanged", kBindingLockedChanged},
                  {"ValueLockedChanged", kValueLockedChanged},
                  {"PropertyUpdated", kPropertyUpdated},
                  {"PropertyRenamed", kPropertyRenamed},
                  {"PropertyDeprecated", kPropertyDeprecated},
                  {"PropertyAdded", kPropertyAdded},
                  {"PropertyRemoved", kPropertyRemoved},
                  {"ExecuteCommand", kExecuteCommand},
                  {"BindingChanged", kBindingChanged},
                  {"AttributeValueChanged", kAttributeValueChanged}},
      hostCodes_{{"Maya", kMaya}, {"3dsMax", k3dsMax}} {}

bool NotificationManager::Register(Records& records, Callback callback, void* userData) {
    return !records.emplace(userData, callback).second;
}

bool NotificationManager::Unregister(Records& records, void* userData) {
    return records.erase(userData) > 0;
}

bool NotificationManager::RegisterInstanceCallback(Callback callback, void* userData) {
    return Register(instanceCallbacks_, callback, userData);
}

bool NotificationManager::UnregisterInstanceCallback(void* userData) {
    return Unregister(instanceCallbacks_, userData);
}

bool NotificationManager::RegisterPropertyInstanceCallback(Callback callback, void* userData) {
    return Register(propertyInstanceCallbacks_, callback, userData);
}

bool NotificationManager::UnregisterPropertyInstanceCallback(void* userData) {
    return Unregister(propertyInstanceCallbacks_, userData);
}

// Each step begins at what was called last, so that a callback may (against the rules) change the
// list.
void NotificationManager::Call(const Records& records, NamedObject& object, int event,
                               void* argument) {
    const Ending::Deferral deferral;
    for (auto record = records.begin(); record != records.end() && !object.HasEnded();) {
        void* userData = record->first;
        if (record->second)
            record->second(userData, &object, event, argument);
        record = records.upper_bound(userData);
    }
}

void NotificationManager::Empty() {
    instanceCallbacks_.clear();
    propertyInstanceCallbacks_.clear();
}

void NotificationManager::NotifyInstance(Instance* instance, int event, void* argument) {
    if (!instanceCallbacks_.empty())
        Call(instanceCallbacks_, *instance, event, argument);
}

void NotificationManager::NotifyPropertyInstance(PropertyInstance* propertyInstance, int event,
                                                 void* argument) {
    if (propertyInstanceCallbacks_.empty())
        return;
    Call(propertyInstanceCallbacks_, *propertyInstance, event, argument);
    for (std::string& name : GetTriggeredCommands(*propertyInstance->GetProperty(), event))
        Call(propertyInstanceCallbacks_, *propertyInstance, kExecuteCommand, name.data());
}

/// Copies of the names: callbacks may write into what they get, and delete commands.
std::vector<std::string> NotificationManager::GetTriggeredCommands(const Property& property,
                                                                   int event) const {
    std::vector<std::string> names;
    for (int i = 0; i < property.GetCommandCount(); ++i) {
        const Command* command = property.GetCommandAt(i);
        const bool hostMatches = (command->GetHostMask() & static_cast<unsigned>(dcc_)) != 0;
        if (hostMatches && command->GetTrigger() == static_cast<unsigned>(event))
            names.emplace_back(command->GetName());
    }
    return names;
}

int NotificationManager::LookUp(Codes& codes, std::string_view name) {
    const auto found = codes.find(name);
    if (found != codes.end())
        return found->second;
    codes.emplace(name, 0);
    return 0;
}

} // namespace Kor
