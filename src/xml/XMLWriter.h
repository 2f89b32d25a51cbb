#pragma once

#include <cstddef>
#include <memory>
#include <string_view>
#include <vector>

namespace Kor {

class ByteSink;

/// Writes XML in the library's fixed layout: one element per line, one tab per level, attributes in
/// single quotes. Every text ends at its first NUL byte.
class XMLWriter {
public:
    XMLWriter() = default;
    virtual ~XMLWriter();
    XMLWriter(const XMLWriter&) = delete;
    XMLWriter& operator=(const XMLWriter&) = delete;

    /// Opens that many unnamed levels, which indent what follows. Levels from before Open do not
    /// count: Open begins with Close, which ends all levels.
    void AddIndent(int levels);

    /// Closes what was open and starts a document; the sink must outlive it.
    void Open(ByteSink& sink, bool writeHeader);

    /// The name is not copied: it must live until its element is ended.
    void StartElement(const char* name);

    /// Writes nothing unless a start tag is open.
    void WriteAttribute(const char* name, std::string_view value);
    void WriteAttribute(const char* name, int value);
    void WriteAttribute(const char* name, double value);

    /// Writes text into the open element; what XML reserves is escaped.
    void WriteText(std::string_view text);

    /// Writes a comment, on a line of its own.
    void WriteComment(std::string_view text);

    /// Ends the innermost element; does nothing when none is open.
    void EndElement();

    /// Ends every open element and hands over the rest; false when the sink failed at any time.
    bool Close();

    /// Hands over what was written so far and leaves the document as it stands, nothing ended.
    void Abandon();

    /// Hands over what was written so far and leaves everything open.
    void Flush();

    /// Whether the sink of the current or last document refused anything.
    bool HasFailed() const { return failed_; }

private:
    void CloseTag();
    void BreakLine();
    char* Reserve(size_t size);
    void Put(std::string_view text);
    template <class... Texts> void PutAll(const Texts&... texts);
    void PutEscaped(std::string_view text);

    ByteSink* sink_ = nullptr;
    bool tagOpen_ = false;
    bool hasChildren_ = false; ///< Whether a child of the element about to be ended was ended.
    bool failed_ = false;
    size_t indent_ = 0; ///< Unnamed levels around everything: often very many, so only counted.
    std::vector<std::string_view> openNames_;

    // What the sink has not got yet. A plain block: appending to a string costs more than the many
    // short texts themselves.
    std::unique_ptr<char[]> buffer_;
    size_t buffered_ = 0;
};

} // namespace Kor
