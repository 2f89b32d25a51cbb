#pragma once

#include <string>
#include <vector>

#include "api/SceneHost.h"

/// A host that has its handles checked.
class ChecksTest : public SceneTest {
protected:
    void SetUp() override {
        SceneTest::SetUp();
        Ovi_SetChecks(true);
    }

    void TearDown() override {
        SceneTest::TearDown();
        Ovi_SetChecks(false);
    }

    /// The findings since the last call.
    static std::vector<std::string> TakeErrors() {
        std::vector<std::string> errors = Errors();
        for (int i = 0; OviErrorItem* item = OviErrorManager_GetErrorItemAt(i); ++i)
            EXPECT_STREQ(OviErrorItem_GetSourceName(item), "");
        OviErrorManager_Clear();
        return errors;
    }

    static std::vector<std::string> Finding(const std::string& text) { return {"1 -1 " + text}; }

    /// The handle of an asset that was deleted.
    static OviAsset* DeadAsset(const char* name = "Dead") {
        OviAsset* asset = OviAssetManager_NewAsset(name);
        OviObject_Delete(asset);
        return asset;
    }
};
