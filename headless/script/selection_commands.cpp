// select and ls.
#include "headless/script/commands.h"

#include <algorithm>
#include <unordered_set>

namespace headless {
namespace {

// Everything under the entries, themselves first.
void add_hierarchy(Scene& scene, std::vector<SelectionItem>& items) {
    std::vector<SelectionItem> out;
    for (const SelectionItem& item : items) {
        if (!item.path) continue;
        std::vector<DagPath> open{item.path};
        while (!open.empty()) {
            const DagPath path = open.back();
            open.pop_back();
            const Node* node = scene.find(path.leaf());
            if (!node) continue;
            out.push_back({path, path.leaf(), {}, {}});
            for (auto child = node->children().rbegin(); child != node->children().rend(); ++child)
                open.push_back(scene.extended(path, **child));
        }
    }
    items = std::move(out);
}

// In place of a set its members, unless the set itself is meant.
void expand_sets(Scene& scene, std::vector<SelectionItem>& items) {
    std::vector<SelectionItem> out;
    for (const SelectionItem& item : items) {
        const Node* node = scene.find(item.node);
        if (item.plug || !node->type().derives_from("objectSet")) {
            out.push_back(item);
            continue;
        }
        const AttributeId dag_members = node->find_attribute("dagSetMembers");
        const AttributeId other_members = node->find_attribute("dnSetMembers");
        for (const auto& [destination, source] : node->inputs()) {
            if (destination.attribute == dag_members || destination.attribute == other_members)
                out.push_back(scene.item(*source.node));
        }
    }
    items = std::move(out);
}

Result<std::vector<SelectionItem>> items_to_select(Session& session, const Arguments& arguments) {
    Scene& scene = session.scene();
    std::vector<SelectionItem> items;
    for (std::size_t i = 0; i < arguments.count(); ++i) {
        Result<std::vector<SelectionItem>> found = scene.resolve(arguments[i]);
        if (!found) return found.error();
        if (items.empty())
            items = std::move(*found);
        else
            items.insert(items.end(), found->begin(), found->end());
    }
    if (arguments.count() == 0) items = scene.selection.items();
    if (arguments.has("hi")) {
        add_hierarchy(scene, items);
    } else if (!arguments.has("ne")) {
        const auto is_set = [&](const SelectionItem& item) {
            return !item.path && scene.find(item.node)->type().derives_from("objectSet");
        };
        if (std::ranges::any_of(items, is_set)) expand_sets(scene, items);
    }
    return items;
}

std::vector<SelectionItem> top_level(Scene& scene) {
    std::vector<SelectionItem> out;
    for (const Node* node : scene.world().children()) {
        if (!node->default_node()) out.push_back(scene.item(*node));
    }
    return out;
}

Result<CommandResult> select(Session& session, const Arguments& arguments) {
    SelectionList& selection = session.scene().selection;
    if (arguments.has("cl")) {
        selection.clear();
        return CommandResult();
    }
    const bool all = arguments.has("all") || arguments.has("ado");
    if (arguments.count() == 0 && !all && !arguments.has("hi"))
        return Error{"No valid objects supplied to 'select' command."};
    const Result<std::vector<SelectionItem>> items =
        all ? Result(top_level(session.scene())) : items_to_select(session, arguments);
    if (!items) return items.error();
    if (arguments.has("d")) {
        for (const SelectionItem& item : *items) selection.remove(item);
        return CommandResult();
    }
    if (arguments.has("af")) {
        for (auto item = items->rbegin(); item != items->rend(); ++item) selection.add_first(*item);
        return CommandResult();
    }
    const bool toggle = arguments.has("tgl");
    if (!toggle && !arguments.has("add")) selection.clear();
    for (const SelectionItem& item : *items) {
        if (!toggle || !selection.remove(item)) selection.add(item);
    }
    return CommandResult();
}

// What ls asks of a node.
struct Filter {
    std::vector<std::string> types, exact_types;
    bool dag, transforms, shapes, assemblies, cameras;

    bool accepts(const Node& node) const {
        if (dag && !node.type().is_dag()) return false;
        if (transforms && !node.type().is_transform()) return false;
        if (shapes && !node.type().is_shape()) return false;
        if (assemblies && !(node.type().is_transform() && node.parent() && node.parent()->is_world())) return false;
        if (cameras && !node.type().derives_from("camera")) return false;
        const auto derived = [&](const std::string& type) { return node.type().derives_from(type); };
        const auto same = [&](const std::string& type) { return node.type().name() == type; };
        if (!types.empty() && std::ranges::none_of(types, derived)) return false;
        return exact_types.empty() || std::ranges::any_of(exact_types, same);
    }
};

Result<CommandResult> ls(Session& session, const Arguments& arguments) {
    Scene& scene = session.scene();
    std::vector<SelectionItem> items;
    if (arguments.has("sl")) {
        items = scene.selection.items();
    } else if (arguments.count() == 0) {
        for (const Node* node : scene.nodes()) items.push_back(scene.item(*node));
    }
    for (std::size_t i = 0; i < arguments.count(); ++i) {
        // A name that fits nothing lists nothing; one that fits several lists them all.
        if (const auto found = scene.resolve(arguments[i])) {
            items.insert(items.end(), found->begin(), found->end());
        } else if (arguments[i].find_first_of("|.") == std::string::npos) {
            for (Node* node : scene.nodes()) {
                if (node->name() == arguments[i]) items.push_back(scene.item(*node));
            }
        }
    }
    if (arguments.has("dag") && (arguments.count() > 0 || arguments.has("sl"))) add_hierarchy(scene, items);
    const Filter filter{arguments.texts("typ"), arguments.texts("et"), arguments.has("dag"), arguments.has("tr"),
                        arguments.has("s"),     arguments.has("as"),   arguments.has("ca")};
    std::vector<std::string> names;
    std::unordered_set<std::string> seen;
    for (const SelectionItem& item : items) {
        const Node* node = scene.find(item.node);
        if (!node || !filter.accepts(*node)) continue;
        std::string name = name_of(scene, item, arguments.has("l"));
        if (seen.insert(name).second) names.push_back(std::move(name));
    }
    return texts_result(std::move(names));
}

constexpr CommandRow selection_rows[] = {
    {"select",
     "add,add af,addFirst all,all ado,allDagObjects adn,allDependencyNodes cl,clear cc,containerCentric d,deselect "
     "hi,hierarchy ne,noExpand r,replace sym,symmetry tgl,toggle vis,visible",
     select},
    {"ls",
     "sl,selection l,long typ,type=s* et,exactType=s* dag,dagObjects tr,transforms s,shapes as,assemblies ca,cameras "
     "ap,allPaths fl,flatten sn,shortNames r,recursive=b o,objectsOnly",
     ls},
};

} // namespace

std::span<const CommandRow> selection_commands() {
    return selection_rows;
}

} // namespace headless
