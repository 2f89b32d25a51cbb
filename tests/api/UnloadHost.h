#pragma once

#include <string>

#include "api/Schema.h"

/// A host that loads template files and unloads them.
class UnloadHost : public SchemaTest {
protected:
    std::string Load(const std::string& name, const std::string& elements) {
        const std::string file = WriteSchema(name, "<templates>" + elements + "</templates>");
        EXPECT_TRUE(OviTemplateManager_LoadTemplateFile(file.c_str()));
        EXPECT_EQ(Errors(), Names{});
        return file;
    }

    static bool Unload(const std::string& file) {
        return OviTemplateManager_UnloadTemplateFile(file.c_str());
    }

    static OviTemplate* Find(const char* name) { return OviTemplateManager_GetTemplate(name); }

    static OviType* TypeOf(const char* property) {
        auto* found = static_cast<OviAttributeProperty*>(OviTemplateManager_GetProperty(property));
        return OviAttributeProperty_GetType(found);
    }

    static bool IsRecycled(OviType* type) { return OviType_IsRecycled(type); }

    static constexpr const char* kOne = "<template name='One'><attribute name='x' type='INT32'/>"
                                        "</template>";
};
