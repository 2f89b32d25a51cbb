#pragma once

#include <gtest/gtest.h>

#include "core/ErrorManager.h"
#include "instances/AssetManager.h"
#include "manager/TemplateManager.h"
#include "notify/NotificationManager.h"

/// All managers, for the time of a test.
class WithManagers : public ::testing::Test {
protected:
    void SetUp() override {
        Kor::ErrorManager::Get()->Initialize();
        Kor::NotificationManager::Get()->Initialize();
        Kor::TemplateManager::Get()->Initialize();
        Scene().Initialize();
    }
    void TearDown() override {
        Scene().Terminate();
        Kor::TemplateManager::Get()->Terminate();
        Kor::NotificationManager::Get()->Terminate();
        Kor::ErrorManager::Get()->Terminate();
    }

    static Kor::AssetManager& Scene() { return *Kor::AssetManager::Get(); }
};
