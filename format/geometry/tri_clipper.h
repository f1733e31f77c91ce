#pragma once

/// The triangle clipper: cuts a small polygon against an axis-aligned rectangle in x and z, and
/// interpolates everything that a vertex carries at each new corner (Sutherland-Hodgman, one edge of the
/// rectangle at a time, on a linked list of vertices).
///
/// Call `clip_begin`, then `clip_add_vertex` for each corner in order, then `clip_to_rectangle`, and walk
/// the result through `next` before the next `clip_begin`. All vertices lie in one pool of twelve, of which
/// every thread has one: one clip at a time on each, from its begin to the last look at its result.

#include "format/geometry/vertices.h"

namespace VOR2_LOADER {

/// Its added fields have no record, and its `clone` gives a plain `VOR2_RIGID_VERT`.
class VOR2_TRI_CLIPPER_RIGID_VERT : public VOR2_RIGID_VERT {
public:
    /// The point that is clipped: x and z are compared with the rectangle, y is only interpolated.
    VECTOR_3 clip_position{0.0F, 0.0F, 0.0F};
    u32 clip_flags = 0;                          ///< 1 x too low, 2 z too low, 4 x too high, 8 z too high
    VOR2_TRI_CLIPPER_RIGID_VERT* next = nullptr; ///< null at the polygon's end

    VOR2_TRI_CLIPPER_RIGID_VERT() = default;
    VOR2_TRI_CLIPPER_RIGID_VERT(const VOR2_RIGID_VERT& vertex, VECTOR_3 point)
        : VOR2_RIGID_VERT(vertex), clip_position(point) {}
};

/// The most corners of a polygon that is clipped.
inline constexpr u32 MOST_CLIP_VERTICES = 4;

void clip_begin();
/// Copies the vertex's values and `clip_position`. False, adding nothing, beyond `MOST_CLIP_VERTICES`.
bool clip_add_vertex(const VOR2_TRI_CLIPPER_RIGID_VERT& vertex);
/// Whether the polygon was changed: if not, `first` is the first vertex as it was added. If it was, `first`
/// is the first vertex of what remains, or null when nothing does. A point on an edge is inside, and a
/// number that is none counts as inside. A new corner lies on its edge exactly, with no rounding; its
/// normal and tangent frames are of unit length, or not finite where the blend is zero. Of the texture
/// coordinates and tangent frames that only one end of a cut edge has, the first end's stay as they are.
///
/// A convex polygon always fits the pool. One that crosses itself or has a dent may not, and then nothing
/// remains; nor does anything of a polygon without vertices.
bool clip_to_rectangle(f32 min_x, f32 min_z, f32 max_x, f32 max_z, VOR2_TRI_CLIPPER_RIGID_VERT*& first);

} // namespace VOR2_LOADER
