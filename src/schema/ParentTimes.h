#pragma once

#include <vector>

namespace Kor {

class Template;

/// When a template got its parents, in the numbers of SchemaHistory. Parents that are not in here
/// were there from the beginning.
class ParentTimes {
public:
    /// Room for one more, so that setting it cannot fail.
    void MakeRoom();

    void Set(const Template* parent, unsigned time);
    void Forget(const Template* parent);

    /// 0 for a parent that was there from the beginning.
    unsigned Get(const Template* parent) const;

private:
    struct Entry {
        const Template* parent;
        unsigned time;
    };
    std::vector<Entry>::iterator Find(const Template* parent);

    std::vector<Entry> entries_; // by address
};

} // namespace Kor
