#include "host/export/whole_mesh.h"

#include "host/export/export_settings.h"
#include "host/export/host_text.h"
#include "host/export/mesh_translation.h"
#include "host/export/properties.h"

#include <maya/MFloatArray.h>
#include <maya/MFloatVector.h>
#include <maya/MFloatVectorArray.h>
#include <maya/MGlobal.h>
#include <maya/MIntArray.h>
#include <maya/MPointArray.h>

#include <algorithm>

namespace VOR2_EXPORTER_MAYA {
namespace {

struct UV_SET {
    MString name;
    MFloatArray us, vs;
    std::vector<int> of_corner; ///< -1 for none
};

class MESH_READER {
public:
    MESH_READER(const MDagPath& path, const MObject& geometry, WHOLE_MESH& out) : my_mesh(path), my_out(out) {
        if (geometry.isNull())
            my_geometry.setObject(path);
        else
            my_geometry.setObject(geometry);
    }

    bool run(unsigned int instance, const MATERIAL_OF_GROUP& material_of) {
        if (!read(instance)) return false;
        my_out.rigid.name = name_for_file(my_mesh.name());
        my_out.point_count = my_points.length();
        name_sets();
        my_last_of_point.assign(my_points.length(), NONE);
        for (unsigned int i = 0; i < my_groups.length(); ++i) my_materials.push_back(material_of(my_groups[i]));
        add_triangles();
        return true;
    }

private:
    static constexpr u32 NONE = 0xFFFFFFFF;

    bool is_read(const MStatus& status, const char* what) {
        if (status == MStatus::kSuccess) return true;
        report_error(MString("Failed to ") + what + " (mesh: " + my_mesh.name() + ") - " + status.errorString());
        return false;
    }

    bool read(unsigned int instance) {
        return is_read(my_mesh.getVertices(my_corner_counts, my_corners), "getVertices") &&
               is_read(my_mesh.getTriangleOffsets(my_triangle_counts, my_triangles), "getTriangleOffsets") &&
               is_read(my_mesh.getConnectedShaders(instance, my_groups, my_group_of_face), "getConnectedShaders") &&
               is_read(my_geometry.getPoints(my_points, MSpace::kObject), "getPoints") &&
               is_read(my_mesh.getFaceVertexColors(my_colours), "getFaceVertexColors") &&
               is_read(read_corner_normals(my_geometry, my_normals), "getFaceVertexNormals") && goes_together() &&
               read_uv_sets();
    }

    /// Something between a deformer and the mesh may add or take faces.
    bool goes_together() {
        if (my_normals.size() == my_corners.length() && my_points.length() >= point_count()) return true;
        report_error(MString("The mesh has other points or faces than what comes to its deformers: ") + my_mesh.name());
        return false;
    }

    /// That the faces name.
    unsigned int point_count() const {
        int most = -1;
        for (unsigned int i = 0; i < my_corners.length(); ++i) most = std::max(most, my_corners[i]);
        return static_cast<unsigned int>(most + 1);
    }

    bool read_uv_sets() {
        MStringArray names;
        if (!is_read(my_mesh.getUVSetNames(names), "getUVSetNames")) return false;
        for (unsigned int set = 0; set < names.length(); ++set) {
            UV_SET& made = my_uv_sets.emplace_back();
            made.name = names[set];
            MIntArray counts, ids;
            if (!is_read(my_mesh.getUVs(made.us, made.vs, &made.name), "getUVs") ||
                !is_read(my_mesh.getAssignedUVs(counts, ids, &made.name), "getAssignedUVs"))
                return false;
            made.of_corner.reserve(my_corners.length());
            unsigned int next = 0;
            for (unsigned int face = 0; face < my_corner_counts.length(); ++face) {
                const bool has = face < counts.length() && counts[face] == my_corner_counts[face];
                for (int i = 0; i < my_corner_counts[face]; ++i) made.of_corner.push_back(has ? ids[next++] : -1);
            }
        }
        return true;
    }

    void name_sets() {
        for (std::size_t set = 0; set < my_uv_sets.size(); ++set) {
            const auto channel = static_cast<u32>(set + 1);
            my_out.rigid.mapping_channels.push_back(channel);
            add_text(my_out.rigid.extended_properties, "uv_set_" + std::to_string(channel),
                     my_uv_sets[set].name.asChar());
        }
        MStringArray names;
        if (my_mesh.numColorSets() == 0 || !my_mesh.getColorSetNames(names)) return;
        const MString current = my_mesh.currentColorSetName();
        add_text(my_out.rigid.extended_properties, "colour_set", current.asChar());
        if (names.length() > 1)
            MGlobal::displayWarning(MString("A vertex of the file has one colour: of the colour sets of ") +
                                    my_mesh.name() + " only " + current + " goes along");
    }

    VOR2_RIGID_VERT vertex_at(unsigned int corner) const {
        VOR2_RIGID_VERT vertex;
        vertex.position = vertex_position(my_points[static_cast<unsigned int>(my_corners[corner])]);
        vertex.normal = my_normals[corner];
        const MColor& colour = my_colours[corner];
        if (colour != MColor(-1.0F, -1.0F, -1.0F, -1.0F))
            vertex.colour = VOR2_COLOUR(colour.r, colour.g, colour.b, colour.a);
        vertex.uvs.reserve(my_uv_sets.size());
        for (const UV_SET& set : my_uv_sets) {
            const int id = set.of_corner[corner];
            const auto at = static_cast<unsigned int>(id);
            const bool has = id >= 0 && at < set.us.length();
            vertex.uvs.push_back(has ? VECTOR_3(set.us[at], set.vs[at], 0.0F) : VECTOR_3(0.0F, 0.0F, 0.0F));
        }
        return vertex;
    }

    /// Among the vertices of its point, looked at from the last made: many are as one of the last few.
    u32 vertex_of(unsigned int corner) {
        constexpr int MOST_LOOKED_AT = 64;
        const auto point = static_cast<u32>(my_corners[corner]);
        VOR2_RIGID_VERT vertex = vertex_at(corner);
        ARRAY<VOR2_RIGID_VERT>& vertices = my_out.rigid.vertices;
        u32 at = my_last_of_point[point];
        for (int i = 0; at != NONE && i < MOST_LOOKED_AT; ++i, at = my_one_before[at]) {
            if (vertices[at] == vertex) return at;
        }
        const auto made = static_cast<u32>(vertices.size());
        vertices.push_back(std::move(vertex));
        my_out.point_of.push_back(point);
        my_out.corner_of.push_back(corner);
        my_one_before.push_back(my_last_of_point[point]);
        my_last_of_point[point] = made;
        return made;
    }

    void add_triangles() {
        const u32 expected = my_triangles.length() / 3;
        unsigned int t = 0;
        for (unsigned int face = 0; face < my_triangle_counts.length(); ++face) {
            const u32 material = material_of_face(face);
            for (int i = 0; i < my_triangle_counts[face]; ++i, t += 3) {
                VOR2_CARD32_TRIPLE triangle;
                u32* const corners[] = {&triangle.first, &triangle.second, &triangle.third};
                for (unsigned int c = 0; c < 3; ++c)
                    *corners[c] = vertex_of(static_cast<unsigned int>(my_triangles[t + c]));
                my_out.rigid.add_sub_object_triangle(triangle, material, expected);
            }
        }
    }

    u32 material_of_face(unsigned int face) const {
        const int group = face < my_group_of_face.length() ? my_group_of_face[face] : -1;
        return group >= 0 && static_cast<std::size_t>(group) < my_materials.size()
                   ? my_materials[static_cast<std::size_t>(group)]
                   : NO_MATERIAL;
    }

    MFnMesh my_mesh, my_geometry;
    WHOLE_MESH& my_out;
    MIntArray my_corner_counts, my_corners;     ///< of faces; vertices
    MIntArray my_triangle_counts, my_triangles; ///< of faces; places in `my_corners`
    MObjectArray my_groups;
    MIntArray my_group_of_face;
    std::vector<u32> my_materials; ///< of groups
    MPointArray my_points;
    std::vector<VECTOR_3> my_normals; ///< of corners
    MColorArray my_colours;           ///< likewise
    std::vector<UV_SET> my_uv_sets;
    std::vector<u32> my_last_of_point, my_one_before; ///< vertices, in a chain for each point
};

} // namespace

VECTOR_3 vertex_position(const MPoint& point) {
    return VECTOR_3(static_cast<f32>(point.x / 100.0), static_cast<f32>(point.y / 100.0),
                    -static_cast<f32>(point.z / 100.0));
}

VECTOR_3 vertex_normal(const MFloatVector& normal) {
    return VECTOR_3(normal.x, normal.y, -normal.z);
}

MStatus read_corner_normals(const MFnMesh& mesh, std::vector<VECTOR_3>& out) {
    const int faces = mesh.numPolygons();
    MFloatVectorArray of_face;
    out.clear();
    for (int face = 0; face < faces; ++face) {
        const MStatus status = mesh.getFaceVertexNormals(face, of_face, MSpace::kObject);
        if (!status) return status;
        for (unsigned int i = 0; i < of_face.length(); ++i) out.push_back(vertex_normal(of_face[i]));
    }
    return MStatus::kSuccess;
}

bool read_whole_mesh(const MDagPath& path, const MObject& geometry, const MATERIAL_OF_GROUP& material_of,
                     WHOLE_MESH& out) {
    if (MESH_READER(path, geometry, out).run(path.instanceNumber(), material_of)) return true;
    out = WHOLE_MESH();
    out.rigid.name = name_for_file(MFnDagNode(path).name());
    return false;
}

} // namespace VOR2_EXPORTER_MAYA
