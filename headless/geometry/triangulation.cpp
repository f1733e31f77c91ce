#include "headless/geometry/triangulation.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace headless {
namespace {

template<typename A, typename B, typename C>
double turn(const A& a, const B& b, const C& c) {
    return (b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x);
}

template<typename A, typename B>
bool same_place(const A& a, const B& b) {
    return a.x == b.x && a.y == b.y;
}

// Whether two segments cross at a point that is no end of either.
template<typename S>
bool cross_inside(const S& a, const S& b, const S& c, const S& d) {
    if (same_place(a, c) || same_place(a, d) || same_place(b, c) || same_place(b, d)) return false;
    return turn(a, b, c) * turn(a, b, d) <= 0.0 && turn(c, d, a) * turn(c, d, b) <= 0.0;
}

} // namespace

void Triangulation::face(std::size_t face, std::vector<std::size_t>& corners) {
    const std::size_t first = mesh_.face_start[face], count = mesh_.corner_count(face);
    if (count < 3) return;
    const FaceHoles* holes = mesh_.holes_of(face);
    if (count == 3 || count > max_clipped_corners) return fan(first, count, corners);
    const Vector3 area = area_vector(mesh_, face);
    if (!holes && is_convex(first, count, area)) return fan(first, count, corners);
    project(first, count, area);
    outline_.assign(all_.begin(), all_.end());
    if (holes) join_holes(*holes);
    clip(corners);
}

void Triangulation::fan(std::size_t first, std::size_t count, std::vector<std::size_t>& corners) const {
    const std::size_t last = first + count - 1;
    corners.insert(corners.end(), {first, first + 1, last});
    for (std::size_t i = first + 1; i + 1 < last; ++i) corners.insert(corners.end(), {last, i, i + 1});
}

bool Triangulation::is_convex(std::size_t first, std::size_t count, const Vector3& area) const {
    const auto point = [&](std::size_t i) {
        return wide(mesh_.points[static_cast<std::size_t>(mesh_.corner_vertex[first + i % count])]);
    };
    const Vector3 apex = point(count - 1);
    for (std::size_t i = 0; i < count; ++i) {
        const Vector3 here = point(i), next = point(i + 1);
        if (!(dot(cross(next - here, point(i + 2) - next), area) > 0.0)) return false;
        if (i + 2 < count && !(dot(cross(here - apex, next - apex), area) > 0.0)) return false;
    }
    return true;
}

// Onto the plane of two axes that the face is widest in, with its outline counter-clockwise.
void Triangulation::project(std::size_t first, std::size_t count, const Vector3& area) {
    const double x = std::abs(area.x), y = std::abs(area.y), z = std::abs(area.z);
    const int dropped = x > y && x > z ? 0 : y > z ? 1 : 2;
    const int across = (dropped + 1) % 3, up = (dropped + 2) % 3;
    const double side = area[dropped] < 0.0 ? -1.0 : 1.0;
    all_.resize(count);
    for (std::size_t i = 0; i < count; ++i) {
        const Vector3 p = wide(mesh_.points[static_cast<std::size_t>(mesh_.corner_vertex[first + i])]);
        all_[i] = {first + i, p[across] * side, p[up]};
    }
}

void Triangulation::join_holes(const FaceHoles& holes) {
    const std::size_t total = std::accumulate(holes.lengths.begin(), holes.lengths.end(), std::size_t{0});
    std::size_t first = all_.size() - total;
    outline_.resize(first);
    loop_starts_.assign(1, 0);
    for (const std::size_t length : holes.lengths) {
        loop_starts_.push_back(first);
        first += length;
    }
    loop_starts_.push_back(first);
    // From the right: what stands between a hole and the outline was joined before it.
    std::vector<std::pair<double, std::size_t>> order;
    for (std::size_t hole = 1; hole + 1 < loop_starts_.size(); ++hole) {
        double right = -HUGE_VAL;
        for (std::size_t i = loop_starts_[hole]; i < loop_starts_[hole + 1]; ++i) right = std::max(right, all_[i].x);
        order.emplace_back(-right, hole);
    }
    std::ranges::sort(order);
    for (const auto& [right, hole] : order) join(loop_starts_[hole], loop_starts_[hole + 1] - loop_starts_[hole]);
}

// Whether a line meets no side of any loop but at their ends.
bool Triangulation::is_free(const Spot& from, const Spot& to) const {
    for (std::size_t loop = 0; loop + 1 < loop_starts_.size(); ++loop) {
        const std::size_t first = loop_starts_[loop], end = loop_starts_[loop + 1];
        for (std::size_t i = first; i < end; ++i) {
            if (cross_inside(from, to, all_[i], all_[i + 1 < end ? i + 1 : first])) return false;
        }
    }
    for (std::size_t i = 0; i < outline_.size(); ++i) {
        if (cross_inside(from, to, outline_[i], outline_[(i + 1) % outline_.size()])) return false;
    }
    return true;
}

// Goes from the hole's rightmost corner to the nearest one of the outline that it sees, round the hole, and back.
void Triangulation::join(std::size_t first, std::size_t count) {
    std::size_t start = first;
    for (std::size_t i = first; i < first + count; ++i) {
        if (all_[i].x > all_[start].x) start = i;
    }
    const Spot from = all_[start];
    std::vector<std::pair<double, std::size_t>> order(outline_.size());
    for (std::size_t i = 0; i < outline_.size(); ++i)
        order[i] = {std::hypot(outline_[i].x - from.x, outline_[i].y - from.y), i};
    for (auto& [distance, at] : order) {
        if (std::isnan(distance)) distance = HUGE_VAL;
    }
    std::ranges::sort(order);
    std::size_t bridge = order.front().second;
    for (const auto& [distance, at] : order) {
        if (!is_free(from, outline_[at])) continue;
        bridge = at;
        break;
    }
    std::vector<Spot> way;
    way.reserve(count + 2);
    for (std::size_t i = 0; i <= count; ++i) way.push_back(all_[first + (start - first + i) % count]);
    way.push_back(outline_[bridge]);
    outline_.insert(outline_.begin() + static_cast<std::ptrdiff_t>(bridge) + 1, way.begin(), way.end());
}

bool Triangulation::is_ear(std::size_t at) const {
    const std::size_t before = links_[at].before, behind = links_[at].behind;
    const Spot &a = outline_[before], &b = outline_[at], &c = outline_[behind];
    if (!(turn(a, b, c) > 0.0)) return false;
    for (std::size_t i = links_[behind].behind; i != before; i = links_[i].behind) {
        const Spot& p = outline_[i];
        if (same_place(p, a) || same_place(p, b) || same_place(p, c)) continue;
        if (turn(a, b, p) >= 0.0 && turn(b, c, p) >= 0.0 && turn(c, a, p) >= 0.0) return false;
    }
    return true;
}

// Only the two neighbours of a clipped ear can turn into ears or cease to be ones, which keeps the cost at the square
// of the number of corners.
void Triangulation::clip(std::vector<std::size_t>& corners) {
    const std::size_t count = outline_.size();
    links_.resize(count);
    for (std::size_t i = 0; i < count; ++i) links_[i] = {(i + count - 1) % count, (i + 1) % count, false};
    for (std::size_t i = 0; i < count; ++i) links_[i].ear = is_ear(i);
    std::size_t at = 0, left = count, passed = 0;
    while (left > 2) {
        // Once round without an ear the rest lies on a line or crosses itself, and any corner will do.
        if (!links_[at].ear && passed++ < left) {
            at = links_[at].behind;
            continue;
        }
        const std::size_t before = links_[at].before, behind = links_[at].behind;
        corners.insert(corners.end(), {outline_[before].corner, outline_[at].corner, outline_[behind].corner});
        links_[before].behind = behind;
        links_[behind].before = before;
        --left;
        passed = 0;
        if (left < 3) break;
        links_[before].ear = is_ear(before);
        links_[behind].ear = is_ear(behind);
        at = behind;
    }
}

} // namespace headless
