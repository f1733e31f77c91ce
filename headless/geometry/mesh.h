#pragma once

#include "headless/graph/math.h"

#include <memory>
#include <span>
#include <string>
#include <vector>

namespace headless {

struct Float2 {
    float u = 0.0f, v = 0.0f;
    bool operator==(const Float2&) const = default;
};
struct Float3 {
    float x = 0.0f, y = 0.0f, z = 0.0f;
    bool operator==(const Float3&) const = default;
};
struct Float4 {
    float r = 0.0f, g = 0.0f, b = 0.0f, a = 1.0f;
    bool operator==(const Float4&) const = default;
};

inline Vector3 wide(const Float3& p) {
    return {p.x, p.y, p.z};
}
inline Float3 narrow(const Vector3& p) {
    return {static_cast<float>(p.x), static_cast<float>(p.y), static_cast<float>(p.z)};
}

struct MeshEdge {
    int from = 0, to = 0;
    bool smooth = true;
};

/// Values that corners of faces share by index: one list of values, and for each corner of the mesh which of them
/// it has, or -1 for none. `of_corner` is as long as the mesh has corners.
template<typename T>
struct CornerValues {
    int index = 0; ///< of the set among the attribute's elements
    std::string name;
    std::vector<T> values;
    std::vector<int> of_corner;
};
using UvSet = CornerValues<Float2>;
using ColourSet = CornerValues<Float4>;

/// Holes of a face: how many of its corners, behind those of its outline, each hole takes.
struct FaceHoles {
    std::size_t face = 0;
    std::vector<std::size_t> lengths;
};

/// A polygon mesh, in centimetres and single precision as the host keeps it. Whoever makes one sees to it that its
/// indices are good: users check none. Faces list their corners counter-clockwise as seen from outside; a face that
/// couldn't be made sense of has no corners, so that the others keep their numbers.
struct Mesh {
    std::vector<Float3> points;
    std::vector<MeshEdge> edges;
    std::vector<std::size_t> face_start{0}; ///< first corner of each face, and one past the last
    std::vector<int> corner_vertex;
    std::vector<FaceHoles> holes; ///< ascending by face
    std::vector<UvSet> uv_sets;
    std::vector<ColourSet> colour_sets;
    std::size_t current_uv_set = 0, current_colour_set = 0;
    /// Normals that were set by hand, by corner; empty when there are none. A corner without one has all three beyond
    /// any unit vector (see `is_set_normal`).
    std::vector<Float3> corner_normals;
    std::vector<std::string> notes; ///< what couldn't be made sense of, in words for the user

    std::size_t face_count() const { return face_start.size() - 1; }
    std::size_t corner_count(std::size_t face) const { return face_start[face + 1] - face_start[face]; }
    std::span<const int> vertices_of(std::size_t face) const {
        return std::span(corner_vertex).subspan(face_start[face], corner_count(face));
    }
    /// Once for the mesh itself and for each set of UVs or colours.
    std::size_t corners_in_sets() const { return corner_vertex.size() * (1 + uv_sets.size() + colour_sets.size()); }
    const FaceHoles* holes_of(std::size_t face) const;

    void add_face(std::span<const int> vertices) {
        corner_vertex.insert(corner_vertex.end(), vertices.begin(), vertices.end());
        face_start.push_back(corner_vertex.size());
    }
    /// Makes the edges that the faces go along, in the order in which faces first meet them; those where faces meet at
    /// more than 30 degrees are hard.
    void make_edges();
};

inline bool is_set_normal(const Float3& n) {
    return !(n.x > 1e10f && n.y > 1e10f && n.z > 1e10f);
}

/// A direction in unit length; (0, 1, 0) for one of no length.
Float3 unit_or_up(const Vector3& direction);

/// One normal a vertex, of unit length: where normals were set by hand, the mean of those of its corners; else the
/// mean of its faces' normals, each weighted by the face's area and its angle at the vertex. (0, 1, 0) where neither
/// gives a direction. What isn't finite in points or set normals shows in the result.
std::vector<Float3> vertex_normals(const Mesh& mesh);

/// Visits each loop of a face (its outline, then its holes) as a first corner and a length.
template<typename Visit>
void each_loop(const Mesh& mesh, std::size_t face, Visit&& visit) {
    const FaceHoles* holes = mesh.holes_of(face);
    std::size_t outline = mesh.corner_count(face);
    if (holes) {
        for (const std::size_t length : holes->lengths) outline -= length;
    }
    std::size_t first = mesh.face_start[face];
    visit(first, outline);
    if (!holes) return;
    first += outline;
    for (const std::size_t length : holes->lengths) {
        visit(first, length);
        first += length;
    }
}

/// One number for the two ends of an edge, in whichever order.
std::uint64_t edge_key(int a, int b);

/// Between the sides of a face that meet at a corner, in radians; 0 where one has no length.
double angle_at(const Mesh& mesh, std::size_t before, std::size_t corner, std::size_t after);

/// One normal a corner, of unit length: what was set by hand, or else the mean over the faces around the vertex that
/// are joined to the corner's by smooth edges, each weighted by the face's area and its angle there.
std::vector<Float3> normals_of_corners(const Mesh& mesh);

/// The area vector of a face: along its normal, and twice its area long. Holes take away from it.
Vector3 area_vector(const Mesh& mesh, std::size_t face);

} // namespace headless
