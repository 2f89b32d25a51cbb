// Random histories of versions and their properties, each twice: once with all properties of all
// versions asked for after every step, and once with nothing asked for but by the steps themselves.
// Copies that are made when they are asked for must be those that were made at once.

#include "api/RandomVersions.h"
#include "api/SchemaDump.h"

namespace {

class VersionHistoriesTest : public RandomVersions {
protected:
    /// What all of it comes to, told by everything that a host can see.
    std::string Run(unsigned seed, bool asksAlways) {
        random_.seed(seed);
        names_ = 0;
        log_.clear();
        loose_.clear();
        path_ = WriteSchema("s.template", kVersionsSchema);
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
        std::vector<std::string> events = TakeEvents();
        std::sort(events.begin(), events.end()); // which instance hears first is open
        for (const std::string& event : events)
            Note(event);
        Ovi_Terminate(); // leaves nothing to the next run
        Ovi_Initialize();
        return log_;
    }

private:
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
        OviProperty* property = Keep(AnyPropertyOf(version));
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
        OviProperty* next =
            *std::min_element(loose_.begin(), loose_.end(), [](OviProperty* a, OviProperty* b) {
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
            Keep(OviAttributeProperty_GetType(attribute)); // may come back to the host
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
        const std::string path = WriteSchema(NewName(), "<templates package='p'><type name='" +
                                                            NewName() + "' type='T'/></templates>");
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
};

TEST_F(VersionHistoriesTest, NobodyCanTellWhenTheCopiesOfAVersionWereMade) {
    for (unsigned seed = 1; seed <= 60; ++seed) {
        const std::string lazy = Run(seed, false);
        EXPECT_EQ(lazy, Run(seed, true)) << "history " << seed;
    }
}

} // namespace
