#include "SchemaMaker.h"

#include "xml/XMLWriter.h"

#include <cstdio>

using Kor::XMLWriter;

namespace {

/// A short text composed in place.
struct Text {
    char bytes[64];

    template <class... Arguments> explicit Text(const char* format, Arguments... arguments) {
        std::snprintf(bytes, sizeof bytes, format, arguments...);
    }
    operator std::string_view() const { return bytes; }
};

/// What is known of the attributes of a type: all numbers, and some of the others, have a default.
struct Kind {
    const char* type;
    bool hasDefault;
    bool hasRange;
};

constexpr Kind kKinds[] = {{"INT32", true, true},   {"FLOAT", true, true}, {"BOOL", true, false},
                           {"STRING", true, false}, {"INT64", true, true}, {"DOUBLE", true, true},
                           {"STRING", false, false}};
constexpr int kKindCount = sizeof kKinds / sizeof *kKinds;

constexpr int kAttributesPerTemplate = 20;

/// Attributes come with the first version but for three that come with the second and three that
/// come with the third.
int GetVersion(int attribute) {
    if (attribute < kAttributesPerTemplate - 6)
        return 1;
    return attribute < kAttributesPerTemplate - 3 ? 2 : 3;
}

Text GetTemplateName(int file, int index) {
    return Text("Template_%06d", file * SchemaMaker::kTemplatesPerFile + index);
}

} // namespace

std::string SchemaMaker::GetFileName(int file) {
    return Text("Schema_%06d.template", file).bytes;
}

bool SchemaMaker::Write(int file, Kor::ByteSink& sink) {
    state_ = static_cast<std::uint64_t>(file) + 1;
    XMLWriter writer;
    writer.Open(sink, true);
    writer.StartElement("templates");
    writer.WriteAttribute("package", "bench.schema");
    for (int index = 0; index < kTemplatesPerFile; ++index)
        WriteTemplate(file, index, writer);
    writer.EndElement();
    return writer.Close();
}

void SchemaMaker::WriteTemplate(int file, int index, XMLWriter& writer) {
    const int level = file % kLevels;
    writer.StartElement("template");
    writer.WriteAttribute("name", GetTemplateName(file, index));
    if (level > 0) {
        writer.StartElement("extends");
        writer.WriteAttribute("template", GetTemplateName(file - 1, index));
        writer.WriteAttribute("templateVersion", 3);
        writer.EndElement();
    }
    for (int attribute = 0; attribute < kAttributesPerTemplate; ++attribute)
        WriteAttribute(attribute, level, writer);
    writer.EndElement();
}

/// The level is part of the name, so that no attribute hides one that is inherited.
void SchemaMaker::WriteAttribute(int index, int level, XMLWriter& writer) {
    const Kind& kind = kKinds[index % kKindCount];
    writer.StartElement("attribute");
    writer.WriteAttribute("name", Text("attribute_%d_%02d", level, index));
    writer.WriteAttribute("type", kind.type);
    writer.WriteAttribute("version", GetVersion(index));
    if (kind.hasDefault)
        writer.WriteAttribute("default", 1 + Next(100));
    if (kind.hasRange) {
        writer.WriteAttribute("min", 1);
        writer.WriteAttribute("max", 1000);
    }
    writer.EndElement();
}

int SchemaMaker::Next(int limit) {
    state_ = state_ * 6364136223846793005u + 1442695040888963407u;
    return static_cast<int>((state_ >> 33) % static_cast<std::uint64_t>(limit));
}
