#include "headless/nodes/kinds.h"
#include "headless/nodes/node_kind.h"

#include <numbers>

namespace headless {

using enum AttributeKind;

namespace {

// "minTransXLimit" (mtxl) and its like under "minTransLimit" (mntl), and the switches "minTransXLimitEnable" (mtxe)
// under "minTransLimitEnable" (mtle).
void tell_limits(NodeKind& kind, const std::string& what, char letter, AttributeKind value_kind, double bound) {
    for (const bool upper : {false, true}) {
        const std::string stem = (upper ? "max" : "min") + what;
        const std::string side(1, upper ? 'x' : 'm');
        kind.compound(stem + "Limit", std::string(upper ? "mx" : "mn") + letter + "l");
        for (const std::string_view axis : {"Xx", "Yy", "Zz"})
            kind.add(stem + axis[0] + "Limit", side + letter + axis[1] + "l", value_kind, upper ? bound : -bound);
        kind.end();
        kind.compound(stem + "LimitEnable", side + letter + "le");
        for (const std::string_view axis : {"Xx", "Yy", "Zz"})
            kind.boolean(stem + axis[0] + "LimitEnable", side + letter + axis[1] + "e");
        kind.end();
    }
}

} // namespace

void add_transform_kinds(NodeTypes& types) {
    // clang-format off
    NodeKind transform(types, "transform", "dagNode", MFn::kTransform);
    transform.vector("translate", "t", distance)
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
    tell_limits(transform, "Trans", 't', distance, 1.0);
    tell_limits(transform, "Rot", 'r', angle, std::numbers::pi / 4);
    tell_limits(transform, "Scale", 's', number, 1.0);

    NodeKind(types, "joint", "transform", MFn::kJoint)
        .vector("jointOrient", "jo", angle)
        .vector("inverseScale", "is", number, 1.0)
        .boolean("segmentScaleCompensate", "ssc", true)
        .matrix("bindPose", "bps")
        .vector("preferredAngle", "pa", angle)
        .boolean("jointTypeX", "jtx", true)
        .boolean("jointTypeY", "jty", true)
        .boolean("jointTypeZ", "jtz", true)
        .vector("stiffness", "st")
        .number("radius", "radi", 1.0)
        .enumeration("drawStyle", "ds")
        .enumeration("side", "sd")
        .enumeration("type", "typ")
        .text("otherType", "otp")
        .boolean("drawLabel", "dl");
    NodeKind(types, "hikFKJoint", "joint", MFn::kJoint);

    for (const char* name : {"dagContainer", "fosterParent", "hikIKEffector", "place3dTexture", "lookAt",
                             "pointEmitter", "airField",
                             "dragField", "gravityField", "newtonField", "radialField", "turbulenceField",
                             "uniformField", "vortexField", "volumeAxisField"})
        NodeKind(types, name, "transform", MFn::kTransform);
    // clang-format on
}

} // namespace headless
