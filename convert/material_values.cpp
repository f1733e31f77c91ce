#include "convert/material_values.h"

#include "convert/properties.h"
#include "format/tracks/constant_track.h"

#include <algorithm>
#include <cmath>

namespace vor2::convert {
namespace {

using namespace VOR2_LOADER;

double clamped(double value) {
    return std::isfinite(value) ? std::clamp(value, 0.0, 1.0) : 0.0;
}

std::optional<std::array<double, 3>> colour_of(const OWNED<VOR2_ANIMATABLE_COLOUR>& track) {
    if (!track) return {};
    VOR2_COLOUR colour;
    track->value(colour);
    return std::array{clamped(colour.red), clamped(colour.green), clamped(colour.blue)};
}

std::optional<double> number_of(const OWNED<VOR2_ANIMATABLE_FLOAT32>& track) {
    if (!track) return {};
    return track->value();
}

/// As rough as a highlight of that size (Blinn's exponent to the width of a microfacet distribution).
double roughness_of(double gloss) {
    if (!std::isfinite(gloss)) return 1;
    return gloss > 1 ? std::sqrt(2 / (gloss + 2)) : 1 - std::max(gloss, 0.0);
}

std::optional<AlphaMode> mode_named(const std::optional<std::string>& name) {
    if (name == "opaque") return AlphaMode::opaque;
    if (name == "mask") return AlphaMode::mask;
    if (name == "blend") return AlphaMode::blend;
    return {};
}

std::string_view name_of(AlphaMode mode) {
    return mode == AlphaMode::opaque ? "opaque" : mode == AlphaMode::mask ? "mask" : "blend";
}

/// The place among the values that a map's text names.
std::optional<TextureUse>* place_for(MaterialValues& values, std::string use, bool is_normal) {
    std::transform(use.begin(), use.end(), use.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    if (use == "normal" || (use.empty() && is_normal)) return &values.normal;
    if (use.empty() || use == "colour" || use == "color" || use == "diffuse") return &values.colour;
    if (use == "transparency") return &values.transparency;
    if (use == "opacity") return &values.opacity_map;
    if (use == "emission") return &values.emission_map;
    if (use == "metallic") return &values.metallic_map;
    if (use == "roughness") return &values.roughness_map;
    if (use == "metallic_roughness") return &values.metallic_roughness;
    if (use == "occlusion") return &values.occlusion;
    return nullptr;
}

/// The picture of a map: its own, or the first that a normal map wraps. A file may nest maps as deep as it likes.
const VOR2_BITMAP_MATERIAL_MAP* bitmap_of(const VOR2_MATERIAL_MAP* map) {
    while (map != nullptr && map->kind() == VOR2_NORMAL_MATERIAL_MAP::KIND) {
        const auto& normal = static_cast<const VOR2_NORMAL_MATERIAL_MAP&>(*map);
        map = normal.first_map ? normal.first_map.get() : normal.second_map.get();
    }
    return static_cast<const VOR2_BITMAP_MATERIAL_MAP*>(map);
}

TextureWrap wrap_of(u32 mode) {
    return mode == 0 ? TextureWrap::edge : mode == 2 ? TextureWrap::mirrored : TextureWrap::repeated;
}

u32 mode_of(TextureWrap wrap) {
    return wrap == TextureWrap::edge ? 0 : wrap == TextureWrap::mirrored ? 2 : 1;
}

std::array<double, 2> pair_of(const OWNED<VOR2_ANIMATABLE_VECTOR_2>& track, const std::array<double, 2>& nothing) {
    VECTOR_2 pair;
    if (track) track->value(pair);
    if (!track || !std::isfinite(pair.x) || !std::isfinite(pair.y)) return nothing;
    return {pair.x, pair.y};
}

TexturePlacement placement_of(const VOR2_BITMAP_MATERIAL_MAP_COORDINATES& coordinates) {
    TexturePlacement out;
    out.offset = pair_of(coordinates.uv_track_0, out.offset);
    out.repeat = pair_of(coordinates.uv_track_1, out.repeat);
    VECTOR_3 angles(0.0F, 0.0F, 0.0F);
    if (coordinates.uvw_track) coordinates.uvw_track->value(angles);
    if (std::isfinite(angles.z)) out.rotation = static_cast<double>(angles.z);
    out.wrap_u = wrap_of(coordinates.wrap_mode.u_mode);
    out.wrap_v = wrap_of(coordinates.wrap_mode.v_mode);
    return out;
}

void place(VOR2_BITMAP_MATERIAL_MAP_COORDINATES& coordinates, const TexturePlacement& placement) {
    const auto pair = [](const std::array<double, 2>& values) {
        return constant_track<VOR2_ANIMATABLE_VECTOR_2_LINEAR>(
            VECTOR_2(static_cast<f32>(values[0]), static_cast<f32>(values[1])));
    };
    coordinates.uv_track_0 = pair(placement.offset);
    coordinates.uv_track_1 = pair(placement.repeat);
    coordinates.uvw_track =
        constant_track<VOR2_ANIMATABLE_VECTOR_3_LINEAR>(VECTOR_3(0.0F, 0.0F, static_cast<f32>(placement.rotation)));
    coordinates.wrap_mode.u_mode = mode_of(placement.wrap_u);
    coordinates.wrap_mode.v_mode = mode_of(placement.wrap_v);
}

void read_maps(const VOR2_STANDARD_MATERIAL& material, MaterialValues& values) {
    for (const OWNED<VOR2_MATERIAL_MAP>& map : material.maps) {
        const VOR2_BITMAP_MATERIAL_MAP* bitmap = bitmap_of(map.get());
        if (bitmap == nullptr) continue;
        TextureUse use;
        use.name = utf8_of(bitmap->bitmap_params.bitmap_name);
        use.strength = number_of(map->map_value).value_or(1);
        use.uv_set = bitmap->coordinates.coordinate_word_1;
        use.placement = placement_of(bitmap->coordinates);
        std::optional<TextureUse>* place =
            place_for(values, utf8_of(map->map_text), map->kind() == VOR2_NORMAL_MATERIAL_MAP::KIND);
        if (place != nullptr && !*place) {
            *place = std::move(use);
        } else {
            values.unused_maps.push_back(std::move(use.name));
        }
    }
}

void read_standard(const VOR2_STANDARD_MATERIAL& material, MaterialValues& values) {
    const auto diffuse = colour_of(material.colour_track_1);
    const auto ambient = colour_of(material.ambient_colour);
    read_maps(material, values);
    if (values.colour) values.base_colour = {1, 1, 1};
    if (ambient && *ambient != std::array{0.0, 0.0, 0.0} && !values.colour) values.base_colour = *ambient;
    if (diffuse) values.base_colour = *diffuse;
    const bool says_opaque = !diffuse && !values.transparency && !values.opacity_map;
    if (!says_opaque) values.opacity = 1 - clamped(number_of(material.transparency).value_or(0));
    const double strength = number_of(material.float_track_3).value_or(1);
    if (const auto emission = colour_of(material.colour_track_3)) {
        for (std::size_t i = 0; i < 3; ++i) values.emission[i] = clamped((*emission)[i] * strength);
    }
    if (const auto gloss = number_of(material.float_track_1)) values.roughness = clamped(roughness_of(*gloss));
}

void add_map(VOR2_STANDARD_MATERIAL& material, std::string_view use, const std::optional<TextureUse>& texture) {
    if (!texture) return;
    auto bitmap = make_owned<VOR2_BITMAP_MATERIAL_MAP>();
    bitmap->bitmap_params.bitmap_name = text_of(texture->name);
    bitmap->coordinates.coordinate_word_1 = static_cast<u32>(texture->uv_set);
    place(bitmap->coordinates, texture->placement);
    if (use != "normal") {
        bitmap->name = text_of(use);
        bitmap->map_text = text_of(use);
        bitmap->map_value = constant(texture->strength);
        material.maps.push_back(std::move(bitmap));
        return;
    }
    auto normal = make_owned<VOR2_NORMAL_MATERIAL_MAP>();
    normal->name = text_of(use);
    normal->map_text = text_of(use);
    normal->map_value = constant(texture->strength);
    normal->first_map = std::move(bitmap);
    material.maps.push_back(std::move(normal));
}

} // namespace

MaterialValues material_values(const VOR2_MATERIAL& material) {
    MaterialValues values;
    values.name = utf8_of(material.name);
    if (material.kind() == VOR2_STANDARD_MATERIAL::KIND)
        read_standard(static_cast<const VOR2_STANDARD_MATERIAL&>(material), values);
    const VOR2_EXTENDED_PROPERTIES& more = material.extended_properties;
    values.metallic = clamped(float_property(more, "metallic").value_or(values.metallic));
    values.roughness = clamped(float_property(more, "roughness").value_or(values.roughness));
    values.alpha_mode = mode_named(string_property(more, "alpha_mode"));
    values.alpha_cutoff = clamped(float_property(more, "alpha_cutoff").value_or(values.alpha_cutoff));
    values.double_sided = int_property(more, "double_sided").value_or(1) != 0;
    return values;
}

OWNED<VOR2_MATERIAL> make_material(const MaterialValues& values) {
    auto material = make_owned<VOR2_STANDARD_MATERIAL>();
    material->name = text_of(values.name);
    material->ambient_colour = constant({0, 0, 0});
    material->colour_track_1 = constant(values.base_colour);
    material->colour_track_3 = constant(values.emission);
    material->transparency = constant(1 - values.opacity);
    material->float_track_1 = constant(1 - values.roughness);
    add_map(*material, "colour", values.colour);
    add_map(*material, "transparency", values.transparency);
    add_map(*material, "opacity", values.opacity_map);
    add_map(*material, "normal", values.normal);
    add_map(*material, "emission", values.emission_map);
    add_map(*material, "metallic_roughness", values.metallic_roughness);
    add_map(*material, "metallic", values.metallic_map);
    add_map(*material, "roughness", values.roughness_map);
    add_map(*material, "occlusion", values.occlusion);
    VOR2_EXTENDED_PROPERTIES& more = material->extended_properties;
    add_float(more, "metallic", values.metallic);
    add_float(more, "roughness", values.roughness);
    if (values.alpha_mode) add_string(more, "alpha_mode", name_of(*values.alpha_mode));
    if (values.alpha_mode == AlphaMode::mask) add_float(more, "alpha_cutoff", values.alpha_cutoff);
    add_int(more, "double_sided", values.double_sided ? 1 : 0);
    return material;
}

} // namespace vor2::convert
