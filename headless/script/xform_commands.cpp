// xform: where a transform stands, asked and told in its own space or the world's.
#include "headless/script/commands.h"

#include <maya/MFnTransform.h>

#include <algorithm>

namespace headless {
namespace {

constexpr std::string_view order_names[] = {"xyz", "yzx", "zxy", "xzy", "yxz", "zyx"};

// The transform in the units of the scene.
class Placement {
public:
    Placement(Scene& scene, Node& node)
        : scene_(scene), node_(node), ids_(TransformAttributes::ids()), unit_(scene.linear_unit.centimetres),
          angle_(scene.angle_unit.radians) {}

    Result<CommandResult> answer(const Arguments& arguments) const {
        const bool world = arguments.has("ws");
        if (arguments.has("m")) {
            const Matrix m = world ? scene_.world_matrix(node_) : scene_.local_matrix(node_);
            return numbers_result(std::vector<double>(&m.m[0][0], &m.m[0][0] + 16));
        }
        if (arguments.has("t"))
            return triple(world ? scene_.world_matrix(node_).translation() : value(ids_.translate), unit_);
        if (arguments.has("ro")) return triple(world ? world_values().rotate : value(ids_.rotate), angle_);
        if (arguments.has("s")) return triple(world ? world_values().scale : value(ids_.scale), 1.0);
        for (const Pivot& pivot : pivots_) {
            if (arguments.has(pivot.flag)) return triple(place_of(pivot, world), unit_);
        }
        if (arguments.has("roo")) return text_result(std::string(order_names[static_cast<int>(order())]));
        return Error{"xform needs a flag that says what is asked"};
    }

    Result<void> move(const Arguments& arguments) {
        const bool world = arguments.has("ws"), relative = arguments.has("r");
        const bool preserve = arguments.truth("p").value_or(true);
        if (const std::string* name = arguments.text("roo")) {
            if (Result<void> done = set_order(*name, preserve); !done) return done;
        }
        if (Result<void> done = set_matrix(arguments.texts("m"), world); !done) return done;
        if (const auto scale = arguments.vector("s")) {
            const Vector3 now = value(ids_.scale);
            const Vector3 factor = relative ? now : Vector3{1, 1, 1};
            const Vector3 wanted{scale->x * factor.x, scale->y * factor.y, scale->z * factor.z};
            if (Result<void> done = set(ids_.scale, wanted); !done) return done;
        }
        if (const auto turn = arguments.vector("ro")) {
            const Vector3 wanted = *turn * angle_ + (relative && !world ? value(ids_.rotate) : Vector3());
            if (Result<void> done = world ? turn_in_world(wanted, relative) : set(ids_.rotate, wanted); !done)
                return done;
        }
        if (const auto at = arguments.vector("t")) {
            const Vector3 wanted = *at * unit_;
            Result<void> done = world ? move_in_world(wanted, relative)
                                      : set(ids_.translate, relative ? value(ids_.translate) + wanted : wanted);
            if (!done) return done;
        }
        for (const Pivot& pivot : pivots_) {
            const auto at = arguments.vector(pivot.flag);
            if (!at) continue;
            const Vector3 wanted = *at * unit_ + (relative ? place_of(pivot, world) : Vector3());
            if (Result<void> done = move_pivot(pivot, wanted, world, preserve); !done) return done;
        }
        return {};
    }

private:
    Vector3 value(AttributeId id) const { return scene_.evaluate(node_.plug(id)).vector(); }
    Result<void> set(AttributeId id, const Vector3& wanted) { return scene_.set(node_.plug(id), wanted); }
    RotateOrder order() const { return rotate_order(scene_.evaluate(node_.plug(ids_.rotate_order)).integer()); }
    static CommandResult triple(const Vector3& v, double unit) {
        return numbers_result({v.x / unit, v.y / unit, v.z / unit});
    }

    // A pivot, and the translation with which the whole can stay where it is when the pivot moves.
    struct Pivot {
        const char* flag;
        AttributeId id, shift_id;
        Vector3 TransformValues::*at;
        Vector3 TransformValues::*shift;
        bool of_scale;
    };

    TransformValues values() const { return EvaluationContext(scene_).transform_values(node_); }
    Matrix above() const { return EvaluationContext(scene_).parent_matrix(node_); }
    // What acts behind the scale; through it the pivots are seen from outside.
    static Matrix behind_scale(TransformValues values) {
        values.scale = {1, 1, 1};
        values.shear = values.scale_pivot = values.scale_pivot_translate = {};
        return local_matrix(values);
    }

    Vector3 place_of(const Pivot& pivot, bool world) const {
        const TransformValues now = values();
        if (!world) return now.*pivot.at;
        const Vector3 scaled = pivot.of_scale ? now.scale_pivot + now.scale_pivot_translate : now.rotate_pivot;
        return transform_point(scaled, behind_scale(now) * above());
    }

    Result<void> move_pivot(const Pivot& pivot, const Vector3& wanted, bool world, bool preserve) {
        TransformValues now = values();
        const Matrix before = local_matrix(now);
        Vector3 at = wanted;
        if (world) {
            const Vector3 outside = transform_point(wanted, inverse(above()));
            if (preserve)
                at = transform_point(outside, inverse(pivot.of_scale ? before : behind_scale(now)));
            else if (pivot.of_scale)
                at = transform_point(outside, inverse(behind_scale(now))) - now.scale_pivot_translate;
            else
                at = outside - now.rotate_pivot_translate - now.translate;
        }
        now.*pivot.at = at;
        const Vector3 jump = before.translation() - local_matrix(now).translation();
        const bool shifts = preserve && jump != Vector3();
        if (Result<void> allowed = scene_.check_settable(node_.plug(pivot.shift_id)); shifts && !allowed)
            return allowed;
        if (Result<void> done = set(pivot.id, at); !done || !shifts) return done;
        return set(pivot.shift_id,
                   now.*pivot.shift + (pivot.of_scale ? transform_direction(jump, inverse(behind_scale(now))) : jump));
    }

    Result<void> set_order(const std::string& name, bool preserve) {
        const auto at = std::ranges::find(order_names, name);
        if (at == std::end(order_names)) return Error{"'" + name + "' is no rotate order"};
        const Matrix turned = euler_to_matrix(value(ids_.rotate), order());
        const auto number = static_cast<int>(at - std::begin(order_names));
        if (Result<void> allowed = scene_.check_settable(node_.plug(ids_.rotate)); preserve && !allowed) return allowed;
        if (Result<void> done = scene_.set(node_.plug(ids_.rotate_order), number); !done || !preserve) return done;
        return set(ids_.rotate, matrix_to_euler(turned, rotate_order(number)));
    }

    // The world matrix taken apart as if it were a plain transform's of the same rotate order.
    TransformValues world_values() const {
        TransformValues out;
        out.order = order();
        set_from_matrix(out, scene_.world_matrix(node_));
        return out;
    }

    void stand_in_world(const Matrix& world) {
        const MMatrix local = matrix(world * inverse(above()));
        MFnTransform(Access::path(scene_.path_to(node_))).set(MTransformationMatrix(local));
    }

    Result<void> set_matrix(const std::vector<std::string>& numbers, bool world) {
        if (numbers.size() != 16) return {};
        Matrix wanted;
        for (int i = 0; i < 16; ++i) wanted.m[i / 4][i % 4] = number_of(numbers[i]);
        if (world)
            stand_in_world(wanted);
        else
            MFnTransform(Access::path(scene_.path_to(node_))).set(MTransformationMatrix(matrix(wanted)));
        return {};
    }
    static double number_of(const std::string& word) { return as_number(text(word)).value_or(0.0); }

    Result<void> turn_in_world(const Vector3& turn, bool relative) {
        TransformValues values = world_values();
        values.rotate = turn;
        if (relative) {
            const Matrix by = euler_to_matrix(turn, values.order);
            const Matrix now = euler_to_matrix(world_values().rotate, values.order);
            values.rotate = matrix_to_euler(now * by, values.order);
        }
        stand_in_world(local_matrix(values));
        return {};
    }

    // What the translation lacks is added to it, so that pivots stay as they are.
    Result<void> move_in_world(const Vector3& wanted, bool relative) {
        const Vector3 now = scene_.world_matrix(node_).translation();
        const Vector3 by = relative ? wanted : wanted - now;
        return set(ids_.translate, value(ids_.translate) + transform_direction(by, inverse(above())));
    }

    Scene& scene_;
    Node& node_;
    const TransformAttributes& ids_;
    double unit_, angle_;
    const Pivot pivots_[2] = {{"rp", ids_.rotate_pivot, ids_.rotate_pivot_translate, &TransformValues::rotate_pivot,
                               &TransformValues::rotate_pivot_translate, false},
                              {"sp", ids_.scale_pivot, ids_.scale_pivot_translate, &TransformValues::scale_pivot,
                               &TransformValues::scale_pivot_translate, true}};
};

Result<CommandResult> xform(Session& session, const Arguments& arguments) {
    const Result<std::vector<Node*>> nodes = named_or_selected(session, arguments.names());
    if (!nodes) return nodes.error();
    for (Node* node : *nodes) {
        if (!node->type().is_transform()) return Error{"'" + node->name() + "' is no transform"};
        Placement placement(session.scene(), *node);
        if (arguments.query()) return placement.answer(arguments);
        if (Result<void> done = placement.move(arguments); !done) return done.error();
    }
    return CommandResult();
}

constexpr CommandRow xform_rows[] = {
    {"xform",
     "ws,worldSpace os,objectSpace m,matrix=dddddddddddddddd t,translation=ddd ro,rotation=ddd s,scale=ddd "
     "rp,rotatePivot=ddd sp,scalePivot=ddd roo,rotateOrder=s r,relative a,absolute p,preserve=b",
     xform},
};

} // namespace

std::span<const CommandRow> xform_commands() {
    return xform_rows;
}

} // namespace headless
