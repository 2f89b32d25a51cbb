#pragma once

namespace Kor {

/// A version number, a version status, and a link to the object this one succeeds.
class VersionedObject {
public:
    /// What a version did to its predecessor, as far as updates of instances care.
    enum Status : int { kRenamed = 2, kDeprecated = 3 };

    explicit VersionedObject(int version) : version_(version) {}
    virtual ~VersionedObject();
    VersionedObject& operator=(const VersionedObject&) = delete;

    int GetVersion() const { return version_; }
    virtual void SetVersion(int version) { version_ = version; }

    int GetVersionStatus() const { return status_; }
    void SetVersionStatus(int status) { status_ = status; }

    /// The predecessor, or null. The link is not owned; it is taken away when the predecessor dies.
    VersionedObject* GetPrevious() const { return previous_; }
    void SetPrevious(VersionedObject* previous);
    bool HasSuccessors() const { return firstSuccessor_ != nullptr; }

protected:
    /// A copy succeeds the object it was copied from.
    VersionedObject(const VersionedObject& source);

    /// Calls a function with each object that succeeds this one.
    template <class Body> void ForEachSuccessor(const Body& body) const {
        for (VersionedObject* next = firstSuccessor_; next; next = next->nextSibling_)
            body(*next);
    }

    /// Takes away the links to the predecessor and from the successors.
    void LeaveVersions() noexcept;

private:
    void Unlink();

    int version_;
    int status_ = 0;
    VersionedObject* previous_ = nullptr;
    // The successors of one object form a chain, so that a dying predecessor reaches all of them.
    VersionedObject* firstSuccessor_ = nullptr;
    VersionedObject* nextSibling_ = nullptr;
    VersionedObject* previousSibling_ = nullptr;
};

} // namespace Kor
