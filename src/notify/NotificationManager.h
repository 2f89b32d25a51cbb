#pragma once

#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "core/Singleton.h"

namespace Kor {

class Instance;
class NamedObject;
class Property;
class PropertyInstance;

/// The codes of the events that hosts are told of. The first digit says what changes: 1 instances
/// and files, 2 properties and locks, 3 bindings, 4 values.
enum EventCode : int {
    kTemplateAdded = 0x1001,
    kTemplateRemoved = 0x1002,
    kTemplateUpdated = 0x1003,
    kTemplateDeprecated = 0x1004,
    kAssetAdded = 0x1005,
    kAssetRemoved = 0x1006,
    kInstanceRenamed = 0x1007,
    kReferenceFile = 0x1008,
    kUnreferenceFile = 0x1009,
    kReferenceChanged = 0x100A,
    kBindingLockedChanged = 0x2000,
    kValueLockedChanged = 0x2001,
    kPropertyUpdated = 0x2002,
    kPropertyRenamed = 0x2003,
    kPropertyDeprecated = 0x2004,
    kPropertyAdded = 0x2005,
    kPropertyRemoved = 0x2006,
    kExecuteCommand = 0x2009,
    kBindingChanged = 0x3000,
    kAttributeValueChanged = 0x4000,
};

/// The hosts, as bits, so that a command can name several of them.
enum HostCode : int { kNoHost = 0, kMaya = 1, k3dsMax = 2 };

/// The host's callbacks, and the names by which files refer to events and hosts. Everything is
/// delivered inside the call that causes it.
class NotificationManager : public Singleton<NotificationManager> {
public:
    /// Called with the user data, the Instance or PropertyInstance, the event and its argument.
    using Callback = void (*)(void* userData, void* object, int event, void* argument);

    /// The current host, a digital content creation program (DCC).
    int GetDCC() const { return dcc_; }
    void SetDCC(int dcc) { dcc_ = dcc; }

    /// Whether the user data was there already: then nothing changes. False when the callback was
    /// added.
    bool RegisterInstanceCallback(Callback callback, void* userData);

    /// True when a record was removed.
    bool UnregisterInstanceCallback(void* userData);

    bool RegisterPropertyInstanceCallback(Callback callback, void* userData);
    bool UnregisterPropertyInstanceCallback(void* userData);

    /// Calls every instance callback in ascending order of user data.
    void NotifyInstance(Instance* instance, int event, void* argument);

    /// Calls every property-instance callback, and then once more, as "ExecuteCommand", for each
    /// command of the property that this event triggers in the current host. Once a callback ended
    /// the object, the others are not told of it any more.
    void NotifyPropertyInstance(PropertyInstance* propertyInstance, int event, void* argument);

    bool HasInstanceListeners() const { return !instanceCallbacks_.empty(); }

    /// Whether anybody listens; without listeners no argument needs to be composed.
    bool HasPropertyInstanceListeners() const { return !propertyInstanceCallbacks_.empty(); }

    /// The code of a name; an unknown name is entered with the code 0.
    int GetEventCode(std::string_view name) { return LookUp(eventCodes_, name); }
    int GetDCCCode(std::string_view name) { return LookUp(hostCodes_, name); }

private:
    friend class Singleton<NotificationManager>;

    using Records = std::map<void*, Callback, std::less<>>; // by the user data
    using Codes = std::map<std::string, int, std::less<>>;

    NotificationManager();
    ~NotificationManager() override = default;

    /// No callback is called any more.
    void Empty();

    static bool Register(Records& records, Callback callback, void* userData);
    static bool Unregister(Records& records, void* userData);
    static void Call(const Records& records, NamedObject& object, int event, void* argument);
    std::vector<std::string> GetTriggeredCommands(const Property& property, int event) const;
    static int LookUp(Codes& codes, std::string_view name);

    Records instanceCallbacks_;
    Records propertyInstanceCallbacks_;
    Codes eventCodes_;
    Codes hostCodes_;
    int dcc_ = kNoHost;
};

} // namespace Kor
