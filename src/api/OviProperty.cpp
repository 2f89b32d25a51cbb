#include "ovi/property.h"

#include "api/Barrier.h"
#include "schema/Property.h"
#include "schema/Template.h"

using namespace Kor;
using namespace Kor::Api;

const char* OviProperty_GetFullName(OviProperty* property) {
    return With<Property>(property, "", [](Property& self) { return self.GetFullNameText(); });
}

OviTemplate* OviProperty_GetTemplate(OviProperty* property) {
    return With<Property>(property, static_cast<OviTemplate*>(nullptr),
                          [](Property& self) { return To<OviTemplate>(self.GetOwner()); });
}

int OviProperty_AddCommand(OviProperty* property, OviCommand* command) {
    return WithBoth<Property, Command>(property, command, -1, [](Property& self, Command& added) {
        return self.AddCommand(&added);
    });
}

int OviProperty_RemoveCommand(OviProperty* property, OviCommand* command) {
    return WithBoth<Property, Command>(property, command, -1, [](Property& self, Command& removed) {
        return self.RemoveCommand(&removed);
    });
}

int OviProperty_GetCommandCount(OviProperty* property) {
    return With<Property>(property, 0, [](Property& self) { return self.GetCommandCount(); });
}

OviCommand* OviProperty_GetCommandAt(OviProperty* property, int index) {
    return With<Property>(property, static_cast<OviCommand*>(nullptr), [index](Property& self) {
        return HandOut<OviCommand>(self.GetCommandAt(index));
    });
}
