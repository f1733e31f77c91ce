#pragma once

/// Meshes whose points move each by itself, as animated meshes.

#include "host/export/sample_range.h"
#include "host/export/whole_mesh.h"

namespace VOR2_EXPORTER_MAYA {

class MOVING_POINTS {
public:
    /// The mesh as it is at the start of the range; it stands at a node.
    MOVING_POINTS(const MDagPath& shape, u32 matrix_index, WHOLE_MESH mesh)
        : my_shape(shape), my_matrix_index(matrix_index), my_mesh(std::move(mesh)) {}

    /// In a file; for each sample.
    [[nodiscard]] double bytes_of_sample() const { return 32.0 * static_cast<double>(my_mesh.point_of.size()); }
    /// Once for each sample, in order; the host's clock stands there.
    void sample();
    /// Appends the mesh to the root. A vertex has a key of its place and one of its normal wherever they change.
    void finish(VOR2& root, const SAMPLE_RANGE& range);

private:
    MDagPath my_shape;
    u32 my_matrix_index;
    WHOLE_MESH my_mesh;
    std::vector<std::vector<VECTOR_3>> my_positions, my_normals; ///< by sample, of each vertex
};

} // namespace VOR2_EXPORTER_MAYA
