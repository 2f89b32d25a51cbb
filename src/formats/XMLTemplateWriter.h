#pragma once

#include <string_view>
#include <vector>

namespace Kor {

class AnchorProperty;
class AttributeProperty;
class ByteSink;
class Command;
class Enumeration;
class EnumerationItem;
class GeometryAlternate;
class GeometryProperty;
class Group;
class LOD;
class NamedObject;
class NodeProperty;
class Property;
class Template;
class TemplateManager;
class Type;
class View;
class ViewItem;
class XMLWriter;
struct VersionStep;

/// Writes schema objects as the elements of template files, so that reading them gives the same
/// objects again.
class XMLTemplateWriter {
public:
    explicit XMLTemplateWriter(XMLWriter& writer) : writer_(writer) {}

    /// Says that this is a file, and which package its definitions belong to unless told otherwise.
    void SetPackage(std::string_view packageName) {
        package_ = packageName;
        inFile_ = true;
    }

    /// Tells a reader when a definition belongs to another package than those before it.
    void SwitchPackage(const Type& type);

    /// Makes a template known that what follows refers to, before its own definition.
    void DeclareTemplate(const Template& type);

    /// A type of any kind, by one of those that follow.
    void WriteAny(const Type& type);

    /// A type made from another one; an enumeration with its items; one item.
    void WriteType(const Type& type);
    void WriteEnumeration(const Enumeration& enumeration);
    void WriteItem(const EnumerationItem& item);

    /// All versions up to the given one: the parents and properties that each introduces.
    void WriteTemplate(const Template& latest);

    /// A property, each kind with an element of its own, and all that is declared of it.
    void WriteAttribute(const AttributeProperty& attribute);
    void WriteNode(const NodeProperty& node);
    void WriteAnchor(const AnchorProperty& anchor);
    void WriteGeometry(const GeometryProperty& geometry);

    /// A property of any kind; and what a copy of it would be, which has fresh values.
    void WriteWholeProperty(const Property& property) { WriteProperty(property, 0); }
    void WriteCopyOf(const Property& property);

    /// Parts of properties.
    void WriteAlternate(const GeometryAlternate& alternate);
    void WriteCommand(const Command& command);

    /// A level of detail with its shapes.
    void WriteLOD(const LOD& lod);

    /// A view, group or view property with all it contains.
    void WriteViewItem(const ViewItem& item);

private:
    void StartObject(const NamedObject& object, const char* element);
    void EndObject(bool dropsComment);
    void WriteProperty(const Property& property, int version);
    void WriteVersion(const Property& property);
    void StartMember(const Property& property, const char* element);
    void EndMember(const Property& property);
    void WriteAncestor(const NodeProperty& node);
    void WriteViews(const std::vector<const Template*>& versions);
    void WriteView(const View& view, const Template* owner);
    bool StartViewItem(const ViewItem& item);
    void WriteItems(const Group& outermost);
    std::string_view GetNameInFile(const Template& type) const;
    void StartTemplate(const Template& version);
    void WriteDimension(const Template& type);
    void WriteInOneElement(const std::vector<VersionStep>& steps,
                           const std::vector<const Template*>& versions);
    void WriteVersionByVersion(const std::vector<VersionStep>& steps,
                               const std::vector<const Template*>& versions);
    void WriteStep(const VersionStep& step);
    void WriteParent(const Template& parent, int version);
    void WriteValues(const AttributeProperty& attribute);
    void WriteFreshValues(const Type& type);
    void WriteDefaultAsset(const AttributeProperty& attribute);

    XMLWriter& writer_;
    std::string_view package_;
    bool inFile_ = false;
    int version_ = 0; // that introduces the property being written; 0: as the property says
    bool asCopy_ = false;
    bool commentPending_ = false; // whether a reader would still give its last comment away
};

} // namespace Kor
