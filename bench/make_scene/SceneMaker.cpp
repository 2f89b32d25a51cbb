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
    {"attribute", "Item.identifier", true, &SceneMaker::WriteIdentifier},
    {"attribute", "Item.label", true, &SceneMaker::WriteLabel},
    {"attribute", "Item.position", true, &SceneMaker::WritePosition},
    {"node", "Item.root", false, &SceneMaker::WriteNothing},
    {"attribute", "Item.visible", true, &SceneMaker::WriteVisible},
    {"attribute", "Prop.height", true, &SceneMaker::WriteHeight},
    {"anchor", "Prop.plug", true, &SceneMaker::WriteAttachedAnchor},
    {"attribute", "Prop.reviewState", true, &SceneMaker::WriteReviewState},
    {"attribute", "Prop.revision", true, &SceneMaker::WriteRevision},
    {"geometry", "Prop.shape", false, &SceneMaker::WriteAlternates},
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
    bound_ = asset_ % 2 == 0;
    for (const Member& member : kMembers) {
        WriteMember(member, writer);
        bound_ = !bound_;
    }
    writer.EndElement();
}

void SceneMaker::WriteMember(const Member& member, XMLWriter& writer) {
    writer.StartElement(member.element);
    writer.WriteAttribute("property", member.property);
    if (member.hasBinding)
        WriteBinding(std::strchr(member.property, '.') + 1, writer);
    (this->*member.writeContent)(writer);
    writer.EndElement();
}

void SceneMaker::WriteBinding(const char* part, XMLWriter& writer) {
    const Text binding("p%06u.%s", asset_, part);
    writer.WriteAttribute("binding", bound_ ? std::string_view(binding) : std::string_view());
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

void SceneMaker::WriteHeight(XMLWriter& writer) {
    writer.WriteAttribute("value", Text("%g", (1 + Next(99999)) / 1000.0));
}

void SceneMaker::WriteAttachedAnchor(XMLWriter& writer) {
    writer.WriteAttribute("attachedAnchor", Text("p%06d.socket", Next(1000000)));
}

void SceneMaker::WriteReviewState(XMLWriter& writer) {
    writer.WriteAttribute("value", 10 * Next(4));
}

void SceneMaker::WriteRevision(XMLWriter& writer) {
    writer.WriteAttribute("value", 1 + Next(500));
}

/// The binding of a node is not kept in scenes.
void SceneMaker::WriteNothing(XMLWriter&) {}

/// In the order of their levels' names, as a geometry keeps them.
void SceneMaker::WriteAlternates(XMLWriter& writer) {
    for (const char* level : {"Final", "Preview"}) {
        writer.StartElement("alternate");
        writer.WriteAttribute("lod", level);
        WriteBinding(level, writer);
        writer.EndElement();
    }
}

int SceneMaker::Next(int limit) {
    state_ = state_ * 6364136223846793005u + 1442695040888963407u;
    return static_cast<int>((state_ >> 33) % static_cast<std::uint64_t>(limit));
}
