#include "convert/assimp_reader.h"
#include "tests/convert/convert_test.h"

#include <assimp/Importer.hpp>
#include <assimp/scene.h>

#include <cmath>
#include <map>

namespace convert_test {
namespace {

void read(const std::vector<std::uint8_t>& bytes, const std::string& extension, VOR2& scene) {
    ImportedFile file;
    ASSERT_EQ(read_with_assimp({bytes, extension, "file"}, file).problem, "");
    if (!file.animations.empty()) set_animation(file.animations[0], file.scene);
    Report report;
    build_scene(file.scene, scene, report);
}

/// Where Assimp's own scene has a node, from its keys where the time is that of a key.
void place(const aiNode& node, const aiMatrix4x4& above, const std::map<std::string, const aiNodeAnim*>& channels,
           unsigned key, std::map<std::string, Point>& out) {
    aiMatrix4x4 local = node.mTransformation;
    const auto channel = channels.find(node.mName.C_Str());
    if (channel != channels.end()) {
        const aiNodeAnim& a = *channel->second;
        const auto at = [key](unsigned count) { return std::min(key, count - 1); };
        local =
            aiMatrix4x4(a.mScalingKeys[at(a.mNumScalingKeys)].mValue, a.mRotationKeys[at(a.mNumRotationKeys)].mValue,
                        a.mPositionKeys[at(a.mNumPositionKeys)].mValue);
    }
    const aiMatrix4x4 world = above * local;
    out[node.mName.C_Str()] = {world.a4, world.b4, world.c4};
    for (unsigned i = 0; i < node.mNumChildren; ++i) place(*node.mChildren[i], world, channels, key, out);
}

TEST(AssimpIn, joints_of_an_fbx_file_stand_where_its_own_keys_have_them) {
    const auto bytes = shared_file("huesitos.fbx");
    if (!bytes) GTEST_SKIP() << "no shared files";
    VOR2 scene;
    ASSERT_NO_FATAL_FAILURE(read(*bytes, ".fbx", scene));
    Assimp::Importer importer;
    importer.SetPropertyBool(AI_CONFIG_IMPORT_FBX_PRESERVE_PIVOTS, false);
    const aiScene* source = importer.ReadFileFromMemory(bytes->data(), bytes->size(), 0, "fbx");
    ASSERT_NE(source, nullptr);
    const aiAnimation& animation = *source->mAnimations[0];
    std::map<std::string, const aiNodeAnim*> channels;
    const aiNodeAnim* longest = animation.mChannels[0];
    for (unsigned c = 0; c < animation.mNumChannels; ++c) {
        channels[animation.mChannels[c]->mNodeName.C_Str()] = animation.mChannels[c];
        if (animation.mChannels[c]->mNumRotationKeys > longest->mNumRotationKeys) longest = animation.mChannels[c];
    }
    // The first and the last key of every channel share their times.
    for (const bool last : {false, true}) {
        const double time =
            last ? longest->mRotationKeys[longest->mNumRotationKeys - 1].mTime / animation.mTicksPerSecond
                 : longest->mRotationKeys[0].mTime / animation.mTicksPerSecond;
        std::map<std::string, Point> expected;
        place(*source->mRootNode, aiMatrix4x4(), channels, last ? 1'000'000 : 0, expected);
        const std::vector<Point> points = node_points(scene, time);
        double height = 0;
        for (const auto& [name, point] : expected) height = std::max(height, size_of({point}));
        for (std::size_t n = 0; n < points.size(); ++n) {
            std::string name;
            for (const char16_t unit : scene.matrix_hierarchy.nodes[n].name.view()) name += static_cast<char>(unit);
            if (!expected.contains(name)) continue;
            Point there = expected[name];
            for (double& number : there) number *= 0.01; // the file is in centimetres
            EXPECT_LT(distance({there}, {points[n]}), 1e-3 * height * 0.01) << name << " at " << time;
        }
    }
}

// Two triangles, each with a picture that lies in the file under no name.
constexpr std::string_view pictured =
    R"({"asset": {"version": "2.0"}, "scene": 0, "scenes": [{"nodes": [0]}], "nodes": [{"mesh": 0}],
    "meshes": [{"primitives": [{"attributes": {"POSITION": 0}, "material": 0}, {"attributes": {"POSITION": 0}, "material": 1}]}],
    "materials": [{"pbrMetallicRoughness": {"baseColorTexture": {"index": 0}}}, {"pbrMetallicRoughness": {"baseColorTexture": {"index": 1}}}],
    "textures": [{"source": 0}, {"source": 1}],
    "images": [{"uri": "data:image/png;base64,iVBORwA="}, {"uri": "data:image/png;base64,iVBORwE="}],
    "buffers": [{"byteLength": 36, "uri": "data:application/octet-stream;base64,AAAAAAAAAAAAAAAAAACAPwAAAAAAAAAAAAAAAAAAgD8AAAAA"}],
    "bufferViews": [{"buffer": 0, "byteLength": 36}],
    "accessors": [{"bufferView": 0, "componentType": 5126, "count": 3, "type": "VEC3", "min": [0, 0, 0], "max": [1, 1, 0]}]})";

TEST(AssimpIn, pictures_without_names_are_called_by_their_numbers) {
    const std::vector<std::uint8_t> bytes(pictured.begin(), pictured.end());
    ImportedFile file;
    ASSERT_EQ(read_with_assimp({bytes, ".gltf", "hero"}, file).problem, "");
    std::map<std::string, std::vector<std::uint8_t>> pictures;
    for (const ImportedPicture& picture : file.pictures) pictures[picture.name] = picture.bytes;
    const std::vector<std::uint8_t> first{0x89, 'P', 'N', 'G', 0}, second{0x89, 'P', 'N', 'G', 1};
    EXPECT_EQ(pictures, (decltype(pictures){{"hero_0.png", first}, {"hero_1.png", second}}));
}

TEST(AssimpIn, a_character_comes_with_its_skin) {
    VOR2 scene = busy_scene(), back;
    scene.matrix_hierarchy.nodes[2].scale_track.reset(); // which shears what is below
    scene.prepare_weighted_meshes();
    const std::string glb = glb_of(scene);
    const auto* data = reinterpret_cast<const std::uint8_t*>(glb.data());
    ASSERT_NO_FATAL_FAILURE(read({data, data + glb.size()}, ".glb", back));
    ASSERT_EQ(back.weighted_meshes.size(), 1U);
    const GltfPlayer before(glb), after(glb_of(back));
    for (const double time : {1.0, 2.0, 3.0}) {
        const std::vector<Point> skinned = before.vertices(before.node("skin"), time);
        EXPECT_LT(distance(skinned, after.vertices(after.mesh_node(1), time)), 1e-3 * size_of(skinned)) << time;
        for (const char* joint : {"arm", "hand", "tip"}) {
            const Matrix a = before.worlds(time)[static_cast<std::size_t>(before.node(joint))],
                         b = after.worlds(time)[static_cast<std::size_t>(after.node(joint))];
            EXPECT_LT(distance({{a[0][3], a[1][3], a[2][3]}}, {{b[0][3], b[1][3], b[2][3]}}), 1e-3)
                << joint << " at " << time;
        }
    }
}

TEST(AssimpIn, a_file_cut_off_anywhere_is_told_or_read) {
    const auto bytes = shared_file("huesitos.fbx");
    if (!bytes) GTEST_SKIP() << "no shared files";
    std::size_t told = 0;
    for (std::size_t length = 0; length < bytes->size(); length += 997) {
        ImportedFile file;
        const Report report = read_with_assimp({std::span(*bytes).first(length), ".fbx", "file"}, file);
        if (!report.good()) ++told;
        VOR2 scene;
        Report built;
        if (report.good()) build_scene(file.scene, scene, built);
    }
    EXPECT_GT(told, 50U);
}

} // namespace
} // namespace convert_test
