// Calls on templates, properties, views, nodes, geometry and levels of detail.

#include "faults/CallRows.h"

namespace {

/// Hands the model's block to a property. Without memory nobody has taken it.
using Setter = void (*)(OviAttributeProperty*, void*);
using Getter = void* (*)(OviAttributeProperty*);

void HandOver(Model& m, Setter set, Getter get) {
    set(m.plain, m.value);
    if (get(m.plain) == m.value)
        m.value = nullptr;
}

template <class Handle> long Removed(Model& m, int index, Handle* removed) {
    if (index >= 0)
        m.Keep(removed);
    return index;
}

} // namespace

CallRows SchemaRows() {
    return {
        OVI_CALL(OviTemplate_GetVersion(m.part2)),
        OVI_CALL(OviTemplate_GetLatestVersion(m.part)),
        OVI_CALL(OviTemplate_AddParent(m.freeTemplate, m.part)),
        OVI_CALL(OviTemplate_AddParent(m.whole, m.part)),
        OVI_DO(OviTemplate_AddParent(m.whole, OviTemplateManager_GetRoot())),
        OVI_CALL(OviTemplate_RemoveParent(m.whole, m.base)),
        OVI_CALL(OviTemplate_GetParentCount(m.part)),
        OVI_CALL(OviTemplate_GetParentAt(m.part, 0)),
        OVI_CALL(OviTemplate_GetParent(m.part, "main.Base#1")),
        OVI_CALL(OviTemplate_GetChildCount(m.base)),
        OVI_CALL(OviTemplate_GetChildAt(m.base, 0)),
        OVI_CALL(OviTemplate_GetChild(m.base, "main.Part#1")),
        OVI_CALL(OviTemplate_IsChildOf(m.part, m.base)),
        OVI_CALL(OviTemplate_IsDescendantOf(m.part, m.base)),
        OVI_DO(OviTemplate_AddProperty(m.part, m.freeAttribute, 0)),
        OVI_CALL(OviTemplate_AddProperty(m.whole, m.freeGeometry, -1)),
        OVI_CALL(OviTemplate_AddProperty(m.freeTemplate, m.freeAttribute, -1)),
        OVI_CALL(OviTemplate_RemoveProperty(
            m.freeTemplate, m.Keep(OviTemplate_GetProperty(m.freeTemplate, "size")))),
        OVI_CALL(OviTemplate_GetPropertyCount(m.part)),
        OVI_CALL(OviTemplate_GetPropertyAt(m.part, 0, true)),
        OVI_CALL(OviTemplate_GetProperty(m.part, "note")),
        OVI_CALL(OviTemplate_CreateView(m.part, "another_view_with_a_long_name")),
        OVI_CALL(OviTemplate_AddView(m.part, m.freeView)),
        OVI_CALL(OviTemplate_AddView(m.whole, m.freeView)),
        OVI_CALL(Removed(m, OviTemplate_RemoveView(m.part, m.view), m.view)),
        OVI_CALL(OviTemplate_GetViewCount(m.part)),
        OVI_CALL(OviTemplate_GetViewAt(m.part, 0)),
        OVI_CALL(OviTemplate_GetView(m.part, "panel", true)),

        OVI_CALL(OviProperty_GetFullName(m.size)),
        OVI_CALL(OviProperty_GetTemplate(m.size)),
        OVI_CALL(OviProperty_AddCommand(m.size, m.freeCommand) + 1),
        OVI_CALL(OviProperty_AddCommand(m.node, m.freeCommand) + 1),
        OVI_CALL(OviProperty_RemoveCommand(m.size, m.redraw) + 1),
        OVI_CALL(OviProperty_GetCommandCount(m.size)),
        OVI_CALL(OviProperty_GetCommandAt(m.size, 0)),

        OVI_CALL(m.Keep(OviAttributeProperty_New("another_attribute_with_a_long_name", 1))),
        OVI_CALL(OviAttributeProperty_GetType(m.size)),
        OVI_CALL(OviAttributeProperty_SetType(m.freeAttribute, m.freeType)),
        OVI_CALL(OviAttributeProperty_SetType(m.freeAttribute, m.whole)),
        OVI_CALL(OviAttributeProperty_SetType(m.plain, m.number)),
        OVI_CALL(OviAttributeProperty_GetDefaultValue(m.size)),
        OVI_DO(HandOver(m, &OviAttributeProperty_SetDefaultValue,
                        &OviAttributeProperty_GetDefaultValue)),
        OVI_CALL(OviAttributeProperty_GetMinValue(m.size)),
        OVI_DO(HandOver(m, &OviAttributeProperty_SetMinValue, &OviAttributeProperty_GetMinValue)),
        OVI_CALL(OviAttributeProperty_GetMaxValue(m.size)),
        OVI_DO(HandOver(m, &OviAttributeProperty_SetMaxValue, &OviAttributeProperty_GetMaxValue)),
        OVI_CALL(OviAttributeProperty_GetDefaultValue(
            static_cast<OviAttributeProperty*>(OviTemplate_GetProperty(m.part2, "place")))),
        OVI_CALL(OviAttributeProperty_IsValueValid(m.size, m.value)),
        OVI_CALL(OviAttributeProperty_IsReference(m.nested)),
        OVI_DO(OviAttributeProperty_SetReference(m.nested, true)),
        OVI_CALL(OviAttributeProperty_GetAutoBind(m.size)),
        OVI_DO(OviAttributeProperty_SetAutoBind(m.size, "|another|long|path|that|is|bound")),

        OVI_CALL(m.Keep(OviGroup_New("another_group_with_a_long_name"))),
        OVI_DO(OviGroup_AddViewItemAt(m.view, m.freeGroup, 0)),
        OVI_DO(OviGroup_AddViewItemAt(m.group, m.freeViewProperty, -1)),
        OVI_DO(OviGroup_AddViewItemAt(m.freeGroup, m.group, -1)),
        OVI_DO((OviGroup_RemoveViewItemAt(m.view, 0), m.Keep(m.group))),
        OVI_CALL(OviGroup_GetViewItemCount(m.view)),
        OVI_CALL(OviGroup_GetViewItemAt(m.view, 0)),
        OVI_CALL(m.Keep(OviViewProperty_New("another_item_with_a_long_name", m.size))),
        OVI_CALL(OviViewProperty_GetProperty(
            static_cast<OviViewProperty*>(OviGroup_GetViewItemAt(m.group, 0)))),
        OVI_DO(OviViewProperty_SetProperty(m.freeViewProperty, m.size)),
        OVI_DO(OviViewProperty_SetProperty(
            static_cast<OviViewProperty*>(OviGroup_GetViewItemAt(m.group, 0)), m.node)),
    };
}

CallRows NodeRows() {
    return {
        OVI_CALL(m.Keep(OviNodeProperty_New("another_node_with_a_long_name", 1))),
        OVI_CALL(OviNodeProperty_GetAncestor(m.node)),
        OVI_DO(OviNodeProperty_SetAncestor(m.node, "another_ancestor_with_a_long_name")),
        OVI_CALL(OviNodeProperty_GetAncestorDistance(m.node)),
        OVI_DO(OviNodeProperty_SetAncestorDistance(m.node, 7)),
        OVI_CALL(m.Keep(OviAnchorProperty_New("another_anchor_with_a_long_name", 1))),
        OVI_CALL(OviAnchorProperty_IsChild(m.plug)),
        OVI_DO(OviAnchorProperty_SetChild(m.plug, false)),
        OVI_CALL(OviAnchorProperty_AddAnchorType(m.plug, m.lod) + 1),
        OVI_CALL((OviAnchorProperty_AddAnchorType(m.plug, m.lod),
                  OviAnchorProperty_RemoveAnchorType(m.plug, m.lod)) +
                 1),
        OVI_CALL(OviAnchorProperty_GetAnchorTypeCount(m.plug)),
        OVI_CALL(OviAnchorProperty_GetAnchorTypeAt(m.plug, 0)),
        OVI_CALL(OviAnchorProperty_GetAnchorType(m.plug, "High")),
        OVI_CALL(OviAnchorProperty_GetCompatibleAnchors(m.plug, 8, m.found)),

        OVI_CALL(OviLOD_GetType(m.lod)),
        OVI_DO(OviLOD_SetType(m.lod, 0)),
        OVI_CALL(OviLOD_GetTypeName(m.lod)),
        OVI_CALL(OviLOD_GetThreshold(m.lod)),
        OVI_DO(OviLOD_SetThreshold(m.lod, 5)),
        OVI_CALL(OviLOD_GetMaxShapes(m.lod)),
        OVI_DO(OviLOD_SetMaxShapes(m.lod, 5)),
        OVI_DO(OviLOD_AllowShape(m.lod, 5)),
        OVI_DO(OviLOD_DisallowShape(m.lod, 2)),
        OVI_CALL(OviLOD_IsShapeAllowed(m.lod, 2)),
        OVI_DO((OviLOD_AllowShape(m.lod, 63), OviLOD_GetAllowedShapeNames(m.lod))),

        OVI_CALL(m.Keep(OviGeometryProperty_New("another_shape_with_a_long_name", 1))),
        OVI_CALL(OviGeometryProperty_AddAlternate(m.shape, m.freeAlternate)),
        OVI_CALL(OviGeometryProperty_AddAlternate(m.freeGeometry, m.freeAlternate) + 1),
        OVI_CALL(OviGeometryProperty_RemoveAlternate(m.shape, m.high) + 1),
        OVI_CALL(OviGeometryProperty_GetAlternateCount(m.shape)),
        OVI_CALL(OviGeometryProperty_GetAlternateAt(m.shape, 0)),
        OVI_CALL(OviGeometryProperty_GetAlternate(m.shape, "High")),
        OVI_CALL(OviGeometryAlternate_GetLOD(m.high)),
        OVI_DO(OviGeometryAlternate_SetLOD(m.freeAlternate, m.lod)),
        OVI_DO(OviGeometryAlternate_SetLOD(m.freeAlternate, nullptr)),
    };
}
