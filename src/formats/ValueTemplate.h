#pragma once

namespace Kor {

class Template;
class Type;

/// The template whose name makes the first instance of a value anew when it is read as the value's
/// text; null where the instance's own name does, or the type's name. Reading a text makes an
/// instance of the template that it names, also of one derived from the type; and it becomes the
/// instance's name only without a package, since a name has no dots.
const Template* GetValueTemplate(const Type& type, const void* value);

} // namespace Kor
