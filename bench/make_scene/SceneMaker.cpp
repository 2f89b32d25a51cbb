#include "SceneMaker.h"

#include "xml/XMLWriter.h"

#include <cstdio>
#include <cstring>

using Kor::XMLWriter;

namespace {

/// A short text composed in place.
struct Text {
    char bytes[96];

    template <class... Arguments> explicit Text(const char* format, Arguments... arguments) {
        std::snprintf(bytes, sizeof bytes, format, arguments...);
    }
    operator std::string_view() const { return bytes; }
};

constexpr const char* kWords[] = {"crate", "lantern", "table", "barrel",
                                  "wheel", "ladder",  "fence", "bench"};

} // namespace

// In the order of their full names, which is that of saved files.
const SceneMaker::Member SceneMaker::kMembers[] = {
    {"attribute", "Item.identifier", &SceneMaker::WriteIdentifier},
    {"attribute", "Item.label", &SceneMaker::WriteLabel},
    {"attribute", "Item.position", &SceneMaker::WritePosition},
    {"attribute", "Item.visible", &SceneMaker::WriteVisible},
    {"attribute", "Prop.geometryFile", &SceneMaker::WriteGeometryFile},
    {"attribute", "Prop.height", &SceneMaker::WriteHeight},
    {"attribute", "Prop.mass", &SceneMaker::WriteMass},
    {"attribute", "Prop.materialPath", &SceneMaker::WriteMaterialPath},
    {"attribute", "Prop.reviewState", &SceneMaker::WriteReviewState},
    {"attribute", "Prop.revision", &SceneMaker::WriteRevision},
};

bool SceneMaker::Write(Kor::ByteSink& sink) {
    XMLWriter writer;
    writer.Open(sink, true);
    writer.StartElement("assets");
    for (asset_ = 0; asset_ < assetCount_; ++asset_)
        WriteAsset(writer);
    writer.EndElement();
    return writer.Close();
}

void SceneMaker::WriteAsset(XMLWriter& writer) {
    writer.StartElement("asset");
    writer.WriteAttribute("name", Text("prop_%06u", asset_));
    writer.StartElement("implements");
    writer.WriteAttribute("template", "bench.Prop");
    writer.WriteAttribute("version", 1);
    writer.EndElement();
    bool bound = asset_ % 2 == 0;
    for (const Member& member : kMembers) {
        WriteMember(member, bound, writer);
        bound = !bound;
    }
    writer.EndElement();
}

void SceneMaker::WriteMember(const Member& member, bool bound, XMLWriter& writer) {
    writer.StartElement(member.element);
    writer.WriteAttribute("property", member.property);
    const Text binding("p%06u.%s", asset_, std::strchr(member.property, '.') + 1);
    writer.WriteAttribute("binding", bound ? std::string_view(binding) : std::string_view());
    (this->*member.writeContent)(writer);
    writer.EndElement();
}

// -- contents -------------------------------------------------------------------------------------

void SceneMaker::WriteIdentifier(XMLWriter& writer) {
    writer.WriteAttribute("value", 1000000000 + Next(1000000000));
}

void SceneMaker::WriteLabel(XMLWriter& writer) {
    const char* word = kWords[Next(8)];
    writer.WriteAttribute("value", Text("%s's <%d> & \"more\"", word, Next(100)));
}

void SceneMaker::WritePosition(XMLWriter& writer) {
    for (int axis = 0; axis < 3; ++axis) {
        writer.StartElement("value");
        // Quarters have an exact text in six digits.
        writer.WriteText(Text("%g", (Next(20000) - 10000) * 0.25));
        writer.EndElement();
    }
}

void SceneMaker::WriteVisible(XMLWriter& writer) {
    writer.WriteAttribute("value", Next(4) != 0 ? "true" : "false");
}

void SceneMaker::WriteGeometryFile(XMLWriter& writer) {
    const char* word = kWords[Next(8)];
    writer.WriteAttribute("value", Text("models/%s_%02d.mesh", word, Next(100)));
}

void SceneMaker::WriteHeight(XMLWriter& writer) {
    writer.WriteAttribute("value", Text("%g", (1 + Next(99999)) / 1000.0));
}

void SceneMaker::WriteMass(XMLWriter& writer) {
    writer.WriteAttribute("value", Text("%g", (1 + Next(999999)) / 100.0));
}

void SceneMaker::WriteMaterialPath(XMLWriter& writer) {
    const char* word = kWords[Next(8)];
    writer.WriteAttribute("value", Text("materials/%s_%03d.mtl", word, Next(1000)));
}

void SceneMaker::WriteReviewState(XMLWriter& writer) {
    writer.WriteAttribute("value", 10 * Next(4));
}

void SceneMaker::WriteRevision(XMLWriter& writer) {
    writer.WriteAttribute("value", 1 + Next(500));
}

int SceneMaker::Next(int limit) {
    state_ = state_ * 6364136223846793005u + 1442695040888963407u;
    return static_cast<int>((state_ >> 33) % static_cast<std::uint64_t>(limit));
}
