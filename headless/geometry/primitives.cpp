#include "headless/geometry/primitives.h"

#include "headless/geometry/mesh_limits.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace headless {
namespace {

Mesh too_fine() {
    Mesh out;
    out.notes.emplace_back("it would have too many points and has none");
    return out;
}

std::int64_t at_least(std::int64_t least, std::int64_t value) {
    return std::clamp<std::int64_t>(value, least, MeshLimits::primitive_points);
}

double along(double from, double to, std::int64_t i, std::int64_t count) {
    return i == count ? to : from + (to - from) * static_cast<double>(i) / static_cast<double>(count);
}

// Puts faces together corner by corner, with UVs where they are wanted.
class MeshMaker {
public:
    explicit MeshMaker(bool uvs) : with_uvs_(uvs) {
        mesh_.uv_sets.resize(1);
        mesh_.uv_sets[0].name = "map1";
    }

    int point(double x, double y, double z) {
        mesh_.points.push_back(narrow({x, y, z}));
        return static_cast<int>(mesh_.points.size() - 1);
    }
    int uv(double u, double v) {
        if (!with_uvs_) return -1;
        mesh_.uv_sets[0].values.push_back({static_cast<float>(u), static_cast<float>(v)});
        return static_cast<int>(mesh_.uv_sets[0].values.size() - 1);
    }
    void face(std::span<const int> vertices, std::span<const int> uvs) {
        mesh_.add_face(vertices);
        std::vector<int>& list = mesh_.uv_sets[0].of_corner;
        if (with_uvs_)
            list.insert(list.end(), uvs.begin(), uvs.end());
        else
            list.resize(list.size() + vertices.size(), -1);
    }
    void face(std::initializer_list<int> vertices, std::initializer_list<int> uvs) {
        face(std::span(vertices.begin(), vertices.size()), std::span(uvs.begin(), uvs.size()));
    }

    Mesh finish() {
        mesh_.make_edges();
        return std::move(mesh_);
    }

private:
    Mesh mesh_;
    bool with_uvs_;
};

// A cube's points go round it in rows along x: up the front, back over the top, down the back, forward underneath;
// then follow those within its right and its left side.
class CubeMaker {
public:
    CubeMaker(const CubeShape& shape, bool uvs)
        : shape_(shape), across_(static_cast<int>(shape.across)), up_(static_cast<int>(shape.up)),
          along_(static_cast<int>(shape.along)), rows_(2 * (up_ + along_)), maker_(uvs) {}

    Mesh make() {
        for (int row = 0; row < rows_; ++row) {
            const auto [y, z] = row_place(row);
            for (int i = 0; i <= across_; ++i) maker_.point(x_of(i), y, z);
        }
        const int right_inner = rows_ * (across_ + 1), left_inner = right_inner + (up_ - 1) * (along_ - 1);
        for (const int side : {across_, 0}) {
            for (int j = 1; j < up_; ++j) {
                for (int k = 1; k < along_; ++k) maker_.point(x_of(side), y_of(j), z_of(k));
            }
        }
        for (int row = 0; row <= rows_; ++row) {
            for (int i = 0; i <= across_; ++i) maker_.uv(0.375 + 0.25 * i / across_, row_v(row));
        }
        const int right_uvs = (rows_ + 1) * (across_ + 1), left_uvs = right_uvs + along_ * (up_ + 1);
        for (const double edge : {0.625, 0.375}) {
            for (int j = 0; j <= up_; ++j) {
                for (int k = 1; k <= along_; ++k)
                    maker_.uv(edge + (edge > 0.5 ? 0.25 : -0.25) * k / along_, 0.25 * j / up_);
            }
        }
        ring_faces();
        side_faces(across_, right_inner, right_uvs);
        side_faces(0, left_inner, left_uvs);
        return maker_.finish();
    }

private:
    double x_of(int i) const { return along(-shape_.width / 2, shape_.width / 2, i, across_); }
    double y_of(int j) const { return along(-shape_.height / 2, shape_.height / 2, j, up_); }
    double z_of(int k) const { return along(shape_.depth / 2, -shape_.depth / 2, k, along_); }

    std::pair<double, double> row_place(int row) const {
        if (row <= up_) return {y_of(row), z_of(0)};
        if (row <= up_ + along_) return {y_of(up_), z_of(row - up_)};
        if (row <= 2 * up_ + along_) return {y_of(2 * up_ + along_ - row), z_of(along_)};
        return {y_of(0), z_of(rows_ - row)};
    }
    // Each of the four sides takes a quarter of the height, however high it is.
    double row_v(int row) const {
        if (row <= up_) return 0.25 * row / up_;
        if (row <= up_ + along_) return 0.25 + 0.25 * (row - up_) / along_;
        if (row <= 2 * up_ + along_) return 0.5 + 0.25 * (row - up_ - along_) / up_;
        return 0.75 + 0.25 * (row - 2 * up_ - along_) / along_;
    }

    int ring_point(int row, int i) const { return (row == rows_ ? 0 : row) * (across_ + 1) + i; }
    int ring_uv(int row, int i) const { return row * (across_ + 1) + i; }

    void ring_faces() {
        for (int row = 0; row < rows_; ++row) {
            for (int i = 0; i < across_; ++i)
                maker_.face(
                    {ring_point(row, i), ring_point(row, i + 1), ring_point(row + 1, i + 1), ring_point(row + 1, i)},
                    {ring_uv(row, i), ring_uv(row, i + 1), ring_uv(row + 1, i + 1), ring_uv(row + 1, i)});
        }
    }

    // A point of a side by its place up it and back along it: on its rim one of the rows', else one of its own.
    int side_point(int column, int inner, int j, int k) const {
        if (k == 0) return ring_point(j, column);
        if (k == along_) return ring_point(2 * up_ + along_ - j, column);
        if (j == up_) return ring_point(up_ + k, column);
        if (j == 0) return ring_point(rows_ - k, column);
        return inner + (j - 1) * (along_ - 1) + k - 1;
    }
    int side_uv(int column, int uvs, int j, int k) const {
        return k == 0 ? ring_uv(j, column) : uvs + j * along_ + k - 1;
    }

    void side_faces(int column, int inner, int uvs) {
        const bool right = column > 0;
        for (int j = 0; j < up_; ++j) {
            for (int n = 0; n < along_; ++n) {
                const int k = right ? n : along_ - 1 - n, near = right ? k : k + 1, far = right ? k + 1 : k;
                maker_.face({side_point(column, inner, j, near), side_point(column, inner, j, far),
                             side_point(column, inner, j + 1, far), side_point(column, inner, j + 1, near)},
                            {side_uv(column, uvs, j, near), side_uv(column, uvs, j, far),
                             side_uv(column, uvs, j + 1, far), side_uv(column, uvs, j + 1, near)});
            }
        }
    }

    const CubeShape& shape_;
    int across_, up_, along_, rows_;
    MeshMaker maker_;
};

// What goes round an axis: rings of points from the bottom up, each beginning one step past x and turning toward -z.
class RoundMaker {
public:
    RoundMaker(int around, bool uvs) : around_(around), maker_(uvs) {}

    MeshMaker& maker() { return maker_; }

    int ring(double radius, double y) {
        int first = 0;
        for (int i = 0; i < around_; ++i) {
            const double angle = 2.0 * std::numbers::pi * (i + 1) / around_;
            const bool last = i + 1 == around_;
            const int made =
                maker_.point(last ? radius : radius * std::cos(angle), y, last ? 0.0 : -radius * std::sin(angle));
            if (i == 0) first = made;
        }
        return first;
    }

    /// A row of UVs, with one more than a ring has points so that the last face of it has its own.
    int uv_row(double from, double to, double v) {
        int first = -1;
        for (int i = 0; i <= around_; ++i) {
            const int made = maker_.uv(along(from, to, i, around_), v);
            if (i == 0) first = made;
        }
        return first;
    }
    int uv_circle(double radius, double u, double v, double turn) {
        int first = -1;
        for (int i = 0; i < around_; ++i) {
            const double angle = 2.0 * std::numbers::pi * (i + 1) / around_;
            const int made = maker_.uv(u + radius * std::cos(angle), v + turn * radius * std::sin(angle));
            if (i == 0) first = made;
        }
        return first;
    }

    void band(int low, int high, int low_uv, int high_uv) {
        for (int i = 0; i < around_; ++i) {
            const int next = (i + 1) % around_;
            maker_.face({low + i, low + next, high + next, high + i},
                        {low_uv + i, low_uv + i + 1, high_uv + i + 1, high_uv + i});
        }
    }
    /// A ring in a cap, inside another; `upward` says which way the cap faces.
    void cap_band(int outer, int inner, int outer_uv, int inner_uv, bool upward) {
        for (int i = 0; i < around_; ++i) {
            const int next = (i + 1) % around_, a = upward ? i : next, b = upward ? next : i;
            maker_.face({outer + a, outer + b, inner + b, inner + a},
                        {outer_uv + a, outer_uv + b, inner_uv + b, inner_uv + a});
        }
    }
    void cap_fan(int ring, int middle, int ring_uv, int middle_uv, bool upward) {
        for (int i = 0; i < around_; ++i) {
            const int next = (i + 1) % around_, a = upward ? i : next, b = upward ? next : i;
            maker_.face({ring + a, ring + b, middle}, {ring_uv + a, ring_uv + b, middle_uv});
        }
    }
    void cap_face(int ring, int ring_uv, bool upward) {
        std::vector<int> vertices(static_cast<std::size_t>(around_)), uvs(vertices.size());
        for (int i = 0; i < around_; ++i) {
            const int at = upward ? i : around_ - 1 - i;
            vertices[static_cast<std::size_t>(i)] = ring + at;
            uvs[static_cast<std::size_t>(i)] = ring_uv + at;
        }
        maker_.face(vertices, uvs);
    }
    /// The triangles between a ring and a pole, each with a UV of its own at the pole.
    void pole(int ring, int middle, int ring_uv, double v, bool upward) {
        for (int i = 0; i < around_; ++i) {
            const int next = (i + 1) % around_;
            const int tip = maker_.uv((i + 0.5) / around_, v);
            if (upward)
                maker_.face({ring + i, ring + next, middle}, {ring_uv + i, ring_uv + i + 1, tip});
            else
                maker_.face({ring + next, ring + i, middle}, {ring_uv + i + 1, ring_uv + i, tip});
        }
    }
    /// A whole cap at a height: rings inward from the rim, and the middle.
    void cap(int rim, double radius, double y, std::int64_t rings, double v, bool upward) {
        constexpr double uv_radius = 0.15625;
        const double turn = upward ? 1.0 : -1.0;
        int outer = rim, outer_uv = uv_circle(uv_radius, 0.5, v, turn);
        if (rings == 0) return cap_face(rim, outer_uv, upward);
        for (std::int64_t i = 1; i < rings; ++i) {
            const double part = along(1.0, 0.0, i, rings);
            const int inner = ring(radius * part, y), inner_uv = uv_circle(uv_radius * part, 0.5, v, turn);
            cap_band(outer, inner, outer_uv, inner_uv, upward);
            outer = inner;
            outer_uv = inner_uv;
        }
        const int middle = maker_.point(0.0, y, 0.0);
        cap_fan(outer, middle, outer_uv, maker_.uv(0.5, v), upward);
    }

private:
    int around_;
    MeshMaker maker_;
};

RoundShape tidy(const RoundShape& shape) {
    RoundShape out = shape;
    out.around = at_least(3, shape.around);
    out.up = at_least(1, shape.up);
    out.caps = at_least(0, shape.caps);
    return out;
}

bool is_too_fine(const RoundShape& shape) {
    return shape.around * (shape.up + 2 * shape.caps + 2) > MeshLimits::primitive_points;
}

} // namespace

Mesh make_cube(const CubeShape& shape, bool uvs) {
    CubeShape made = shape;
    for (std::int64_t* count : {&made.across, &made.up, &made.along}) *count = at_least(1, *count);
    const auto points = static_cast<double>(made.across + 1) * 2.0 * static_cast<double>(made.up + made.along) +
                        2.0 * static_cast<double>(made.up - 1) * static_cast<double>(made.along - 1);
    return points > MeshLimits::primitive_points ? too_fine() : CubeMaker(made, uvs).make();
}

Mesh make_plane(double width, double height, std::int64_t across, std::int64_t along_count, bool uvs) {
    across = at_least(1, across);
    along_count = at_least(1, along_count);
    if ((across + 1) * (along_count + 1) > MeshLimits::primitive_points) return too_fine();
    MeshMaker maker(uvs);
    for (std::int64_t row = 0; row <= along_count; ++row) {
        for (std::int64_t i = 0; i <= across; ++i)
            maker.point(along(-width / 2, width / 2, i, across), 0.0, along(height / 2, -height / 2, row, along_count));
    }
    for (std::int64_t row = 0; row <= along_count; ++row) {
        for (std::int64_t i = 0; i <= across; ++i) maker.uv(along(0, 1, i, across), along(0, 1, row, along_count));
    }
    const int stride = static_cast<int>(across) + 1;
    for (int row = 0; row < along_count; ++row) {
        for (int i = 0; i < across; ++i) {
            const int at = row * stride + i;
            maker.face({at, at + 1, at + stride + 1, at + stride}, {at, at + 1, at + stride + 1, at + stride});
        }
    }
    return maker.finish();
}

Mesh make_sphere(double radius, std::int64_t around, std::int64_t up, bool uvs) {
    around = at_least(3, around);
    up = at_least(2, up);
    if (around * up > MeshLimits::primitive_points) return too_fine();
    RoundMaker maker(static_cast<int>(around), uvs);
    std::vector<int> rings, rows;
    for (std::int64_t i = 1; i < up; ++i) {
        const double angle = std::numbers::pi * static_cast<double>(i) / static_cast<double>(up);
        rings.push_back(maker.ring(radius * std::sin(angle), -radius * std::cos(angle)));
        rows.push_back(maker.uv_row(0.0, 1.0, along(0.0, 1.0, i, up)));
    }
    const int bottom = maker.maker().point(0.0, -radius, 0.0), top = maker.maker().point(0.0, radius, 0.0);
    for (std::size_t i = 0; i + 1 < rings.size(); ++i) maker.band(rings[i], rings[i + 1], rows[i], rows[i + 1]);
    maker.pole(rings.front(), bottom, rows.front(), 0.0, false);
    maker.pole(rings.back(), top, rows.back(), 1.0, true);
    return maker.maker().finish();
}

Mesh make_cylinder(const RoundShape& wanted, bool uvs) {
    const RoundShape shape = tidy(wanted);
    if (is_too_fine(shape)) return too_fine();
    RoundMaker maker(static_cast<int>(shape.around), uvs);
    std::vector<int> rings, rows;
    for (std::int64_t i = 0; i <= shape.up; ++i) {
        rings.push_back(maker.ring(shape.radius, along(-shape.height / 2, shape.height / 2, i, shape.up)));
        rows.push_back(maker.uv_row(0.375, 0.625, along(0.3125, 0.6875, i, shape.up)));
    }
    for (std::size_t i = 0; i + 1 < rings.size(); ++i) maker.band(rings[i], rings[i + 1], rows[i], rows[i + 1]);
    maker.cap(rings.front(), shape.radius, -shape.height / 2, shape.caps, 0.15625, false);
    maker.cap(rings.back(), shape.radius, shape.height / 2, shape.caps, 0.84375, true);
    return maker.maker().finish();
}

Mesh make_cone(const RoundShape& wanted, bool uvs) {
    const RoundShape shape = tidy(wanted);
    if (is_too_fine(shape)) return too_fine();
    RoundMaker maker(static_cast<int>(shape.around), uvs);
    std::vector<int> rings, rows;
    for (std::int64_t i = 0; i < shape.up; ++i) {
        rings.push_back(
            maker.ring(along(shape.radius, 0.0, i, shape.up), along(-shape.height / 2, shape.height / 2, i, shape.up)));
        rows.push_back(maker.uv_row(0.0, 1.0, along(0.3125, 1.0, i, shape.up)));
    }
    for (std::size_t i = 0; i + 1 < rings.size(); ++i) maker.band(rings[i], rings[i + 1], rows[i], rows[i + 1]);
    maker.cap(rings.front(), shape.radius, -shape.height / 2, shape.caps, 0.15625, false);
    const int tip = maker.maker().point(0.0, shape.height / 2, 0.0);
    maker.pole(rings.back(), tip, rows.back(), 1.0, true);
    return maker.maker().finish();
}

void turn_axis(Mesh& mesh, const Vector3& axis) {
    const double size = length(axis);
    if (!(size > 0.0) || !std::isfinite(size)) return;
    const Vector3 to = axis * (1.0 / size);
    if (to.y > 1.0 - 1e-12) return;
    // The shortest way there; straight down, half a turn about x.
    Quaternion turn{1.0, 0.0, 0.0, 0.0};
    if (to.y > -1.0 + 1e-12) {
        const double w = std::sqrt((1.0 + to.y) / 2.0);
        turn = {to.z / (2.0 * w), 0.0, -to.x / (2.0 * w), w};
    }
    const Matrix matrix = to_matrix(turn);
    for (Float3& point : mesh.points) point = narrow(transform_direction(wide(point), matrix));
}

} // namespace headless
