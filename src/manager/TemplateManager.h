#pragma once

#include <functional>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "core/ObjectRegistry.h"
#include "core/Singleton.h"
#include "core/SortedObjectList.h"
#include "core/SortedStringList.h"
#include "manager/LoadedFiles.h"
#include "manager/SearchPaths.h"
#include "manager/TypeNameIndex.h"
#include "manager/VersionIndex.h"
#include "schema/AnchorTypeList.h"
#include "schema/LOD.h"
#include "schema/Template.h"
#include "types/Enumeration.h"

namespace Kor {

class ByteSource;
class RetiredSchema;

/// The registry of the schema: templates in all their versions, plain types, enumerations, levels
/// of detail, anchor types; and the files and packages they come from. It owns the templates,
/// enumerations and types registered with it. What `Remove...` takes out belongs to the caller.
class TemplateManager : public Singleton<TemplateManager> {
public:
    // -- templates ------------------------------------------------------------------------------

    /// The latest version of a template; version 1 alone while that is recycled. Null when version
    /// 1 or the latest version is missing.
    Template* GetTemplate(std::string_view name) const;

    /// Exactly that version, or null.
    Template* GetTemplateVersion(std::string_view name, unsigned version) const;

    /// All versions that exist, ascending.
    std::vector<Template*> GetVersions(std::string_view name) const;

    /// All templates, each version, in key order.
    int GetTemplateCount() const { return templates_.GetCount(); }
    Template* GetTemplateAt(int index) const { return templates_.GetAt(index); }

    /// The template of that name, no longer recycled, or a new version 1. Null for an invalid name,
    /// and when version 1 exists while its latest version is missing: then version 1 has been
    /// replaced and is lost, which callers must expect.
    Template* CreateTemplate(std::string_view name);

    /// The version, made as a copy of the nearest lower one when missing; null without any.
    Template* CreateTemplateVersion(std::string_view name, int version);

    /// Adds the property to its own version and to all later ones up to the first that has a newer
    /// property of that name. Null when there is no such version; `refused` tells a property that
    /// its own version did not take.
    Template* AddPropertyFromVersion(std::string_view name, Property* property,
                                     bool* refused = nullptr);

    /// Takes the property out of its version and of the later ones, up to the first that lacks it
    /// or has a newer one. Adding, which is for versions that lack it, stops at a newer one only.
    Template* RemovePropertyFromVersion(std::string_view name, Property* property);

    /// Adds the parent to that version and to all later ones.
    Template* AddParentFromVersion(std::string_view name, int version, Template* parent);

    /// The list's result. A new template without parents gets the root as its parent.
    int AddTemplate(Template* added);

    /// Takes out the template or the one that has its key; -1 for the root, which stays.
    int RemoveTemplate(Template* removed);

    /// The template "Object", from which all others descend.
    Template* GetRoot() const { return root_; }

    /// The property of "Template.Property" or "Template#Version.Property", inherited ones included.
    Property* GetProperty(std::string_view fullName) const;

    // -- enumerations and plain types -----------------------------------------------------------

    /// Enumerations by their full names, and the list's results.
    int GetEnumerationCount() const { return enumerations_.GetCount(); }
    Enumeration* GetEnumerationAt(int index) const { return enumerations_.GetAt(index); }
    Enumeration* GetEnumeration(std::string_view name) const;
    int AddEnumeration(Enumeration* enumeration);
    int RemoveEnumeration(Enumeration* enumeration);

    /// A plain type by its full name; templates and enumerations are not found here.
    Type* GetType(std::string_view name) const { return types_.Get(name); }
    int GetTypeCount() const { return types_.GetCount(); }
    Type* GetTypeAt(int index) const { return types_.GetAt(index); }

    /// The number of plain types, templates and enumerations of a file, whatever the case of its
    /// name; the first `capacity` of them, in that order, go to `found`.
    int GetTypesByFileName(std::string_view fileName, Type** found, int capacity) const;

    /// The plain type, enumeration or template of that name with one of the prefixes.
    Type* ResolveType(std::string_view name, const UsingList& prefixes) const;

    /// Exactly that version of the template of that name with one of the prefixes.
    Template* ResolveTemplateVersion(std::string_view name, int version,
                                     const UsingList& prefixes) const;

    /// Adds or removes by class: a template, an enumeration, or a plain type. An enumeration's item
    /// is taken from its enumeration first.
    int AddType(Type* type);
    int RemoveType(Type* type);

    /// Calls a function with each template, enumeration and plain type that is registered.
    template <class Body> void ForEachType(const Body& body) const {
        templates_.ForEach(body);
        enumerations_.ForEach(body);
        types_.ForEach(body);
    }

    // -- levels of detail and anchor types (referenced, not owned) ------------------------------

    /// Both are sorted by name; adding and removing give the list's results.
    int GetLODCount() const { return lods_.GetCount(); }
    LOD* GetLODAt(int index) const { return lods_.GetAt(index); }
    LOD* GetLOD(std::string_view name) const { return lods_.Get(name); }
    int AddLOD(LOD* lod);
    int RemoveLOD(LOD* lod);
    int GetAnchorTypeCount() const { return anchorTypes_.GetCount(); }
    NamedObject* GetAnchorTypeAt(int index) const { return anchorTypes_.GetAt(index); }
    NamedObject* GetAnchorType(std::string_view name) const { return anchorTypes_.Get(name); }
    int AddAnchorType(NamedObject* type) { return anchorTypes_.Add(type); }
    int RemoveAnchorType(NamedObject* type) { return anchorTypes_.Remove(type); }

    // -- template files -------------------------------------------------------------------------

    /// Reads a file; true without reading when it is loaded already.
    bool LoadTemplateFile(const char* path);

    /// The same with the bytes of another source; the path is what the definitions name as theirs.
    bool LoadTemplateStream(const char* path, ByteSource& source);

    /// Deletes what the file defined, except what is still referred to: that stays, recycled. True
    /// when the last object handled was deleted.
    bool UnloadTemplateFile(std::string_view path);

    /// Enters a file as loaded, or takes that back.
    void AddLoadedFile(std::string_view path);
    void RemoveLoadedFile(std::string_view path);
    const LoadedFiles& GetLoadedFiles() const { return loadedFiles_; }

    // -- search paths and packages --------------------------------------------------------------

    int GetSearchPathCount() const { return searchPaths_.GetCount(); }
    const SearchPaths& GetSearchPaths() const { return searchPaths_; }

    /// With its trailing backslash; "" out of range.
    const char* GetSearchPathAt(int index) const;

    /// The index of an equal path (without regard to case), or the complement of the new index.
    /// With `load`, all packages below a new path are loaded.
    int AddSearchPath(std::string_view path, bool load);

    /// The index removed, or the complement of the number of paths. Nothing is unloaded.
    int RemoveSearchPath(std::string_view path);

    /// The names of all packages below the search paths; true when one path could be listed. For
    /// the loaded ones alone no path is listed: they come with the result false.
    bool EnumeratePackages(bool loadedOnly, SortedStringList& packages) const;

    /// Loads all template files of a package directory below the first search path that has it.
    bool LoadPackage(std::string_view name);
    bool IsPackageLoaded(std::string_view name) const { return packages_.count(name) > 0; }

    /// Enters a package as loaded, or takes that back.
    void SetPackageLoaded(std::string_view name, bool loaded);

    /// Loads the file that holds a template by its full name; the prefixes are tried after the
    /// name itself.
    bool LoadTemplate(std::string_view name, const SortedStringList* prefixes);

    // -- lives ----------------------------------------------------------------------------------

    /// Unlike the other managers, forgotten before it is deleted.
    void Terminate();

    // -- called by types around changes of their names and files --------------------------------

    /// Takes a registered type out of its registry while its key changes, and places it again,
    /// which needs no memory where room was made before.
    void MakeRoomFor(const Type& type);
    void Unlist(Type& type);
    void List(Type& type);

    /// Enters a type under a file name that it is about to get, and takes it from the one it has.
    void ListFile(Type& type, const std::string& fileName);
    void UnlistFile(Type& type);

    /// Called by a level of detail around a change of its name and at its end; false when the
    /// registry does not have it.
    void MakeRoomForLOD() { lods_.MakeRoom(); }
    bool UnlistLOD(LOD& lod) { return lods_.RemoveExactly(&lod); }
    void ListLOD(LOD& lod) { lods_.Place(&lod); }

    /// Takes over what a file has declared beside types and what is listed by now.
    template <class Part> void Own(std::unique_ptr<Part> part);

    /// Takes a type out that is to belong to somebody else.
    void GiveAway(Type& type);

private:
    friend class Singleton<TemplateManager>;
    using FileIndex = std::map<std::string, std::unordered_set<Type*>, LessIgnoringCase>;

    TemplateManager();
    explicit TemplateManager(std::unique_ptr<RetiredSchema> retired);
    ~TemplateManager() override;

    /// What ending means while the memory has to stay.
    void Empty();

    void RegisterBuiltInTypes();
    template <class T> int Register(ObjectRegistry<T>& registry, T* object);
    void Displace(Type& type);
    void Unregistered(Type* type);
    void TakeBack(Type& type);
    std::vector<Type*> GetDefinitionsToUnload(std::string_view path) const;
    template <class T> int Remove(ObjectRegistry<T>& registry, T* object);
    bool LoadFile(const char* path, const char* found);
    const std::unordered_set<Type*>* FindFile(std::string_view fileName) const;
    Type* FindExactly(std::string_view name) const;
    template <class LookUp>
    auto Resolve(std::string_view name, const UsingList& prefixes, const LookUp& lookUp) const
        -> decltype(lookUp(name));
    void FillTypeNames() const;
    void NoteTypeName(const Type& type) noexcept;
    const std::vector<Template*>& ListVersions(const std::string& name) const;
    int GetHighestDefined(const Template& first) const;
    bool HasNewerProperty(const Template& version, const Property& property) const;

    ObjectRegistry<Template> templates_;
    ObjectRegistry<Enumeration> enumerations_;
    ObjectRegistry<Type> types_;
    ObjectRegistry<LOD> lods_;
    AnchorTypeList anchorTypes_;
    mutable VersionIndex versions_;
    Template* root_ = nullptr;
    std::set<std::string, std::less<>> packages_; ///< the loaded ones
    LoadedFiles loadedFiles_;
    SearchPaths searchPaths_;
    FileIndex typesByFile_;
    mutable TypeNameIndex typeNames_;        // of all types, once a file has used many packages
    std::unordered_set<Type*> displaced_;    // types whose place another one took
    std::unique_ptr<RetiredSchema> retired_; // takes all over in the end, without memory
    mutable std::string key_; // room for composed keys, so that lookups allocate nothing
};

} // namespace Kor
