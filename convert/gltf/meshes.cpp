#include "convert/gltf/meshes.h"

#include "convert/gltf/extras.h"
#include "convert/properties.h"

#include <algorithm>
#include <cmath>

namespace vor2::convert {
namespace {

using namespace VOR2_LOADER;

void append(std::vector<float>& out, const Vec3& v) {
    for (const double number : v) out.push_back(static_cast<float>(number));
}

VECTOR_3 finite(VECTOR_3 v) {
    for (f32* number : {&v.x, &v.y, &v.z}) {
        if (!std::isfinite(*number)) *number = 0.0F;
    }
    return v;
}

void for_each_triangle(const VOR2_TRI_OBJECT& mesh, auto use) {
    const u32 count = mesh.vertex_count();
    for (const VOR2_TRI_SUB_OBJECT& group : mesh.sub_objects) {
        for (const VOR2_CARD32_TRIPLE& t : group.triangles) {
            if (t.first < count && t.second < count && t.third < count) use(t.first, t.second, t.third);
        }
    }
}

Vec3 face_normal(const std::vector<float>& positions, u32 a, u32 b, u32 c) {
    return cross(triple(positions, b) - triple(positions, a), triple(positions, c) - triple(positions, a));
}

/// Some exports mirror the vertices of a mesh and leave its normals as the host has them. Which it is, its faces tell.
bool normals_are_unmirrored(const VOR2_TRI_OBJECT& mesh, const MeshNumbers& numbers) {
    double as_mirrored = 0, as_they_are = 0;
    for_each_triangle(mesh, [&](u32 a, u32 b, u32 c) {
        const Vec3 face = face_normal(numbers.positions, a, b, c);
        for (const u32 corner : {a, b, c}) {
            const Vec3 normal = triple(numbers.normals, corner);
            as_mirrored += dot(face, normal);
            as_they_are += dot(face, converted(normal, Axes::mirrored));
        }
    });
    // A mesh may be turned inside out, with its faces against its normals.
    if (as_mirrored < 0 && as_they_are < 0) return as_they_are < as_mirrored;
    return as_they_are > as_mirrored + 1e-6 * std::abs(as_mirrored);
}

/// Brings normals to unit length; those without a direction get that of their faces.
void mend_normals(const VOR2_TRI_OBJECT& mesh, MeshNumbers& numbers) {
    const std::size_t count = numbers.normals.size() / 3;
    std::vector<Vec3> faces;
    for (std::size_t i = 0; i < count; ++i) {
        Vec3 normal = triple(numbers.normals, i);
        if (!(length(normal) > 1e-6)) {
            if (faces.empty()) {
                faces.assign(count, Vec3{0, 0, 0});
                for_each_triangle(mesh, [&](u32 a, u32 b, u32 c) {
                    const Vec3 face = face_normal(numbers.positions, a, b, c);
                    for (const u32 corner : {a, b, c}) faces[corner] = faces[corner] + face;
                });
            }
            normal = faces[i];
        }
        const double size = length(normal);
        normal = size > 0 && std::isfinite(size) ? normal * (1 / size) : Vec3{0, 1, 0};
        for (std::size_t k = 0; k < 3; ++k) numbers.normals[3 * i + k] = static_cast<float>(normal[k]);
    }
}

/// A vertex without a colour has the default, clear black, which beside others stands for white.
void read_colours(const VOR2_TRI_OBJECT& mesh, MeshNumbers& numbers) {
    const u32 count = mesh.vertex_count();
    bool any = false;
    numbers.colours.reserve(std::size_t{4} * count);
    for (u32 i = 0; i < count; ++i) {
        VOR2_COLOUR colour;
        mesh.vertex(i).get_colour(colour);
        const bool has = colour.red != 0 || colour.green != 0 || colour.blue != 0 || colour.alpha != 0;
        any = any || has;
        if (!has) colour = {1.0F, 1.0F, 1.0F, 1.0F};
        for (const f32 number : {colour.red, colour.green, colour.blue, colour.alpha})
            numbers.colours.push_back(std::isfinite(number) ? std::clamp(number, 0.0F, 1.0F) : 0.0F);
    }
    if (!any) numbers.colours.clear();
}

void read_uvs(const VOR2_TRI_OBJECT& mesh, MeshNumbers& numbers) {
    const u32 count = mesh.vertex_count();
    u32 sets = 0;
    for (u32 i = 0; i < count; ++i) {
        u32 here = 0;
        mesh.vertex(i).get_uv_count(here);
        sets = std::max(sets, here);
    }
    sets = std::min(sets, 8U);
    numbers.uvs.resize(sets);
    for (u32 set = 0; set < sets; ++set) {
        for (u32 i = 0; i < count; ++i) {
            u32 here = 0;
            VECTOR_3 uv(0.0F, 0.0F, 0.0F);
            mesh.vertex(i).get_uv_count(here);
            if (set < here) mesh.vertex(i).get_uv(set, uv);
            uv = finite(uv);
            numbers.uvs[set].push_back(uv.x);
            numbers.uvs[set].push_back(1.0F - uv.y);
        }
    }
}

/// Only a whole set of frames is worth writing: who reads glTF makes them himself otherwise.
void read_tangents(const VOR2_TRI_OBJECT& mesh, MeshNumbers& numbers) {
    if (numbers.uvs.empty()) return;
    for (u32 i = 0; i < mesh.vertex_count(); ++i) {
        u32 count = 0;
        mesh.vertex(i).get_binormal_tangent_count(count);
        VOR2_BINORMAL_TANGENT frame;
        if (count > 0) mesh.vertex(i).get_binormal_tangent(0, frame);
        const Vec3 tangent = converted(widened(frame.tangent), Axes::mirrored);
        const double size = length(tangent);
        if (!(size > 1e-3) || !std::isfinite(size)) {
            numbers.tangents.clear();
            return;
        }
        append(numbers.tangents, tangent * (1 / size));
        const Vec3 binormal = converted(widened(frame.binormal), Axes::mirrored);
        numbers.tangents.push_back(dot(cross(triple(numbers.normals, i), tangent), binormal) < 0 ? -1.0F : 1.0F);
    }
}

} // namespace

MeshNumbers numbers_of(const VOR2_TRI_OBJECT& mesh) {
    MeshNumbers numbers;
    for (u32 i = 0; i < mesh.vertex_count(); ++i) {
        VECTOR_3 position(0.0F, 0.0F, 0.0F), normal(0.0F, 0.0F, 0.0F);
        mesh.vertex(i).get_position(position);
        mesh.vertex(i).get_normal(normal);
        append(numbers.positions, converted(widened(finite(position)), Axes::mirrored));
        append(numbers.normals, converted(widened(finite(normal)), Axes::mirrored));
    }
    if (normals_are_unmirrored(mesh, numbers)) {
        for (std::size_t i = 2; i < numbers.normals.size(); i += 3) numbers.normals[i] = -numbers.normals[i];
    }
    mend_normals(mesh, numbers);
    read_colours(mesh, numbers);
    read_uvs(mesh, numbers);
    read_tangents(mesh, numbers);
    return numbers;
}

std::vector<tinygltf::Primitive> primitives_of(GltfWork& work, const GltfScene& scene, const Groups& groups,
                                               std::uint32_t vertex_count, const Attributes& attributes,
                                               const std::string& name) {
    std::vector<tinygltf::Primitive> out;
    std::size_t left_out = 0;
    for (const VOR2_TRI_SUB_OBJECT& group : groups) {
        std::vector<std::uint32_t> indices;
        indices.reserve(3 * group.triangles.size());
        for (const VOR2_CARD32_TRIPLE& t : group.triangles) {
            if (t.first < vertex_count && t.second < vertex_count && t.third < vertex_count) {
                indices.insert(indices.end(), {t.first, t.second, t.third});
            } else {
                ++left_out;
            }
        }
        if (indices.empty()) continue;
        tinygltf::Primitive primitive;
        primitive.mode = TINYGLTF_MODE_TRIANGLES;
        primitive.attributes = attributes;
        primitive.indices = work.buffers.indices(indices);
        if (group.material_id < scene.materials.size()) primitive.material = scene.materials[group.material_id];
        out.push_back(std::move(primitive));
    }
    if (left_out > 0)
        work.report.note("mesh " + name + ": " + std::to_string(left_out) +
                         " triangles name no vertices, and are left out");
    return out;
}

tinygltf::Mesh mesh_of(GltfWork& work, const GltfScene& scene, const VOR2_TRI_OBJECT& mesh, const MeshNumbers& numbers,
                       Attributes attributes) {
    tinygltf::Mesh out;
    out.name = utf8_of(mesh.name);
    bool any = false;
    for_each_triangle(mesh, [&any](u32, u32, u32) { any = true; });
    if (!any) {
        work.report.note("mesh " + out.name + " has no triangles, and is left out");
        return out;
    }
    attributes["POSITION"] = work.buffers.floats(numbers.positions, 3, Use::vertices, true);
    attributes["NORMAL"] = work.buffers.floats(numbers.normals, 3, Use::vertices);
    if (!numbers.tangents.empty()) attributes["TANGENT"] = work.buffers.floats(numbers.tangents, 4, Use::vertices);
    if (!numbers.colours.empty()) attributes["COLOR_0"] = work.buffers.floats(numbers.colours, 4, Use::vertices);
    for (std::size_t set = 0; set < numbers.uvs.size(); ++set)
        attributes["TEXCOORD_" + std::to_string(set)] = work.buffers.floats(numbers.uvs[set], 2, Use::vertices);
    out.primitives = primitives_of(work, scene, mesh.sub_objects, mesh.vertex_count(), attributes, out.name);
    tinygltf::Value::Array channels;
    for (const u32 channel : mesh.mapping_channels) channels.emplace_back(static_cast<int>(channel));
    if (!channels.empty()) put(out.extras, "mapping_channels", tinygltf::Value(std::move(channels)));
    // Where a scene begins behind a lead-in is of no use to a file that has none.
    VOR2_EXTENDED_PROPERTIES properties = mesh.extended_properties;
    drop_property(properties, "first_time");
    put_properties(out.extras, properties);
    return out;
}

int add_mesh(GltfWork& work, tinygltf::Mesh mesh) {
    if (mesh.primitives.empty()) return -1;
    work.model.meshes.push_back(std::move(mesh));
    return static_cast<int>(work.model.meshes.size() - 1);
}

} // namespace vor2::convert
