#include "convert/assimp/reading.h"
#include "convert/assimp/values.h"

#include <assimp/anim.h>

#include <algorithm>

namespace vor2::convert {
namespace {

/// Keys as seconds; those whose times don't ascend, or whose values aren't finite, are passed over.
template<class VALUE, class KEY>
ImportedTrack<VALUE> track_of(const KEY* keys, unsigned count, double rate, auto value_of) {
    ImportedTrack<VALUE> track;
    for (unsigned i = 0; i < count; ++i) {
        const auto time = static_cast<float>(keys[i].mTime / rate);
        if (!std::isfinite(time) || (!track.times.empty() && time <= track.times.back())) continue;
        const VALUE value = value_of(keys[i]);
        if (!std::all_of(value.begin(), value.end(), [](double number) { return std::isfinite(number); })) continue;
        track.times.push_back(time);
        track.values.push_back(value);
    }
    return track;
}

void read_weights(AssimpReading& reading, const aiMeshMorphAnim& source, double rate, ImportedAnimation& out) {
    // Of a mesh in parts, the name goes on with a number for each.
    std::string name = text_of(source.mName);
    name.resize(std::min(name.find('*'), name.size()));
    for (std::size_t m = 0; m < reading.out.scene.meshes.size(); ++m) {
        const ImportedMesh& mesh = reading.out.scene.meshes[m];
        const std::string node = reading.out.scene.nodes[static_cast<std::size_t>(mesh.node)].name;
        if (mesh.targets.empty() || (mesh.name != name && node != name)) continue;
        ImportedTrack<std::vector<float>>& track = out.weights[m];
        if (!track.times.empty()) continue;
        for (unsigned k = 0; k < source.mNumKeys; ++k) {
            const aiMeshMorphKey& key = source.mKeys[k];
            const auto time = static_cast<float>(key.mTime / rate);
            if (!std::isfinite(time) || (!track.times.empty() && time <= track.times.back())) continue;
            std::vector<float> weights(mesh.targets.size());
            for (unsigned i = 0; i < key.mNumValuesAndWeights; ++i) {
                if (key.mValues[i] < weights.size()) weights[key.mValues[i]] = static_cast<float>(key.mWeights[i]);
            }
            track.times.push_back(time);
            track.values.push_back(std::move(weights));
        }
    }
}

} // namespace

void read_animations(AssimpReading& reading) {
    for (unsigned a = 0; a < reading.source.mNumAnimations; ++a) {
        const aiAnimation& source = *reading.source.mAnimations[a];
        const double rate = source.mTicksPerSecond > 0 ? source.mTicksPerSecond : 25;
        ImportedAnimation out;
        out.name = text_of(source.mName).empty() ? "animation_" + std::to_string(a) : text_of(source.mName);
        for (unsigned c = 0; c < source.mNumChannels; ++c) {
            const aiNodeAnim& channel = *source.mChannels[c];
            const auto place = reading.places.find(text_of(channel.mNodeName));
            if (place == reading.places.end()) {
                reading.report.note("animation " + out.name + " moves " + text_of(channel.mNodeName) +
                                    ", which isn't in the file");
                continue;
            }
            ImportedAnimation::NodeTracks& tracks = out.nodes[place->second];
            const double metres = reading.metres;
            tracks.position =
                track_of<Vec3>(channel.mPositionKeys, channel.mNumPositionKeys, rate,
                               [metres](const aiVectorKey& key) { return vector_of(key.mValue) * metres; });
            tracks.rotation = track_of<Quat>(channel.mRotationKeys, channel.mNumRotationKeys, rate,
                                             [](const aiQuatKey& key) { return quat_of(key.mValue); });
            tracks.scale = track_of<Vec3>(channel.mScalingKeys, channel.mNumScalingKeys, rate,
                                          [](const aiVectorKey& key) { return vector_of(key.mValue); });
        }
        for (unsigned c = 0; c < source.mNumMorphMeshChannels; ++c)
            read_weights(reading, *source.mMorphMeshChannels[c], rate, out);
        if (!out.nodes.empty() || !out.weights.empty()) reading.out.animations.push_back(std::move(out));
    }
}

} // namespace vor2::convert
