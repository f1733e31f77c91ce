#include "headless/geometry/modifiers.h"

#include "headless/geometry/mesh_limits.h"

#include <algorithm>
#include <unordered_map>

namespace headless {
namespace {

Float3 mean(const Float3& a, const Float3& b) {
    return narrow((wide(a) + wide(b)) * 0.5);
}
Float2 mean(const Float2& a, const Float2& b) {
    return {(a.u + b.u) * 0.5f, (a.v + b.v) * 0.5f};
}
Float4 mean(const Float4& a, const Float4& b) {
    return {(a.r + b.r) * 0.5f, (a.g + b.g) * 0.5f, (a.b + b.b) * 0.5f, (a.a + b.a) * 0.5f};
}

void add(Vector3& sum, const Float3& value) {
    sum = sum + wide(value);
}
Float3 share(const Vector3& sum, double count, Float3) {
    return narrow(sum * (1.0 / count));
}
struct Sum4 {
    double v[4] = {};
};
void add(Sum4& sum, const Float2& value) {
    sum.v[0] += value.u;
    sum.v[1] += value.v;
}
void add(Sum4& sum, const Float4& value) {
    const double parts[] = {value.r, value.g, value.b, value.a};
    for (int i = 0; i < 4; ++i) sum.v[i] += parts[i];
}
Float2 share(const Sum4& sum, double count, Float2) {
    return {static_cast<float>(sum.v[0] / count), static_cast<float>(sum.v[1] / count)};
}
Float4 share(const Sum4& sum, double count, Float4) {
    return {static_cast<float>(sum.v[0] / count), static_cast<float>(sum.v[1] / count),
            static_cast<float>(sum.v[2] / count), static_cast<float>(sum.v[3] / count)};
}

// Cuts one list of values that corners share, points as much as UVs: a value half way along each side of a chosen face
// (the same for both faces where they share the side's ends), and one in its middle.
template<typename T, typename Sum>
class ListDivider {
public:
    ListDivider(std::vector<T>& values, std::vector<int>& of_corner) : values_(values), of_corner_(of_corner) {}

    /// Makes the values half way that a face needs.
    void cut_sides(std::span<const std::size_t> face_corners) {
        for (std::size_t i = 0; i < face_corners.size(); ++i) {
            const int a = at(face_corners[i]), b = at(face_corners[(i + 1) % face_corners.size()]);
            if (a < 0 || b < 0) continue;
            const auto [place, fresh] = halves_.try_emplace(key(a, b), static_cast<int>(values_.size()));
            if (fresh)
                values_.push_back(mean(values_[static_cast<std::size_t>(a)], values_[static_cast<std::size_t>(b)]));
        }
    }
    /// The value half way between two corners; -1 where none was made.
    int half(std::size_t a, std::size_t b) const {
        if (at(a) < 0 || at(b) < 0) return -1;
        const auto place = halves_.find(key(at(a), at(b)));
        return place == halves_.end() ? -1 : place->second;
    }
    int middle(std::span<const std::size_t> face_corners) {
        Sum sum;
        for (const std::size_t corner : face_corners) {
            if (at(corner) < 0) return -1;
            add(sum, values_[static_cast<std::size_t>(at(corner))]);
        }
        values_.push_back(share(sum, static_cast<double>(face_corners.size()), T{}));
        return static_cast<int>(values_.size() - 1);
    }
    int at(std::size_t corner) const { return of_corner_[corner]; }
    void put(int value) { made_.push_back(value); }
    void finish() { of_corner_ = std::move(made_); }

private:
    static std::uint64_t key(int a, int b) {
        const auto low = static_cast<std::uint32_t>(std::min(a, b)), high = static_cast<std::uint32_t>(std::max(a, b));
        return (std::uint64_t{high} << 32) | low;
    }

    std::vector<T>& values_;
    std::vector<int>& of_corner_;
    std::vector<int> made_;
    std::unordered_map<std::uint64_t, int> halves_;
};

class Divider {
public:
    Divider(Mesh& mesh, const std::vector<bool>& chosen)
        : mesh_(mesh), chosen_(chosen), points_(mesh.points, mesh.corner_vertex) {
        for (UvSet& set : mesh.uv_sets) uvs_.emplace_back(set.values, set.of_corner);
        for (ColourSet& set : mesh.colour_sets) colours_.emplace_back(set.values, set.of_corner);
    }

    /// Which faces came of chosen ones.
    std::vector<bool> divide() {
        for (std::size_t face = 0; face < mesh_.face_count(); ++face) {
            if (!is_cut(face)) continue;
            gather(face);
            each_list([&](auto& list) { list.cut_sides(corners_); });
        }
        for (std::size_t face = 0; face < mesh_.face_count(); ++face) {
            gather(face);
            if (is_cut(face))
                cut();
            else
                keep(face);
        }
        each_list([](auto& list) { list.finish(); });
        mesh_.face_start = std::move(starts_);
        mesh_.holes = std::move(holes_);
        mesh_.corner_normals.clear();
        return std::move(from_chosen_);
    }

private:
    template<typename Do>
    void each_list(Do&& act) {
        act(points_);
        for (auto& list : uvs_) act(list);
        for (auto& list : colours_) act(list);
    }

    bool is_cut(std::size_t face) const {
        return (chosen_.empty() || chosen_[face]) && mesh_.corner_count(face) >= 3 && !mesh_.holes_of(face);
    }

    void gather(std::size_t face) {
        corners_.clear();
        for (std::size_t i = mesh_.face_start[face]; i < mesh_.face_start[face + 1]; ++i) corners_.push_back(i);
    }

    void end_face(std::size_t corner_count, bool from_chosen) {
        starts_.push_back(starts_.back() + corner_count);
        from_chosen_.push_back(from_chosen);
    }

    // A quad at each corner: the corner, half way to the next, the middle, half way back.
    void cut() {
        const std::size_t count = corners_.size();
        std::vector<int> middles;
        each_list([&](auto& list) { middles.push_back(list.middle(corners_)); });
        for (std::size_t i = 0; i < count; ++i) {
            const std::size_t here = corners_[i], next = corners_[(i + 1) % count],
                              before = corners_[(i + count - 1) % count];
            std::size_t which = 0;
            each_list([&](auto& list) {
                list.put(list.at(here));
                list.put(list.half(here, next));
                list.put(middles[which++]);
                list.put(list.half(before, here));
            });
            end_face(4, true);
        }
    }

    // As it was, with the points that its neighbours put on its sides; a holed face's sides aren't told apart, and
    // stay.
    void keep(std::size_t face) {
        const std::size_t count = corners_.size();
        const FaceHoles* holes = mesh_.holes_of(face);
        std::size_t made = count;
        for (std::size_t i = 0; i < count; ++i) {
            const std::size_t here = corners_[i], next = corners_[(i + 1) % count];
            each_list([&](auto& list) { list.put(list.at(here)); });
            if (holes || points_.half(here, next) < 0) continue;
            each_list([&](auto& list) { list.put(list.half(here, next)); });
            ++made;
        }
        if (holes) holes_.push_back({starts_.size() - 1, holes->lengths});
        end_face(made, false);
    }

    Mesh& mesh_;
    const std::vector<bool>& chosen_;
    ListDivider<Float3, Vector3> points_;
    std::vector<ListDivider<Float2, Sum4>> uvs_;
    std::vector<ListDivider<Float4, Sum4>> colours_;
    std::vector<std::size_t> corners_, starts_{0};
    std::vector<FaceHoles> holes_;
    std::vector<bool> from_chosen_;
};

std::uint64_t corner_key(int vertex, int face) {
    return (std::uint64_t{static_cast<std::uint32_t>(face)} << 32) | static_cast<std::uint32_t>(vertex);
}

} // namespace

void divide_faces(Mesh& mesh, const std::vector<bool>& chosen, std::int64_t times) {
    std::vector<bool> now = chosen;
    for (std::int64_t i = 0; i < times; ++i) {
        if (mesh.corners_in_sets() > MeshLimits::divided_corners / 4) {
            mesh.notes.emplace_back("it would have too many faces and isn't divided all the times");
            break;
        }
        const std::size_t faces = mesh.face_count();
        std::vector<bool> next = Divider(mesh, now).divide();
        if (mesh.face_count() == faces) break; // no face was cut, and none will be next time
        if (!now.empty()) now = std::move(next);
    }
    mesh.make_edges();
}

void transform_mesh(Mesh& mesh, const Matrix& matrix) {
    for (Float3& point : mesh.points) point = narrow(transform_point(wide(point), matrix));
    if (mesh.corner_normals.empty()) return;
    const Matrix turned = transposed(inverse(matrix));
    for (Float3& normal : mesh.corner_normals) {
        if (!is_set_normal(normal)) continue;
        normal = unit_or_up(transform_direction(wide(normal), turned));
    }
}

void colour_vertices(Mesh& mesh, const std::string& set_name, const std::vector<VertexColour>& colours) {
    auto set = std::ranges::find(mesh.colour_sets, set_name, &ColourSet::name);
    if (set == mesh.colour_sets.end()) {
        ColourSet made;
        made.index = mesh.colour_sets.empty() ? 0 : mesh.colour_sets.back().index + 1;
        made.name = set_name;
        made.of_corner.assign(mesh.corner_vertex.size(), -1);
        set = mesh.colour_sets.insert(mesh.colour_sets.end(), std::move(made));
    }
    mesh.current_colour_set = static_cast<std::size_t>(set - mesh.colour_sets.begin());
    std::unordered_map<std::uint64_t, int> places;
    for (const VertexColour& colour : colours) {
        places[corner_key(colour.vertex, colour.face)] = static_cast<int>(set->values.size());
        set->values.push_back(colour.colour);
    }
    for (std::size_t face = 0; face < mesh.face_count(); ++face) {
        for (std::size_t i = mesh.face_start[face]; i < mesh.face_start[face + 1]; ++i) {
            auto found = places.find(corner_key(mesh.corner_vertex[i], static_cast<int>(face)));
            if (found == places.end()) found = places.find(corner_key(mesh.corner_vertex[i], -1));
            if (found != places.end()) set->of_corner[i] = found->second;
        }
    }
}

} // namespace headless
