#include "convert/gltf/skins.h"

#include "convert/gltf/meshes.h"
#include "convert/properties.h"

#include <algorithm>
#include <cmath>
#include <set>

namespace vor2::convert {
namespace {

using namespace VOR2_LOADER;

struct Influence {
    int joint; ///< place in the skin
    double weight;
};

/// The influences of each vertex, the strongest first, and the skin's joints as hierarchy indices.
struct Weights {
    std::vector<std::vector<Influence>> vertices;
    std::vector<std::size_t> joints;
    std::size_t most = 1;
    std::size_t changed = 0, unmoved = 0;
};

bool counts(const VOR2_BONE_WEIGHT_DATA& bone, std::size_t nodes) {
    return bone.bone_index >= 0 && static_cast<std::size_t>(bone.bone_index) < nodes && std::isfinite(bone.weight) &&
           bone.weight > 0;
}

std::vector<Influence> influences_of(const VOR2_WEIGHTED_MESH_VERT& vertex, const std::map<std::size_t, int>& places,
                                     std::size_t nodes) {
    std::vector<Influence> out;
    for (const VOR2_BONE_WEIGHT_DATA& bone : vertex.bone_weights) {
        if (!counts(bone, nodes)) continue;
        const int joint = places.at(static_cast<std::size_t>(bone.bone_index));
        const auto known =
            std::find_if(out.begin(), out.end(), [joint](const Influence& i) { return i.joint == joint; });
        if (known != out.end()) {
            known->weight += static_cast<double>(bone.weight);
        } else {
            out.push_back({joint, bone.weight});
        }
    }
    std::stable_sort(out.begin(), out.end(),
                     [](const Influence& a, const Influence& b) { return a.weight > b.weight; });
    return out;
}

Weights weights_of(const VOR2_WEIGHTED_MESH& mesh, std::size_t nodes, std::size_t most_influences) {
    std::set<std::size_t> used;
    for (const VOR2_WEIGHTED_MESH_VERT& vertex : mesh.vertices) {
        for (const VOR2_BONE_WEIGHT_DATA& bone : vertex.bone_weights) {
            if (counts(bone, nodes)) used.insert(static_cast<std::size_t>(bone.bone_index));
        }
    }
    Weights out;
    if (used.empty() && nodes > 0) used.insert(0);
    out.joints.assign(used.begin(), used.end());
    std::map<std::size_t, int> places;
    for (const std::size_t joint : used) places.emplace(joint, static_cast<int>(places.size()));
    for (const VOR2_WEIGHTED_MESH_VERT& vertex : mesh.vertices) {
        std::vector<Influence> influences = influences_of(vertex, places, nodes);
        if (influences.empty()) {
            ++out.unmoved;
            influences.push_back({0, 1});
        }
        double sum = 0;
        for (const Influence& influence : influences) sum += influence.weight;
        if (std::abs(sum - 1) > 1e-3) ++out.changed;
        if (most_influences > 0 && influences.size() > most_influences) influences.resize(most_influences);
        sum = 0;
        for (const Influence& influence : influences) sum += influence.weight;
        for (Influence& influence : influences) influence.weight /= sum;
        out.most = std::max(out.most, influences.size());
        out.vertices.push_back(std::move(influences));
    }
    return out;
}

/// The sets of four joints and weights. The strongest weight takes what rounding leaves of the sum.
Attributes attributes_of(GltfWork& work, const Weights& weights) {
    const std::size_t sets = (weights.most + 3) / 4;
    expect_to_fit(24.0 * static_cast<double>(sets) * static_cast<double>(weights.vertices.size()));
    Attributes out;
    for (std::size_t set = 0; set < sets; ++set) {
        std::vector<std::uint16_t> joints(4 * weights.vertices.size());
        std::vector<float> numbers(4 * weights.vertices.size());
        for (std::size_t v = 0; v < weights.vertices.size(); ++v) {
            const std::vector<Influence>& influences = weights.vertices[v];
            for (std::size_t i = 4 * set; i < std::min(4 * set + 4, influences.size()); ++i) {
                const auto rounded = static_cast<float>(influences[i].weight);
                // A weight of zero may name no joint but the first.
                joints[4 * v + i % 4] =
                    rounded > 0 ? static_cast<std::uint16_t>(influences[i].joint) : std::uint16_t{0};
                numbers[4 * v + i % 4] = rounded;
            }
            if (set > 0) continue;
            double rest = 1;
            for (std::size_t i = 1; i < influences.size(); ++i)
                rest -= static_cast<double>(static_cast<float>(influences[i].weight));
            numbers[4 * v] = static_cast<float>(rest);
        }
        out["JOINTS_" + std::to_string(set)] = work.buffers.joints(joints);
        out["WEIGHTS_" + std::to_string(set)] = work.buffers.floats(numbers, 4, Use::vertices);
    }
    return out;
}

int add_skin(GltfWork& work, const GltfScene& scene, const std::vector<std::size_t>& joints, const std::string& name) {
    tinygltf::Skin skin;
    skin.name = name;
    std::vector<float> inverses;
    for (const std::size_t joint : joints) {
        const VOR2_MATRIX_NODE& node = scene.scene.matrix_hierarchy.nodes[joint];
        Affine inverse = matrix_across(widened(node.world_matrix), Axes::mirrored, scene.axes[joint]).inverse();
        // In single precision, too, which the file has.
        const bool fits = std::all_of(&inverse.m[0][0], &inverse.m[0][0] + 12,
                                      [](double number) { return std::isfinite(static_cast<float>(number)); });
        if (!fits) {
            work.report.note("joint " + utf8_of(node.name) + " has no size where the mesh " + name +
                             " is bound to it, so that what it moves may come out wrong");
            inverse = Affine();
        }
        for (int c = 0; c < 4; ++c) {
            for (int r = 0; r < 3; ++r) inverses.push_back(static_cast<float>(inverse.m[r][c]));
            inverses.push_back(c == 3 ? 1.0F : 0.0F);
        }
        skin.joints.push_back(scene.nodes[joint]);
    }
    skin.inverseBindMatrices = work.buffers.matrices(inverses);
    work.model.skins.push_back(std::move(skin));
    return static_cast<int>(work.model.skins.size() - 1);
}

/// All joints of a skin need one node above them.
void join_roots(GltfWork& work, GltfScene& scene, const std::vector<std::size_t>& joints) {
    if (scene.parent >= 0) return;
    std::set<std::size_t> roots;
    for (std::size_t joint : joints) {
        for (int up = parent_of(scene.scene.matrix_hierarchy, joint); up >= 0;
             up = parent_of(scene.scene.matrix_hierarchy, joint))
            joint = static_cast<std::size_t>(up);
        roots.insert(joint);
    }
    if (roots.size() < 2) return;
    tinygltf::Node root;
    root.name = "root";
    std::vector<int>& top = work.model.scenes[0].nodes;
    for (std::size_t i = 0; i < scene.nodes.size(); ++i) {
        const auto place = std::find(top.begin(), top.end(), scene.nodes[i]);
        if (place == top.end() || parent_of(scene.scene.matrix_hierarchy, i) >= 0) continue;
        top.erase(place);
        root.children.push_back(scene.nodes[i]);
    }
    scene.parent = work.add_node(std::move(root));
    top.push_back(scene.parent);
}

/// The node that the skinned mesh is on: its own where that does nothing else, moved to the top, where the transform of
/// such a node is sure to be ignored; else a new one.
int node_for(GltfWork& work, const GltfScene& scene, const VOR2_WEIGHTED_MESH& mesh,
             const std::set<std::size_t>& busy) {
    const std::size_t index = mesh.matrix_index;
    tinygltf::Node node;
    node.name = utf8_of(mesh.name);
    if (index < scene.nodes.size() && !busy.contains(index)) {
        const int own = scene.nodes[index];
        tinygltf::Node& present = work.node(own);
        if (present.mesh < 0 && present.children.empty()) {
            std::vector<int>& top = work.model.scenes[0].nodes;
            const int parent = parent_of(scene.scene.matrix_hierarchy, index);
            std::vector<int>& siblings = parent >= 0 ? work.node(scene.nodes[static_cast<std::size_t>(parent)]).children
                                                     : (scene.parent >= 0 ? work.node(scene.parent).children : top);
            std::erase(siblings, own);
            std::erase(top, own);
            top.push_back(own);
            present.translation.clear();
            present.rotation.clear();
            present.scale.clear();
            return own;
        }
    }
    const int added = work.add_node(std::move(node));
    hang(work, added, -1);
    return added;
}

/// Hierarchy indices of all joints, whose nodes must stay where they are.
std::set<std::size_t> joints_of_all(const VOR2& scene) {
    std::set<std::size_t> out;
    const std::size_t nodes = scene.matrix_hierarchy.nodes.size();
    for (const OWNED<VOR2_WEIGHTED_MESH>& mesh : scene.weighted_meshes) {
        if (!mesh) continue;
        for (const std::size_t joint : weights_of(*mesh, nodes, 0).joints) out.insert(joint);
    }
    return out;
}

void write_one(GltfWork& work, GltfScene& scene, VOR2_WEIGHTED_MESH& mesh, const std::set<std::size_t>& busy) {
    const std::string name = utf8_of(mesh.name);
    const std::size_t nodes = scene.scene.matrix_hierarchy.nodes.size();
    if (nodes == 0) {
        work.report.note("mesh " + name + " is skinned to bones, and there are none: it is left out");
        return;
    }
    for (VOR2_WEIGHTED_MESH_VERT& vertex : mesh.vertices) {
        vertex.position = vertex.rest_position;
        vertex.normal = vertex.rest_normal;
    }
    const Weights weights = weights_of(mesh, nodes, work.options.most_influences);
    if (weights.joints.size() > 0xFFFF) {
        work.report.note("mesh " + name + " has more joints than glTF can number, and is left out");
        return;
    }
    if (weights.unmoved > 0)
        work.report.note("mesh " + name + ": " + std::to_string(weights.unmoved) +
                         " vertices follow no bone, and now follow " +
                         utf8_of(scene.scene.matrix_hierarchy.nodes[weights.joints[0]].name));
    if (weights.changed > weights.unmoved)
        work.report.note("mesh " + name + ": the weights of " + std::to_string(weights.changed - weights.unmoved) +
                         " vertices don't add up to 1, and are brought to that sum");
    const int index = add_mesh(work, mesh_of(work, scene, mesh, numbers_of(mesh), attributes_of(work, weights)));
    if (index < 0) return;
    join_roots(work, scene, weights.joints);
    const int node = node_for(work, scene, mesh, busy);
    work.node(node).mesh = index;
    work.node(node).skin = add_skin(work, scene, weights.joints, name);
}

} // namespace

void write_weighted_meshes(GltfWork& work, GltfScene& scene) {
    if (scene.scene.weighted_meshes.empty()) return;
    scene.scene.set_time(scene.scene.environment.time_range.start);
    const std::set<std::size_t> busy = joints_of_all(scene.scene);
    for (OWNED<VOR2_WEIGHTED_MESH>& mesh : scene.scene.weighted_meshes) {
        if (mesh) write_one(work, scene, *mesh, busy);
    }
}

} // namespace vor2::convert
