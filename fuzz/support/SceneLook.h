#pragma once

#include <vector>

#include "ovi/ovi.h"

namespace Kor {
class AttributeInstance;
class Instance;
class PropertyInstance;
} // namespace Kor

/// Asks the objects of a scene everything that the exported functions can ask.
class SceneLook {
public:
    /// The instances that are there now, nested ones included; those that asking makes are not
    /// asked in turn, since templates that refer to themselves would have no end of them.
    SceneLook();

    void AskAll() const;

    /// Calls something for each attribute instance of theirs.
    void Visit(void (*visit)(Kor::AttributeInstance&)) const;

    /// Whether an instance implements templates that have properties of the same full name, such as
    /// two versions of one template: it then has that of the template it got first, which files do
    /// not tell, since they name templates in the order of their keys.
    bool DependsOnTheOrderOfTemplates() const;

    /// The same for single objects.
    static void AskName(OviNamedObject* object);
    static void AskInstance(OviInstance* instance);
    static void AskPropertyInstance(OviPropertyInstance* member);

private:
    static void AskAttribute(OviAttributeInstance* attribute);
    static void AskGeometry(OviGeometryInstance* geometry);
    static void AskForms(OviInstance* instance);

    std::vector<Kor::Instance*> instances_;
    std::vector<Kor::PropertyInstance*> members_;
};
