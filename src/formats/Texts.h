#pragma once

namespace Kor {

class NamedObject;
class XMLWriter;

/// Writes an object's labels and then its descriptions as child elements of the open element.
void WriteTexts(const NamedObject& object, XMLWriter& writer);

} // namespace Kor
