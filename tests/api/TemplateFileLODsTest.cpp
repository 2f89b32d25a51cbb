// Levels of detail in template files.

#include "api/Schema.h"

namespace {

class TemplateFileLODsTest : public SchemaTest {
protected:
    Names Load(const std::string& elements) {
        path_ = WriteSchema("F.template", "<templates>\n" + elements + "\n</templates>");
        EXPECT_TRUE(OviTemplateManager_LoadTemplateFile(path_.c_str()));
        return Errors();
    }

    static OviLOD* Level(const char* name = "High") { return OviTemplateManager_GetLOD(name); }

    std::string path_;
};

TEST_F(TemplateFileLODsTest, ALevelHasATypeWhateverItsCase) {
    EXPECT_EQ(Load("<lods><lod name='a' type='BoundingVolume'/><lod name='b' type='COLLISION'/>"
                   "<lod name='c' type='surface'/><lod name='d'/></lods>"),
              Names{});
    EXPECT_EQ(OviLOD_GetType(Level("a")), OVI_LOD_BOUNDING_VOLUME);
    EXPECT_EQ(OviLOD_GetType(Level("b")), OVI_LOD_COLLISION);
    EXPECT_EQ(OviLOD_GetType(Level("c")), OVI_LOD_SURFACE);
    EXPECT_EQ(OviLOD_GetType(Level("d")), OVI_LOD_SURFACE);
}

TEST_F(TemplateFileLODsTest, AnUnknownTypeIsReportedAndNotStored) {
    EXPECT_EQ(Load("<lod name='High' type='Bounding Volume'/>"),
              Names{"1 3 Type not found: 'Bounding Volume'"});
    EXPECT_EQ(OviLOD_GetType(Level()), OVI_LOD_SURFACE);
}

// The numbers are read from the text of the type, and a known type is no number.
TEST_F(TemplateFileLODsTest, ThresholdAndMaxShapesAreReadFromTheType) {
    EXPECT_EQ(Load("<lod name='High' type='collision' threshold='100' maxShapes='7'/>"
                   "<lod name='Low' threshold='100' maxShapes='7'/>"),
              Names{});
    for (const char* name : {"High", "Low"}) {
        EXPECT_EQ(OviLOD_GetThreshold(Level(name)), 0);
        EXPECT_EQ(OviLOD_GetMaxShapes(Level(name)), 0);
    }
    EXPECT_EQ(OviLOD_GetType(Level()), OVI_LOD_COLLISION);
}

TEST_F(TemplateFileLODsTest, ATypeThatIsANumberGivesBothNumbers) {
    EXPECT_EQ(Load("<lod name='High' type='12' threshold='' maxShapes=''/>"),
              Names{"1 3 Type not found: '12'"});
    EXPECT_EQ(OviLOD_GetThreshold(Level()), 12);
    EXPECT_EQ(OviLOD_GetMaxShapes(Level()), 12);
}

TEST_F(TemplateFileLODsTest, ShapesAreAllowedWhateverTheirCase) {
    EXPECT_EQ(Load("<lod name='High'><shape type='polygons'/><shape type='CUBE'/>"
                   "<shape type='Sphere'/><shape type='cylinder'/><shape type='cone'/>"
                   "<shape type='pyramid'/><shape type='cube'/></lod>"),
              Names{});
    EXPECT_STREQ(OviLOD_GetAllowedShapeNames(Level()),
                 "Polygons, Cube, Sphere, Cylinder, Cone, Pyramid");
}

TEST_F(TemplateFileLODsTest, ALevelIsRegisteredWhenItsElementEnds) {
    Names errors = Load("<lod name='High'>");
    EXPECT_EQ(Level(), nullptr);
    ASSERT_FALSE(errors.empty());
    EXPECT_NE(errors.back().find("Missing closing element for level of detail: 'High'"),
              std::string::npos);
}

TEST_F(TemplateFileLODsTest, NamesAreNotBoundToTheNameRule) {
    EXPECT_EQ(Load("<!--c--><lod name='very high'/><lod name=''/>"), Names{});
    ASSERT_NE(Level("very high"), nullptr);
    EXPECT_STREQ(OviNamedObject_GetComment(Level("very high")), "c");
    EXPECT_NE(Level(""), nullptr);
}

TEST_F(TemplateFileLODsTest, FaultsAreReported) {
    EXPECT_EQ(Load("<lod/>\n<lod name='a'><lod name='b'/></lod>\n<shape type='cube'/>\n"
                   "<lod name='High'><shape/>\n<shape type='torus'/>\n<shape type=''/></lod>"),
              (Names{"1 3 <lod> element must have an 'name' attribute",
                     "1 4 Unexpected nested <lod> element",
                     "1 5 <shape> must occur inside a <lod> element",
                     "1 6 <shape> element must have an 'type' attribute", "1 7 Unknown shape type",
                     "1 8 Unknown shape type"}));
    EXPECT_STREQ(OviLOD_GetAllowedShapeNames(Level()), "");
    EXPECT_EQ(Level("b"), nullptr);
}

TEST_F(TemplateFileLODsTest, LevelsAreSavedWithTheirFile) {
    Load("<!--c--><lod name='High' type='collision'><shape type='cone'/><shape type='cube'/></lod>"
         "<lod name='very &lt;low' type='boundingvolume'/><template name='T'>"
         "<geometry name='g'><alternate lod='High'/></geometry></template>");
    const std::string other =
        WriteSchema("G.template", "<templates><lod name='Else'/></templates>");
    ASSERT_TRUE(OviTemplateManager_LoadTemplateFile(other.c_str()));
    const std::string output = PathOf("out.template");
    ASSERT_TRUE(OviTemplateManager_SaveTemplateFile(path_.c_str(), output.c_str()));
    const std::string text = ReadFile(output);
    EXPECT_EQ(text.find("Else"), std::string::npos) << text;
    EXPECT_LT(text.find("<lod name='High' type='collision'>"), text.find("<template ")) << text;
    Ovi_Terminate();
    Ovi_Initialize();
    ASSERT_TRUE(OviTemplateManager_LoadTemplateFile(output.c_str()));
    EXPECT_EQ(Errors(), Names{});
    EXPECT_EQ(OviLOD_GetType(Level()), OVI_LOD_COLLISION);
    EXPECT_STREQ(OviLOD_GetAllowedShapeNames(Level()), "Cube, Cone");
    EXPECT_STREQ(OviNamedObject_GetComment(Level()), "c");
    EXPECT_EQ(OviLOD_GetType(Level("very <low")), OVI_LOD_BOUNDING_VOLUME);
    EXPECT_EQ(OviTemplateManager_GetLODCount(), 2);
    const std::string again = PathOf("again.template");
    ASSERT_TRUE(OviTemplateManager_SaveTemplateFile(output.c_str(), again.c_str()));
    EXPECT_EQ(ReadFile(again), text);
}

} // namespace
