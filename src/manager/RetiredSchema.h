#pragma once

#include <vector>

#include "schema/Template.h"
#include "types/Enumeration.h"

namespace Kor {

/// The schema objects of a template manager that is gone. They are deleted at once, unless
/// instances that the host holds still refer to them: then with the last of those.
class RetiredSchema {
public:
    RetiredSchema(std::vector<Template*> templates, std::vector<Enumeration*> enumerations,
                  std::vector<Type*> types);

    /// Takes the objects over.
    static void Retire(RetiredSchema schema);

    /// Called when no free-standing instance is left.
    static void Release();

private:
    void Delete();

    std::vector<Template*> templates_;
    std::vector<Enumeration*> enumerations_;
    std::vector<Type*> types_;
};

} // namespace Kor
