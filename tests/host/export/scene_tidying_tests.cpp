#include "host/export/scene_tidying.h"

#include "format/vor2.h"

#include <gtest/gtest.h>

namespace VOR2_EXPORTER_MAYA {
namespace {

/// Groups of one triangle each, by material.
ARRAY<VOR2_TRI_SUB_OBJECT> groups(std::initializer_list<u32> materials) {
    ARRAY<VOR2_TRI_SUB_OBJECT> list;
    for (const u32 material : materials) {
        VOR2_TRI_SUB_OBJECT& group = list.emplace_back();
        group.material_id = material;
        group.add_triangle_index({0, 1, 2});
    }
    return list;
}

OWNED<VOR2_GEOM_INSTANCE_DIFFERING_SUB_OBJECTS> differing(u32 object, const ARRAY<VOR2_TRI_SUB_OBJECT>& of_its_own) {
    auto instance = make_owned<VOR2_GEOM_INSTANCE_DIFFERING_SUB_OBJECTS>();
    instance->instanced_object = object;
    instance->sub_objects = of_its_own;
    instance->name = TEXT(u"copy");
    instance->matrix_index = 7;
    instance->light_refs.push_back(3);
    return instance;
}

void add_materials(VOR2& root, std::initializer_list<const char16_t*> names) {
    for (const char16_t* name : names) {
        auto material = make_owned<VOR2_STANDARD_MATERIAL>();
        material->name = TEXT(name);
        root.materials.push_back(std::move(material));
    }
}

TEST(scene_tidying, instances_become_as_light_as_they_can) {
    VOR2 root;
    root.weighted_meshes.push_back(make_owned<VOR2_WEIGHTED_MESH>());
    root.weighted_meshes[0]->sub_objects = groups({1, 2});
    root.weighted_meshes.push_back(nullptr);
    OWNED_ARRAY<VOR2_INSTANCE>& instances = root.weighted_mesh_instances;
    instances.push_back(differing(0, groups({1, 2})));
    instances.push_back(differing(0, groups({1, 5})));
    instances.push_back(differing(0, groups({1})));
    ARRAY<VOR2_TRI_SUB_OBJECT> last_differs = groups({1, 2}), first_differs = groups({1, 2});
    last_differs[1].triangles[0].first = 9;
    first_differs[0].triangles[0].first = 9;
    instances.push_back(differing(0, last_differs));
    instances.push_back(differing(0, first_differs));
    instances.push_back(differing(1, groups({1, 2})));
    instances.push_back(differing(2, groups({1, 2})));
    instances.push_back(nullptr);
    instances.push_back(make_owned<VOR2_INSTANCE>());
    simplify_instances(root);

    const std::pair<std::size_t, u32> kinds[] = {{0, 1}, {1, 2}, {2, 3}, {3, 1}, {4, 3}, {5, 3}, {6, 3}, {8, 0}};
    for (const auto& [index, kind] : kinds) EXPECT_EQ(instances[index]->kind(), kind) << index;
    const auto& lighter = static_cast<VOR2_GEOM_INSTANCE_DIFFERING_MATERIALS&>(*instances[1]);
    EXPECT_EQ(lighter.material_list.size(), 2U);
    EXPECT_EQ(lighter.material_list[1], 5U);
    EXPECT_EQ(lighter.name, TEXT(u"copy"));
    EXPECT_EQ(lighter.matrix_index, 7U);
    EXPECT_EQ(lighter.light_refs.size(), 1U);
}

TEST(scene_tidying, unused_materials_go_and_references_follow) {
    VOR2 root;
    add_materials(root, {u"a", u"b", u"c", u"d"});
    root.rigids.push_back(make_owned<VOR2_RIGID>());
    root.rigids[0]->sub_objects = groups({2, 0xFFFFFFFF, 99});
    auto instance = make_owned<VOR2_GEOM_INSTANCE_DIFFERING_MATERIALS>();
    instance->material_list.push_back(3);
    VOR2_GEOM_INSTANCE_DIFFERING_MATERIALS& kept_by = *instance;
    root.rigid_instances.push_back(std::move(instance));
    auto xref = make_owned<VOR2_XREF<20>>();
    xref->scene = make_owned<VOR2>();
    add_materials(*xref->scene, {u"unused"});
    root.xrefs_20.push_back(std::move(xref));
    drop_unused_materials(root);

    ASSERT_EQ(root.materials.size(), 2U);
    EXPECT_EQ(root.materials[0]->name, TEXT(u"c"));
    const ARRAY<VOR2_TRI_SUB_OBJECT>& of_mesh = root.rigids[0]->sub_objects;
    EXPECT_EQ(of_mesh[0].material_id, 0U);
    EXPECT_EQ(of_mesh[1].material_id, 0xFFFFFFFF) << "no material stays none";
    EXPECT_EQ(of_mesh[2].material_id, 99U) << "an id of no material is left as it is";
    EXPECT_EQ(kept_by.material_list[0], 1U);
    EXPECT_TRUE(root.xrefs_20[0]->scene->materials.empty());
}

} // namespace
} // namespace VOR2_EXPORTER_MAYA
