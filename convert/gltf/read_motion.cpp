#include "convert/gltf/reading.h"

#include <algorithm>
#include <cmath>

namespace vor2::convert {
namespace {

/// Pieces of a cubic between two keys.
constexpr int cubic_pieces = 8;

struct Channel {
    std::vector<float> times, values;
    int width; ///< numbers a key
    enum class Way { linear, step, cubic } way;
};

Channel channel_of(GltfReading& reading, const tinygltf::Animation& animation, const tinygltf::AnimationChannel& source,
                   int width) {
    const tinygltf::AnimationSampler& sampler = element(animation.samplers, source.sampler, "animation sampler");
    Channel out;
    out.way = sampler.interpolation == "STEP"          ? Channel::Way::step
              : sampler.interpolation == "CUBICSPLINE" ? Channel::Way::cubic
                                                       : Channel::Way::linear;
    out.width = width;
    out.times = reading.accessors.floats(sampler.input, 1);
    out.values = reading.accessors.floats(sampler.output, source.target_path == "weights" ? 1 : width);
    const std::size_t parts = out.way == Channel::Way::cubic ? 3 : 1;
    if (width < 1 || out.values.size() != parts * out.times.size() * static_cast<std::size_t>(width))
        throw BadFile("animation " + animation.name + ": a channel has not as many values as times");
    for (std::size_t i = 0; i < out.times.size(); ++i) {
        if (!std::isfinite(out.times[i]) || (i > 0 && out.times[i] <= out.times[i - 1]))
            throw BadFile("animation " + animation.name + ": the times of a channel don't ascend");
    }
    return out;
}

/// Walks over the keys of a channel as straight runs tell them.
template<class VALUE>
ImportedTrack<VALUE> track_of(const Channel& channel, auto value_of) {
    ImportedTrack<VALUE> track;
    const auto width = static_cast<std::size_t>(channel.width);
    const bool cubic = channel.way == Channel::Way::cubic;
    const auto values = [&](std::size_t key, std::size_t part) {
        return &channel.values[(cubic ? 3 * key + part : key) * width];
    };
    const auto add = [&](float time, const float* numbers) {
        if (!track.times.empty() && time <= track.times.back()) return;
        track.times.push_back(time);
        track.values.push_back(value_of(numbers));
    };
    for (std::size_t k = 0; k < channel.times.size(); ++k) {
        if (k > 0 && channel.way == Channel::Way::step)
            add(std::nextafter(channel.times[k], channel.times[k - 1]), values(k - 1, 1));
        if (k > 0 && cubic) {
            const double from = channel.times[k - 1], span = static_cast<double>(channel.times[k]) - from;
            std::vector<float> there(width);
            for (int piece = 1; piece < cubic_pieces; ++piece) {
                const double t = static_cast<double>(piece) / cubic_pieces, t2 = t * t, t3 = t2 * t;
                for (std::size_t i = 0; i < width; ++i)
                    there[i] = static_cast<float>((2 * t3 - 3 * t2 + 1) * static_cast<double>(values(k - 1, 1)[i]) +
                                                  span * (t3 - 2 * t2 + t) * static_cast<double>(values(k - 1, 2)[i]) +
                                                  (3 * t2 - 2 * t3) * static_cast<double>(values(k, 1)[i]) +
                                                  span * (t3 - t2) * static_cast<double>(values(k, 0)[i]));
                add(static_cast<float>(from + span * t), there.data());
            }
        }
        add(channel.times[k], values(k, 1));
    }
    return track;
}

Vec3 vector_of(const float* n) {
    return {n[0], n[1], n[2]};
}

void read_weights(GltfReading& reading, const tinygltf::Animation& source, const tinygltf::AnimationChannel& channel,
                  ImportedAnimation& out) {
    const auto found = reading.of_node.find(channel.target_node);
    if (found == reading.of_node.end()) return;
    for (const std::size_t mesh : found->second) {
        const auto targets = reading.out.scene.meshes[mesh].targets.size();
        if (targets == 0) continue;
        const Channel keys = channel_of(reading, source, channel, static_cast<int>(targets));
        out.weights[mesh] = track_of<std::vector<float>>(
            keys, [targets](const float* n) { return std::vector<float>(n, n + targets); });
    }
}

void read_channel(GltfReading& reading, const tinygltf::Animation& source, const tinygltf::AnimationChannel& channel,
                  ImportedAnimation& out) {
    if (channel.target_node < 0) return;
    const int place = element(reading.places, channel.target_node, "node");
    if (place < 0) return;
    if (channel.target_path == "weights") return read_weights(reading, source, channel, out);
    ImportedAnimation::NodeTracks& tracks = out.nodes[place];
    if (channel.target_path == "translation") {
        tracks.position = track_of<Vec3>(channel_of(reading, source, channel, 3), vector_of);
    } else if (channel.target_path == "scale") {
        tracks.scale = track_of<Vec3>(channel_of(reading, source, channel, 3), vector_of);
    } else if (channel.target_path == "rotation") {
        tracks.rotation = track_of<Quat>(channel_of(reading, source, channel, 4), [](const float* n) {
            return normalised(Quat{n[0], n[1], n[2], n[3]});
        });
    } else {
        reading.report.note("animation " + source.name + ": there is no place for its channel " + channel.target_path);
    }
}

} // namespace

void read_animations(GltfReading& reading) {
    for (std::size_t i = 0; i < reading.model.animations.size(); ++i) {
        const tinygltf::Animation& source = reading.model.animations[i];
        ImportedAnimation& out = reading.out.animations.emplace_back();
        out.name = source.name.empty() ? "animation_" + std::to_string(i) : source.name;
        for (const tinygltf::AnimationChannel& channel : source.channels) read_channel(reading, source, channel, out);
    }
}

} // namespace vor2::convert
