#pragma once

namespace Kor {

class Enumeration;
class Template;

/// Whether a `type` element still says what a template or an enumeration is that one made: a host
/// may have changed it since, or what it was made from. What a template got on top does not count.
bool IsToldByTypeElement(const Template& type);
bool IsToldByTypeElement(const Enumeration& type);

} // namespace Kor
