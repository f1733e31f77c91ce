#include "convert/gltf/motion.h"

#include "convert/properties.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <numbers>

namespace vor2::convert {
namespace {

using namespace VOR2_LOADER;

constexpr double most_deviation = 0.04 * std::numbers::pi / 180;
constexpr int deepest_split = 8;

template<class VALUE>
struct Keys {
    std::vector<float> times;
    std::vector<VALUE> values;
    std::size_t left_out = 0; ///< whose times don't ascend
};

/// The keys that glTF can have. Those before the scene's first time say how meshes are bound, and one there takes their
/// place. A track of one value has none.
template<class TRACK>
Keys<typename TRACK::VALUE_TYPE> keys_of(TRACK* track, float first) {
    using VALUE = typename TRACK::VALUE_TYPE;
    Keys<VALUE> keys;
    if (track == nullptr || track->key_values().size() < 2) return keys;
    const std::size_t count = std::min(track->key_times().size(), track->key_values().size());
    bool earlier = false;
    for (std::size_t i = 0; i < count; ++i) {
        const float time = track->key_times()[i];
        if (!std::isfinite(time) || (!keys.times.empty() && time <= keys.times.back())) {
            ++keys.left_out;
            continue;
        }
        if (time < first) {
            earlier = true;
            continue;
        }
        if (earlier && time > first) {
            VALUE there;
            track->set_time(first);
            if constexpr (requires { track->value(there); }) {
                track->value(there);
            } else {
                there = track->value();
            }
            keys.times.push_back(first);
            keys.values.push_back(there);
        }
        earlier = false;
        keys.times.push_back(time);
        keys.values.push_back(track->key_values()[i]);
    }
    return keys;
}

float finite(double number) {
    return std::isfinite(number) ? static_cast<float>(number) : 0.0F;
}

void add_channel(GltfWork& work, tinygltf::Animation& animation, int node, const char* path,
                 const std::vector<float>& times, const std::vector<float>& values, int width) {
    tinygltf::AnimationSampler sampler;
    sampler.input = work.buffers.floats(times, 1, Use::plain, true);
    sampler.output = work.buffers.floats(values, width, Use::plain);
    animation.samplers.push_back(std::move(sampler));
    tinygltf::AnimationChannel channel;
    channel.sampler = static_cast<int>(animation.samplers.size() - 1);
    channel.target_node = node;
    channel.target_path = path;
    animation.channels.push_back(std::move(channel));
}

/// Keys of rotations as glTF moves between them, with more of them where it would leave the file's way.
class RotationKeys {
public:
    RotationKeys(const VOR2_ANIMATABLE_QUATERNION& track, Axes parent, Axes own)
        : on_chord_(track.type_id() == VOR2_ANIMATABLE_QUATERNION_LERP::TYPE_ID), parent_(parent), own_(own) {}

    void run(const Keys<QUATERNION>& keys) {
        for (std::size_t i = 0; i < keys.times.size(); ++i) {
            if (i > 0) {
                from_ = keys.values[i - 1];
                to_ = keys.values[i];
                from_time_ = keys.times[i - 1];
                to_time_ = keys.times[i];
                split(0, 1, at(0), at(1), 0);
            }
            add(keys.times[i], across(keys.values[i]));
        }
    }

    std::vector<float> times, values;

private:
    [[nodiscard]] Quat across(const QUATERNION& q) const {
        return rotation_to_gltf(normalised(widened(q)), parent_, own_);
    }
    [[nodiscard]] Quat at(double fraction) const {
        const auto t = static_cast<f32>(fraction);
        return across(on_chord_ ? blend(from_, to_, t) : slerp(from_, to_, t));
    }
    void add(float time, const Quat& q) {
        if (!times.empty() && time <= times.back()) return;
        times.push_back(time);
        for (const double number : q) values.push_back(static_cast<float>(number));
    }
    // No deeper than `deepest_split`.
    void split(double begin, double end, const Quat& first, const Quat& last, int depth) { // NOLINT(misc-no-recursion)
        double most = 0;
        for (const double part : {0.25, 0.5, 0.75})
            most = std::max(most, angle_between(at(begin + (end - begin) * part), shortest_slerp(first, last, part)));
        if (most <= most_deviation || depth == deepest_split) return;
        const double middle = (begin + end) / 2;
        const Quat there = at(middle);
        split(begin, middle, first, there, depth + 1);
        add(static_cast<float>(from_time_ + (to_time_ - from_time_) * middle), there);
        split(middle, end, there, last, depth + 1);
    }

    bool on_chord_;
    Axes parent_, own_;
    QUATERNION from_, to_;
    double from_time_ = 0, to_time_ = 0;
};

/// Channels of one node.
class NodeMotion {
public:
    NodeMotion(GltfWork& work, GltfScene& scene, tinygltf::Animation& animation, std::size_t index, bool constants)
        : work_(work), animation_(animation), node_(scene.scene.matrix_hierarchy.nodes[index]),
          target_(scene.nodes[index]),
          first_(scene.start > scene.scene.environment.time_range.start ? scene.start
                                                                        : -std::numeric_limits<float>::max()),
          start_(scene.start), own_(scene.axes[index]), constants_(constants) {
        const int parent = parent_of(scene.scene.matrix_hierarchy, index);
        parent_ = parent < 0 ? Axes::mirrored : scene.axes[static_cast<std::size_t>(parent)];
    }

    void run() {
        write_vectors(node_.position_track.get(), "translation",
                      [this](const Vec3& v) { return position_across(v, parent_); });
        write_rotation();
        write_vectors(node_.scale_track.get(), "scale", [this](const Vec3& v) { return converted_scale(v, own_); });
        if (left_out_ > 0)
            work_.report.note("node " + utf8_of(node_.name) + ": " + std::to_string(left_out_) +
                              " keys whose times don't ascend are left out");
    }

private:
    void write_vectors(VOR2_ANIMATABLE_VECTOR_3* track, const char* path, auto across) {
        const Keys<VECTOR_3> keys = keys_of(track, first_);
        left_out_ += keys.left_out;
        std::vector<float> values;
        for (const VECTOR_3& key : keys.values) {
            for (const double number : across(widened(key))) values.push_back(finite(number));
        }
        if (!keys.times.empty()) return add_channel(work_, animation_, target_, path, keys.times, values, 3);
        VECTOR_3 still = *path == 's' ? VECTOR_3(1.0F, 1.0F, 1.0F) : VECTOR_3(0.0F, 0.0F, 0.0F);
        if (track != nullptr) track->value(still);
        for (const double number : across(widened(still))) values.push_back(finite(number));
        write_constant(path, values);
    }

    void write_rotation() {
        const Keys<QUATERNION> keys = keys_of(node_.rotation_track.get(), first_);
        left_out_ += keys.left_out;
        if (!keys.times.empty()) {
            RotationKeys out(*node_.rotation_track, parent_, own_);
            out.run(keys);
            return add_channel(work_, animation_, target_, "rotation", out.times, out.values, 4);
        }
        QUATERNION still = QUATERNION::identity();
        if (node_.rotation_track) node_.rotation_track->value(still);
        std::vector<float> values;
        for (const double number : rotation_to_gltf(normalised(widened(still)), parent_, own_))
            values.push_back(finite(number));
        write_constant("rotation", values);
    }

    void write_constant(const char* path, const std::vector<float>& values) {
        const tinygltf::Node& node = work_.node(target_);
        if (!constants_ || !node.matrix.empty()) return;
        const std::vector<double>& present = *path == 't'   ? node.translation
                                             : *path == 'r' ? node.rotation
                                                            : node.scale;
        double most = 0, aligned = 0;
        for (std::size_t i = 0; i < values.size(); ++i) {
            const double nothing = *path == 's' || i == 3 ? 1 : 0;
            const double other = present.empty() ? nothing : present[i];
            most = std::max(most, std::abs(other - static_cast<double>(values[i])));
            aligned += other * static_cast<double>(values[i]);
        }
        const bool same = *path == 'r' ? std::abs(aligned) > 1 - 1e-9 : most < 1e-6;
        if (!same) add_channel(work_, animation_, target_, path, {start_}, values, static_cast<int>(values.size()));
    }

    GltfWork& work_;
    tinygltf::Animation& animation_;
    VOR2_MATRIX_NODE& node_;
    int target_;
    float first_, start_;
    Axes own_, parent_ = Axes::mirrored;
    bool constants_;
    std::size_t left_out_ = 0;
};

/// All weights of a mesh share their times, so that each target's track is read wherever any of them has a key.
void write_weights(GltfWork& work, const GltfScene& scene, tinygltf::Animation& animation, int node,
                   const VOR2_MORPH_MESH& mesh) {
    const float first =
        scene.start > scene.scene.environment.time_range.start ? scene.start : -std::numeric_limits<float>::max();
    std::vector<float> times;
    for (const auto& target : mesh.morph_targets) {
        const Keys<f32> keys = keys_of(target.track.get(), first);
        times.insert(times.end(), keys.times.begin(), keys.times.end());
    }
    if (times.empty()) return;
    std::sort(times.begin(), times.end());
    times.erase(std::unique(times.begin(), times.end()), times.end());
    const std::size_t targets = mesh.morph_targets.size();
    expect_to_fit(4.0 * static_cast<double>(times.size()) * static_cast<double>(targets));
    std::vector<float> values(times.size() * targets);
    for (std::size_t t = 0; t < targets; ++t) {
        VOR2_ANIMATABLE_FLOAT32* track = mesh.morph_targets[t].track.get();
        for (std::size_t i = 0; track != nullptr && i < times.size(); ++i) {
            track->set_time(times[i]);
            values[i * targets + t] = finite(track->value());
        }
    }
    add_channel(work, animation, node, "weights", times, values, 1);
}

/// One target of an animated mesh stands for each time but the first.
void write_poses(GltfWork& work, tinygltf::Animation& animation, int node, const std::vector<float>& times) {
    const std::size_t targets = times.size() - 1;
    expect_to_fit(4.0 * static_cast<double>(times.size()) * static_cast<double>(targets));
    std::vector<float> values(times.size() * targets);
    for (std::size_t i = 1; i < times.size(); ++i) values[i * targets + i - 1] = 1;
    add_channel(work, animation, node, "weights", times, values, 1);
}

} // namespace

void write_motion(GltfWork& work, GltfScene& scene, tinygltf::Animation& animation, bool constants) {
    for (std::size_t i = 0; i < scene.nodes.size(); ++i) {
        // The transform of a skinned mesh's node counts for nothing.
        if (scene.nodes[i] >= 0 && work.node(scene.nodes[i]).skin < 0)
            NodeMotion(work, scene, animation, i, constants).run();
    }
    for (const auto& [node, mesh] : scene.morphing) write_weights(work, scene, animation, node, *mesh);
    for (const auto& [node, times] : scene.posed) write_poses(work, animation, node, times);
    scene.scene.set_time(scene.start);
}

void shift_to_zero(GltfWork& work, const tinygltf::Animation& animation) {
    double least = 0;
    for (const tinygltf::AnimationSampler& sampler : animation.samplers)
        least = std::min(least, work.model.accessors[static_cast<std::size_t>(sampler.input)].minValues[0]);
    if (least >= 0) return;
    for (const tinygltf::AnimationSampler& sampler : animation.samplers) {
        tinygltf::Accessor& accessor = work.model.accessors[static_cast<std::size_t>(sampler.input)];
        const tinygltf::BufferView& view = work.model.bufferViews[static_cast<std::size_t>(accessor.bufferView)];
        unsigned char* bytes = work.model.buffers[0].data.data() + view.byteOffset;
        float last = -1;
        for (std::size_t i = 0; i < accessor.count; ++i) {
            float time = 0;
            std::memcpy(&time, bytes + 4 * i, sizeof time);
            time = static_cast<float>(static_cast<double>(time) - least);
            // Rounding may bring two times together.
            if (time <= last) time = std::nextafter(last, std::numeric_limits<float>::max());
            std::memcpy(bytes + 4 * i, &time, sizeof time);
            if (i == 0) accessor.minValues[0] = static_cast<double>(time);
            accessor.maxValues[0] = static_cast<double>(last = time);
        }
    }
    work.report.note("the animation " + animation.name + " begins before 0, and is moved there");
}

} // namespace vor2::convert
