#include "convert/gltf/reading.h"

#include "convert/gltf/extras.h"

#include <algorithm>
#include <cmath>

namespace vor2::convert {
namespace {

/// Of one primitive, or several that share their vertices.
class MeshReader {
public:
    MeshReader(GltfReading& reading, const tinygltf::Mesh& source, ImportedMesh& mesh)
        : reading_(reading), source_(source), mesh_(mesh) {}

    void run() {
        for (const tinygltf::Primitive& primitive : source_.primitives) {
            if (primitive.mode >= TINYGLTF_MODE_TRIANGLES || primitive.mode < 0) read_targets_names(primitive);
        }
        for (const tinygltf::Primitive& primitive : source_.primitives) {
            if (primitive.mode >= TINYGLTF_MODE_TRIANGLES || primitive.mode < 0) add(primitive);
        }
    }

private:
    void read_targets_names(const tinygltf::Primitive& primitive) {
        const tinygltf::Value& names = source_.extras.IsObject() ? source_.extras.Get("targetNames") : source_.extras;
        for (std::size_t t = mesh_.targets.size(); t < primitive.targets.size(); ++t) {
            ImportedTarget& target = mesh_.targets.emplace_back();
            target.name = "target_" + std::to_string(t);
            if (t < names.ArrayLen() && names.Get(static_cast<int>(t)).IsString())
                target.name = names.Get(static_cast<int>(t)).Get<std::string>();
            if (t < source_.weights.size()) target.weight = source_.weights[t];
        }
    }

    void add(const tinygltf::Primitive& primitive) {
        const auto position = primitive.attributes.find("POSITION");
        if (position == primitive.attributes.end())
            return reading_.report.note("mesh " + mesh_.name + " has a part without positions, which is left out");
        // Parts with the very same vertices share them, as they did before they were split by material.
        const auto [known, is_new] =
            starts_.try_emplace({primitive.attributes, primitive.targets}, mesh_.positions.size() / 3);
        const std::size_t start = known->second;
        const std::size_t count = reading_.accessors.count(position->second);
        if (is_new) add_vertices(primitive, start, count);
        add_group(primitive, start, count);
    }

    /// Numbers of an attribute, as many as there are positions; none where the part has no such attribute.
    std::vector<float> attribute(const tinygltf::Primitive& primitive, const std::string& name, int width,
                                 std::size_t count) {
        const auto found = primitive.attributes.find(name);
        if (found == primitive.attributes.end()) return {};
        std::vector<float> numbers = reading_.accessors.floats(found->second, width);
        if (numbers.size() != count * static_cast<std::size_t>(width))
            throw BadFile("mesh " + mesh_.name + ": " + name + " has not as many elements as POSITION");
        return numbers;
    }

    /// Appends to a list that holds numbers for all vertices or none.
    static void append(std::vector<float>& list, std::vector<float> numbers, std::size_t start, std::size_t count,
                       std::size_t width, float nothing) {
        if (numbers.empty() && list.empty()) return;
        list.resize(start * width, nothing);
        numbers.resize(count * width, nothing);
        list.insert(list.end(), numbers.begin(), numbers.end());
    }

    void add_vertices(const tinygltf::Primitive& primitive, std::size_t start, std::size_t count) {
        append(mesh_.positions, attribute(primitive, "POSITION", 3, count), start, count, 3, 0);
        append(mesh_.normals, attribute(primitive, "NORMAL", 3, count), start, count, 3, 0);
        append(mesh_.tangents, attribute(primitive, "TANGENT", 4, count), start, count, 4, 0);
        append(mesh_.colours, colours(primitive, count), start, count, 4, 1);
        for (std::size_t set = 0; set < 8; ++set) {
            std::vector<float> uvs = attribute(primitive, "TEXCOORD_" + std::to_string(set), 2, count);
            for (std::size_t i = 1; i < uvs.size(); i += 2) uvs[i] = 1 - uvs[i];
            if (uvs.empty() && set >= mesh_.uvs.size()) break;
            if (set >= mesh_.uvs.size()) mesh_.uvs.emplace_back();
            append(mesh_.uvs[set], std::move(uvs), start, count, 2, 0);
        }
        for (std::vector<float>& set : mesh_.uvs) set.resize((start + count) * 2);
        if (!mesh_.joints.empty()) add_influences(primitive, count);
        for (std::size_t t = 0; t < primitive.targets.size(); ++t) add_target(primitive.targets[t], t, start, count);
    }

    std::vector<float> colours(const tinygltf::Primitive& primitive, std::size_t count) {
        const auto found = primitive.attributes.find("COLOR_0");
        if (found == primitive.attributes.end()) return {};
        if (reading_.accessors.width(found->second) != 3) return attribute(primitive, "COLOR_0", 4, count);
        const std::vector<float> three = attribute(primitive, "COLOR_0", 3, count);
        std::vector<float> four;
        for (std::size_t i = 0; i < three.size(); ++i) {
            four.push_back(three[i]);
            if (i % 3 == 2) four.push_back(1);
        }
        return four;
    }

    void add_influences(const tinygltf::Primitive& primitive, std::size_t count) {
        std::vector<std::vector<ImportedInfluence>> influences(count);
        for (int set = 0; primitive.attributes.contains("JOINTS_" + std::to_string(set)); ++set) {
            const std::string number = std::to_string(set);
            const std::vector<std::uint32_t> joints =
                reading_.accessors.integers(primitive.attributes.at("JOINTS_" + number), 4);
            const std::vector<float> weights = attribute(primitive, "WEIGHTS_" + number, 4, count);
            if (joints.size() != 4 * count || weights.size() != joints.size())
                throw BadFile("mesh " + mesh_.name + ": joints and weights are not as many as positions");
            for (std::size_t i = 0; i < joints.size(); ++i) {
                if (!(std::abs(weights[i]) > 0)) continue;
                if (joints[i] >= mesh_.joints.size())
                    throw BadFile("mesh " + mesh_.name + ": joint " + std::to_string(joints[i]) +
                                  " isn't in its skin, which has " + std::to_string(mesh_.joints.size()));
                influences[i / 4].push_back({joints[i], weights[i]});
            }
        }
        mesh_.influences.insert(mesh_.influences.end(), influences.begin(), influences.end());
    }

    void add_target(const std::map<std::string, int>& attributes, std::size_t index, std::size_t start,
                    std::size_t count) {
        const auto found = attributes.find("POSITION");
        if (found == attributes.end()) return;
        const std::vector<float> offsets = reading_.accessors.floats(found->second, 3);
        if (offsets.size() != 3 * count)
            throw BadFile("mesh " + mesh_.name + ": a target has not as many elements as POSITION");
        ImportedTarget& target = mesh_.targets[index];
        for (std::size_t v = 0; v < count; ++v) {
            const float* offset = &offsets[3 * v];
            if (offset[0] == 0 && offset[1] == 0 && offset[2] == 0) continue;
            target.vertices.push_back(static_cast<std::uint32_t>(start + v));
            target.offsets.insert(target.offsets.end(), offset, offset + 3);
        }
    }

    void add_group(const tinygltf::Primitive& primitive, std::size_t start, std::size_t count) {
        std::vector<std::uint32_t> corners;
        if (primitive.indices >= 0) {
            corners = reading_.accessors.integers(primitive.indices, 1);
        } else {
            for (std::size_t i = 0; i < count; ++i) corners.push_back(static_cast<std::uint32_t>(i));
        }
        for (std::uint32_t& corner : corners) {
            if (corner >= count)
                throw BadFile("mesh " + mesh_.name + ": index " + std::to_string(corner) +
                              " names no vertex: there are " + std::to_string(count));
            corner += static_cast<std::uint32_t>(start);
        }
        ImportedGroup& group = mesh_.groups.emplace_back();
        group.material = primitive.material;
        if (primitive.material >= 0) (void)element(reading_.model.materials, primitive.material, "material");
        group.corners = triangles(std::move(corners), primitive.mode);
    }

    static std::vector<std::uint32_t> triangles(std::vector<std::uint32_t> corners, int mode) {
        if (mode == TINYGLTF_MODE_TRIANGLE_STRIP || mode == TINYGLTF_MODE_TRIANGLE_FAN) {
            std::vector<std::uint32_t> out;
            for (std::size_t i = 2; i < corners.size(); ++i) {
                const bool fan = mode == TINYGLTF_MODE_TRIANGLE_FAN, odd = !fan && i % 2 == 1;
                const std::uint32_t first = fan ? corners[0] : corners[i - 2];
                out.insert(out.end(), {odd ? corners[i - 1] : first, odd ? first : corners[i - 1], corners[i]});
            }
            return out;
        }
        corners.resize(corners.size() / 3 * 3);
        return corners;
    }

    GltfReading& reading_;
    const tinygltf::Mesh& source_;
    ImportedMesh& mesh_;
    std::map<std::pair<std::map<std::string, int>, std::vector<std::map<std::string, int>>>, std::size_t> starts_;
};

void read_skin(GltfReading& reading, int index, ImportedMesh& mesh) {
    const tinygltf::Skin& skin = element(reading.model.skins, index, "skin");
    std::vector<float> inverses;
    if (skin.inverseBindMatrices >= 0) {
        inverses = reading.accessors.floats(skin.inverseBindMatrices, 16);
        if (inverses.size() < 16 * skin.joints.size()) throw BadFile("a skin has fewer bind matrices than joints");
    }
    for (std::size_t i = 0; i < skin.joints.size(); ++i) {
        const int place = element(reading.places, skin.joints[i], "node");
        if (place < 0)
            throw BadFile("the skin of " + mesh.name + " has the joint " +
                          reading.model.nodes[static_cast<std::size_t>(skin.joints[i])].name +
                          ", which isn't in the scene");
        mesh.joints.push_back(place);
        Affine inverse;
        for (int c = 0; c < 4 && !inverses.empty(); ++c) {
            for (int r = 0; r < 3; ++r) inverse.m[r][c] = inverses[16 * i + static_cast<std::size_t>(4 * c + r)];
        }
        if (!inverse.is_finite()) throw BadFile("a bind matrix of the skin of " + mesh.name + " isn't finite");
        mesh.inverse_binds.push_back(inverse);
    }
}

void read_lines(GltfReading& reading, const tinygltf::Mesh& source, int place) {
    ImportedLine line;
    line.name = source.name;
    line.node = place;
    for (const tinygltf::Primitive& primitive : source.primitives) {
        if (primitive.mode < 0 || primitive.mode >= TINYGLTF_MODE_TRIANGLES) continue;
        const auto position = primitive.attributes.find("POSITION");
        if (primitive.mode != TINYGLTF_MODE_LINE_STRIP || primitive.indices >= 0 ||
            position == primitive.attributes.end()) {
            reading.report.note("mesh " + source.name + " has points or single lines, which are left out");
            continue;
        }
        line.strips.push_back(reading.accessors.floats(position->second, 3));
    }
    if (!line.strips.empty()) reading.out.scene.lines.push_back(std::move(line));
}

} // namespace

void read_mesh(GltfReading& reading, int node_index) {
    const tinygltf::Node& node = reading.model.nodes[static_cast<std::size_t>(node_index)];
    const int place = reading.places[static_cast<std::size_t>(node_index)];
    const tinygltf::Mesh& source = element(reading.model.meshes, node.mesh, "mesh");
    std::vector<ImportedMesh>& meshes = reading.out.scene.meshes;
    const auto known = reading.meshes.find(node.mesh);
    if (node.skin < 0 && known != reading.meshes.end()) {
        reading.out.scene.instances.push_back({node.name, place, known->second});
        return;
    }
    read_lines(reading, source, place);
    ImportedMesh mesh;
    mesh.name = source.name.empty() ? node.name : source.name;
    mesh.node = place;
    read_properties(source.extras, mesh.properties);
    if (source.extras.IsObject()) {
        const tinygltf::Value& channels = source.extras.Get("mapping_channels");
        for (std::size_t i = 0; i < channels.ArrayLen(); ++i)
            mesh.channels.push_back(static_cast<std::uint32_t>(channels.Get(static_cast<int>(i)).GetNumberAsInt()));
    }
    if (node.skin >= 0) read_skin(reading, node.skin, mesh);
    MeshReader(reading, source, mesh).run();
    for (std::size_t t = 0; t < std::min(node.weights.size(), mesh.targets.size()); ++t)
        mesh.targets[t].weight = node.weights[t];
    if (mesh.groups.empty()) return;
    if (node.skin < 0) reading.meshes.emplace(node.mesh, meshes.size());
    reading.of_node[node_index].push_back(meshes.size());
    meshes.push_back(std::move(mesh));
}

} // namespace vor2::convert
