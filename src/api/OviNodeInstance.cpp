#include "ovi/node_instance.h"

#include "api/Barrier.h"
#include "instances/AnchorInstance.h"
#include "instances/GeometryInstance.h"

using namespace Kor;
using namespace Kor::Api;

const char* OviAnchorInstance_GetAttachedAnchor(OviAnchorInstance* anchor) {
    return With<AnchorInstance>(anchor, "",
                                [](AnchorInstance& self) { return self.GetAttachedAnchor(); });
}

void OviAnchorInstance_SetAttachedAnchor(OviAnchorInstance* anchor, const char* attached) {
    With<AnchorInstance>(
        anchor, [attached](AnchorInstance& self) { self.SetAttachedAnchor(Text(attached)); });
}

OviNodeInstance* OviGeometryInstance_GetNodeInstanceAt(OviGeometryInstance* geometry, int index) {
    return With<GeometryInstance>(geometry, static_cast<OviNodeInstance*>(nullptr),
                                  [index](GeometryInstance& self) {
                                      return To<OviNodeInstance>(self.GetNodeInstanceAt(index));
                                  });
}

void OviGeometryInstance_SetNodeInstanceAt(OviGeometryInstance* geometry, int index,
                                           OviNodeInstance* node) {
    WithOptional<GeometryInstance, NodeInstance>(
        geometry, node, [=](GeometryInstance& self, NodeInstance* replacement) {
            if (replacement || !node)
                self.SetNodeInstanceAt(index, replacement);
        });
}
