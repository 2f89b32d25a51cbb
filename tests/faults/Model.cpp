#include "faults/Model.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <regex>

#include "api/SchemaDump.h"
#include "core/ByteStreams.h"
#include "formats/Texts.h"
#include "formats/XMLSceneWriter.h"
#include "formats/XMLTemplateWriter.h"
#include "instances/AssetManager.h"
#include "instances/AttributeInstance.h"
#include "manager/TemplateManager.h"
#include "schema/View.h"
#include "types/EnumerationItem.h"
#include "xml/XMLWriter.h"

namespace {

std::string& Root() {
    static std::string directory;
    return directory;
}

void Write(const std::string& path, const std::string& text) {
    std::filesystem::create_directories(std::filesystem::path(path).parent_path());
    std::ofstream(path, std::ios::binary) << "<?xml version='1.0' encoding='UTF-8'?>\n" << text;
}

constexpr const char* kPackage = R"(<templates package="core">
<template name="Common"><attribute name="note" type="STRING" default="nothing yet, but a long text"/>
</template></templates>)";

constexpr const char* kSchema = R"(<templates package="main">
<using package="core"/>
<lod name="High" type="surface" threshold="1" maxShapes="2"><shape type="cube"/></lod>
<lod name="Low" type="collision"/>
<!-- three numbers, as points have them -->
<type name="Vector" type="FLOAT" dim="3"/>
<type name="Texts" type="STRING" dim="0"/>
<enum name="Colour" type="INT32"><item name="Red" value="1"/><item name="Green" value="2"/></enum>
<template name="Base"><extends template="core.Common"/>
<label>Base of all</label><description language="en">What the others have in common</description>
<attribute name="size" type="FLOAT" default="1" min="0.5" max="9"><label language="en">Size</label>
<command execute="Redraw" notification="AttributeValueChanged"/></attribute></template>
<template name="Part"><extends template="Base"/>
<attribute name="colour" type="Colour" default="Green"/>
<attribute name="texts" type="Texts"/>
<attribute name="place" type="Vector"/>
<attribute name="odd" type="Unheard" autoBind="somewhere"/>
<node name="node" ancestor="root" distance="2"/>
<anchor name="plug" child="true"/><anchor name="socket"/><node name="AssetNode"/>
<geometry name="shape"><alternate lod="High"/><alternate lod="Low"/></geometry>
<attribute name="late" type="INT32" version="2"/></template>
<template name="Whole"><extends template="Base"/>
<attribute name="part" type="Part"><asset name="stock" reference="stock.asset"/></attribute>
<attribute name="other" type="Part" reference="true"/></template>
<view name="panel" template="Part"><group name="inner"><property name="size"/></group>
<property name="colour"/></view>
</templates>)";

constexpr const char* kScene = R"(<assets>
<asset name="chair" reference="chair_of_the_host_with_a_long_name.asset">
<implements template="main.Whole" version="1"/>
<attribute property="Base.size" binding="|chair|and|a|path|of|some|length" value="2.5"/>
<attribute property="Whole.part"><asset name="leg"><implements template="main.Part" version="1"/>
<attribute property="Part.colour" value="2"/></asset></attribute></asset>
<asset name="screw"><implements template="main.Part" version="1"/>
<attribute property="Part.texts"><value>first text of the screw</value><value>second</value>
</attribute>
<attribute property="Part.place"><value>1</value><value>2</value><value>3</value></attribute>
<node property="Part.AssetNode" binding="|the|asset|node|of|the|screw"/>
<anchor property="Part.plug" binding="|plug" attachedAnchor="chair.socket" lockBinding="1"/>
<geometry property="Part.shape"><alternate lod="Low" binding="screw_low"/></geometry>
</asset></assets>)";

void Ignore(void*, void*, int, void*) {}

template <class Handle, class Found> Handle* As(Found* found) {
    return static_cast<Handle*>(found);
}

template <class Handle> Handle* CloneOf(Handle* source) {
    return static_cast<Handle*>(OviObject_Clone(source));
}

template <class T, class Handle> T* Inner(Handle* handle) {
    return Kor::ObjectCast<T>(reinterpret_cast<Kor::Object*>(handle));
}

/// A template that does not declare a property any more may still be its holder.
bool IsDeclared(const Kor::Property& property) {
    const auto& holders = property.GetHolders();
    return std::any_of(holders.begin(), holders.end(), [&](const Kor::Template* holder) {
        const auto& declared = holder->GetDeclaredProperties();
        return std::find(declared.begin(), declared.end(), &property) != declared.end();
    });
}

/// Whether somebody else deletes an object.
bool HasOwner(OviObject* object) {
    if (const auto* type = Inner<Kor::Type>(object)) {
        const auto* item = Inner<Kor::EnumerationItem>(object);
        return type->IsRegistered() || type->GetOwner() == Kor::Owner::kManager ||
               (type->GetOwner() == Kor::Owner::kUsers && type->IsInUse()) ||
               (item && item->GetEnumeration());
    }
    if (const auto* property = Inner<Kor::Property>(object))
        return IsDeclared(*property);
    if (const auto* view = Inner<Kor::View>(object))
        return view->IsListed();
    if (const auto* item = Inner<Kor::ViewItem>(object))
        return !item->GetGroups().empty();
    if (const auto* asset = Inner<Kor::Asset>(object))
        return asset->IsListed();
    return false;
}

std::string XMLOf(const Kor::NamedObject& object) {
    Kor::StringSink sink(1 << 20);
    Kor::XMLWriter writer;
    writer.Open(sink, false);
    Kor::XMLTemplateWriter schema(writer);
    Kor::XMLSceneWriter scene(writer);
    if (const auto* instance = Kor::ObjectCast<Kor::Instance>(&object))
        scene.WriteInstance(*instance);
    else if (const auto* member = Kor::ObjectCast<Kor::PropertyInstance>(&object))
        scene.WritePropertyInstance(*member);
    else if (const auto* type = Kor::ObjectCast<Kor::Type>(&object))
        schema.WriteAny(*type);
    else if (const auto* property = Kor::ObjectCast<Kor::Property>(&object))
        schema.WriteWholeProperty(*property);
    else if (const auto* item = Kor::ObjectCast<Kor::ViewItem>(&object))
        schema.WriteViewItem(*item);
    else
        WriteTexts(object, writer);
    writer.Close();
    return sink.GetText();
}

std::string DescribeTexts(const Kor::NamedObject& object) {
    std::string text = std::string(object.GetName()) + " [" + object.GetComment() + "]";
    for (const auto* table : {&object.GetLabels(), &object.GetDescriptions()}) {
        for (int i = 0; i < table->GetCount(); ++i)
            text += " " + table->GetAt(i).language + "=" + table->GetAt(i).text;
    }
    return text + "\n";
}

std::string DescribeAsset(const Kor::Asset& asset) {
    std::string text = "asset " + DescribeTexts(asset) + "refers to " + asset.GetReference() + "\n";
    for (const Kor::PropertyInstance* held : asset.GetPropertyInstances()) {
        text += std::string(held->GetKey()) + (held->IsBindingLocked() ? " binding locked" : "") +
                (held->IsValueLocked() ? " value locked" : "");
        if (const auto* attribute = Kor::ObjectCast<Kor::AttributeInstance>(held))
            text += " of dimension " + std::to_string(attribute->GetDimension());
        text += "\n";
    }
    return text + XMLOf(asset) + "\n";
}

} // namespace

// -- files ----------------------------------------------------------------------------------------

void Model::WriteFiles(const std::string& directory) {
    Root() = directory;
    std::filesystem::remove_all(directory);
    Write(Path("library/core/core.template"), kPackage);
    Write(Path("library/more/more.template"),
          "<templates package='more'><template name='Late'/></templates>");
    Write(SchemaFile(), kSchema);
    Write(Path("second/extra/extra.template"),
          "<templates package='extra'><template name='Late'/></templates>");
    Write(Path("second/extra/inner/inner.template"),
          "<templates package='extra.inner'><using package='more'/><template name='Later'/>"
          "</templates>");
    const std::string next = std::regex_replace(kSchema, std::regex("\\bmain\\b"), "next");
    Write(Path("next.template"), std::regex_replace(next, std::regex("High|Low"), "Next$&"));
    Write(SceneFile(), kScene);
    Write(Path("other.asset"),
          std::regex_replace(std::regex_replace(kScene, std::regex("chair"), "table"),
                             std::regex("screw"), "nail"));
}

std::string Model::Path(const char* name) {
    return Root() + "/" + name;
}

const std::string& Model::SchemaFile() {
    static const std::string path = Path("main.template");
    return path;
}

const std::string& Model::SceneFile() {
    static const std::string path = Path("scene.asset");
    return path;
}

// -- life -----------------------------------------------------------------------------------------

Model::Model() {
    made_.reserve(16);
    Ovi_Initialize();
    OviNotificationManager_RegisterInstanceCallback(&Ignore, this);
    OviNotificationManager_RegisterPropertyInstanceCallback(&Ignore, this);
    OviTemplateManager_AddSearchPath(Path("library").c_str(), false);
    OviTemplateManager_LoadTemplateFile(SchemaFile().c_str());
    OviAssetManager_LoadScene(SceneFile().c_str());
    OviErrorManager_Clear();
    FindAll();
    MakeFree();
    value = OviType_NewValue(vector, nullptr, 3);
}

void Model::FindAll() {
    base = OviTemplateManager_GetTemplateVersion("main.Base", 1);
    part = OviTemplateManager_GetTemplateVersion("main.Part", 1);
    part2 = OviTemplateManager_GetTemplateVersion("main.Part", 2);
    whole = OviTemplateManager_GetTemplateVersion("main.Whole", 1);
    size = As<OviAttributeProperty>(OviTemplate_GetProperty(base, "size"));
    plain = As<OviAttributeProperty>(OviTemplate_GetProperty(part, "place"));
    nested = As<OviAttributeProperty>(OviTemplate_GetProperty(whole, "part"));
    node = As<OviNodeProperty>(OviTemplate_GetProperty(part, "node"));
    plug = As<OviAnchorProperty>(OviTemplate_GetProperty(part, "plug"));
    shape = As<OviGeometryProperty>(OviTemplate_GetProperty(part, "shape"));
    high = OviGeometryProperty_GetAlternate(shape, "High");
    redraw = OviProperty_GetCommandAt(size, 0);
    view = OviTemplate_GetView(part, "panel", false);
    group = As<OviGroup>(OviGroup_GetViewItemAt(view, 0));
    lod = OviTemplateManager_GetLOD("High");
    vector = OviTemplateManager_GetType("main.Vector");
    number = OviTemplateManager_GetType("INT32");
    text = OviTemplateManager_GetType("STRING");
    colour = OviTemplateManager_GetEnumeration("main.Colour");
    red = OviEnumeration_GetItem(colour, "Red");
    chair = OviAssetManager_GetAsset("chair");
    screw = OviAssetManager_GetAsset("screw");
    const auto held = [](OviInstance* instance, const char* name) {
        return OviInstance_GetPropertyInstance(instance, name, false);
    };
    sizeOfScrew = As<OviAttributeInstance>(held(screw, "Base.size"));
    textsOfScrew = As<OviAttributeInstance>(held(screw, "Part.texts"));
    plugOfScrew = As<OviAnchorInstance>(held(screw, "Part.plug"));
    shapeOfScrew = As<OviGeometryInstance>(held(screw, "Part.shape"));
    partOfChair = As<OviAttributeInstance>(held(chair, "Whole.part"));
    leg = *static_cast<OviInstance**>(OviAttributeInstance_GetValue(partOfChair));
}

void Model::MakeFree() {
    freeTemplate = CloneOf(base);
    OviNamedObject_SetName(freeTemplate, "host.Own");
    freeAttribute = OviAttributeProperty_New("fresh", 1);
    freeGeometry = OviGeometryProperty_New("form", 1);
    freeCommand = CloneOf(redraw);
    OviNamedObject_SetName(freeCommand, "Repaint");
    freeLOD = CloneOf(lod);
    OviNamedObject_SetName(freeLOD, "Medium");
    freeAlternate = CloneOf(high);
    OviGeometryAlternate_SetLOD(freeAlternate, freeLOD);
    freeView = CloneOf(view);
    OviNamedObject_SetName(freeView, "sheet");
    freeGroup = OviGroup_New("more");
    freeViewProperty = OviViewProperty_New("leaf", nullptr);
    freeType = OviCustomType_New("host.Point", 2);
    freeEnumeration = CloneOf(colour);
    OviNamedObject_SetName(freeEnumeration, "host.Shade");
    freeItem = CloneOf(red);
    OviNamedObject_SetName(freeItem, "Blue");
    OviAsset* lamp = OviAssetManager_NewAsset("lamp");
    OviAssetManager_RemoveAsset(lamp);
    freeAsset = lamp;
    freeInstance = OviInstance_New("loose");
    OviInstance_AddTemplate(freeInstance, whole);
}

std::vector<OviObject*> Model::GetFree() const {
    // What others may come to own stands in front of those.
    return {freeType,         freeItem,        freeAlternate, freeCommand,  freeLOD,
            freeViewProperty, freeGroup,       freeView,      freeGeometry, freeAttribute,
            freeTemplate,     freeEnumeration, freeAsset,     freeInstance};
}

Model::~Model() {
    OviType_DeleteValue(vector, value, 3);
    std::vector<OviObject*> rest = made_; // parts of the others may be among them
    for (OviObject* object : GetFree())
        rest.push_back(object);
    for (OviObject* object : rest) {
        if (object && !HasOwner(object))
            OviObject_Delete(object);
    }
    OviNotificationManager_UnregisterInstanceCallback(this);
    OviNotificationManager_UnregisterPropertyInstanceCallback(this);
    Ovi_Terminate();
}

// -- looking --------------------------------------------------------------------------------------

std::string Model::Describe() const {
    std::string all = SchemaDump::Of(Root());
    for (int i = 0; i < OviTemplateManager_GetAnchorTypeCount(); ++i)
        all += std::string("anchor type ") +
               OviNamedObject_GetName(OviTemplateManager_GetAnchorTypeAt(i)) + "\n";
    for (int i = 0; i < OviTemplateManager_GetSearchPathCount(); ++i)
        all += std::string("search path ") + OviTemplateManager_GetSearchPathAt(i) + "\n";
    Kor::TemplateManager& manager = *Kor::TemplateManager::Get();
    Kor::SortedStringList packages;
    manager.EnumeratePackages(true, packages);
    for (const std::string& package : packages)
        all += "package " + package + "\n";
    for (const std::string& file : manager.GetLoadedFiles().GetAll())
        all += "loaded " + file + "\n";
    for (const Kor::Asset* asset : Kor::AssetManager::Get()->GetAssets().Snapshot())
        all += DescribeAsset(*asset);
    for (OviObject* object : GetFree()) {
        const auto* named = Inner<Kor::NamedObject>(object);
        all += "free " + (named ? DescribeTexts(*named) + XMLOf(*named) : "gone") + "\n";
        if (const auto* type = Inner<Kor::Type>(object))
            all += "file " + type->GetFileName() + "\n";
        if (const auto* property = Inner<Kor::Property>(object))
            all += "full name " + std::string(property->GetFullName()) + "\n";
    }
    return all;
}
