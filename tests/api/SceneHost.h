#pragma once

#include <functional>
#include <string>
#include <vector>

#include "api/Host.h"

/// Event lists in the form of HostTest::Events().
using Lines = std::vector<std::string>;

/// A host with templates and a scene, for the tests of instances.
class SceneTest : public HostTest {
protected:
    static constexpr const char* kHeader = "<?xml version='1.0' encoding='UTF-8'?>\n";

    /// Loads a template file with these elements.
    void Schema(const std::string& elements, const std::string& name = "test") {
        const auto text = kHeader + ("<templates>" + elements) + "</templates>";
        ASSERT_TRUE(
            OviTemplateManager_LoadTemplateFile(WriteFile(name + ".template", text).c_str()));
    }

    /// Loads a scene file with these elements.
    bool Load(const std::string& elements) {
        const auto path = WriteFile("scene.asset", kHeader + ("<assets>" + elements) + "</assets>");
        return OviAssetManager_LoadScene(path.c_str());
    }

    static OviTemplate* TemplateOf(const char* name) {
        return OviTemplateManager_GetTemplate(name);
    }

    /// A version of a template, made when it is missing.
    static OviTemplate* VersionOf(const char* name, int version) {
        return OviTemplateManager_CreateTemplateVersion(name, version);
    }

    /// A new asset that implements the latest version of a template.
    static OviAsset* AssetOf(const char* templateName, const char* name = nullptr) {
        OviAsset* asset = OviAssetManager_NewAsset(name);
        OviInstance_AddTemplate(asset, TemplateOf(templateName));
        return asset;
    }

    static OviPropertyInstance* PropertyOf(OviInstance* instance, const char* fullName) {
        return OviInstance_GetPropertyInstance(instance, fullName, false);
    }

    static OviAttributeInstance* AttributeOf(OviInstance* instance, const char* fullName) {
        OviPropertyInstance* found = PropertyOf(instance, fullName);
        return OviObject_ImplementsClass(found, OVI_CLASS_ATTRIBUTE_INSTANCE)
                   ? static_cast<OviAttributeInstance*>(found)
                   : nullptr;
    }

    /// Element `index` of an attribute's value, as T.
    template <class T> static T ValueOf(OviAttributeInstance* attribute, int index = 0) {
        return static_cast<T*>(OviAttributeInstance_GetValue(attribute))[index];
    }

    /// The nested instance in a template-typed attribute.
    static OviInstance* NestedIn(OviInstance* instance, const char* fullName, int index = 0) {
        return ValueOf<OviInstance*>(AttributeOf(instance, fullName), index);
    }

    /// The full names of the properties that an instance has property instances of, in order, as
    /// its XML shows them.
    static std::vector<std::string> PropertiesOf(OviInstance* instance) {
        static const std::string kMark = " property='";
        const std::string xml = XMLOf(instance);
        std::vector<std::string> names;
        for (size_t at = xml.find(kMark); at != std::string::npos; at = xml.find(kMark, at)) {
            at += kMark.size();
            names.push_back(xml.substr(at, xml.find('\'', at) - at));
        }
        return names;
    }

    static std::string XMLOf(OviInstance* instance) {
        uint32_t size = 0;
        OviInstance_WriteToXML(instance, 0, &size, nullptr);
        std::string text(size, '\0');
        OviInstance_WriteToXML(instance, 0, &size, text.data());
        text.resize(size == 0 ? 0 : size - 1);
        return text;
    }
};

/// A callback on both lists that does something in the library while it lives.
class Reaction {
public:
    using Body = std::function<void(OviObject* object, int event, void* argument)>;

    explicit Reaction(Body body) : body_(std::move(body)) {
        data_.owner = this;
        OviNotificationManager_RegisterInstanceCallback(&Run, &data_);
        OviNotificationManager_RegisterPropertyInstanceCallback(&Run, &data_);
    }
    ~Reaction() {
        OviNotificationManager_UnregisterInstanceCallback(&data_);
        OviNotificationManager_UnregisterPropertyInstanceCallback(&data_);
        data_.owner = nullptr;
    }
    Reaction(const Reaction&) = delete;
    Reaction& operator=(const Reaction&) = delete;

private:
    /// What the body itself causes is not reacted to.
    static void Run(void* data, void* object, int event, void* argument) {
        auto* reaction = static_cast<Reaction*>(static_cast<CallbackData*>(data)->owner);
        if (reaction->running_)
            return;
        reaction->running_ = true;
        reaction->body_(static_cast<OviObject*>(object), event, argument);
        reaction->running_ = false;
    }

    CallbackData& data_ = CallbackData::OfReaction();
    Body body_;
    bool running_ = false;
};
