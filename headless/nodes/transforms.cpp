#include "headless/nodes/kinds.h"
#include "headless/nodes/node_kind.h"

namespace headless {

using enum AttributeKind;

void add_transform_kinds(NodeTypes& types) {
    // clang-format off
    NodeKind(types, "transform", "dagNode", MFn::kTransform)
        .vector("translate", "t", distance)
        .vector("rotate", "r", angle)
        .vector("scale", "s", number, 1.0)
        .compound("shear", "sh")
            .number("shearXY", "shxy")
            .number("shearXZ", "shxz")
            .number("shearYZ", "shyz")
        .end()
        .vector("rotatePivot", "rp", distance)
        .vector("rotatePivotTranslate", "rpt", distance)
        .vector("scalePivot", "sp", distance)
        .vector("scalePivotTranslate", "spt", distance)
        .vector("rotateAxis", "ra", angle)
        .enumeration("rotateOrder", "ro")
        .boolean("inheritsTransform", "it", true);

    NodeKind(types, "joint", "transform", MFn::kJoint)
        .vector("jointOrient", "jo", angle)
        .vector("inverseScale", "is", number, 1.0)
        .boolean("segmentScaleCompensate", "ssc", true)
        .matrix("bindPose", "bps")
        .vector("preferredAngle", "pa", angle)
        .vector("stiffness", "st")
        .number("radius", "radi", 1.0)
        .enumeration("drawStyle", "ds")
        .enumeration("side", "sd")
        .enumeration("type", "typ")
        .text("otherType", "otp")
        .boolean("drawLabel", "dl");
    NodeKind(types, "hikFKJoint", "joint", MFn::kJoint);

    NodeKind(types, "ikHandle", "transform", MFn::kIkHandle)
        .message("startJoint", "hsj")
        .message("endEffector", "hee")
        .message("solver", "hsv")
        .number("ikBlend", "ikb", 1.0);
    NodeKind(types, "ikEffector", "transform", MFn::kIkEffector).message("handlePath", "hp");

    for (const char* name : {"dagContainer", "hikIKEffector", "place3dTexture", "lookAt", "pointEmitter", "airField",
                             "dragField", "gravityField", "newtonField", "radialField", "turbulenceField",
                             "uniformField", "vortexField", "volumeAxisField"})
        NodeKind(types, name, "transform", MFn::kTransform);
    // clang-format on
}

} // namespace headless
