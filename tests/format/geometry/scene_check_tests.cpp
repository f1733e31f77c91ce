#include "tests/format/format_test.h"

#include "format/geometry/scene_check.h"

#include <cstdlib>
#include <limits>

namespace VOR2_LOADER {
namespace {

constexpr f32 INF = std::numeric_limits<f32>::infinity();
constexpr f32 NO_NUMBER = std::numeric_limits<f32>::quiet_NaN();
constexpr const char* MAX_NOTE =
    "\r\nPlease note that all vertex positions are given in metres in 3dsMax space! So please open the appropriate Max "
    "file (should be printed at the top of this document) to fix these problems. Also, please ensure that your units "
    "are set to metres in 3dsMax too! If not these vertex positions will not make sense!\r\n\r\n";

VECTOR_3 as_stored(VECTOR_3 position) {
    return position;
}

std::string problems_of(VOR2& root, bool fix = false, POSITION_CONVERTER convert = as_stored) {
    NARROW_TEXT problems("what was there before");
    check_scene(root, problems, fix, nullptr, false, convert);
    return std::string(problems.view());
}

/// A mesh of one vertex with one channel, at a node that shifts it by 10 along x.
template<class MESH>
MESH& add_mesh(VOR2& root, OWNED_ARRAY<MESH>& meshes, const char16_t* name) {
    if (root.matrix_hierarchy.nodes.empty()) {
        root.matrix_hierarchy.nodes.grow_by(1);
        root.matrix_hierarchy.nodes[0].world_matrix.set_translation({10, 0, 0});
    }
    MESH& mesh = *meshes.emplace_back(make_owned<MESH>());
    mesh.name = TEXT(name);
    mesh.matrix_index = 0;
    mesh.mapping_channels.push_back(4);
    mesh.vertices.emplace_back();
    return mesh;
}

TEST(scene_check, tells_channels_and_normals_of_every_kind_of_mesh) {
    VOR2 root;
    root.inf.file_info = TEXT(u"RECORD\r\n");
    VOR2_RIGID& rigid = add_mesh(root, root.rigids, u"box\u0142");
    rigid.vertices[0].uvs.push_back({1.0F, 2.0F, INF});
    rigid.vertices[0].position = {1, 2, 3.456F};
    rigid.vertices[0].normal.y = NO_NUMBER;
    VOR2_WEIGHTED_MESH& weighted = add_mesh(root, root.weighted_meshes, u"skin");
    weighted.vertices[0].normal = {NO_NUMBER, NO_NUMBER, NO_NUMBER};
    VOR2_ANIM_MESH& anim = add_mesh(root, root.anim_meshes, u"flag");
    anim.vertices[0].uv_tracks.push_back(make_owned<VOR2_ANIMATABLE_VECTOR_3_LINEAR>());
    anim.vertices[0].uv_tracks[0]->add_key({0, 0, 0}, 0);
    anim.vertices[0].uv_tracks[0]->add_key({-INF, 0.0F, 0.0F}, 1);
    const std::string expected =
        "RECORD\r\n"
        "Object Name: boxB. Max mapping channel: 4. Good U , Good V , BAD W!.\r\n"
        "Object Name: boxB - has a vertex at the following position (11.00 , 2.00 , 3.46) which has a dodgy normal.\r\n"
        "Object Name: skin - has a vertex at the following position (0.00 , 0.00 , 0.00) which has a dodgy normal.\r\n"
        "Object Name: flag. Max mapping channel: 4. BAD U! , Good V , Good W.\r\n"
        "\r\n\r\n";
    EXPECT_EQ(problems_of(root), expected);
    EXPECT_EQ(problems_of(root), expected) << "looking changes nothing";

    const std::string in_max = problems_of(root, false, swap_y_z);
    EXPECT_NE(in_max.find(std::string(MAX_NOTE) + "Object Name: boxB. Max"), std::string::npos);
    EXPECT_NE(in_max.find("(11.00 , 3.46 , 2.00)"), std::string::npos);
    EXPECT_EQ(in_max.find(std::string(MAX_NOTE) + "Object Name: skin"), std::string::npos);
}

TEST(scene_check, repairs_with_the_runtime_s_random_numbers) {
    VOR2 root;
    VOR2_MORPH_MESH& mesh = add_mesh(root, root.morph_meshes, u"face");
    mesh.vertices[0].uvs.push_back({1.0F, INF, 3.0F});
    mesh.vertices[0].normal = {INF, 0.0F, 0.0F};
    VOR2_ANIM_MESH& anim = add_mesh(root, root.anim_meshes, u"flag");
    anim.vertices[0].normal_track = make_owned<VOR2_ANIMATABLE_VECTOR_3_LINEAR>();
    for (int k = 0; k < 3; ++k) anim.vertices[0].normal_track->add_key({NO_NUMBER, 0.0F, 0.0F}, static_cast<f32>(k));
    std::srand(5);
    EXPECT_NE(problems_of(root, true), "");
    std::srand(5);
    f32 drawn[6];
    for (f32& number : drawn) number = static_cast<f32>(std::rand() & 0x7FFF);
    const VECTOR_3 uv = mesh.vertices[0].uvs[0];
    EXPECT_EQ(uv, VECTOR_3(drawn[2] * 3.051851e-5F, drawn[1] * 3.051851e-5F, drawn[0] * 3.051851e-5F));
    const VECTOR_3 direction(drawn[5] * 6.103702e-5F - 1, drawn[4] * 6.103702e-5F - 1, drawn[3] * 6.103702e-5F - 1);
    EXPECT_EQ(mesh.vertices[0].normal, direction.normalised());
    EXPECT_EQ(anim.vertices[0].normal_track->key_values().size(), 1U);
    EXPECT_EQ(problems_of(root, true), "") << "nothing is left to find";
}

TEST(scene_check, writes_a_report_only_when_there_is_something_to_report) {
    const std::filesystem::path folder = std::filesystem::path(TEMPORARY_FILE().path()).replace_extension("folder");
    const std::string file = (folder / "deep" / "report.txt").string();
    const NARROW_TEXT name(file);
    VOR2 root;
    NARROW_TEXT problems;
    check_scene(root, problems, true, &name, false, as_stored);
    EXPECT_FALSE(std::filesystem::exists(folder)) << "a clean scene touches no file";

    add_mesh(root, root.rigids, u"box").vertices[0].normal.x = INF;
    check_scene(root, problems, false, &name, false, as_stored);
    EXPECT_EQ(std::filesystem::file_size(file), problems.length() + 1) << "the NUL is part of the file";
    std::filesystem::permissions(file, std::filesystem::perms::owner_read);
    add_mesh(root, root.rigids, u"box2").vertices[0].normal.x = INF;
    check_scene(root, problems, true, &name, false, as_stored);
    const auto size = std::filesystem::file_size(file);
    EXPECT_EQ(size, problems.length() + 1) << "a read-only report is replaced";
    check_scene(root, problems, true, &name, false, as_stored);
    EXPECT_EQ(problems.length(), 0U);
    EXPECT_EQ(std::filesystem::file_size(file), size) << "an old report is left alone";
    std::filesystem::remove_all(folder);

    const NARROW_TEXT nowhere((std::filesystem::path(VOR2_SOURCE_DIR) / "README.md" / "report.txt").string());
    root.rigids[0]->vertices[0].normal.x = INF;
    check_scene(root, problems, false, &nowhere, false, as_stored);
    EXPECT_NE(problems.length(), 0U) << "a report that can't be written loses nothing";
}

TEST(scene_check, follows_the_references_that_it_should_and_strays_nowhere) {
    VOR2 scene;
    scene.inf.file_info = TEXT(u"NESTED\r\n");
    VOR2_RIGID& mesh = add_mesh(scene, scene.rigids, u"box");
    mesh.vertices[0].normal.x = INF;
    mesh.matrix_index = 12345;
    mesh.vertices[0].uvs.push_back({0, 0, 0});
    mesh.vertices[0].uvs.push_back({INF, 0.0F, 0.0F});
    scene.rigids.push_back(nullptr);
    VOR2 root;
    root.xrefs_15.push_back(make_owned<VOR2_XREF<15>>());
    root.xrefs_15[0]->scene = make_owned<VOR2>(scene);
    root.xrefs_20.push_back(make_owned<VOR2_XREF<20>>());
    root.xrefs_20[0]->scene = make_owned<VOR2>(scene);
    EXPECT_EQ(problems_of(root), "NESTED\r\nObject Name: box - has a vertex at the following position (0.00 , 0.00 , "
                                 "0.00) which has a dodgy normal.\r\n\r\n\r\n");
}

} // namespace
} // namespace VOR2_LOADER
