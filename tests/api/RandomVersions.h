#pragma once

#include <algorithm>
#include <random>
#include <set>
#include <string>
#include <vector>

#include "api/Schema.h"

inline constexpr const char* kVersionsSchema =
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

/// Changes versions of a template and their properties at random, and keeps a log of the results.
class RandomVersions : public SchemaTest {
protected:
    /// Where a property goes at random nobody may be left to delete it: it stays in reach until the
    /// process ends.
    template <class Handle> static Handle* Keep(Handle* handle) {
        static auto* const kept = new std::vector<void*>;
        kept->push_back(handle);
        return handle;
    }

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
        return versions.empty()
                   ? nullptr
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
            return Keep(OviCustomType_New(NewName().c_str(), 1));
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
            Add(version, Keep(OviGeometryProperty_New(AnyName().c_str(), number)));
            return;
        }
        OviAttributeProperty* made = Keep(OviAttributeProperty_New(AnyName().c_str(), number));
        OviAttributeProperty_SetType(made, AnyType());
        Add(version, made);
    }

    std::mt19937 random_;
    int names_ = 0;
    std::string log_;
    std::string path_;
    std::set<OviProperty*> loose_;
};
