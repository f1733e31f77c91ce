// pointConstraint, orientConstraint and parentConstraint: the nodes and connections that the host makes for them.
#include "headless/script/commands.h"

namespace headless {
namespace {

struct Link {
    const char* from; ///< of the target, or of what is constrained
    const char* to;   ///< of the constraint, in the target's element where it is the target's
};

struct ConstraintType {
    const char* type;
    std::vector<Link> of_target, of_constrained;
    std::vector<Link> outputs; ///< of the constraint, to what is constrained
};

const std::vector<Link> point_outputs = {{"ctx", "tx"}, {"cty", "ty"}, {"ctz", "tz"}};
const std::vector<Link> orient_outputs = {{"crx", "rx"}, {"cry", "ry"}, {"crz", "rz"}};

ConstraintType point_kind() {
    return {"pointConstraint",
            {{"t", "tt"}, {"rp", "trp"}, {"rpt", "trt"}, {"pm", "tpm"}},
            {{"pim", "cpim"}, {"rp", "crp"}, {"rpt", "crt"}},
            point_outputs};
}

ConstraintType orient_kind() {
    return {"orientConstraint",
            {{"r", "tr"}, {"ro", "tro"}, {"jo", "tjo"}, {"pm", "tpm"}},
            {{"pim", "cpim"}, {"ro", "cro"}, {"jo", "cjo"}},
            orient_outputs};
}

ConstraintType parent_kind() {
    ConstraintType out{"parentConstraint",
                       {{"t", "tt"},
                        {"rp", "trp"},
                        {"rpt", "trt"},
                        {"r", "tr"},
                        {"ro", "tro"},
                        {"s", "ts"},
                        {"pm", "tpm"},
                        {"jo", "tjo"},
                        {"ssc", "tsc"},
                        {"is", "tis"}},
                       {{"pim", "cpim"}, {"rp", "crp"}, {"rpt", "crt"}, {"ro", "cro"}, {"jo", "cjo"}},
                       point_outputs};
    out.outputs.insert(out.outputs.end(), orient_outputs.begin(), orient_outputs.end());
    return out;
}

Matrix rotation_of(const Matrix& world) {
    TransformValues values;
    set_from_matrix(values, world);
    return euler_to_matrix(values.rotate, values.order);
}

// Makes one constraint on one transform.
class ConstraintMaker {
public:
    ConstraintMaker(Scene& scene, const ConstraintType& kind, Node& constrained, const Arguments& arguments)
        : scene_(scene), kind_(kind), constrained_(constrained), arguments_(arguments) {}

    Result<Node*> make(const std::vector<Node*>& targets) {
        for (const Link& output : outputs()) {
            const Plug plug = constrained_.find_plug(output.to);
            if (plug.is_locked() || constrained_.source_of(plug.key) || constrained_.source_of(plug.parent().key))
                return Error{"'" + plug.name() + "' is locked or connected and can't be constrained"};
        }
        world_ = scene_.world_matrix(constrained_);
        const std::string* name = arguments_.text("n");
        const std::string standard = constrained_.name() + "_" + kind_.type + "1";
        Result<Node*> made = scene_.create_node(kind_.type, name ? *name : standard, &constrained_);
        if (!made) return made;
        node_ = *made;
        for (const Link& link : kind_.of_constrained) connect(constrained_, link.from, plug(link.to));
        for (std::size_t i = 0; i < targets.size(); ++i) add_target(*targets[i], static_cast<int>(i));
        if (arguments_.has("mo")) keep_offset(targets);
        if (const auto offset = arguments_.vector("o")) {
            const bool angles = kind_.outputs.front().from[1] == 'r';
            set(plug("offset"), *offset * (angles ? scene_.angle_unit.radians : scene_.linear_unit.centimetres));
        }
        for (const Link& output : outputs()) connect(*node_, output.from, constrained_.find_plug(output.to));
        return made;
    }

private:
    std::vector<Link> outputs() const {
        std::vector<Link> out = kind_.outputs;
        for (const std::string& axis : arguments_.texts("sk"))
            std::erase_if(out, [&](const Link& link) { return axis.size() == 1 && link.to[1] == axis[0]; });
        for (const auto& [flag, letter] : {std::pair{"st", 't'}, {"sr", 'r'}}) {
            for (const std::string& axis : arguments_.texts(flag))
                std::erase_if(out, [&axis, first = letter](const Link& link) {
                    return link.to[0] == first && axis.size() == 1 && link.to[1] == axis[0];
                });
        }
        return out;
    }

    Plug plug(const std::string& path) const { return node_->find_plug(path); }
    static std::string in_target(int i, const char* name) { return "tg[" + std::to_string(i) + "]." + name; }
    void set(const Plug& at, const Value& value) {
        if (at) at.node->set(at.key, value);
    }

    // What a node lacks (a transform's joint orient) stays as it is by default.
    void connect(Node& from, const char* name, const Plug& to) {
        Plug source = from.find_plug(name);
        if (!source || !to) return;
        if (source.is_array()) source = source.element(0);
        (void)scene_.connect(source, to);
    }

    void add_target(Node& target, int i) {
        for (const Link& link : kind_.of_target) connect(target, link.from, plug(in_target(i, link.to)));
        Attribute weight;
        weight.long_name = std::string(target.short_name()) + "W" + std::to_string(i);
        weight.short_name = "w" + std::to_string(i);
        weight.kind = AttributeKind::number;
        weight.data_type = "double";
        weight.default_value = 1.0;
        const Result<AttributeId> added = node_->add_attribute(std::move(weight));
        if (!added) return;
        node_->set_flags(*added, {.locked = false, .keyable = true, .channel_box = {}});
        if (const auto stated = arguments_.number("w")) set(node_->plug(*added), *stated);
        (void)scene_.connect(node_->plug(*added), plug(in_target(i, "tw")));
    }

    // The offsets with which what is constrained stays where it is.
    void keep_offset(const std::vector<Node*>& targets) {
        if (std::string_view(kind_.type) == "pointConstraint") return keep_point();
        if (std::string_view(kind_.type) == "orientConstraint") return keep_orientation();
        for (std::size_t i = 0; i < targets.size(); ++i) keep_within(*targets[i], static_cast<int>(i));
    }

    void keep_point() {
        const Matrix above = EvaluationContext(scene_).parent_matrix(constrained_);
        const Vector3 now = scene_.evaluate(constrained_.find_plug("t")).vector();
        const Vector3 pulled = scene_.evaluate(plug("ct")).vector();
        set(plug("offset"), transform_direction(now - pulled, above));
    }

    void keep_orientation() {
        const Matrix above = rotation_of(EvaluationContext(scene_).parent_matrix(constrained_));
        const RotateOrder order = rotate_order(scene_.evaluate(constrained_.find_plug("ro")).integer());
        const Matrix pulled =
            euler_to_matrix(scene_.evaluate(plug("cr")).vector(), order) * orient(constrained_) * above;
        const Matrix now = euler_to_matrix(scene_.evaluate(constrained_.find_plug("r")).vector(), order) *
                           orient(constrained_) * above;
        set(plug("offset"), matrix_to_euler(now * inverse(pulled), order));
    }

    Matrix orient(Node& node) {
        const Plug at = node.find_plug("jo");
        return at ? euler_to_matrix(scene_.evaluate(at).vector(), RotateOrder::xyz) : Matrix();
    }

    // Point and orientation in the space of the target around its pivot, as the constraint will put them back.
    void keep_within(Node& target, int i) {
        EvaluationContext context(scene_);
        const TransformValues values = context.transform_values(target);
        const Matrix above = context.parent_matrix(target);
        const Matrix turned = euler_to_matrix(values.rotate, values.order) * orient(target);
        Matrix space = Matrix::scale(values.scale) * turned;
        if (values.joint && values.compensate_scale) {
            const Vector3& by = values.parent_scale;
            const auto undone = [](double s) { return s == 0.0 ? 1.0 : 1.0 / s; };
            space = space * Matrix::scale({undone(by.x), undone(by.y), undone(by.z)});
        }
        const Vector3 at = values.translate + values.rotate_pivot + values.rotate_pivot_translate;
        Matrix linear = space * above;
        linear.set_row(3, {0, 0, 0});
        const Vector3 from_pivot = pivot_in_world() - transform_point(at, above);
        set(plug(in_target(i, "tot")), transform_direction(from_pivot, inverse(linear)));
        const Matrix orientation = turned * rotation_of(above);
        set(plug(in_target(i, "tor")), matrix_to_euler(rotation_of(world_) * inverse(orientation), RotateOrder::xyz));
    }

    Vector3 pivot_in_world() {
        const TransformValues values = EvaluationContext(scene_).transform_values(constrained_);
        const Matrix above = EvaluationContext(scene_).parent_matrix(constrained_);
        return transform_point(values.translate + values.rotate_pivot + values.rotate_pivot_translate, above);
    }

    Scene& scene_;
    const ConstraintType& kind_;
    Node& constrained_;
    const Arguments& arguments_;
    Matrix world_;
    Node* node_ = nullptr;
};

Result<CommandResult> constrain(Session& session, const Arguments& arguments, const ConstraintType& kind) {
    Scene& scene = session.scene();
    const Result<std::vector<Node*>> found = named_or_selected(session, arguments.names());
    if (!found) return found.error();
    std::vector<Node*> targets = *found;
    if (targets.size() < 2) return Error{std::string(kind.type) + " needs a target and what it constrains"};
    for (const Node* node : targets) {
        if (!node->type().is_transform()) return Error{"'" + node->name() + "' is no transform"};
    }
    Node& constrained = *targets.back();
    targets.pop_back();
    const Result<Node*> made = ConstraintMaker(scene, kind, constrained, arguments).make(targets);
    if (!made) return made.error();
    scene.selection.clear();
    scene.selection.add(scene.item(**made));
    return texts_result({scene.unique_name_of(**made)});
}

Result<CommandResult> point_constraint(Session& session, const Arguments& arguments) {
    return constrain(session, arguments, point_kind());
}
Result<CommandResult> orient_constraint(Session& session, const Arguments& arguments) {
    return constrain(session, arguments, orient_kind());
}
Result<CommandResult> parent_constraint(Session& session, const Arguments& arguments) {
    return constrain(session, arguments, parent_kind());
}

constexpr CommandRow constraint_rows[] = {
    {"pointConstraint", "mo,maintainOffset w,weight=d n,name=s o,offset=ddd sk,skip=s*", point_constraint},
    {"orientConstraint", "mo,maintainOffset w,weight=d n,name=s o,offset=ddd sk,skip=s*", orient_constraint},
    {"parentConstraint", "mo,maintainOffset w,weight=d n,name=s st,skipTranslate=s* sr,skipRotate=s*",
     parent_constraint},
};

} // namespace

std::span<const CommandRow> constraint_commands() {
    return constraint_rows;
}

} // namespace headless
