#include "headless/geometry/deformers.h"

#include "headless/geometry/components.h"
#include "headless/geometry/deformer_data.h"
#include "headless/geometry/mesh_history.h"

#include <algorithm>
#include <cmath>

namespace headless {
namespace {

// One target of a blend shape, at the weight at which it counts in full.
struct BlendTarget {
    double weight = 1.0;
    std::vector<std::pair<std::size_t, Vector3>> offsets; // by point
};

// A deformer's inputs, and what it has to say.
class Deformer {
public:
    Deformer(Scene& scene, const DeformerInput& input, Mesh& mesh)
        : scene_(scene), input_(input), node_(input.deformer), mesh_(mesh) {}

    void run() {
        envelope_ = number("en");
        if (!std::isfinite(envelope_) || envelope_ == 0.0) return;
        const std::string& type = node_.type().name();
        if (type == "skinCluster")
            skin();
        else if (type == "blendShape")
            blend();
        else if (type == "cluster")
            cluster();
        else
            tweak();
    }

private:
    Plug plug(const char* name) const { return node_.find_plug(name); }
    double number(const char* name) { return scene_.evaluate(plug(name)).number(); }
    Plug part(const Plug& element, const char* name) const { return element.child(node_.find_attribute(name)); }
    Matrix matrix(const Plug& plug) { return EvaluationContext(scene_).matrix(plug); }

    void note(const std::string& what) { mesh_.notes.push_back("'" + node_.name() + "' " + what); }

    // Which points the deformer may touch; empty for all.
    std::vector<bool> members() {
        const Plug element = plug("ip").element(input_.index);
        if (const std::string tag = node_.get(part(element, "gtg").key).text(); !tag.empty() && tag != "*")
            return tagged(tag);
        const Plug source = node_.source_of(part(element, "ig").key);
        if (!source || source.node->type().name() != "groupParts") return {};
        const Value components = source.node->get(source.node->find_plug("ic").key);
        return components.empty() ? std::vector<bool>() : points_of(components);
    }

    std::vector<bool> tagged(const std::string& tag) {
        if (input_.from) {
            const Plug tags = input_.from->find_plug("gtag");
            for (const int index : tags ? input_.from->existing_indices(tags.key) : std::vector<int>()) {
                const std::string at = "gtag[" + std::to_string(index) + "].";
                const Plug name = input_.from->find_plug(at + "gtagnm"), list = input_.from->find_plug(at + "gtagcmp");
                if (name && list && input_.from->get(name.key).text() == tag)
                    return points_of(input_.from->get(list.key));
            }
        }
        note("works on '" + tag + "', which isn't one of the mesh's component tags, and isn't evaluated");
        return std::vector<bool>(mesh_.points.size());
    }

    std::vector<bool> points_of(const Value& components) {
        std::vector<bool> out(mesh_.points.size());
        for (const IndexRange& range : elements_of(components, "vtx", out.size()))
            std::fill(out.begin() + std::ptrdiff_t(range.first), out.begin() + std::ptrdiff_t(range.end), true);
        for (const IndexRange& range : elements_of(components, "f", mesh_.face_count())) {
            for (std::size_t face = range.first; face < range.end; ++face) {
                for (const int vertex : mesh_.vertices_of(face)) out[static_cast<std::size_t>(vertex)] = true;
            }
        }
        return out;
    }

    void move(std::size_t point, const Vector3& to) {
        const Vector3 from = wide(mesh_.points[point]);
        mesh_.points[point] = narrow(from + (to - from) * envelope_);
    }

    // For each influence what it does to a point in the mesh's own space.
    std::vector<Matrix> influence_matrices() {
        const Matrix geometry = matrix(plug("gm")), back = inverse(geometry);
        const Plug matrices = plug("ma"), bind = plug("pm");
        std::vector<Matrix> out;
        for (const int index : node_.existing_indices(matrices.key)) {
            if (index >= most_influences) break;
            out.resize(static_cast<std::size_t>(index) + 1);
            out.back() = geometry * matrix(bind.element(index)) * matrix(matrices.element(index)) * back;
        }
        return out;
    }

    void skin() {
        const auto method = scene_.evaluate(plug("skm")).integer();
        if (method == 1) note("skins by dual quaternions, which aren't evaluated: it skins linearly instead");
        if (method == 2) note("blends dual quaternions in, which aren't evaluated: it skins linearly instead");
        if (scene_.evaluate(plug("uc")).boolean()) note("uses points of its influences, which aren't evaluated");
        const bool normalizes = scene_.evaluate(plug("nw")).integer() == 2;
        const std::vector<Matrix> influences = influence_matrices();
        const PointWeights& weights = DeformerData::of(node_).weights(node_, mesh_.points.size());
        const std::vector<bool> members = this->members();
        std::vector<Matrix> turns(mesh_.corner_normals.empty() ? 0 : mesh_.points.size());
        for (std::size_t point = 0; point < mesh_.points.size(); ++point) {
            if (!members.empty() && !members[point]) continue;
            double total = 0.0, size = 0.0;
            Vector3 sum;
            const Vector3 from = wide(mesh_.points[point]);
            for (const auto& [index, weight] : weights.of(point)) {
                if (index >= influences.size()) continue;
                total += weight;
                size += std::abs(weight);
                sum = sum + transform_point(from, influences[index]) * weight;
            }
            if (size == 0.0) continue;
            const double share = normalizes && total != 0.0 ? 1.0 / total : 1.0;
            move(point, sum * share);
            if (!turns.empty()) turns[point] = blended(weights.of(point), influences, share);
        }
        turn_normals(turns);
    }

    Matrix blended(std::span<const PointWeight> weights, const std::vector<Matrix>& influences, double share) const {
        Matrix out;
        for (int r = 0; r < 3; ++r) {
            for (int c = 0; c < 3; ++c) out[r][c] = r == c ? 1.0 - envelope_ : 0.0;
        }
        for (const auto& [index, weight] : weights) {
            if (index >= influences.size()) continue;
            for (int r = 0; r < 3; ++r) {
                for (int c = 0; c < 3; ++c) out[r][c] += influences[index][r][c] * weight * share * envelope_;
            }
        }
        return transposed(inverse(out));
    }

    void turn_normals(const std::vector<Matrix>& turns) {
        for (std::size_t corner = 0; corner < mesh_.corner_normals.size(); ++corner) {
            Float3& normal = mesh_.corner_normals[corner];
            const Matrix& turn = turns[static_cast<std::size_t>(mesh_.corner_vertex[corner])];
            if (is_set_normal(normal)) normal = unit_or_up(transform_direction(wide(normal), turn));
        }
    }

    void blend() {
        if (scene_.evaluate(plug("or")).integer() == 0) return note("blends in world space and isn't evaluated");
        const Plug element = plug("it").element(input_.index);
        const std::vector<bool> members = this->members();
        const std::vector<double> base = values_of(part(element, "bw"));
        std::vector<Vector3> sums(mesh_.points.size());
        const Plug groups = part(element, "itg"), weights = plug("w");
        for (const int index : node_.existing_indices(groups.key)) {
            const double weight = scene_.evaluate(weights.element(index)).number();
            if (weight == 0.0 || !std::isfinite(weight)) continue;
            const Plug visible = plug("tgvs").element(index);
            if (!scene_.evaluate(visible).boolean()) continue;
            add_target(groups.element(index), weight, sums);
        }
        for (std::size_t point = 0; point < sums.size(); ++point) {
            if (!members.empty() && !members[point]) continue;
            const double share = point < base.size() ? base[point] : 1.0;
            move(point, wide(mesh_.points[point]) + sums[point] * share);
        }
    }

    // The values of an array of numbers that is 1 where nothing was set.
    std::vector<double> values_of(const Plug& array) const {
        std::vector<double> out;
        for (const int index : node_.existing_indices(array.key)) {
            if (static_cast<std::size_t>(index) >= mesh_.points.size()) break;
            out.resize(static_cast<std::size_t>(index) + 1, 1.0);
            out.back() = node_.get(array.element(index).key).number();
        }
        return out;
    }

    void add_target(const Plug& group, double weight, std::vector<Vector3>& sums) {
        if (node_.get(part(group, "pdm").key).integer() != 0)
            return note("has a target that follows other deformers, which isn't evaluated");
        const std::vector<BlendTarget> targets = targets_of(group);
        const std::vector<double> painted = values_of(part(group, "tw"));
        std::vector<double> at;
        at.reserve(targets.size());
        for (const BlendTarget& target : targets) at.push_back(target.weight);
        for (const auto& [place, share] : shares_between(at, weight)) {
            for (const auto& [point, offset] : targets[place].offsets) {
                const double own = point < painted.size() ? painted[point] : 1.0;
                sums[point] = sums[point] + offset * (share * own);
            }
        }
    }

    std::vector<BlendTarget> targets_of(const Plug& group) {
        std::vector<BlendTarget> out;
        const Plug items = part(group, "iti");
        for (const int index : node_.existing_indices(items.key)) {
            BlendTarget target;
            target.weight = target_weight(index);
            if (offsets_of(items.element(index), target)) out.push_back(std::move(target));
        }
        return out;
    }

    // The shape that is connected, or what was kept of one.
    bool offsets_of(const Plug& item, BlendTarget& target) {
        if (const Plug source = node_.source_of(part(item, "igt").key)) {
            const std::shared_ptr<const Mesh> shape = mesh_at(scene_, source);
            if (!shape || shape->points.size() != mesh_.points.size()) {
                note("has a target with other points than its base, which is left out");
                return false;
            }
            for (std::size_t point = 0; point < mesh_.points.size(); ++point) {
                if (shape->points[point] != mesh_.points[point])
                    target.offsets.emplace_back(point, wide(shape->points[point]) - wide(mesh_.points[point]));
            }
            return true;
        }
        const std::vector<Vector3> offsets = kept_points(node_.get(part(item, "ipt").key));
        std::size_t at = 0;
        for (const IndexRange& range :
             elements_in_order(node_.get(part(item, "ict").key), "vtx", mesh_.points.size())) {
            for (std::size_t point = range.first; point < range.end && at < offsets.size(); ++point, ++at)
                target.offsets.emplace_back(point, offsets[at]);
        }
        return !target.offsets.empty();
    }

    void cluster() {
        if (scene_.evaluate(plug("rel")).boolean()) return note("is relative and isn't evaluated");
        const Plug geometries = plug("gm");
        const Matrix geometry = matrix(geometries.element(input_.index));
        const Matrix all = geometry * matrix(plug("pm")) * matrix(plug("ma")) * inverse(geometry);
        const std::vector<bool> members = this->members();
        const std::vector<double> weights = values_of(part(plug("wl").element(input_.index), "w"));
        bool partly = false;
        for (std::size_t point = 0; point < mesh_.points.size(); ++point) {
            if (!members.empty() && !members[point]) continue;
            const double weight = point < weights.size() ? weights[point] : 1.0;
            partly = partly || (weight != 0.0 && weight != 1.0);
            const Vector3 from = wide(mesh_.points[point]);
            move(point, from + (transform_point(from, all) - from) * weight);
        }
        Matrix moved;
        moved.set_row(3, all.translation());
        if (partly && !(moved == all))
            note("turns or scales points by a part of its handle's motion, which is taken along a straight line");
    }

    // The deltas of the one mesh.
    void tweak() {
        for (const PlugKey& key : node_.stored()) {
            const Vector3* by = nullptr;
            const Value value = node_.get(key);
            if (key.depth != 2 || node_.attribute(key.attribute).short_name != "vt" || !(by = value.get_if<Vector3>()))
                continue;
            const auto index = static_cast<std::size_t>(key.index[1]);
            if (key.index[0] == input_.index && index < mesh_.points.size())
                move(index, wide(mesh_.points[index]) + *by);
        }
    }

    Scene& scene_;
    const DeformerInput& input_;
    Node& node_;
    Mesh& mesh_;
    double envelope_ = 1.0;
};

} // namespace

bool is_deformer(const NodeType& type) {
    static constexpr std::string_view types[] = {"skinCluster", "blendShape", "cluster", "tweak"};
    return std::ranges::find(types, type.name()) != std::end(types);
}

void deform(Scene& scene, const DeformerInput& input, Mesh& mesh) {
    Deformer(scene, input, mesh).run();
}

} // namespace headless
