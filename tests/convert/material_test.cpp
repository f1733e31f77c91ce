#include "convert/material_values.h"
#include "convert/picture.h"
#include "tests/convert/convert_test.h"

#include <cmath>
#include <map>

#define STB_IMAGE_STATIC
#define STB_IMAGE_IMPLEMENTATION
#define STBI_ONLY_PNG
#define STBI_NO_STDIO
#ifdef __GNUC__
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wunused-function"
#endif
#include <stb/stb_image.h>
#ifdef __GNUC__
#pragma GCC diagnostic pop
#endif

namespace convert_test {
namespace {

using Points = std::vector<int>; // red, green, blue, alpha of each

std::string grey(const std::string& values) {
    return "P5 " + std::to_string(values.size()) + " 1 255 " + values;
}

/// A row of grey points with an alpha each, as a TGA.
std::string grey_with_alpha(const std::vector<std::pair<int, int>>& values) {
    std::string out(18, '\0');
    out[2] = 2;
    out[12] = static_cast<char>(values.size());
    out[14] = 1;
    out[16] = 32;
    out[17] = 8;
    for (const auto& [value, alpha] : values)
        out += std::string(3, static_cast<char>(value)) + static_cast<char>(alpha);
    return out;
}

Points points_of(const std::vector<std::uint8_t>& png) {
    int width = 0, height = 0, channels = 0;
    stbi_uc* points = stbi_load_from_memory(png.data(), static_cast<int>(png.size()), &width, &height, &channels, 4);
    if (points == nullptr) return {};
    Points out(points, points + 4L * width * height);
    std::free(points);
    return out;
}

std::optional<TextureUse> use_of(const std::string& name) {
    TextureUse use;
    use.name = name;
    return use;
}

class Materials : public testing::Test {
protected:
    /// The materials on their way through a .glb.
    std::vector<MaterialValues> through_glb(const std::vector<MaterialValues>& materials, bool leave_out = false) {
        VOR2 scene = busy_scene();
        scene.materials.clear();
        for (const MaterialValues& values : materials) scene.materials.push_back(make_material(values));
        GltfOptions options;
        options.leave_out_textures = leave_out;
        options.texture = [this](const std::string& name) -> std::optional<std::vector<std::uint8_t>> {
            const auto found = pictures.find(name);
            if (found == pictures.end()) return {};
            return std::vector<std::uint8_t>(found->second.begin(), found->second.end());
        };
        report = {};
        const std::string glb = glb_of(scene, options, &report);
        json = GltfPlayer(glb).json();
        const GltfSource source{{reinterpret_cast<const std::uint8_t*>(glb.data()), glb.size()}, "hero", {}};
        EXPECT_EQ(read_gltf(source, file).problem, "");
        return file.scene.materials;
    }
    Points picture(const std::optional<TextureUse>& use) const {
        for (const ImportedPicture& one : file.pictures) {
            if (use && one.name == use->name) return points_of(one.bytes);
        }
        return {};
    }

    std::map<std::string, std::string> pictures;
    Report report;
    nlohmann::json json;
    ImportedFile file;
};

TEST_F(Materials, pictures_of_clearness_become_the_alpha_that_they_mean) {
    pictures = {{"skin", grey("\x50\x60")}, {"mask", grey(std::string("\xFF\0", 2))}};
    pictures["leaf"] = grey_with_alpha({{0, 255}, {0, 0}});
    MaterialValues opacity, transparency, by_alpha, alone;
    opacity.colour = transparency.colour = by_alpha.colour = use_of("skin");
    opacity.opacity_map = transparency.transparency = alone.opacity_map = use_of("mask");
    by_alpha.opacity_map = use_of("leaf");
    alone.base_colour = {0.5, 0.25, 1};
    const auto back = through_glb({opacity, transparency, by_alpha, alone});
    const Points first_opaque{0x50, 0x50, 0x50, 255, 0x60, 0x60, 0x60, 0};
    EXPECT_EQ(picture(back[0].colour), first_opaque);
    EXPECT_EQ(picture(back[1].colour), (Points{0x50, 0x50, 0x50, 0, 0x60, 0x60, 0x60, 255}));
    EXPECT_EQ(picture(back[2].colour), first_opaque);
    EXPECT_EQ(picture(back[3].colour), (Points{255, 255, 255, 255, 255, 255, 255, 0}));
    EXPECT_EQ(back[3].base_colour, alone.base_colour);
    for (const MaterialValues& one : back) EXPECT_EQ(one.alpha_mode, AlphaMode::mask);
}

TEST_F(Materials, metal_and_roughness_share_a_picture) {
    pictures = {{"rough", grey("\x10\x20")}, {"metal", grey("\x30")}, {"both", grey("\x70")}};
    MaterialValues two, one, rough, lost;
    two.roughness_map = rough.roughness_map = use_of("rough");
    two.metallic_map = use_of("metal");
    one.roughness_map = one.metallic_map = use_of("both");
    lost.metallic_map = use_of("lost");
    two.metallic = lost.metallic = 1;
    rough.metallic = 0.5;
    const auto back = through_glb({two, one, rough, lost}, true);
    EXPECT_EQ(picture(back[0].metallic_roughness), (Points{255, 0x10, 0x30, 255, 255, 0x20, 0x30, 255}));
    EXPECT_EQ(back[0].metallic, 1);
    EXPECT_EQ(picture(back[1].metallic_roughness), (Points{0x70, 0x70, 0x70, 255}));
    EXPECT_EQ(picture(back[2].metallic_roughness), (Points{255, 0x10, 255, 255, 255, 0x20, 255, 255}));
    EXPECT_EQ(back[2].metallic, 0.5);
    EXPECT_EQ(back[3].metallic, 0); // not all metal, when the picture isn't there
    ASSERT_EQ(report.notes.size(), 1U);
    EXPECT_NE(report.notes[0].find("lost"), std::string::npos);
}

TEST_F(Materials, pictures_lie_where_the_host_lays_them) {
    pictures = {{"skin", grey("\x50")}, {"rough", grey("\x60")}, {"metal", grey("\x70")}};
    MaterialValues laid, plain;
    laid.colour = plain.colour = use_of("skin");
    laid.colour->uv_set = 1;
    laid.colour->placement = {{0.25, -0.5}, {3, 2}, 0.4, TextureWrap::edge, TextureWrap::mirrored};
    laid.roughness_map = use_of("rough");
    laid.roughness_map->placement.repeat = {4, 4};
    laid.metallic_map = use_of("metal");
    const auto back = through_glb({laid, plain});
    EXPECT_EQ(json["images"].size(), 2U); // one skin for both materials
    const auto& info = json["materials"][0]["pbrMetallicRoughness"]["baseColorTexture"];
    const auto& transform = info["extensions"]["KHR_texture_transform"];
    const double turn = transform["rotation"];
    for (const auto& [u, v] : {std::pair(0.0, 0.0), {1.0, 0.0}, {0.3, 0.8}}) {
        const double su = u * 3 + 0.25 - 0.5, sv = v * 2 - 0.5 - 0.5;
        const double host_u = std::cos(0.4) * su - std::sin(0.4) * sv + 0.5;
        const double host_v = std::sin(0.4) * su + std::cos(0.4) * sv + 0.5;
        const double gu = u * transform["scale"][0].get<double>(), gv = (1 - v) * transform["scale"][1].get<double>();
        EXPECT_NEAR(std::cos(turn) * gu + std::sin(turn) * gv + transform["offset"][0].get<double>(), host_u, 1e-6);
        EXPECT_NEAR(std::cos(turn) * gv - std::sin(turn) * gu + transform["offset"][1].get<double>(), 1 - host_v, 1e-6);
    }
    EXPECT_FALSE(json["materials"][1]["pbrMetallicRoughness"]["baseColorTexture"].contains("extensions"));
    const TexturePlacement& placed = back[0].colour->placement;
    EXPECT_EQ(back[0].colour->uv_set, 1U);
    for (std::size_t i = 0; i < 2; ++i) {
        EXPECT_NEAR(placed.offset[i], laid.colour->placement.offset[i], 1e-6);
        EXPECT_EQ(placed.repeat[i], laid.colour->placement.repeat[i]);
    }
    EXPECT_NEAR(placed.rotation, 0.4, 1e-6);
    EXPECT_EQ(placed.wrap_u, TextureWrap::edge);
    EXPECT_EQ(placed.wrap_v, TextureWrap::mirrored);
    EXPECT_EQ(back[1].colour->placement, TexturePlacement());
    ASSERT_EQ(report.notes.size(), 1U);
    EXPECT_NE(report.notes[0].find("metal lies where rough does"), std::string::npos) << report.notes[0];
}

} // namespace
} // namespace convert_test
