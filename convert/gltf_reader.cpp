#include "convert/gltf_reader.h"

#include "convert/gltf/checked_model.h"
#include "convert/gltf/extras.h"
#include "convert/gltf/reading.h"

#include <algorithm>
#include <cmath>

namespace vor2::convert {
namespace {

/// The file's nodes with parents before children, from the top of the scene down.
class NodeOrder {
public:
    explicit NodeOrder(const tinygltf::Model& model) : model_(model), parents_(model.nodes.size(), -1) {
        for (std::size_t i = 0; i < model.nodes.size(); ++i) {
            for (const int child : model.nodes[i].children) {
                (void)element(model.nodes, child, "node");
                int& parent = parents_[static_cast<std::size_t>(child)];
                if (parent >= 0) throw BadFile("node " + std::to_string(child) + " has two parents");
                parent = static_cast<int>(i);
            }
        }
    }

    std::vector<int> run() {
        std::vector<int> waiting;
        if (model_.scenes.empty()) {
            for (std::size_t i = 0; i < parents_.size(); ++i) {
                if (parents_[i] < 0) waiting.push_back(static_cast<int>(i));
            }
        } else {
            waiting = element(model_.scenes, std::max(model_.defaultScene, 0), "scene").nodes;
        }
        for (const int top : waiting) {
            (void)element(model_.nodes, top, "node");
            if (parents_[static_cast<std::size_t>(top)] >= 0)
                throw BadFile("node " + std::to_string(top) + " stands at the top and under another");
        }
        std::reverse(waiting.begin(), waiting.end());
        std::vector<int> order;
        while (!waiting.empty()) {
            const int node = waiting.back();
            waiting.pop_back();
            order.push_back(node);
            // With one parent for each node and none for those at the top, no way down comes round.
            if (order.size() > model_.nodes.size()) throw BadFile("a node stands at the top of the scene twice");
            const std::vector<int>& children = model_.nodes[static_cast<std::size_t>(node)].children;
            waiting.insert(waiting.end(), children.rbegin(), children.rend());
        }
        expect_no_circle();
        return order;
    }

    [[nodiscard]] int parent(int node) const { return parents_[static_cast<std::size_t>(node)]; }

private:
    /// Nodes that are each other's ancestors hang below no top, and would be lost without a word.
    void expect_no_circle() const {
        std::vector<int> seen(parents_.size(), -1);
        for (std::size_t i = 0; i < parents_.size(); ++i) {
            for (int up = static_cast<int>(i); up >= 0 && seen[static_cast<std::size_t>(up)] != static_cast<int>(i);
                 up = parents_[static_cast<std::size_t>(up)]) {
                int& mark = seen[static_cast<std::size_t>(up)];
                if (mark >= 0) break;
                mark = static_cast<int>(i);
                const int next = parents_[static_cast<std::size_t>(up)];
                if (next >= 0 && seen[static_cast<std::size_t>(next)] == static_cast<int>(i))
                    throw BadFile("node " + std::to_string(next) + " is its own ancestor");
            }
        }
    }

    const tinygltf::Model& model_;
    std::vector<int> parents_;
};

void expect_finite(const std::vector<double>& numbers, int node) {
    for (const double number : numbers) {
        if (!std::isfinite(static_cast<float>(number)))
            throw BadFile("node " + std::to_string(node) + " has a transform that isn't finite");
    }
}

Placement placement_of(const tinygltf::Node& node, int index) {
    for (const auto* numbers : {&node.matrix, &node.translation, &node.rotation, &node.scale})
        expect_finite(*numbers, index);
    if (node.matrix.size() == 16) {
        Affine matrix;
        for (std::size_t c = 0; c < 4; ++c) {
            for (std::size_t r = 0; r < 3; ++r) matrix.m[r][c] = node.matrix[4 * c + r];
        }
        return matrix.placement();
    }
    Placement out;
    if (node.translation.size() == 3) std::copy_n(node.translation.begin(), 3, out.translation.begin());
    if (node.rotation.size() == 4) std::copy_n(node.rotation.begin(), 4, out.rotation.begin());
    if (node.scale.size() == 3) std::copy_n(node.scale.begin(), 3, out.scale.begin());
    out.rotation = normalised(out.rotation);
    return out;
}

void read_nodes(GltfReading& reading) {
    NodeOrder order(reading.model);
    const std::vector<int> nodes = order.run();
    reading.places.assign(reading.model.nodes.size(), -1);
    for (const int index : nodes) {
        const tinygltf::Node& source = reading.model.nodes[static_cast<std::size_t>(index)];
        const int parent = order.parent(index);
        reading.places[static_cast<std::size_t>(index)] = static_cast<int>(reading.out.scene.nodes.size());
        ImportedNode& node = reading.out.scene.nodes.emplace_back();
        node.name = source.name.empty() ? "node_" + std::to_string(index) : source.name;
        node.parent = parent < 0 ? -1 : reading.places[static_cast<std::size_t>(parent)];
        node.placement = placement_of(source, index);
        read_properties(source.extras, node.properties);
        if (!source.extras.IsObject()) continue;
        if (source.extras.Get("text").IsString()) node.text = source.extras.Get("text").Get<std::string>();
        node.helper = source.extras.Get("helper").IsBool();
    }
}

void read_light(GltfReading& reading, int index, int place) {
    const tinygltf::Light& source = element(reading.model.lights, index, "light");
    ImportedLight light;
    light.name = source.name.empty() ? "light_" + std::to_string(index) : source.name;
    light.node = place;
    light.kind = source.type == "directional" ? ImportedLight::Kind::directional
                 : source.type == "spot"      ? ImportedLight::Kind::spot
                                              : ImportedLight::Kind::point;
    for (std::size_t i = 0; i < std::min<std::size_t>(source.color.size(), 3); ++i) light.colour[i] = source.color[i];
    light.intensity = source.intensity;
    light.range = source.range;
    light.inner_angle = source.spot.innerConeAngle;
    light.outer_angle = source.spot.outerConeAngle;
    read_properties(source.extras, light.properties);
    reading.out.scene.lights.push_back(std::move(light));
}

void read_camera(GltfReading& reading, int index, int place) {
    const tinygltf::Camera& source = element(reading.model.cameras, index, "camera");
    ImportedCamera camera;
    camera.name = source.name.empty() ? "camera_" + std::to_string(index) : source.name;
    camera.node = place;
    camera.orthographic = source.type == "orthographic";
    camera.size = camera.orthographic ? source.orthographic.ymag : source.perspective.yfov;
    camera.nearest = camera.orthographic ? source.orthographic.znear : source.perspective.znear;
    camera.furthest = camera.orthographic ? source.orthographic.zfar : source.perspective.zfar;
    camera.aspect_ratio = camera.orthographic ? 0 : source.perspective.aspectRatio;
    read_properties(source.extras, camera.properties);
    reading.out.scene.cameras.push_back(std::move(camera));
}

void read_objects(GltfReading& reading) {
    for (std::size_t i = 0; i < reading.model.nodes.size(); ++i) {
        const tinygltf::Node& node = reading.model.nodes[i];
        if (reading.places[i] < 0) continue;
        if (node.mesh >= 0) read_mesh(reading, static_cast<int>(i));
        if (node.camera >= 0) read_camera(reading, node.camera, reading.places[i]);
        const auto light = node.extensions.find("KHR_lights_punctual");
        if (light != node.extensions.end() && light->second.IsObject() && light->second.Get("light").IsInt())
            read_light(reading, light->second.Get("light").GetNumberAsInt(), reading.places[i]);
    }
}

/// What the writer left of the scene that a file was made from.
void read_facts(const tinygltf::Model& model, ImportedScene& scene) {
    if (model.scenes.empty()) return;
    const tinygltf::Value& facts = model.scenes[static_cast<std::size_t>(std::max(model.defaultScene, 0))].extras;
    if (!facts.IsObject()) return;
    const double rate = facts.Get("sample_rate").IsNumber() ? facts.Get("sample_rate").GetNumberAsDouble() : 0;
    if (std::isfinite(rate) && rate >= 1 && rate <= 100'000) scene.sample_rate = rate;
    if (facts.Get("file_info").IsString()) scene.source = facts.Get("file_info").Get<std::string>();
}

} // namespace

Report read_gltf(const GltfSource& source, ImportedFile& out) {
    Report report;
    try {
        const tinygltf::Model model = checked_model(source);
        double size = static_cast<double>(source.bytes.size());
        for (const tinygltf::Buffer& buffer : model.buffers) size += static_cast<double>(buffer.data.size());
        GltfReading reading{model, GltfAccessors(model, 64.0 * 1024 * 1024 + 32 * size), report, out, {}, {}, {}};
        out.scene.source = source.name;
        read_nodes(reading);
        read_materials(reading);
        read_objects(reading);
        read_animations(reading);
        read_facts(model, out.scene);
    } catch (const BadFile& bad) {
        report.fail(bad.what());
    }
    return report;
}

} // namespace vor2::convert
