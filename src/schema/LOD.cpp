#include "schema/LOD.h"

#include "xml/XMLTemplateWriter.h"

namespace Kor {

void LOD::WriteToXML(XMLWriter& writer) const {
    XMLTemplateWriter(writer).WriteLOD(*this);
}

const char* LOD::GetTypeName() const {
    static constexpr const char* kNames[] = {"Bounding Volume", "Collision", "Surface"};
    return type_ >= kBoundingVolume && type_ <= kSurface ? kNames[type_] : "";
}

void LOD::AllowShape(int shapes) {
    allowedShapes_ |= shapes;
    allowedShapeNames_.clear();
}

void LOD::DisallowShape(int shapes) {
    allowedShapes_ &= ~shapes;
    allowedShapeNames_.clear();
}

const char* LOD::GetAllowedShapeNames() {
    if (!allowedShapeNames_.empty())
        return allowedShapeNames_.c_str();
    for (const LODShape& shape : kLODShapes) {
        if (!(allowedShapes_ & shape.bit))
            continue;
        if (!allowedShapeNames_.empty())
            allowedShapeNames_ += ", ";
        allowedShapeNames_ += shape.name;
    }
    return allowedShapeNames_.c_str();
}

} // namespace Kor
