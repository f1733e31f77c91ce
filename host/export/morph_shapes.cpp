#include "host/export/morph_shapes.h"

#include "format/tracks/tracks.h"
#include "host/export/host_text.h"
#include "host/export/telling_keys.h"

#include <maya/MFloatVector.h>
#include <maya/MFnComponentListData.h>
#include <maya/MFnDependencyNode.h>
#include <maya/MFnPointArrayData.h>
#include <maya/MFnSingleIndexedComponent.h>
#include <maya/MGlobal.h>
#include <maya/MIntArray.h>
#include <maya/MPointArray.h>

#include <cmath>
#include <map>

namespace VOR2_EXPORTER_MAYA {
namespace {

/// The weight at which a step counts in full is told by its index.
double weight_of_item(unsigned int index) {
    return (static_cast<double>(index) - 5000.0) / 1000.0;
}

/// The numbers of an array that is 1 where nothing is set, by index.
std::map<unsigned int, double> painted(const MPlug& array) {
    std::map<unsigned int, double> out;
    for (const unsigned int index : indices_of(array)) out[index] = array.elementByLogicalIndex(index).asDouble();
    return out;
}

double at_or_one(const std::map<unsigned int, double>& numbers, unsigned int index) {
    const auto found = numbers.find(index);
    return found == numbers.end() ? 1.0 : found->second;
}

} // namespace

std::vector<double> shares_of_steps(const std::vector<double>& at, double weight) {
    std::vector<double> out(at.size(), 0.0);
    if (at.empty()) return out;
    std::size_t next = 0;
    while (next + 1 < at.size() && at[next] < weight) ++next;
    if (next == 0) {
        out[0] = at[0] == 0.0 ? 0.0 : weight / at[0];
        return out;
    }
    out[next] = (weight - at[next - 1]) / (at[next] - at[next - 1]);
    out[next - 1] = 1.0 - out[next];
    return out;
}

MORPH_SHAPE::MORPH_SHAPE(const std::vector<DEFORMER>& deformers, u32 matrix_index, WHOLE_MESH mesh)
    : my_matrix_index(matrix_index), my_mesh(std::move(mesh)) {
    VOR2_MORPH_MESH shape;
    take_shape(my_mesh, shape);
    my_vertices = std::move(shape.vertices);
    std::vector<std::vector<u32>> vertices_of(my_mesh.point_count);
    for (u32 i = 0; i < my_mesh.point_of.size(); ++i) vertices_of[my_mesh.point_of[i]].push_back(i);
    for (auto deformer = deformers.rbegin(); deformer != deformers.rend(); ++deformer) {
        if (deformer->node.apiType() != MFn::kBlendShape) continue;
        const MPlug groups = child_named(
            find_plug(deformer->node, "inputTarget").elementByLogicalIndex(deformer->geometry), "inputTargetGroup");
        for (const unsigned int index : indices_of(groups))
            add_group(*deformer, index, groups.elementByLogicalIndex(index), vertices_of);
    }
}

MORPH_SHAPE::OFFSETS MORPH_SHAPE::offsets_of(const DEFORMER& deformer, const MPlug& item) const {
    OFFSETS out;
    const MPlug shape = child_named(item, "inputGeomTarget");
    if (!source_of(shape).isNull()) {
        const MObject target = shape.asMObject(), base = input_mesh(deformer);
        MPointArray to, from;
        if (target.isNull() || base.isNull() || !MFnMesh(target).getPoints(to) || !MFnMesh(base).getPoints(from) ||
            to.length() != from.length()) {
            MGlobal::displayWarning(MString("A target with other points than its mesh is left out: ") + shape.name());
            return out;
        }
        for (unsigned int i = 0; i < to.length(); ++i) {
            const MPoint by(to[i].x - from[i].x, to[i].y - from[i].y, to[i].z - from[i].z);
            if (by.x != 0.0 || by.y != 0.0 || by.z != 0.0) out.emplace_back(i, vertex_position(by));
        }
        return out;
    }
    const MObject points = child_named(item, "inputPointsTarget").asMObject();
    const MObject components = child_named(item, "inputComponentsTarget").asMObject();
    if (points.isNull() || components.isNull()) return out;
    MPointArray offsets;
    const MFnComponentListData list(components);
    unsigned int next = 0;
    if (!MFnPointArrayData(points).copyTo(offsets)) return out;
    for (unsigned int part = 0; part < list.length(); ++part) {
        const MObject run = list[part];
        MIntArray elements;
        if (run.isNull()) continue;
        const MFnSingleIndexedComponent component(run);
        if (component.isComplete()) {
            for (int i = 0; i < static_cast<int>(my_mesh.point_count); ++i) elements.append(i);
        } else if (!component.getElements(elements)) {
            continue;
        }
        for (unsigned int i = 0; i < elements.length() && next < offsets.length(); ++i, ++next)
            out.emplace_back(static_cast<u32>(elements[i]), vertex_position(offsets[next]));
    }
    return out;
}

void MORPH_SHAPE::add_group(const DEFORMER& deformer, unsigned int index, const MPlug& group,
                            const std::vector<std::vector<u32>>& vertices_of) {
    GROUP made;
    made.weight = find_plug(deformer.node, "weight").elementByLogicalIndex(index);
    made.envelope = find_plug(deformer.node, "envelope");
    const MPlug visibility = find_plug(deformer.node, "targetVisibility");
    if (!visibility.isNull()) made.visibility = visibility.elementByLogicalIndex(index);
    made.first = static_cast<u32>(my_names.size());
    const MString alias = made.weight.partialName(false, true, true, true, false, true);
    const std::map<unsigned int, double> of_points = painted(child_named(group, "targetWeights"));
    const std::map<unsigned int, double> of_base = painted(
        child_named(find_plug(deformer.node, "inputTarget").elementByLogicalIndex(deformer.geometry), "baseWeights"));
    const MPlug items = child_named(group, "inputTargetItem");
    const std::vector<unsigned int> steps = indices_of(items);
    for (const unsigned int step : steps) {
        const OFFSETS offsets = offsets_of(deformer, items.elementByLogicalIndex(step));
        if (offsets.empty() && steps.size() == 1 &&
            source_of(child_named(items.elementByLogicalIndex(step), "inputGeomTarget")).isNull())
            continue; // a target that was never made
        const auto target = static_cast<i32>(my_names.size());
        const double at = weight_of_item(step);
        MString name = alias;
        if (steps.size() > 1) name += MString("_") + std::lround(at * 100.0);
        my_names.push_back(to_text(name));
        my_weights.emplace_back();
        made.at.push_back(at);
        for (const auto& [point, offset] : offsets) {
            if (point >= vertices_of.size()) continue;
            const auto share = static_cast<f32>(at_or_one(of_points, point) * at_or_one(of_base, point));
            for (const u32 vertex : vertices_of[point]) {
                VOR2_TARGET_VERT& entry = my_vertices[vertex].target_verts.emplace_back();
                entry.offset = offset * share;
                entry.target_index = target;
            }
        }
    }
    if (!made.at.empty()) my_groups.push_back(std::move(made));
}

void MORPH_SHAPE::sample() {
    for (const GROUP& group : my_groups) {
        const bool is_seen = group.visibility.isNull() || group.visibility.asBool();
        const double envelope = is_seen ? group.envelope.asDouble() : 0.0;
        const std::vector<double> shares = shares_of_steps(group.at, group.weight.asDouble());
        for (std::size_t i = 0; i < shares.size(); ++i)
            my_weights[group.first + i].push_back(static_cast<f32>(shares[i] * envelope));
    }
}

void MORPH_SHAPE::finish(VOR2& root, const SAMPLE_RANGE& range) {
    auto made = make_owned<VOR2_MORPH_MESH>();
    take_shape(my_mesh, *made);
    made->vertices = std::move(my_vertices);
    made->matrix_index = my_matrix_index;
    for (std::size_t target = 0; target < my_names.size(); ++target) {
        auto& entry = made->morph_targets.emplace_back();
        entry.name = my_names[target];
        entry.track = make_owned<VOR2_ANIMATABLE_FLOAT32_LINEAR>();
        const std::vector<f32>& weights = my_weights[target];
        add_telling_keys(*entry.track, range, weights.size(), [&](std::size_t k) -> const f32& { return weights[k]; });
    }
    made->set_time(range.start_time());
    root.morph_meshes.push_back(std::move(made));
}

} // namespace VOR2_EXPORTER_MAYA
