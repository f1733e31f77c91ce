#include "host/export/skin_binding.h"

#include "format/tracks/tracks.h"
#include "host/export/host_text.h"
#include "host/export/properties.h"

#include <maya/MFnMesh.h>
#include <maya/MGlobal.h>

#include <algorithm>
#include <cmath>

namespace VOR2_EXPORTER_MAYA {
namespace {

/// How far off, by the size of a mesh, what single precision leaves may be.
constexpr double CLOSE = 1e-5;

AFFINE::COLUMN wide(const VECTOR_3& v) {
    return {static_cast<double>(v.x), static_cast<double>(v.y), static_cast<double>(v.z)};
}
VECTOR_3 narrow(const AFFINE::COLUMN& c) {
    return VECTOR_3(static_cast<f32>(c[0]), static_cast<f32>(c[1]), static_cast<f32>(c[2]));
}
VECTOR_3 unit(const AFFINE::COLUMN& c) {
    const double length = std::sqrt(c[0] * c[0] + c[1] * c[1] + c[2] * c[2]);
    return length > 0.0 ? narrow({c[0] / length, c[1] / length, c[2] / length}) : VECTOR_3(0.0F, 1.0F, 0.0F);
}

void grow(AFFINE::COLUMN& low, AFFINE::COLUMN& high, const AFFINE::COLUMN& p, bool is_first) {
    for (std::size_t r = 0; r < 3; ++r) {
        low[r] = is_first ? p[r] : std::min(low[r], p[r]);
        high[r] = is_first ? p[r] : std::max(high[r], p[r]);
    }
}

/// Puts a key before all others.
template<class TRACK, class VALUE>
void lead_in(TRACK& track, const VALUE& value, f32 time) {
    const auto times = track.key_times();
    const auto values = track.key_values();
    track.key_times().clear();
    track.key_values().clear();
    track.add_key(value, time);
    for (u64 i = 0; i < times.size(); ++i) track.add_key(values[i], times[i]);
}

} // namespace

bool SKIN_BINDING::add(const MDagPath& shape, unsigned int index, const DEFORMER& deformer, WHOLE_MESH mesh) {
    MESH_IN_WORK work;
    work.shape = shape;
    work.index = index;
    work.top = my_world.top_of(index);
    work.skin = read_skin(deformer, mesh.point_count);
    work.mesh = std::move(mesh);
    for (const SKIN_INFLUENCE& influence : work.skin.influences) {
        INFLUENCE& made = work.influences.emplace_back();
        const bool has_bone = influence.bone.isValid() && influence.bone.length() > 0;
        if (!has_bone) continue; // the inserted root carries it
        made.node = my_world.index_of(influence.bone);
        if (made.node >= 0) continue;
        MGlobal::displayError(MString("The mesh ") + MFnMesh(shape).name() +
                              " has a bone that isn't exported: " + influence.bone.partialPathName());
        return false;
    }
    work.influences.emplace_back().node = static_cast<i32>(index);
    work.to_bound = my_world.in_file(work.top, work.skin.geometry_matrix() * my_world.path(work.top).exclusiveMatrix());
    work.from_host = inverse(work.to_bound);
    for (const VOR2_RIGID_VERT& vertex : work.mesh.rigid.vertices)
        work.points.push_back(work.to_bound.point(wide(vertex.position)));
    measure(work);
    for (const INFLUENCE& influence : work.influences) my_nodes[influence.node];
    my_meshes.push_back(std::move(work));
    return true;
}

void SKIN_BINDING::measure(MESH_IN_WORK& work) const {
    AFFINE::COLUMN low{}, high{};
    for (INFLUENCE& influence : work.influences) influence.is_used = false;
    const auto see = [](INFLUENCE& influence, const AFFINE::COLUMN& point) {
        grow(influence.low, influence.high, point, !influence.is_used);
        influence.is_used = true;
    };
    for (std::size_t i = 0; i < work.points.size(); ++i) {
        const u32 point = work.mesh.point_of[i];
        grow(low, high, work.points[i], i == 0);
        for (const SKIN_WEIGHT& weight : work.skin.weights[point])
            see(work.influences[weight.influence], work.points[i]);
        if (work.skin.left_over[point] != 0.0F) see(work.influences.back(), work.points[i]);
    }
    work.size = std::hypot(high[0] - low[0], high[1] - low[1], high[2] - low[2]);
}

void SKIN_BINDING::sample() {
    for (auto& [node, places] : my_nodes)
        places.push_back(my_root.matrix_hierarchy.nodes[static_cast<u64>(node)].world_matrix);
    for (MESH_IN_WORK& work : my_meshes) {
        const MMatrix place = work.shape.inclusiveMatrix();
        for (std::size_t i = 0; i < work.influences.size(); ++i) {
            const MMatrix matrix = i < work.skin.influences.size() ? work.skin.matrix(i) * place : place;
            work.influences[i].maps.push_back(my_world.in_file(work.top, matrix) * work.from_host);
        }
    }
}

AFFINE SKIN_BINDING::node_at(i32 node, std::size_t sample) const {
    return AFFINE(my_nodes.at(node)[sample]);
}

bool SKIN_BINDING::is_bound_as_it_starts(const MESH_IN_WORK& work) const {
    const INFLUENCE* first = nullptr;
    for (const INFLUENCE& influence : work.influences) {
        if (!influence.is_used) continue;
        if (first == nullptr) first = &influence;
        const double apart = distance_between(first->maps[0], influence.maps[0], influence.low, influence.high);
        if (!(apart <= CLOSE * work.size)) return false;
    }
    return true;
}

/// From then on the mesh is bound where `by` brings it.
void SKIN_BINDING::move_bound(MESH_IN_WORK& work, const AFFINE& by) const {
    const AFFINE back = inverse(by);
    work.to_bound = by * work.to_bound;
    for (AFFINE::COLUMN& point : work.points) point = by.point(point);
    for (INFLUENCE& influence : work.influences) {
        for (AFFINE& map : influence.maps) map = map * back;
    }
    measure(work);
}

/// Keys before the first for all nodes that don't stand as bound. The first mesh that a bone moves says how it is
/// bound.
void SKIN_BINDING::add_lead_in(f32 time) {
    auto& nodes = my_root.matrix_hierarchy.nodes;
    std::map<i32, AFFINE> wanted;
    for (const MESH_IN_WORK& work : my_meshes) {
        for (const INFLUENCE& influence : work.influences) {
            const AFFINE bound = rigid_part(inverse(influence.maps[0]) * node_at(influence.node, 0));
            if (influence.is_used && influence.node > 0 && bound.is_finite()) wanted.try_emplace(influence.node, bound);
        }
    }
    std::vector<AFFINE> now(nodes.size()), bound(nodes.size());
    for (u64 i = 0; i < nodes.size(); ++i) now[i] = AFFINE(nodes[i].world_matrix);
    for (u64 i = 0; i < nodes.size(); ++i) {
        const i32 parent = nodes[i].parent_index;
        const auto above = static_cast<std::size_t>(parent);
        const AFFINE local = parent < 0 ? now[i] : inverse(now[above]) * now[i];
        const auto want = wanted.find(static_cast<i32>(i));
        bound[i] = want != wanted.end() ? want->second : parent < 0 ? local : bound[above] * local;
        if (want == wanted.end()) continue;
        const AFFINE placed = parent < 0 ? bound[i] : inverse(bound[above]) * bound[i];
        if (!placed.is_finite()) continue;
        const PLACEMENT placement = placement_of(placed);
        lead_in(*nodes[i].position_track, placement.position, time);
        lead_in(*nodes[i].rotation_track, placement.outer, time);
        nodes[i].rotation_track->make_continuous();
    }
}

/// Gives an influence that its node doesn't carry as the host moves it a node that does.
void SKIN_BINDING::follow(MESH_IN_WORK& work) {
    for (INFLUENCE& influence : work.influences) {
        if (!influence.is_used) continue;
        const auto node = static_cast<u64>(influence.node);
        const std::size_t count = influence.maps.size();
        AFFINE bound(my_bound[node]);
        bool is_carried = true, is_finite = bound.is_finite();
        for (std::size_t k = 0; k < count; ++k) {
            const AFFINE place = node_at(influence.node, k);
            is_finite = is_finite && place.is_finite();
            if (!is_finite) break;
            const double apart =
                distance_between(place * inverse(bound), influence.maps[k], influence.low, influence.high);
            is_carried = is_carried && apart <= CLOSE * work.size;
        }
        if (is_finite && is_carried) continue;
        // Without a place of its own to go by it stands under the inserted root.
        const i32 parent = is_finite ? influence.node : 0;
        if (!is_finite) bound = AFFINE();
        std::vector<f32> times;
        std::vector<AFFINE> maps;
        if (my_leads_in) {
            times.push_back(my_bound_time);
            maps.push_back(is_finite ? AFFINE() : inverse(AFFINE(my_bound[0])));
        }
        for (std::size_t k = 0; k < count; ++k) {
            times.push_back(my_range.time_of(k));
            const AFFINE above = is_finite ? node_at(parent, k) : AFFINE(my_bound[0]);
            maps.push_back(inverse(above) * influence.maps[k] * bound);
        }
        const TEXT name = my_root.matrix_hierarchy.nodes[node].name;
        influence.node = static_cast<i32>(add_moving_nodes(my_root.matrix_hierarchy, times, maps, name, parent));
    }
}

void SKIN_BINDING::add_mesh(MESH_IN_WORK& work) {
    OWNED<VOR2_WEIGHTED_MESH> made = make_owned<VOR2_WEIGHTED_MESH>();
    take_shape(work.mesh, *made);
    made->matrix_index = work.index;
    if (my_leads_in) add_number(made->extended_properties, "first_time", static_cast<double>(my_range.start_time()));
    const AFFINE turn = work.to_bound.of_normals();
    for (u64 i = 0; i < made->vertices.size(); ++i) {
        VOR2_WEIGHTED_MESH_VERT& vertex = made->vertices[i];
        const u32 point = work.mesh.point_of[i];
        vertex.position = vertex.rest_position = narrow(work.points[i]);
        vertex.normal = vertex.rest_normal = unit(turn.direction(wide(vertex.normal)));
        const auto give = [&](const INFLUENCE& influence, f32 weight) {
            VOR2_BONE_WEIGHT_DATA& bone = vertex.bone_weights.emplace_back();
            bone.bone_index = influence.node;
            bone.weight = weight;
        };
        for (const SKIN_WEIGHT& weight : work.skin.weights[point])
            give(work.influences[weight.influence], weight.weight);
        if (work.skin.left_over[point] != 0.0F) give(work.influences.back(), work.skin.left_over[point]);
    }
    my_root.weighted_meshes.push_back(std::move(made));
}

void SKIN_BINDING::finish() {
    if (my_meshes.empty()) return;
    auto& hierarchy = my_root.matrix_hierarchy;
    for (const MESH_IN_WORK& work : my_meshes) my_leads_in = my_leads_in || !is_bound_as_it_starts(work);
    my_bound_time = my_range.start_time();
    hierarchy.link_parents();
    hierarchy.set_time(my_bound_time);
    if (my_leads_in) {
        my_bound_time = my_range.time(my_range.start_sample - 1.0);
        add_lead_in(my_bound_time);
        my_root.environment.time_range.start = my_bound_time;
        hierarchy.set_time(my_bound_time);
        MGlobal::displayInfo(
            "The skins are bound in another pose than the first: the file's time range begins one sample "
            "before it, with that pose");
    } else {
        for (MESH_IN_WORK& work : my_meshes) {
            const auto first = std::find_if(work.influences.begin(), work.influences.end(),
                                            [](const INFLUENCE& influence) { return influence.is_used; });
            if (first != work.influences.end()) move_bound(work, first->maps[0]);
        }
    }
    for (u64 i = 0; i < hierarchy.nodes.size(); ++i) my_bound.push_back(hierarchy.nodes[i].world_matrix);
    for (MESH_IN_WORK& work : my_meshes) follow(work);
    hierarchy.link_parents();
    for (MESH_IN_WORK& work : my_meshes) add_mesh(work);
}

} // namespace VOR2_EXPORTER_MAYA
