#pragma once

#include <string>
#include <utility>
#include <vector>

#include "api/Host.h"
#include "api/Values.h"

/// A host with an enumeration of three colours.
class EnumerationHost : public HostTest {
protected:
    void SetUp() override {
        HostTest::SetUp();
        colour_ = Load("Colour", "INT32", {{"Red", "1"}, {"Green", "2"}, {"Blue", "3"}});
        ASSERT_NE(colour_, nullptr);
    }

    using Items = std::vector<std::pair<std::string, std::string>>;

    /// The enumeration as a template file defines it, with what `before` defines ahead of it.
    OviEnumeration* Load(const std::string& name, const std::string& type, const Items& items,
                         const std::string& before = "") {
        std::string text = before + "<enum name='" + name + "' type='" + type + "'>";
        for (const auto& [item, value] : items)
            text += "<item name='" + item + "' value='" + value + "'/>";
        const std::string path = WriteFile(name + ".template", TemplateFile(text + "</enum>"));
        OviTemplateManager_LoadTemplateFile(path.c_str());
        EXPECT_EQ(Errors(), std::vector<std::string>());
        return OviTemplateManager_GetEnumeration(name.c_str());
    }

    /// A free item: a renamed copy of another one.
    OviEnumerationItem* NewItem(const char* name) {
        auto* item = static_cast<OviEnumerationItem*>(
            OviObject_Clone(OviEnumeration_GetItem(colour_, "Red")));
        OviNamedObject_SetName(item, name);
        return item;
    }

    static std::vector<std::string> NamesIn(OviEnumeration* enumeration) {
        std::vector<std::string> names;
        for (int i = 0; i < OviEnumeration_GetItemCount(enumeration); ++i)
            names.emplace_back(OviType_GetFullName(OviEnumeration_GetItemAt(enumeration, i)));
        return names;
    }

    /// Whether a property of the type takes the value.
    static bool IsValid(OviType* type, const void* value) {
        OviAttributeProperty* property = OviAttributeProperty_New("member", 1);
        OviAttributeProperty_SetType(property, type);
        const bool valid = OviAttributeProperty_IsValueValid(property, value);
        OviObject_Delete(property);
        return valid;
    }

    static bool IsNumberValid(OviType* type, int number) { return IsValid(type, &number); }

    OviEnumeration* colour_ = nullptr;
};

using Names = std::vector<std::string>;
