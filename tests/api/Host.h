#pragma once

#include <algorithm>
#include <array>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "ovi/ovi.h"

/// The user data of the callbacks of tests. The library calls them in the order of these addresses,
/// so that a recorder comes before a reaction wherever a system puts its stack.
struct CallbackData {
    void* owner = nullptr;

    static CallbackData& OfRecorder() { return All()[0]; }

    /// One that nobody has.
    static CallbackData& OfReaction() {
        auto& all = All();
        return *std::find_if(all.begin() + 1, all.end() - 1,
                             [](const CallbackData& data) { return !data.owner; });
    }

private:
    static std::array<CallbackData, 8>& All() {
        static std::array<CallbackData, 8> all;
        return all;
    }
};

/// What the tests of the exported functions share: a host that starts and ends the library, looks
/// at its diagnostics, records its events, and has a directory of its own for files.
class HostTest : public ::testing::Test {
protected:
    void SetUp() override {
        Ovi_Initialize();
        OviErrorManager_Clear();
    }

    void TearDown() override {
        StopRecording();
        Ovi_Terminate();
    }

    // -- files ----------------------------------------------------------------------------------

    /// A directory for this test alone, made (empty) by the first call.
    const std::string& Directory() {
        if (directory_.empty()) {
            const auto* test = ::testing::UnitTest::GetInstance()->current_test_info();
            std::string name = std::string(test->test_suite_name()) + "." + test->name();
            for (char& c : name)
                c = c == '/' ? '_' : c;
            const auto path = std::filesystem::path(OVI_TEST_OUTPUT_DIR) / name;
            std::filesystem::remove_all(path);
            std::filesystem::create_directories(path);
            directory_ = path.generic_u8string();
        }
        return directory_;
    }

    /// The path of a file in the test's directory; "/" in the name makes subdirectories.
    std::string PathOf(const std::string& name) {
        const auto path = std::filesystem::u8path(Directory() + "/" + name);
        std::filesystem::create_directories(path.parent_path());
        return path.generic_u8string();
    }

    /// Writes a file into the test's directory and gives its path.
    std::string WriteFile(const std::string& name, const std::string& text) {
        const std::string path = PathOf(name);
        std::ofstream(std::filesystem::u8path(path), std::ios::binary) << text;
        return path;
    }

    /// The bytes of a file; "" when it is not there.
    static std::string ReadFile(const std::string& path) {
        std::ifstream file(std::filesystem::u8path(path), std::ios::binary);
        return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    }

    // -- diagnostics ----------------------------------------------------------------------------

    /// All diagnostics as "level line message".
    static std::vector<std::string> Errors() {
        std::vector<std::string> errors;
        for (int i = 0; OviErrorItem* item = OviErrorManager_GetErrorItemAt(i); ++i)
            errors.push_back(std::to_string(OviErrorItem_GetErrorLevel(item)) + " " +
                             std::to_string(OviErrorItem_GetLineNumber(item)) + " " +
                             OviErrorItem_GetMessage(item));
        return errors;
    }

    // -- events ---------------------------------------------------------------------------------

    /// From now on both lists of callbacks write to Events().
    void StartRecording() {
        auto& data = CallbackData::OfRecorder();
        data.owner = this;
        OviNotificationManager_RegisterInstanceCallback(&RecordEvent, &data);
        OviNotificationManager_RegisterPropertyInstanceCallback(&RecordEvent, &data);
    }

    void StopRecording() {
        OviNotificationManager_UnregisterInstanceCallback(&CallbackData::OfRecorder());
        OviNotificationManager_UnregisterPropertyInstanceCallback(&CallbackData::OfRecorder());
    }

    /// The events so far, such as "0x1001 Asset1 Template#1": code, name of the instance (of a
    /// property instance: the full name of its property), argument.
    const std::vector<std::string>& Events() const { return events_; }

    /// The events so far; the list starts anew.
    std::vector<std::string> TakeEvents() {
        std::vector<std::string> taken;
        taken.swap(events_);
        return taken;
    }

    /// An object in an event line: templates as "full name#version", properties and property
    /// instances by the property's full name, other objects by their name.
    static std::string Describe(OviObject* object) {
        if (!object)
            return "null";
        if (OviObject_ImplementsClass(object, OVI_CLASS_TEMPLATE)) {
            auto* type = static_cast<OviTemplate*>(object);
            return std::string(OviType_GetFullName(type)) + "#" +
                   std::to_string(OviTemplate_GetVersion(type));
        }
        if (OviObject_ImplementsClass(object, OVI_CLASS_PROPERTY_INSTANCE))
            return Describe(
                OviPropertyInstance_GetProperty(static_cast<OviPropertyInstance*>(object)));
        if (OviObject_ImplementsClass(object, OVI_CLASS_PROPERTY))
            return OviProperty_GetFullName(static_cast<OviProperty*>(object));
        return OviNamedObject_GetName(static_cast<OviNamedObject*>(object));
    }

private:
    static void RecordEvent(void* data, void* object, int event, void* argument) {
        static_cast<HostTest*>(static_cast<CallbackData*>(data)->owner)
            ->Record(object, event, argument);
    }

    void Record(void* object, int event, void* argument) {
        char code[16];
        std::snprintf(code, sizeof code, "0x%X ", static_cast<unsigned>(event));
        events_.push_back(code + Describe(static_cast<OviObject*>(object)) + " " +
                          DescribeArgument(event, argument));
    }

    static std::string DescribeArgument(int event, void* argument) {
        if (!argument)
            return "null";
        switch (event) {
        case OVI_EVENT_ASSET_ADDED:
        case OVI_EVENT_ASSET_REMOVED:
            return std::to_string(*static_cast<int*>(argument));
        case OVI_EVENT_BINDING_LOCKED_CHANGED:
        case OVI_EVENT_VALUE_LOCKED_CHANGED:
            return *static_cast<bool*>(argument) ? "true" : "false";
        case OVI_EVENT_INSTANCE_RENAMED:
        case OVI_EVENT_REFERENCE_FILE:
        case OVI_EVENT_UNREFERENCE_FILE:
        case OVI_EVENT_REFERENCE_CHANGED:
        case OVI_EVENT_EXECUTE_COMMAND:
        case OVI_EVENT_BINDING_CHANGED:
        case OVI_EVENT_ATTRIBUTE_VALUE_CHANGED:
            return static_cast<const char*>(argument);
        default:
            return Describe(static_cast<OviObject*>(argument));
        }
    }

    std::string directory_;
    std::vector<std::string> events_;
};
