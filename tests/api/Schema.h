#pragma once

#include <initializer_list>
#include <string>
#include <vector>

#include "api/Host.h"

/// Short ways for hosts that build and look at schemas.
class SchemaTest : public HostTest {
protected:
    // -- building -------------------------------------------------------------------------------

    /// A registered template with the given parents (the root without any).
    static OviTemplate* Make(const char* name, std::initializer_list<OviTemplate*> parents = {}) {
        OviTemplate* made = OviTemplateManager_CreateTemplate(name);
        for (OviTemplate* parent : parents)
            OviTemplate_AddParent(made, parent);
        return made;
    }

    static OviType* TypeNamed(const char* name) { return OviTemplateManager_ResolveType(name); }

    /// An attribute property that belongs to the caller.
    static OviAttributeProperty* NewAttribute(const char* name, unsigned version = 1,
                                              OviType* type = TypeNamed("INT32")) {
        OviAttributeProperty* made = OviAttributeProperty_New(name, version);
        OviAttributeProperty_SetType(made, type);
        return made;
    }

    /// Adds a new attribute property at the end of a template's declaration order.
    static OviAttributeProperty* AddAttribute(OviTemplate* owner, const char* name,
                                              OviType* type = TypeNamed("INT32")) {
        OviAttributeProperty* made =
            NewAttribute(name, static_cast<unsigned>(OviTemplate_GetVersion(owner)), type);
        OviTemplate_AddProperty(owner, made, -1);
        return made;
    }

    /// A copy of an object, which belongs to the caller.
    template <class Handle> static Handle* CloneOf(Handle* source) {
        return static_cast<Handle*>(OviObject_Clone(source));
    }

    /// Writes a template file and gives its path; the header is added.
    std::string WriteSchema(const std::string& name, const std::string& elements) {
        return WriteFile(name, "<?xml version='1.0' encoding='UTF-8'?>\n" + elements);
    }

    // -- looking --------------------------------------------------------------------------------

    using Names = std::vector<std::string>;

    static Names ParentsOf(OviTemplate* self) {
        Names names;
        for (int i = 0; i < OviTemplate_GetParentCount(self); ++i)
            names.push_back(Describe(OviTemplate_GetParentAt(self, i)));
        return names;
    }

    static Names ChildrenOf(OviTemplate* self) {
        Names names;
        for (int i = 0; i < OviTemplate_GetChildCount(self); ++i)
            names.push_back(Describe(OviTemplate_GetChildAt(self, i)));
        return names;
    }

    /// The full names of the own properties in name order.
    static Names PropertiesByName(OviTemplate* self) {
        Names names;
        for (int i = 0; i < OviTemplate_GetPropertyCount(self); ++i)
            names.push_back(Describe(OviTemplate_GetPropertyAt(self, i, true)));
        return names;
    }

    /// The full names of the own properties in declaration order, older definitions included.
    static Names PropertiesAsDeclared(OviTemplate* self) {
        Names names;
        for (int i = 0; OviProperty* property = OviTemplate_GetPropertyAt(self, i, false); ++i)
            names.push_back(Describe(property));
        return names;
    }

    /// All registered templates in key order.
    static Names Templates() {
        Names names;
        for (int i = 0; i < OviTemplateManager_GetTemplateCount(); ++i)
            names.push_back(Describe(OviTemplateManager_GetTemplateAt(i)));
        return names;
    }

    static std::string NameOf(OviNamedObject* object) { return OviNamedObject_GetName(object); }

    /// The text of an element of a value block.
    static std::string TextOf(OviType* type, const void* value, int index = 0) {
        char text[256];
        const int length = OviType_GetValueAsString(type, value, index, text);
        return std::string(text, static_cast<size_t>(length));
    }

    /// A new value block with the given first element.
    static void* NewValue(OviType* type, const char* text, int count = 1) {
        void* value = OviType_NewValue(type, nullptr, count);
        OviType_GetValueFromString(type, text, value, 0);
        return value;
    }
};
