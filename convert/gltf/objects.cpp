#include "convert/gltf/objects.h"

#include "convert/gltf/extras.h"
#include "convert/gltf/meshes.h"
#include "convert/properties.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace vor2::convert {
namespace {

using namespace VOR2_LOADER;

double number_of(const OWNED<VOR2_ANIMATABLE_FLOAT32>& track, double nothing) {
    const double value = track ? static_cast<double>(track->value()) : nothing;
    return std::isfinite(value) ? value : nothing;
}

/// A further node under that of an object.
int child_node(GltfWork& work, const GltfScene& scene, const VOR2_POSITIONAL_OBJECT& object) {
    tinygltf::Node node;
    node.name = utf8_of(object.name);
    const int added = work.add_node(std::move(node));
    hang(work, added, scene.node_at(object.matrix_index));
    return added;
}

/// The node that looks as the object does: the object's own where its axes are such, and `taken` doesn't say that
/// something else of the sort is there.
int looking_node(GltfWork& work, const GltfScene& scene, const VOR2_POSITIONAL_OBJECT& object, auto taken) {
    const bool there = object.matrix_index < scene.nodes.size();
    const int own = scene.node_at(object.matrix_index);
    if (there && scene.axes_at(object.matrix_index) == Axes::swapped && !taken(work.node(own))) return own;
    const int added = child_node(work, scene, object);
    if (scene.axes_at(object.matrix_index) == Axes::mirrored) {
        const Quat turn = rotation_to_gltf({0, 0, 0, 1}, Axes::mirrored, Axes::swapped);
        work.node(added).rotation.assign(turn.begin(), turn.end());
    }
    return added;
}

void set_cone(const VOR2_LIGHT& light, tinygltf::Light& out) {
    const auto& spot = static_cast<const VOR2_SPOT_LIGHT&>(light);
    const double right = std::numbers::pi / 2;
    out.spot.outerConeAngle = std::clamp(number_of(spot.float_track_2, right / 2), 1e-3, right);
    out.spot.innerConeAngle = std::clamp(number_of(spot.float_track_1, 0), 0.0, out.spot.outerConeAngle * 0.999);
}

void write_light(GltfWork& work, const GltfScene& scene, const VOR2_LIGHT& light) {
    tinygltf::Light out;
    out.name = utf8_of(light.name);
    VOR2_COLOUR colour(1.0F, 1.0F, 1.0F, 1.0F);
    if (light.colour_track_1) light.colour_track_1->value(colour);
    for (const f32 number : {colour.red, colour.green, colour.blue})
        out.color.push_back(std::isfinite(number) ? std::clamp(static_cast<double>(number), 0.0, 1.0) : 0.0);
    out.intensity = std::max(number_of(light.float_track, 1), 0.0);
    out.type = light.kind() == VOR2_DIRECTIONAL_LIGHT::KIND ? "directional"
               : light.kind() == VOR2_SPOT_LIGHT::KIND      ? "spot"
                                                            : "point";
    if (out.type == "spot") set_cone(light, out);
    if (out.type != "directional")
        out.range = std::max(number_of(light.max_params.attenuation_2.float_track_2, 0), 0.0);
    put_properties(out.extras, light.extended_properties);
    const int node = looking_node(work, scene, light, [](const tinygltf::Node& n) { return !n.extensions.empty(); });
    tinygltf::Value reference;
    put(reference, "light", tinygltf::Value(static_cast<int>(work.model.lights.size())));
    work.node(node).extensions["KHR_lights_punctual"] = std::move(reference);
    work.model.lights.push_back(std::move(out));
}

void write_camera(GltfWork& work, const GltfScene& scene, const VOR2_CAMERA& camera) {
    tinygltf::Camera out;
    out.name = utf8_of(camera.name);
    VOR2_FLOAT32_RANGE range(0.1F, 0.0F);
    if (camera.range_track_1) camera.range_track_1->value(range);
    const double nearest = std::isfinite(range.start) && range.start > 0 ? static_cast<double>(range.start) : 0.1;
    const bool has_end = std::isfinite(range.end) && static_cast<double>(range.end) > nearest;
    if (camera.camera_type == 1) {
        out.type = "orthographic";
        const double size = number_of(camera.float_track_1, 1);
        out.orthographic.xmag = out.orthographic.ymag = size > 0 ? size : 1;
        out.orthographic.znear = nearest;
        out.orthographic.zfar = has_end ? static_cast<double>(range.end) : nearest + 1000;
    } else {
        out.type = "perspective";
        out.perspective.yfov = std::clamp(number_of(camera.float_track_1, 0.8), 0.01, 3.1);
        out.perspective.znear = nearest;
        out.perspective.zfar = has_end ? static_cast<double>(range.end) : 0;
        out.perspective.aspectRatio =
            std::max(float_property(camera.extended_properties, "aspect_ratio").value_or(0), 0.0);
    }
    put_properties(out.extras, camera.extended_properties);
    const int node = looking_node(work, scene, camera, [](const tinygltf::Node& n) { return n.camera >= 0; });
    work.node(node).camera = static_cast<int>(work.model.cameras.size());
    work.model.cameras.push_back(std::move(out));
}

template<class CHAINS>
void add_lines(GltfWork& work, const CHAINS& chains, tinygltf::Mesh& mesh) {
    constexpr int steps = 16;
    for (const auto& chain : chains) {
        if (chain.curves.empty()) continue;
        const auto count = static_cast<std::size_t>(chain.curves.size()) * steps;
        expect_to_fit(12.0 * static_cast<double>(count));
        std::vector<float> points;
        for (std::size_t i = 0; i <= count; ++i) {
            VECTOR_3 point(0.0F, 0.0F, 0.0F);
            chain.position_at(point, static_cast<f32>(static_cast<double>(i) / static_cast<double>(count)));
            for (const double number : converted(widened(point), Axes::mirrored))
                points.push_back(std::isfinite(number) ? static_cast<float>(number) : 0.0F);
        }
        tinygltf::Primitive primitive;
        primitive.mode = TINYGLTF_MODE_LINE_STRIP;
        primitive.attributes["POSITION"] = work.buffers.floats(points, 3, Use::vertices, true);
        mesh.primitives.push_back(std::move(primitive));
    }
}

void write_spline(GltfWork& work, const GltfScene& scene, const VOR2_BEZIER_SPLINE_OBJECT& spline) {
    tinygltf::Mesh mesh;
    mesh.name = utf8_of(spline.name);
    add_lines(work, spline.rigid_splines, mesh);
    add_lines(work, spline.anim_splines, mesh);
    put_properties(mesh.extras, spline.extended_properties);
    const int index = add_mesh(work, std::move(mesh));
    if (index < 0) return;
    int node = scene.node_at(spline.matrix_index);
    if (spline.matrix_index >= scene.nodes.size() || work.node(node).mesh >= 0) node = child_node(work, scene, spline);
    work.node(node).mesh = index;
}

/// A name at a node needs no node of its own where the node has that name.
void write_marker(GltfWork& work, const GltfScene& scene, const VOR2_POSITIONAL_OBJECT& object, const char* key,
                  tinygltf::Value value) {
    int node = scene.node_at(object.matrix_index);
    const bool own = object.matrix_index < scene.nodes.size() && work.node(node).name == utf8_of(object.name);
    if (!own) node = child_node(work, scene, object);
    put(work.node(node).extras, key, std::move(value));
    if (!own) put_properties(work.node(node).extras, object.extended_properties);
}

} // namespace

void write_objects(GltfWork& work, GltfScene& scene) {
    const VOR2& root = scene.scene;
    for (const auto& light : root.lights) {
        if (light) write_light(work, scene, *light);
    }
    for (const auto& camera : root.cameras) {
        if (camera) write_camera(work, scene, *camera);
    }
    for (const auto& spline : root.bezier_spline_objects) {
        if (spline) write_spline(work, scene, *spline);
    }
    for (const auto& helper : root.helpers) {
        if (helper) write_marker(work, scene, *helper, "helper", tinygltf::Value(true));
    }
    for (const auto& reference : root.xref_objects) {
        if (reference) write_marker(work, scene, *reference, "outside_object", value_of(reference->xref_name));
    }
    for (const auto& tree : root.xref_speedtrees) {
        if (tree) write_marker(work, scene, *tree, "speedtree", value_of(tree->speedtree_name));
    }
    std::size_t left_out = 0;
    for (const auto* instances :
         {&root.light_instances, &root.camera_instances, &root.helper_instances, &root.bezier_spline_instances,
          &root.xref_object_instances, &root.speedtree_instances})
        left_out += instances->size();
    if (left_out > 0)
        work.report.note(std::to_string(left_out) + " instances of objects that aren't meshes are left out");
}

} // namespace vor2::convert
