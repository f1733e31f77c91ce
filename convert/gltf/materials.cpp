#include "convert/gltf/materials.h"

#include "convert/gltf/extras.h"
#include "convert/material_values.h"
#include "convert/picture.h"
#include "convert/properties.h"

#include <algorithm>
#include <cmath>

namespace vor2::convert {
namespace {

using namespace VOR2_LOADER;

/// The file's sampler that goes on beyond the picture like that.
int sampler_of(GltfWork& work, const TexturePlacement& placement) {
    const auto mode = [](TextureWrap wrap) {
        return wrap == TextureWrap::edge       ? TINYGLTF_TEXTURE_WRAP_CLAMP_TO_EDGE
               : wrap == TextureWrap::mirrored ? TINYGLTF_TEXTURE_WRAP_MIRRORED_REPEAT
                                               : TINYGLTF_TEXTURE_WRAP_REPEAT;
    };
    tinygltf::Sampler wanted;
    wanted.wrapS = mode(placement.wrap_u);
    wanted.wrapT = mode(placement.wrap_v);
    std::vector<tinygltf::Sampler>& samplers = work.model.samplers;
    auto found = std::ranges::find(samplers, wanted);
    if (found == samplers.end()) found = samplers.insert(found, wanted);
    return static_cast<int>(found - samplers.begin());
}

int texture_of_image(GltfWork& work, int image, const TexturePlacement& placement) {
    tinygltf::Texture wanted;
    wanted.source = image;
    wanted.sampler = sampler_of(work, placement);
    std::vector<tinygltf::Texture>& textures = work.model.textures;
    auto found = std::ranges::find(textures, wanted);
    if (found == textures.end()) found = textures.insert(found, wanted);
    return static_cast<int>(found - textures.begin());
}

int add_image(GltfWork& work, const std::string& name, std::span<const std::uint8_t> bytes, std::string_view type) {
    tinygltf::Image image;
    image.name = name;
    image.mimeType = type;
    image.bufferView = work.buffers.bytes(bytes);
    work.model.images.push_back(std::move(image));
    return static_cast<int>(work.model.images.size() - 1);
}

using Bytes = std::vector<std::uint8_t>;

std::optional<Bytes> picture_named(const GltfWork& work, const std::string& name) {
    return work.options.texture ? work.options.texture(name) : std::nullopt;
}

/// The file's image of a picture; -1 where it isn't there, which is told.
int image_of(GltfWork& work, const std::string& name) {
    const auto [known, is_new] = work.images.try_emplace(name);
    if (!is_new) return known->second.index;
    std::optional<Bytes> bytes = picture_named(work, name);
    if (bytes && picture_type(*bytes).empty()) {
        if (std::optional<Bytes> png = as_png(*bytes)) bytes = std::move(png);
    }
    const std::string_view type = bytes ? picture_type(*bytes) : std::string_view();
    if (!type.empty()) return known->second.index = add_image(work, name, *bytes, type);
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

/// An image made of two pictures, of which one may be none (an empty name), and called by both and what the second one
/// tells; an index of -1 where one of them isn't there or can't be decoded, which is told.
template<class MAKE>
GltfImage made_of(GltfWork& work, const std::string& first, const std::string& told, const std::string& second,
                  MAKE make) {
    std::string name = first;
    for (const std::string& word : {std::string("with"), told, second}) {
        if (!name.empty() && !word.empty()) name += ' ';
        name += word;
    }
    const auto [known, is_new] = work.images.try_emplace("made of " + name);
    if (!is_new) return known->second;
    Bytes pictures[2];
    for (std::size_t i = 0; i < 2; ++i) {
        const std::string& one = i == 0 ? first : second;
        if (one.empty()) continue;
        if (std::optional<Bytes> bytes = picture_named(work, one)) {
            pictures[i] = std::move(*bytes);
        } else {
            (void)image_of(work, one);
            return known->second;
        }
    }
    const std::optional<Bytes> png = make(pictures[0], pictures[1]);
    if (png) {
        known->second = {add_image(work, name, *png, "image/png"), alpha_of(*png)};
    } else if (work.options.leave_out_textures) {
        work.report.note("the textures of " + name + " can't be put together, and are left out");
    } else if (work.report.good()) {
        work.report.lacks_texture = true;
        work.report.fail("the textures of " + name + " can't be put together: one is of a kind that can't be read");
    }
    return known->second;
}

/// Where a picture lies, with V downward as glTF has it, and turned about the origin. Programs turn it as the word
/// "counterclockwise" of KHR_texture_transform says, which is not what that text's sample code does.
tinygltf::Value transform_of(const TexturePlacement& placement) {
    const auto& [offset, repeat, rotation, wrap_u, wrap_v] = placement;
    // Where the host has the point that is glTF's origin.
    const double u = offset[0] - 0.5, v = repeat[1] + offset[1] - 0.5;
    const double sine = std::sin(rotation), cosine = std::cos(rotation);
    const auto pair = [](double first, double second) {
        return tinygltf::Value(tinygltf::Value::Array{tinygltf::Value(first), tinygltf::Value(second)});
    };
    tinygltf::Value::Object out;
    out["offset"] = pair(cosine * u - sine * v + 0.5, 0.5 - sine * u - cosine * v);
    out["scale"] = pair(repeat[0], repeat[1]);
    if (rotation != 0) out["rotation"] = tinygltf::Value(rotation);
    return tinygltf::Value(std::move(out));
}

template<class INFO>
void place(GltfWork& work, INFO& info, int image, const TextureUse& use) {
    if (image < 0) return;
    info.index = texture_of_image(work, image, use.placement);
    info.texCoord = static_cast<int>(std::min<std::size_t>(use.uv_set, 7));
    TexturePlacement plain;
    plain.wrap_u = use.placement.wrap_u;
    plain.wrap_v = use.placement.wrap_v;
    if (use.placement == plain) return;
    constexpr const char* extension = "KHR_texture_transform";
    info.extensions[extension] = transform_of(use.placement);
    std::vector<std::string>& used = work.model.extensionsUsed;
    if (std::ranges::find(used, extension) == used.end()) used.emplace_back(extension);
}

template<class INFO>
bool set_texture(GltfWork& work, INFO& info, const std::optional<TextureUse>& use) {
    if (use) place(work, info, image_of(work, use->name), *use);
    return info.index >= 0;
}

/// Two pictures become one, and so lie in one place.
void tell_apart(GltfWork& work, const MaterialValues& values, const TextureUse& kept, const TextureUse& other) {
    if (kept.placement == other.placement && kept.uv_set == other.uv_set) return;
    work.report.note("material " + values.name + ": glTF has one place for two maps, so " + other.name +
                     " lies where " + kept.name + " does");
}

/// The base colour with what makes it clear, and whether the picture has clear points.
PictureAlpha write_colour(GltfWork& work, const MaterialValues& values, tinygltf::TextureInfo& info) {
    const bool tells_transparency = values.transparency.has_value();
    const std::optional<TextureUse>& clear = tells_transparency ? values.transparency : values.opacity_map;
    if (tells_transparency && values.opacity_map)
        work.report.note("material " + values.name + ": its map of transparency hides that of opacity, " +
                         values.opacity_map->name);
    if (!clear) {
        set_texture(work, info, values.colour);
        return PictureAlpha::none; // A picture's alpha counts only where the scene says that it makes surfaces clear.
    }
    if (values.colour && values.colour->name == clear->name) {
        if (!set_texture(work, info, values.colour)) return PictureAlpha::none;
        const std::optional<Bytes> bytes = picture_named(work, clear->name);
        return bytes ? alpha_of(*bytes) : PictureAlpha::none;
    }
    const TextureUse& kept = values.colour ? *values.colour : *clear;
    tell_apart(work, values, kept, *clear);
    const GltfImage image = made_of(
        work, values.colour ? values.colour->name : "", tells_transparency ? "transparency" : "opacity", clear->name,
        [&](const Bytes& colours, const Bytes& opacity) { return with_opacity(colours, opacity, tells_transparency); });
    if (image.index < 0) {
        set_texture(work, info, values.colour);
        return PictureAlpha::none;
    }
    place(work, info, image.index, kept);
    return image.alpha;
}

void write_metallic_roughness(GltfWork& work, const MaterialValues& values, tinygltf::TextureInfo& info) {
    const std::optional<TextureUse>&metal = values.metallic_map, &rough = values.roughness_map;
    if (values.metallic_roughness || (metal && rough && metal->name == rough->name)) {
        // One picture for both has them in their channels, or is grey.
        set_texture(work, info, values.metallic_roughness ? values.metallic_roughness : rough);
    } else if (metal || rough) {
        const TextureUse& kept = rough ? *rough : *metal;
        if (metal) tell_apart(work, values, kept, *metal);
        const GltfImage image =
            made_of(work, metal ? metal->name : "", "roughness", rough ? rough->name : "", metallic_roughness);
        place(work, info, image.index, kept);
    }
}

AlphaMode mode_of(const MaterialValues& values, PictureAlpha picture) {
    if (values.alpha_mode) return *values.alpha_mode;
    if (values.opacity < 1 || picture == PictureAlpha::smooth) return AlphaMode::blend;
    return picture == PictureAlpha::cut_out ? AlphaMode::mask : AlphaMode::opaque;
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
    const PictureAlpha alpha = write_colour(work, values, out.pbrMetallicRoughness.baseColorTexture);
    write_metallic_roughness(work, values, out.pbrMetallicRoughness.metallicRoughnessTexture);
    // Left out, the picture leaves a surface that isn't metal anywhere, not one that is all over.
    if (values.metallic_map && out.pbrMetallicRoughness.metallicRoughnessTexture.index < 0)
        out.pbrMetallicRoughness.metallicFactor = 0;
    set_texture(work, out.emissiveTexture, values.emission_map);
    if (set_texture(work, out.normalTexture, values.normal)) out.normalTexture.scale = values.normal->strength;
    if (set_texture(work, out.occlusionTexture, values.occlusion))
        out.occlusionTexture.strength = std::clamp(values.occlusion->strength, 0.0, 1.0);
    const AlphaMode mode = mode_of(values, alpha);
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
