#pragma once

namespace Kor {

class AnchorInstance;
class AssetManager;
class AttributeInstance;
class GeometryInstance;
class Instance;
class NodeInstance;
class PropertyInstance;
class Type;
class XMLWriter;

/// Writes instances as the elements of scene files, so that reading them gives the same instances
/// again.
class XMLSceneWriter {
public:
    explicit XMLSceneWriter(XMLWriter& writer) : writer_(writer) {}

    /// All assets of the scene.
    void WriteScene(AssetManager& scene);

    /// An instance and all that is nested in its values.
    void WriteInstance(const Instance& instance);

    /// A property instance of any kind, with all that is nested in its value.
    void WritePropertyInstance(const PropertyInstance& propertyInstance);

    /// The elements of a value, inside of the element that holds it: one as its attribute, several
    /// as elements; of a template's, its instances.
    void WriteValue(const Type& type, const void* value, int count);

private:
    struct OpenInstance;

    void StartInstance(const Instance& instance);
    void StartAttribute(const AttributeInstance& attribute);
    void WriteAttribute(const AttributeInstance& attribute);
    void WriteElements(Instance* const* instances, int count);
    void WriteElements(const Type& storage, const void* value, int count);
    void WriteNextPropertyInstance(OpenInstance& open);
    void WriteAnchor(const AnchorInstance& anchor);
    void WriteGeometry(const GeometryInstance& geometry);
    void WriteNode(const NodeInstance& node);

    XMLWriter& writer_;
};

} // namespace Kor
