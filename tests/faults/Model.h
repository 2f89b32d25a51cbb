#pragma once

#include <string>
#include <vector>

#include "ovi/ovi.h"

/// A host with a small schema and scene that hold every kind of object, and with an object of every
/// kind that nobody owns yet. It lives as long as this does; two of them are the same in all that
/// can be seen.
class Model {
public:
    /// Writes the files that all models load; called once, before the first.
    static void WriteFiles(const std::string& directory);

    Model();

    /// Deletes what still belongs to the host and ends the library.
    ~Model();
    Model(const Model&) = delete;
    Model& operator=(const Model&) = delete;

    /// All that can be seen of schema, scene and the objects below, as text.
    std::string Describe() const;

    /// The path of a file of WriteFiles, or of one to be written.
    static std::string Path(const char* name);
    static const std::string& SchemaFile();
    static const std::string& SceneFile();

    /// Objects that a call made: they are deleted in the end, unless somebody owns them by then.
    template <class Handle> Handle* Keep(Handle* made) {
        made_.push_back(made); // there is room
        return made;
    }

    // -- what the schema and the scene hold -------------------------------------------------------

    OviTemplate* base;  ///< the parent of the other two
    OviTemplate* part;  ///< version 1, with a property of each kind
    OviTemplate* part2; ///< version 2
    OviTemplate* whole; ///< with attributes of type part
    OviAttributeProperty* size;
    OviAttributeProperty* plain; ///< of no template type, in part
    OviAttributeProperty* nested;
    OviNodeProperty* node;
    OviAnchorProperty* plug;
    OviGeometryProperty* shape;
    OviGeometryAlternate* high;
    OviCommand* redraw;
    OviView* view;
    OviGroup* group;
    OviLOD* lod;
    OviType* vector;
    OviType* number;
    OviType* text;
    OviEnumeration* colour;
    OviEnumerationItem* red;
    OviAsset* chair;  ///< implements whole, with nested instances
    OviAsset* screw;  ///< implements part
    OviInstance* leg; ///< nested in chair
    OviAttributeInstance* sizeOfScrew;
    OviAttributeInstance* textsOfScrew;
    OviAttributeInstance* partOfChair;
    OviAnchorInstance* plugOfScrew;
    OviGeometryInstance* shapeOfScrew;

    // -- what belongs to the host -----------------------------------------------------------------

    OviTemplate* freeTemplate;
    OviAttributeProperty* freeAttribute;
    OviGeometryProperty* freeGeometry;
    OviCommand* freeCommand;
    OviGeometryAlternate* freeAlternate;
    OviLOD* freeLOD;
    OviView* freeView;
    OviGroup* freeGroup;
    OviViewProperty* freeViewProperty;
    OviCustomType* freeType;
    OviEnumeration* freeEnumeration;
    OviEnumerationItem* freeItem;
    OviAsset* freeAsset;
    OviInstance* freeInstance;

    // -- what calls are given to write to ---------------------------------------------------------

    char buffer[4096] = {};
    int count = static_cast<int>(sizeof buffer);
    uint32_t bytes = sizeof buffer;
    void* value = nullptr; ///< A block of type vector; handed to who takes it, or freed in the end.
    OviPropertyInstance* found[8] = {};
    OviType* types[8] = {};

private:
    void FindAll();
    void MakeFree();
    std::vector<OviObject*> GetFree() const;

    std::vector<OviObject*> made_;
};
