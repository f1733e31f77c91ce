#pragma once

#include "headless/geometry/mesh.h"

namespace headless {

/// Corners of a face, its holes' included, beyond which it is cut into a fan whatever its shape, so that no face costs
/// more than the square of this.
inline constexpr std::size_t max_clipped_corners = 1024;

/// Cuts faces into triangles whose corners run the way the face's do. A face of n sides gives n - 2 triangles, and two
/// more for each hole; fewer than three corners give none. A convex face is a fan about its last corner; others are
/// clipped ear by ear in the plane that fits them best, holes joined to the outline by the shortest free line. Where a
/// face crosses itself or folds onto a line the number stays the same and some triangles are slivers.
class Triangulation {
public:
    explicit Triangulation(const Mesh& mesh) : mesh_(mesh) {}

    /// Appends three places in the mesh's list of corners for each triangle of a face.
    void face(std::size_t face, std::vector<std::size_t>& corners);

private:
    struct Spot {
        std::size_t corner;
        double x, y;
    };
    struct Link {
        std::size_t before, behind;
        bool ear;
    };

    void fan(std::size_t first, std::size_t count, std::vector<std::size_t>& corners) const;
    bool is_convex(std::size_t first, std::size_t count, const Vector3& area) const;
    void project(std::size_t first, std::size_t count, const Vector3& area);
    void join_holes(const FaceHoles& holes);
    void join(std::size_t first, std::size_t count);
    bool is_free(const Spot& from, const Spot& to) const;
    bool is_ear(std::size_t at) const;
    void clip(std::vector<std::size_t>& corners);

    const Mesh& mesh_;
    std::vector<Spot> outline_, all_; // all_: the loops as they are in the face
    std::vector<std::size_t> loop_starts_;
    std::vector<Link> links_;
};

} // namespace headless
