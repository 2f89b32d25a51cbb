#include "Case.h"
#include "SceneCases.h"
#include "SchemaCases.h"
#include "UseCases.h"

const std::vector<Case>& GetCases() {
    static const std::vector<Case> cases = {
        {"Chain of templates", "templates", 10000, RunChain},
        {"Stacked diamonds", "diamonds", 64, RunDiamonds},
        {"Many stacked diamonds", "diamonds", 5000, RunDiamonds},
        {"Exactly counted diamonds", "diamonds", 15, RunDiamonds},
        {"Diamonds on a chain", "templates", 10000, RunAnchors},
        {"Templates in templates", "templates", 10000, RunContained},
        {"Views of one template", "views", 10000, RunViews},
        {"Chain of types", "types", 10000, RunTypes},
        {"Groups in groups", "groups", 10000, RunGroups},
        {"Packages using packages", "packages", 1000, RunPackages},
        {"Assets in assets", "assets", 10000, RunNested},
        {"Alternates of a geometry", "levels", 10000, RunAlternates},
        {"Files one by one", "files", 5000, RunFiles},
        {"Former values", "assets", 40000, RunFormerValues},
        {"Properties of two templates", "properties", 20000, RunProperties},
        {"Chain of templates beside a clone", "templates", 10000, RunChainBesideClone},
        {"Defaults holding defaults", "templates", 5000, RunDefaults},
        {"Versions of a template", "versions", 2000, RunVersions},
        {"Versions of templates full of templates", "attributes", 2000, RunFullVersions},
    };
    return cases;
}
