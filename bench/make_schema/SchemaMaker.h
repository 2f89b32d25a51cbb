#pragma once

#include <cstdint>
#include <string>

namespace Kor {
class ByteSink;
class XMLWriter;
} // namespace Kor

/// Writes schemas of any size, always the same ones: each file has ten templates in three versions
/// with 20 attributes. Files come in fours, and the templates of one extend those of the one before
/// it, so that inheritance is four levels deep and the files load in the order of their numbers.
class SchemaMaker {
public:
    static constexpr int kTemplatesPerFile = 10;
    static constexpr int kLevels = 4;

    /// The name of the file of that number, without its directory.
    static std::string GetFileName(int file);

    /// Writes the file of that number; false when the sink failed.
    bool Write(int file, Kor::ByteSink& sink);

private:
    void WriteTemplate(int file, int index, Kor::XMLWriter& writer);
    void WriteAttribute(int index, int level, Kor::XMLWriter& writer);

    /// The next number of a fixed sequence, from 0 to below the limit.
    int Next(int limit);

    std::uint64_t state_ = 1;
};
