// The clipper on any polygon and rectangle: its list ends, and for a triangle of numbers of one size what is left
// lies within the rectangle and has the area that a clip in double precision gives.

#include "format/geometry/tri_clipper.h"
#include "fuzz/input.h"

#include <cmath>
#include <vector>

namespace {

using namespace VOR2_LOADER;
using VERT = VOR2_TRI_CLIPPER_RIGID_VERT;

struct Point {
    double x, z;
};

double area(const std::vector<Point>& polygon) {
    double twice = 0;
    for (std::size_t i = 0; i < polygon.size(); ++i) {
        const Point &a = polygon[i], &b = polygon[(i + 1) % polygon.size()];
        twice += a.x * b.z - b.x * a.z;
    }
    return twice / 2;
}

/// The part of a polygon where the coordinate, times `sign`, is no greater than the limit's.
std::vector<Point> half(const std::vector<Point>& polygon, double Point::*axis, double limit, double sign) {
    std::vector<Point> out;
    for (std::size_t i = 0; i < polygon.size(); ++i) {
        const Point &a = polygon[i], &b = polygon[(i + 1) % polygon.size()];
        const double from = sign * (a.*axis - limit), to = sign * (b.*axis - limit);
        if (from <= 0) out.push_back(a);
        if ((from < 0 && to > 0) || (from > 0 && to < 0)) {
            const double part = from / (from - to);
            out.push_back({a.x + (b.x - a.x) * part, a.z + (b.z - a.z) * part});
        }
    }
    return out;
}

/// A whole number of steps of 1/16 within a few units, or any bits at all.
f32 coordinate(fuzz::Input& input, bool tame) {
    return tame ? static_cast<f32>(input.take<std::int8_t>()) / 16.0F : input.take<f32>();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const u8* data, std::size_t size) {
    fuzz::Input input(data, size);
    const bool tame = input.below(2) == 0;
    const u32 count = tame ? 3 : input.below(7);
    std::vector<Point> polygon;
    clip_begin();
    for (u32 i = 0; i < count; ++i) {
        VERT vertex;
        vertex.clip_position = {coordinate(input, tame), coordinate(input, tame), coordinate(input, tame)};
        for (u32 n = input.below(3); n > 0; --n) vertex.uvs.push_back({1, 2, 3});
        for (u32 n = input.below(3); n > 0; --n) vertex.binormal_tangents.emplace_back();
        polygon.push_back({vertex.clip_position.x, vertex.clip_position.z});
        if (clip_add_vertex(vertex) != (i < MOST_CLIP_VERTICES)) fuzz::wrong("a vertex too few or too many is taken");
    }
    f32 min_x = coordinate(input, tame), max_x = coordinate(input, tame);
    f32 min_z = coordinate(input, tame), max_z = coordinate(input, tame);
    if (tame && min_x > max_x) std::swap(min_x, max_x);
    if (tame && min_z > max_z) std::swap(min_z, max_z);

    VERT* first = nullptr;
    const bool changed = clip_to_rectangle(min_x, min_z, max_x, max_z, first);
    std::vector<Point> left;
    for (const VERT* vertex = first; vertex != nullptr; vertex = vertex->next) {
        left.push_back({vertex->clip_position.x, vertex->clip_position.z});
        if (left.size() > 12) fuzz::wrong("a list without an end");
    }
    if (!changed && left.size() != std::min<std::size_t>(count, MOST_CLIP_VERTICES)) fuzz::wrong("a vertex got lost");
    if (!tame) return 0;
    for (const Point& point : left) {
        const double beyond = std::max({min_x - point.x, point.x - max_x, min_z - point.z, point.z - max_z});
        if (!(beyond <= 1e-5)) fuzz::wrong("a corner outside the rectangle");
    }
    polygon = half(half(polygon, &Point::x, min_x, -1), &Point::x, max_x, 1);
    polygon = half(half(polygon, &Point::z, min_z, -1), &Point::z, max_z, 1);
    if (!(std::abs(area(polygon) - area(left)) <= 1e-3)) fuzz::wrong("another area");
    return 0;
}
