#pragma once

/// From blend shapes of the host to morph meshes.

#include "host/export/deformers.h"
#include "host/export/sample_range.h"
#include "host/export/whole_mesh.h"

namespace VOR2_EXPORTER_MAYA {

/// A mesh that blend shapes move. Each target of the host is one of the file's, under its alias; a target at several
/// weights is one for each of them, with the weight in percent behind the alias, of which at most two count at a time:
/// their weights are worked out so that the point goes straight from one to the next.
class MORPH_SHAPE {
public:
    /// The mesh is as it comes to the first blend shape to act; `deformers` has the last first. It stands at a node.
    MORPH_SHAPE(const std::vector<DEFORMER>& deformers, u32 matrix_index, WHOLE_MESH mesh);

    /// Once for each sample, in order; the host's clock stands there.
    void sample();
    /// Appends the mesh to the root.
    void finish(VOR2& root, const SAMPLE_RANGE& range);

private:
    /// A target of the host with its steps.
    struct GROUP {
        MPlug weight, envelope, visibility;
        std::vector<double> at; ///< the weights of its steps, ascending
        u32 first = 0;          ///< of the file's targets
    };
    void add_group(const DEFORMER& deformer, unsigned int index, const MPlug& group,
                   const std::vector<std::vector<u32>>& vertices_of);
    using OFFSETS = std::vector<std::pair<u32, VECTOR_3>>;
    [[nodiscard]] OFFSETS offsets_of(const DEFORMER& deformer, const MPlug& item) const;

    u32 my_matrix_index;
    WHOLE_MESH my_mesh;
    ARRAY<VOR2_MORPH_MESH_VERT> my_vertices;
    std::vector<GROUP> my_groups;
    std::vector<TEXT> my_names;
    std::vector<std::vector<f32>> my_weights; ///< of each of the file's targets, at each sample
};

/// How much of each step counts at a weight: none at 0, and straight from one step to the next and on beyond the last.
[[nodiscard]] std::vector<double> shares_of_steps(const std::vector<double>& at, double weight);

} // namespace VOR2_EXPORTER_MAYA
