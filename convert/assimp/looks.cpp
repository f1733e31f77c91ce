#include "convert/assimp/reading.h"
#include "convert/assimp/values.h"

#include <assimp/camera.h>
#include <assimp/light.h>
#include <assimp/material.h>

#include <algorithm>

namespace vor2::convert {
namespace {

/// A node under another that looks along its negative z axis where the other looks along `direction`.
int looking_node(AssimpReading& reading, int place, const std::string& name, const Vec3& direction, const Vec3& up) {
    const double size = length(direction);
    const Vec3 back = size > 0 ? direction * (-1 / size) : Vec3{0, 0, 1};
    Vec3 right = cross(up, back);
    if (length(right) < 1e-6) right = cross(std::abs(back[1]) < 0.9 ? Vec3{0, 1, 0} : Vec3{1, 0, 0}, back);
    right = right * (1 / length(right));
    const Vec3 above = cross(back, right);
    Affine turn;
    for (std::size_t r = 0; r < 3; ++r) {
        turn.m[r][0] = right[r];
        turn.m[r][1] = above[r];
        turn.m[r][2] = back[r];
    }
    const Placement placement = turn.placement();
    if (angle_between(placement.rotation, {0, 0, 0, 1}) < 1e-4) return place;
    ImportedNode node;
    node.name = name + "_look";
    node.parent = place;
    node.placement = placement;
    reading.out.scene.nodes.push_back(std::move(node));
    return static_cast<int>(reading.out.scene.nodes.size() - 1);
}

void read_light(AssimpReading& reading, const aiLight& source) {
    const auto place = reading.places.find(text_of(source.mName));
    if (place == reading.places.end() || source.mType == aiLightSource_AMBIENT ||
        source.mType == aiLightSource_UNDEFINED)
        return reading.report.note("light " + text_of(source.mName) +
                                   " is of a kind that a scene doesn't have, and is left out");
    ImportedLight light;
    light.name = text_of(source.mName);
    light.kind = source.mType == aiLightSource_DIRECTIONAL ? ImportedLight::Kind::directional
                 : source.mType == aiLightSource_SPOT      ? ImportedLight::Kind::spot
                                                           : ImportedLight::Kind::point;
    // The intensity comes multiplied into the colour.
    const aiColor3D& colour = source.mColorDiffuse;
    light.intensity =
        std::max({static_cast<double>(colour.r), static_cast<double>(colour.g), static_cast<double>(colour.b), 0.0});
    if (light.intensity > 0)
        light.colour = {colour.r / light.intensity, colour.g / light.intensity, colour.b / light.intensity};
    light.inner_angle = source.mAngleInnerCone / 2;
    light.outer_angle = source.mAngleOuterCone / 2;
    light.node = looking_node(reading, place->second, light.name, vector_of(source.mDirection), vector_of(source.mUp));
    reading.out.scene.lights.push_back(std::move(light));
}

void read_camera(AssimpReading& reading, const aiCamera& source) {
    const auto place = reading.places.find(text_of(source.mName));
    if (place == reading.places.end()) return;
    ImportedCamera camera;
    camera.name = text_of(source.mName);
    camera.orthographic = source.mOrthographicWidth > 0;
    camera.aspect_ratio = source.mAspect;
    const double aspect = source.mAspect > 0 ? static_cast<double>(source.mAspect) : 1;
    // The width, half an angle or half a length, as a height.
    camera.size = camera.orthographic
                      ? static_cast<double>(source.mOrthographicWidth) / aspect * reading.metres
                      : 2 * std::atan(std::tan(static_cast<double>(source.mHorizontalFOV) / 2) / aspect);
    camera.nearest = static_cast<double>(source.mClipPlaneNear) * reading.metres;
    camera.furthest = static_cast<double>(source.mClipPlaneFar) * reading.metres;
    camera.node = looking_node(reading, place->second, camera.name, vector_of(source.mLookAt), vector_of(source.mUp));
    reading.out.scene.cameras.push_back(std::move(camera));
}

std::array<double, 3> colour_of(const aiMaterial& material, const char* key, unsigned type, unsigned index,
                                const std::array<double, 3>& nothing) {
    aiColor3D colour;
    if (material.Get(key, type, index, colour) != aiReturn_SUCCESS) return nothing;
    return {colour.r, colour.g, colour.b};
}

double number_of(const aiMaterial& material, const char* key, unsigned type, unsigned index, double nothing) {
    float number = 0;
    return material.Get(key, type, index, number) == aiReturn_SUCCESS && std::isfinite(number)
               ? static_cast<double>(number)
               : nothing;
}

TextureWrap wrap_of(aiTextureMapMode mode) {
    return mode == aiTextureMapMode_Mirror ? TextureWrap::mirrored
           : mode == aiTextureMapMode_Wrap ? TextureWrap::repeated
                                           : TextureWrap::edge;
}

TexturePlacement placement_of(const aiMaterial& material, aiTextureType type, const aiTextureMapMode (&modes)[2]) {
    TexturePlacement out;
    aiUVTransform transform;
    if (material.Get(AI_MATKEY_UVTRANSFORM(type, 0), transform) == aiReturn_SUCCESS) {
        out.offset = {transform.mTranslation.x, transform.mTranslation.y};
        out.repeat = {transform.mScaling.x, transform.mScaling.y};
        out.rotation = static_cast<double>(transform.mRotation);
    }
    out.wrap_u = wrap_of(modes[0]);
    out.wrap_v = wrap_of(modes[1]);
    return out;
}

/// A texture that lies in the file becomes a picture.
std::optional<TextureUse> texture_of(AssimpReading& reading, const aiMaterial& material, const std::string& name,
                                     std::initializer_list<aiTextureType> types) {
    for (const aiTextureType type : types) {
        aiString path;
        unsigned set = 0;
        aiTextureMapMode modes[2] = {aiTextureMapMode_Wrap, aiTextureMapMode_Wrap};
        if (material.GetTexture(type, 0, &path, nullptr, &set, nullptr, nullptr, modes) != aiReturn_SUCCESS ||
            path.length == 0)
            continue;
        TextureUse use;
        use.name = text_of(path);
        use.uv_set = std::min(set, 7U);
        use.placement = placement_of(material, type, modes);
        const auto [inside, number] = reading.source.GetEmbeddedTextureAndIndex(path.C_Str());
        if (inside == nullptr || inside->mHeight != 0) return use;
        const std::string hint(inside->achFormatHint);
        std::string file = use.name.substr(use.name.find_last_of("/\\") + 1);
        if (file.empty() || file[0] == '*') {
            file = std::to_string(number) + ".";
            file += hint.empty() ? "png" : hint;
        }
        use.name = name + "_";
        use.name += file;
        auto& pictures = reading.out.pictures;
        const auto* bytes = reinterpret_cast<const std::uint8_t*>(inside->pcData);
        if (std::none_of(pictures.begin(), pictures.end(),
                         [&use](const ImportedPicture& p) { return p.name == use.name; }))
            pictures.push_back({use.name, {bytes, bytes + inside->mWidth}});
        return use;
    }
    return {};
}

} // namespace

void read_materials(AssimpReading& reading, const std::string& name) {
    for (unsigned i = 0; i < reading.source.mNumMaterials; ++i) {
        const aiMaterial& source = *reading.source.mMaterials[i];
        MaterialValues out;
        aiString own;
        if (source.Get(AI_MATKEY_NAME, own) == aiReturn_SUCCESS) out.name = text_of(own);
        out.base_colour = colour_of(source, AI_MATKEY_COLOR_DIFFUSE, out.base_colour);
        out.emission = colour_of(source, AI_MATKEY_COLOR_EMISSIVE, out.emission);
        out.opacity = std::clamp(number_of(source, AI_MATKEY_OPACITY, 1), 0.0, 1.0);
        const double shininess = number_of(source, AI_MATKEY_SHININESS, 0);
        out.roughness =
            number_of(source, AI_MATKEY_ROUGHNESS_FACTOR, shininess > 1 ? std::sqrt(2 / (shininess + 2)) : 1);
        out.metallic = number_of(source, AI_MATKEY_METALLIC_FACTOR, 0);
        out.colour = texture_of(reading, source, name, {aiTextureType_BASE_COLOR, aiTextureType_DIFFUSE});
        out.normal = texture_of(reading, source, name, {aiTextureType_NORMALS, aiTextureType_NORMAL_CAMERA});
        out.emission_map = texture_of(reading, source, name, {aiTextureType_EMISSIVE});
        out.transparency = texture_of(reading, source, name, {aiTextureType_OPACITY});
        out.metallic_map = texture_of(reading, source, name, {aiTextureType_METALNESS});
        out.roughness_map = texture_of(reading, source, name, {aiTextureType_DIFFUSE_ROUGHNESS});
        out.occlusion = texture_of(reading, source, name, {aiTextureType_AMBIENT_OCCLUSION});
        reading.out.scene.materials.push_back(std::move(out));
    }
}

void read_looks(AssimpReading& reading) {
    for (unsigned i = 0; i < reading.source.mNumLights; ++i) read_light(reading, *reading.source.mLights[i]);
    for (unsigned i = 0; i < reading.source.mNumCameras; ++i) read_camera(reading, *reading.source.mCameras[i]);
}

} // namespace vor2::convert
