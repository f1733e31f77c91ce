#include "convert/gltf_writer.h"

#include "convert/gltf/extras.h"
#include "convert/gltf/materials.h"
#include "convert/gltf/motion.h"
#include "convert/gltf/objects.h"
#include "convert/gltf/shapes.h"
#include "convert/gltf/work.h"
#include "convert/properties.h"

#include <nlohmann/json.hpp>

#include <cmath>
#include <sstream>
#include <stdexcept>

namespace vor2::convert {

using namespace VOR2_LOADER;

void hang(GltfWork& work, int node, int parent) {
    (parent < 0 ? work.model.scenes[0].nodes : work.node(parent).children).push_back(node);
}

float first_time(const VOR2& scene) {
    const float start = scene.environment.time_range.start;
    for (const OWNED<VOR2_WEIGHTED_MESH>& mesh : scene.weighted_meshes) {
        if (!mesh) continue;
        const double shown = float_property(mesh->extended_properties, "first_time").value_or(start);
        if (shown > static_cast<double>(start)) return static_cast<float>(shown);
    }
    return start;
}

namespace {

std::vector<double> list(const auto& numbers) {
    std::vector<double> out;
    out.reserve(std::size(numbers));
    for (const double number : numbers)
        out.push_back(std::isfinite(number) ? static_cast<double>(static_cast<float>(number)) : 0.0);
    return out;
}

/// A node without tracks stays where an old file has it in the world.
Placement stored_placement(const GltfScene& scene, std::size_t index) {
    const auto& nodes = scene.scene.matrix_hierarchy.nodes;
    Affine own = matrix_across(widened(nodes[index].world_matrix), Axes::mirrored, scene.axes[index]);
    const int parent = parent_of(scene.scene.matrix_hierarchy, index);
    if (parent >= 0) {
        const auto above = static_cast<std::size_t>(parent);
        const Affine inverse =
            matrix_across(widened(nodes[above].world_matrix), Axes::mirrored, scene.axes[above]).inverse();
        if (inverse.is_finite()) own = inverse * own;
    }
    return own.placement();
}

Placement placement_of(const GltfScene& scene, std::size_t index) {
    const VOR2_MATRIX_NODE& node = scene.scene.matrix_hierarchy.nodes[index];
    if (!node.position_track && !node.rotation_track && !node.scale_track) return stored_placement(scene, index);
    const int parent = parent_of(scene.scene.matrix_hierarchy, index);
    const Axes above = parent < 0 ? Axes::mirrored : scene.axes[static_cast<std::size_t>(parent)];
    const Axes own = scene.axes[index];
    VECTOR_3 position(0.0F, 0.0F, 0.0F), scale(1.0F, 1.0F, 1.0F);
    QUATERNION rotation = QUATERNION::identity();
    if (node.position_track) node.position_track->value(position);
    if (node.rotation_track) node.rotation_track->value(rotation);
    if (node.scale_track) node.scale_track->value(scale);
    return {position_across(widened(position), above), rotation_to_gltf(normalised(widened(rotation)), above, own),
            converted_scale(widened(scale), own)};
}

/// The library turns by such a quaternion as it stands, and what it gives is no rotation.
void tell_odd_rotation(Report& report, const VOR2_MATRIX_NODE& node) {
    QUATERNION rotation = QUATERNION::identity();
    if (node.rotation_track) node.rotation_track->value(rotation);
    const Quat q = widened(rotation);
    if (!(std::abs(dot(q, q) - 1) < 0.01))
        report.note("node " + utf8_of(node.name) +
                    ": its rotation isn't of unit length, and what is below it may stand a little elsewhere");
}

void write_nodes(GltfWork& work, GltfScene& scene) {
    const auto& nodes = scene.scene.matrix_hierarchy.nodes;
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        tell_odd_rotation(work.report, nodes[i]);
        tinygltf::Node node;
        node.name = utf8_of(nodes[i].name);
        const Placement placement = placement_of(scene, i);
        if (placement.translation != Vec3{0, 0, 0}) node.translation = list(placement.translation);
        if (placement.rotation != Quat{0, 0, 0, 1}) node.rotation = list(placement.rotation);
        if (placement.scale != Vec3{1, 1, 1}) node.scale = list(placement.scale);
        if (nodes[i].extra_text.length() > 0) put(node.extras, "text", value_of(nodes[i].extra_text));
        put_properties(node.extras, nodes[i].extended_properties);
        scene.nodes.push_back(work.add_node(std::move(node)));
        const int parent = parent_of(scene.scene.matrix_hierarchy, i);
        hang(work, scene.nodes.back(), parent < 0 ? scene.parent : scene.nodes[static_cast<std::size_t>(parent)]);
    }
}

tinygltf::Value facts_of(const VOR2& scene) {
    tinygltf::Value facts;
    put(facts, "creator", value_of(scene.inf.creator));
    put(facts, "file_info", value_of(scene.inf.file_info));
    put(facts, "time_range",
        tinygltf::Value(
            tinygltf::Value::Array{tinygltf::Value(static_cast<double>(scene.environment.time_range.start)),
                                   tinygltf::Value(static_cast<double>(scene.environment.time_range.end))}));
    if (std::isfinite(scene.environment.sample_rate))
        put(facts, "sample_rate", tinygltf::Value(scene.environment.sample_rate));
    return facts;
}

// No deeper than the library follows references.
void write_scene(GltfWork& work, VOR2& root, int parent, tinygltf::Animation& animation); // NOLINT(misc-no-recursion)

template<class REFERENCES>
void write_references(GltfWork& work, REFERENCES& references, int parent,
                      tinygltf::Animation& animation) { // NOLINT(misc-no-recursion)
    for (auto& reference : references) {
        if (!reference) continue;
        tinygltf::Node node;
        node.name = utf8_of(reference->file_name);
        put(node.extras, "reference", value_of(reference->file_name));
        const int added = work.add_node(std::move(node));
        hang(work, added, parent);
        if (reference->scene) write_scene(work, *reference->scene, added, animation);
    }
}

/// The scene and those it refers to; gives how the scene itself lies in the file.
GltfScene write_one(GltfWork& work, VOR2& root, int parent,
                    tinygltf::Animation& animation) { // NOLINT(misc-no-recursion)
    GltfScene scene{root, first_time(root), axes_of_nodes(root), {}, {}, parent, {}, {}};
    root.matrix_hierarchy.link_parents();
    root.set_time(scene.start);
    scene.materials = write_materials(work, root);
    write_nodes(work, scene);
    write_shapes(work, scene);
    write_objects(work, scene);
    write_motion(work, scene, animation, false);
    write_references(work, root.xrefs_15, parent, animation);
    write_references(work, root.xrefs_20, parent, animation);
    return scene;
}

void write_scene(GltfWork& work, VOR2& root, int parent, tinygltf::Animation& animation) { // NOLINT(misc-no-recursion)
    (void)write_one(work, root, parent, animation);
}

/// The path of names of each node; a number sets nodes of one path apart.
std::vector<std::string> paths_of(const VOR2_MATRIX_HIERARCHY& hierarchy) {
    std::vector<std::string> paths;
    std::map<std::string, int> seen;
    for (std::size_t i = 0; i < hierarchy.nodes.size(); ++i) {
        const int parent = parent_of(hierarchy, i);
        std::string path = parent < 0 ? "" : paths[static_cast<std::size_t>(parent)] + "/";
        path += utf8_of(hierarchy.nodes[i].name);
        const int before = seen[path]++;
        if (before > 0) path += "#" + std::to_string(before);
        paths.push_back(std::move(path));
    }
    return paths;
}

void tell(Report& report, const std::vector<std::string>& names, const std::string& what) {
    if (names.empty()) return;
    std::string text = what + ": ";
    for (std::size_t i = 0; i < std::min<std::size_t>(names.size(), 20); ++i) text += (i > 0 ? ", " : "") + names[i];
    report.note(text + (names.size() > 20 ? " and " + std::to_string(names.size() - 20) + " more" : ""));
}

/// A further take's motion, on the nodes that the first one has.
void write_take(GltfWork& work, const GltfScene& base, const Take& take, tinygltf::Animation& animation) {
    GltfScene scene{*take.scene, first_time(*take.scene), {}, {}, {}, -1, {}, {}};
    take.scene->matrix_hierarchy.link_parents();
    take.scene->set_time(scene.start);
    const std::vector<std::string> base_paths = paths_of(base.scene.matrix_hierarchy);
    const std::vector<std::string> paths = paths_of(take.scene->matrix_hierarchy);
    std::map<std::string, std::size_t> places;
    for (std::size_t i = 0; i < base_paths.size(); ++i) places.emplace(base_paths[i], i);
    std::vector<std::string> unknown;
    std::vector<bool> met(base_paths.size());
    for (const std::string& path : paths) {
        const auto place = places.find(path);
        if (place == places.end()) unknown.push_back(path);
        scene.nodes.push_back(place == places.end() ? -1 : base.nodes[place->second]);
        scene.axes.push_back(place == places.end() ? Axes::swapped : base.axes[place->second]);
        if (place != places.end()) met[place->second] = true;
    }
    std::vector<std::string> missing;
    for (std::size_t i = 0; i < met.size(); ++i) {
        if (!met[i]) missing.push_back(base_paths[i]);
    }
    tell(work.report, unknown, "joints of " + take.name + " that the first scene hasn't");
    tell(work.report, missing, "joints that " + take.name + " hasn't");
    for (const auto& [node, mesh] : base.morphing) {
        for (const OWNED<VOR2_MORPH_MESH>& own : take.scene->morph_meshes) {
            if (own && own->name == mesh->name && own->morph_targets.size() == mesh->morph_targets.size())
                scene.morphing.emplace_back(node, own.get());
        }
    }
    write_motion(work, scene, animation, true);
}

void add_animation(GltfWork& work, tinygltf::Animation animation) {
    if (animation.channels.empty()) return;
    shift_to_zero(work, animation);
    work.model.animations.push_back(std::move(animation));
}

void serialise(GltfWork& work, GltfFile& out) {
    tinygltf::TinyGLTF writer;
    std::ostringstream stream;
    std::vector<unsigned char> data;
    if (work.model.buffers[0].data.empty()) work.model.buffers.clear();
    if (!work.options.binary && !work.model.buffers.empty()) std::swap(data, work.model.buffers[0].data);
    if (!writer.WriteGltfSceneToStream(&work.model, stream, !work.options.binary, work.options.binary)) {
        work.report.fail("couldn't be written as glTF");
        return;
    }
    out.bytes = std::move(stream).str();
    if (data.empty()) return;
    // The library can only put a buffer into the text itself.
    nlohmann::ordered_json json = nlohmann::ordered_json::parse(out.bytes);
    json["buffers"][0] = {{"byteLength", data.size()}, {"uri", work.options.buffer_name}};
    out.bytes = json.dump(2) + "\n";
    out.buffer.assign(data.begin(), data.end());
}

} // namespace

Report write_gltf(std::span<const Take> takes, const GltfOptions& options, GltfFile& out) {
    Report report;
    if (takes.empty()) {
        report.fail("there is no scene to write");
        return report;
    }
    try {
        GltfWork work(options, report);
        work.model.asset.generator = "Vor2";
        work.model.scenes.emplace_back();
        work.model.defaultScene = 0;
        tinygltf::Animation animation;
        animation.name = takes[0].name;
        const GltfScene base = write_one(work, *takes[0].scene, -1, animation);
        add_animation(work, std::move(animation));
        for (const Take& take : takes.subspan(1)) {
            tinygltf::Animation further;
            further.name = take.name;
            write_take(work, base, take, further);
            add_animation(work, std::move(further));
        }
        work.model.scenes[0].extras = facts_of(*takes[0].scene);
        if (report.good()) serialise(work, out);
    } catch (const std::length_error& error) {
        report.fail(error.what());
    }
    return report;
}

} // namespace vor2::convert
