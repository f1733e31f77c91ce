#pragma once

#include "headless/graph/dag_path.h"
#include "headless/graph/evaluation.h"
#include "headless/graph/names.h"
#include "headless/graph/scene_reference.h"
#include "headless/graph/selection.h"
#include "headless/graph/units.h"

#include <set>

namespace headless {

class UniqueNames;

/// Levels of the DAG below the world. Deeper parenting is refused.
inline constexpr int max_dag_depth = 4096;
/// Ways to nodes that instances may make in one scene. More are refused.
inline constexpr std::int64_t max_instance_paths = 1'000'000;

/// Everything a session works on: nodes, their names, connections and places in the DAG, the selection, the
/// clock and the units. A new scene holds the default nodes (time1, the four cameras, lambert1 and their like).
class Scene {
public:
    Scene();
    ~Scene();
    Scene(const Scene&) = delete;
    Scene& operator=(const Scene&) = delete;

    // Nodes.
    /// Makes a node. An unknown type is taken as it is if its name is a legal one, in the DAG when it has a parent. An
    /// empty name becomes the type's name and a number; a taken one is counted on. A transform without a parent goes
    /// under the world; a shape without one gets a transform of its own. Refused under a parent that can have no child.
    Result<Node*> create_node(std::string_view type, std::string_view name = {}, Node* parent = nullptr);
    /// Removes a node with its connections, its selection entries and all that stands under it alone.
    void remove_node(Node& node);
    Node* find(NodeHandle handle) const;
    Node& world() const { return *world_; }
    Node& time_node() const { return *time_node_; }
    /// Every node but the world, in order of creation.
    std::vector<Node*> nodes() const;
    std::size_t node_count() const { return alive_; }

    // Names.
    /// Gives the node that name, made legal and unique; the name it got. Refused when nothing legal is left, and for a
    /// node that every scene has.
    Result<std::string> rename(Node& node, std::string_view wanted);
    /// What a name stands for: "name", "ns:name", "|a|b", "b|c"; with "*" and "?" any number of nodes; behind a
    /// "." a plug or components. Unknown, or without wildcards more than one, is an error.
    Result<std::vector<SelectionItem>> resolve(std::string_view name) const;
    /// Exactly one node by name or path.
    Result<Node*> find_node(std::string_view name) const;
    /// The node of that name that every scene has, whatever others share it; null when there is none.
    Node* default_node(std::string_view name) const;
    Result<DagPath> find_path(std::string_view name) const;
    /// "node.attribute[0].child".
    Result<Plug> find_plug(std::string_view name) const;
    /// The shortest name that `resolve` takes back to the node: its name, or as much of its path as it needs.
    std::string unique_name_of(const Node& node) const;
    const std::set<std::string, std::less<>>& namespaces() const { return namespaces_; }
    void add_namespace(std::string_view name); ///< with all namespaces around it
    /// Forgets a namespace and those in it; nodes that are still in one keep their names.
    void remove_namespace(std::string_view name);

    // The DAG.
    /// Hangs `child` under `parent` (the world for null) at a place among its children (-1 for the last), away
    /// from its former parents. Attributes keep their values. A name taken there is counted on. A node that every scene
    /// has stays where it is.
    Result<void> reparent(Node& child, Node* parent, int position = -1);
    /// Adds a parent, which makes the child an instance.
    Result<void> add_parent(Node& child, Node& parent, int position = -1);
    Result<void> remove_parent(Node& child, Node& parent); ///< refused for the last one
    DagPath path_to(const Node& node) const;               ///< the first of its paths
    std::vector<DagPath> paths_to(const Node& node) const;
    /// The path that goes on from a path's leaf to a child of it.
    DagPath extended(const DagPath& path, const Node& child) const;
    /// The nodes from the top level to the leaf; empty when the path no longer exists.
    std::vector<Node*> nodes_on(const DagPath& path) const;
    std::string full_name(const DagPath& path) const;    ///< "|a|b"; "" for the world
    std::string partial_name(const DagPath& path) const; ///< as much of it as is unique
    /// How many paths a node has, and the place of one among them; both without making them each time.
    int instance_count(const Node& node) const;
    int instance_number(const DagPath& path) const;
    DagPath instance_path(const Node& node, int number) const; ///< null beyond the last
    bool has_instances() const { return extra_parents_ > 0; }

    // Values and connections.
    /// Sets a plug as a script does: refused when it is locked or driven by anything but an animation curve. On
    /// a plug that a curve drives the value holds until the clock next moves. The time node's outTime is the clock.
    Result<void> set(const Plug& plug, const Value& value);
    Result<void> check_settable(const Plug& plug) const; ///< why `set` would refuse
    /// Connects a source to a destination; an array destination takes its next free element. A destination that
    /// has a source is refused unless `force`.
    Result<void> connect(const Plug& source, const Plug& destination, bool force = false);
    bool disconnect(const Plug& destination);
    /// Whether a value set on a driven plug holds for now in place of its source's.
    bool is_overridden(const Plug& plug) const;
    Value evaluate(const Plug& plug) { return EvaluationContext(*this).evaluate(plug); }
    Matrix local_matrix(Node& transform) { return EvaluationContext(*this).local_matrix(transform); }
    Matrix world_matrix(Node& node) { return EvaluationContext(*this).world_matrix(node); }
    /// Rises with every edit and every move of the clock; what was worked out under an older one is stale.
    std::uint64_t generation() const { return generation_; }
    void touch() { ++generation_; }
    /// What went wrong in evaluations since last asked, each plug once.
    std::vector<std::string> take_evaluation_errors();
    void report_evaluation_error(const std::string& message);
    void forget_evaluation_errors(); ///< so that each is reported once more

    // The selection.
    SelectionList selection;
    SelectionItem item(const Node& node) const; ///< the node as an entry, by its first path

    // Time, in seconds.
    double current_time() const { return time_; }
    void set_current_time(double seconds); ///< a time that isn't finite changes nothing
    /// Rises with each move of the clock, also to where it is.
    std::uint64_t clock_moves() const { return clock_moves_; }
    struct Playback {
        double min, max, animation_start, animation_end;
    };
    Playback playback{1.0 / 24, 24.0 / 24, 1.0 / 24, 48.0 / 24};
    TimeUnit time_unit;
    LinearUnit linear_unit;
    AngleUnit angle_unit;

    /// Files that the scene refers to and that aren't part of it: not to be loaded, or not there.
    std::vector<SceneReference> references;

    std::string file_name; ///< full, with forward slashes; empty for an untitled scene
    bool modified = false;

private:
    friend class EvaluationContext;
    friend class Node;

    Node& make(const NodeType& type);
    void add_default_nodes();
    void attach(Node& child, Node& parent, int position);
    void detach(Node& child, Node& parent);
    void drop_connections(Node& node);
    void destroy(Node& node);
    void add_default_cameras();
    static std::string with_shape_suffix(std::string_view transform_name);
    Result<void> check_parenting(const Node& child, const Node& parent) const;
    Result<void> add_new(const Node& child, const Node& parent);
    Result<void> add_ways(const Node& child, std::int64_t further);
    void give_name(Node& node, const std::string& name);
    void make_name_fit(Node& child, Node& parent);
    bool path_fits(const std::vector<Node*>& nodes, const std::vector<std::string_view>& names) const;
    void add_matching_paths(Node& node, const std::vector<std::string_view>& names,
                            std::vector<SelectionItem>& out) const;
    std::vector<SelectionItem> match(std::string_view path) const;
    void walk_down(Node& from, DagPath path, std::span<const std::string_view> names,
                   std::vector<SelectionItem>& out) const;
    std::string name_among_namesakes(const std::vector<Node*>& nodes) const;
    static bool has_one_path(const Node& node);
    bool stands_under(const Node& child, const Node& parent) const;
    void forget_paths();
    void note_namespaces(std::string_view name);
    void hold_until_clock_moves(const Plug& plug);

    std::vector<std::unique_ptr<Node>> slots_;
    std::size_t alive_ = 0;
    Node* world_ = nullptr;
    Node* time_node_ = nullptr;
    NameIndex names_;
    std::set<std::string, std::less<>> namespaces_;
    // All nodes are named at once when names asked one by one have cost as much; until a name or a place changes.
    mutable std::unique_ptr<const UniqueNames> unique_names_;
    mutable std::size_t namesakes_seen_ = 0;
    // The paths of nodes that have many, for who asks for one after the other; as long.
    struct Instances {
        std::vector<DagPath> paths;
        std::unordered_map<DagPath, int, DagPathHash> numbers;
    };
    const Instances& instances_of(const Node& node) const;
    mutable std::unordered_map<const Node*, Instances> instances_;
    std::int64_t extra_parents_ = 0;
    std::int64_t ways_ = 0;    // paths to all nodes, kept while there are instances; never too few
    bool ways_shrank_ = false; // since they were counted, so that they may be fewer
    // Nodes that turn joints, the joints as assigned to them, and what an assignment was made at: the count rises
    // with each edit of such a node and each node that leaves its place.
    std::vector<Node*> turners_;
    std::vector<NodeHandle> turned_;
    std::uint64_t turner_edits_ = 0, turners_assigned_ = 0;
    double time_ = 1.0 / 24;
    std::uint64_t generation_ = 1;
    std::uint64_t clock_moves_ = 1;
    int evaluation_depth_ = 0;
    std::vector<std::string> evaluation_errors_;
    std::set<std::string> reported_;
};

} // namespace headless
