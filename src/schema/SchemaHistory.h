#pragma once

namespace Kor {

/// Numbers what happens to the versions of templates: a version is made, a property or a parent is
/// added. Later versions have copies of what was there before them and share what came later, so a
/// file must name all of it in the order in which it happened.
class SchemaHistory {
public:
    /// The number of what happens now: greater than all before, never 0.
    static unsigned Next() { return ++last_; }

private:
    static inline unsigned last_ = 0;
};

} // namespace Kor
