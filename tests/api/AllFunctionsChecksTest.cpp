// With checks, every function refuses what is no handle of a living object, and names itself.

#include <array>
#include <cstdint>
#include <cstdlib>
#include <map>
#include <memory>
#include <regex>
#include <set>

#include "api/ChecksHost.h"
#include "api/HandleTable.h"

namespace {

std::map<int, OviObject*>& LivingObjects() {
    static std::map<int, OviObject*> objects;
    return objects;
}

/// One object of each class that a function asks for.
class AllFunctionsChecksTest : public ChecksTest {
protected:
    void SetUp() override {
        ChecksTest::SetUp();
        Schema("<lod name='High'/><enum name='Colour' type='INT32'><item name='Red' value='1'/>"
               "</enum><template name='Figure'><node name='node'/><anchor name='anchor'/>"
               "<attribute name='size' type='INT32'><command execute='c' "
               "notification='AttributeValueChanged'/></attribute>"
               "<geometry name='shape'><alternate lod='High'/></geometry></template>"
               "<view name='main' template='Figure'><group name='g'><property name='node'/>"
               "</group></view>");
        AddSchemaObjects();
        AddInstances();
        for (const auto& [classId, object] : LivingObjects())
            ASSERT_NE(object, nullptr) << classId;
        ASSERT_EQ(CountItems(), 1); // the one among them
    }

    void TearDown() override {
        OviObject_Delete(LivingObject(OVI_CLASS_CUSTOM_TYPE));
        LivingObjects().clear();
        ChecksTest::TearDown();
    }

    static void AddSchemaObjects() {
        OviTemplate* figure = TemplateOf("Figure");
        auto& all = LivingObjects();
        all[OVI_CLASS_TEMPLATE] = figure;
        all[OVI_CLASS_LOD] = OviTemplateManager_GetLOD("High");
        OviEnumeration* colour = OviTemplateManager_GetEnumeration("Colour");
        all[OVI_CLASS_ENUMERATION] = colour;
        all[OVI_CLASS_ENUMERATION_ITEM] = OviEnumeration_GetItemAt(colour, 0);
        all[OVI_CLASS_CUSTOM_TYPE] = OviCustomType_New("mine", 1);
        OviProperty* size = OviTemplate_GetProperty(figure, "size");
        all[OVI_CLASS_ATTRIBUTE_PROPERTY] = size;
        all[OVI_CLASS_COMMAND] = OviProperty_GetCommandAt(size, 0);
        all[OVI_CLASS_NODE_PROPERTY] = OviTemplate_GetProperty(figure, "node");
        all[OVI_CLASS_ANCHOR_PROPERTY] = OviTemplate_GetProperty(figure, "anchor");
        auto* shape = static_cast<OviGeometryProperty*>(OviTemplate_GetProperty(figure, "shape"));
        all[OVI_CLASS_GEOMETRY_PROPERTY] = shape;
        all[OVI_CLASS_GEOMETRY_ALTERNATE] = OviGeometryProperty_GetAlternateAt(shape, 0);
        OviView* view = OviTemplate_GetView(figure, "main", false);
        all[OVI_CLASS_VIEW] = view;
        auto* group = static_cast<OviGroup*>(OviGroup_GetViewItemAt(view, 0));
        all[OVI_CLASS_GROUP] = group;
        all[OVI_CLASS_VIEW_PROPERTY] = OviGroup_GetViewItemAt(group, 0);
    }

    static void AddInstances() {
        OviAsset* person = AssetOf("Figure", "Person");
        auto& all = LivingObjects();
        all[OVI_CLASS_ASSET] = person;
        all[OVI_CLASS_ATTRIBUTE_INSTANCE] = PropertyOf(person, "Figure.size");
        all[OVI_CLASS_NODE_INSTANCE] = PropertyOf(person, "Figure.node");
        all[OVI_CLASS_ANCHOR_INSTANCE] = PropertyOf(person, "Figure.anchor");
        all[OVI_CLASS_GEOMETRY_INSTANCE] = PropertyOf(person, "Figure.shape");
        OviErrorManager_Clear();
        OviErrorManager_AddErrorItem(0, "", -1, "");
        all[OVI_CLASS_ERROR_ITEM] = OviErrorManager_GetErrorItemAt(0);
    }

    /// The findings of a call. The error item among the living objects stays.
    static std::vector<std::string> FindingsOf(const HandleRow& row, size_t replaced, void* by,
                                               std::string& result) {
        const int before = CountItems();
        result = row.call(replaced, by);
        const std::vector<std::string> all = Errors();
        return {all.begin() + before, all.end()};
    }

    static int CountItems() {
        int count = 0;
        while (OviErrorManager_GetErrorItemAt(count))
            ++count;
        return count;
    }

    /// Hands a bad handle to each function in the place of each of its handles.
    /// The lock functions ask for a part of an object, which no handle of an object is.
    static void HandToAll(void* handle, const std::string& faultOfHandle) {
        for (const HandleRow& row : AllHandleRows()) {
            for (const size_t place : row.handles) {
                const bool takesPart = row.function.rfind("OviLockable_", 0) == 0;
                const std::string fault = takesPart ? kNothing : faultOfHandle;
                std::string result;
                const auto findings = FindingsOf(row, place, handle, result);
                EXPECT_EQ(findings, Finding(row.function + ": " + fault)) << place;
                if (!row.isRefusedLikeNull || result == "nothing")
                    continue;
                std::string ofNull;
                EXPECT_TRUE(FindingsOf(row, place, nullptr, ofNull).empty()) << row.function;
                EXPECT_EQ(result, ofNull) << row.function << ' ' << place;
            }
        }
    }

    static constexpr const char* kNothing = "not a handle (no object begins there)";
};

} // namespace

OviObject* LivingObject(int classId) {
    const auto found = LivingObjects().find(classId);
    return found == LivingObjects().end() ? nullptr : found->second;
}

namespace {

TEST_F(AllFunctionsChecksTest, TheTableHoldsEveryFunctionThatTakesAHandle) {
    std::set<std::string> rows;
    for (const HandleRow& row : AllHandleRows())
        rows.insert(row.function);
    std::set<std::string> declared;
    const std::regex function(R"(OVI_API [^;()]*(Ovi\w+)\(([^)]*)\);)");
    const std::regex handle(R"(Ovi[A-Z]\w*\*\s*\w)");
    for (const auto& file : std::filesystem::directory_iterator(OVI_SOURCE_DIR "/include/ovi")) {
        const std::string text = ReadFile(file.path().generic_u8string());
        for (std::sregex_iterator at(text.begin(), text.end(), function), end; at != end; ++at) {
            if (std::regex_search((*at)[2].first, (*at)[2].second, handle))
                declared.insert((*at)[1]);
        }
    }
    EXPECT_EQ(rows, declared);
    EXPECT_GT(rows.size(), 150u);
}

TEST_F(AllFunctionsChecksTest, EveryFunctionNamesItselfForADeadHandle) {
    HandToAll(DeadAsset(), "the handle is dead (it was an Asset)");
}

TEST_F(AllFunctionsChecksTest, EveryFunctionNamesItselfForAnAddressOnTheStack) {
    std::array<std::uintptr_t, 8> local{};
    HandToAll(local.data(), kNothing);
}

TEST_F(AllFunctionsChecksTest, EveryFunctionNamesItselfForABlockOfTheHeap) {
    const std::unique_ptr<void, void (*)(void*)> block(std::calloc(8, 8), &std::free);
    HandToAll(block.get(), kNothing);
}

TEST_F(AllFunctionsChecksTest, EveryFunctionNamesItselfForTheMiddleOfAnObject) {
    HandToAll(reinterpret_cast<char*>(LivingObject(OVI_CLASS_ASSET)) + 16, kNothing);
}

TEST_F(AllFunctionsChecksTest, EveryFunctionNamesItselfForAddressesWhereNothingIs) {
    HandToAll(reinterpret_cast<void*>(std::uintptr_t{1}), kNothing);
    HandToAll(reinterpret_cast<void*>(UINTPTR_MAX), kNothing);
}

TEST_F(AllFunctionsChecksTest, LivingHandlesOfEveryClassAreTaken) {
    for (const auto& [classId, object] : LivingObjects())
        EXPECT_EQ(OviObject_GetClass(object), classId);
    OviLockable* ofProperty = OviObject_GetLockable(LivingObject(OVI_CLASS_NODE_PROPERTY));
    OviLockable_SetLockState(ofProperty, 7);
    EXPECT_EQ(OviLockable_GetLockState(ofProperty), 7);
    OviLockable* ofView = OviObject_GetLockable(LivingObject(OVI_CLASS_VIEW));
    OviLockable_SetLockState(ofView, 8);
    EXPECT_EQ(OviLockable_GetLockState(ofView), 8);
    EXPECT_EQ(CountItems(), 1); // the one among the living objects
}

} // namespace
