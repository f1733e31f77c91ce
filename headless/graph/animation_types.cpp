#include "headless/graph/standard_types.h"

namespace headless {
namespace {

using enum AttributeKind;

void add_curve(NodeTypes& types, const char* name, MFn::Type api_type, AttributeKind key, AttributeKind value) {
    NodeType& curve = types.add(name, "animCurve", api_type);
    curve.add("input", "i", key);
    curve.make_output(curve.add("output", "o", value));
    const AttributeId keys = curve.add("keyTimeValue", "ktv", compound);
    curve.make_array(keys);
    curve.add("keyTime", "kt", key, {}, keys);
    curve.add("keyValue", "kv", value, {}, keys);
}

void add_curves(NodeTypes& types) {
    NodeType& curve = types.add("animCurve", "node", MFn::kAnimCurve);
    curve.add("tangentType", "tan", enumeration);
    curve.add("weightedTangents", "wgt", boolean);
    curve.add("preInfinity", "pre", enumeration);
    curve.add("postInfinity", "pst", enumeration);
    for (const auto& [long_name, short_name] : {std::pair{"keyTanLocked", "ktl"}, {"keyWeightLocked", "kwl"}})
        curve.make_array(curve.add(long_name, short_name, boolean, true));
    for (const auto& [long_name, short_name] :
         {std::pair{"keyTanInX", "kix"}, {"keyTanInY", "kiy"}, {"keyTanOutX", "kox"}, {"keyTanOutY", "koy"}})
        curve.make_array(curve.add(long_name, short_name, number, 1.0));
    for (const auto& [long_name, short_name] : {std::pair{"keyTanInType", "kit"}, {"keyTanOutType", "kot"}})
        curve.make_array(curve.add(long_name, short_name, enumeration));
    curve.make_array(curve.add("keyBreakdown", "kbd", boolean));
    curve.make_array(curve.add("keyTickDrawSpecial", "ktds", boolean));

    add_curve(types, "animCurveTA", MFn::kAnimCurveTimeToAngular, time, angle);
    add_curve(types, "animCurveTL", MFn::kAnimCurveTimeToDistance, time, distance);
    add_curve(types, "animCurveTT", MFn::kAnimCurveTimeToTime, time, time);
    add_curve(types, "animCurveTU", MFn::kAnimCurveTimeToUnitless, time, number);
    add_curve(types, "animCurveUA", MFn::kAnimCurveUnitlessToAngular, number, angle);
    add_curve(types, "animCurveUL", MFn::kAnimCurveUnitlessToDistance, number, distance);
    add_curve(types, "animCurveUT", MFn::kAnimCurveUnitlessToTime, number, time);
    add_curve(types, "animCurveUU", MFn::kAnimCurveUnitlessToUnitless, number, number);
}

AttributeId add_targets(NodeType& type) {
    const AttributeId target = type.add("target", "tg", compound);
    type.make_array(target);
    type.add("targetParentMatrix", "tpm", matrix, {}, target);
    type.add("targetWeight", "tw", number, 1.0, target);
    return target;
}

void add_target_position(NodeType& type, AttributeId target) {
    type.add_vector("targetTranslate", "tt", distance, 0.0, target);
    type.add_vector("targetRotatePivot", "trp", distance, 0.0, target);
    type.add_vector("targetRotateTranslate", "trt", distance, 0.0, target);
    type.add_vector("constraintRotatePivot", "crp", distance);
    type.add_vector("constraintRotateTranslate", "crt", distance);
    type.make_output(type.add_vector("constraintTranslate", "ct", distance));
    type.add_vector("restTranslate", "rst", distance);
}

void add_target_rotation(NodeType& type, AttributeId target) {
    type.add_vector("targetRotate", "tr", angle, 0.0, target);
    type.add("targetRotateOrder", "tro", enumeration, 0, target);
    type.add_vector("targetJointOrient", "tjo", angle, 0.0, target);
    type.add("constraintRotateOrder", "cro", enumeration, 0);
    type.add_vector("constraintJointOrient", "cjo", angle);
    type.add_vector("inverseScale", "is", number, 1.0);
    type.add("scaleCompensate", "sc", boolean);
    type.make_output(type.add_vector("constraintRotate", "cr", angle));
    type.add_vector("restRotate", "rsrr", angle);
    type.add_vector("lastTargetRotate", "lr", angle);
    type.add("interpType", "int", enumeration, 1);
}

void add_aim(NodeTypes& types) {
    NodeType& aim = types.add("aimConstraint", "constraint", MFn::kAimConstraint);
    const AttributeId target = add_targets(aim);
    aim.add_vector("targetTranslate", "tt", distance, 0.0, target);
    aim.add_vector("targetRotatePivot", "trp", distance, 0.0, target);
    aim.add_vector("targetRotateTranslate", "trt", distance, 0.0, target);
    aim.add_vector("constraintTranslate", "ct", distance);
    aim.add_vector("constraintRotatePivot", "crp", distance);
    aim.add_vector("constraintRotateTranslate", "crt", distance);
    aim.add("constraintRotateOrder", "cro", enumeration, 0);
    aim.add_vector("constraintJointOrient", "cjo", angle);
    for (const auto& [long_name, short_name, axis] :
         {std::tuple{"aimVector", "a", 0}, {"upVector", "u", 1}, {"worldUpVector", "wu", 1}}) {
        const AttributeId id = aim.add(long_name, short_name, compound);
        for (int i = 0; i < 3; ++i)
            aim.add(long_name + std::string(1, "XYZ"[i]), short_name + std::string(1, "xyz"[i]), number,
                    i == axis ? 1.0 : 0.0, id);
    }
    aim.add("worldUpMatrix", "wum", matrix);
    aim.add("worldUpType", "wut", enumeration, 3);
    aim.add_vector("offset", "o", angle);
    aim.add_vector("restRotate", "rsrr", angle);
    aim.make_output(aim.add_vector("constraintRotate", "cr", angle));
}

void add_constraints(NodeTypes& types) {
    NodeType& constraint = types.add("constraint", "transform", MFn::kConstraint);
    constraint.add("constraintParentInverseMatrix", "cpim", matrix);
    constraint.add("enableRestPosition", "erp", boolean, true);
    constraint.unevaluated_driver = true;

    NodeType& point = types.add("pointConstraint", "constraint", MFn::kPointConstraint);
    add_target_position(point, add_targets(point));
    point.add_vector("offset", "o", distance);
    point.add("constraintOffsetPolarity", "cop", boolean);

    NodeType& orient = types.add("orientConstraint", "constraint", MFn::kOrientConstraint);
    add_target_rotation(orient, add_targets(orient));
    orient.add_vector("offset", "o", angle);

    NodeType& parent = types.add("parentConstraint", "constraint", MFn::kParentConstraint);
    const AttributeId target = add_targets(parent);
    add_target_position(parent, target);
    add_target_rotation(parent, target);
    parent.add_vector("targetScale", "ts", number, 1.0, target);
    parent.add("targetScaleCompensate", "tsc", boolean, false, target);
    parent.add_vector("targetInverseScale", "tis", number, 1.0, target);
    parent.add_vector("targetOffsetTranslate", "tot", distance, 0.0, target);
    parent.add_vector("targetOffsetRotate", "tor", angle, 0.0, target);

    add_aim(types);
    NodeType& scale = types.add("scaleConstraint", "constraint", MFn::kScaleConstraint);
    scale.add_vector("targetScale", "ts", number, 1.0, add_targets(scale));
    scale.add_vector("offset", "o", number, 1.0);
    scale.add_vector("restScale", "rs", number, 1.0);
    scale.make_output(scale.add_vector("constraintScale", "cs", number, 1.0));

    for (const auto& [name, type] : {std::pair{"poleVectorConstraint", MFn::kPoleVectorConstraint},
                                     {"geometryConstraint", MFn::kGeometryConstraint},
                                     {"normalConstraint", MFn::kNormalConstraint},
                                     {"tangentConstraint", MFn::kTangentConstraint},
                                     {"symmetryConstraint", MFn::kSymmetryConstraint}})
        types.add(name, "constraint", type);
}

void add_pair_blend(NodeTypes& types) {
    NodeType& blend = types.add("pairBlend", "node", MFn::kPairBlend);
    for (const char* number_of : {"1", "2"}) {
        for (const auto& [stem, short_stem, kind] :
             {std::tuple{"inTranslate", "it", distance}, std::tuple{"inRotate", "ir", angle}}) {
            const AttributeId id =
                blend.add(std::string(stem) + number_of, std::string(short_stem) + number_of, compound);
            for (const char* axis : {"Xx", "Yy", "Zz"})
                blend.add(std::string(stem) + axis[0] + number_of, std::string(short_stem) + axis[1] + number_of, kind,
                          0.0, id);
        }
    }
    blend.add("weight", "w", number, 1.0);
    blend.add("currentDriver", "c", enumeration);
    for (const auto& [long_name, short_name] : {std::pair{"translateXMode", "txm"},
                                                {"translateYMode", "tym"},
                                                {"translateZMode", "tzm"},
                                                {"rotateMode", "rm"}})
        blend.add(long_name, short_name, enumeration);
    blend.add("rotateOrder", "ro", enumeration);
    blend.add("rotInterpolation", "ri", enumeration);
    blend.make_output(blend.add_vector("outTranslate", "ot", distance));
    blend.make_output(blend.add_vector("outRotate", "or", angle));
}

void add_conversions(NodeTypes& types) {
    NodeType& unit = types.add("unitConversion", "node", MFn::kUnitConversion);
    unit.add("input", "i", number, 0.0);
    unit.add("conversionFactor", "cf", number, 1.0);
    unit.make_output(unit.add("output", "o", number));
    NodeType& to_time = types.add("unitToTimeConversion", "node", MFn::kUnitToTimeConversion);
    to_time.add("input", "i", number, 0.0);
    to_time.add("conversionFactor", "cf", number, 1.0);
    to_time.make_output(to_time.add("output", "o", time));
    NodeType& from_time = types.add("timeToUnitConversion", "node", MFn::kUnitConversion);
    from_time.add("input", "i", time);
    from_time.add("conversionFactor", "cf", number, 1.0);
    from_time.make_output(from_time.add("output", "o", number));
}

void add_arithmetic(NodeTypes& types) {
    for (const auto& [name, type] :
         {std::pair{"addDoubleLinear", MFn::kAddDoubleLinear}, {"multDoubleLinear", MFn::kMultDoubleLinear}}) {
        NodeType& two = types.add(name, "node", type);
        two.add("input1", "i1", number, 0.0);
        two.add("input2", "i2", number, 0.0);
        two.make_output(two.add("output", "o", number));
    }
    NodeType& product = types.add("multiplyDivide", "node", MFn::kMultiplyDivide);
    product.add("operation", "op", enumeration, 1);
    product.add_vector("input1", "i1", number);
    product.add_vector("input2", "i2", number, 1.0);
    product.make_output(product.add_vector("output", "o", number));

    NodeType& sum = types.add("plusMinusAverage", "node", MFn::kPlusMinusAverage);
    sum.add("operation", "op", enumeration, 1);
    sum.make_array(sum.add("input1D", "i1", number));
    const AttributeId pairs = sum.add("input2D", "i2", compound), triples = sum.add("input3D", "i3", compound);
    sum.make_array(pairs);
    sum.make_array(triples);
    sum.add("input2Dx", "i2x", number, {}, pairs);
    sum.add("input2Dy", "i2y", number, {}, pairs);
    for (const auto& [name, short_name] : {std::pair{"input3Dx", "i3x"}, {"input3Dy", "i3y"}, {"input3Dz", "i3z"}})
        sum.add(name, short_name, number, {}, triples);
    sum.make_output(sum.add("output1D", "o1", number));
    const AttributeId pair = sum.add("output2D", "o2", compound), triple = sum.add("output3D", "o3", compound);
    sum.add("output2Dx", "o2x", number, {}, pair);
    sum.add("output2Dy", "o2y", number, {}, pair);
    for (const auto& [name, short_name] : {std::pair{"output3Dx", "o3x"}, {"output3Dy", "o3y"}, {"output3Dz", "o3z"}})
        sum.add(name, short_name, number, {}, triple);
    sum.make_output(pair);
    sum.make_output(triple);

    NodeType& weighted = types.add("blendWeighted", "node", MFn::kDependencyNode);
    weighted.make_array(weighted.add("input", "i", number));
    weighted.make_array(weighted.add("weight", "w", number, 1.0));
    weighted.add("current", "c", integer);
    weighted.make_output(weighted.add("output", "o", number));
}

void add_characters(NodeTypes& types) {
    NodeType& character = types.add("character", "objectSet", MFn::kCharacter);
    character.make_array(character.add("linearValues", "lv", distance));
    character.make_array(character.add("angularValues", "av", angle));
    character.make_array(character.add("unitlessValues", "uv", number));
    character.make_array(character.add("timeValues", "tv", time));
    types.add("clipLibrary", "node", MFn::kClipLibrary);
    types.add("clipScheduler", "node", MFn::kClipScheduler).unevaluated_driver = true;
    types.add("animClip", "node", MFn::kClip);
}

} // namespace

void add_animation_types(NodeTypes& types) {
    NodeType& clock = types.add("time", "node", MFn::kTime);
    clock.make_output(clock.add("outTime", "o", time));
    NodeType& expression = types.add("expression", "node", MFn::kExpression);
    expression.add("expression", "e", text);
    expression.make_array(expression.add("input", "in", number));
    expression.make_array(expression.add("output", "out", number));
    expression.unevaluated_driver = true;
    add_curves(types);
    add_constraints(types);
    add_pair_blend(types);
    add_conversions(types);
    add_arithmetic(types);
    add_characters(types);
}

} // namespace headless
