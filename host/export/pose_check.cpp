#include "host/export/pose_check.h"

#include <maya/MFnMesh.h>
#include <maya/MGlobal.h>
#include <maya/MPointArray.h>

#include <algorithm>
#include <cmath>

namespace VOR2_EXPORTER_MAYA {
namespace {

constexpr std::size_t MOST_MOMENTS = 5;
constexpr double MOST_APART = 1e-3; ///< of a mesh's size

double length_of(const VECTOR_3& v) {
    return std::hypot(static_cast<double>(v.x), static_cast<double>(v.y), static_cast<double>(v.z));
}

bool is_finite(const VECTOR_3& v) {
    return std::isfinite(v.x) && std::isfinite(v.y) && std::isfinite(v.z);
}

double size_of(const std::vector<VECTOR_3>& points) {
    VECTOR_3 low = points.front(), high = points.front();
    for (const VECTOR_3& p : points) {
        low = VECTOR_3(std::min(low.x, p.x), std::min(low.y, p.y), std::min(low.z, p.z));
        high = VECTOR_3(std::max(high.x, p.x), std::max(high.y, p.y), std::max(high.z, p.z));
    }
    return length_of(high - low);
}

/// The host's points have no place of their own where the scene's numbers aren't finite, and then nothing is said.
template<class MESH_CLASS>
double farthest(const MESH_CLASS& mesh, const MATRIX_3X4* place, const std::vector<u32>& point_of,
                const std::vector<VECTOR_3>& points) {
    double most = 0.0;
    for (u64 i = 0; i < mesh.vertices.size() && i < point_of.size(); ++i) {
        if (point_of[i] >= points.size() || !is_finite(points[point_of[i]])) continue;
        VECTOR_3 at(0.0F, 0.0F, 0.0F);
        mesh.vertices[i].get_position(at);
        const double apart = length_of((place != nullptr ? place->transform_point(at) : at) - points[point_of[i]]);
        if (!(apart <= most)) most = apart;
    }
    return most;
}

} // namespace

POSE_CHECK::POSE_CHECK(const FILE_WORLD& world, const SAMPLE_RANGE& range) : my_world(world), my_range(range) {
    const std::vector<MOMENT> all = samples_of(range);
    const std::size_t count = std::min(all.size(), MOST_MOMENTS);
    for (std::size_t i = 0; i < count; ++i) {
        my_turns.push_back(count == 1 ? 0 : i * (all.size() - 1) / (count - 1));
        my_moments.push_back(all[my_turns.back()]);
    }
}

void POSE_CHECK::watch_skin(const MDagPath& shape, unsigned int index, const std::vector<u32>& point_of) {
    watch(shape, index, point_of, true, my_skins++);
}

void POSE_CHECK::watch_morph(const MDagPath& shape, unsigned int index, const std::vector<u32>& point_of) {
    watch(shape, index, point_of, false, my_morphs++);
}

void POSE_CHECK::watch(const MDagPath& shape, unsigned int index, const std::vector<u32>& point_of, bool is_skin,
                       u64 place) {
    WATCHED& made = my_watched.emplace_back();
    made.shape = shape;
    made.top = my_world.top_of(index);
    made.is_skin = is_skin;
    made.place = place;
    made.point_of = point_of;
}

void POSE_CHECK::sample() {
    if (std::find(my_turns.begin(), my_turns.end(), my_sample++) == my_turns.end()) return;
    for (WATCHED& watched : my_watched) {
        std::vector<VECTOR_3>& out = watched.points.emplace_back();
        MPointArray points;
        if (!MFnMesh(watched.shape).getPoints(points)) continue;
        const AFFINE place = my_world.in_file(watched.top, watched.shape.inclusiveMatrix());
        for (unsigned int i = 0; i < points.length(); ++i) {
            const AFFINE::COLUMN at = place.point({points[i].x * 0.01, points[i].y * 0.01, -points[i].z * 0.01});
            out.emplace_back(static_cast<f32>(at[0]), static_cast<f32>(at[1]), static_cast<f32>(at[2]));
        }
    }
}

POSE_CHECK::WORST POSE_CHECK::worst(const WATCHED& watched, VOR2& probe) const {
    WORST out;
    for (std::size_t k = 0; k < watched.points.size(); ++k) {
        const std::vector<VECTOR_3>& points = watched.points[k];
        if (points.empty()) continue;
        probe.set_time(my_range.time(my_moments[k].number));
        double apart = 0.0;
        if (watched.is_skin) {
            apart = farthest(*probe.weighted_meshes[0], nullptr, watched.point_of, points);
        } else {
            const VOR2_MORPH_MESH& mesh = *probe.morph_meshes[0];
            apart =
                farthest(mesh, &probe.matrix_hierarchy.nodes[mesh.matrix_index].world_matrix, watched.point_of, points);
        }
        const double share = apart == 0.0 ? 0.0 : apart / size_of(points);
        if (!(share <= out.share)) out = {share, my_moments[k].frame};
    }
    return out;
}

void POSE_CHECK::tell(const VOR2& root) const {
    VOR2 probe;
    if (my_watched.empty()) return;
    probe.environment = root.environment;
    probe.matrix_hierarchy = root.matrix_hierarchy;
    probe.matrix_hierarchy.link_parents();
    for (const WATCHED& watched : my_watched) {
        probe.weighted_meshes.clear();
        probe.morph_meshes.clear();
        if (watched.is_skin) {
            probe.weighted_meshes.push_back(make_owned<VOR2_WEIGHTED_MESH>(*root.weighted_meshes[watched.place]));
            probe.prepare_weighted_meshes();
        } else {
            probe.morph_meshes.push_back(make_owned<VOR2_MORPH_MESH>(*root.morph_meshes[watched.place]));
        }
        const WORST found = worst(watched, probe);
        if (found.share <= MOST_APART) continue;
        MGlobal::displayWarning(MString("The file has ") + MFnMesh(watched.shape).name() + " up to " +
                                std::round(found.share * 1e4) / 100.0 +
                                " percent of its size away from where the host has it, at frame " + found.frame);
    }
}

} // namespace VOR2_EXPORTER_MAYA
