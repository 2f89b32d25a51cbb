#pragma once

#include <ovi/ovi.h>

#include <map>
#include <string>
#include <vector>

namespace OviTool {

/// Finds the property instances of instances, which the library only hands out by name. Remembers
/// the names of templates' properties, so it must not outlive a change of the schema.
class PropertyInstances {
public:
    PropertyInstances();

    /// All property instances in the order of their full names.
    std::vector<OviPropertyInstance*> Find(OviInstance* instance);

private:
    const std::vector<std::string>& GetPropertyNames(OviTemplate* implemented);

    std::map<OviTemplate*, std::vector<std::string>> names_;
    std::vector<std::string> freeNames_;
};

} // namespace OviTool
