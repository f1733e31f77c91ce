#include "tests/host/host_test.h"

#include "headless/geometry/mesh_history.h"
#include "host/export/mesh_export.h"
#include "host/export/mesh_translation.h"
#include "host/export/morph_shapes.h"
#include "host/export/whole_mesh.h"

#include <maya/MFnMesh.h>
#include <maya/MPointArray.h>

#include <cmath>
#include <filesystem>

namespace VOR2_EXPORTER_MAYA {
namespace {

using headless::Matrix;
using headless::Node;
using headless::Plug;
using headless::PlugKey;
using headless::Vector3;

class CHARACTER_TEST : public HOST_TEST {
protected:
    CHARACTER_TEST() { mesh_options() = {.meshes = true}; }
    ~CHARACTER_TEST() override { mesh_options() = {}; }

    void run(const std::string& line) { ASSERT_TRUE(session.run_mel(line)) << line; }
    headless::Scene& scene() { return session.scene(); }

    /// Every top-level node of a scene of the shared data; false where it isn't there.
    bool open(const char* file) {
        const std::string path = std::string(VOR2_SHARED_DATA) + "/" + file;
        if (!std::filesystem::exists(path) || !session.open_file(path)) return false;
        export_settings() = EXPORT_SETTINGS();
        MGlobal::clearSelectionList();
        for (const Node* top : scene().world().children()) {
            if (!top->default_node()) MGlobal::selectByName(("|" + top->name()).c_str());
        }
        return true;
    }

    /// A skinning in double precision from the scene's weights and matrices: world places in centimetres.
    std::vector<Vector3> skinned(Node& shape) {
        const Plug output = shape.source_of(shape.find_plug("i").key);
        Node& cluster = *output.node;
        const auto bound = headless::mesh_at(scene(), cluster.find_plug("ip[0].ig"));
        const Matrix geometry = cluster.get(cluster.find_plug("gm").key).matrix();
        std::vector<Vector3> sums(bound->points.size());
        std::vector<double> totals(sums.size());
        const auto weight_attribute = cluster.find_attribute("weights");
        for (const PlugKey& key : cluster.stored()) {
            if (key.attribute != weight_attribute || key.depth != 2) continue;
            const std::string at = "[" + std::to_string(key.index[1]) + "]";
            const Plug bone = cluster.source_of(cluster.find_plug("ma" + at).key);
            const Matrix bind = cluster.get(cluster.find_plug("pm" + at).key).matrix();
            const Matrix all = geometry * bind * scene().world_matrix(*bone.node) * headless::inverse(geometry);
            const auto point = static_cast<std::size_t>(key.index[0]);
            const double weight = cluster.get(key).number();
            sums[point] = sums[point] + transform_point(headless::wide(bound->points[point]), all) * weight;
            totals[point] += weight;
        }
        const bool normalizes = cluster.get(cluster.find_plug("nw").key).integer() == 2;
        const Matrix place = scene().world_matrix(shape);
        for (std::size_t i = 0; i < sums.size(); ++i)
            sums[i] = transform_point(normalizes ? sums[i] * (1 / totals[i]) : sums[i], place);
        return sums;
    }

    static std::vector<Vector3> host_points(const MDagPath& shape) {
        MPointArray points;
        EXPECT_TRUE(MFnMesh(shape).getPoints(points, MSpace::kWorld));
        std::vector<Vector3> out;
        for (unsigned int i = 0; i < points.length(); ++i) out.push_back({points[i].x, points[i].y, points[i].z});
        return out;
    }

    /// Which host point each vertex of the file stands for: corners are told apart before anything moves the mesh.
    static std::vector<u32> points_of(const MDagPath& shape) {
        WHOLE_MESH mesh;
        const auto material = [](const MObject&) { return 0U; };
        const std::vector<DEFORMER> deformers = deformers_of(shape);
        MGlobal::viewFrame(export_settings().start_frame);
        if (deformers.empty() || !read_whole_mesh(shape, input_mesh(deformers.front()), material, mesh)) {
            mesh = WHOLE_MESH();
            EXPECT_TRUE(read_whole_mesh(shape, MObject(), material, mesh));
        }
        return mesh.point_of;
    }

    /// The farthest that a vertex is from its point, by the size of the whole.
    static double farthest(const std::vector<VECTOR_3>& vertices, const std::vector<u32>& points,
                           const std::vector<Vector3>& host) {
        EXPECT_EQ(vertices.size(), points.size());
        Vector3 low = host[0], high = host[0];
        double most = 0.0;
        for (const Vector3& p : host) {
            low = {std::min(low.x, p.x), std::min(low.y, p.y), std::min(low.z, p.z)};
            high = {std::max(high.x, p.x), std::max(high.y, p.y), std::max(high.z, p.z)};
        }
        for (std::size_t i = 0; i < vertices.size(); ++i) {
            const Vector3 there = Vector3{vertices[i].x, vertices[i].y, -vertices[i].z} * 100.0;
            const double apart = length(there - host[points[i]]);
            if (!(apart <= most)) most = apart;
        }
        return most / length(high - low);
    }

    template<class MESH_CLASS>
    static std::vector<VECTOR_3> placed(const VOR2& root, const MESH_CLASS& mesh) {
        std::vector<VECTOR_3> out;
        for (const auto& vertex : mesh.vertices) {
            VECTOR_3 position(0.0F, 0.0F, 0.0F);
            vertex.get_position(position);
            if constexpr (!std::is_same_v<MESH_CLASS, VOR2_WEIGHTED_MESH>)
                position = root.matrix_hierarchy.nodes[mesh.matrix_index].world_matrix.transform_point(position);
            out.push_back(position);
        }
        return out;
    }

    /// Compares meshes with the host's at so many moments of the range.
    template<class LIST>
    void expect_posed(VOR2& root, const LIST& meshes, int moments) {
        const double start = export_settings().start_frame, stop = export_settings().stop_frame;
        for (const auto& mesh : meshes) {
            const std::string name = to_host_text(mesh->name).asChar();
            SCOPED_TRACE(name);
            const std::vector<u32> points = points_of(path_of(name.c_str()));
            for (int i = 0; i < moments; ++i) {
                const double frame = std::floor(start + (stop - start) * i / std::max(moments - 1, 1));
                SCOPED_TRACE(frame);
                MGlobal::viewFrame(frame);
                root.set_time(static_cast<f32>(frame / 24.0));
                EXPECT_LT(farthest(placed(root, *mesh), points, host_points(path_of(name.c_str()))), 1e-4);
                if constexpr (std::is_same_v<std::decay_t<decltype(*mesh)>, VOR2_WEIGHTED_MESH>) {
                    const auto shape = scene().find_node(name);
                    EXPECT_LT(farthest(placed(root, *mesh), points, skinned(**shape)), 1e-4);
                }
            }
        }
    }

    void make_arm() {
        run("createNode transform -n body; createNode mesh -n m -p body; createNode mesh -n rest -p body;"
            "setAttr rest.io 1; createNode polyCube -n c; setAttr c.w 2; setAttr c.h 10; setAttr c.sh 4;"
            "connectAttr c.out rest.i; createNode joint -n lower; setAttr lower.ty -5;"
            "createNode joint -n upper -p lower; setAttr upper.ty 5; createNode skinCluster -n k;"
            "connectAttr lower.wm k.ma[0]; connectAttr upper.wm k.ma[1];"
            "setAttr k.pm[0] -type matrix 1 0 0 0 0 1 0 0 0 0 1 0 0 5 0 1; connectAttr rest.w k.ip[0].ig;");
        const std::vector<Vector3> points = host_points(path_of("rest"));
        for (std::size_t i = 0; i < points.size(); ++i) {
            const double up = (points[i].y + 5.0) / 10.0;
            const std::string at = "setAttr k.wl[" + std::to_string(i) + "].w[";
            if (up < 1.0) run(at + "0] " + std::to_string(1.0 - up));
            if (up > 0.0) run(at + "1] " + std::to_string(up));
        }
        run("connectAttr k.og[0] m.i;");
        export_settings().start_frame = 0;
        export_settings().stop_frame = 24;
        export_settings().sample_at = 24;
        animate(path_of("upper"), "rz", {0.0, 0.5, 1.0}, {0.0, 1.2, -0.7});
        animate(path_of("lower"), "ry", {0.0, 1.0}, {0.0, 2.0});
        select({"body", "lower"});
    }
};

TEST_F(CHARACTER_TEST, poses_the_skins_of_real_scenes_as_a_skinning_from_their_own_numbers_does) {
    const std::pair<const char*, std::size_t> scenes[] = {
        {"FiveJointsFourInfluencesAnim.ma", 1},
        {"TwoJointsLogicalParentAnim.ma", 1},
        {"ZeroParentScaleTestAnim.ma", 1},
        {"ComplexAnim1.ma", 1},
        {"production/scenes/Ultimate_Handy_v1.0.2.ma", 1},
        {"production/scenes/Ultimate_Walker_FK_v1.0.1.ma", 4},
    };
    int found = 0;
    for (const auto& [file, meshes] : scenes) {
        SCOPED_TRACE(file);
        if (!open(file)) continue;
        ++found;
        export_settings().sample_at = 24.0;
        VOR2 root = exported();
        EXPECT_EQ(root.weighted_meshes.size(), meshes);
        expect_posed(root, root.weighted_meshes, 10);
    }
    if (found == 0) GTEST_SKIP() << "no scenes in " VOR2_SHARED_DATA;
}

TEST_F(CHARACTER_TEST, binds_to_the_bones_themselves_where_the_range_starts_as_bound) {
    make_arm();
    const VOR2 fast = exported();
    ASSERT_EQ(fast.weighted_meshes.size(), 1U);
    EXPECT_EQ(fast.environment.time_range.start, 0.0F);
    EXPECT_EQ(names(fast), (std::vector<std::string>{"Exporter Inserted Root", "body", "lower", "upper"}));
    VOR2 root = fast;
    expect_posed(root, root.weighted_meshes, 9);
    const VOR2_WEIGHTED_MESH_VERT& vertex = root.weighted_meshes[0]->vertices[0];
    ASSERT_EQ(vertex.bone_weights.size(), 1U);
    EXPECT_EQ(vertex.bone_weights[0].bone_index, 2);
    EXPECT_EQ(vertex.rest_position, VECTOR_3(-0.01F, -0.05F, -0.005F));
    EXPECT_EQ(vertex.rest_normal, VECTOR_3(0.0F, 0.0F, -1.0F)); // apart from those of the sides
}

TEST_F(CHARACTER_TEST, keeps_the_pose_at_every_sample_however_a_skin_is_bound) {
    struct CASE {
        const char *what, *line;
        bool leads_in;
        std::size_t extra_nodes;
    };
    const CASE cases[] = {
        {"bound bent", "setAttr k.pm[1] -type matrix 0.8 0.6 0 0 -0.6 0.8 0 0 0 0 1 0 1 2 3 1;", true, 0},
        {"half an envelope", "setAttr k.en 0.5; setAttr lower.rx 20;", true, 0},
        {"scaled on the way", "setAttr lower.rx 20;", false, 4},
        {"weights that don't add up", "setAttr k.wl[3].w[1] 0.9;", false, 0},
        {"bound where the mesh isn't", "setAttr k.gm -type matrix 1 0 0 0 0 1 0 0 0 0 1 0 3 2 1 1;", false, 2},
        {"all of it at once",
         "setAttr k.pm[1] -type matrix 0.8 0.6 0 0 -0.6 0.8 0 0 0 0 1 0 1 2 3 1; setAttr k.en 0.5; setAttr lower.rx 20;"
         "setAttr k.wl[3].w[1] 0.9; setAttr k.gm -type matrix 1 0 0 0 0 1 0 0 0 0 1 0 3 2 1 1;",
         true, 6},
        {"and half an envelope", "setAttr k.en 0.5; setAttr k.gm -type matrix 1 0 0 0 0 1 0 0 0 0 1 0 3 2 1 1;", false,
         2},
    };
    for (const CASE& one : cases) {
        SCOPED_TRACE(one.what);
        session.new_scene();
        make_arm();
        run(one.line);
        if (std::string(one.what) == "scaled on the way" || std::string(one.what) == "all of it at once")
            animate(path_of("lower"), "sx", {0.0, 1.0}, {1.0, 3.0});
        VOR2 root = exported();
        ASSERT_EQ(root.weighted_meshes.size(), 1U);
        EXPECT_EQ(root.environment.time_range.start < 0.0F, one.leads_in);
        EXPECT_EQ(!root.weighted_meshes[0]->extended_properties.float_properties.empty(), one.leads_in);
        EXPECT_LE(root.matrix_hierarchy.nodes.size(), 4 + one.extra_nodes);
        EXPECT_FALSE(said("W: The file has "));
        const std::vector<u32> points = points_of(path_of("m"));
        for (const double frame : {0.0, 1.0, 7.0, 24.0}) {
            SCOPED_TRACE(frame);
            MGlobal::viewFrame(frame);
            root.set_time(static_cast<f32>(frame / 24.0));
            EXPECT_LT(farthest(placed(root, *root.weighted_meshes[0]), points, host_points(path_of("m"))), 1e-4);
        }
    }
}

TEST_F(CHARACTER_TEST, keeps_a_mesh_whose_faces_change_behind_its_skin) {
    make_arm();
    run("disconnectAttr k.og[0] m.i; createNode polySubdFace -n s; setAttr s.ics -type componentList 1 \"f[*]\"; "
        "connectAttr k.og[0] s.ip; connectAttr s.out m.i;");
    select({"body", "lower"});
    const VOR2 still = exported();
    ASSERT_EQ(still.rigids.size(), 1U);
    EXPECT_GT(still.rigids[0]->vertices.size(), 60U);
    EXPECT_TRUE(said("W: What k does to m isn't in the file, which has the mesh as it is at the first frame: behind"));
    mesh_options().moving_points = true;
    VOR2 moving = exported();
    ASSERT_EQ(moving.anim_meshes.size(), 1U);
    expect_posed(moving, moving.anim_meshes, 3);
}

TEST_F(CHARACTER_TEST, says_where_the_file_poses_a_mesh_otherwise) {
    make_arm();
    run("setKeyframe -t 0 -v 1 k.en; setKeyframe -t 24 -v 0 k.en;"); // a file's weights don't move
    (void)exported();
    const auto line = std::find_if(messages.begin(), messages.end(),
                                   [](const std::string& m) { return m.starts_with("W: The file has m up to "); });
    ASSERT_NE(line, messages.end());
    EXPECT_TRUE(line->ends_with("of its size away from where the host has it, at frame 24")) << *line;
}

TEST_F(CHARACTER_TEST, wants_the_bones_in_the_export_or_takes_them_along) {
    make_arm();
    run("createNode transform -n rig; parent lower rig; setAttr rig.tx 4;");
    select({"body"});
    VOR2 refused;
    EXPECT_FALSE(translate_scene(refused, MString("out.vr2")));
    EXPECT_TRUE(said("E: The mesh m has a bone that isn't exported: lower"));
    EXPECT_TRUE(said("E: The mesh m has a bone that isn't exported: upper"));
    mesh_options().include_bones = true;
    select({"body"});
    VOR2 root = exported();
    EXPECT_EQ(names(root), (std::vector<std::string>{"Exporter Inserted Root", "rig", "lower", "upper", "body"}));
    EXPECT_EQ(parents(root), (std::vector<int>{-1, 0, 1, 2, 0}));
    expect_posed(root, root.weighted_meshes, 5);
}

TEST_F(CHARACTER_TEST, gives_blend_shapes_a_target_for_each_step) {
    run("createNode transform -n t; createNode mesh -n m -p t; createNode mesh -n rest -p t; setAttr rest.io 1;"
        "createNode polyCube -n c; connectAttr c.out rest.i; createNode polyCube -n d; setAttr d.w 3;"
        "createNode transform -n u; createNode mesh -n wide -p u; connectAttr d.out wide.i; setAttr t.ty 3;"
        "createNode blendShape -n k; connectAttr rest.w k.ip[0].ig; connectAttr k.og[0] m.i;"
        "connectAttr wide.w k.it[0].itg[0].iti[6000].igt; setAttr k.w[0] 0.5; setAttr k.w[2] 0; setAttr k.en 0.5;"
        "setAttr k.it[0].itg[2].iti[5500].ipt -type pointArray 2 0 0 4 1 0 0 8 1;"
        "setAttr k.it[0].itg[2].iti[5500].ict -type componentList 2 \"vtx[5]\" \"vtx[1]\";"
        "setAttr k.it[0].itg[2].iti[6000].ipt -type pointArray 1 1 0 0 1;"
        "setAttr k.it[0].itg[2].iti[6000].ict -type componentList 1 \"vtx[5]\";"
        "addAttr -ln attributeAliasList -sn aal -dt attributeAlias k;"
        "setAttr k.it[0].itg[0].tw[7] 0;");
    const auto plug = scene().find_plug("k.w[2]");
    ASSERT_TRUE(plug && headless::set_keys(scene(), *plug, headless::KeyTimes({0.0, 1.0}), {0.0, 1.25},
                                           headless::Tangent::linear));
    export_settings().start_frame = 0;
    export_settings().stop_frame = 24;
    select({"t"});
    VOR2 root = exported();
    ASSERT_EQ(root.morph_meshes.size(), 1U);
    const VOR2_MORPH_MESH& mesh = *root.morph_meshes[0];
    ASSERT_EQ(mesh.morph_targets.size(), 3U);
    EXPECT_EQ(mesh.morph_targets[1].name, TEXT(u"weight[2]_50"));
    EXPECT_EQ(mesh.morph_targets[0].track->key_times().size(), 1U);
    expect_posed(root, root.morph_meshes, 13);
    // At 0.75 half of each step counts, and half of that by the envelope.
    MGlobal::viewFrame(14.4);
    const std::vector<Vector3> points = host_points(path_of("m"));
    EXPECT_NEAR(points[5].z, -0.5 + 4.0 * 0.25, 1e-5);
    EXPECT_NEAR(points[5].x, 0.5 + 1.0 * 0.25 + 1.0 * 0.25, 1e-5);
    EXPECT_NEAR(points[7].x, 0.5, 1e-5); // painted out of the wide target
    EXPECT_EQ(shares_of_steps({0.5, 1.0}, 1.5), (std::vector<double>{-1.0, 2.0}));
    EXPECT_EQ(shares_of_steps({1.0}, -0.5), (std::vector<double>{-0.5}));
}

TEST_F(CHARACTER_TEST, takes_a_skin_with_blend_shapes_as_both_when_asked_to) {
    if (!open("ComplexAnim1.ma")) GTEST_SKIP();
    export_settings().sample_at = 24.0;
    VOR2 skin = exported();
    EXPECT_EQ(skin.weighted_meshes.size(), 1U);
    EXPECT_EQ(skin.morph_meshes.size(), 0U);
    EXPECT_TRUE(said("W: What blendShape1 does to characterShape isn't in the file, which has its skin alone"));
    ASSERT_TRUE(open("ComplexAnim1.ma"));
    mesh_options().skin_and_morph = true;
    export_settings().sample_at = 24.0;
    const VOR2 both = exported();
    ASSERT_EQ(both.morph_meshes.size(), 1U);
    ASSERT_EQ(both.morph_meshes[0]->morph_targets.size(), 3U);
    EXPECT_EQ(both.morph_meshes[0]->morph_targets[0].name, TEXT(u"target3"));
}

TEST_F(CHARACTER_TEST, keys_the_points_that_other_deformers_move_when_asked_to) {
    run("createNode transform -n t; createNode mesh -n m -p t; createNode mesh -n rest -p t; setAttr rest.io 1;"
        "createNode polyCube -n c; connectAttr c.out rest.i; createNode transform -n h; createNode cluster -n k;"
        "connectAttr rest.w k.ip[0].ig; connectAttr k.og[0] m.i; connectAttr h.wm k.ma;"
        "createNode groupParts -n g; connectAttr rest.w g.ig; connectAttr -f g.og k.ip[0].ig;"
        "setAttr g.ic -type componentList 1 \"vtx[0:3]\";");
    animate(path_of("h"), "ty", {0.0, 1.0}, {0.0, 5.0});
    export_settings().start_frame = 0;
    export_settings().stop_frame = 24;
    select({"t"});
    EXPECT_EQ(exported().rigids.size(), 1U);
    EXPECT_TRUE(said("W: What k does to m isn't in the file"));
    mesh_options().moving_points = true;
    select({"t"});
    VOR2 root = exported();
    ASSERT_EQ(root.anim_meshes.size(), 1U);
    expect_posed(root, root.anim_meshes, 5);
    const auto points = host_points(path_of("m"));
    EXPECT_NEAR(points[0].y, 4.5, 1e-5);
    EXPECT_NEAR(points[7].y, -0.5, 1e-5);
}

} // namespace
} // namespace VOR2_EXPORTER_MAYA
