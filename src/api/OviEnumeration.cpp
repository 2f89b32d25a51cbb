#include "ovi/enumeration.h"

#include "api/Barrier.h"
#include "types/CustomType.h"
#include "types/Enumeration.h"

using namespace Kor;
using namespace Kor::Api;

namespace {

OviEnumerationItem* const kNoItem = nullptr;

} // namespace

OviCustomType* OviCustomType_New(const char* name, int dimension) {
    return Guard(static_cast<OviCustomType*>(nullptr),
                 [=] { return To<OviCustomType>(new CustomType(Text(name), dimension)); });
}

int OviEnumeration_AddItem(OviEnumeration* enumeration, OviEnumerationItem* item) {
    return WithBoth<Enumeration, EnumerationItem>(
        enumeration, item, -1,
        [](Enumeration& self, EnumerationItem& added) { return self.AddItem(&added); });
}

OviEnumerationItem* OviEnumeration_GetItem(OviEnumeration* enumeration, const char* name) {
    return With<Enumeration>(enumeration, kNoItem, [name](Enumeration& self) {
        return To<OviEnumerationItem>(self.GetItem(Text(name)));
    });
}

int OviEnumeration_GetItemCount(OviEnumeration* enumeration) {
    return With<Enumeration>(enumeration, 0, [](Enumeration& self) { return self.GetItemCount(); });
}

OviEnumerationItem* OviEnumeration_GetItemAt(OviEnumeration* enumeration, int index) {
    return With<Enumeration>(enumeration, kNoItem, [index](Enumeration& self) {
        return To<OviEnumerationItem>(self.GetItemAt(index));
    });
}

int OviEnumeration_RemoveItem(OviEnumeration* enumeration, OviEnumerationItem* item) {
    return WithBoth<Enumeration, EnumerationItem>(
        enumeration, item, -1,
        [](Enumeration& self, EnumerationItem& removed) { return self.RemoveItem(&removed); });
}

void OviEnumerationItem_SetValue(OviEnumerationItem* item, const void* value) {
    With<EnumerationItem>(item, [value](EnumerationItem& self) { self.SetValue(value); });
}
