#pragma once

namespace Kor {

class Instance;
class Template;

/// The bytes of a template-typed value of `count` elements: per element the parents' sizes, then
/// the own properties in declaration order with their padding, rounded up to the alignment; the
/// running sum over all elements is multiplied by the count. With instances, a property counts
/// only where the element has (or can make) a property instance of it. A template met again inside
/// itself counts 0. Results beyond 32 bits are clamped.
int MeasureTemplateValue(const Template& type, Instance* const* elements, int count);

} // namespace Kor
