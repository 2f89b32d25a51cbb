#pragma once

#include "core/NumberText.h"
#include "xml/XMLAttributes.h"

namespace Kor {

/// A version attribute; where it is not given, the version is 1.
inline int ReadVersion(const XMLAttributes& attributes, const char* name) {
    const char* text = attributes.Find(name);
    return text ? ParseInt(text) : 1;
}

/// A flag: true unless the text is missing or empty, or begins with "0" or "f".
inline bool ReadFlag(const char* text) {
    return text && *text && *text != '0' && *text != 'f';
}

} // namespace Kor
