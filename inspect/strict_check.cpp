#include "inspect/strict_check.h"

#include "format/core/paths.h"
#include "inspect/json_writer.h"
#include "inspect/key_check.h"

#include <cmath>

namespace vor2::inspect {
namespace {

using namespace VOR2_LOADER;
using Tell = std::function<void(const Finding&)>;

constexpr u32 no_material = 0xFFFFFFFF;
constexpr double weight_tolerance = 1e-3;

std::string at(std::string_view list, u64 index) {
    return std::string(list) + "[" + std::to_string(index) + "]";
}

/// Checks one scene's indices; each finding names the record that `enter` was last told of.
class IndexCheck {
public:
    IndexCheck(const VOR2& scene, const TEXT& file_name, const Tell& tell)
        : scene_(scene), file_name_(file_name), tell_(tell) {}

    u64 run() {
        check_nodes();
        check_placed("lights", scene_.lights);
        check_placed("cameras", scene_.cameras);
        check_meshes("rigids", scene_.rigids);
        check_meshes("anim_meshes", scene_.anim_meshes);
        check_meshes("morph_meshes", scene_.morph_meshes);
        check_meshes("weighted_meshes", scene_.weighted_meshes);
        check_splines();
        check_placed("helpers", scene_.helpers);
        check_placed("xref_speedtrees", scene_.xref_speedtrees);
        check_all_instances();
        check_references("xrefs_15", scene_.xrefs_15);
        check_references("xrefs_20", scene_.xrefs_20);
        check_placed("xref_objects", scene_.xref_objects);
        return count_;
    }

private:
    void enter(std::string record, const TEXT& name) {
        record_ = std::move(record);
        name_ = name.view();
    }
    void find(std::string field, std::string value, std::string complaint) {
        ++count_;
        tell_({record_, name_, std::move(field), std::move(value), std::move(complaint)});
    }
    /// An index that must lie below `end`.
    void expect_below(u64 index, u64 end, std::string field, std::string_view what) {
        if (index >= end)
            find(std::move(field), std::to_string(index),
                 "names no " + std::string(what) + ": there are " + std::to_string(end));
    }

    void check_nodes() {
        const ARRAY<VOR2_MATRIX_NODE>& nodes = scene_.matrix_hierarchy.nodes;
        for (u64 i = 0; i < nodes.size(); ++i) {
            enter(at("matrix_hierarchy.nodes", i), nodes[i].name);
            const i32 parent = nodes[i].parent_index;
            if (parent < 0) continue;
            expect_below(static_cast<u64>(parent), nodes.size(), "parent_index", "node");
            if (static_cast<u64>(parent) < nodes.size() && static_cast<u64>(parent) >= i)
                find("parent_index", std::to_string(parent),
                     is_in_cycle(i) ? "makes the node its own ancestor" : "the parent stands behind its child");
        }
    }

    bool is_in_cycle(u64 node) const {
        const ARRAY<VOR2_MATRIX_NODE>& nodes = scene_.matrix_hierarchy.nodes;
        u64 ancestor = node;
        for (u64 steps = 0; steps <= nodes.size(); ++steps) {
            const i32 parent = nodes[ancestor].parent_index;
            if (parent < 0 || static_cast<u64>(parent) >= nodes.size()) return false;
            ancestor = static_cast<u64>(parent);
            if (ancestor == node) return true;
        }
        return false;
    }

    void check_place(const VOR2_POSITIONAL_OBJECT& object) {
        expect_below(object.matrix_index, scene_.matrix_hierarchy.nodes.size(), "matrix_index", "node");
    }

    template<class OBJECT>
    void check_placed(std::string_view list, const OWNED_ARRAY<OBJECT>& objects) {
        for (u64 i = 0; i < objects.size(); ++i) {
            if (!objects[i]) continue;
            enter(at(list, i), objects[i]->name);
            check_place(*objects[i]);
        }
    }

    void check_material(u32 id, std::string field) {
        if (id == no_material) return;
        expect_below(id, scene_.materials.size(), field, "material");
        if (id < scene_.materials.size() && !scene_.materials[id])
            find(std::move(field), std::to_string(id), "names a material that is absent");
    }

    void check_groups(const ARRAY<VOR2_TRI_SUB_OBJECT>& groups, u64 vertex_count) {
        for (u64 g = 0; g < groups.size(); ++g) {
            const std::string group = at("sub_objects", g);
            check_material(groups[g].material_id, group + ".material_id");
            for (u64 t = 0; t < groups[g].triangles.size(); ++t) {
                const VOR2_CARD32_TRIPLE& triangle = groups[g].triangles[t];
                if (triangle.first < vertex_count && triangle.second < vertex_count && triangle.third < vertex_count)
                    continue;
                const std::string field = group + "." + at("triangles", t);
                expect_below(triangle.first, vertex_count, field + ".first", "vertex");
                expect_below(triangle.second, vertex_count, field + ".second", "vertex");
                expect_below(triangle.third, vertex_count, field + ".third", "vertex");
            }
        }
    }

    template<class MESH>
    void check_meshes(std::string_view list, const OWNED_ARRAY<MESH>& meshes) {
        for (u64 i = 0; i < meshes.size(); ++i) {
            if (!meshes[i]) continue;
            enter(at(list, i), meshes[i]->name);
            check_place(*meshes[i]);
            for (u64 v = 0; v < meshes[i]->vertices.size(); ++v) {
                check_channels(*meshes[i], meshes[i]->vertices[v], v);
                check_vertex(*meshes[i], meshes[i]->vertices[v], v);
            }
            check_groups(meshes[i]->sub_objects, meshes[i]->vertices.size());
        }
    }

    void check_channels(const VOR2_GEOM_OBJECT& mesh, const VOR2_VERT& vertex, u64 v) {
        u32 count = 0;
        vertex.get_uv_count(count);
        if (count != mesh.mapping_channels.size())
            find(at("vertices", v), std::to_string(count) + " UVW entries",
                 "the mesh has " + std::to_string(mesh.mapping_channels.size()) + " mapping channels");
    }

    void check_vertex(const VOR2_TRI_OBJECT&, const VOR2_VERT&, u64) {}
    void check_vertex(const VOR2_MORPH_MESH& mesh, const VOR2_MORPH_MESH_VERT& vertex, u64 v) {
        for (u64 t = 0; t < vertex.target_verts.size(); ++t) {
            const i32 target = vertex.target_verts[t].target_index;
            if (target < 0 || static_cast<u64>(target) >= mesh.morph_targets.size())
                find(at("vertices", v) + "." + at("target_verts", t) + ".target_index", std::to_string(target),
                     "names no morph target: there are " + std::to_string(mesh.morph_targets.size()));
        }
    }
    void check_vertex(const VOR2_WEIGHTED_MESH&, const VOR2_WEIGHTED_MESH_VERT& vertex, u64 v) {
        const u64 nodes = scene_.matrix_hierarchy.nodes.size();
        double sum = 0;
        for (u64 b = 0; b < vertex.bone_weights.size(); ++b) {
            const VOR2_BONE_WEIGHT_DATA& bone = vertex.bone_weights[b];
            sum += static_cast<double>(bone.weight);
            if (bone.bone_index < 0 || static_cast<u64>(bone.bone_index) >= nodes)
                find(at("vertices", v) + "." + at("bone_weights", b) + ".bone_index", std::to_string(bone.bone_index),
                     "names no node: there are " + std::to_string(nodes));
        }
        if (std::abs(sum - 1) > weight_tolerance)
            find(at("vertices", v) + ".bone_weights", shortest(static_cast<float>(sum)),
                 "the weights don't add up to 1");
    }

    template<class CURVE>
    void check_curves(const ARRAY<CURVE>& curves, u64 points, const std::string& spline) {
        u64 reach = 0;
        for (u64 c = 0; c < curves.size(); ++c) {
            reach += curves[c].degree;
            if (curves[c].degree > 3)
                find(spline + "." + at("curves", c) + ".degree", std::to_string(curves[c].degree), "is above 3");
        }
        if (!curves.empty() && reach + 1 != points)
            find(spline + ".curves", std::to_string(reach + 1) + " control points asked for",
                 "the spline has " + std::to_string(points));
    }

    void check_splines() {
        for (u64 i = 0; i < scene_.bezier_spline_objects.size(); ++i) {
            const OWNED<VOR2_BEZIER_SPLINE_OBJECT>& object = scene_.bezier_spline_objects[i];
            if (!object) continue;
            enter(at("bezier_spline_objects", i), object->name);
            check_place(*object);
            for (u64 s = 0; s < object->rigid_splines.size(); ++s)
                check_curves(object->rigid_splines[s].curves, object->rigid_splines[s].points.size(),
                             at("rigid_splines", s));
            for (u64 s = 0; s < object->anim_splines.size(); ++s)
                check_curves(object->anim_splines[s].curves, object->anim_splines[s].point_tracks.size(),
                             at("anim_splines", s));
        }
    }

    template<class OBJECT>
    void check_instances(std::string_view list, const OWNED_ARRAY<VOR2_INSTANCE>& instances,
                         const OWNED_ARRAY<OBJECT>& objects) {
        for (u64 i = 0; i < instances.size(); ++i) {
            if (!instances[i]) continue;
            const VOR2_INSTANCE& instance = *instances[i];
            enter(at(list, i), instance.name);
            check_place(instance);
            const u64 object = instance.instanced_object;
            expect_below(object, objects.size(), "instanced_object", "object");
            if (instance.kind() == VOR2_GEOM_INSTANCE_DIFFERING_MATERIALS::KIND) {
                const auto& ids = static_cast<const VOR2_GEOM_INSTANCE_DIFFERING_MATERIALS&>(instance).material_list;
                for (u64 m = 0; m < ids.size(); ++m) check_material(ids[m], at("material_list", m));
            }
            if (instance.kind() == VOR2_GEOM_INSTANCE_DIFFERING_SUB_OBJECTS::KIND) {
                const auto& own = static_cast<const VOR2_GEOM_INSTANCE_DIFFERING_SUB_OBJECTS&>(instance).sub_objects;
                check_groups(own, vertices_of(objects, object));
            }
        }
    }

    template<class OBJECT>
    static u64 vertices_of(const OWNED_ARRAY<OBJECT>& objects, u64 index) {
        if constexpr (requires(const OBJECT& mesh) { mesh.vertices; }) {
            if (index < objects.size() && objects[index]) return objects[index]->vertices.size();
        }
        return ~u64{0};
    }

    void check_all_instances() {
        check_instances("light_instances", scene_.light_instances, scene_.lights);
        check_instances("camera_instances", scene_.camera_instances, scene_.cameras);
        check_instances("rigid_instances", scene_.rigid_instances, scene_.rigids);
        check_instances("anim_mesh_instances", scene_.anim_mesh_instances, scene_.anim_meshes);
        check_instances("morph_mesh_instances", scene_.morph_mesh_instances, scene_.morph_meshes);
        check_instances("weighted_mesh_instances", scene_.weighted_mesh_instances, scene_.weighted_meshes);
        check_instances("bezier_spline_instances", scene_.bezier_spline_instances, scene_.bezier_spline_objects);
        check_instances("helper_instances", scene_.helper_instances, scene_.helpers);
        check_instances("xref_object_instances", scene_.xref_object_instances, scene_.xref_objects);
        check_instances("speedtree_instances", scene_.speedtree_instances, scene_.xref_speedtrees);
    }

    template<u32 ID>
    void check_references(std::string_view list, const OWNED_ARRAY<VOR2_XREF<ID>>& references) {
        for (u64 i = 0; i < references.size(); ++i) {
            if (!references[i]) continue;
            enter(at(list, i), TEXT());
            if (!file_exists(resolve_path(file_name_, references[i]->file_name)))
                find("file_name", quoted(references[i]->file_name), "there is no such file");
        }
    }

    const VOR2& scene_;
    const TEXT& file_name_;
    const Tell& tell_;
    std::string record_;
    std::u16string name_;
    u64 count_ = 0;
};

} // namespace

std::uint64_t check_strictly(const VOR2& scene, const TEXT& file_name, const Tell& tell) {
    return IndexCheck(scene, file_name, tell).run() + check_keys(scene, tell);
}

} // namespace vor2::inspect
