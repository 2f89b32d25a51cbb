// Whatever order a host makes the versions of a template in, a saved file gives the same ones.

#include <memory>
#include <random>
#include <string>
#include <vector>

#include "api/SchemaDump.h"
#include "core/ByteStreams.h"
#include "formats/XMLTemplateFileWriter.h"
#include "schema/Managed.h"

namespace Kor {
namespace {

constexpr const char* kFile = "in.template";

/// A template "T" that a host changes step by step, and parents for it.
class RandomHost {
public:
    explicit RandomHost(unsigned seed) : random_(seed) {
        for (const char* name : {"A", "B", "P", "Q", "T"})
            TemplateManager::Get()->CreateTemplate(name)->SetFileName(kFile);
        Add("A", "p", 1);
        Add("B", "q", 2);
        TemplateManager::Get()->AddParentFromVersion("B", 1, Get("A"));
    }

    void Change() {
        switch (Below(8)) {
        case 0:
            TemplateManager::Get()->CreateTemplateVersion("T", Version());
            break;
        case 1:
        case 2:
            TemplateManager::Get()->AddParentFromVersion("T", Version(), Get(kParents[Below(4)]));
            break;
        case 3:
            RemoveSomething();
            break;
        case 4:
            Add("T", "u" + std::to_string(names_++), Version());
            break;
        default:
            Add("T", std::string(1, static_cast<char>('a' + Below(4))), Version());
        }
    }

private:
    static constexpr const char* kParents[] = {"A", "B", "P", "Q"};

    int Below(int limit) { return static_cast<int>(random_() % static_cast<unsigned>(limit)); }
    int Version() { return 1 + Below(5); }
    static Template* Get(const char* name) { return TemplateManager::Get()->GetTemplate(name); }
    static std::vector<Template*> Versions() { return TemplateManager::Get()->GetVersions("T"); }

    void Add(const char* owner, const std::string& name, int version) {
        auto property = std::make_unique<AttributeProperty>(name, version);
        Type* type = TemplateManager::Get()->GetType("INT32");
        property->SetType(type);
        const int value = Below(100);
        property->SetDefaultValue(type->NewValue(&value, 1));
        bool refused = false;
        TemplateManager::Get()->AddPropertyFromVersion(owner, property.get(), &refused);
        if (refused)
            return;
        added_.push_back(property.release());
    }

    /// Only where nothing is left of it: a version that keeps a copy of what is gone, or a parent
    /// that only a lower version has, stands in no file.
    void RemoveSomething() {
        if (Below(2) == 0) {
            const char* parent = kParents[Below(4)];
            for (Template* version : Versions())
                version->RemoveParent(Get(parent));
        } else if (names_ > 0) {
            RemoveUnlessCopied("u" + std::to_string(Below(names_)));
        }
    }

    void RemoveUnlessCopied(const std::string& name) {
        Property* removed = nullptr;
        for (const Template* version : Versions()) {
            Property* found = version->GetProperty(name, false);
            if (found && removed && found != removed)
                return;
            removed = found ? found : removed;
        }
        if (!removed)
            return;
        TemplateManager::Get()->RemovePropertyFromVersion("T", removed);
        if (Below(2) == 0)
            delete removed;
        else
            TemplateManager::Get()->AddPropertyFromVersion("T", removed);
    }

    std::mt19937 random_;
    int names_ = 0;
    std::vector<Property*> added_;
};

class VersionHistory : public ManagedTest {
protected:
    static std::string Save() {
        StringSink sink;
        EXPECT_TRUE(XMLTemplateFileWriter(Manager(), kFile).Write(sink));
        return sink.GetText();
    }

    void Restart() {
        TearDown();
        SetUp();
    }

    static void ExpectRoundTrip(const std::string& text, const std::string& before) {
        MemorySource source(text);
        EXPECT_TRUE(Manager().LoadTemplateStream(kFile, source));
        EXPECT_EQ(SchemaDump::Of(), before) << text;
    }
};

TEST_F(VersionHistory, IsKeptHoweverAHostMadeTheVersions) {
    for (unsigned seed = 0; seed < 2000 && !HasFailure(); ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        Restart();
        RandomHost host(seed);
        for (unsigned change = 0; change < 3 + seed % 15; ++change)
            host.Change();
        const std::string before = SchemaDump::Of();
        const std::string text = Save();
        Restart();
        ExpectRoundTrip(text, before);
    }
}

} // namespace
} // namespace Kor
