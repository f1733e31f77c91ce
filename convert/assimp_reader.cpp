#include "convert/assimp_reader.h"

#include "convert/assimp/reading.h"
#include "convert/assimp/values.h"

#include <assimp/Importer.hpp>
#include <assimp/config.h>
#include <assimp/postprocess.h>

#include <algorithm>
#include <array>

namespace vor2::convert {
namespace {

constexpr std::array<std::string_view, 7> endings{".fbx", ".dae", ".obj", ".ply", ".stl", ".3ds", ".x"};

/// A number of the file's global settings, whatever type it has.
double setting(const aiScene& scene, const char* name, double nothing) {
    if (scene.mMetaData == nullptr) return nothing;
    double real = 0;
    float single = 0;
    std::int32_t whole = 0;
    if (scene.mMetaData->Get(name, real)) return real;
    if (scene.mMetaData->Get(name, single)) return static_cast<double>(single);
    if (scene.mMetaData->Get(name, whole)) return whole;
    return nothing;
}

Vec3 axis_of(const aiScene& scene, const char* axis, const char* sign, double nothing) {
    const double index = setting(scene, axis, nothing), direction = setting(scene, sign, 1);
    Vec3 out{0, 0, 0};
    out[static_cast<std::size_t>(std::clamp(index, 0.0, 2.0))] = direction < 0 ? -1 : 1;
    return out;
}

/// What brings an FBX file's axes upright: its settings say which of them are right, up and front.
Affine upright(const aiScene& scene) {
    const Vec3 right = axis_of(scene, "CoordAxis", "CoordAxisSign", 0);
    const Vec3 up = axis_of(scene, "UpAxis", "UpAxisSign", 1);
    const Vec3 front = axis_of(scene, "FrontAxis", "FrontAxisSign", 2);
    Affine out;
    for (std::size_t c = 0; c < 3; ++c) {
        out.m[0][c] = right[c];
        out.m[1][c] = up[c];
        out.m[2][c] = front[c];
    }
    return out.determinant() > 0.5 ? out : Affine();
}

void read_nodes(AssimpReading& reading, const Affine& axes) {
    std::vector<std::pair<const aiNode*, int>> waiting{{reading.source.mRootNode, -1}};
    while (!waiting.empty()) {
        const auto [source, parent] = waiting.back();
        waiting.pop_back();
        const auto place = static_cast<int>(reading.nodes.size());
        reading.nodes.push_back(source);
        ImportedNode& node = reading.out.scene.nodes.emplace_back();
        node.name = text_of(source->mName).empty() ? "node_" + std::to_string(place) : text_of(source->mName);
        node.parent = parent;
        Affine matrix = affine_of(source->mTransformation);
        for (auto& row : matrix.m) row[3] *= reading.metres;
        if (parent < 0) matrix = axes * matrix;
        node.placement = matrix.is_finite() ? matrix.placement() : Placement();
        reading.places.emplace(text_of(source->mName), place);
        for (unsigned i = source->mNumChildren; i > 0; --i) waiting.emplace_back(source->mChildren[i - 1], place);
    }
}

/// One line of what the library says.
std::string first_line(std::string text) {
    text.erase(std::min(text.find_first_of("\r\n"), text.size()));
    return text.empty() ? "can't be read" : "can't be read: " + text;
}

} // namespace

bool assimp_reads(const std::string& extension) {
    return std::find(endings.begin(), endings.end(), extension) != endings.end();
}

Report read_with_assimp(const AssimpSource& source, ImportedFile& out) {
    Report report;
    Assimp::Importer importer;
    importer.SetPropertyBool(AI_CONFIG_IMPORT_FBX_PRESERVE_PIVOTS, false);
    importer.SetPropertyInteger(AI_CONFIG_PP_SBP_REMOVE, aiPrimitiveType_POINT | aiPrimitiveType_LINE);
    const std::string hint = source.extension.substr(std::min<std::size_t>(1, source.extension.size()));
    const unsigned steps = aiProcess_Triangulate | aiProcess_SortByPType | aiProcess_JoinIdenticalVertices |
                           aiProcess_ValidateDataStructure;
    const aiScene* scene = importer.ReadFileFromMemory(source.bytes.data(), source.bytes.size(), steps, hint.c_str());
    if (scene == nullptr || scene->mRootNode == nullptr) {
        report.fail(first_line(importer.GetErrorString()));
        return report;
    }
    AssimpReading reading{*scene, report, out, 1, {}, {}, {}};
    const bool fbx = source.extension == ".fbx";
    if (fbx) reading.metres = setting(*scene, "UnitScaleFactor", 1) * 0.01;
    if (!(reading.metres > 0) || !std::isfinite(reading.metres)) reading.metres = 1;
    out.scene.source = source.name;
    const double rate = setting(*scene, "CustomFrameRate", 0);
    if (rate >= 1 && rate <= 100'000) out.scene.sample_rate = rate;
    read_nodes(reading, fbx ? upright(*scene) : Affine());
    read_materials(reading, source.name);
    read_meshes(reading);
    read_looks(reading);
    read_animations(reading);
    return report;
}

} // namespace vor2::convert
