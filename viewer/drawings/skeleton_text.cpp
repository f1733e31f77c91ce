#include "viewer/drawings/skeleton_text.h"

#include "inspect/scene_facts.h"
#include "support/text/unicode.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>
#include <vector>

namespace vor2::viewer {
namespace {

using namespace VOR2_LOADER;

bool is_finite(VECTOR_3 v) {
    return std::isfinite(v.x) && std::isfinite(v.y) && std::isfinite(v.z);
}

template<class TRACK>
bool moves(const OWNED<TRACK>& track) {
    return track && track->key_times().size() > 1;
}
bool is_still(const VOR2_MATRIX_NODE& node) {
    return !moves(node.position_track) && !moves(node.rotation_track) && !moves(node.scale_track);
}

/// Whether a name says that the joint is on one side: 1 left, -1 right, 0 neither.
int side_of(const std::string& name) {
    std::string words;
    for (const char c : name) {
        const bool letter = std::isalpha(static_cast<unsigned char>(c)) != 0;
        if (letter && std::isupper(static_cast<unsigned char>(c)) != 0) words += ' ';
        words += letter ? static_cast<char>(std::tolower(static_cast<unsigned char>(c))) : ' ';
    }
    words = " " + words + " ";
    for (const char* word : {" left ", " l ", " lf "}) {
        if (words.find(word) != std::string::npos) return 1;
    }
    for (const char* word : {" right ", " r ", " rt "}) {
        if (words.find(word) != std::string::npos) return -1;
    }
    return 0;
}

/// Dots in a grid of cells, two across and four down in each.
class DotCanvas {
public:
    DotCanvas(int columns, int rows)
        : columns_(columns), rows_(rows), cells_(static_cast<std::size_t>(columns) * static_cast<std::size_t>(rows)) {}

    int width() const { return columns_ * 2; }
    int height() const { return rows_ * 4; }
    void dot(int x, int y) {
        if (x < 0 || y < 0 || x >= width() || y >= height()) return;
        static constexpr unsigned char bits[4][2] = {{1, 8}, {2, 16}, {4, 32}, {64, 128}};
        cells_[place(x / 2, y / 4)].dots |= bits[y % 4][x % 2];
    }
    void line(double x0, double y0, double x1, double y1) {
        const int steps = std::max(1, static_cast<int>(std::ceil(std::max(std::abs(x1 - x0), std::abs(y1 - y0)))));
        for (int i = 0; i <= steps; ++i)
            dot(static_cast<int>(std::lround(x0 + (x1 - x0) * i / steps)),
                static_cast<int>(std::lround(y0 + (y1 - y0) * i / steps)));
    }
    /// A letter instead of a cell's dots.
    void letter(int column, int row, char32_t c) {
        if (column >= 0 && row >= 0 && column < columns_ && row < rows_) cells_[place(column, row)].letter = c;
    }
    bool is_free(int column, int row, int length) const {
        if (row < 0 || row >= rows_ || column < 0 || column + length > columns_) return false;
        const auto first = cells_.begin() + static_cast<std::ptrdiff_t>(place(column, row));
        return std::all_of(first, first + length, [](const Cell& cell) { return cell.dots == 0 && cell.letter == 0; });
    }

    std::string text(bool braille) const {
        std::string out;
        for (int row = 0; row < rows_; ++row) {
            std::string line;
            for (int column = 0; column < columns_; ++column) append_cell(line, cells_[place(column, row)], braille);
            line.erase(line.find_last_not_of(' ') + 1);
            out += line + "\n";
        }
        return out;
    }

private:
    std::size_t place(int column, int row) const {
        return static_cast<std::size_t>(row) * static_cast<std::size_t>(columns_) + static_cast<std::size_t>(column);
    }

    struct Cell {
        unsigned char dots = 0;
        char32_t letter = 0;
    };
    static void append_cell(std::string& line, const Cell& cell, bool braille) {
        if (cell.letter != 0) {
            append_utf8(line, braille || cell.letter < 0x80 ? cell.letter : U'?');
        } else if (cell.dots == 0) {
            line += ' ';
        } else if (braille) {
            append_utf8(line, 0x2800U + cell.dots);
        } else {
            const unsigned upper = cell.dots & 0x1BU, lower = cell.dots & 0xE4U;
            line += upper == 0 ? '.' : lower == 0 ? '\'' : ':';
        }
    }

    int columns_, rows_;
    std::vector<Cell> cells_;
};

struct Dot {
    double x = 0, y = 0;
};

class SkeletonDrawing {
public:
    SkeletonDrawing(const VOR2& scene, const TextView& view)
        : scene_(scene), nodes_(scene.matrix_hierarchy.nodes), view_(view), canvas_(view.columns, view.rows) {}

    std::string draw() {
        gather();
        if (shown_.empty() && extra_.empty()) return "nothing in this scene stands anywhere\n";
        fit();
        for (u64 i = 0; i < nodes_.size(); ++i) {
            const std::optional<u64> parent = bone_of(i);
            if (!parent) continue;
            const Dot a = seen(place_of(*parent)), b = seen(place_of(i));
            canvas_.line(a.x, a.y, b.x, b.y);
        }
        for (const u64 i : shown_) canvas_.dot(round(seen(place_of(i)).x), round(seen(place_of(i)).y));
        for (const VECTOR_3 point : extra_) canvas_.dot(round(seen(point).x), round(seen(point).y));
        write_names();
        return canvas_.text(view_.dots);
    }

private:
    static int round(double v) { return static_cast<int>(std::lround(v)); }
    VECTOR_3 place_of(u64 node) const { return nodes_[node].world_matrix.translation(); }

    bool has_parent(u64 node) const {
        const i32 parent = nodes_[node].parent_index;
        return parent >= 0 && static_cast<u64>(parent) < node;
    }
    /// A root that stands still is where things are attached, and no joint of a body.
    bool is_anchor(u64 node) const { return !has_parent(node) && has_child_[node] && is_still(nodes_[node]); }
    std::optional<u64> bone_of(u64 node) const {
        if (!has_parent(node)) return {};
        const u64 parent = static_cast<u64>(nodes_[node].parent_index);
        if (is_anchor(parent) || !is_finite(place_of(node)) || !is_finite(place_of(parent))) return {};
        return parent;
    }

    void gather() {
        has_child_.assign(nodes_.size(), false);
        for (u64 i = 0; i < nodes_.size(); ++i) {
            if (has_parent(i)) has_child_[static_cast<std::size_t>(nodes_[i].parent_index)] = true;
        }
        bool has_bones = false;
        for (u64 i = 0; i < nodes_.size(); ++i) {
            has_bones = has_bones || bone_of(i);
            if (!is_anchor(i) && is_finite(place_of(i))) shown_.push_back(i);
        }
        if (has_bones) return;
        for (const auto& mesh : scene_.rigids) {
            if (mesh)
                gather_points(*mesh,
                              mesh->matrix_index < nodes_.size() ? &nodes_[mesh->matrix_index].world_matrix : nullptr);
        }
        for (const auto& mesh : scene_.weighted_meshes) {
            if (mesh) gather_points(*mesh, nullptr);
        }
    }
    void gather_points(const VOR2_TRI_OBJECT& mesh, const MATRIX_3X4* matrix) {
        for (u32 i = 0; i < mesh.vertex_count(); ++i) {
            VECTOR_3 point(0.0F, 0.0F, 0.0F);
            mesh.vertex(i).get_position(point);
            if (matrix != nullptr) point = matrix->transform_point(point);
            if (is_finite(point)) extra_.push_back(point);
        }
    }

    /// The angle to the body's front: what is called left stands on its left. The file's axes are a left hand's.
    double front() const {
        double x = 0, z = 0;
        int lefts = 0, rights = 0;
        for (const int side : {1, -1}) {
            double sum_x = 0, sum_z = 0;
            int& count = side > 0 ? lefts : rights;
            for (const u64 i : shown_) {
                if (side_of(inspect::readable(nodes_[i].name)) != side) continue;
                sum_x += place_of(i).x;
                sum_z -= place_of(i).z;
                ++count;
            }
            if (count == 0) return 0;
            x += side * sum_x / count;
            z += side * sum_z / count;
        }
        return std::hypot(x, z) < 1e-4 ? 0 : std::atan2(-z, x);
    }

    /// Across and up in the view's plane.
    Dot flat(VECTOR_3 p) const { return {p.x * std::cos(yaw_) + p.z * std::sin(yaw_), p.y}; }

    void fit() {
        yaw_ = front() + view_.turn;
        constexpr double far = std::numeric_limits<double>::max();
        Dot low{far, far}, high{-far, -far};
        const auto take = [&](VECTOR_3 point) {
            const Dot dot = flat(point);
            low = {std::min(low.x, dot.x), std::min(low.y, dot.y)};
            high = {std::max(high.x, dot.x), std::max(high.y, dot.y)};
        };
        for (const u64 i : shown_) take(place_of(i));
        for (const VECTOR_3 point : extra_) take(point);
        const double room_x = canvas_.width() - 6, room_y = canvas_.height() - 4;
        scale_ = std::min(room_x / std::max(high.x - low.x, 1e-9), room_y / std::max(high.y - low.y, 1e-9));
        centre_ = {(low.x + high.x) / 2, (low.y + high.y) / 2};
    }
    Dot seen(VECTOR_3 point) const {
        const Dot dot = flat(point);
        return {canvas_.width() / 2.0 + (dot.x - centre_.x) * scale_,
                canvas_.height() / 2.0 - (dot.y - centre_.y) * scale_};
    }

    /// The names of joints that no bone leaves, where there is room beside them.
    void write_names() {
        for (const u64 i : shown_) {
            if (has_child_[i]) continue;
            const std::u16string name = to_utf16(inspect::readable(nodes_[i].name));
            std::vector<char32_t> letters;
            for (std::size_t at = 0; at < name.size() && letters.size() < 24;)
                letters.push_back(next_code_point(name, at));
            std::erase_if(letters, [](char32_t c) { return c < 0x20; });
            const int length = static_cast<int>(letters.size()), row = round(seen(place_of(i)).y) / 4;
            const int right = round(seen(place_of(i)).x) / 2 + 2, left = right - 3 - length;
            if (length == 0) continue;
            const bool is_left = seen(place_of(i)).x < canvas_.width() / 2.0;
            for (const int column : {is_left ? left : right, is_left ? right : left}) {
                if (!canvas_.is_free(column - 1, row, length + 2)) continue;
                for (int c = 0; c < length; ++c) canvas_.letter(column + c, row, letters[static_cast<std::size_t>(c)]);
                break;
            }
        }
    }

    const VOR2& scene_;
    const ARRAY<VOR2_MATRIX_NODE>& nodes_;
    TextView view_;
    DotCanvas canvas_;
    std::vector<bool> has_child_;
    std::vector<u64> shown_;
    std::vector<VECTOR_3> extra_;
    double yaw_ = 0, scale_ = 1;
    Dot centre_;
};

} // namespace

std::string skeleton_text(const VOR2& scene, const TextView& view) {
    return SkeletonDrawing(scene, view).draw();
}

} // namespace vor2::viewer
