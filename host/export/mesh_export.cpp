#include "host/export/mesh_export.h"

#include "format/core/files.h"
#include "host/export/file_world.h"
#include "host/export/host_time.h"
#include "host/export/mesh_placement.h"
#include "host/export/morph_shapes.h"
#include "host/export/moving_points.h"
#include "host/export/pose_check.h"
#include "host/export/skin_binding.h"
#include "host/export/surfaces.h"
#include "host/export/whole_mesh.h"

#include <maya/MDagPath.h>
#include <maya/MDagPathArray.h>
#include <maya/MFn.h>
#include <maya/MFnDependencyNode.h>
#include <maya/MFnMesh.h>
#include <maya/MGlobal.h>
#include <maya/MIntArray.h>
#include <maya/MObject.h>
#include <maya/MObjectArray.h>
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

class MESH_EXPORT {
public:
    MESH_EXPORT(VOR2& root, const NODE_LIST& list, const SAMPLE_RANGE& range)
        : my_root(root), my_range(range), my_materials(root), my_world(at_start(root, range), list),
          my_skins(root, my_world, range), my_check(my_world, range), my_moments(samples_of(range)) {}

    bool run() {
        std::vector<SHAPE> shapes;
        // A node that is exported twice has its meshes at the later of its places, as its children are.
        for (unsigned int i = 1; i < my_world.count(); ++i) {
            if (my_world.index_of(my_world.path(i)) == static_cast<i32>(i)) add_shapes(i, shapes);
        }
        if (!fit_a_file(shapes)) return false;
        for (const SHAPE& shape : shapes) {
            if (!add(shape)) return false;
        }
        my_root.matrix_hierarchy.link_parents();
        sample();
        my_skins.finish();
        for (MORPH_SHAPE& morph : my_morphs) morph.finish(my_root, my_range);
        for (MOVING_POINTS& moving : my_moving) moving.finish(my_root, my_range);
        my_root.matrix_hierarchy.link_parents();
        my_check.tell(my_root);
        return true;
    }

private:
    struct SHAPE {
        unsigned int index; ///< of the node that it stands under
        MDagPath path;
    };

    static VOR2& at_start(VOR2& root, const SAMPLE_RANGE& range) {
        MGlobal::viewFrame(time_of_frame(range.start_frame));
        root.matrix_hierarchy.link_parents();
        root.matrix_hierarchy.set_time(range.start_time());
        return root;
    }

    void add_shapes(unsigned int index, std::vector<SHAPE>& out) const {
        const MDagPath& path = my_world.path(index);
        for (unsigned int i = 0; i < path.childCount(); ++i) {
            MDagPath shape = path;
            MObject child = path.child(i);
            if (!shape.push(child) || !shape.hasFn(MFn::kMesh)) continue;
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

    bool add(const SHAPE& shape) {
        const std::vector<DEFORMER> deformers = deformers_of(shape.path);
        const DEFORMER* const skin = last_to_act(deformers, MFn::kSkinClusterFilter);
        const DEFORMER* const blend = first_to_act(deformers, MFn::kBlendShape);
        const DEFORMER* const taken = skin != nullptr ? skin : blend;
        if (taken != nullptr && !has_same_faces(*taken, shape)) {
            if (mesh_options().moving_points) return add_moving(shape);
            for (const DEFORMER& deformer : deformers)
                tell(deformer, shape, "the mesh as it is at the first frame: behind it others change its faces");
            return add_still(shape);
        }
        if (skin != nullptr) {
            const MObject bound = input_mesh(*skin);
            const bool both = blend != nullptr && mesh_options().skin_and_morph;
            for (const DEFORMER& deformer : deformers) {
                const bool goes_along = deformer.node == skin->node || (both && is(deformer, MFn::kBlendShape));
                if (!goes_along) tell(deformer, shape, "its skin alone, on the mesh as it is at the first frame");
            }
            WHOLE_MESH mesh;
            if (bound.isNull() || !read(shape, bound, mesh)) return add_rigid(shape, mesh);
            if (deformers.size() == 1)
                my_check.watch_skin(shape.path, shape.index, mesh.point_of);
            else
                my_check.pass_skin();
            if (!my_skins.add(shape.path, shape.index, *skin, std::move(mesh))) return false;
            return !both || add_morph(shape, deformers, *blend);
        }
        const bool others = std::any_of(deformers.begin(), deformers.end(),
                                        [](const DEFORMER& deformer) { return !is(deformer, MFn::kBlendShape); });
        if (others && mesh_options().moving_points) return add_moving(shape);
        for (const DEFORMER& deformer : deformers) {
            if (!is(deformer, MFn::kBlendShape)) tell(deformer, shape, "the mesh as it is at the first frame");
        }
        return blend != nullptr ? add_morph(shape, deformers, *blend) : add_still(shape);
    }

    /// Whether the mesh as it comes to a deformer has the points and faces that it has in the end.
    static bool has_same_faces(const DEFORMER& deformer, const SHAPE& shape) {
        const MObject geometry = input_mesh(deformer);
        if (geometry.isNull()) return false;
        const MFnMesh before(geometry), whole(shape.path);
        return before.numVertices() == whole.numVertices() && before.numPolygons() == whole.numPolygons() &&
               before.numFaceVertices() == whole.numFaceVertices();
    }

    bool add_still(const SHAPE& shape) {
        WHOLE_MESH mesh;
        (void)read(shape, MObject(), mesh);
        return add_rigid(shape, mesh);
    }

    static bool is(const DEFORMER& deformer, MFn::Type type) { return deformer.node.apiType() == type; }
    static const DEFORMER* last_to_act(const std::vector<DEFORMER>& deformers, MFn::Type type) {
        const auto found =
            std::find_if(deformers.begin(), deformers.end(), [&](const DEFORMER& d) { return is(d, type); });
        return found == deformers.end() ? nullptr : &*found;
    }
    static const DEFORMER* first_to_act(const std::vector<DEFORMER>& deformers, MFn::Type type) {
        const auto found =
            std::find_if(deformers.rbegin(), deformers.rend(), [&](const DEFORMER& d) { return is(d, type); });
        return found == deformers.rend() ? nullptr : &*found;
    }

    bool read(const SHAPE& shape, const MObject& geometry, WHOLE_MESH& out) {
        return read_whole_mesh(
            shape.path, geometry, [this](const MObject& group) { return my_materials.place_of(group); }, out);
    }

    /// The node of a mesh whose vertices are in its own space, made for it.
    u32 place(const SHAPE& shape, const TEXT& name) {
        const PLACEMENT placement =
            placement_of(inverse(AFFINE(my_root.matrix_hierarchy.nodes[shape.index].world_matrix)) *
                         my_world.in_file(my_world.top_of(shape.index), shape.path.inclusiveMatrix()));
        return add_nodes(my_root.matrix_hierarchy, placement, name, static_cast<i32>(shape.index),
                         my_range.start_time());
    }

    bool add_rigid(const SHAPE& shape, WHOLE_MESH& mesh) {
        auto rigid = make_owned<VOR2_RIGID>(std::move(mesh.rigid));
        rigid->matrix_index = place(shape, rigid->name);
        my_root.rigids.push_back(std::move(rigid));
        return true;
    }

    bool add_morph(const SHAPE& shape, const std::vector<DEFORMER>& deformers, const DEFORMER& first) {
        WHOLE_MESH mesh;
        const MObject base = input_mesh(first);
        if (base.isNull() || !read(shape, base, mesh)) return add_rigid(shape, mesh);
        const u32 node = place(shape, mesh.rigid.name);
        const bool is_whole = std::all_of(deformers.begin(), deformers.end(),
                                          [](const DEFORMER& deformer) { return is(deformer, MFn::kBlendShape); });
        if (is_whole)
            my_check.watch_morph(shape.path, shape.index, mesh.point_of);
        else
            my_check.pass_morph();
        my_morphs.emplace_back(deformers, node, std::move(mesh));
        return true;
    }

    bool add_moving(const SHAPE& shape) {
        WHOLE_MESH mesh;
        if (!read(shape, MObject(), mesh)) return add_rigid(shape, mesh);
        const u32 node = place(shape, mesh.rigid.name);
        my_moving.emplace_back(shape.path, node, std::move(mesh));
        my_moving_bytes += my_moving.back().bytes_of_sample() * static_cast<double>(my_moments.size());
        if (my_moving_bytes <= LONGEST_FILE) return true;
        MGlobal::displayError(MString("The keys of all points wouldn't fit a file: ") + MFnMesh(shape.path).name());
        return false;
    }

    static void tell(const DEFORMER& deformer, const SHAPE& shape, const char* what) {
        MGlobal::displayWarning(MString("What ") + MFnDependencyNode(deformer.node).name() + " does to " +
                                MFnMesh(shape.path).name() + " isn't in the file, which has " + what);
    }

    void sample() {
        if (!my_skins.has_meshes() && my_morphs.empty() && my_moving.empty()) return;
        for (const MOMENT& moment : my_moments) {
            MGlobal::viewFrame(time_of_frame(moment.frame));
            if (my_skins.has_meshes()) my_root.matrix_hierarchy.set_time(my_range.time(moment.number));
            my_skins.sample();
            my_check.sample();
            for (MORPH_SHAPE& morph : my_morphs) morph.sample();
            for (MOVING_POINTS& moving : my_moving) moving.sample();
        }
    }

    VOR2& my_root;
    const SAMPLE_RANGE& my_range;
    SURFACES my_materials;
    FILE_WORLD my_world;
    SKIN_BINDING my_skins;
    POSE_CHECK my_check;
    std::vector<MORPH_SHAPE> my_morphs;
    std::vector<MOVING_POINTS> my_moving;
    std::vector<MOMENT> my_moments;
    double my_moving_bytes = 0.0;
};

/// The transforms above a node, from the top down to it, that aren't exported.
std::vector<MDagPath> way_to(MDagPath path, const std::set<std::string>& exported) {
    std::vector<MDagPath> out;
    while (path.length() > 0 && !exported.contains(path.fullPathName().asChar())) {
        out.push_back(path);
        if (path.length() == 1 || !path.pop()) break;
    }
    std::reverse(out.begin(), out.end());
    return out;
}

} // namespace

MESH_OPTIONS& mesh_options() {
    static MESH_OPTIONS options;
    return options;
}

bool add_bones(NODE_LIST& list, std::set<std::string>& carrying) {
    std::set<std::string> exported;
    for (unsigned int i = 0; i < list.nodes.length(); ++i) exported.insert(list.nodes[i].fullPathName().asChar());
    MDagPathArray all;
    bool is_whole = true;
    for (unsigned int i = 0; i < list.nodes.length(); ++i) {
        if (list.indexes_to_skip.contains(i)) continue;
        for (unsigned int c = 0; c < list.nodes[i].childCount(); ++c) {
            MDagPath shape = list.nodes[i];
            MObject child = shape.child(c);
            if (!shape.push(child) || !shape.hasFn(MFn::kMesh) || MFnMesh(shape).isIntermediateObject()) continue;
            for (const MDagPath& bone : bones_of(shape)) {
                for (MDagPath above = bone; above.length() > 0; above.pop()) {
                    carrying.insert(above.fullPathName().asChar());
                    if (above.length() == 1) break;
                }
                const std::vector<MDagPath> way = way_to(bone, exported);
                if (way.empty() || way.back() != bone) continue;
                if (!mesh_options().include_bones) {
                    MGlobal::displayError(MString("The mesh ") + MFnMesh(shape).name() +
                                          " has a bone that isn't exported: " + bone.partialPathName());
                    is_whole = false;
                    exported.insert(bone.fullPathName().asChar()); // told once
                    continue;
                }
                for (const MDagPath& node : way) {
                    all.append(node);
                    exported.insert(node.fullPathName().asChar());
                }
            }
        }
    }
    if (!is_whole || all.length() == 0) return is_whole;
    const unsigned int before = all.length();
    for (unsigned int i = 0; i < list.nodes.length(); ++i) all.append(list.nodes[i]);
    std::set<unsigned int> skipped;
    for (const unsigned int index : list.indexes_to_skip) skipped.insert(index + before);
    list.nodes = all;
    list.indexes_to_skip = skipped;
    return true;
}

bool export_meshes(VOR2& root, const NODE_LIST& list, const SAMPLE_RANGE& range) {
    MGlobal::displayInfo("Building vor2 - translating meshes...");
    return MESH_EXPORT(root, list, range).run();
}

} // namespace VOR2_EXPORTER_MAYA
