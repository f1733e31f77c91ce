#include "convert/gltf/materials.h"

#include "convert/gltf/extras.h"
#include "convert/material_values.h"
#include "convert/picture.h"
#include "convert/properties.h"

namespace vor2::convert {
namespace {

using namespace VOR2_LOADER;

int add_texture(GltfWork& work, const std::string& name, std::span<const std::uint8_t> bytes, std::string_view type) {
    tinygltf::Image image;
    image.name = name;
    image.mimeType = type;
    image.bufferView = work.buffers.bytes(bytes);
    work.model.images.push_back(std::move(image));
    if (work.model.samplers.empty()) work.model.samplers.emplace_back();
    tinygltf::Texture texture;
    texture.source = static_cast<int>(work.model.images.size() - 1);
    texture.sampler = 0;
    work.model.textures.push_back(std::move(texture));
    return static_cast<int>(work.model.textures.size() - 1);
}

/// The texture of a picture; -1 where it isn't there.
int texture_of(GltfWork& work, const std::string& name) {
    const auto [known, is_new] = work.textures.try_emplace(name, -1);
    if (!is_new) return known->second;
    std::optional<std::vector<std::uint8_t>> bytes = work.options.texture ? work.options.texture(name) : std::nullopt;
    if (bytes && picture_type(*bytes).empty()) {
        if (std::optional<std::vector<std::uint8_t>> png = as_png(*bytes)) bytes = std::move(png);
    }
    const std::string_view type = bytes ? picture_type(*bytes) : std::string_view();
    if (type.empty()) {
        const std::string why =
            bytes ? "the texture " + name + " is of a kind that can't be read" : "there is no texture " + name;
        if (work.options.leave_out_textures) {
            work.report.note(why + ", and it is left out");
        } else if (work.report.good()) {
            work.report.lacks_texture = true;
            work.report.fail(why);
        }
        return -1;
    }
    return known->second = add_texture(work, name, *bytes, type);
}

/// The colour picture with a transparency picture of its own worked in; its place among the textures.
int combined_texture(GltfWork& work, const TextureUse& colour, const TextureUse& transparency) {
    const std::string name = colour.name + " with " + transparency.name;
    const auto known = work.textures.find(name);
    if (known != work.textures.end()) return known->second;
    const auto read = [&work](const std::string& picture) {
        return work.options.texture ? work.options.texture(picture) : std::nullopt;
    };
    const auto colours = read(colour.name), clear = read(transparency.name);
    if (!clear) (void)texture_of(work, transparency.name); // which tells that it isn't there
    if (!colours || !clear) return -1;
    const auto png = with_transparency(*colours, *clear);
    if (!png) return -1;
    return work.textures[name] = add_texture(work, name, *png, "image/png");
}

template<class INFO>
bool set_texture(GltfWork& work, INFO& info, const std::optional<TextureUse>& use) {
    if (!use) return false;
    info.index = texture_of(work, use->name);
    info.texCoord = static_cast<int>(std::min<std::size_t>(use->uv_set, 7));
    return info.index >= 0;
}

/// A surface is cut out where its picture has only clear and opaque points, and blended where it has others.
AlphaMode mode_of(GltfWork& work, const MaterialValues& values) {
    if (values.alpha_mode) return *values.alpha_mode;
    if (values.opacity < 1) return AlphaMode::blend;
    if (!values.colour || !work.options.texture) return AlphaMode::opaque;
    // A picture's alpha counts only where the scene says that it makes the surface transparent.
    if (!values.transparency) return AlphaMode::opaque;
    if (values.transparency->name != values.colour->name) return AlphaMode::blend;
    const auto bytes = work.options.texture(values.colour->name);
    switch (bytes ? alpha_of(*bytes) : PictureAlpha::none) {
    case PictureAlpha::none:
        return AlphaMode::opaque;
    case PictureAlpha::cut_out:
        return AlphaMode::mask;
    case PictureAlpha::smooth:
        break;
    }
    return AlphaMode::blend;
}

tinygltf::Material written(GltfWork& work, const VOR2_MATERIAL& material) {
    const MaterialValues values = material_values(material);
    tinygltf::Material out;
    out.name = values.name;
    out.doubleSided = values.double_sided;
    out.pbrMetallicRoughness.baseColorFactor = {values.base_colour[0], values.base_colour[1], values.base_colour[2],
                                                values.opacity};
    out.pbrMetallicRoughness.metallicFactor = values.metallic;
    out.pbrMetallicRoughness.roughnessFactor = values.roughness;
    out.emissiveFactor = {values.emission[0], values.emission[1], values.emission[2]};
    set_texture(work, out.pbrMetallicRoughness.baseColorTexture, values.colour);
    set_texture(work, out.pbrMetallicRoughness.metallicRoughnessTexture, values.metallic_roughness);
    set_texture(work, out.emissiveTexture, values.emission_map);
    if (set_texture(work, out.normalTexture, values.normal)) out.normalTexture.scale = values.normal->strength;
    if (set_texture(work, out.occlusionTexture, values.occlusion))
        out.occlusionTexture.strength = std::clamp(values.occlusion->strength, 0.0, 1.0);
    if (values.colour && values.transparency && values.transparency->name != values.colour->name) {
        const int combined = combined_texture(work, *values.colour, *values.transparency);
        if (combined >= 0) out.pbrMetallicRoughness.baseColorTexture.index = combined;
    } else if (values.transparency && !values.colour) {
        work.report.note("material " + values.name + ": a transparency without a colour picture has no place in glTF");
    }
    const AlphaMode mode = mode_of(work, values);
    if (mode != AlphaMode::opaque) out.alphaMode = mode == AlphaMode::mask ? "MASK" : "BLEND";
    out.alphaCutoff = mode == AlphaMode::mask ? values.alpha_cutoff : 0.5;
    for (const std::string& name : values.unused_maps)
        work.report.note("material " + values.name + ": glTF has no place for its map " + name);
    if (material.material_text.length() > 0) put(out.extras, "text", value_of(material.material_text));
    if (material.kind() == VOR2_SHADER_MATERIAL::KIND)
        put(out.extras, "shader", value_of(static_cast<const VOR2_SHADER_MATERIAL&>(material).shader_name));
    put_properties(out.extras, material.extended_properties);
    return out;
}

} // namespace

std::vector<int> write_materials(GltfWork& work, const VOR2& scene) {
    std::vector<int> places;
    for (const OWNED<VOR2_MATERIAL>& material : scene.materials) {
        places.push_back(material ? static_cast<int>(work.model.materials.size()) : -1);
        if (material) work.model.materials.push_back(written(work, *material));
    }
    return places;
}

} // namespace vor2::convert
