// pairBlend. By axis of translation mode 0 blends, 1 passes the first input on, 2 the second (`translateXMode` and its
// like); so does `rotateMode` for the rotation. `weight`, kept from 0 to 1, is the second input's share. Rotations
// blend angle by angle, or along the shorter arc where `rotInterpolation` is 1 (angles by `rotateOrder`). A rotation
// that is connected on one side alone passes, whatever mode and weight.
#include "headless/animation/rotation_blend.h"
#include "headless/graph/scene.h"
#include "headless/nodes/kinds.h"
#include "headless/nodes/node_kind.h"

#include <algorithm>
#include <array>

namespace headless {
namespace {

enum class BlendMode : std::uint8_t { blend, first, second };

struct PairBlendAttributes {
    AttributeId translate1, rotate1, translate2, rotate2, weight, rotate_mode, rotate_order, interpolation;
    std::array<AttributeId, 3> translate_modes;
    AttributeId out_translate, out_rotate;

    static const PairBlendAttributes& ids() {
        static const PairBlendAttributes made = [] {
            const NodeType& type = *NodeTypes::all().find("pairBlend");
            return PairBlendAttributes{
                type.find("it1"), type.find("ir1"), type.find("it2"),
                type.find("ir2"), type.find("w"),   type.find("rm"),
                type.find("ro"),  type.find("ri"),  {type.find("txm"), type.find("tym"), type.find("tzm")},
                type.find("ot"),  type.find("or")};
        }();
        return made;
    }
};

bool is_connected(const Node& node, AttributeId triple) {
    const auto& children = node.attribute(triple).children;
    return std::ranges::any_of(node.inputs(), [&](const auto& input) {
        const AttributeId id = input.first.attribute;
        return id == triple || std::ranges::find(children, id) != children.end();
    });
}

class PairBlend {
public:
    PairBlend(EvaluationContext& context, Node& node) : context_(context), node_(node) {}

    double translate(std::size_t axis) {
        const auto mode = context_.evaluate(node_.plug(ids_.translate_modes[axis])).integer();
        return mixed(ids_.translate1, ids_.translate2, axis, BlendMode{static_cast<std::uint8_t>(mode)});
    }

    double rotate(std::size_t axis) {
        const BlendMode mode = rotate_mode();
        const bool turns = mode != BlendMode::first && mode != BlendMode::second &&
                           context_.evaluate(node_.plug(ids_.interpolation)).integer() == 1;
        if (!turns) return mixed(ids_.rotate1, ids_.rotate2, axis, mode);
        const RotateOrder order = headless::rotate_order(context_.evaluate(node_.plug(ids_.rotate_order)).integer());
        const auto quaternion = [&](AttributeId id) {
            return to_quaternion(euler_to_matrix(context_.vector(node_.plug(id)), order));
        };
        const Quaternion turned = slerp(quaternion(ids_.rotate1), quaternion(ids_.rotate2), weight());
        return matrix_to_euler(to_matrix(turned), order)[static_cast<int>(axis)];
    }

private:
    double weight() { return std::clamp(context_.number(node_.plug(ids_.weight)), 0.0, 1.0); }

    BlendMode rotate_mode() {
        const bool first = is_connected(node_, ids_.rotate1), second = is_connected(node_, ids_.rotate2);
        if (first != second) return first ? BlendMode::first : BlendMode::second;
        const auto mode = context_.evaluate(node_.plug(ids_.rotate_mode)).integer();
        return BlendMode{static_cast<std::uint8_t>(mode)};
    }

    double input(AttributeId triple, std::size_t axis) {
        return context_.number(node_.plug(node_.attribute(triple).children[axis]));
    }

    double mixed(AttributeId first, AttributeId second, std::size_t axis, BlendMode mode) {
        if (mode == BlendMode::first) return input(first, axis);
        if (mode == BlendMode::second) return input(second, axis);
        const double part = weight();
        return (1.0 - part) * input(first, axis) + part * input(second, axis);
    }

    EvaluationContext& context_;
    Node& node_;
    const PairBlendAttributes& ids_ = PairBlendAttributes::ids();
};

Value compute_pair_blend(EvaluationContext& context, Node& node, const Plug& plug) {
    const PairBlendAttributes& ids = PairBlendAttributes::ids();
    PairBlend blend(context, node);
    const AttributeId id = plug.key.attribute;
    if (id == ids.out_translate) return Vector3{blend.translate(0), blend.translate(1), blend.translate(2)};
    if (id == ids.out_rotate) return Vector3{blend.rotate(0), blend.rotate(1), blend.rotate(2)};
    for (std::size_t axis = 0; axis < 3; ++axis) {
        if (id == node.attribute(ids.out_translate).children[axis]) return blend.translate(axis);
        if (id == node.attribute(ids.out_rotate).children[axis]) return blend.rotate(axis);
    }
    return {};
}

} // namespace

void add_pair_blend_kind(NodeTypes& types) {
    // clang-format off
    NodeKind blend(types, "pairBlend", "node", MFn::kPairBlend);
    const auto tell_input = [&blend](const std::string& name, const std::string& brief, const char* which,
                                     AttributeKind kind) {
        blend.compound(name + which, brief + which);
        for (const char* axis : {"Xx", "Yy", "Zz"}) blend.add(name + axis[0] + which, brief + axis[1] + which, kind, 0.0);
        blend.end();
    };
    for (const char* which : {"1", "2"}) {
        tell_input("inTranslate", "it", which, AttributeKind::distance);
        tell_input("inRotate", "ir", which, AttributeKind::angle);
    }
    blend.number("weight", "w", 1.0)
        .enumeration("currentDriver", "c")
        .enumeration("translateXMode", "txm")
        .enumeration("translateYMode", "tym")
        .enumeration("translateZMode", "tzm")
        .enumeration("rotateMode", "rm")
        .enumeration("rotateOrder", "ro")
        .enumeration("rotInterpolation", "ri")
        .vector("outTranslate", "ot", AttributeKind::distance).output()
        .vector("outRotate", "or", AttributeKind::angle).output()
        .computes(compute_pair_blend);
    // clang-format on
}

} // namespace headless
