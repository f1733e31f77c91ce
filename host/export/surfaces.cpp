#include "host/export/surfaces.h"

#include "format/tracks/constant_track.h"
#include "host/export/deformers.h"
#include "host/export/host_text.h"
#include "host/export/mesh_translation.h"
#include "host/export/properties.h"

#include <maya/MFnDependencyNode.h>
#include <maya/MGlobal.h>
#include <maya/MPlugArray.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <string_view>

namespace VOR2_EXPORTER_MAYA {
namespace {

using RGB = std::array<double, 3>;

std::optional<double> number(const MObject& node, const char* name) {
    const MPlug plug = find_plug(node, name);
    return plug.isNull() ? std::nullopt : std::optional(plug.asDouble());
}

std::optional<RGB> colour(const MObject& node, const char* name) {
    const MPlug plug = find_plug(node, name);
    if (plug.isNull() || plug.numChildren() != 3) return {};
    return RGB{plug.child(0).asDouble(), plug.child(1).asDouble(), plug.child(2).asDouble()};
}

OWNED<VOR2_ANIMATABLE_COLOUR> colour_track(const RGB& c) {
    return constant_track<VOR2_ANIMATABLE_COLOUR_LINEAR>(
        VOR2_COLOUR(static_cast<f32>(c[0]), static_cast<f32>(c[1]), static_cast<f32>(c[2]), 1.0F));
}

OWNED<VOR2_ANIMATABLE_FLOAT32> float_track(double value) {
    return constant_track<VOR2_ANIMATABLE_FLOAT32_LINEAR>(static_cast<f32>(value));
}

OWNED<VOR2_ANIMATABLE_VECTOR_2> pair_track(const MObject& node, const char* u, const char* v) {
    return constant_track<VOR2_ANIMATABLE_VECTOR_2_LINEAR>(
        VECTOR_2(static_cast<f32>(number(node, u).value_or(0)), static_cast<f32>(number(node, v).value_or(0))));
}

/// What feeds a plug, or the first of its parts that is fed.
MPlug first_source_of(const MPlug& plug) {
    MPlug source = source_of(plug);
    for (unsigned int i = 0; source.isNull() && !plug.isNull() && i < plug.numChildren(); ++i)
        source = source_of(plug.child(i));
    return source;
}

MObject texture_at(const MPlug& plug) {
    const MPlug source = first_source_of(plug);
    return source.isNull() ? MObject() : source.node();
}

/// Warns of what a bitmap's placement has no field for.
void tell_of_frame(const MObject& file) {
    for (const auto& [name, usual] : {std::pair("coverageU", 1.0),
                                      {"coverageV", 1.0},
                                      {"translateFrameU", 0.0},
                                      {"translateFrameV", 0.0},
                                      {"rotateFrame", 0.0},
                                      {"stagger", 0.0},
                                      {"noiseU", 0.0},
                                      {"noiseV", 0.0}}) {
        if (number(file, name).value_or(usual) == usual) continue;
        MGlobal::displayWarning(MString("A picture goes along with its repeat, offset, rotation and wrapping, but not "
                                        "with ") +
                                find_plug(file, name).name());
    }
}

OWNED<VOR2_BITMAP_MATERIAL_MAP> bitmap_of(const MObject& file, const char* use) {
    tell_of_frame(file);
    auto map = make_owned<VOR2_BITMAP_MATERIAL_MAP>();
    map->name = name_for_file(MFnDependencyNode(file).name());
    map->map_text = to_text(use);
    map->map_value = float_track(1.0);
    map->bitmap_params.bitmap_name = to_text(find_plug(file, "fileTextureName").asString());
    const auto wraps = [&](const char* wrap, const char* mirror) -> u32 {
        if (number(file, mirror).value_or(0) != 0.0) return 2;
        return number(file, wrap).value_or(1) != 0.0 ? 1 : 0;
    };
    map->coordinates.wrap_mode.u_mode = wraps("wrapU", "mirrorU");
    map->coordinates.wrap_mode.v_mode = wraps("wrapV", "mirrorV");
    map->coordinates.uv_track_0 = pair_track(file, "offsetU", "offsetV");
    map->coordinates.uv_track_1 = pair_track(file, "repeatU", "repeatV");
    map->coordinates.uvw_track = constant_track<VOR2_ANIMATABLE_VECTOR_3_LINEAR>(
        VECTOR_3(0.0F, 0.0F, static_cast<f32>(number(file, "rotateUV").value_or(0))));
    return map;
}

/// One shader on its way to a material.
class SURFACE {
public:
    SURFACE(const MObject& shader, VOR2_STANDARD_MATERIAL& material) : my_shader(shader), my_material(material) {}

    void run() {
        const MFnDependencyNode functions(my_shader);
        const std::string type = functions.typeName().asChar();
        my_material.name = name_for_file(functions.name());
        add_text(my_material.extended_properties, "shader", type.c_str());
        if (my_shader.hasFn(MFn::kLambert)) {
            lambert(type);
        } else if (type == "aiStandardSurface" || type == "standardSurface") {
            standard();
        } else {
            other(functions.name());
        }
    }

private:
    /// A colour and the picture on it, which takes the place of the colour.
    RGB painted(const char* name, const char* use, RGB usual) {
        const bool has_picture = add_map(name, use);
        return has_picture ? RGB{1, 1, 1} : colour(my_shader, name).value_or(usual);
    }

    bool add_map(const char* name, const char* use) {
        const MPlug plug = find_plug(my_shader, name);
        const MObject source = texture_at(plug);
        if (source.isNull()) return false;
        if (source.hasFn(MFn::kFileTexture)) {
            my_material.maps.push_back(bitmap_of(source, use));
            return true;
        }
        MGlobal::displayWarning(MString("Only file textures go along, not what feeds ") + plug.name() + ": " +
                                MFnDependencyNode(source).name());
        return false;
    }

    /// A picture of how clear the surface is: of its opacity where the plug is called so, or where the picture's
    /// inverse feeds one of transparency.
    bool add_clearness_map(const char* name) {
        const bool asks_for_opacity = std::string_view(name) == "opacity";
        MPlug source = first_source_of(find_plug(my_shader, name));
        if (!source.isNull() && source.isChild()) source = source.parent();
        const bool is_inverse = !source.isNull() && source.partialName(false, false, false, false, false, true) ==
                                                        MString("outTransparency");
        return add_map(name, asks_for_opacity != is_inverse ? "opacity" : "transparency");
    }

    /// What turns the surface's normals: a picture of heights or of normals.
    void bump() {
        const MPlug plug = find_plug(my_shader, "normalCamera");
        const MObject node = texture_at(plug);
        if (node.isNull()) return;
        const MObject file = node.hasFn(MFn::kFileTexture) ? node : texture_at(find_plug(node, "bumpValue"));
        if (file.isNull() || !file.hasFn(MFn::kFileTexture)) return;
        const bool is_height = !find_plug(node, "bumpInterp").isNull() && number(node, "bumpInterp").value_or(0) == 0.0;
        if (is_height) {
            my_material.maps.push_back(bitmap_of(file, "bump"));
            return;
        }
        auto normal = make_owned<VOR2_NORMAL_MATERIAL_MAP>();
        normal->name = name_for_file(MFnDependencyNode(node).name());
        normal->map_text = TEXT(u"normal");
        normal->map_value = float_track(number(node, "bumpDepth").value_or(1.0));
        normal->first_map = bitmap_of(file, "normal");
        my_material.maps.push_back(std::move(normal));
    }

    void keep_number(const char* name) {
        if (const auto value = number(my_shader, name)) add_number(my_material.extended_properties, name, *value);
    }
    void keep_colour(const char* name) {
        const auto c = colour(my_shader, name);
        if (!c) return;
        add_vector(my_material.extended_properties, name,
                   VECTOR_3(static_cast<f32>((*c)[0]), static_cast<f32>((*c)[1]), static_cast<f32>((*c)[2])));
    }

    void transparency(double value) { my_material.transparency = float_track(std::clamp(value, 0.0, 1.0)); }
    static double mean(const RGB& c) { return (c[0] + c[1] + c[2]) / 3.0; }

    void lambert(const std::string& type) {
        my_material.ambient_colour = colour_track(colour(my_shader, "ambientColor").value_or(RGB{}));
        my_material.colour_track_1 = colour_track(painted("color", "colour", {0.5, 0.5, 0.5}));
        my_material.colour_track_3 = colour_track(painted("incandescence", "emission", {}));
        my_material.float_track_3 = float_track(1.0);
        const bool cut_out = add_clearness_map("transparency");
        transparency(cut_out ? 0.0 : mean(colour(my_shader, "transparency").value_or(RGB{})));
        if (type == "blinn" || type == "phong") {
            my_material.colour_track_2 = colour_track(painted("specularColor", "specular", {0.5, 0.5, 0.5}));
            const bool is_blinn = type == "blinn";
            my_material.float_track_1 = float_track(is_blinn ? 1.0 - number(my_shader, "eccentricity").value_or(0.3)
                                                             : number(my_shader, "cosinePower").value_or(20.0));
            my_material.float_track_2 =
                float_track(is_blinn ? number(my_shader, "specularRollOff").value_or(0.7) : 1.0);
        }
        bump();
        for (const char* name : {"diffuse", "translucence", "translucenceDepth", "translucenceFocus", "glowIntensity",
                                 "reflectivity", "refractiveIndex"})
            keep_number(name);
        keep_colour("reflectedColor");
    }

    void standard() {
        my_material.ambient_colour = colour_track({});
        RGB base = painted("baseColor", "colour", {0.8, 0.8, 0.8});
        for (double& channel : base) channel *= number(my_shader, "base").value_or(1.0);
        my_material.colour_track_1 = colour_track(base);
        my_material.colour_track_2 = colour_track(painted("specularColor", "specular", {1, 1, 1}));
        my_material.colour_track_3 = colour_track(painted("emissionColor", "emission", {1, 1, 1}));
        const bool is_rough_by_picture = add_map("specularRoughness", "roughness");
        const double roughness = is_rough_by_picture ? 1.0 : number(my_shader, "specularRoughness").value_or(0.2);
        my_material.float_track_1 = float_track(1.0 - roughness);
        my_material.float_track_2 = float_track(number(my_shader, "specular").value_or(1.0));
        my_material.float_track_3 = float_track(number(my_shader, "emission").value_or(0.0));
        const bool cut_out = add_clearness_map("opacity");
        transparency(cut_out ? 0.0 : 1.0 - mean(colour(my_shader, "opacity").value_or(RGB{1, 1, 1})));
        bump();
        const bool is_metal_by_picture = add_map("metalness", "metallic");
        add_number(my_material.extended_properties, "metallic",
                   is_metal_by_picture ? 1.0 : number(my_shader, "metalness").value_or(0.0));
        add_number(my_material.extended_properties, "roughness", roughness);
        for (const char* name :
             {"base", "diffuseRoughness", "specularIOR", "specularAnisotropy", "transmission", "subsurface", "coat",
              "coatRoughness", "coatIOR", "sheen", "sheenRoughness", "thinFilmThickness", "thinFilmIOR"})
            keep_number(name);
        for (const char* name : {"transmissionColor", "subsurfaceColor", "subsurfaceRadius", "coatColor", "sheenColor"})
            keep_colour(name);
    }

    void other(const MString& name) {
        MGlobal::displayWarning(MString("This shader's values have no place in a material, which has its name and its "
                                        "textures: ") +
                                name);
        for (const auto& [plug, use] :
             {std::pair("color", "colour"), {"baseColor", "colour"}, {"outColor", "colour"}}) {
            if (add_map(plug, use)) break;
        }
    }

    const MObject& my_shader;
    VOR2_STANDARD_MATERIAL& my_material;
};

} // namespace

u32 SURFACES::place_of(const MObject& group) {
    MPlug source = source_of(find_plug(group, "aiSurfaceShader"));
    if (source.isNull()) source = source_of(find_plug(group, "surfaceShader"));
    if (source.isNull()) return NO_MATERIAL;
    const MObject shader = source.node();
    const auto [entry, is_new] =
        my_places.try_emplace(MFnDependencyNode(shader).name().asChar(), static_cast<u32>(my_root.materials.size()));
    if (is_new) {
        auto material = make_owned<VOR2_STANDARD_MATERIAL>();
        SURFACE(shader, *material).run();
        my_root.materials.push_back(std::move(material));
    }
    return entry->second;
}

} // namespace VOR2_EXPORTER_MAYA
