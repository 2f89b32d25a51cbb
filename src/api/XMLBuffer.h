#pragma once

#include <algorithm>
#include <cstring>
#include <limits>
#include <new>
#include <string>

#include "core/ByteStreams.h"
#include "xml/XMLWriter.h"

namespace Kor::Api {

/// A writer whose text is taken before the unnamed levels of the indentation are closed, also when
/// an exception ends the writing.
class UnclosedWriter : public XMLWriter {
public:
    explicit UnclosedWriter(ByteSink& sink) { Open(sink, false); }
    ~UnclosedWriter() override { Abandon(); }
};

/// Copies what `write` gives to a writer, without header, `indent` levels deep, into a buffer of
/// `size` bytes: whole with its NUL when it fits, otherwise as much as fits without a NUL, and
/// `size` becomes the size needed. Only what fits is kept in memory; throws when `size` cannot tell
/// the length.
template <class Size, class Write>
void CopyXMLText(int indent, Size* size, char* buffer, const Write& write) {
    const Size given = std::max(*size, Size());
    StringSink sink(buffer ? static_cast<size_t>(given) : 0);
    {
        UnclosedWriter writer(sink);
        writer.AddIndent(indent);
        write(writer);
    }
    if (!sink.IsWhole() || sink.GetSize() >= std::numeric_limits<Size>::max())
        throw std::bad_alloc();
    const auto needed = static_cast<Size>(sink.GetSize() + 1);
    if (buffer)
        std::memcpy(buffer, sink.GetText().c_str(), static_cast<size_t>(std::min(given, needed)));
    if (needed > given)
        *size = needed;
}

} // namespace Kor::Api
