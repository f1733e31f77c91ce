#include "headless/files/assimp_reader.h"

#include "headless/animation/keying.h"
#include "headless/files/text_file.h"
#include "headless/graph/names.h"
#include "headless/graph/transform.h"
#include "headless/session.h"
#include "support/text/ascii.h"

#include <assimp/Importer.hpp>
#include <assimp/config.h>
#include <assimp/postprocess.h>
#include <assimp/scene.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <numbers>
#include <set>

namespace headless {
namespace {

/// Angles this far apart, in radians, are joined by a straight run.
constexpr double angle_step = 3 * std::numbers::pi / 180;

std::string text_of(const aiString& text) {
    return {text.data, text.length};
}

double setting(const aiScene& file, const char* name, double nothing) {
    if (file.mMetaData == nullptr) return nothing;
    double real = 0;
    float single = 0;
    std::int32_t whole = 0;
    if (file.mMetaData->Get(name, real)) return real;
    if (file.mMetaData->Get(name, single)) return static_cast<double>(single);
    if (file.mMetaData->Get(name, whole)) return whole;
    return nothing;
}

aiVector3D axis_of(const aiScene& file, const char* axis, const char* sign, double nothing) {
    aiVector3D out;
    out[static_cast<unsigned>(std::clamp(setting(file, axis, nothing), 0.0, 2.0))] =
        setting(file, sign, 1) < 0 ? -1.0F : 1.0F;
    return out;
}

/// What brings the axes that a file's settings name right, up and front.
aiMatrix4x4 upright(const aiScene& file) {
    const aiVector3D right = axis_of(file, "CoordAxis", "CoordAxisSign", 0),
                     up = axis_of(file, "UpAxis", "UpAxisSign", 1),
                     front = axis_of(file, "FrontAxis", "FrontAxisSign", 2);
    const aiMatrix4x4 out(right.x, right.y, right.z, 0, up.x, up.y, up.z, 0, front.x, front.y, front.z, 0, 0, 0, 0, 1);
    return out.Determinant() > 0.5F ? out : aiMatrix4x4();
}

Vector3 vector_of(const aiVector3D& v, double factor = 1) {
    return {v.x * factor, v.y * factor, v.z * factor};
}

bool is_finite(const Vector3& v) {
    return std::isfinite(v.x) && std::isfinite(v.y) && std::isfinite(v.z);
}

Vector3 angles_of(aiQuaternion q) {
    q.Normalize();
    return matrix_to_euler(to_matrix(Quaternion{q.x, q.y, q.z, q.w}), RotateOrder::xyz);
}

/// The angles of the same rotation that lie nearest to those before.
Vector3 near_to(const Vector3& before, const Vector3& angles) {
    const double pi = std::numbers::pi;
    const auto unwound = [&before, pi](Vector3 v) {
        v.x += 2 * pi * std::round((before.x - v.x) / (2 * pi));
        v.y += 2 * pi * std::round((before.y - v.y) / (2 * pi));
        v.z += 2 * pi * std::round((before.z - v.z) / (2 * pi));
        return v;
    };
    const auto distance = [&before](const Vector3& v) {
        return std::abs(v.x - before.x) + std::abs(v.y - before.y) + std::abs(v.z - before.z);
    };
    const Vector3 plain = unwound(angles), flipped = unwound({angles.x + pi, pi - angles.y, angles.z + pi});
    return distance(flipped) < distance(plain) ? flipped : plain;
}

class Builder {
public:
    Builder(Scene& scene, const aiScene& file, bool centimetres)
        : scene_(scene), file_(file), factor_(centimetres ? setting(file, "UnitScaleFactor", 1) : 100) {
        if (!(factor_ > 0) || !std::isfinite(factor_)) factor_ = 1;
        if (centimetres) root_ = upright(file);
    }

    Result<void> build() {
        const bool fresh = std::ranges::all_of(scene_.nodes(), [](const Node* node) { return node->default_node(); });
        find_joints();
        Result<void> done = add_nodes();
        if (done && file_.mNumAnimations > 0) done = add_animation(*file_.mAnimations[0], fresh);
        if (!done) remove_what_was_made();
        return done;
    }

private:
    struct Made {
        Node* node = nullptr;
        bool top = false;
        double above = 1;        ///< the scale that is worked into its place
        bool keeps_scale = true; ///< and doesn't hand it down
    };

    /// Bones, and all that stands between them and the first node above them that isn't the file's root.
    void find_joints() {
        std::set<std::string> bones;
        for (unsigned m = 0; m < file_.mNumMeshes; ++m) {
            for (unsigned b = 0; b < file_.mMeshes[m]->mNumBones; ++b)
                bones.insert(text_of(file_.mMeshes[m]->mBones[b]->mName));
        }
        for (const std::string& bone : bones) {
            joints_.insert(bone);
            const aiNode* node = file_.mRootNode->FindNode(bone.c_str());
            std::vector<std::string> between;
            for (node = node == nullptr ? nullptr : node->mParent; node != nullptr; node = node->mParent) {
                if (bones.contains(text_of(node->mName))) {
                    joints_.insert(between.begin(), between.end());
                    break;
                }
                between.push_back(text_of(node->mName));
            }
        }
    }

    Result<void> add_nodes() {
        struct Waiting {
            const aiNode* source;
            Node* parent;
            double above;
        };
        std::vector<Waiting> waiting{{file_.mRootNode, nullptr, 1}};
        while (!waiting.empty()) {
            const auto [source, parent, above] = waiting.back();
            waiting.pop_back();
            const bool top = source == file_.mRootNode, joint = joints_.contains(text_of(source->mName));
            std::string name = legal_name(text_of(source->mName));
            if (name.empty()) name = joint ? "joint1" : "transform1";
            const Result<Node*> made = scene_.create_node(joint ? "joint" : "transform", name, parent);
            if (!made) return made.error();
            order_.push_back(*made);
            const double handed = place(**made, top ? root_ * source->mTransformation : source->mTransformation, joint,
                                        above, scales_alike(*source));
            made_.try_emplace(text_of(source->mName), Made{*made, top, above, handed == 1});
            for (unsigned i = source->mNumChildren; i > 0; --i)
                waiting.push_back({source->mChildren[i - 1], *made, above * handed});
        }
        return {};
    }

    /// Whether no key of the animation scales a node otherwise than it stands.
    bool scales_alike(const aiNode& node) const {
        if (file_.mNumAnimations == 0) return true;
        aiVector3D scale, position;
        aiQuaternion rotation;
        node.mTransformation.Decompose(scale, rotation, position);
        const aiAnimation& animation = *file_.mAnimations[0];
        for (unsigned c = 0; c < animation.mNumChannels; ++c) {
            const aiNodeAnim& channel = *animation.mChannels[c];
            if (channel.mNodeName != node.mName) continue;
            for (unsigned k = 0; k < channel.mNumScalingKeys; ++k) {
                if ((channel.mScalingKeys[k].mValue - scale).Length() > 1e-3F * scale.Length()) return false;
            }
        }
        return true;
    }

    /// Gives the scale that what is below takes over; 1 where the node keeps its own.
    double place(Node& node, const aiMatrix4x4& matrix, bool joint, double above, bool still) {
        const TransformAttributes& ids = TransformAttributes::ids();
        aiVector3D scale, position;
        aiQuaternion rotation;
        matrix.Decompose(scale, rotation, position);
        set(node, ids.translate, vector_of(position, factor_ * above));
        set(node, ids.rotate, angles_of(rotation));
        // Elsewhere a joint's scale reaches its children.
        if (joint) node.set(node.plug(ids.segment_scale_compensate).key, false);
        const Vector3 own = vector_of(scale);
        const bool alike = still && is_finite(own) && own.x > 0 && std::abs(own.y / own.x - 1) < 1e-3 &&
                           std::abs(own.z / own.x - 1) < 1e-3;
        if (!alike) set(node, ids.scale, own);
        return alike ? own.x : 1;
    }

    static void set(Node& node, AttributeId id, const Vector3& value) {
        if (is_finite(value)) node.set(node.plug(id).key, value);
    }

    Result<void> add_animation(const aiAnimation& animation, bool fresh) {
        rate_ = animation.mTicksPerSecond > 0 ? animation.mTicksPerSecond : 25;
        for (unsigned c = 0; c < animation.mNumChannels; ++c) {
            const aiNodeAnim& channel = *animation.mChannels[c];
            const auto found = made_.find(text_of(channel.mNodeName));
            if (found == made_.end()) continue;
            if (Result<void> done = add_channel(channel, found->second); !done) return done;
        }
        if (!fresh || curves_.empty()) return {};
        scene_.playback = {first_, last_, first_, last_};
        scene_.set_current_time(first_);
        return {};
    }

    Result<void> add_channel(const aiNodeAnim& channel, const Made& made) {
        const TransformAttributes& ids = TransformAttributes::ids();
        std::vector<std::pair<double, Vector3>> positions, scales;
        for (unsigned k = 0; k < channel.mNumPositionKeys; ++k) {
            aiVector3D position = channel.mPositionKeys[k].mValue;
            if (made.top) position = root_ * position;
            positions.emplace_back(channel.mPositionKeys[k].mTime / rate_, vector_of(position, factor_ * made.above));
        }
        for (unsigned k = 0; k < channel.mNumScalingKeys; ++k)
            scales.emplace_back(channel.mScalingKeys[k].mTime / rate_, vector_of(channel.mScalingKeys[k].mValue));
        Result<void> done = add_curves(*made.node, ids.translate, positions);
        if (done) done = add_curves(*made.node, ids.rotate, rotations_of(channel, made.top));
        if (done && made.keeps_scale) done = add_curves(*made.node, ids.scale, scales);
        return done;
    }

    std::vector<std::pair<double, Vector3>> rotations_of(const aiNodeAnim& channel, bool top) const {
        std::vector<std::pair<double, Vector3>> out;
        const auto add = [&](double time, aiQuaternion q) {
            if (top) q = aiQuaternion(aiMatrix3x3(root_)) * q;
            const Vector3 angles = angles_of(q);
            out.emplace_back(time, out.empty() ? angles : near_to(out.back().second, angles));
        };
        for (unsigned k = 0; k < channel.mNumRotationKeys; ++k) {
            const aiQuatKey& key = channel.mRotationKeys[k];
            if (k > 0) {
                const aiQuatKey& before = channel.mRotationKeys[k - 1];
                const aiQuaternion &a = before.mValue, &b = key.mValue;
                const double cosine = std::abs(static_cast<double>(a.x * b.x + a.y * b.y + a.z * b.z + a.w * b.w));
                const int parts = static_cast<int>(std::ceil(2 * std::acos(std::min(cosine, 1.0)) / angle_step));
                for (int part = 1; part < parts; ++part) {
                    const double t = static_cast<double>(part) / parts;
                    aiQuaternion between;
                    aiQuaternion::Interpolate(between, a, b, static_cast<float>(t));
                    add((before.mTime + (key.mTime - before.mTime) * t) / rate_, between);
                }
            }
            add(key.mTime / rate_, key.mValue);
        }
        return out;
    }

    Result<void> add_curves(Node& node, AttributeId id, const std::vector<std::pair<double, Vector3>>& keys) {
        std::vector<double> times;
        std::vector<double> values[3];
        for (const auto& [time, value] : keys) {
            if (!std::isfinite(time) || !is_finite(value) || (!times.empty() && time <= times.back())) continue;
            times.push_back(time);
            values[0].push_back(value.x);
            values[1].push_back(value.y);
            values[2].push_back(value.z);
        }
        if (times.empty()) return {};
        first_ = curves_.empty() ? times.front() : std::min(first_, times.front());
        last_ = curves_.empty() ? times.back() : std::max(last_, times.back());
        const KeyTimes shared(std::move(times));
        for (std::size_t axis = 0; axis < 3; ++axis) {
            const Plug plug = node.plug(node.attribute(id).children[axis]);
            const Result<Node*> curve = set_keys(scene_, plug, shared, std::move(values[axis]), Tangent::linear);
            if (!curve) return curve.error();
            curves_.push_back(*curve);
        }
        return {};
    }

    void remove_what_was_made() {
        for (Node* curve : curves_) scene_.remove_node(*curve);
        for (std::size_t i = order_.size(); i-- > 0;) scene_.remove_node(*order_[i]);
    }

    Scene& scene_;
    const aiScene& file_;
    double factor_, rate_ = 25, first_ = 0, last_ = 0;
    aiMatrix4x4 root_;
    std::set<std::string> joints_;
    std::map<std::string, Made> made_;
    std::vector<Node*> order_, curves_;
};

std::string extension_of(const std::string& path) {
    return VOR2_LOADER::lowered(path.substr(std::min(path.rfind('.'), path.size())));
}

void warn_of_what_stays(const aiScene& file) {
    std::string others;
    for (unsigned a = 1; a < file.mNumAnimations; ++a)
        others += (a > 1 ? ", " : "") + text_of(file.mAnimations[a]->mName);
    if (!others.empty())
        Session::current().warning("of several animations the first, " + text_of(file.mAnimations[0]->mName) +
                                   ", is taken, and not " + others);
}

} // namespace

Result<void> read_with_assimp(Scene& scene, const std::string& path) {
    const Result<std::string> bytes = read_text_file(path);
    if (!bytes) return bytes.error();
    const std::string extension = extension_of(path);
    Assimp::Importer importer;
    importer.SetPropertyBool(AI_CONFIG_IMPORT_FBX_PRESERVE_PIVOTS, false);
    // Only a .gltf has further files beside it.
    const aiScene* file =
        extension == ".gltf"
            ? importer.ReadFile(path, aiProcess_ValidateDataStructure)
            : importer.ReadFileFromMemory(bytes->data(), bytes->size(), aiProcess_ValidateDataStructure,
                                          extension.substr(extension.empty() ? 0 : 1).c_str());
    if (file == nullptr || file->mRootNode == nullptr) {
        std::string why = importer.GetErrorString();
        why.erase(std::min(why.find_first_of("\r\n"), why.size()));
        return Error{"can't be read: " + why, path};
    }
    warn_of_what_stays(*file);
    return Builder(scene, *file, extension == ".fbx").build();
}

} // namespace headless
