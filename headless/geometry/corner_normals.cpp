// Normals of corners: shared across smooth edges, apart across hard ones.
#include "headless/geometry/mesh.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <unordered_map>

namespace headless {
namespace {

// Corners that have one normal together, by the corner that stands for them all.
class CornerGroups {
public:
    explicit CornerGroups(const Mesh& mesh) : mesh_(mesh), parent_(mesh.corner_vertex.size()) {
        std::iota(parent_.begin(), parent_.end(), std::size_t{0});
        std::unordered_map<std::uint64_t, bool> smooth;
        smooth.reserve(mesh.edges.size());
        for (const MeshEdge& edge : mesh.edges) smooth.emplace(edge_key(edge.from, edge.to), edge.smooth);
        for (std::size_t face = 0; face < mesh.face_count(); ++face) {
            each_loop(mesh, face, [&](std::size_t first, std::size_t count) {
                for (std::size_t i = 0; i < count; ++i) join_along(first + i, first + (i + 1) % count, smooth);
            });
        }
    }

    std::size_t of(std::size_t corner) {
        while (parent_[corner] != corner) {
            parent_[corner] = parent_[parent_[corner]];
            corner = parent_[corner];
        }
        return corner;
    }

private:
    // The two corners at the ends of a side join those of the face beyond it.
    void join_along(std::size_t a, std::size_t b, const std::unordered_map<std::uint64_t, bool>& smooth) {
        const std::uint64_t key = edge_key(mesh_.corner_vertex[a], mesh_.corner_vertex[b]);
        const auto edge = smooth.find(key);
        if (edge == smooth.end() || !edge->second) return;
        const auto [at, is_first] = sides_.try_emplace(key, a, b);
        if (is_first) return;
        const auto [c, d] = at->second;
        const bool same_way = mesh_.corner_vertex[a] == mesh_.corner_vertex[c];
        join(a, same_way ? c : d);
        join(b, same_way ? d : c);
    }

    void join(std::size_t a, std::size_t b) { parent_[of(a)] = of(b); }

    const Mesh& mesh_;
    std::vector<std::size_t> parent_;
    std::unordered_map<std::uint64_t, std::pair<std::size_t, std::size_t>> sides_; // of the face met first
};

} // namespace

std::vector<Float3> normals_of_corners(const Mesh& mesh) {
    CornerGroups groups(mesh);
    std::vector<Vector3> sums(mesh.corner_vertex.size());
    for (std::size_t face = 0; face < mesh.face_count(); ++face) {
        const Vector3 area = area_vector(mesh, face);
        each_loop(mesh, face, [&](std::size_t first, std::size_t count) {
            for (std::size_t i = 0; i < count; ++i) {
                const std::size_t corner = first + i;
                const double angle = angle_at(mesh, first + (i + count - 1) % count, corner, first + (i + 1) % count);
                const std::size_t group = groups.of(corner);
                sums[group] = sums[group] + area * angle;
            }
        });
    }
    std::vector<Float3> out(sums.size());
    for (std::size_t corner = 0; corner < out.size(); ++corner) {
        const bool by_hand = !mesh.corner_normals.empty() && is_set_normal(mesh.corner_normals[corner]);
        out[corner] = unit_or_up(by_hand ? wide(mesh.corner_normals[corner]) : sums[groups.of(corner)]);
    }
    return out;
}

} // namespace headless
