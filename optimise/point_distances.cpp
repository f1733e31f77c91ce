#include "optimise/point_distances.h"

#include "optimise/pose.h"

#include <algorithm>
#include <cmath>

namespace vor2::optimise {
namespace {

using namespace VOR2_LOADER;

class Distances {
public:
    explicit Distances(std::size_t nodes) : distances_(nodes, 0) {}

    /// Nothing for a node that isn't there, and for a distance that isn't finite.
    void reach(u64 node, double distance) {
        if (node < distances_.size() && std::isfinite(distance)) {
            distances_[node] = std::max(distances_[node], distance);
        }
    }
    std::vector<double>& all() { return distances_; }

private:
    std::vector<double> distances_;
};

double length(const VECTOR_3& v) {
    return std::hypot(static_cast<double>(v.x), static_cast<double>(v.y), static_cast<double>(v.z));
}

/// How far an object's points come from its node.
double extent(const VOR2_RIGID& mesh) {
    double furthest = 0;
    for (const VOR2_RIGID_VERT& vertex : mesh.vertices) furthest = std::max(furthest, length(vertex.position));
    return furthest;
}
double extent(const VOR2_MORPH_MESH& mesh) {
    double furthest = 0;
    for (const VOR2_MORPH_MESH_VERT& vertex : mesh.vertices) {
        double sum = length(vertex.position);
        for (const VOR2_TARGET_VERT& target : vertex.target_verts) sum += length(target.offset);
        furthest = std::max(furthest, sum);
    }
    return furthest;
}
double extent(const OWNED<VOR2_ANIMATABLE_VECTOR_3>& track) {
    double furthest = 0;
    if (!track) return furthest;
    for (const VECTOR_3& key : track->key_values()) furthest = std::max(furthest, length(key));
    return furthest;
}
double extent(const VOR2_ANIM_MESH& mesh) {
    double furthest = 0;
    for (const VOR2_ANIM_MESH_VERT& vertex : mesh.vertices)
        furthest = std::max(furthest, extent(vertex.position_track));
    return furthest;
}
double extent(const VOR2_BEZIER_SPLINE_OBJECT& object) {
    double furthest = 0;
    for (const VOR2_RIGID_BEZIER_SPLINE& spline : object.rigid_splines) {
        for (const VECTOR_3& point : spline.points) furthest = std::max(furthest, length(point));
    }
    for (const VOR2_ANIM_BEZIER_SPLINE& spline : object.anim_splines) {
        for (const auto& track : spline.point_tracks) furthest = std::max(furthest, extent(track));
    }
    return furthest;
}

/// Objects at their nodes and their instances at theirs.
template<class OBJECT>
void reach_of(const OWNED_ARRAY<OBJECT>& objects, const OWNED_ARRAY<VOR2_INSTANCE>& instances, Distances& out) {
    std::vector<double> extents;
    for (const OWNED<OBJECT>& object : objects) {
        extents.push_back(object ? extent(*object) : 0);
        if (object) out.reach(object->matrix_index, extents.back());
    }
    for (const OWNED<VOR2_INSTANCE>& instance : instances) {
        if (instance && instance->instanced_object < extents.size())
            out.reach(instance->matrix_index, extents[instance->instanced_object]);
    }
}

void reach_of_bones(const VOR2_WEIGHTED_MESH& mesh, Distances& out) {
    for (const VOR2_WEIGHTED_MESH_VERT& vertex : mesh.vertices) {
        for (const VOR2_BONE_WEIGHT_DATA& bone : vertex.bone_weights) {
            if (bone.bone_index >= 0 && bone.weight != 0)
                out.reach(static_cast<u64>(bone.bone_index), length(bone.local_position));
        }
    }
}

/// Objects without points, or whose points aren't known here.
template<class... LISTS>
void reach_one(Distances& out, const LISTS&... lists) {
    const auto each = [&out](const auto& list) {
        for (const auto& object : list) {
            if (object) out.reach(object->matrix_index, 1);
        }
    };
    (each(lists), ...);
}

bool turns(const VOR2_MATRIX_NODE& node) {
    return node.rotation_track && node.rotation_track->key_values().size() > 1;
}

/// How far `node` is from its parent, in the parent's space and in its own.
struct Step {
    double from_parent = 0, from_child = 0;
};
Step step_of(VOR2_MATRIX_NODE& node, f32 time) {
    const LocalValues values = values_at(node, time);
    const double scale = std::max({std::fabs(values.scale.x), std::fabs(values.scale.y), std::fabs(values.scale.z)});
    const double distance = length(values.position);
    return {distance, scale > 0 ? distance / scale : distance};
}

void reach_neighbours(VOR2_MATRIX_HIERARCHY& hierarchy, f32 start, Distances& out) {
    std::vector<char> is_parent(hierarchy.nodes.size(), 0);
    for (u64 i = hierarchy.nodes.size(); i-- > 0;) {
        VOR2_MATRIX_NODE& node = hierarchy.nodes[i];
        if (node.parent_matrix == nullptr) continue;
        const Step step = step_of(node, start);
        out.reach(static_cast<u64>(node.parent_index), step.from_parent);
        is_parent[static_cast<u64>(node.parent_index)] = 1;
        if (is_parent[i] == 0 && turns(node)) out.reach(i, step.from_child);
    }
    for (u64 i = 0; i < hierarchy.nodes.size(); ++i) {
        if (turns(hierarchy.nodes[i]) && out.all()[i] == 0) out.reach(i, 1);
    }
}

} // namespace

std::vector<double> point_distances(VOR2& scene, std::optional<double> stated) {
    Distances out(scene.matrix_hierarchy.nodes.size());
    reach_of(scene.rigids, scene.rigid_instances, out);
    reach_of(scene.anim_meshes, scene.anim_mesh_instances, out);
    reach_of(scene.morph_meshes, scene.morph_mesh_instances, out);
    reach_of(scene.bezier_spline_objects, scene.bezier_spline_instances, out);
    for (const OWNED<VOR2_WEIGHTED_MESH>& mesh : scene.weighted_meshes) {
        if (mesh) reach_of_bones(*mesh, out);
    }
    if (stated) {
        for (double& distance : out.all()) distance = std::max(distance, *stated);
        return out.all();
    }
    reach_one(out, scene.lights, scene.cameras, scene.helpers, scene.xref_objects, scene.xref_speedtrees,
              scene.light_instances, scene.camera_instances, scene.weighted_mesh_instances, scene.helper_instances,
              scene.xref_object_instances, scene.speedtree_instances);
    reach_neighbours(scene.matrix_hierarchy, scene.environment.time_range.start, out);
    return out.all();
}

} // namespace vor2::optimise
