#pragma once

#include "headless/graph/dag_path.h"
#include "headless/graph/transform.h"

namespace headless {

/// Levels of computing nodes that may wait for one another. A longer chain is reported and reads stored values.
inline constexpr int max_evaluation_depth = 512;

/// Works out plugs at the scene's current time. A plug with a source asks the source; an output of a computing
/// node asks its kind's rule or function, once a plug and time; all else is what is stored.
/// A cycle, or a chain beyond the limit, is reported once (Scene::take_evaluation_errors) and its plug gives the
/// stored value, so that every question ends and has an answer.
class EvaluationContext {
public:
    explicit EvaluationContext(Scene& scene) : scene_(scene) {}

    Scene& scene() const { return scene_; }
    double time() const; ///< seconds

    Value evaluate(const Plug& plug);
    double number(const Plug& plug) { return evaluate(plug).number(); }
    Vector3 vector(const Plug& plug) { return evaluate(plug).vector(); }
    Matrix matrix(const Plug& plug);
    /// The plug that feeds this one through any number of plain connections; the plug itself when nothing does.
    Plug origin(Plug plug);

    /// A joint's values before anything turns it: all but `rotate`, which may be turned already.
    const TransformValues& unturned_values(Node& joint);
    /// What `rotate` is before a node that turns the joint acts.
    Vector3 rotate_before(Node& joint, const Node& turner);
    /// The nodes that turn a joint without a connection to it, in the order in which they act.
    std::vector<Node*> turners_of(Node& transform);

    TransformValues transform_values(Node& transform) { return current_values(transform); }
    const TransformValues& current_values(Node& transform); ///< without the copy; holds until the next question
    const Matrix& local_matrix(Node& transform);
    /// Of the node's first path; a shape's is its transform's, the world's the identity. The reference holds
    /// until the scene's time or contents change.
    const Matrix& world_matrix(Node& node);
    Matrix world_matrix(const DagPath& path);
    /// World matrix of what the node stands under; the identity for one that inherits no transform.
    Matrix parent_matrix(Node& node);
    Matrix parent_matrix(const DagPath& path);

private:
    template<typename Stops>
    Plug follow(Plug plug, Stops stops);
    bool is_turned(const Plug& plug);
    Value turned_value(const Plug& plug);
    void assign_turners();
    Value compute(const Plug& plug);
    Value by_rule(const OutputRule& rule, const Plug& plug);
    Value builtin_output(const Plug& plug);
    TransformState& state_of(Node& transform);
    bool refresh_inputs(Node& transform, TransformState& state);
    void refresh_values(Node& transform, TransformState& state);
    bool turn(Node& joint, TransformState& state);
    void hold_to_limits(TransformState& state);
    std::optional<Value> part_of_source(const Plug& plug);
    double driven_value(Node& node, const Plug& source, const PlugKey& destination, int part);
    Vector3 scale_of(Node& parent);
    bool inherits(Node& node);
    void report(const Plug& plug, std::string_view what);

    Scene& scene_;
};

} // namespace headless
