// Nodes and their names.
#include "headless/script/commands.h"

#include <algorithm>

namespace headless {
namespace {

void select_only(Scene& scene, const Node& node) {
    scene.selection.clear();
    scene.selection.add(scene.item(node));
}

Result<CommandResult> create_node(Session& session, const Arguments& arguments) {
    Scene& scene = session.scene();
    if (arguments.count() != 1) return Error{"createNode needs a type"};
    const std::string* name = arguments.text("n");
    const std::string* parent_name = arguments.text("p");
    Node* parent = nullptr;
    if (parent_name) {
        const Result<Node*> found = scene.find_node(*parent_name);
        if (!found) return found.error();
        parent = *found;
    }
    if (arguments.has("s") && name) {
        const Result<Node*> there = scene.find_node(*name);
        if (there && (*there)->type().name() == arguments[0]) return text_result(scene.unique_name_of(**there));
    }
    if (!NodeTypes::all().find(arguments[0])) session.warning("Unrecognized node type '" + arguments[0] + "'");
    const Result<Node*> made = scene.create_node(arguments[0], name ? *name : std::string(), parent);
    if (!made) return made.error();
    if (!arguments.has("ss")) select_only(scene, **made);
    return text_result(scene.unique_name_of(**made));
}

Result<CommandResult> rename(Session& session, const Arguments& arguments) {
    Scene& scene = session.scene();
    if (arguments.has("uid")) return CommandResult();
    if (arguments.count() == 0 || arguments.count() > 2) return Error{"rename needs a node and its new name"};
    std::vector<std::string> names = arguments.names();
    const std::string wanted = names.back();
    names.pop_back();
    const Result<std::vector<Node*>> nodes = named_or_selected(session, names);
    if (!nodes) return nodes.error();
    if (nodes->size() != 1) return Error{"More than one object matches name: " + (names.empty() ? "" : names[0])};
    const Result<std::string> given = scene.rename(*nodes->front(), wanted);
    if (!given) return given.error();
    return text_result(scene.unique_name_of(*nodes->front()));
}

Result<CommandResult> remove(Session& session, const Arguments& arguments) {
    Scene& scene = session.scene();
    const Result<std::vector<Node*>> nodes = named_or_selected(session, arguments.names());
    if (!nodes) return nodes.error();
    std::vector<NodeHandle> handles;
    for (Node* node : *nodes) {
        if (node->default_node()) return Error{"'" + node->name() + "' can't be deleted"};
        if (!arguments.has("cn")) {
            handles.push_back(node->handle());
            continue;
        }
        for (Node* child : node->children()) {
            if (child->type().derives_from("constraint")) handles.push_back(child->handle());
        }
    }
    for (const NodeHandle handle : handles) {
        if (Node* node = scene.find(handle)) scene.remove_node(*node);
    }
    return CommandResult();
}

Result<CommandResult> obj_exists(Session& session, const Arguments& arguments) {
    if (arguments.count() != 1) return Error{"objExists needs a name"};
    const auto found = session.scene().resolve(arguments[0]);
    return integer_result(found || found.error().message.starts_with("More than one") ? 1 : 0);
}

Result<CommandResult> node_type(Session& session, const Arguments& arguments) {
    if (arguments.count() != 1) return Error{"nodeType needs a node"};
    const std::string name = arguments[0].substr(0, arguments[0].find('.'));
    const Result<Node*> node = session.scene().find_node(name);
    if (!node) return node.error();
    if (!arguments.has("i")) return text_result((*node)->type().name());
    std::vector<std::string> types;
    for (const NodeType* type = &(*node)->type(); type; type = type->base()) types.push_back(type->name());
    std::ranges::reverse(types);
    return texts_result(std::move(types));
}

// Namespaces: the nodes of one, its children included.
std::vector<Node*> nodes_in(Scene& scene, const std::string& name_space) {
    std::vector<Node*> out;
    for (Node* node : scene.nodes()) {
        if (node->name().starts_with(name_space + ":")) out.push_back(node);
    }
    return out;
}

// Gives the nodes of one namespace another in its place; "" is the root.
Result<void> move_namespace(Scene& scene, const std::string& from, std::string to) {
    if (!to.empty()) to += ':';
    for (Node* node : nodes_in(scene, from)) {
        std::string name = to;
        name.append(node->name(), from.size() + 1, std::string::npos);
        const Result<std::string> renamed = scene.rename(*node, name);
        if (!renamed) return renamed.error();
    }
    return {};
}

Result<CommandResult> name_space(Session& session, const Arguments& arguments) {
    Scene& scene = session.scene();
    const auto plain = [](const std::string& name) { return name.starts_with(':') ? name.substr(1) : name; };
    if (const std::string* name = arguments.text("ex"))
        return integer_result(*name == ":" || scene.namespaces().contains(plain(*name)) ? 1 : 0);
    if (arguments.has("ex") && arguments.count() == 1)
        return integer_result(arguments[0] == ":" || scene.namespaces().contains(plain(arguments[0])) ? 1 : 0);
    if (const std::string* name = arguments.text("add")) {
        if (scene.namespaces().contains(plain(*name))) return Error{"The namespace '" + *name + "' already exists"};
        scene.add_namespace(*name);
        return text_result(plain(*name));
    }
    if (const std::string* name = arguments.text("rm")) {
        const std::string from = plain(*name);
        if (!scene.namespaces().contains(from)) return Error{"The namespace '" + *name + "' does not exist"};
        const bool keeps = arguments.has("mnr") || arguments.has("mnp");
        if (!keeps && !nodes_in(scene, from).empty()) return Error{"The namespace '" + *name + "' is not empty"};
        const std::size_t colon = from.rfind(':');
        const bool to_parent = arguments.has("mnp") && colon != std::string::npos;
        const Result<void> moved = move_namespace(scene, from, to_parent ? from.substr(0, colon) : "");
        if (!moved) return moved.error();
        scene.remove_namespace(from);
        return CommandResult();
    }
    const std::vector<std::string> pair = arguments.texts("mv");
    if (pair.size() == 2) {
        if (!scene.namespaces().contains(plain(pair[0])))
            return Error{"The namespace '" + pair[0] + "' does not exist"};
        const Result<void> moved = move_namespace(scene, plain(pair[0]), plain(pair[1]));
        return moved ? Result<CommandResult>(CommandResult()) : moved.error();
    }
    return Error{"namespace needs -add, -exists, -moveNamespace or -removeNamespace"};
}

constexpr CommandRow node_rows[] = {
    {"createNode", "n,name=s p,parent=s s,shared ss,skipSelect", create_node},
    {"rename", "is,ignoreShape uid,uuid", rename},
    {"delete", "cn,constraints ch,constructionHistory", remove},
    {"objExists", "", obj_exists},
    {"nodeType", "i,inherited api,apiType", node_type},
    {"namespace",
     "add,add=s ex,exists=s rm,removeNamespace=s mv,moveNamespace=ss mnr,mergeNamespaceWithRoot "
     "mnp,mergeNamespaceWithParent f,force",
     name_space},
};

} // namespace

std::span<const CommandRow> node_commands() {
    return node_rows;
}

} // namespace headless
