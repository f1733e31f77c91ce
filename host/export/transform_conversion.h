#pragma once

/// Between the host's transforms and the file's.
///
/// The host keeps double-precision matrices in row-vector form, with lengths in centimetres. The file
/// keeps single-precision positions in metres and quaternions, with y and z swapped. Only local matrices
/// are read; the links between nodes compose them.

#include "format/scene/root.h"

#include <maya/MDagPath.h>
#include <maya/MMatrix.h>

namespace VOR2_EXPORTER_MAYA {

using namespace VOR2_LOADER;

/// The change of basis that swaps y and z, and its inverse.
[[nodiscard]] const MMatrix& vr2_mat();
[[nodiscard]] const MMatrix& vr2_mat_inverse();

/// The rows of a host matrix's rotation, rounded to single precision and brought to unit length each by
/// itself, as the columns of a matrix without translation. Nothing is made orthogonal, and a row of no
/// length gives NaNs.
[[nodiscard]] MATRIX_3X4 normalised_axes(const MMatrix& matrix);

/// The node's local matrix as the host gives it.
[[nodiscard]] MMatrix host_matrix(const MDagPath& path);

/// A host matrix in the file's axes and in metres. Scale is lost, shear stays in the axes.
[[nodiscard]] MATRIX_3X4 to_file_matrix(const MMatrix& orj_mat);
/// The same with the translation 2.54 times as long, for scenes whose root brings inches to centimetres.
[[nodiscard]] MATRIX_3X4 to_file_matrix_scaled(const MMatrix& orj_mat);

[[nodiscard]] MATRIX_3X4 local_matrix(const MDagPath& path);
[[nodiscard]] MATRIX_3X4 local_matrix_scaled(const MDagPath& path);
[[nodiscard]] VECTOR_3 local_position(const MDagPath& path);
[[nodiscard]] VECTOR_3 local_position_scaled(const MDagPath& path);
[[nodiscard]] QUATERNION local_rotation(const MDagPath& path);
[[nodiscard]] QUATERNION local_rotation_scaled(const MDagPath& path);

/// What takes the node's position to the origin: the translation of the inverse of its local matrix.
[[nodiscard]] VECTOR_3 origin_offset(const MDagPath& path);

/// The passes over a node's keys. `index` lies within the hierarchy, and the node has both tracks.
void offset_positions(VOR2& root, u32 index, VECTOR_3 offset);
/// A quarter turn about x: positions (x, y, z) become (x, z, -y).
void axis_pass(VOR2& root, u32 index);
/// Half a turn about y: positions (x, y, z) become (-x, y, -z).
void rotate_180_pass(VOR2& root, u32 index);

} // namespace VOR2_EXPORTER_MAYA
