#include "host/export/scene_tidying.h"

namespace VOR2_EXPORTER_MAYA {
namespace {

constexpr u32 NOT_KEPT = 0xFFFFFFFF;

using DIFFERING_MATERIALS = VOR2_GEOM_INSTANCE_DIFFERING_MATERIALS;
using DIFFERING_SUB_OBJECTS = VOR2_GEOM_INSTANCE_DIFFERING_SUB_OBJECTS;

/// Calls `visit` with each array of mesh instances and the objects that they repeat.
template<class VISIT>
void each_instance_array(VOR2& root, VISIT visit) {
    visit(root.rigid_instances, root.rigids);
    visit(root.anim_mesh_instances, root.anim_meshes);
    visit(root.morph_mesh_instances, root.morph_meshes);
    visit(root.weighted_mesh_instances, root.weighted_meshes);
}

/// Runs an operation on the scene of each reference.
template<class OPERATION>
void each_referenced_scene(VOR2& root, OPERATION operation) {
    for (auto& xref : root.xrefs_15) {
        if (xref && xref->scene) operation(*xref->scene);
    }
    for (auto& xref : root.xrefs_20) {
        if (xref && xref->scene) operation(*xref->scene);
    }
}

bool same_triangles(const ARRAY<VOR2_TRI_SUB_OBJECT>& a, const ARRAY<VOR2_TRI_SUB_OBJECT>& b) {
    if (a.size() != b.size()) return false;
    for (u64 i = 0; i + 1 < a.size(); ++i) {
        const auto &first = a[i].triangles, &second = b[i].triangles;
        if (!std::equal(first.begin(), first.end(), second.begin(), second.end())) return false;
    }
    return true;
}

bool same_materials(const ARRAY<VOR2_TRI_SUB_OBJECT>& a, const ARRAY<VOR2_TRI_SUB_OBJECT>& b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](const auto& x, const auto& y) { return x.material_id == y.material_id; });
}

/// The lighter instance that does for `instance`, or nothing when it needs its own triangles.
OWNED<VOR2_INSTANCE> lighter(DIFFERING_SUB_OBJECTS& instance, const ARRAY<VOR2_TRI_SUB_OBJECT>& of_object) {
    if (!same_triangles(instance.sub_objects, of_object)) return {};
    OWNED<VOR2_GEOM_INSTANCE> made;
    if (same_materials(instance.sub_objects, of_object)) {
        made = make_owned<VOR2_GEOM_INSTANCE>();
    } else {
        OWNED<DIFFERING_MATERIALS> differing = make_owned<DIFFERING_MATERIALS>();
        differing->material_list.reserve(instance.sub_objects.size());
        for (const auto& group : instance.sub_objects) differing->material_list.push_back(group.material_id);
        made = std::move(differing);
    }
    static_cast<VOR2_POSITIONAL_OBJECT&>(*made) = std::move(static_cast<VOR2_POSITIONAL_OBJECT&>(instance));
    made->instanced_object = instance.instanced_object;
    made->light_refs = std::move(instance.light_refs);
    return made;
}

template<class MESH>
void simplify(OWNED_ARRAY<VOR2_INSTANCE>& instances, const OWNED_ARRAY<MESH>& objects) {
    for (OWNED<VOR2_INSTANCE>& instance : instances) {
        if (!instance || instance->kind() != DIFFERING_SUB_OBJECTS::KIND) continue;
        auto& differing = static_cast<DIFFERING_SUB_OBJECTS&>(*instance);
        const u64 index = differing.instanced_object;
        if (index >= objects.size() || !objects[index]) continue;
        if (OWNED<VOR2_INSTANCE> other = lighter(differing, objects[index]->sub_objects)) instance = std::move(other);
    }
}

/// Calls `visit` with each material id that meshes and instances hold.
template<class VISIT>
void each_material_id(VOR2& root, VISIT visit) {
    const auto of_groups = [&visit](ARRAY<VOR2_TRI_SUB_OBJECT>& groups) {
        for (VOR2_TRI_SUB_OBJECT& group : groups) visit(group.material_id);
    };
    each_instance_array(root, [&](OWNED_ARRAY<VOR2_INSTANCE>& instances, auto& meshes) {
        for (auto& mesh : meshes) {
            if (mesh) of_groups(mesh->sub_objects);
        }
        for (OWNED<VOR2_INSTANCE>& instance : instances) {
            if (!instance) continue;
            if (instance->kind() == DIFFERING_SUB_OBJECTS::KIND)
                of_groups(static_cast<DIFFERING_SUB_OBJECTS&>(*instance).sub_objects);
            if (instance->kind() == DIFFERING_MATERIALS::KIND) {
                for (u32& id : static_cast<DIFFERING_MATERIALS&>(*instance).material_list) visit(id);
            }
        }
    });
}

} // namespace

void simplify_instances(VOR2& root) {
    each_instance_array(root, [](auto& instances, auto& objects) { simplify(instances, objects); });
    each_referenced_scene(root, simplify_instances);
}

void drop_unused_materials(VOR2& root) {
    OWNED_ARRAY<VOR2_MATERIAL>& materials = root.materials;
    ARRAY<u32> remap;
    remap.reserve(materials.size());
    for (u64 i = 0; i < materials.size(); ++i) remap.push_back(NOT_KEPT);
    each_material_id(root, [&remap](u32 id) {
        if (id < remap.size()) remap[id] = 0;
    });
    u32 kept = 0;
    for (u64 i = 0; i < materials.size(); ++i) {
        if (remap[i] == NOT_KEPT) continue;
        if (kept != i) materials[kept] = std::move(materials[i]);
        remap[i] = kept++;
    }
    while (materials.size() > kept) materials.pop_back();
    each_material_id(root, [&remap](u32& id) {
        if (id < remap.size()) id = remap[id];
    });
    each_referenced_scene(root, drop_unused_materials);
}

} // namespace VOR2_EXPORTER_MAYA
