#include "convert/built_shapes.h"

#include "convert/properties.h"
#include "format/tracks/constant_track.h"

#include <algorithm>
#include <cmath>

namespace vor2::convert {
namespace {

using namespace VOR2_LOADER;

Vec3 unit(const Vec3& v) {
    const double size = length(v);
    return size > 0 && std::isfinite(size) ? v * (1 / size) : Vec3{0, 1, 0};
}

/// Those of the faces, for a mesh that brings none.
std::vector<float> face_normals(const ImportedMesh& mesh) {
    std::vector<Vec3> sums(mesh.positions.size() / 3, Vec3{0, 0, 0});
    for (const ImportedGroup& group : mesh.groups) {
        for (std::size_t i = 0; i + 2 < group.corners.size(); i += 3) {
            const Vec3 a = triple(mesh.positions, group.corners[i]);
            const Vec3 face = cross(triple(mesh.positions, group.corners[i + 1]) - a,
                                    triple(mesh.positions, group.corners[i + 2]) - a);
            for (std::size_t k = 0; k < 3; ++k) sums[group.corners[i + k]] = sums[group.corners[i + k]] + face;
        }
    }
    std::vector<float> out;
    for (const Vec3& sum : sums) {
        for (const double number : unit(sum)) out.push_back(static_cast<float>(number));
    }
    return out;
}

VECTOR_3 in_file(const Vec3& v) {
    return narrowed(converted(v, Axes::mirrored));
}

/// What all vertices have. `to_world` brings those of a skinned mesh to the world.
class VertexFiller {
public:
    VertexFiller(const ImportedMesh& mesh, const Affine& to_world)
        : mesh_(mesh), normals_(mesh.normals.empty() ? face_normals(mesh) : mesh.normals), to_world_(to_world),
          for_normals_(to_world.for_normals()) {}

    void fill(std::size_t v, VOR2_RIGID_VERT& vertex) const {
        const Vec3 normal = unit(for_normals_.direction(triple(normals_, v)));
        vertex.position = in_file(to_world_.point(triple(mesh_.positions, v)));
        vertex.normal = in_file(normal);
        if (!mesh_.colours.empty()) {
            const float* c = &mesh_.colours[4 * v];
            vertex.colour = {c[0], c[1], c[2], c[3]};
        }
        vertex.uvs.reserve(mesh_.uvs.size());
        for (const std::vector<float>& set : mesh_.uvs) vertex.uvs.push_back({set[2 * v], set[2 * v + 1], 0.0F});
        if (mesh_.tangents.empty()) return;
        const float* t = &mesh_.tangents[4 * v];
        const Vec3 tangent = unit(to_world_.direction({t[0], t[1], t[2]}));
        vertex.binormal_tangents.emplace_back(in_file(cross(normal, tangent) * static_cast<double>(t[3])),
                                              in_file(tangent));
    }

private:
    const ImportedMesh& mesh_;
    std::vector<float> normals_;
    Affine to_world_, for_normals_;
};

template<class MESH>
OWNED<MESH> common(const ImportedMesh& source, const VertexFiller& filler) {
    auto mesh = make_owned<MESH>();
    mesh->name = text_of(source.name);
    mesh->matrix_index = static_cast<u32>(source.node);
    mesh->extended_properties = source.properties;
    for (std::size_t set = 0; set < source.uvs.size(); ++set)
        mesh->mapping_channels.push_back(set < source.channels.size() ? source.channels[set]
                                                                      : static_cast<u32>(set + 1));
    mesh->vertices.grow_by(source.positions.size() / 3);
    for (std::size_t v = 0; v < mesh->vertices.size(); ++v) filler.fill(v, mesh->vertices[v]);
    for (const ImportedGroup& group : source.groups) {
        VOR2_TRI_SUB_OBJECT& out = mesh->sub_objects.emplace_back();
        out.material_id = static_cast<u32>(group.material);
        out.triangles.reserve(group.corners.size() / 3);
        for (std::size_t i = 0; i + 2 < group.corners.size(); i += 3)
            out.triangles.push_back({group.corners[i], group.corners[i + 1], group.corners[i + 2]});
    }
    return mesh;
}

void add_morph_mesh(const ImportedMesh& source, VOR2& scene) {
    auto mesh = common<VOR2_MORPH_MESH>(source, VertexFiller(source, Affine()));
    for (std::size_t t = 0; t < source.targets.size(); ++t) {
        const ImportedTarget& target = source.targets[t];
        auto& named = mesh->morph_targets.emplace_back();
        named.name = text_of(target.name);
        auto track = make_owned<VOR2_ANIMATABLE_FLOAT32_LINEAR>();
        for (std::size_t k = 0; k < source.weights.times.size(); ++k)
            track->add_key(source.weights.values[k][t], source.weights.times[k]);
        if (source.weights.times.empty()) track->add_key(static_cast<f32>(target.weight), 0.0F);
        named.track = std::move(track);
        for (std::size_t i = 0; i < target.vertices.size(); ++i) {
            VOR2_TARGET_VERT& entry = mesh->vertices[target.vertices[i]].target_verts.emplace_back();
            entry.offset = in_file(triple(target.offsets, i));
            entry.target_index = static_cast<i32>(t);
        }
    }
    scene.morph_meshes.push_back(std::move(mesh));
}

/// With its targets at their weights for the file's own time.
ImportedMesh with_targets_applied(const ImportedMesh& source) {
    ImportedMesh out = source;
    for (const ImportedTarget& target : source.targets) {
        for (std::size_t i = 0; i < target.offsets.size(); ++i)
            out.positions[3 * std::size_t{target.vertices[i / 3]} + i % 3] +=
                static_cast<float>(static_cast<double>(target.offsets[i]) * target.weight);
    }
    return out;
}

void add_weighted_mesh(const ImportedMesh& source, const Affine& rest, VOR2& scene, Report& report) {
    if (!source.targets.empty())
        report.note("mesh " + source.name +
                    " has a skin and targets: the skin is kept, and the targets stay as they are");
    auto mesh = source.targets.empty()
                    ? common<VOR2_WEIGHTED_MESH>(source, VertexFiller(source, rest))
                    : common<VOR2_WEIGHTED_MESH>(source, VertexFiller(with_targets_applied(source), rest));
    for (std::size_t v = 0; v < mesh->vertices.size(); ++v) {
        VOR2_WEIGHTED_MESH_VERT& vertex = mesh->vertices[v];
        vertex.rest_position = vertex.position;
        vertex.rest_normal = vertex.normal;
        // Formats leave it to the reader to bring weights to a sum of 1; the library takes them as they are.
        double sum = 0;
        for (const ImportedInfluence& influence : source.influences[v]) sum += static_cast<double>(influence.weight);
        const double factor = sum > 0 && std::isfinite(sum) ? 1 / sum : 1;
        vertex.bone_weights.reserve(source.influences[v].size());
        for (const ImportedInfluence& influence : source.influences[v]) {
            VOR2_BONE_WEIGHT_DATA& bone = vertex.bone_weights.emplace_back();
            bone.bone_index = source.joints[influence.joint];
            bone.weight = static_cast<f32>(static_cast<double>(influence.weight) * factor);
        }
    }
    scene.weighted_meshes.push_back(std::move(mesh));
}

void add_line(const ImportedLine& source, VOR2& scene) {
    auto object = make_owned<VOR2_BEZIER_SPLINE_OBJECT>();
    object->name = text_of(source.name);
    object->matrix_index = static_cast<u32>(source.node);
    for (const std::vector<float>& strip : source.strips) {
        VOR2_RIGID_BEZIER_SPLINE& spline = object->rigid_splines.emplace_back();
        for (std::size_t i = 0; i < strip.size() / 3; ++i) {
            spline.points.push_back(in_file(triple(strip, i)));
            if (i == 0) continue;
            VOR2_RIGID_BEZIER_CURVE& curve = spline.curves.emplace_back();
            curve.degree = 1;
            curve.length = (spline.points[i] - spline.points[i - 1]).length();
        }
        spline.link_curves();
    }
    scene.bezier_spline_objects.push_back(std::move(object));
}

OWNED<VOR2_LIGHT> light_of(const ImportedLight& source) {
    switch (source.kind) {
    case ImportedLight::Kind::directional:
        return make_owned<VOR2_DIRECTIONAL_LIGHT>();
    case ImportedLight::Kind::point:
        return make_owned<VOR2_POINT_LIGHT>();
    case ImportedLight::Kind::spot:
        break;
    }
    auto spot = make_owned<VOR2_SPOT_LIGHT>();
    spot->float_track_1 = constant(source.inner_angle);
    spot->float_track_2 = constant(source.outer_angle);
    return spot;
}

} // namespace

void add_shapes(const ImportedScene& source, const BindPose& pose, VOR2& scene, Report& report) {
    struct Place {
        bool morphs;
        u32 index;
    };
    std::vector<Place> places;
    std::size_t skins = 0;
    for (const ImportedMesh& mesh : source.meshes) {
        places.push_back({!mesh.targets.empty(),
                          static_cast<u32>(mesh.targets.empty() ? scene.rigids.size() : scene.morph_meshes.size())});
        if (!mesh.joints.empty()) {
            add_weighted_mesh(mesh, pose.rest[skins++], scene, report);
        } else if (!mesh.targets.empty()) {
            add_morph_mesh(mesh, scene);
        } else {
            scene.rigids.push_back(common<VOR2_RIGID>(mesh, VertexFiller(mesh, Affine())));
        }
    }
    for (const ImportedInstance& instance : source.instances) {
        auto out = make_owned<VOR2_GEOM_INSTANCE>();
        out->name = text_of(instance.name);
        out->matrix_index = static_cast<u32>(instance.node);
        out->instanced_object = places[instance.mesh].index;
        (places[instance.mesh].morphs ? scene.morph_mesh_instances : scene.rigid_instances).push_back(std::move(out));
    }
    for (const ImportedLine& line : source.lines) add_line(line, scene);
}

void add_objects(const ImportedScene& source, VOR2& scene) {
    for (const ImportedLight& light : source.lights) {
        OWNED<VOR2_LIGHT> out = light_of(light);
        out->name = text_of(light.name);
        out->matrix_index = static_cast<u32>(light.node);
        out->extended_properties = light.properties;
        out->colour_track_1 = constant(light.colour);
        out->float_track = constant(light.intensity);
        if (light.range > 0) out->max_params.attenuation_2.float_track_2 = constant(light.range);
        scene.lights.push_back(std::move(out));
    }
    for (const ImportedCamera& camera : source.cameras) {
        auto out = make_owned<VOR2_CAMERA>();
        out->name = text_of(camera.name);
        out->matrix_index = static_cast<u32>(camera.node);
        out->extended_properties = camera.properties;
        out->camera_type = camera.orthographic ? 1 : 0;
        out->float_track_1 = constant(camera.size);
        out->range_track_1 = constant_track<VOR2_ANIMATABLE_FLOAT32_RANGE_LINEAR>(
            VOR2_FLOAT32_RANGE{static_cast<f32>(camera.nearest), static_cast<f32>(camera.furthest)});
        if (camera.aspect_ratio > 0 && !float_property(out->extended_properties, "aspect_ratio"))
            add_float(out->extended_properties, "aspect_ratio", camera.aspect_ratio);
        scene.cameras.push_back(std::move(out));
    }
}

} // namespace vor2::convert
