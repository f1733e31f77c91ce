#include "host/export/mesh_translation.h"

#include "format/tracks/constant_track.h"
#include "host/export/host_text.h"
#include "support/platform/platform.h"

#include <maya/MColorArray.h>
#include <maya/MFloatVectorArray.h>
#include <maya/MFn.h>
#include <maya/MFnDagNode.h>
#include <maya/MFnDependencyNode.h>
#include <maya/MGlobal.h>
#include <maya/MIntArray.h>
#include <maya/MObjectArray.h>
#include <maya/MPointArray.h>

#include <map>
#include <string>
#include <utility>
#include <vector>

namespace VOR2_EXPORTER_MAYA {
namespace {

/// What is read of a mesh before any of it is translated.
struct MESH_PARTS {
    MIntArray triangle_counts, triangle_vertices;
    MObjectArray shaders;
    MIntArray shader_indices;
    MPointArray positions;
    MFloatVectorArray normals;
    MColorArray vertex_colours;
};

bool is_read(const MStatus& status, const char* what, const MFnMesh& mesh) {
    if (status == MStatus::kSuccess) return true;
    report_error(MString("Failed to ") + what + " (mesh: " + mesh.name() + ") - " + status.errorString());
    return false;
}

bool read_parts(MFnMesh& mesh, unsigned int instance, MESH_PARTS& parts) {
    return is_read(mesh.getTriangles(parts.triangle_counts, parts.triangle_vertices), "getTriangles", mesh) &&
           is_read(mesh.getConnectedShaders(instance, parts.shaders, parts.shader_indices), "getConnectedShaders",
                   mesh) &&
           is_read(mesh.getPoints(parts.positions, MSpace::kObject), "getPoints", mesh) &&
           is_read(mesh.getNormals(parts.normals, MSpace::kObject), "getNormals", mesh) &&
           is_read(mesh.getVertexColors(parts.vertex_colours), "getVertexColors", mesh);
}

/// The material ids of a mesh's polygons, each shader's looked up once.
class MATERIAL_IDS {
public:
    explicit MATERIAL_IDS(const MESH_PARTS& parts) : my_parts(parts), my_ids(parts.shaders.length()) {
        for (unsigned int i = 0; i < parts.shaders.length(); ++i) my_ids[i] = shader_index(parts.shaders[i]);
    }
    [[nodiscard]] u32 of(unsigned int polygon) const {
        if (polygon >= my_parts.shader_indices.length()) return NO_MATERIAL;
        const int shader = my_parts.shader_indices[polygon];
        return shader >= 0 && static_cast<std::size_t>(shader) < my_ids.size()
                   ? my_ids[static_cast<std::size_t>(shader)]
                   : NO_MATERIAL;
    }

private:
    const MESH_PARTS& my_parts;
    std::vector<u32> my_ids;
};

} // namespace

void report_error(const MString& message) {
    platform::print_line(message.asChar());
    MGlobal::displayError(message);
}

u32 shader_index(const MObject& object) {
    static std::map<std::string, u32> indices;
    static u32 counter = 0;
    const MString path =
        object.hasFn(MFn::kDagNode) ? MFnDagNode(object).fullPathName() : MFnDependencyNode(object).name();
    const auto [entry, is_new] = indices.try_emplace(path.asChar(), counter);
    if (is_new) ++counter;
    return entry->second;
}

bool translate_mesh(const MDagPath& path, VOR2& root) {
    MFnMesh mesh(path);
    root.rigids.push_back(make_owned<VOR2_RIGID>());
    VOR2_RIGID& rigid = *root.rigids.back();
    MESH_PARTS parts;
    if (!read_parts(mesh, path.instanceNumber(), parts)) return false;
    const MATERIAL_IDS material_ids(parts);
    const u32 expected_triangles = parts.triangle_vertices.length() / 3;
    rigid.vertices.reserve(parts.triangle_vertices.length());
    unsigned int t = 0;
    for (unsigned int p = 0; p < parts.triangle_counts.length(); ++p) {
        const u32 material_id = material_ids.of(p);
        for (int i = 0; i < parts.triangle_counts[p]; ++i, ++t) {
            VOR2_RIGID_VERT* corners[3];
            rigid.add_triangle(corners[0], corners[1], corners[2], material_id, expected_triangles);
            for (unsigned int c = 0; c < 3; ++c) {
                const int vertex_id = parts.triangle_vertices[t * 3 + c];
                const auto at = static_cast<unsigned int>(vertex_id);
                translate_vertex(mesh, vertex_id, parts.positions[at], parts.normals[at], parts.vertex_colours[at],
                                 *corners[c]);
            }
        }
    }
    return true;
}

bool translate_vertex(const MFnMesh& mesh, int vertex_id, const MPoint& position, const MFloatVector& normal,
                      const MColor& colour, VOR2_RIGID_VERT& vertex) {
    vertex.position = VECTOR_3(static_cast<f32>(position.x / 100.0), static_cast<f32>(position.y / 100.0),
                               -static_cast<f32>(position.z / 100.0));
    vertex.normal = VECTOR_3(normal.x, normal.y, normal.z);
    if (colour != MColor(-1.0F, -1.0F, -1.0F, -1.0F))
        vertex.colour = VOR2_COLOUR(colour.r, colour.g, colour.b, colour.a);
    const int set_count = mesh.numUVSets();
    vertex.uvs.reserve(static_cast<u64>(set_count < 0 ? 0 : set_count));
    for (int set = 0; set < set_count; ++set) {
        float u = 0.0F;
        float v = 0.0F;
        mesh.getUV(vertex_id, u, v);
        vertex.uvs.push_back(VECTOR_3(u, v, 0.0F));
    }
    return true;
}

bool translate_material(const MObject& shader, VOR2& root) {
    const u32 i = shader_index(shader);
    if (root.materials.size() <= i) root.materials.grow_by(i + 1 - root.materials.size());
    if (root.materials[i]) {
        report_error(MString("Double allocating a material (") + MFnDependencyNode(shader).name() + ") ! How?");
        return false;
    }
    OWNED<VOR2_STANDARD_MATERIAL> made = make_owned<VOR2_STANDARD_MATERIAL>();
    VOR2_STANDARD_MATERIAL& material = *made;
    root.materials[i] = std::move(made);
    if (shader.hasFn(MFn::kLambert)) return translate_lambert(MFnLambertShader(shader), material);
    report_error(MString("Unhandled shader type (") + MFnDependencyNode(shader).name() + ")");
    return false;
}

bool translate_lambert(const MFnLambertShader& shader, VOR2_STANDARD_MATERIAL& material) {
    material.name = to_text(shader.name());
    material.material_flag = false;
    const MColor ambient = shader.ambientColor();
    material.ambient_colour =
        constant_track<VOR2_ANIMATABLE_COLOUR_LINEAR>(VOR2_COLOUR(ambient.r, ambient.g, ambient.b, ambient.a));
    material.transparency = constant_track<VOR2_ANIMATABLE_FLOAT32_LINEAR>(shader.transparency().a);
    return true;
}

} // namespace VOR2_EXPORTER_MAYA
