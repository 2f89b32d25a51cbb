#pragma once

#include <string_view>

#include "core/NamedObject.h"

namespace Kor {

/// An action that the host is to execute when an event occurs at a property. The command's name is
/// what the host receives.
class Command : public NamedObject {
public:
    static constexpr int kClassId = kCommandClass;

    Command(std::string_view name, unsigned hostMask, unsigned trigger)
        : NamedObject(name), hostMask_(hostMask), trigger_(trigger) {}

    int GetClass() const override { return kClassId; }
    bool ImplementsClass(int id) const override {
        return id == kClassId || NamedObject::ImplementsClass(id);
    }
    std::unique_ptr<Object> Clone() const override {
        return std::unique_ptr<Object>(new Command(*this));
    }
    void WriteToXML(XMLWriter& writer) const override;

    /// The hosts, as bits, in which the command runs.
    unsigned GetHostMask() const { return hostMask_; }

    /// The event on which the command runs.
    unsigned GetTrigger() const { return trigger_; }

    /// The text that the command was read with, kept so that a saved file says the same.
    const char* GetNotification() const { return notification_.CStr(); }
    void SetNotification(std::string_view text) { notification_.Assign(text); }

private:
    Command(const Command&) = default;

    unsigned hostMask_;
    unsigned trigger_;
    CompactString notification_;
};

} // namespace Kor
