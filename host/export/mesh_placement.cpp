#include "host/export/mesh_placement.h"

#include "format/tracks/constant_track.h"

#include <cmath>

namespace VOR2_EXPORTER_MAYA {
namespace {

using COLUMN = AFFINE::COLUMN;
using BASIS = std::array<COLUMN, 3>;

// What is smaller than this against 1 came of single-precision tracks and is no shear and no scale.
constexpr double NEGLIGIBLE = 1e-5;

double dot(const COLUMN& a, const COLUMN& b) {
    return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
}
COLUMN cross(const COLUMN& a, const COLUMN& b) {
    return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}
COLUMN times(const COLUMN& a, double s) {
    return {a[0] * s, a[1] * s, a[2] * s};
}
double size(const COLUMN& a) {
    return std::sqrt(dot(a, a));
}
BASIS linear(const AFFINE& map) {
    return {map.columns[0], map.columns[1], map.columns[2]};
}
double determinant(const BASIS& b) {
    return dot(b[0], cross(b[1], b[2]));
}
BASIS transposed(const BASIS& b) {
    BASIS out;
    for (std::size_t c = 0; c < 3; ++c) {
        for (std::size_t r = 0; r < 3; ++r) out[c][r] = b[r][c];
    }
    return out;
}

bool is_square(const BASIS& b) {
    for (const auto& [i, k] : {std::pair(0U, 1U), {0U, 2U}, {1U, 2U}}) {
        if (std::abs(dot(b[i], b[k])) > NEGLIGIBLE * size(b[i]) * size(b[k])) return false;
    }
    return true;
}

QUATERNION rotation(const BASIS& b) {
    MATRIX_3X4 matrix = MATRIX_3X4::identity();
    for (int c = 0; c < 3; ++c) {
        const COLUMN& column = b[static_cast<std::size_t>(c)];
        matrix.set_column(
            c, VECTOR_3(static_cast<f32>(column[0]), static_cast<f32>(column[1]), static_cast<f32>(column[2])));
    }
    const QUATERNION q(matrix);
    const f32 by = 1.0F / std::sqrt(q.x * q.x + q.y * q.y + q.z * q.z + q.w * q.w);
    return {q.x * by, q.y * by, q.z * by, q.w * by};
}

/// The directions that a map keeps square to each other, by turning pairs of them until they are (one-sided
/// Jacobi): afterwards `images` are their images and square, and `directions` is a rotation.
void find_square(BASIS& images, BASIS& directions) {
    constexpr int SWEEPS = 30;
    for (int sweep = 0; sweep < SWEEPS; ++sweep) {
        bool turned = false;
        for (const auto& [i, k] : {std::pair(0U, 1U), {0U, 2U}, {1U, 2U}}) {
            const double a = dot(images[i], images[i]), b = dot(images[k], images[k]), c = dot(images[i], images[k]);
            if (!(std::abs(c) > 1e-15 * std::sqrt(a * b))) continue;
            turned = true;
            const double ratio = (b - a) / (2.0 * c);
            const double t = (ratio >= 0.0 ? 1.0 : -1.0) / (std::abs(ratio) + std::sqrt(1.0 + ratio * ratio));
            const double cosine = 1.0 / std::sqrt(1.0 + t * t), sine = cosine * t;
            for (BASIS* basis : {&images, &directions}) {
                const COLUMN p = (*basis)[i], q = (*basis)[k];
                for (std::size_t r = 0; r < 3; ++r) {
                    (*basis)[i][r] = cosine * p[r] - sine * q[r];
                    (*basis)[k][r] = sine * p[r] + cosine * q[r];
                }
            }
        }
        if (!turned) return;
    }
}

/// Square columns of any lengths as a rotation and the lengths, the last negative for a map that mirrors.
/// Columns of no length get a direction that goes with the others'.
BASIS unit_columns(BASIS columns, COLUMN& lengths) {
    std::size_t longest = 0;
    for (std::size_t i = 0; i < 3; ++i) {
        lengths[i] = size(columns[i]);
        if (lengths[i] > lengths[longest]) longest = i;
    }
    if (lengths[longest] == 0.0) return BASIS{COLUMN{1, 0, 0}, COLUMN{0, 1, 0}, COLUMN{0, 0, 1}};
    for (std::size_t i = 0; i < 3; ++i) {
        if (lengths[i] > 0.0) columns[i] = times(columns[i], 1.0 / lengths[i]);
    }
    const std::size_t next = (longest + 1) % 3, last = (longest + 2) % 3;
    if (lengths[next] == 0.0) {
        const COLUMN& along = columns[longest];
        const COLUMN aside = std::abs(along[0]) < 0.7 ? COLUMN{1, 0, 0} : COLUMN{0, 1, 0};
        const COLUMN square = lengths[last] > 0.0 ? cross(columns[last], along) : cross(along, aside);
        columns[next] = times(square, 1.0 / size(square));
    }
    if (lengths[last] == 0.0) columns[last] = cross(columns[longest], columns[next]);
    if (determinant(columns) < 0.0) {
        columns[2] = times(columns[2], -1.0);
        lengths[2] = -lengths[2];
    }
    return columns;
}

void add_node(VOR2_MATRIX_HIERARCHY& hierarchy, const TEXT& name, i32 parent, VECTOR_3 position, QUATERNION rotation,
              f32 time) {
    VOR2_MATRIX_NODE& node = hierarchy.nodes.emplace_back();
    node.name = name;
    node.parent_index = parent;
    node.position_track = constant_track<VOR2_ANIMATABLE_VECTOR_3_LINEAR>(position, time);
    node.rotation_track = constant_track<VOR2_ANIMATABLE_QUATERNION_SLERP>(rotation, time);
}

} // namespace

AFFINE::AFFINE(const MATRIX_3X4& matrix) {
    for (std::size_t c = 0; c < 4; ++c) {
        for (std::size_t r = 0; r < 3; ++r) columns[c][r] = static_cast<double>(matrix.m[r][c]);
    }
}

AFFINE::COLUMN AFFINE::direction(const COLUMN& d) const {
    COLUMN out{};
    for (std::size_t r = 0; r < 3; ++r) out[r] = columns[0][r] * d[0] + columns[1][r] * d[1] + columns[2][r] * d[2];
    return out;
}

AFFINE::COLUMN AFFINE::point(const COLUMN& p) const {
    COLUMN out = direction(p);
    for (std::size_t r = 0; r < 3; ++r) out[r] += columns[3][r];
    return out;
}

AFFINE AFFINE::of_normals() const {
    const BASIS b = linear(*this);
    const double sign = determinant(b) < 0.0 ? -1.0 : 1.0;
    AFFINE out;
    out.columns = {times(cross(b[1], b[2]), sign), times(cross(b[2], b[0]), sign), times(cross(b[0], b[1]), sign),
                   COLUMN{0, 0, 0}};
    return out;
}

bool AFFINE::is_finite() const {
    for (const COLUMN& column : columns) {
        for (const double number : column) {
            if (!std::isfinite(number)) return false;
        }
    }
    return true;
}

AFFINE operator*(const AFFINE& a, const AFFINE& b) {
    AFFINE out;
    for (std::size_t c = 0; c < 4; ++c) out.columns[c] = a.direction(b.columns[c]);
    for (std::size_t r = 0; r < 3; ++r) out.columns[3][r] += a.columns[3][r];
    return out;
}

AFFINE inverse(const AFFINE& map) {
    const BASIS b = linear(map);
    const double by = 1.0 / determinant(b);
    const BASIS rows{times(cross(b[1], b[2]), by), times(cross(b[2], b[0]), by), times(cross(b[0], b[1]), by)};
    const BASIS columns = transposed(rows);
    AFFINE out;
    for (std::size_t c = 0; c < 3; ++c) out.columns[c] = columns[c];
    out.columns[3] = times(out.direction(map.columns[3]), -1.0);
    return out;
}

AFFINE in_vertex_axes(const MMatrix& matrix) {
    AFFINE out;
    for (std::size_t c = 0; c < 4; ++c) {
        for (std::size_t r = 0; r < 3; ++r) {
            const bool negated = (c == 2) != (r == 2);
            const double number = matrix.matrix[c][r] * (c == 3 ? 0.01 : 1.0);
            out.columns[c][r] = negated ? -number : number;
        }
    }
    return out;
}

double distance_between(const AFFINE& a, const AFFINE& b, const COLUMN& low, const COLUMN& high) {
    double most = 0.0;
    for (unsigned int corner = 0; corner < 8; ++corner) {
        COLUMN at{};
        for (std::size_t r = 0; r < 3; ++r) at[r] = ((corner >> r) & 1U) != 0 ? high[r] : low[r];
        const COLUMN p = a.point(at), q = b.point(at);
        const double apart = size({p[0] - q[0], p[1] - q[1], p[2] - q[2]});
        if (!(apart <= most)) most = apart; // also for one that is no number
    }
    return most;
}

AFFINE rigid_part(const AFFINE& map) {
    const BASIS b = linear(map);
    const double length = size(b[0]);
    const COLUMN x = times(b[0], 1.0 / length);
    const double along = dot(x, b[1]);
    COLUMN y{b[1][0] - x[0] * along, b[1][1] - x[1] * along, b[1][2] - x[2] * along};
    y = times(y, 1.0 / size(y));
    AFFINE out;
    out.columns = {x, y, cross(x, y), map.columns[3]};
    return out.is_finite() ? out : AFFINE();
}

PLACEMENT placement_of(const AFFINE& map) {
    PLACEMENT out;
    if (!map.is_finite()) {
        const f32 half = std::sqrt(0.5F);
        out.outer = QUATERNION(half, 0.0F, 0.0F, half);
        return out;
    }
    BASIS images = linear(map), directions{COLUMN{1, 0, 0}, COLUMN{0, 1, 0}, COLUMN{0, 0, 1}};
    out.has_inner = !is_square(images);
    if (out.has_inner) find_square(images, directions);
    COLUMN lengths{};
    out.outer = rotation(unit_columns(images, lengths));
    if (out.has_inner) out.inner = rotation(transposed(directions));
    for (const double length : lengths) out.has_scale = out.has_scale || std::abs(length - 1.0) > NEGLIGIBLE;
    if (out.has_scale)
        out.scale = VECTOR_3(static_cast<f32>(lengths[0]), static_cast<f32>(lengths[1]), static_cast<f32>(lengths[2]));
    const COLUMN& to = map.columns[3];
    out.position = VECTOR_3(static_cast<f32>(to[0]), static_cast<f32>(to[1]), static_cast<f32>(to[2]));
    return out;
}

u32 add_nodes(VOR2_MATRIX_HIERARCHY& hierarchy, const PLACEMENT& placement, const TEXT& name, i32 parent, f32 time) {
    add_node(hierarchy, name, parent, placement.position, placement.outer, time);
    if (placement.has_scale) {
        hierarchy.nodes.back().scale_track = constant_track<VOR2_ANIMATABLE_VECTOR_3_LINEAR>(placement.scale, time);
    }
    if (placement.has_inner) {
        const auto outer = static_cast<i32>(hierarchy.nodes.size()) - 1;
        add_node(hierarchy, name, outer, VECTOR_3(0.0F, 0.0F, 0.0F), placement.inner, time);
    }
    return static_cast<u32>(hierarchy.nodes.size()) - 1;
}

u32 add_moving_nodes(VOR2_MATRIX_HIERARCHY& hierarchy, const std::vector<f32>& times, const std::vector<AFFINE>& maps,
                     const TEXT& name, i32 parent) {
    bool has_inner = false, has_scale = false;
    for (const AFFINE& map : maps) has_inner = has_inner || !is_square(linear(map));
    auto positions = make_owned<VOR2_ANIMATABLE_VECTOR_3_LINEAR>();
    auto scales = make_owned<VOR2_ANIMATABLE_VECTOR_3_LINEAR>();
    auto outer = make_owned<VOR2_ANIMATABLE_QUATERNION_SLERP>(), inner = make_owned<VOR2_ANIMATABLE_QUATERNION_SLERP>();
    BASIS directions{COLUMN{1, 0, 0}, COLUMN{0, 1, 0}, COLUMN{0, 0, 1}};
    for (std::size_t i = 0; i < maps.size(); ++i) {
        const AFFINE& map = maps[i];
        // From the directions of the time before, so that they turn no more than they must.
        BASIS images;
        for (std::size_t c = 0; c < 3; ++c) images[c] = map.direction(directions[c]);
        if (has_inner) find_square(images, directions);
        COLUMN lengths{};
        outer->add_key(rotation(unit_columns(images, lengths)), times[i]);
        inner->add_key(rotation(transposed(directions)), times[i]);
        const COLUMN& to = map.columns[3];
        const auto narrow = [](const COLUMN& c) {
            return VECTOR_3(static_cast<f32>(c[0]), static_cast<f32>(c[1]), static_cast<f32>(c[2]));
        };
        positions->add_key(narrow(to), times[i]);
        scales->add_key(narrow(lengths), times[i]);
        for (const double length : lengths) has_scale = has_scale || std::abs(length - 1.0) > NEGLIGIBLE;
    }
    outer->make_continuous();
    inner->make_continuous();
    VOR2_MATRIX_NODE& node = hierarchy.nodes.emplace_back();
    node.name = name;
    node.parent_index = parent;
    node.position_track = std::move(positions);
    node.rotation_track = std::move(outer);
    if (has_scale) node.scale_track = std::move(scales);
    if (has_inner) {
        VOR2_MATRIX_NODE& second = hierarchy.nodes.emplace_back();
        second.name = name;
        second.parent_index = static_cast<i32>(hierarchy.nodes.size()) - 2;
        second.position_track =
            constant_track<VOR2_ANIMATABLE_VECTOR_3_LINEAR>(VECTOR_3(0.0F, 0.0F, 0.0F), times.front());
        second.rotation_track = std::move(inner);
    }
    return static_cast<u32>(hierarchy.nodes.size()) - 1;
}

} // namespace VOR2_EXPORTER_MAYA
