#pragma once

/// Host meshes as `VOR2_RIGID`s and host shaders as `VOR2_STANDARD_MATERIAL`s.
///
/// Vertices are in the axes of the file's world, not in those of its nodes: (x, y, -z) in metres. See
/// `mesh_export.h` for how a mesh so comes to stand at its node.

#include "format/scene/root.h"

#include <maya/MColor.h>
#include <maya/MDagPath.h>
#include <maya/MFloatVector.h>
#include <maya/MFnLambertShader.h>
#include <maya/MFnMesh.h>
#include <maya/MObject.h>
#include <maya/MPoint.h>
#include <maya/MString.h>

namespace VOR2_EXPORTER_MAYA {

using namespace VOR2_LOADER;

/// Of a material that a mesh's faces lack.
inline constexpr u32 NO_MATERIAL = 0xFFFFFFFF;

/// Appends a rigid with the mesh's triangles to the root: three vertices of their own for each, in groups by
/// the `shader_index` of their shading group; faces in no group are in the group of `NO_MATERIAL`. False,
/// with a message, when the host doesn't give a part of the mesh; the rigid stays, empty.
[[nodiscard]] bool translate_mesh(const MDagPath& path, VOR2& root);

/// Fills a vertex: its place, its normal as it is, its colour unless that is the host's -1 in all four for
/// none, and for every UV set of the mesh the current set's UV of that number, (0, 0, 0) where there is no
/// such UV. Always true.
bool translate_vertex(const MFnMesh& mesh, int vertex_id, const MPoint& position, const MFloatVector& normal,
                      const MColor& colour, VOR2_RIGID_VERT& vertex);

/// Puts a material for a shader into the root's `materials` at its `shader_index`, which grow with absent
/// entries up to there. False, with a message, when there is one already, and for a shader that is no
/// lambert, whose material keeps its defaults.
[[nodiscard]] bool translate_material(const MObject& shader, VOR2& root);

/// The shader's name, ambient colour, and the opacity of its transparency, each with one key at time 0.
/// Always true.
bool translate_lambert(const MFnLambertShader& shader, VOR2_STANDARD_MATERIAL& material);

/// The number of a host object in this process, from 0 in the order in which they are first asked for: by
/// its full DAG path, or by its name for one that has no place in the DAG.
[[nodiscard]] u32 shader_index(const MObject& object);

/// To standard output and to the user.
void report_error(const MString& message);

} // namespace VOR2_EXPORTER_MAYA
