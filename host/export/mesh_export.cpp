#include "host/export/mesh_export.h"

#include "format/core/files.h"
#include "host/export/export_settings.h"
#include "host/export/host_text.h"
#include "host/export/host_time.h"
#include "host/export/mesh_placement.h"
#include "host/export/mesh_translation.h"
#include "host/export/transform_conversion.h"

#include <maya/MDagPath.h>
#include <maya/MDagPathArray.h>
#include <maya/MFn.h>
#include <maya/MFnDependencyNode.h>
#include <maya/MFnMesh.h>
#include <maya/MGlobal.h>
#include <maya/MIntArray.h>
#include <maya/MObject.h>
#include <maya/MObjectArray.h>
#include <maya/MPlugArray.h>
#include <maya/MString.h>

#include <algorithm>
#include <map>
#include <string>
#include <vector>

namespace VOR2_EXPORTER_MAYA {
namespace {

/// Of a triangle in a file: three indices and three vertices of their own. A vertex has its position, normal and
/// colour, how many UVs and how many tangent frames it has, and its UVs, three numbers each.
constexpr double TRIANGLE_BYTES = 12.0 + 3.0 * (12.0 + 12.0 + 16.0 + 4.0 + 4.0);
constexpr double UV_BYTES = 3.0 * 12.0;

TEXT name_for_file(const MString& name) {
    const std::string_view whole = name.asChar();
    const std::size_t colon = whole.rfind(':');
    const bool strip = export_settings().strip_namespace && colon != std::string_view::npos && colon + 1 < whole.size();
    return to_text(MString(std::string(strip ? whole.substr(colon + 1) : whole).c_str()));
}

/// The root's materials as one list without gaps, in the order in which meshes first use them.
class MATERIAL_LIST {
public:
    explicit MATERIAL_LIST(VOR2& root) : my_root(root) {}

    /// Brings the groups of a rigid from the numbers of shading groups to places in the list. Groups that end
    /// up with one material become one.
    void settle(VOR2_RIGID& rigid, const MFnMesh& mesh, unsigned int instance) {
        MObjectArray groups;
        MIntArray of_polygon;
        mesh.getConnectedShaders(instance, groups, of_polygon);
        std::map<u32, u32> places;
        for (unsigned int i = 0; i < groups.length(); ++i) places[shader_index(groups[i])] = place_of(groups[i]);
        ARRAY<VOR2_TRI_SUB_OBJECT> settled;
        std::swap(settled, rigid.sub_objects);
        for (const VOR2_TRI_SUB_OBJECT& group : settled) {
            const auto place = places.find(group.material_id);
            const u32 material_id = place == places.end() ? NO_MATERIAL : place->second;
            const auto expected = static_cast<u32>(group.triangles.size());
            for (const VOR2_CARD32_TRIPLE& triangle : group.triangles)
                rigid.add_sub_object_triangle(triangle, material_id, expected);
        }
    }

private:
    u32 place_of(const MObject& group) {
        MPlugArray sources;
        MFnDependencyNode(group).findPlug("surfaceShader").connectedTo(sources, true, false);
        if (sources.length() == 0) return NO_MATERIAL;
        const MObject shader = sources[0].node();
        const auto [entry, is_new] = my_places.try_emplace(shader_index(shader), my_places.size());
        if (is_new) add(shader);
        return static_cast<u32>(entry->second);
    }

    void add(const MObject& shader) {
        if (shader.hasFn(MFn::kLambert)) {
            // In a root of its own, where the shader's number leaves no gaps in the file's list.
            VOR2 one;
            if (translate_material(shader, one)) my_root.materials.push_back(std::move(one.materials.back()));
            return;
        }
        const MString name = MFnDependencyNode(shader).name();
        MGlobal::displayWarning(MString("This shader is no lambert, and its material has its name alone: ") + name);
        OWNED<VOR2_STANDARD_MATERIAL> plain = make_owned<VOR2_STANDARD_MATERIAL>();
        plain->name = to_text(name);
        my_root.materials.push_back(std::move(plain));
    }

    VOR2& my_root;
    std::map<u32, u64> my_places;
};

/// Where meshes belong in the file's world at the first sample, by the paths of the exported nodes.
class MESH_EXPORT {
public:
    MESH_EXPORT(VOR2& root, const NODE_LIST& list, const SAMPLE_RANGE& range)
        : my_root(root), my_range(range), my_materials(root) {
        my_paths.append(MDagPath());
        for (unsigned int i = 0; i < list.nodes.length(); ++i) {
            if (!list.indexes_to_skip.contains(i)) my_paths.append(list.nodes[i]);
        }
    }

    bool run() {
        const auto time = static_cast<f32>(my_range.start_sample / my_range.sample_at);
        MGlobal::viewFrame(time_of_frame(my_range.start_frame));
        my_root.matrix_hierarchy.link_parents();
        my_root.matrix_hierarchy.set_time(time);
        // A node that is exported twice has its meshes at the later of its places, as its children are.
        std::map<std::string, unsigned int> last;
        for (unsigned int i = 1; i < my_paths.length(); ++i) last[my_paths[i].fullPathName().asChar()] = i;
        std::vector<SHAPE> shapes;
        for (unsigned int i = 1; i < my_paths.length(); ++i) {
            if (last[my_paths[i].fullPathName().asChar()] == i) add_shapes(i, shapes);
        }
        if (!fit_a_file(shapes)) return false;
        for (const SHAPE& shape : shapes) add(shape, time);
        my_root.matrix_hierarchy.link_parents();
        return true;
    }

private:
    struct SHAPE {
        unsigned int index; ///< of the node that it stands under
        MDagPath path;
    };

    void add_shapes(unsigned int index, std::vector<SHAPE>& out) const {
        for (unsigned int i = 0; i < my_paths[index].childCount(); ++i) {
            MDagPath shape = my_paths[index];
            if (!shape.push(my_paths[index].child(i)) || !shape.hasFn(MFn::kMesh)) continue;
            if (!MFnMesh(shape).isIntermediateObject()) out.push_back({index, shape});
        }
    }

    /// Before any is translated: a few small shapes and their instances can come to more than a machine holds.
    static bool fit_a_file(const std::vector<SHAPE>& shapes) {
        double triangles = 0.0, bytes = 0.0;
        for (const SHAPE& shape : shapes) {
            const MFnMesh mesh(shape.path);
            const double of_this = std::max(mesh.numFaceVertices() - 2.0 * mesh.numPolygons(), 0.0);
            triangles += of_this;
            bytes += of_this * (TRIANGLE_BYTES + UV_BYTES * mesh.numUVSets());
        }
        if (bytes <= LONGEST_FILE) return true;
        MGlobal::displayError(MString("The export would hold more triangles than a file can: ") + triangles);
        return false;
    }

    void add(const SHAPE& shape, f32 time) {
        const MFnMesh mesh(shape.path);
        const bool whole = translate_mesh(shape.path, my_root);
        VOR2_RIGID& rigid = *my_root.rigids.back();
        rigid.name = name_for_file(mesh.name());
        const int sets = mesh.numUVSets();
        for (int set = 1; set <= sets; ++set) rigid.mapping_channels.push_back(static_cast<u32>(set));
        if (whole) my_materials.settle(rigid, mesh, shape.path.instanceNumber());
        const PLACEMENT placement = placement_of(inverse(node_at(shape.index)) * mesh_at(shape.index, shape.path));
        rigid.matrix_index =
            add_nodes(my_root.matrix_hierarchy, placement, rigid.name, static_cast<i32>(shape.index), time);
    }

    [[nodiscard]] AFFINE node_at(unsigned int index) const {
        return AFFINE(my_root.matrix_hierarchy.nodes[index].world_matrix);
    }

    /// The file's world has the host's axes as vertices have them, turned half around without `rotate_180`. It is
    /// the world of the uppermost exported node's parent, and moved to where that node's keys have it.
    [[nodiscard]] AFFINE mesh_at(unsigned int index, const MDagPath& shape) const {
        const auto& nodes = my_root.matrix_hierarchy.nodes;
        unsigned int top = index;
        while (nodes[top].parent_index > 0) top = static_cast<unsigned int>(nodes[top].parent_index);
        AFFINE world;
        const double turn = export_settings().rotate_180 ? 1.0 : -1.0;
        world.columns = {AFFINE::COLUMN{turn, 0, 0}, {0, 1, 0}, {0, 0, turn}, {0, 0, 0}};
        const AFFINE unmoved = world * in_vertex_axes(host_matrix(my_paths[top]));
        const AFFINE moved = node_at(top);
        for (std::size_t r = 0; r < 3; ++r) world.columns[3][r] = moved.columns[3][r] - unmoved.columns[3][r];
        return world * in_vertex_axes(shape.inclusiveMatrix() * my_paths[top].exclusiveMatrix().inverse());
    }

    VOR2& my_root;
    const SAMPLE_RANGE& my_range;
    MDagPathArray my_paths; ///< by hierarchy index
    MATERIAL_LIST my_materials;
};

} // namespace

bool& exports_meshes() {
    static bool on = false;
    return on;
}

bool export_meshes(VOR2& root, const NODE_LIST& list, const SAMPLE_RANGE& range) {
    MGlobal::displayInfo("Building vor2 - translating meshes...");
    return MESH_EXPORT(root, list, range).run();
}

} // namespace VOR2_EXPORTER_MAYA
