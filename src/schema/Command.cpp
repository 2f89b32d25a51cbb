#include "schema/Command.h"

#include "xml/XMLWriter.h"

namespace Kor {

void Command::WriteToXML(XMLWriter& writer) const {
    if (*GetComment())
        writer.WriteComment(GetComment());
    writer.StartElement("command");
    writer.WriteAttribute("execute", GetNameView());
    writer.WriteAttribute("notification", std::string_view(GetNotification()));
    writer.EndElement();
}

} // namespace Kor
