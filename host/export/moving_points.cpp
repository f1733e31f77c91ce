#include "host/export/moving_points.h"

#include "format/tracks/constant_track.h"
#include "host/export/telling_keys.h"

#include <maya/MPointArray.h>

namespace VOR2_EXPORTER_MAYA {
namespace {

OWNED<VOR2_ANIMATABLE_VECTOR_3> track_of(const std::vector<std::vector<VECTOR_3>>& samples, std::size_t vertex,
                                         const SAMPLE_RANGE& range) {
    OWNED<VOR2_ANIMATABLE_VECTOR_3> track = make_owned<VOR2_ANIMATABLE_VECTOR_3_LINEAR>();
    add_telling_keys(*track, range, samples.size(),
                     [&](std::size_t k) -> const VECTOR_3& { return samples[k][vertex]; });
    return track;
}

} // namespace

void MOVING_POINTS::sample() {
    const MFnMesh mesh(my_shape);
    MPointArray points;
    std::vector<VECTOR_3> normals;
    const bool is_there = mesh.getPoints(points) && read_corner_normals(mesh, normals);
    std::vector<VECTOR_3>& places = my_positions.emplace_back();
    std::vector<VECTOR_3>& directions = my_normals.emplace_back();
    for (std::size_t i = 0; i < my_mesh.point_of.size(); ++i) {
        const VOR2_RIGID_VERT& vertex = my_mesh.rigid.vertices[i];
        const u32 point = my_mesh.point_of[i], corner = my_mesh.corner_of[i];
        places.push_back(is_there && point < points.length() ? vertex_position(points[point]) : vertex.position);
        directions.push_back(is_there && corner < normals.size() ? normals[corner] : vertex.normal);
    }
}

void MOVING_POINTS::finish(VOR2& root, const SAMPLE_RANGE& range) {
    auto made = make_owned<VOR2_ANIM_MESH>();
    take_shape(my_mesh, *made);
    made->matrix_index = my_matrix_index;
    for (u64 i = 0; i < made->vertices.size(); ++i) {
        const VOR2_RIGID_VERT& from = my_mesh.rigid.vertices[i];
        VOR2_ANIM_MESH_VERT& vertex = made->vertices[i];
        vertex.position_track = track_of(my_positions, i, range);
        vertex.normal_track = track_of(my_normals, i, range);
        vertex.colour_track = constant_track<VOR2_ANIMATABLE_COLOUR_LINEAR>(from.colour, range.start_time());
        for (const VECTOR_3& uv : from.uvs)
            vertex.uv_tracks.push_back(constant_track<VOR2_ANIMATABLE_VECTOR_3_LINEAR>(uv, range.start_time()));
    }
    root.anim_meshes.push_back(std::move(made));
}

} // namespace VOR2_EXPORTER_MAYA
