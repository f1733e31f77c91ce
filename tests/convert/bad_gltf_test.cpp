#include "tests/convert/convert_test.h"

namespace convert_test {
namespace {

std::string problem_of(std::string_view gltf) {
    ImportedFile file;
    return read_gltf({{reinterpret_cast<const std::uint8_t*>(gltf.data()), gltf.size()}, "file", {}}, file).problem;
}

/// A .gltf with one buffer of 12 bytes, one accessor of one point, and what a case adds.
std::string gltf(const std::string& members) {
    return R"({"asset":{"version":"2.0"},"scenes":[{"nodes":[0]}],
        "buffers":[{"byteLength":12,"uri":"data:application/octet-stream;base64,AAAAAAAAAAAAAAAA"}],
        "bufferViews":[{"buffer":0,"byteLength":12},{"buffer":0,"byteOffset":8,"byteLength":12},{"buffer":7,"byteLength":1}],)" +
           members + "}";
}

TEST(BadGltf, each_index_that_names_nothing_is_told) {
    const std::string accessor = R"("accessors":[{"bufferView":0,"componentType":5126,"count":1,"type":"VEC3"},
        {"bufferView":1,"componentType":5126,"count":1,"type":"VEC3"},{"bufferView":2,"componentType":5126,"count":1,"type":"VEC3"},
        {"bufferView":0,"componentType":5126,"count":4000000000,"type":"VEC3"},{"componentType":5126,"count":4000000000,"type":"VEC3"},
        {"bufferView":0,"byteOffset":18446744073709551600,"componentType":5126,"count":1,"type":"VEC3"},
        {"bufferView":0,"componentType":5125,"count":3,"type":"SCALAR"},
        {"bufferView":0,"componentType":5126,"count":3,"type":"SCALAR"}],)";
    const auto mesh = [&accessor](const std::string& attributes) {
        return gltf(accessor + R"("nodes":[{"mesh":0}],"meshes":[{"primitives":[)" + attributes + "]}]");
    };
    const struct {
        std::string file;
        const char* words;
    } cases[] = {
        {mesh(R"({"attributes":{"POSITION":0}})"), ""},
        {mesh(R"({"attributes":{"POSITION":99}})"), "accessor 99"},
        {mesh(R"({"attributes":{"POSITION":1}})"), "behind"},
        {mesh(R"({"attributes":{"POSITION":2}})"), "buffer 7"},
        {mesh(R"({"attributes":{"POSITION":3}})"), "worth"},
        {mesh(R"({"attributes":{"POSITION":4}})"), "worth"},
        {mesh(R"({"attributes":{"POSITION":5}})"), "behind"},
        {mesh(R"({"attributes":{"POSITION":7}})"), "numbers an element"},
        {mesh(R"({"attributes":{"POSITION":0},"indices":0})"), "numbers an element"},
        {mesh(R"({"attributes":{"POSITION":0},"material":3})"), "material 3"},
        {mesh(R"({"attributes":{"POSITION":0},"targets":[{"POSITION":50}]})"), "accessor 50"},
        {gltf(R"("nodes":[{"mesh":4}])"), "mesh 4"},
        {gltf(R"("nodes":[{"children":[9]}])"), "node 9"},
        {gltf(R"("nodes":[{"children":[1]},{"children":[2]},{"children":[1]}])"), "two parents"},
        {gltf(R"("nodes":[{},{"children":[2]},{"children":[1]}])"), "its own ancestor"},
        {gltf(R"("nodes":[{"children":[0]}])"), "node 0"},
        {gltf(R"("nodes":[{"translation":[1e99,0,0]}])"), "finite"},
        {gltf(R"("nodes":[{"camera":2}])"), "camera 2"},
        {gltf(accessor + R"("nodes":[{"mesh":0,"skin":3}],"meshes":[{"primitives":[{"attributes":{"POSITION":0}}]}])"),
         "skin 3"},
        {gltf(
             accessor +
             R"("nodes":[{"mesh":0,"skin":0}],"skins":[{"joints":[5]}],"meshes":[{"primitives":[{"attributes":{"POSITION":0}}]}])"),
         "node 5"},
        {gltf(
             accessor +
             R"("nodes":[{"mesh":0,"skin":0},{}],"skins":[{"joints":[1]}],"meshes":[{"primitives":[{"attributes":{"POSITION":0}}]}])"),
         "isn't in the scene"},
        {gltf(
             accessor +
             R"("nodes":[{}],"animations":[{"channels":[{"sampler":4,"target":{"node":0,"path":"translation"}}],"samplers":[]}])"),
         "sampler"},
        {gltf(
             accessor +
             R"("nodes":[{}],"animations":[{"channels":[{"sampler":0,"target":{"node":0,"path":"translation"}}],"samplers":[{"input":7,"output":0}]}])"),
         "as many values"},
        {gltf(R"("nodes":[{}],"images":[{"bufferView":1,"mimeType":"image/png"}])"), "picture"},
        {gltf(R"("nodes":[{}],"images":[{"bufferView":-1,"mimeType":"image/png"}])"), "isn't there"},
        {gltf(
             R"("nodes":[{}],"extensionsRequired":["KHR_draco_mesh_compression"],"extensionsUsed":["KHR_draco_mesh_compression"])"),
         "needs the extension"},
        {R"({"asset":{"version":"1.0"},"nodes":[]})", "only 2"},
        {R"({"asset":{"version":"2.0"},"buffers":[{"byteLength":4,"uri":"gone.bin"}]})", "gone.bin"},
        {"[1, 2]", "no object"},
        {"{", "can't be read"},
        {"", "empty"},
    };
    for (const auto& test : cases) {
        const std::string problem = problem_of(test.file);
        EXPECT_NE(problem.find(test.words), std::string::npos) << test.file << "\n-> " << problem;
        EXPECT_EQ(problem.empty(), *test.words == 0) << test.file << "\n-> " << problem;
    }
}

TEST(BadGltf, deep_nesting_and_files_cut_off_anywhere_are_told) {
    EXPECT_NE(problem_of(R"({"asset":{"version":"2.0"},"extras":)" + std::string(100'000, '[') +
                         std::string(100'000, ']') + "}"),
              "");
    VOR2 scene = busy_scene();
    const std::string glb = glb_of(scene);
    for (std::size_t length = 0; length < glb.size(); length += 1 + length / 20)
        EXPECT_NE(problem_of(std::string_view(glb).substr(0, length)), "") << length;
    // Every byte of the JSON in turn as another: whatever comes of it, it is told or read.
    std::string spoilt = glb;
    for (std::size_t i = 12; i < std::min<std::size_t>(glb.size(), 6000); i += 41) {
        spoilt[i] = static_cast<char>(spoilt[i] ^ 0x11);
        (void)problem_of(spoilt);
        spoilt[i] = glb[i];
    }
}

} // namespace
} // namespace convert_test
