#include "schema/Command.h"

#include <algorithm>

#include "core/Names.h"
#include "schema/Property.h"
#include "xml/XMLTemplateWriter.h"

namespace Kor {

Command::~Command() {
    for (Property* lister : listers_)
        lister->UnlistCommand(*this);
}

bool Command::SetName(const char* name) {
    if (!IsValidName(TextOf(name)))
        return false;
    for (Property* lister : listers_)
        lister->UnlistCommand(*this);
    StoreName(TextOf(name));
    for (Property* lister : listers_)
        lister->ListCommand(*this);
    return true;
}

void Command::RemoveLister(Property* lister) {
    listers_.erase(std::remove(listers_.begin(), listers_.end(), lister), listers_.end());
}

void Command::WriteToXML(XMLWriter& writer) const {
    XMLTemplateWriter(writer).WriteCommand(*this);
}

} // namespace Kor
