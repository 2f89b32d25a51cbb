// Bad handles, texts and indices for nodes, anchors, geometry, levels of detail and groups.

#include "api/CallTableNodes.h"

namespace {

OviTemplate* Figure() {
    return OviTemplateManager_GetTemplate("Figure");
}
OviLOD* High() {
    return OviTemplateManager_GetLOD("High");
}
template <class Handle> Handle* Member(const char* name) {
    return static_cast<Handle*>(OviTemplate_GetProperty(Figure(), name));
}
OviNodeProperty* Node() {
    return Member<OviNodeProperty>("node");
}
OviAnchorProperty* Anchor() {
    return Member<OviAnchorProperty>("anchor");
}
OviGeometryProperty* Shape() {
    return Member<OviGeometryProperty>("shape");
}
OviGeometryAlternate* Alternate() {
    return OviGeometryProperty_GetAlternateAt(Shape(), 0);
}
OviGroup* Main() {
    return OviTemplate_GetView(Figure(), "main", false);
}
OviGeometryInstance* Geometry() {
    return static_cast<OviGeometryInstance*>(
        OviInstance_GetPropertyInstance(OviAssetManager_GetAsset("Person"), "Figure.shape", false));
}

} // namespace

Calls NodeCalls() {
    return {
        OVI_RETURNS(OviObject_Delete(OviNodeProperty_New(nullptr, 4294967295u))),
        OVI_GIVES("", OviNodeProperty_GetAncestor(bad)),
        OVI_RETURNS(OviNodeProperty_SetAncestor(bad, "x")),
        OVI_RETURNS(OviNodeProperty_SetAncestor(Node(), nullptr)),
        OVI_GIVES(0, OviNodeProperty_GetAncestorDistance(bad)),
        OVI_RETURNS(OviNodeProperty_SetAncestorDistance(bad, 1)),

        OVI_RETURNS(OviObject_Delete(OviAnchorProperty_New(nullptr, 0))),
        OVI_GIVES(false, OviAnchorProperty_IsChild(bad)),
        OVI_RETURNS(OviAnchorProperty_SetChild(bad, true)),
        OVI_GIVES(-1, OviAnchorProperty_AddAnchorType(bad, High())),
        OVI_GIVES(-1, OviAnchorProperty_AddAnchorType(Anchor(), bad)),
        OVI_GIVES(-1, OviAnchorProperty_RemoveAnchorType(bad, High())),
        OVI_GIVES(-1, OviAnchorProperty_RemoveAnchorType(Anchor(), bad)),
        OVI_GIVES(0, OviAnchorProperty_GetAnchorTypeCount(bad)),
        OVI_GIVES(nullptr, OviAnchorProperty_GetAnchorTypeAt(bad, 0)),
        OVI_GIVES(nullptr, OviAnchorProperty_GetAnchorTypeAt(Anchor(), 0)),
        OVI_GIVES(nullptr, OviAnchorProperty_GetAnchorTypeAt(Anchor(), -1)),
        OVI_GIVES(nullptr, OviAnchorProperty_GetAnchorType(bad, "High")),
        OVI_GIVES(nullptr, OviAnchorProperty_GetAnchorType(Anchor(), nullptr)),
        OVI_GIVES(0, OviAnchorProperty_GetCompatibleAnchors(bad, 1, nullptr)),
        OVI_GIVES(0, OviAnchorProperty_GetCompatibleAnchors(Anchor(), -1, nullptr)),

        OVI_GIVES(0, OviLOD_GetType(bad)),
        OVI_RETURNS(OviLOD_SetType(bad, 1)),
        OVI_GIVES("", OviLOD_GetTypeName(bad)),
        OVI_GIVES(0, OviLOD_GetThreshold(bad)),
        OVI_RETURNS(OviLOD_SetThreshold(bad, 1)),
        OVI_GIVES(0, OviLOD_GetMaxShapes(bad)),
        OVI_RETURNS(OviLOD_SetMaxShapes(bad, 1)),
        OVI_RETURNS(OviLOD_AllowShape(bad, 1)),
        OVI_RETURNS(OviLOD_DisallowShape(bad, 1)),
        OVI_GIVES(false, OviLOD_IsShapeAllowed(bad, 0)),
        OVI_GIVES("", OviLOD_GetAllowedShapeNames(bad)),

        OVI_RETURNS(OviObject_Delete(OviGeometryProperty_New(nullptr, 0))),
        OVI_GIVES(-1, OviGeometryProperty_AddAlternate(bad, Alternate())),
        OVI_GIVES(-1, OviGeometryProperty_AddAlternate(Shape(), bad)),
        OVI_GIVES(-1, OviGeometryProperty_RemoveAlternate(bad, Alternate())),
        OVI_GIVES(-1, OviGeometryProperty_RemoveAlternate(Shape(), bad)),
        OVI_GIVES(0, OviGeometryProperty_GetAlternateCount(bad)),
        OVI_GIVES(nullptr, OviGeometryProperty_GetAlternateAt(bad, 0)),
        OVI_GIVES(nullptr, OviGeometryProperty_GetAlternateAt(Shape(), 1)),
        OVI_GIVES(nullptr, OviGeometryProperty_GetAlternateAt(Shape(), -1)),
        OVI_GIVES(nullptr, OviGeometryProperty_GetAlternate(bad, "High")),
        OVI_GIVES(nullptr, OviGeometryProperty_GetAlternate(Shape(), nullptr)),
        OVI_GIVES(nullptr, OviGeometryAlternate_GetLOD(bad)),
        OVI_RETURNS(OviGeometryAlternate_SetLOD(bad, High())),

        OVI_GIVES(nullptr, OviGroup_New(nullptr)),
        OVI_RETURNS(OviGroup_AddViewItemAt(bad, Main(), 0)),
        OVI_RETURNS(OviGroup_AddViewItemAt(Main(), bad, 0)),
        OVI_RETURNS(OviGroup_RemoveViewItemAt(bad, 0)),
        OVI_RETURNS(OviGroup_RemoveViewItemAt(Main(), 1)),
        OVI_RETURNS(OviGroup_RemoveViewItemAt(Main(), -1)),
        OVI_GIVES(0, OviGroup_GetViewItemCount(bad)),
        OVI_GIVES(nullptr, OviGroup_GetViewItemAt(bad, 0)),
        OVI_GIVES(nullptr, OviGroup_GetViewItemAt(Main(), 1)),
        OVI_GIVES(nullptr, OviGroup_GetViewItemAt(Main(), -1)),
        OVI_GIVES(nullptr, OviViewProperty_New(nullptr, Node())),
        OVI_GIVES(nullptr, OviViewProperty_GetProperty(bad)),
        OVI_RETURNS(OviViewProperty_SetProperty(bad, Node())),

        OVI_GIVES("", OviAnchorInstance_GetAttachedAnchor(bad)),
        OVI_RETURNS(OviAnchorInstance_SetAttachedAnchor(bad, "x")),
        OVI_GIVES(nullptr, OviGeometryInstance_GetNodeInstanceAt(bad, 0)),
        OVI_GIVES(nullptr, OviGeometryInstance_GetNodeInstanceAt(Geometry(), 1)),
        OVI_GIVES(nullptr, OviGeometryInstance_GetNodeInstanceAt(Geometry(), -1)),
        OVI_RETURNS(OviGeometryInstance_SetNodeInstanceAt(bad, 0, nullptr)),
        OVI_RETURNS(OviGeometryInstance_SetNodeInstanceAt(Geometry(), 1, nullptr)),
    };
}
