#pragma once

/// Host meshes with all that the corners of their faces have.

#include "format/scene/root.h"

#include <maya/MDagPath.h>
#include <maya/MFnMesh.h>

#include <functional>
#include <vector>

namespace VOR2_EXPORTER_MAYA {

using namespace VOR2_LOADER;

/// A mesh as the file has it. Vertices are in the axes of the file's world, (x, y, -z) in metres, and shared by corners
/// that agree in all they have: the host's point, the normal of that corner (apart at hard edges and where normals are
/// set), its colour in the current set, and its UVs in every set, (0, 0, 0) where it has none.
struct WHOLE_MESH {
    VOR2_RIGID rigid;           ///< its name, channels, vertices and groups; it stands nowhere yet
    std::vector<u32> point_of;  ///< of each vertex, the host's point
    std::vector<u32> corner_of; ///< of each vertex, the first of its corners, counted through all faces
    u32 point_count = 0;
};

/// Which material of the file a shading group stands for.
using MATERIAL_OF_GROUP = std::function<u32(const MObject& group)>;

/// Reads the mesh of a path; points and normals are those of `geometry` where that isn't null, the same mesh as it
/// comes to one of its deformers. UV sets get mapping channels from 1 on, and their names go among the extended
/// properties, as does the current colour set's. False, with a message, when the host doesn't give a part of the mesh;
/// what is there then is empty.
[[nodiscard]] bool read_whole_mesh(const MDagPath& path, const MObject& geometry, const MATERIAL_OF_GROUP& material_of,
                                   WHOLE_MESH& out);

/// The normals of all corners, face by face, in the axes of vertices.
[[nodiscard]] MStatus read_corner_normals(const MFnMesh& mesh, std::vector<VECTOR_3>& out);

/// Gives another class of mesh the name, the channels, the groups and, where its vertices hold values, the vertices.
template<class MESH_CLASS>
void take_shape(const WHOLE_MESH& from, MESH_CLASS& to) {
    to.name = from.rigid.name;
    to.mapping_channels = from.rigid.mapping_channels;
    to.sub_objects = from.rigid.sub_objects;
    to.extended_properties = from.rigid.extended_properties;
    to.vertices.grow_by(from.rigid.vertices.size());
    using VERT = std::remove_reference_t<decltype(to.vertices[0])>;
    if constexpr (std::is_base_of_v<VOR2_RIGID_VERT, VERT>) {
        for (u64 i = 0; i < to.vertices.size(); ++i)
            static_cast<VOR2_RIGID_VERT&>(to.vertices[i]) = from.rigid.vertices[i];
    }
}

/// A host point, or a direction of unit length, in the axes of vertices.
[[nodiscard]] VECTOR_3 vertex_position(const MPoint& point);
[[nodiscard]] VECTOR_3 vertex_normal(const MFloatVector& normal);

} // namespace VOR2_EXPORTER_MAYA
