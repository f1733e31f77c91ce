#include "headless/geometry/mesh.h"

#include <algorithm>
#include <cmath>
#include <unordered_map>

namespace headless {
namespace {

double angle_between(const Vector3& a, const Vector3& b) {
    const double lengths = length(a) * length(b);
    return lengths > 0.0 ? std::acos(std::clamp(dot(a, b) / lengths, -1.0, 1.0)) : 0.0;
}

} // namespace

std::uint64_t edge_key(int a, int b) {
    const auto low = static_cast<std::uint32_t>(std::min(a, b)), high = static_cast<std::uint32_t>(std::max(a, b));
    return (std::uint64_t{high} << 32) | low;
}

double angle_at(const Mesh& mesh, std::size_t before, std::size_t corner, std::size_t after) {
    const auto point = [&](std::size_t at) {
        return wide(mesh.points[static_cast<std::size_t>(mesh.corner_vertex[at])]);
    };
    return angle_between(point(after) - point(corner), point(before) - point(corner));
}

Float3 unit_or_up(const Vector3& direction) {
    const double size = length(direction);
    if (size == 0.0) return {0.0f, 1.0f, 0.0f};
    return narrow(direction * (1.0 / size));
}

const FaceHoles* Mesh::holes_of(std::size_t face) const {
    const auto at = std::ranges::lower_bound(holes, face, {}, &FaceHoles::face);
    return at != holes.end() && at->face == face ? &*at : nullptr;
}

void Mesh::make_edges() {
    struct Met {
        std::size_t edge;
        Vector3 normal;
    };
    const double hard = std::cos(30.0 / 180.0 * 3.14159265358979323846);
    std::unordered_map<std::uint64_t, Met> met;
    edges.clear();
    for (std::size_t face = 0; face < face_count(); ++face) {
        Vector3 normal = area_vector(*this, face);
        if (const double size = length(normal); size > 0.0) normal = normal * (1.0 / size);
        each_loop(*this, face, [&](std::size_t first, std::size_t count) {
            for (std::size_t i = 0; i < count; ++i) {
                const int from = corner_vertex[first + i], to = corner_vertex[first + (i + 1) % count];
                const auto [at, fresh] = met.try_emplace(edge_key(from, to), Met{edges.size(), normal});
                if (fresh)
                    edges.push_back({from, to, true});
                else if (dot(at->second.normal, normal) < hard)
                    edges[at->second.edge].smooth = false;
            }
        });
    }
}

Vector3 area_vector(const Mesh& mesh, std::size_t face) {
    Vector3 sum;
    each_loop(mesh, face, [&](std::size_t first, std::size_t count) {
        if (count == 0) return;
        const Vector3 origin = wide(mesh.points[static_cast<std::size_t>(mesh.corner_vertex[first])]);
        for (std::size_t i = 1; i + 1 < count; ++i) {
            const Vector3 a = wide(mesh.points[static_cast<std::size_t>(mesh.corner_vertex[first + i])]) - origin;
            const Vector3 b = wide(mesh.points[static_cast<std::size_t>(mesh.corner_vertex[first + i + 1])]) - origin;
            sum = sum + cross(a, b);
        }
    });
    return sum;
}

std::vector<Float3> vertex_normals(const Mesh& mesh) {
    std::vector<Vector3> by_hand(mesh.corner_normals.empty() ? 0 : mesh.points.size()), sums(mesh.points.size());
    std::vector<bool> set(by_hand.size());
    for (std::size_t corner = 0; corner < mesh.corner_normals.size(); ++corner) {
        if (!is_set_normal(mesh.corner_normals[corner])) continue;
        const auto vertex = static_cast<std::size_t>(mesh.corner_vertex[corner]);
        by_hand[vertex] = by_hand[vertex] + wide(mesh.corner_normals[corner]);
        set[vertex] = true;
    }
    for (std::size_t face = 0; face < mesh.face_count(); ++face) {
        const Vector3 area = area_vector(mesh, face);
        each_loop(mesh, face, [&](std::size_t first, std::size_t count) {
            for (std::size_t i = 0; i < count; ++i) {
                const std::size_t corner = first + i;
                const auto vertex = static_cast<std::size_t>(mesh.corner_vertex[corner]);
                const double angle = angle_at(mesh, first + (i + count - 1) % count, corner, first + (i + 1) % count);
                sums[vertex] = sums[vertex] + area * angle;
            }
        });
    }
    std::vector<Float3> out(mesh.points.size());
    for (std::size_t i = 0; i < out.size(); ++i)
        out[i] = unit_or_up(!set.empty() && set[i] && length(by_hand[i]) != 0.0 ? by_hand[i] : sums[i]);
    return out;
}

} // namespace headless
