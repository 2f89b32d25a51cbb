// Random histories of versions and their properties, each twice: once with all properties of all
// versions asked for after every step, and once with nothing asked for but by the steps themselves.
// Copies that are made when they are asked for must be those that were made at once.

#include <cstdlib>
#include <fstream>
#include <random>
#include <set>

#include "api/Schema.h"
#include "api/SchemaDump.h"

namespace {

constexpr const char* kSchema =
    "<templates package='p'>"
    "<lod name='High'/><lod name='Low'/>"
    "<template name='U'><attribute name='u' type='INT32'/></template>"
    "<template name='T'><attribute name='a' type='FLOAT' default='1' min='0' max='2'>"
    "<label>A</label><command execute='run' notification='x'/></attribute>"
    "<attribute name='b' type='U'/><attribute name='c' type='Odd'/>"
    "<node name='n' ancestor='up' distance='2'/><anchor name='k' child='true'/>"
    "<geometry name='g'><alternate lod='High'/><alternate lod='Low'/></geometry>"
    "<attribute name='d' type='STRING' default='text' version='2'/>"
    "<attribute name='a' type='DOUBLE' version='3'/></template></templates>";

class VersionHistoriesTest : public SchemaTest {
protected:
    /// What all of it comes to, told by everything that a host can see.
    std::string Run(unsigned seed, bool asksAlways) {
        random_.seed(seed);
        names_ = 0;
        log_.clear();
        loose_.clear();
        path_ = WriteSchema("s.template", kSchema);
        EXPECT_TRUE(OviTemplateManager_LoadTemplateFile(path_.c_str()));
        StartRecording();
        for (int i = 0; i < 40; ++i) {
            if (asksAlways)
                AskForAll();
            Step(Pick(24));
        }
        Note(SchemaDump::Of(Directory()));
        Save();
        for (OviProperty* property : loose_)
            OviObject_Delete(property);
        OviAssetManager_NewScene();
        StopRecording();
        for (const std::string& event : TakeEvents())
            Note(event);
        Ovi_Terminate(); // leaves nothing to the next run
        Ovi_Initialize();
        return log_;
    }

private:
    int Pick(int count) { return static_cast<int>(random_() % static_cast<unsigned>(count)); }
    void Note(const std::string& text) { log_ += text + "\n"; }
    void Note(int number) { Note(std::to_string(number)); }
    std::string NewName() { return "x" + std::to_string(names_++); }

    static void AskForAll() {
        for (int i = 0; OviTemplate* type = OviTemplateManager_GetTemplateAt(i); ++i) {
            for (int at = 0; OviTemplate_GetPropertyAt(type, at, false); ++at) {
            }
            for (int at = 0; OviTemplate_GetPropertyAt(type, at, true); ++at) {
            }
        }
    }

    static std::vector<OviTemplate*> Versions() {
        std::vector<OviTemplate*> versions;
        for (int i = 0; OviTemplate* type = OviTemplateManager_GetTemplateAt(i); ++i) {
            if (std::string(OviType_GetFullName(type)) == "p.T")
                versions.push_back(type);
        }
        return versions;
    }

    OviTemplate* AnyVersion() {
        const auto versions = Versions();
        return versions.empty() ? nullptr
                                : versions[static_cast<size_t>(Pick(static_cast<int>(versions.size())))];
    }

    /// Asks for a single one, by its place in one of the two orders or by its name.
    OviProperty* AnyPropertyOf(OviTemplate* version) {
        const int count = OviTemplate_GetPropertyCount(version);
        const int way = Pick(3);
        const int index = Pick(std::max(count, 1));
        if (way == 2)
            return OviTemplate_GetProperty(version, Pick(2) ? "a" : "g");
        return OviTemplate_GetPropertyAt(version, index, way == 1);
    }

    OviType* AnyType() {
        switch (Pick(4)) {
        case 0:
            return TypeNamed("INT32");
        case 1:
            return TypeNamed("FLOAT");
        case 2:
            return OviTemplateManager_GetTemplate("p.U");
        default:
            return OviCustomType_New(NewName().c_str(), 1);
        }
    }

    std::string AnyName() {
        constexpr const char* kNames[] = {"a", "b", "c", "d", "g", "e1", "e2"};
        return Pick(2) ? NewName() : kNames[Pick(7)];
    }

    void Add(OviTemplate* version, OviProperty* property) {
        const int result = OviTemplate_AddProperty(version, property, Pick(3) ? -1 : Pick(8));
        Note(result);
        const std::string name = OviNamedObject_GetName(property);
        if (result == -1 && OviTemplate_GetProperty(version, name.c_str()) != property)
            loose_.insert(property);
        else
            loose_.erase(property);
    }

    void AddNew(OviTemplate* version) {
        const unsigned own = static_cast<unsigned>(OviTemplate_GetVersion(version));
        const unsigned number = Pick(4) ? own : static_cast<unsigned>(Pick(6) + 1);
        if (Pick(5) == 0) {
            Add(version, OviGeometryProperty_New(AnyName().c_str(), number));
            return;
        }
        OviAttributeProperty* made = OviAttributeProperty_New(AnyName().c_str(), number);
        OviAttributeProperty_SetType(made, AnyType());
        Add(version, made);
    }

    /// Read from a file, so that later versions share it.
    void Read() {
        const std::string name = NewName();
        std::string text = "<templates package='p'><template name='T'>";
        for (int i = Pick(3); i >= 0; --i)
            text += "<attribute name='" + AnyName() + "' type='" + (Pick(2) ? "INT32" : "Gone") +
                    "' version='" + std::to_string(Pick(7) + 1) + "'/>";
        const std::string path = WriteSchema(name, text + "</template></templates>");
        for (OviTemplate* version : Versions())
            OviType_SetFileName(version, "");
        Note(OviTemplateManager_LoadTemplateFile(path.c_str()));
        for (OviTemplate* version : Versions())
            OviType_SetFileName(version, path_.c_str());
        OviTemplateManager_UnloadTemplateFile(path.c_str());
    }

    void Remove(OviTemplate* version) {
        OviProperty* property = AnyPropertyOf(version);
        OviTemplate* owner = property ? OviProperty_GetTemplate(property) : nullptr;
        if (!property)
            return;
        const bool isOnlyHere = owner == version || !owner;
        Note(OviTemplate_RemoveProperty(version, property));
        if (isOnlyHere)
            loose_.insert(property);
    }

    void AddAgain(OviTemplate* version) {
        if (loose_.empty())
            return;
        // By name, since addresses differ from run to run.
        OviProperty* next = *std::min_element(
            loose_.begin(), loose_.end(), [](OviProperty* a, OviProperty* b) {
                return std::string(OviNamedObject_GetName(a)) < OviNamedObject_GetName(b);
            });
        const auto shares = [next](OviProperty* other) {
            return std::string(OviNamedObject_GetName(next)) == OviNamedObject_GetName(other);
        };
        if (std::count_if(loose_.begin(), loose_.end(), shares) == 1)
            Add(version, next);
    }

    void Edit(OviProperty* property) {
        if (!property)
            return;
        auto* attribute = static_cast<OviAttributeProperty*>(property);
        switch (Pick(9)) {
        case 0:
            Note(OviNamedObject_SetName(property, AnyName().c_str()));
            return;
        case 1:
            OviNamedObject_SetLabel(property, Pick(2) ? "de" : nullptr, NewName().c_str());
            return;
        case 2:
            OviNamedObject_SetComment(property, NewName().c_str());
            return;
        case 3: // values of another type are not to be read
            OviAttributeProperty_SetDefaultValue(attribute, nullptr);
            OviAttributeProperty_SetMinValue(attribute, nullptr);
            OviAttributeProperty_SetMaxValue(attribute, nullptr);
            Note(OviAttributeProperty_SetType(attribute, AnyType()));
            return;
        case 4:
            OviAttributeProperty_SetReference(attribute, Pick(2) == 0);
            return;
        case 5:
            OviAttributeProperty_SetAutoBind(attribute, NewName().c_str());
            return;
        case 6:
            OviAttributeProperty_SetDefaultValue(attribute, nullptr);
            return;
        case 7:
            if (OviCommand* command = OviProperty_GetCommandAt(property, 0))
                Note(OviProperty_RemoveCommand(property, command));
            return;
        default:
            EditGeometry(static_cast<OviGeometryProperty*>(property));
        }
    }

    void EditGeometry(OviGeometryProperty* geometry) {
        OviGeometryAlternate* alternate = OviGeometryProperty_GetAlternateAt(geometry, 0);
        if (!alternate)
            return;
        if (Pick(2))
            Note(OviGeometryProperty_RemoveAlternate(geometry, alternate));
        else
            OviNodeProperty_SetAncestor(alternate, NewName().c_str());
    }

    void EditLevel() {
        OviLOD* level = OviTemplateManager_GetLODAt(Pick(2));
        if (!level)
            return;
        if (Pick(6))
            Note(OviNamedObject_SetName(level, NewName().c_str()));
        else
            OviObject_Delete(level);
    }

    void DeleteProperty(OviTemplate* version) {
        if (OviProperty* property = AnyPropertyOf(version)) {
            loose_.erase(property);
            OviObject_Delete(property);
        }
    }

    void DeleteVersion(OviTemplate* version) {
        if (OviTemplate_GetVersion(version) == 1 && Pick(4))
            return;
        Note(OviTemplateManager_RemoveTemplate(version));
        OviObject_Delete(version);
    }

    void Clone(OviTemplate* version) {
        auto* clone = CloneOf(version);
        Note(OviTemplate_GetPropertyCount(clone));
        if (AnyPropertyOf(clone))
            Note(Describe(AnyPropertyOf(clone)));
        OviNamedObject_SetName(clone, NewName().c_str());
        if (Pick(2))
            Note(OviTemplateManager_AddTemplate(clone));
        else
            OviObject_Delete(clone);
    }

    void UseInAsset(OviTemplate* version) {
        OviAsset* asset = OviAssetManager_NewAsset(NewName().c_str());
        Note(OviInstance_AddTemplate(asset, version));
        Note(static_cast<int>(OviInstance_GetSize(asset)));
    }

    void Update() {
        OviAsset* asset = OviAssetManager_GetAssetAt(0);
        OviTemplate* version = asset ? OviInstance_GetTemplateAt(asset, 0) : nullptr;
        if (version)
            Note(OviInstance_UpdateTemplate(asset, version));
    }

    void DropAsset() {
        if (OviAsset* asset = OviAssetManager_GetAssetAt(0)) {
            OviAssetManager_RemoveAsset(asset);
            OviObject_Delete(asset);
        }
    }

    void Save() {
        Note(OviTemplateManager_SaveTemplateFile(path_.c_str(), PathOf("saved").c_str()));
        Note(ReadFile(PathOf("saved")));
    }

    void ReadAgain() {
        Note(OviTemplateManager_SaveTemplateFile(path_.c_str(), nullptr));
        Note(OviTemplateManager_UnloadTemplateFile(path_.c_str()));
        Note(OviTemplateManager_LoadTemplateFile(path_.c_str()));
    }

    void DeleteType() {
        OviTemplate* type = OviTemplateManager_GetTemplate("p.U");
        if (type && Pick(3) == 0) {
            OviTemplateManager_RemoveTemplate(type);
            OviObject_Delete(type);
        }
    }

    void AddTypeElement() {
        const std::string path =
            WriteSchema(NewName(), "<templates package='p'><type name='" + NewName() +
                                       "' type='T'/></templates>");
        Note(OviTemplateManager_LoadTemplateFile(path.c_str()));
        const std::string output = PathOf("type");
        Note(OviTemplateManager_SaveTemplateFile(path.c_str(), output.c_str()));
        Note(ReadFile(output));
    }

    void Step(int kind) {
        OviTemplate* version = AnyVersion();
        if (!version)
            return;
        if (kind < 5)
            OviTemplateManager_CreateTemplateVersion("p.T", Pick(12) + 1);
        else if (kind < 8)
            AddNew(version);
        else if (kind < 11)
            Edit(AnyPropertyOf(version));
        else
            StepAside(kind, version);
    }

    void StepAside(int kind, OviTemplate* version) {
        switch (kind) {
        case 11:
            return Read();
        case 12:
            return Remove(version);
        case 13:
            return AddAgain(version);
        case 14:
            return EditLevel();
        case 15:
            return DeleteProperty(version);
        case 16:
            return DeleteVersion(version);
        case 17:
            return Clone(version);
        case 18:
            return UseInAsset(version);
        case 19:
            return Update();
        case 20:
            return Save();
        case 21:
            return Pick(3) ? DropAsset() : ReadAgain();
        case 22:
            return DeleteType();
        default:
            return AddTypeElement();
        }
    }

    std::mt19937 random_;
    int names_ = 0;
    std::string log_;
    std::string path_;
    std::set<OviProperty*> loose_;
};

TEST_F(VersionHistoriesTest, NobodyCanTellWhenTheCopiesOfAVersionWereMade) {
    const char* first = std::getenv("FIRST");
    const char* count = std::getenv("COUNT");
    const unsigned start = first ? static_cast<unsigned>(std::atoi(first)) : 1;
    const unsigned end = start + (count ? static_cast<unsigned>(std::atoi(count)) : 200);
    for (unsigned seed = start; seed < end; ++seed) {
        SCOPED_TRACE(seed);
        const std::string lazy = Run(seed, false);
        const std::string atOnce = Run(seed, true);
        EXPECT_TRUE(lazy == atOnce);
        if (const char* dump = std::getenv("DUMP")) {
            std::ofstream(std::string(dump) + ".lazy" + std::to_string(seed)) << lazy;
            std::ofstream(std::string(dump) + ".once" + std::to_string(seed)) << atOnce;
        }
    }
}

} // namespace
