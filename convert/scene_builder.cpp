#include "convert/scene_builder.h"

#include "convert/bind_pose.h"
#include "convert/built_shapes.h"
#include "convert/properties.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>

namespace vor2::convert {

using namespace VOR2_LOADER;

namespace {

template<class VALUE>
VALUE value_at(const ImportedTrack<VALUE>& track, double time, const VALUE& still, auto mix) {
    if (track.times.empty()) return still;
    const auto after = std::upper_bound(track.times.begin(), track.times.end(), time,
                                        [](double t, float key) { return t < static_cast<double>(key); });
    if (after == track.times.begin()) return track.values.front();
    if (after == track.times.end()) return track.values[track.times.size() - 1];
    const auto index = static_cast<std::size_t>(after - track.times.begin());
    const double from = track.times[index - 1], to = track.times[index];
    return mix(track.values[index - 1], track.values[index], (time - from) / (to - from));
}

Vec3 straight(const Vec3& a, const Vec3& b, double t) {
    return a + (b - a) * t;
}

struct Times {
    float first = 0, last = 0;
    float lead_in = 0; ///< before `first` where there is one
    bool has_lead_in = false;
};

Times times_of(const ImportedScene& source) {
    float first = std::numeric_limits<float>::max(), last = std::numeric_limits<float>::lowest();
    const auto take = [&](const std::vector<float>& times) {
        if (times.empty()) return;
        first = std::min(first, times.front());
        last = std::max(last, times.back());
    };
    for (const ImportedNode& node : source.nodes) {
        take(node.position.times);
        take(node.rotation.times);
        take(node.scale.times);
    }
    for (const ImportedMesh& mesh : source.meshes) take(mesh.weights.times);
    if (first > last) first = last = 0;
    return {first, last, first, false};
}

/// The library blends neighbouring rotations component by component where they are less than 16 degrees apart, and
/// doesn't normalise, which shrinks what is between. Steps of at most 4 degrees keep that below what can be seen.
ImportedTrack<Quat> in_small_steps(const ImportedTrack<Quat>& track) {
    constexpr double degree = std::numbers::pi / 180, blended = 16.3 * degree, step = 4 * degree;
    ImportedTrack<Quat> out;
    for (std::size_t i = 0; i < track.times.size(); ++i) {
        const double angle = i > 0 ? angle_between(track.values[i - 1], track.values[i]) : 0;
        const int parts = angle > step && angle < blended ? static_cast<int>(std::ceil(angle / step)) : 1;
        for (int part = 1; part < parts; ++part) {
            const double fraction = static_cast<double>(part) / parts;
            const double from = track.times[i - 1], to = track.times[i];
            const auto time = static_cast<float>(from + (to - from) * fraction);
            if (time <= out.times.back() || time >= track.times[i]) continue;
            out.times.push_back(time);
            out.values.push_back(shortest_slerp(track.values[i - 1], track.values[i], fraction));
        }
        out.times.push_back(track.times[i]);
        out.values.push_back(track.values[i]);
    }
    return out;
}

/// The keys of a node, in the file's axes.
class NodeTracks {
public:
    NodeTracks(VOR2_MATRIX_NODE& node, Axes parent, Axes own, const Times& times)
        : node_(node), parent_(parent), own_(own), times_(times) {}

    /// `bound` is the placement during the lead-in.
    void fill(const ImportedNode& source, const Placement& bound) {
        auto position = make_owned<VOR2_ANIMATABLE_VECTOR_3_LINEAR>();
        fill_track(*position, source.position, source.placement.translation, bound.translation,
                   [this](const Vec3& v) { return narrowed(position_across(v, parent_)); });
        auto rotation = make_owned<VOR2_ANIMATABLE_QUATERNION_SLERP>();
        fill_track(*rotation, in_small_steps(source.rotation), source.placement.rotation, bound.rotation,
                   [this](const Quat& q) { return narrowed(rotation_from_gltf(q, parent_, own_)); });
        rotation->make_continuous();
        node_.position_track = std::move(position);
        node_.rotation_track = std::move(rotation);
        const Vec3 none{1, 1, 1};
        if (source.scale.times.empty() && source.placement.scale == none && bound.scale == none) return;
        auto scale = make_owned<VOR2_ANIMATABLE_VECTOR_3_LINEAR>();
        fill_track(*scale, source.scale, source.placement.scale, bound.scale,
                   [this](const Vec3& v) { return narrowed(converted_scale(v, own_)); });
        node_.scale_track = std::move(scale);
    }

private:
    template<class TRACK, class VALUE>
    void fill_track(TRACK& track, const ImportedTrack<VALUE>& source, const VALUE& still, const VALUE& bound,
                    auto across) {
        const bool moves = !source.times.empty();
        const VALUE first = moves ? source.values[0] : still;
        if (times_.has_lead_in && bound != first) {
            track.add_key(across(bound), times_.lead_in);
            if (moves && source.times[0] > times_.first) track.add_key(across(first), times_.first);
        }
        if (!moves) track.add_key(across(still), times_.first);
        for (std::size_t i = 0; i < source.times.size(); ++i) track.add_key(across(source.values[i]), source.times[i]);
    }

    VOR2_MATRIX_NODE& node_;
    Axes parent_, own_;
    const Times& times_;
};

void add_nodes(const ImportedScene& source, VOR2& scene) {
    scene.matrix_hierarchy.nodes.grow_by(source.nodes.size());
    for (std::size_t i = 0; i < source.nodes.size(); ++i) {
        VOR2_MATRIX_NODE& node = scene.matrix_hierarchy.nodes[i];
        node.name = text_of(source.nodes[i].name);
        node.parent_index = source.nodes[i].parent;
        node.extra_text = text_of(source.nodes[i].text);
        node.extended_properties = source.nodes[i].properties;
        if (!source.nodes[i].helper) continue;
        auto helper = make_owned<VOR2_HELPER>();
        helper->name = node.name;
        helper->matrix_index = static_cast<u32>(i);
        scene.helpers.push_back(std::move(helper));
    }
    scene.matrix_hierarchy.link_parents();
}

} // namespace

Placement placement_at(const ImportedNode& node, double time) {
    return {value_at(node.position, time, node.placement.translation, straight),
            value_at(node.rotation, time, node.placement.rotation, shortest_slerp),
            value_at(node.scale, time, node.placement.scale, straight)};
}

std::vector<Affine> worlds_at(const std::vector<ImportedNode>& nodes, double time) {
    std::vector<Affine> worlds;
    worlds.reserve(nodes.size());
    for (const ImportedNode& node : nodes) {
        const Affine local(placement_at(node, time));
        worlds.push_back(node.parent < 0 ? local : worlds[static_cast<std::size_t>(node.parent)] * local);
    }
    return worlds;
}

void set_animation(const ImportedAnimation& animation, ImportedScene& scene) {
    for (std::size_t i = 0; i < scene.nodes.size(); ++i) {
        const auto found = animation.nodes.find(static_cast<int>(i));
        const ImportedAnimation::NodeTracks tracks =
            found == animation.nodes.end() ? ImportedAnimation::NodeTracks() : found->second;
        scene.nodes[i].position = tracks.position;
        scene.nodes[i].rotation = tracks.rotation;
        scene.nodes[i].scale = tracks.scale;
    }
    for (std::size_t i = 0; i < scene.meshes.size(); ++i) {
        const auto found = animation.weights.find(i);
        scene.meshes[i].weights =
            found == animation.weights.end() ? ImportedTrack<std::vector<float>>() : found->second;
    }
}

void build_scene(const ImportedScene& source, VOR2& scene, Report& report) {
    Times times = times_of(source);
    const std::vector<Affine> worlds = worlds_at(source.nodes, times.first);
    const BindPose pose = bind_pose(source, worlds, times.first, report);
    times.has_lead_in = pose.differs;
    if (pose.differs) times.lead_in = static_cast<float>(times.first - 1 / source.sample_rate);
    add_nodes(source, scene);
    for (const MaterialValues& material : source.materials) scene.materials.push_back(make_material(material));
    add_shapes(source, pose, scene, report);
    add_objects(source, scene);
    const std::vector<Axes> axes = axes_of_nodes(scene);
    for (std::size_t i = 0; i < source.nodes.size(); ++i) {
        const int parent = source.nodes[i].parent;
        NodeTracks(scene.matrix_hierarchy.nodes[i],
                   parent < 0 ? Axes::mirrored : axes[static_cast<std::size_t>(parent)], axes[i], times)
            .fill(source.nodes[i],
                  pose.placements.empty() ? placement_at(source.nodes[i], times.first) : pose.placements[i]);
    }
    scene.environment.time_range = {times.lead_in, times.last};
    scene.environment.sample_rate = source.sample_rate;
    scene.inf.creator = text_of("Vor2");
    scene.inf.file_info = text_of(source.source);
    if (times.has_lead_in) {
        for (OWNED<VOR2_WEIGHTED_MESH>& mesh : scene.weighted_meshes)
            add_float(mesh->extended_properties, "first_time", static_cast<double>(times.first));
    }
    scene.prepare_weighted_meshes();
    // Where a load leaves the clock, so that a file is what it is after another save.
    scene.set_time(scene.environment.time_range.start);
}

} // namespace vor2::convert
