#include "NamedObjectTexts.h"

#include "TreePrinter.h"
#include "ValueText.h"

#include <string>

namespace OviTool {

namespace {

std::string InLanguage(const char* what, const char* language) {
    return language ? std::string(what) + " (" + language + "): " : std::string(what) + ": ";
}

} // namespace

void PrintTexts(TreePrinter& tree, int depth, OviNamedObject* object) {
    tree.Comment(depth, OviNamedObject_GetComment(object));
    for (int i = 0; i < OviNamedObject_GetLabelCount(object); ++i)
        tree.Line(depth, InLanguage("label", OviNamedObject_GetLabelLanguageAt(object, i)) +
                             Quoted(OviNamedObject_GetLabelTextAt(object, i)));
    for (int i = 0; i < OviNamedObject_GetDescriptionCount(object); ++i)
        tree.Line(depth,
                  InLanguage("description", OviNamedObject_GetDescriptionLanguageAt(object, i)) +
                      Quoted(OviNamedObject_GetDescriptionTextAt(object, i)));
}

} // namespace OviTool
