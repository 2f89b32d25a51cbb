#pragma once

#include "core/Ending.h"

namespace Kor {

/// What a template file declares beside types and properties, and what no registry and no property
/// frees: a level of detail, a command, an alternate. It belongs to the schema, which frees it at
/// its end. One that the host cannot know, since it was never handed out, goes as soon as nothing
/// lists it any more.
template <class T> class SchemaPart {
public:
    SchemaPart& operator=(const SchemaPart&) = delete;

    /// Called with what the host gets to see.
    void BecomeKnown() { isKnown_ = true; }

    /// A copy goes with the schema of its source, where this has one.
    void JoinSchemaOf(SchemaPart& source) {
        if (source.next_)
            LinkBehind(source);
    }

protected:
    SchemaPart() = default;
    SchemaPart(const SchemaPart&) {} // a copy belongs to whoever made it
    ~SchemaPart() { Unlink(); }

    /// Called where nothing lists the part any more.
    void EndUnlisted() noexcept {
        if (!next_ || isKnown_)
            return;
        Unlink();
        Ending::End(static_cast<T*>(this));
    }

private:
    template <class Part> friend class SchemaPartList;

    void LinkBehind(SchemaPart& other) {
        previous_ = &other;
        next_ = other.next_;
        next_->previous_ = this;
        other.next_ = this;
    }

    void Unlink() {
        if (!next_)
            return;
        previous_->next_ = next_;
        next_->previous_ = previous_;
        previous_ = next_ = nullptr;
    }

    /// The neighbours in the schema's ring; null outside of one.
    SchemaPart* previous_ = nullptr;
    SchemaPart* next_ = nullptr;
    bool isKnown_ = false;
};

/// The parts of one kind that belong to a schema.
template <class T> class SchemaPartList {
public:
    SchemaPartList() { ring_.previous_ = ring_.next_ = &ring_; }
    SchemaPartList(const SchemaPartList&) = delete;
    SchemaPartList& operator=(const SchemaPartList&) = delete;
    ~SchemaPartList() { EndAll(); }

    void Add(T& part) { static_cast<SchemaPart<T>&>(part).LinkBehind(ring_); }

    void EndAll() noexcept {
        while (ring_.next_ != &ring_) {
            SchemaPart<T>* part = ring_.next_;
            part->Unlink();
            Ending::End(static_cast<T*>(part));
        }
    }

private:
    struct Ring : SchemaPart<T> {};
    Ring ring_;
};

} // namespace Kor
