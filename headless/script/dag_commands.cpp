// Making and moving nodes of the DAG, and asking who stands and is connected where.
#include "headless/script/commands.h"

#include <maya/MFnTransform.h>
#include <maya/MMatrix.h>

#include <algorithm>
#include <unordered_set>

namespace headless {
namespace {

void select_only(Scene& scene, const std::vector<Node*>& nodes) {
    scene.selection.clear();
    for (const Node* node : nodes) scene.selection.add(scene.item(*node));
}

// Gives a transform the local matrix with which it stands as `world` says.
void place_in_world(Scene& scene, Node& node, const Matrix& world) {
    const Matrix above = EvaluationContext(scene).parent_matrix(node);
    MFnTransform(Access::path(scene.path_to(node))).set(MTransformationMatrix(matrix(world * inverse(above))));
}

Result<void> put_under(Scene& scene, Node& child, Node* above, bool keep_place) {
    keep_place = keep_place && child.type().is_transform();
    const Matrix world = keep_place ? scene.world_matrix(child) : Matrix();
    if (Result<void> done = scene.reparent(child, above); !done) return done;
    if (keep_place && scene.world_matrix(child) != world) place_in_world(scene, child, world);
    return {};
}

// The lowest node that all of them stand under; null for nodes outside the DAG.
Node* lowest_above(const std::vector<Node*>& nodes) {
    const auto stands_under = [](const Node* node, const Node* above) {
        while (node && node != above) node = node->parent();
        return node != nullptr;
    };
    Node* above = nodes.front()->parent();
    for (const Node* node : nodes) {
        while (above && !stands_under(node->parent(), above)) above = above->parent();
    }
    return above;
}

Result<CommandResult> joint(Session& session, const Arguments& arguments) {
    Scene& scene = session.scene();
    const bool edit = arguments.edit() || arguments.query();
    Node* node = nullptr;
    if (edit || arguments.count() > 0) {
        const Result<std::vector<Node*>> found = named_or_selected(session, arguments.names());
        if (!found) return found.error();
        node = found->front();
        if (!node->type().is_joint()) return Error{"'" + node->name() + "' is no joint"};
    } else {
        const auto& selected = scene.selection.items();
        Node* above = selected.empty() ? nullptr : scene.find(selected.back().node);
        if (above && !above->type().is_transform()) above = nullptr;
        const std::string* name = arguments.text("n");
        const Result<Node*> made = scene.create_node("joint", name ? *name : std::string(), above);
        if (!made) return made.error();
        node = *made;
    }
    const double degree = scene.angle_unit.radians, unit = scene.linear_unit.centimetres;
    const TransformAttributes& ids = TransformAttributes::ids();
    if (arguments.query()) {
        if (arguments.has("o")) {
            const Vector3 orient = scene.evaluate(node->plug(ids.joint_orient)).vector() * (1 / degree);
            return numbers_result({orient.x, orient.y, orient.z});
        }
        if (arguments.has("n")) return text_result(scene.unique_name_of(*node));
        if (arguments.has("s")) {
            const Vector3 scale = scene.evaluate(node->plug(ids.scale)).vector();
            return numbers_result({scale.x, scale.y, scale.z});
        }
        if (arguments.has("ssc"))
            return integer_result(scene.evaluate(node->plug(ids.segment_scale_compensate)).boolean() ? 1 : 0);
        if (arguments.has("rad")) return number_result(scene.evaluate(node->find_plug("radius")).number());
        const Vector3 at = arguments.has("r") ? scene.evaluate(node->plug(ids.translate)).vector()
                                              : scene.world_matrix(*node).translation();
        return numbers_result({at.x / unit, at.y / unit, at.z / unit});
    }
    std::vector<std::pair<AttributeId, Value>> values;
    if (const auto orient = arguments.vector("o")) values.emplace_back(ids.joint_orient, *orient * degree);
    if (const auto scale = arguments.vector("s")) values.emplace_back(ids.scale, *scale);
    if (const auto radius = arguments.number("rad")) values.emplace_back(node->find_attribute("radius"), *radius);
    if (const auto compensate = arguments.truth("ssc")) values.emplace_back(ids.segment_scale_compensate, *compensate);
    if (const auto at = arguments.vector("p")) {
        const Vector3 point = *at * unit;
        const Matrix above = EvaluationContext(scene).parent_matrix(*node);
        values.emplace_back(ids.translate, arguments.has("r") ? point : transform_point(point, inverse(above)));
    }
    for (const auto& [id, value] : values) {
        if (Result<void> done = scene.set(node->plug(id), value); !done) return done.error();
    }
    if (!edit && arguments.count() == 0) select_only(scene, {node});
    return text_result(scene.unique_name_of(*node));
}

Result<CommandResult> group(Session& session, const Arguments& arguments) {
    Scene& scene = session.scene();
    std::vector<Node*> members;
    if (!arguments.has("em")) {
        const Result<std::vector<Node*>> found = named_or_selected(session, arguments.names());
        if (!found) return found.error();
        members = *found;
    }
    Node* above = nullptr;
    if (const std::string* name = arguments.text("p")) {
        const Result<Node*> found = scene.find_node(*name);
        if (!found) return found.error();
        above = *found;
    } else if (!members.empty() && !arguments.has("w")) {
        above = lowest_above(members);
    }
    for (const Node* member : members) {
        if (!member->type().is_dag() || member->type().is_shape())
            return Error{"'" + member->name() + "' can't be grouped"};
    }
    const std::string* name = arguments.text("n");
    const Result<Node*> made =
        scene.create_node("transform", name ? *name : "group1", above && above->is_world() ? nullptr : above);
    if (!made) return made.error();
    for (Node* member : members) {
        if (Result<void> done = put_under(scene, *member, *made, !arguments.has("r")); !done) return done.error();
    }
    select_only(scene, {*made});
    return text_result(scene.unique_name_of(**made));
}

Result<CommandResult> space_locator(Session& session, const Arguments& arguments) {
    Scene& scene = session.scene();
    const std::string* name = arguments.text("n");
    const Result<Node*> made = scene.create_node("locator", name ? *name : std::string());
    if (!made) return made.error();
    Node& transform = *(*made)->parent();
    if (const auto at = arguments.vector("p"))
        (void)scene.set(transform.plug(TransformAttributes::ids().translate), *at * scene.linear_unit.centimetres);
    select_only(scene, {&transform});
    return texts_result({scene.unique_name_of(transform)});
}

Result<CommandResult> parent(Session& session, const Arguments& arguments) {
    Scene& scene = session.scene();
    std::vector<std::string> names = arguments.names();
    if (names.empty()) {
        for (const SelectionItem& item : scene.selection.items()) names.push_back(name_of(scene, item));
    }
    const bool to_world = arguments.has("w");
    if (names.size() < (to_world ? 1u : 2u)) return Error{"parent needs a child and a parent"};
    Node* above = nullptr;
    if (!to_world) {
        const Result<Node*> found = scene.find_node(names.back());
        if (!found) return found.error();
        above = *found;
        names.pop_back();
    }
    const Result<std::vector<Node*>> children = named_or_selected(session, names);
    if (!children) return children.error();
    std::vector<std::string> out;
    for (Node* child : *children) {
        // A child stays where it is in the world unless it is told to keep its own values.
        const Result<void> done = arguments.has("add") ? scene.add_parent(*child, above ? *above : scene.world())
                                                       : put_under(scene, *child, above, !arguments.has("r"));
        if (!done) return done.error();
        out.push_back(scene.unique_name_of(*child));
    }
    select_only(scene, *children);
    return texts_result(std::move(out));
}

// Below a node: children, or all descendants with the deepest first as the host lists them.
std::vector<Node*> below(const Node& node, bool all) {
    if (!all) return node.children();
    std::vector<Node*> out;
    std::unordered_set<const Node*> seen;
    std::vector<Node*> open(node.children());
    while (!open.empty()) {
        Node* at = open.back();
        open.pop_back();
        if (!seen.insert(at).second) continue;
        out.push_back(at);
        open.insert(open.end(), at->children().begin(), at->children().end());
    }
    std::ranges::reverse(out);
    return out;
}

Result<CommandResult> list_relatives(Session& session, const Arguments& arguments) {
    Scene& scene = session.scene();
    const Result<std::vector<Node*>> nodes = named_or_selected(session, arguments.names());
    if (!nodes) return nodes.error();
    const std::vector<std::string> types = arguments.texts("typ");
    std::vector<std::string> out;
    for (const Node* node : *nodes) {
        std::vector<Node*> relatives;
        if (arguments.has("p") || arguments.has("ap")) {
            for (Node* above : node->parents()) {
                if (!above->is_world()) relatives.push_back(above);
                if (!arguments.has("ap")) break;
            }
        } else {
            relatives = below(*node, arguments.has("ad"));
        }
        for (const Node* relative : relatives) {
            if (arguments.has("s") && !relative->type().is_shape()) continue;
            const auto derived = [&](const std::string& type) { return relative->type().derives_from(type); };
            if (!types.empty() && std::ranges::none_of(types, derived)) continue;
            out.push_back(name_of(scene, scene.item(*relative), arguments.has("f")));
        }
    }
    return texts_result(std::move(out));
}

bool within(const Plug& asked, const PlugKey& connected) {
    if (!asked) return true;
    for (Plug at{asked.node, connected}; at; at = at.parent()) {
        if (at == asked) return true;
        if (asked.is_array() && at.key.attribute == asked.key.attribute) return true;
    }
    return false;
}

Result<CommandResult> list_connections(Session& session, const Arguments& arguments) {
    Scene& scene = session.scene();
    const bool sources = arguments.truth("s").value_or(true), destinations = arguments.truth("d").value_or(true);
    const bool plugs = arguments.truth("p").value_or(false), pairs = arguments.truth("c").value_or(false);
    const std::string* type = arguments.text("t");
    std::vector<std::string> out;
    const auto add = [&](const Plug& mine, const Plug& other) {
        if (type && !other.node->type().derives_from(*type)) return;
        if (pairs) out.push_back(scene.unique_name_of(*mine.node) + mine.path());
        const std::string name = scene.unique_name_of(*other.node);
        out.push_back(plugs ? name + other.path() : name);
    };
    std::vector<std::string> names = arguments.names();
    if (names.empty()) {
        for (const SelectionItem& item : scene.selection.items()) names.push_back(name_of(scene, item));
    }
    for (const std::string& name : names) {
        const Result<std::vector<SelectionItem>> found = scene.resolve(name);
        if (!found) return found.error();
        for (const SelectionItem& item : *found) {
            Node& node = *scene.find(item.node);
            const Plug asked = item.plug ? Plug{&node, *item.plug} : Plug();
            for (const auto& [destination, source] : node.inputs()) {
                if (sources && within(asked, destination)) add({&node, destination}, source);
            }
            for (const auto& [source, destination] : node.outputs()) {
                if (destinations && within(asked, source)) add({&node, source}, destination);
            }
        }
    }
    return texts_result(std::move(out));
}

constexpr CommandRow dag_rows[] = {
    {"joint",
     "n,name=s p,position=ddd o,orientation=ddd rad,radius=d r,relative a,absolute ssc,scaleCompensate=b "
     "s,scale=ddd",
     joint},
    {"group", "n,name=s em,empty w,world p,parent=s r,relative a,absolute", group},
    {"spaceLocator", "n,name=s p,position=ddd r,relative a,absolute", space_locator},
    {"parent", "w,world r,relative a,absolute s,shape add,addObject nc,noConnections", parent},
    {"listRelatives",
     "p,parent ap,allParents c,children ad,allDescendents s,shapes f,fullPath pa,path typ,type=s* ni,noIntermediate",
     list_relatives},
    {"listConnections",
     "s,source=b d,destination=b p,plugs=b c,connections=b t,type=s et,exactType=b "
     "scn,skipConversionNodes=b sh,shapes=b",
     list_connections},
};

} // namespace

std::span<const CommandRow> dag_commands() {
    return dag_rows;
}

} // namespace headless
