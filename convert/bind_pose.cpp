#include "convert/bind_pose.h"

#include <algorithm>
#include <cmath>

namespace vor2::convert {
namespace {

/// How far the matrices of a skin may lie apart, in parts of the mesh's size.
constexpr double tolerance = 2e-5;

double size_of(const ImportedMesh& mesh) {
    double most = 0;
    for (const float number : mesh.positions) most = std::max(most, std::abs(static_cast<double>(number)));
    return most > 0 ? most : 1;
}

/// Whether two matrices bring a mesh's points to the same places.
bool agree(const Affine& a, const Affine& b, double size) {
    const double lengths = std::max({length(a.column(0)), length(a.column(1)), length(a.column(2)), 1e-12});
    return difference(a, b, 1 / size) <= tolerance * lengths;
}

/// Where the joints are in the world when they are bound.
class BoundWorlds {
public:
    BoundWorlds(const ImportedScene& source, const std::vector<Affine>& worlds, Report& report)
        : source_(source), worlds_(worlds), report_(report), bound_(source.nodes.size()),
          is_bound_(source.nodes.size()) {}

    /// Gives what brings the mesh's vertices to the world.
    Affine add(const ImportedMesh& mesh) {
        const auto first = std::min_element(mesh.joints.begin(), mesh.joints.end());
        const auto place = static_cast<std::size_t>(first - mesh.joints.begin());
        // A joint that another skin has bound says where this one stands.
        Affine rest = worlds_[static_cast<std::size_t>(*first)] * mesh.inverse_binds[place];
        if (is_bound_[static_cast<std::size_t>(*first)])
            rest = bound_[static_cast<std::size_t>(*first)] * mesh.inverse_binds[place];
        const double size = size_of(mesh);
        for (std::size_t i = 0; i < mesh.joints.size(); ++i) {
            const auto joint = static_cast<std::size_t>(mesh.joints[i]);
            const Affine there = rest * mesh.inverse_binds[i].inverse();
            if (!there.is_finite()) continue;
            if (is_bound_[joint] && !agree(bound_[joint] * mesh.inverse_binds[i], rest, size)) {
                report_.note("joint " + source_.nodes[joint].name + " is bound in one pose by the mesh " + mesh.name +
                             " and in another by a mesh before it, which is kept");
                continue;
            }
            if (!agree(worlds_[joint] * mesh.inverse_binds[i], rest, size)) differs_ = true;
            bound_[joint] = there;
            is_bound_[joint] = true;
        }
        return rest;
    }

    [[nodiscard]] bool differs() const { return differs_; }

    /// Nodes that are no joints keep their places in their parents.
    [[nodiscard]] std::vector<Placement> placements(double first) const {
        std::vector<Placement> out;
        std::vector<Affine> worlds(bound_.size());
        for (std::size_t i = 0; i < bound_.size(); ++i) {
            const int parent = source_.nodes[i].parent;
            const Affine above = parent < 0 ? Affine() : worlds[static_cast<std::size_t>(parent)];
            out.push_back(placement_at(source_.nodes[i], first));
            worlds[i] = above * Affine(out[i]);
            if (!is_bound_[i]) continue;
            const Affine local = above.inverse() * bound_[i];
            if (!local.is_finite()) continue;
            // Where it makes no difference the numbers stay those of the keys.
            if (difference(local, Affine(out[i])) > 1e-6) out[i] = local.placement();
            worlds[i] = above * Affine(out[i]);
        }
        return out;
    }

private:
    const ImportedScene& source_;
    const std::vector<Affine>& worlds_;
    Report& report_;
    std::vector<Affine> bound_;
    std::vector<bool> is_bound_;
    bool differs_ = false;
};

} // namespace

BindPose bind_pose(const ImportedScene& source, const std::vector<Affine>& worlds, double first, Report& report) {
    BindPose out;
    BoundWorlds bound(source, worlds, report);
    for (const ImportedMesh& mesh : source.meshes) {
        if (!mesh.joints.empty()) out.rest.push_back(bound.add(mesh));
    }
    out.differs = bound.differs();
    if (out.differs) out.placements = bound.placements(first);
    return out;
}

} // namespace vor2::convert
