#pragma once

#include <string_view>
#include "core/MakeRoom.h"
#include "core/NamedObject.h"
#include "core/PointerList.h"
#include "schema/SchemaParts.h"

namespace Kor {

class Property;

/// An action that the host is to execute when an event occurs at a property. The command's name is
/// what the host receives.
class Command : public NamedObject, public SchemaPart<Command> {
public:
    static constexpr int kClassId = kCommandClass;
    KOR_OBJECT_MEMORY

    Command(std::string_view name, unsigned hostMask, unsigned trigger)
        : NamedObject(name), hostMask_(hostMask), trigger_(trigger) {}

    ~Command() override { Command::Leave(); }

    int GetClass() const override { return kClassId; }
    bool ImplementsClass(int id) const override {
        return id == kClassId || NamedObject::ImplementsClass(id);
    }
    std::unique_ptr<Object> Clone() const override {
        return std::unique_ptr<Object>(new Command(*this));
    }

    /// The properties that list the command follow its new name.
    bool SetName(const char* name) override;

    /// Takes itself out of the properties that list it.
    void Leave() noexcept override;

    /// Kept by the properties that list the command.
    void MakeRoomForLister() { MakeRoom(listers_); }
    void AddLister(Property* lister) { listers_.push_back(lister); }
    void RemoveLister(Property* lister);

    /// The hosts, as bits, in which the command runs.
    unsigned GetHostMask() const { return hostMask_; }

    /// The event on which the command runs.
    unsigned GetTrigger() const { return trigger_; }

    /// The text that the command was read with, kept so that a saved file says the same.
    const char* GetNotification() const { return notification_.CStr(); }
    void SetNotification(std::string_view text) { notification_.Assign(text); }

private:
    /// No property lists the copy.
    Command(const Command& source)
        : NamedObject(source), SchemaPart(source), hostMask_(source.hostMask_),
          trigger_(source.trigger_), notification_(source.notification_) {}

    unsigned hostMask_;
    unsigned trigger_;
    CompactString notification_;
    PointerList<Property> listers_;
};

} // namespace Kor
