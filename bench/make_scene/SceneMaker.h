#pragma once

#include <cstdint>

namespace Kor {
class ByteSink;
class XMLWriter;
} // namespace Kor

/// Writes scenes of any size for the schema bench/schema/Bench.template, always the same ones, in
/// the layout in which the library saves them: loading and saving one gives the same bytes again.
class SceneMaker {
public:
    explicit SceneMaker(unsigned assetCount) : assetCount_(assetCount) {}

    /// False when the sink failed.
    bool Write(Kor::ByteSink& sink);

private:
    /// Writes what an element has behind its property and, if it has one itself, its binding.
    using ContentWriter = void (SceneMaker::*)(Kor::XMLWriter&);

    /// One child element of each asset; new kinds of elements join the list of these.
    struct Member {
        const char* element;
        const char* property;
        bool hasBinding;
        ContentWriter writeContent;
    };
    static const Member kMembers[];

    void WriteAsset(Kor::XMLWriter& writer);
    void WriteMember(const Member& member, Kor::XMLWriter& writer);
    void WriteBinding(const char* part, Kor::XMLWriter& writer);

    // -- contents -------------------------------------------------------------------------------
    void WriteIdentifier(Kor::XMLWriter& writer);
    void WriteLabel(Kor::XMLWriter& writer);
    void WritePosition(Kor::XMLWriter& writer);
    void WriteVisible(Kor::XMLWriter& writer);
    void WriteHeight(Kor::XMLWriter& writer);
    void WriteAttachedAnchor(Kor::XMLWriter& writer);
    void WriteReviewState(Kor::XMLWriter& writer);
    void WriteRevision(Kor::XMLWriter& writer);
    void WriteAlternates(Kor::XMLWriter& writer);
    void WriteNothing(Kor::XMLWriter& writer);

    /// The next number of a fixed sequence, from 0 to below the limit.
    int Next(int limit);

    unsigned assetCount_;
    unsigned asset_ = 0;
    bool bound_ = false; ///< Whether what comes next has a binding; half of everything has.
    std::uint64_t state_ = 1;
};
