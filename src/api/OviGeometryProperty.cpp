#include "ovi/geometry_property.h"

#include "api/Barrier.h"
#include "schema/GeometryProperty.h"

using namespace Kor;
using namespace Kor::Api;

namespace {

OviGeometryAlternate* const kNoAlternate = nullptr;

} // namespace

int OviLOD_GetType(OviLOD* lod) {
    return With<LOD>(lod, 0, [](LOD& self) { return self.GetType(); });
}

void OviLOD_SetType(OviLOD* lod, int type) {
    With<LOD>(lod, [type](LOD& self) { self.SetType(type); });
}

const char* OviLOD_GetTypeName(OviLOD* lod) {
    return With<LOD>(lod, "", [](LOD& self) { return self.GetTypeName(); });
}

int OviLOD_GetThreshold(OviLOD* lod) {
    return With<LOD>(lod, 0, [](LOD& self) { return self.GetThreshold(); });
}

void OviLOD_SetThreshold(OviLOD* lod, int threshold) {
    With<LOD>(lod, [threshold](LOD& self) { self.SetThreshold(threshold); });
}

int OviLOD_GetMaxShapes(OviLOD* lod) {
    return With<LOD>(lod, 0, [](LOD& self) { return self.GetMaxShapes(); });
}

void OviLOD_SetMaxShapes(OviLOD* lod, int count) {
    With<LOD>(lod, [count](LOD& self) { self.SetMaxShapes(count); });
}

void OviLOD_AllowShape(OviLOD* lod, int shapes) {
    With<LOD>(lod, [shapes](LOD& self) { self.AllowShape(shapes); });
}

void OviLOD_DisallowShape(OviLOD* lod, int shapes) {
    With<LOD>(lod, [shapes](LOD& self) { self.DisallowShape(shapes); });
}

bool OviLOD_IsShapeAllowed(OviLOD* lod, int shapes) {
    return With<LOD>(lod, false, [shapes](LOD& self) { return self.IsShapeAllowed(shapes); });
}

const char* OviLOD_GetAllowedShapeNames(OviLOD* lod) {
    return With<LOD>(lod, "", [](LOD& self) { return self.GetAllowedShapeNames(); });
}

OviGeometryProperty* OviGeometryProperty_New(const char* name, uint32_t version) {
    return Guard(static_cast<OviGeometryProperty*>(nullptr), [=] {
        return To<OviGeometryProperty>(new GeometryProperty(Text(name), static_cast<int>(version)));
    });
}

int OviGeometryProperty_AddAlternate(OviGeometryProperty* property,
                                     OviGeometryAlternate* alternate) {
    return WithBoth<GeometryProperty, GeometryAlternate>(
        property, alternate, -1,
        [](GeometryProperty& self, GeometryAlternate& added) { return self.AddAlternate(&added); });
}

int OviGeometryProperty_RemoveAlternate(OviGeometryProperty* property,
                                        OviGeometryAlternate* alternate) {
    return WithBoth<GeometryProperty, GeometryAlternate>(
        property, alternate, -1, [](GeometryProperty& self, GeometryAlternate& removed) {
            return self.RemoveAlternate(&removed);
        });
}

int OviGeometryProperty_GetAlternateCount(OviGeometryProperty* property) {
    return With<GeometryProperty>(property, 0,
                                  [](GeometryProperty& self) { return self.GetAlternateCount(); });
}

OviGeometryAlternate* OviGeometryProperty_GetAlternateAt(OviGeometryProperty* property, int index) {
    return With<GeometryProperty>(property, kNoAlternate, [index](GeometryProperty& self) {
        return HandOut<OviGeometryAlternate>(self.GetAlternateAt(index));
    });
}

OviGeometryAlternate* OviGeometryProperty_GetAlternate(OviGeometryProperty* property,
                                                       const char* lod) {
    return With<GeometryProperty>(property, kNoAlternate, [lod](GeometryProperty& self) {
        return HandOut<OviGeometryAlternate>(self.GetAlternate(Text(lod)));
    });
}

OviLOD* OviGeometryAlternate_GetLOD(OviGeometryAlternate* alternate) {
    return With<GeometryAlternate>(
        alternate, static_cast<OviLOD*>(nullptr),
        [](GeometryAlternate& self) { return HandOut<OviLOD>(self.GetLOD()); });
}

void OviGeometryAlternate_SetLOD(OviGeometryAlternate* alternate, OviLOD* lod) {
    WithOptional<GeometryAlternate, LOD>(
        alternate, lod, [](GeometryAlternate& self, LOD* given) { self.SetLOD(given); });
}
