#pragma once

#include "headless/geometry/element_list.h"
#include "headless/geometry/mesh.h"
#include "headless/geometry/mesh_limits.h"
#include "headless/graph/node.h"

#include <array>

namespace headless {

/// The long lists of a mesh node, behind its attributes: `vt` points, `pt` tweaks of points, `ed` edges, `n` normals,
/// `fc` faces, and set by set `uvst[].uvsp` and `clst[].clsp`. Elements may come in pieces and in any order, and give
/// back what was set. Names of sets and all else are stored in the node as with any other.
/// A face is taken as words of the type "polyFaces" that begin with "f". Words that don't go on as a face's do are
/// given back too; such a face has no corners.
class MeshData final : public NodeData {
public:
    using Uv = std::array<double, 2>;
    using Colour = std::array<double, 4>;

    bool set(const Plug& plug, const Value& value) override;
    bool keeps_alone(const Plug& plug) const override;
    bool get(const Plug& plug, Value& out) const override;
    bool indices(const Plug& array, std::vector<int>& out) const override;

    const ElementList<Vector3>& points() const { return points_; }
    const ElementList<Vector3>& tweaks() const { return tweaks_; }
    const ElementList<Vector3>& edges() const { return edges_; }
    const ElementList<Vector3>& normals() const { return normals_; }
    const std::map<int, ElementList<Uv>>& uvs() const { return uvs_; }
    const std::map<int, ElementList<Colour>>& colours() const { return colours_; }

    /// The faces by index, encoded as `encode_face` has it; empty for one that isn't of a face's form.
    std::vector<int> face_indices() const { return faces_.indices(); }
    std::size_t face_count() const { return faces_.block().size(); } ///< up to the first gap
    bool faces_have_gap() const { return faces_.has_gap(); }
    std::span<const std::int32_t> face(int index) const;
    /// The words of a face as they were set.
    RawTokens face_words(int index) const;

    /// The data of a mesh node; null for another.
    static MeshData* of(const Node& node);

    /// What was last worked out from this node's history, and what it was worked out of.
    struct Evaluated {
        std::vector<std::uint64_t> from;
        std::shared_ptr<const Mesh> mesh;
        std::vector<std::uint64_t> still_from; ///< of the part of the history that no moment changes
        std::shared_ptr<const Mesh> still;
        bool computing = false;
        std::vector<std::string> told; ///< notes that the user has seen
        MadeCorners corners;           ///< of a mesh that these lists don't hold
    };
    Evaluated evaluated;

private:
    struct FaceSpan {
        std::size_t first = 0, count = 0;
    };
    ElementList<Vector3>* triples(AttributeId id, int& component);
    bool set_triple(ElementList<Vector3>& list, int component, int index, const Value& value);
    bool set_face(int index, const Value& value);

    ElementList<Vector3> points_, tweaks_, edges_, normals_;
    std::map<int, ElementList<Uv>> uvs_;
    std::map<int, ElementList<Colour>> colours_;
    ElementList<FaceSpan> faces_;
    std::vector<std::int32_t> face_numbers_;
    std::map<int, RawTokens> odd_faces_;
};

/// The mesh that a node's own lists describe, with its tweaks on its points and without its history. What can't be made
/// sense of is left out and noted: behind a gap a list ends; a face that names edges, and an edge that names points,
/// which aren't there has no corners; indices of UVs and colours that aren't there count as none.
Mesh build_mesh(const Node& node, const MeshData& data);

/// Adds a node's tweaks to the points of a mesh that came from elsewhere.
void add_tweaks(const MeshData& data, Mesh& mesh);

} // namespace headless
