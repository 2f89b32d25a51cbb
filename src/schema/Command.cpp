#include "schema/Command.h"

#include "xml/XMLTemplateWriter.h"

namespace Kor {

void Command::WriteToXML(XMLWriter& writer) const {
    XMLTemplateWriter(writer).WriteCommand(*this);
}

} // namespace Kor
