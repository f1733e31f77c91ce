#include "convert/gltf/reading.h"

#include "convert/picture.h"

#include <algorithm>
#include <cctype>
#include <cmath>

namespace vor2::convert {
namespace {

/// "a%20b" as "a b".
std::string decoded(const std::string& uri) {
    std::string out;
    const auto digit = [](char c) { return c <= '9' ? c - '0' : (c | 0x20) - 'a' + 10; };
    for (std::size_t i = 0; i < uri.size(); ++i) {
        const bool escape = uri[i] == '%' && i + 2 < uri.size() &&
                            std::isxdigit(static_cast<unsigned char>(uri[i + 1])) != 0 &&
                            std::isxdigit(static_cast<unsigned char>(uri[i + 2])) != 0;
        out += escape ? static_cast<char>(digit(uri[i + 1]) * 16 + digit(uri[i + 2])) : uri[i];
        if (escape) i += 2;
    }
    return out;
}

/// The name of each picture. One that lies in the file gets a name that can be one of a file, and that no other has.
std::vector<std::string> read_pictures(GltfReading& reading, const std::string& file) {
    std::vector<std::string> names;
    for (std::size_t i = 0; i < reading.model.images.size(); ++i) {
        const tinygltf::Image& image = reading.model.images[i];
        if (image.image.empty()) {
            names.push_back(decoded(image.uri));
            continue;
        }
        const std::string_view type = picture_type(image.image);
        std::string name = image.name.substr(image.name.find_last_of("/\\") + 1);
        name.resize(std::min(name.find_last_of('.'), name.size()));
        for (char& c : name)
            c = std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '-' || c == '_' || c == ' ' ? c : '_';
        if (name.empty()) name = std::to_string(i);
        name.insert(0, file + "_");
        const std::string extension = type == "image/jpeg" ? ".jpg" : ".png";
        while (std::any_of(names.begin(), names.end(),
                           [&](const std::string& other) { return other == name + extension; }))
            name += "_" + std::to_string(i);
        names.push_back(name + extension);
        reading.out.pictures.push_back({names.back(), image.image});
    }
    return names;
}

TextureWrap wrap_of(int mode) {
    return mode == TINYGLTF_TEXTURE_WRAP_CLAMP_TO_EDGE     ? TextureWrap::edge
           : mode == TINYGLTF_TEXTURE_WRAP_MIRRORED_REPEAT ? TextureWrap::mirrored
                                                           : TextureWrap::repeated;
}

double number_in(const tinygltf::Value& object, const char* name, double nothing) {
    const tinygltf::Value& value = object.Get(name);
    return value.IsNumber() ? value.GetNumberAsDouble() : nothing;
}

std::array<double, 2> pair_in(const tinygltf::Value& object, const char* name, const std::array<double, 2>& nothing) {
    const tinygltf::Value& value = object.Get(name);
    if (!value.IsArray() || value.ArrayLen() != 2 || !value.Get(0).IsNumber() || !value.Get(1).IsNumber())
        return nothing;
    return {value.Get(0).GetNumberAsDouble(), value.Get(1).GetNumberAsDouble()};
}

/// What `transform_of` of the writer makes, back.
void read_transform(const tinygltf::Value& transform, TextureUse& use) {
    TexturePlacement& out = use.placement;
    const std::array<double, 2> offset = pair_in(transform, "offset", {0, 0});
    out.repeat = pair_in(transform, "scale", {1, 1});
    out.rotation = number_in(transform, "rotation", 0);
    const double u = offset[0] - 0.5, v = 0.5 - offset[1];
    const double sine = std::sin(out.rotation), cosine = std::cos(out.rotation);
    out.offset = {cosine * u + sine * v + 0.5, cosine * v - sine * u + 0.5 - out.repeat[1]};
    use.uv_set = static_cast<std::size_t>(
        std::clamp(number_in(transform, "texCoord", static_cast<double>(use.uv_set)), 0.0, 7.0));
}

class MaterialReader {
public:
    MaterialReader(GltfReading& reading, const std::vector<std::string>& pictures)
        : reading_(reading), pictures_(pictures) {}

    MaterialValues run(const tinygltf::Material& source) {
        MaterialValues out;
        const tinygltf::PbrMetallicRoughness& pbr = source.pbrMetallicRoughness;
        out.name = source.name;
        for (std::size_t i = 0; i < std::min<std::size_t>(pbr.baseColorFactor.size(), 3); ++i)
            out.base_colour[i] = pbr.baseColorFactor[i];
        if (pbr.baseColorFactor.size() == 4) out.opacity = pbr.baseColorFactor[3];
        for (std::size_t i = 0; i < std::min<std::size_t>(source.emissiveFactor.size(), 3); ++i)
            out.emission[i] = source.emissiveFactor[i];
        out.metallic = pbr.metallicFactor;
        out.roughness = pbr.roughnessFactor;
        out.alpha_mode = source.alphaMode == "MASK"    ? AlphaMode::mask
                         : source.alphaMode == "BLEND" ? AlphaMode::blend
                                                       : AlphaMode::opaque;
        out.alpha_cutoff = source.alphaCutoff;
        out.double_sided = source.doubleSided;
        out.colour = use_of(pbr.baseColorTexture, 1);
        out.metallic_roughness = use_of(pbr.metallicRoughnessTexture, 1);
        out.normal = use_of(source.normalTexture, source.normalTexture.scale);
        out.occlusion = use_of(source.occlusionTexture, source.occlusionTexture.strength);
        out.emission_map = use_of(source.emissiveTexture, 1);
        return out;
    }

private:
    std::optional<TextureUse> use_of(const auto& info, double strength) {
        if (info.index < 0) return {};
        const tinygltf::Texture& texture = element(reading_.model.textures, info.index, "texture");
        const int image = texture.source;
        if (image < 0) return {};
        TextureUse use;
        use.name = element(pictures_, image, "picture");
        use.strength = strength;
        use.uv_set = static_cast<std::size_t>(std::clamp(info.texCoord, 0, 7));
        if (texture.sampler >= 0) {
            const tinygltf::Sampler& sampler = element(reading_.model.samplers, texture.sampler, "sampler");
            use.placement.wrap_u = wrap_of(sampler.wrapS);
            use.placement.wrap_v = wrap_of(sampler.wrapT);
        }
        const auto transform = info.extensions.find("KHR_texture_transform");
        if (transform != info.extensions.end()) read_transform(transform->second, use);
        return use;
    }

    GltfReading& reading_;
    const std::vector<std::string>& pictures_;
};

} // namespace

void read_materials(GltfReading& reading) {
    const std::vector<std::string> pictures = read_pictures(reading, reading.out.scene.source);
    MaterialReader reader(reading, pictures);
    for (const tinygltf::Material& material : reading.model.materials)
        reading.out.scene.materials.push_back(reader.run(material));
}

} // namespace vor2::convert
