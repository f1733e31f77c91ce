// From a mesh node's lists to a mesh whose indices are good.
#include "headless/geometry/mesh_data.h"
#include "headless/geometry/mesh_limits.h"
#include "headless/geometry/poly_faces.h"

#include <algorithm>
#include <optional>

namespace headless {
namespace {

Float2 narrow_value(const MeshData::Uv& uv) {
    return {static_cast<float>(uv[0]), static_cast<float>(uv[1])};
}
Float4 narrow_value(const MeshData::Colour& c) {
    return {static_cast<float>(c[0]), static_cast<float>(c[1]), static_cast<float>(c[2]), static_cast<float>(c[3])};
}

// A corner's vertex, by number, when it is one of a mesh's.
std::optional<int> vertex_in(double number, std::size_t count) {
    if (!(number >= 0.0) || !(number < static_cast<double>(count))) return {};
    return static_cast<int>(number);
}

class MeshBuilder {
public:
    MeshBuilder(const Node& node, const MeshData& data) : node_(node), data_(data) {}

    Mesh build() {
        for (const Vector3& point : data_.points().block()) mesh_.points.push_back(narrow(point));
        add_tweaks(data_, mesh_);
        edges();
        sets(mesh_.uv_sets, data_.uvs(), "uvst", "uvsn");
        sets(mesh_.colour_sets, data_.colours(), "clst", "clsn");
        mesh_.current_uv_set = current(mesh_.uv_sets, "cuvs");
        mesh_.current_colour_set = current(mesh_.colour_sets, "ccls");
        faces();
        normals();
        note_gaps();
        return std::move(mesh_);
    }

private:
    void edges() {
        const std::size_t count = mesh_.points.size();
        for (const Vector3& words : data_.edges().block()) {
            const auto from = vertex_in(words.x, count), to = vertex_in(words.y, count);
            const bool good = from && to;
            if (!good) ++bad_edges_;
            mesh_.edges.push_back(good ? MeshEdge{*from, *to, words.z != 0.0} : MeshEdge{-1, -1, false});
        }
        if (bad_edges_ > 0)
            mesh_.notes.push_back(std::to_string(bad_edges_) + " of its edges name points that aren't there");
    }

    template<typename T, typename Lists>
    void sets(std::vector<CornerValues<T>>& out, const Lists& lists, const char* array, const char* name) {
        const Plug sets = node_.find_plug(array);
        for (const int index : node_.existing_indices(sets.key)) {
            if (out.size() == MeshLimits::sets) {
                mesh_.notes.push_back("'" + sets.attribute().long_name + "' has more than " +
                                      std::to_string(out.size()) + " elements, and the others are left out");
                break;
            }
            CornerValues<T> made;
            made.index = index;
            made.name = node_.get(sets.element(index).child(node_.find_attribute(name)).key).text();
            if (const auto list = lists.find(index); list != lists.end()) {
                for (const auto& value : list->second.block()) made.values.push_back(narrow_value(value));
            }
            out.push_back(std::move(made));
        }
    }

    template<typename T>
    std::size_t current(const std::vector<CornerValues<T>>& sets, const char* attribute) const {
        const std::string name = node_.get(node_.find_plug(attribute).key).text();
        const auto at = std::ranges::find(sets, name, &CornerValues<T>::name);
        return at == sets.end() ? 0 : static_cast<std::size_t>(at - sets.begin());
    }

    void faces() {
        std::size_t bad = 0;
        for (std::size_t i = 0; i < data_.face_count(); ++i) {
            if (!face(data_.face(static_cast<int>(i)))) ++bad;
        }
        if (bad > 0) mesh_.notes.push_back(std::to_string(bad) + " of its faces name edges that aren't there");
    }

    // False for one that can't be made sense of, which stays without corners.
    bool face(std::span<const std::int32_t> numbers) {
        const std::size_t first = mesh_.corner_vertex.size();
        FaceHoles holes{mesh_.face_count(), {}};
        bool good = !numbers.empty();
        each_part(numbers, [&](FacePart part, std::int32_t, std::span<const std::int32_t> values) {
            if (part != FacePart::outline && part != FacePart::hole) return;
            if (part == FacePart::hole) holes.lengths.push_back(values.size());
            good = corners(values) && good;
        });
        if (!good) {
            mesh_.corner_vertex.resize(first);
            holes.lengths.clear();
        }
        mesh_.face_start.push_back(mesh_.corner_vertex.size());
        if (!holes.lengths.empty()) mesh_.holes.push_back(std::move(holes));
        values(mesh_.uv_sets, numbers, FacePart::uvs, first);
        values(mesh_.colour_sets, numbers, FacePart::colours, first);
        return good;
    }

    // An edge below 0 is edge -i - 1 gone along backwards; a corner is where its edge begins.
    bool corners(std::span<const std::int32_t> edges) {
        for (const std::int32_t number : edges) {
            const bool backwards = number < 0;
            const auto edge = static_cast<std::size_t>(backwards ? -(number + 1) : number);
            if (edge >= mesh_.edges.size()) return false;
            const int vertex = backwards ? mesh_.edges[edge].to : mesh_.edges[edge].from;
            if (vertex < 0) return false;
            mesh_.corner_vertex.push_back(vertex);
        }
        return true;
    }

    template<typename T>
    void values(std::vector<CornerValues<T>>& sets, std::span<const std::int32_t> numbers, FacePart wanted,
                std::size_t first) {
        const std::size_t count = mesh_.corner_vertex.size() - first;
        for (CornerValues<T>& set : sets) {
            each_part(numbers, [&](FacePart part, std::int32_t index, std::span<const std::int32_t> list) {
                if (part != wanted || index != set.index) return;
                for (const std::int32_t value : list) {
                    const bool there = value >= 0 && static_cast<std::size_t>(value) < set.values.size();
                    set.of_corner.push_back(there ? value : -1);
                }
            });
            // Only a list that fits the corners says which value belongs to which.
            if (set.of_corner.size() != first + count) {
                set.of_corner.resize(first);
                set.of_corner.resize(first + count, -1);
            }
        }
    }

    void normals() {
        const std::vector<Vector3>& given = data_.normals().block();
        if (given.empty()) return;
        if (given.size() != mesh_.corner_vertex.size()) {
            mesh_.notes.push_back("its normals aren't as many as its faces have corners and are left out");
            return;
        }
        mesh_.corner_normals.reserve(given.size());
        for (const Vector3& normal : given) mesh_.corner_normals.push_back(narrow(normal));
    }

    void note_gaps() {
        bool gap = data_.points().has_gap() || data_.edges().has_gap() || data_.normals().has_gap();
        gap = gap || data_.faces_have_gap();
        for (const auto& [index, list] : data_.uvs()) gap = gap || list.has_gap();
        for (const auto& [index, list] : data_.colours()) gap = gap || list.has_gap();
        if (gap) mesh_.notes.emplace_back("its lists have gaps, and what stands behind one is left out");
    }

    const Node& node_;
    const MeshData& data_;
    Mesh mesh_;
    std::size_t bad_edges_ = 0;
};

} // namespace

void add_tweaks(const MeshData& data, Mesh& mesh) {
    data.tweaks().each([&](int index, const Vector3& by) {
        if (static_cast<std::size_t>(index) >= mesh.points.size()) return;
        Float3& point = mesh.points[static_cast<std::size_t>(index)];
        const Float3 tweak = narrow(by);
        point = {point.x + tweak.x, point.y + tweak.y, point.z + tweak.z};
    });
}

Mesh build_mesh(const Node& node, const MeshData& data) {
    return MeshBuilder(node, data).build();
}

} // namespace headless
