#include "tools/vor2/default_nodes.h"

namespace tool {

using headless::Node;

namespace {

bool holds_joint(const Node& top) {
    std::vector<const Node*> open{&top};
    while (!open.empty()) {
        const Node* node = open.back();
        open.pop_back();
        if (node->type().is_joint()) return true;
        for (const Node* child : node->children()) open.push_back(child);
    }
    return false;
}

} // namespace

std::vector<std::string> default_nodes(const headless::Scene& scene) {
    std::vector<std::string> joints, transforms;
    for (const Node* node : scene.world().children()) {
        if (node->default_node() || !node->type().is_transform()) continue;
        transforms.push_back("|" + node->name());
        if (holds_joint(*node)) joints.push_back("|" + node->name());
    }
    return joints.empty() ? transforms : joints;
}

} // namespace tool
