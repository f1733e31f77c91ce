#include "host/export/skin.h"

#include <maya/MFnMesh.h>

#include <algorithm>
#include <map>

namespace VOR2_EXPORTER_MAYA {
namespace {

MPlug element(const MPlug& array, unsigned int index) {
    return array.isNull() ? MPlug() : array.elementByLogicalIndex(index);
}

constexpr u32 NO_PLACE = 0xFFFFFFFF; ///< of an influence without weights so far

/// The weights as the host has them, by point, each with the influence's index in the host.
std::vector<std::vector<SKIN_WEIGHT>> host_weights(const MObject& cluster, u32 point_count) {
    std::vector<std::vector<SKIN_WEIGHT>> out(point_count);
    const MPlug list = find_plug(cluster, "weightList");
    for (const unsigned int point : indices_of(list)) {
        if (point >= point_count) break;
        const MPlug of_point = list.elementByLogicalIndex(point).child(0);
        for (const unsigned int influence : indices_of(of_point)) {
            const auto weight = static_cast<f32>(of_point.elementByLogicalIndex(influence).asDouble());
            if (weight != 0.0F) out[point].push_back({influence, weight});
        }
    }
    return out;
}

} // namespace

MMatrix SKIN::geometry_matrix() const {
    return matrix_of(find_plug(deformer.node, "geomMatrix"));
}

MMatrix SKIN::matrix(std::size_t influence) const {
    const SKIN_INFLUENCE& of = influences[influence];
    const MMatrix geometry = geometry_matrix();
    return geometry * matrix_of(of.inverse_bind) * matrix_of(of.matrix) * geometry.inverse();
}

SKIN read_skin(const DEFORMER& deformer, u32 point_count) {
    SKIN out;
    out.deformer = deformer;
    out.weights = host_weights(deformer.node, point_count);
    out.left_over.assign(point_count, 0.0F);
    const double envelope = find_plug(deformer.node, "envelope").asDouble();
    const bool normalizes = find_plug(deformer.node, "normalizeWeights").asInt() == 2;
    const MPlug matrices = find_plug(deformer.node, "matrix"), binds = find_plug(deformer.node, "bindPreMatrix");
    std::map<u32, u32> places;
    for (const unsigned int index : indices_of(matrices)) places.emplace(index, NO_PLACE);
    for (u32 point = 0; point < point_count; ++point) {
        std::vector<SKIN_WEIGHT>& weights = out.weights[point];
        std::erase_if(weights, [&](const SKIN_WEIGHT& weight) { return !places.contains(weight.influence); });
        double total = 0.0;
        for (const SKIN_WEIGHT& weight : weights) total += static_cast<double>(weight.weight);
        const double share = envelope * (normalizes && total != 0.0 ? 1.0 / total : 1.0);
        out.left_over[point] = weights.empty() ? 1.0F : static_cast<f32>(1.0 - envelope);
        for (SKIN_WEIGHT& weight : weights) {
            u32& place = places[weight.influence];
            if (place == NO_PLACE) {
                place = static_cast<u32>(out.influences.size());
                SKIN_INFLUENCE& made = out.influences.emplace_back();
                made.matrix = element(matrices, weight.influence);
                made.inverse_bind = element(binds, weight.influence);
                const MPlug source = source_of(made.matrix);
                if (!source.isNull() && source.node().hasFn(MFn::kDagNode))
                    MDagPath::getAPathTo(source.node(), made.bone);
            }
            weight.influence = place;
            weight.weight = static_cast<f32>(static_cast<double>(weight.weight) * share);
        }
    }
    return out;
}

std::vector<MDagPath> bones_of(const MDagPath& shape) {
    std::vector<MDagPath> out;
    for (const DEFORMER& deformer : deformers_of(shape)) {
        if (deformer.node.apiType() != MFn::kSkinClusterFilter) continue;
        const int points = MFnMesh(shape).numVertices();
        for (const SKIN_INFLUENCE& influence : read_skin(deformer, static_cast<u32>(std::max(points, 0))).influences) {
            if (influence.bone.isValid() && influence.bone.length() > 0) out.push_back(influence.bone);
        }
        break;
    }
    return out;
}

} // namespace VOR2_EXPORTER_MAYA
