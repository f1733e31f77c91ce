#include "tools/vor2/cli/default_nodes.h"

namespace tool {

using headless::Node;

namespace {

template<class WANTED>
bool holds(const Node& top, WANTED wanted) {
    std::vector<const Node*> open{&top};
    while (!open.empty()) {
        const Node* node = open.back();
        open.pop_back();
        if (wanted(*node)) return true;
        for (const Node* child : node->children()) open.push_back(child);
    }
    return false;
}

bool is_joint(const Node& node) {
    return node.type().is_joint();
}
bool is_mesh(const Node& node) {
    return node.type().name() == "mesh";
}

} // namespace

std::vector<std::string> default_nodes(const headless::Scene& scene, bool meshes) {
    std::vector<std::string> joints, others, transforms;
    for (const Node* node : scene.world().children()) {
        if (node->default_node() || !node->type().is_transform()) continue;
        transforms.push_back("|" + node->name());
        if (holds(*node, is_joint))
            joints.push_back("|" + node->name());
        else if (meshes && holds(*node, is_mesh))
            others.push_back("|" + node->name());
    }
    if (!joints.empty()) joints.insert(joints.end(), others.begin(), others.end());
    return joints.empty() ? transforms : joints;
}

} // namespace tool
