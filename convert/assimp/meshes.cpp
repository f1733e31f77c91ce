#include "convert/assimp/reading.h"
#include "convert/assimp/values.h"

#include <assimp/mesh.h>

#include <algorithm>

namespace vor2::convert {
namespace {

/// Of the parts, one for each material, that a node has.
class MeshReader {
public:
    MeshReader(AssimpReading& reading, ImportedMesh& mesh) : reading_(reading), mesh_(mesh) {}

    void add(const aiMesh& part) {
        const std::size_t start = mesh_.positions.size() / 3, count = part.mNumVertices;
        append(mesh_.positions, part.mVertices, start, count, 3, reading_.metres, 0);
        append(mesh_.normals, part.mNormals, start, count, 3, 1, 0);
        for (std::size_t set = 0; set < AI_MAX_NUMBER_OF_TEXTURECOORDS; ++set) {
            if (part.mTextureCoords[set] == nullptr && set >= mesh_.uvs.size()) break;
            if (set >= mesh_.uvs.size()) mesh_.uvs.emplace_back();
            append(mesh_.uvs[set], part.mTextureCoords[set], start, count, 2, 1, 0);
        }
        add_colours(part, start, count);
        if (part.HasBones() || !mesh_.joints.empty()) add_bones(part, start, count);
        for (unsigned t = 0; t < part.mNumAnimMeshes; ++t) add_target(part, t, start);
        add_group(part, start);
    }

private:
    static void append(std::vector<float>& list, const aiVector3D* numbers, std::size_t start, std::size_t count,
                       std::size_t width, double factor, float nothing) {
        if (numbers == nullptr && list.empty()) return;
        list.resize(start * width, nothing);
        for (std::size_t v = 0; v < count; ++v) {
            const Vec3 vector = numbers == nullptr ? Vec3{nothing, nothing, nothing} : vector_of(numbers[v]) * factor;
            for (std::size_t i = 0; i < width; ++i)
                list.push_back(static_cast<float>(is_finite(vector) ? vector[i] : 0.0));
        }
    }

    void add_colours(const aiMesh& part, std::size_t start, std::size_t count) {
        const aiColor4D* colours = part.mColors[0];
        if (colours == nullptr && mesh_.colours.empty()) return;
        mesh_.colours.resize(start * 4, 1.0F);
        for (std::size_t v = 0; v < count; ++v) {
            const aiColor4D colour = colours == nullptr ? aiColor4D(1, 1, 1, 1) : colours[v];
            mesh_.colours.insert(mesh_.colours.end(), {colour.r, colour.g, colour.b, colour.a});
        }
    }

    void add_bones(const aiMesh& part, std::size_t start, std::size_t count) {
        mesh_.influences.resize(start + count);
        for (unsigned b = 0; b < part.mNumBones; ++b) {
            const aiBone& bone = *part.mBones[b];
            const auto found = reading_.places.find(text_of(bone.mName));
            if (found == reading_.places.end()) {
                reading_.report.fail("mesh " + mesh_.name + " is bound to " + text_of(bone.mName) +
                                     ", which isn't in the file");
                return;
            }
            const std::uint32_t joint = joint_of(found->second, bone.mOffsetMatrix);
            for (unsigned w = 0; w < bone.mNumWeights; ++w) {
                const aiVertexWeight& weight = bone.mWeights[w];
                if (weight.mVertexId < count && weight.mWeight > 0)
                    mesh_.influences[start + weight.mVertexId].push_back({joint, weight.mWeight});
            }
        }
    }

    std::uint32_t joint_of(int node, const aiMatrix4x4& offset) {
        const auto known = std::find(mesh_.joints.begin(), mesh_.joints.end(), node);
        if (known != mesh_.joints.end()) return static_cast<std::uint32_t>(known - mesh_.joints.begin());
        Affine inverse = affine_of(offset);
        for (auto& row : inverse.m) row[3] *= reading_.metres;
        mesh_.joints.push_back(node);
        mesh_.inverse_binds.push_back(inverse.is_finite() ? inverse : Affine());
        return static_cast<std::uint32_t>(mesh_.joints.size() - 1);
    }

    void add_target(const aiMesh& part, unsigned index, std::size_t start) {
        const aiAnimMesh& source = *part.mAnimMeshes[index];
        if (index >= mesh_.targets.size()) mesh_.targets.emplace_back();
        ImportedTarget& target = mesh_.targets[index];
        target.name = text_of(source.mName).empty() ? "target_" + std::to_string(index) : text_of(source.mName);
        target.weight = source.mWeight;
        if (source.mVertices == nullptr) return;
        for (unsigned v = 0; v < std::min(source.mNumVertices, part.mNumVertices); ++v) {
            const Vec3 offset = (vector_of(source.mVertices[v]) - vector_of(part.mVertices[v])) * reading_.metres;
            if (!is_finite(offset) || offset == Vec3{0, 0, 0}) continue;
            target.vertices.push_back(static_cast<std::uint32_t>(start + v));
            for (const double number : offset) target.offsets.push_back(static_cast<float>(number));
        }
    }

    void add_group(const aiMesh& part, std::size_t start) {
        ImportedGroup& group = mesh_.groups.emplace_back();
        group.material =
            part.mMaterialIndex < reading_.source.mNumMaterials ? static_cast<int>(part.mMaterialIndex) : -1;
        for (unsigned f = 0; f < part.mNumFaces; ++f) {
            const aiFace& face = part.mFaces[f];
            if (face.mNumIndices != 3 ||
                std::any_of(face.mIndices, face.mIndices + 3, [&part](unsigned i) { return i >= part.mNumVertices; }))
                continue;
            for (unsigned i = 0; i < 3; ++i)
                group.corners.push_back(static_cast<std::uint32_t>(start + face.mIndices[i]));
        }
    }

    AssimpReading& reading_;
    ImportedMesh& mesh_;
};

} // namespace

void read_meshes(AssimpReading& reading) {
    std::map<std::vector<unsigned>, std::size_t> known;
    for (std::size_t place = 0; place < reading.nodes.size(); ++place) {
        const aiNode& node = *reading.nodes[place];
        std::vector<unsigned> plain, skinned;
        for (unsigned i = 0; i < node.mNumMeshes; ++i) {
            if (node.mMeshes[i] >= reading.source.mNumMeshes) continue;
            const aiMesh& part = *reading.source.mMeshes[node.mMeshes[i]];
            if ((part.mPrimitiveTypes & aiPrimitiveType_TRIANGLE) == 0) continue;
            (part.HasBones() ? skinned : plain).push_back(node.mMeshes[i]);
        }
        for (const std::vector<unsigned>* parts : {&plain, &skinned}) {
            if (parts->empty()) continue;
            const auto before = known.find(*parts);
            if (before != known.end() && parts == &plain) {
                reading.out.scene.instances.push_back({text_of(node.mName), static_cast<int>(place), before->second});
                continue;
            }
            ImportedMesh& mesh = reading.out.scene.meshes.emplace_back();
            mesh.name = text_of(reading.source.mMeshes[parts->front()]->mName);
            if (mesh.name.empty()) mesh.name = text_of(node.mName);
            mesh.node = static_cast<int>(place);
            MeshReader reader(reading, mesh);
            for (const unsigned part : *parts) reader.add(*reading.source.mMeshes[part]);
            known.emplace(*parts, reading.out.scene.meshes.size() - 1);
            reading.of_node[static_cast<int>(place)].push_back(reading.out.scene.meshes.size() - 1);
        }
    }
}

} // namespace vor2::convert
