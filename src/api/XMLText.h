#pragma once

#include <algorithm>
#include <cstring>
#include <new>
#include <string>

#include "core/ByteStreams.h"
#include "core/NamedObject.h"
#include "xml/XMLWriter.h"

namespace Kor::Api {

/// An object's XML, without header, `indent` levels deep. It is taken before the unnamed levels of
/// the indentation are closed.
inline std::string GetXMLText(const NamedObject& object, int indent) {
    StringSink sink;
    XMLWriter writer;
    writer.Open(sink, false);
    writer.AddIndent(indent);
    object.WriteToXML(writer);
    writer.Flush();
    if (!sink.IsWhole())
        throw std::bad_alloc();
    return sink.GetText();
}

/// Copies a text into a buffer of `size` bytes: whole with its NUL when it fits, otherwise as much
/// as fits without a NUL, and `size` becomes the size needed.
template <class Size> void CopyXMLText(const std::string& text, Size* size, char* buffer) {
    const auto needed = static_cast<Size>(text.size() + 1);
    const Size given = std::max(*size, Size());
    if (buffer)
        std::memcpy(buffer, text.c_str(), std::min(static_cast<size_t>(given), text.size() + 1));
    if (needed > given)
        *size = needed;
}

} // namespace Kor::Api
