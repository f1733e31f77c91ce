#include "optimise/optimise.h"

#include "tests/format/format_test.h"
#include "tests/optimise/poses.h"

#include <limits>
#include <numbers>

namespace VOR2_LOADER {
namespace {

using vor2::optimise::Limits;
using vor2::optimise::optimise_keys;
using vor2::optimise::Result;

constexpr double rate = 60;

QUATERNION turn(double angle, int axis) {
    QUATERNION q(0, 0, 0, static_cast<f32>(std::cos(angle / 2)));
    (axis == 0 ? q.x : axis == 1 ? q.y : q.z) = static_cast<f32>(std::sin(angle / 2));
    return q;
}

template<class MOTION>
OWNED<VOR2_ANIMATABLE_QUATERNION> turning(int keys, double per_second, MOTION motion) {
    auto track = make_owned<VOR2_ANIMATABLE_QUATERNION_SLERP>();
    for (int k = 0; k < keys; ++k) track->add_key(motion(k / per_second), static_cast<f32>(k / per_second));
    return track;
}

OWNED<VOR2_ANIMATABLE_VECTOR_3> standing(VECTOR_3 place) {
    auto track = make_owned<VOR2_ANIMATABLE_VECTOR_3_LINEAR>();
    track->add_key(place, 0.0F);
    return track;
}

VOR2_MATRIX_NODE& add_node(VOR2& scene, int parent, VECTOR_3 place) {
    VOR2_MATRIX_NODE& node = scene.matrix_hierarchy.nodes.emplace_back();
    node.parent_index = parent;
    node.position_track = standing(place);
    return node;
}

/// A body that walks and bobs, with limbs of four joints each that swing and shake; one of them grows and shrinks, one
/// has keys at a pace of its own and turns by arcs, one blends its rotations on the chord, one goes the long way round.
VOR2 creature(int keys) {
    VOR2 scene;
    const double end = (keys - 1) / rate;
    scene.environment.time_range = {0.0F, static_cast<f32>(end)};
    VOR2_MATRIX_NODE& body = add_node(scene, -1, {0.0F, 1.0F, 0.0F});
    auto walk = make_owned<VOR2_ANIMATABLE_VECTOR_3_LINEAR>();
    for (int k = 0; k < keys; ++k) {
        const double t = k / rate;
        walk->add_key({static_cast<f32>(1.2 * t), static_cast<f32>(1 + 0.03 * std::sin(9 * t)), 0.0F},
                      static_cast<f32>(t));
    }
    body.position_track = std::move(walk);
    body.rotation_track = turning(keys, rate, [](double t) { return turn(0.2 * std::sin(2 * t), 1); });
    for (int limb = 0; limb < 4; ++limb) {
        for (int joint = 0; joint < 4; ++joint) {
            const int parent = joint == 0 ? 0 : static_cast<int>(scene.matrix_hierarchy.nodes.size()) - 1;
            VOR2_MATRIX_NODE& node = add_node(scene, parent, {0.25F, 0.0F, joint == 0 ? 0.1F * limb : 0.0F});
            const double pace = 2 + limb + 0.7 * joint;
            node.rotation_track = turning(keys, rate, [&](double t) {
                return turn(0.5 * std::sin(pace * t) + 0.02 * std::sin(11 * pace * t), joint % 3);
            });
        }
    }
    auto& nodes = scene.matrix_hierarchy.nodes;
    auto scale = make_owned<VOR2_ANIMATABLE_VECTOR_3_LINEAR>();
    for (int k = 0; k < keys; ++k) {
        const f32 s = static_cast<f32>(1 + 0.2 * std::sin(3 * k / rate));
        scale->add_key({s, 1.0F, s}, static_cast<f32>(k / rate));
    }
    nodes[2].scale_track = std::move(scale);
    nodes[6].rotation_track = turning(static_cast<int>(end * 7), 7, [](double t) { return turn(3 * std::sin(t), 2); });
    auto chord = make_owned<VOR2_ANIMATABLE_QUATERNION_LERP>();
    for (int k = 0; k < keys; ++k) chord->add_key(turn(0.01 * k, 0), static_cast<f32>(k / rate));
    nodes[10].rotation_track = std::move(chord);
    QUATERNION& flipped = nodes[15].rotation_track->key_values()[20];
    flipped = -flipped;
    scene.matrix_hierarchy.link_parents();
    return scene;
}

std::vector<double> distances_of(const Result& result) {
    std::vector<double> distances;
    for (const auto& node : result.nodes) distances.push_back(node.point_distance);
    return distances;
}

double worst_of(const Result& result) {
    return result.worst_node ? result.nodes[*result.worst_node].worst_position : 0;
}

/// The keys that an interpolation of their neighbours gives within `tolerance`, component by component: what thinning
/// does that looks at one track at a time.
template<class TRACK, class OFF>
void thin_alone(OWNED<TRACK>& track, double tolerance, OFF off) {
    if (!track || track->key_times().size() < 3) return;
    const auto& times = std::as_const(*track).key_times();
    const auto& values = std::as_const(*track).key_values();
    OWNED<TRACK> kept = TRACK::make_track(track->type_id());
    u64 from = 0;
    kept->add_key(values[0], times[0]);
    for (u64 to = 2; to < times.size(); ++to) {
        bool good = true;
        for (u64 k = from + 1; good && k < to; ++k)
            good = off(values[from], values[to], values[k], (times[k] - times[from]) / (times[to] - times[from])) <=
                   tolerance;
        if (good) continue;
        from = to - 1;
        kept->add_key(values[from], times[from]);
    }
    kept->add_key(values.back(), times.back());
    track = std::move(kept);
}

u64 thin_each_track_alone(VOR2_MATRIX_HIERARCHY& hierarchy, double tolerance) {
    const auto vector_off = [](VECTOR_3 a, VECTOR_3 b, VECTOR_3 c, f32 t) {
        return static_cast<double>((blend(a, b, t) - c).length());
    };
    const auto turn_off = [](QUATERNION a, QUATERNION b, QUATERNION c, f32 t) {
        const QUATERNION d = slerp(a, b, t);
        return 2.0 * std::hypot(std::hypot(d.x - c.x, d.y - c.y), std::hypot(d.z - c.z, d.w - c.w));
    };
    u64 keys = 0;
    for (VOR2_MATRIX_NODE& node : hierarchy.nodes) {
        thin_alone(node.position_track, tolerance, vector_off);
        thin_alone(node.rotation_track, tolerance, turn_off);
        thin_alone(node.scale_track, tolerance, vector_off);
        keys += node.position_track->key_times().size();
        if (node.rotation_track) keys += node.rotation_track->key_times().size();
        if (node.scale_track) keys += node.scale_track->key_times().size();
    }
    return keys;
}

TEST(optimise, no_point_moves_further_than_the_tolerance_at_any_time) {
    u64 most_keys = std::numeric_limits<u64>::max();
    for (const double tolerance : {1e-4, 1e-3, 1e-2, 0.3}) {
        const VOR2 original = creature(400);
        VOR2 scene(original);
        Limits limits;
        limits.position = tolerance;
        const Result result = optimise_keys(scene, limits);
        ASSERT_TRUE(result.good()) << result.problem;
        const double moved =
            furthest_move(original.matrix_hierarchy, scene.matrix_hierarchy, distances_of(result), 0, 400 / rate, 1500);
        EXPECT_LE(moved, tolerance);
        EXPECT_LE(worst_of(result), tolerance);
        EXPECT_GE(worst_of(result), moved * 0.97);    // what is told is no less than what others find
        EXPECT_GE(worst_of(result), tolerance * 0.8); // and no room is left unused
        EXPECT_LT(result.keys_after, std::min(most_keys, result.keys_before * 95 / 100));
        most_keys = result.keys_after;
    }
}

TEST(optimise, works_through_long_scenes_in_stretches) {
    const VOR2 original = creature(400);
    VOR2 whole(original), stretches(original);
    Limits limits;
    limits.position = 2e-3;
    const Result at_once = optimise_keys(whole, limits);
    limits.memory = 400'000; // some 70 samples
    const Result result = optimise_keys(stretches, limits);
    EXPECT_GT(result.keys_after, at_once.keys_after);
    EXPECT_LT(result.keys_after, at_once.keys_after * 1.1);
    EXPECT_LE(
        furthest_move(original.matrix_hierarchy, stretches.matrix_hierarchy, distances_of(result), 0, 400 / rate, 1000),
        limits.position);
}

TEST(optimise, needs_no_more_keys_than_thinning_each_track_alone_to_the_same_error) {
    const VOR2 original = creature(400);
    for (const double tolerance : {2e-4, 2e-3}) {
        VOR2 scene(original);
        Limits limits;
        limits.position = tolerance;
        const Result result = optimise_keys(scene, limits);
        double low = tolerance * 1e-3, high = tolerance * 10;
        u64 plain_keys = 0;
        for (int i = 0; i < 12; ++i) {
            const double middle = std::sqrt(low * high);
            VOR2_MATRIX_HIERARCHY plain(original.matrix_hierarchy);
            const u64 keys = thin_each_track_alone(plain, middle);
            const bool good =
                furthest_move(original.matrix_hierarchy, plain, distances_of(result), 0, 400 / rate, 500) <= tolerance;
            if (good) plain_keys = keys;
            (good ? low : high) = middle;
        }
        EXPECT_LE(result.keys_after, plain_keys);
        RecordProperty("keys_of_plain_thinning", std::to_string(plain_keys));
        RecordProperty("keys", std::to_string(result.keys_after));
    }
}

TEST(optimise, takes_away_keys_alone_and_never_the_ends_or_what_the_start_rests_on) {
    const VOR2 original = creature(120);
    VOR2 scene(original);
    scene.environment.time_range.start = 0.71F; // between two keys
    scene.matrix_hierarchy.nodes[1].rotation_track->set_time(1.0F);
    const f32 before = scene.matrix_hierarchy.nodes[1].rotation_track->current_time();
    Limits limits;
    limits.position = 0.05;
    ASSERT_TRUE(optimise_keys(scene, limits).good());
    EXPECT_NEAR(scene.matrix_hierarchy.nodes[1].rotation_track->current_time(), before, 1e-6);
    const std::vector<PLACE> a = places_at(original.matrix_hierarchy, 0.71F),
                             b = places_at(scene.matrix_hierarchy, 0.71F);
    for (std::size_t n = 0; n < a.size(); ++n) {
        EXPECT_EQ(distance(a[n].of({1, 2, 3}), b[n].of({1, 2, 3})), 0) << n;
        const auto& old_track = std::as_const(*original.matrix_hierarchy.nodes[n].position_track);
        const auto& new_track = std::as_const(*scene.matrix_hierarchy.nodes[n].position_track);
        EXPECT_EQ(new_track.key_times()[0], old_track.key_times()[0]);
        EXPECT_EQ(new_track.key_times().back(), old_track.key_times().back());
        for (u64 k = 0, at = 0; k < new_track.key_times().size(); ++k, ++at) {
            while (old_track.key_times()[at] != new_track.key_times()[k]) ASSERT_LT(++at, old_track.key_times().size());
            EXPECT_EQ(new_track.key_values()[k], old_track.key_values()[at]);
        }
    }
}

TEST(optimise, looks_at_what_turns_in_place) {
    VOR2 original;
    original.environment.time_range = {0.0F, 2.0F};
    add_node(original, -1, {0.0F, 0.0F, 0.0F}).rotation_track =
        turning(121, rate, [](double t) { return turn(std::sin(t), 1); });
    const auto keys_left = [&](double position, std::optional<double> rotation, std::optional<double> distance) {
        VOR2 scene(original);
        EXPECT_TRUE(optimise_keys(scene, {position, rotation, distance}).good());
        return scene.matrix_hierarchy.nodes[0].rotation_track->key_times().size();
    };
    EXPECT_EQ(keys_left(0.01, {}, 0.0), 2U); // the node itself never moves
    EXPECT_GT(keys_left(0.01, {}, {}), 3U);
    EXPECT_GT(keys_left(0.01, {}, 10.0), keys_left(0.01, {}, 1.0));

    VOR2 scene(original);
    const double most = 0.1 * std::numbers::pi / 180;
    const Result result = optimise_keys(scene, {.position = 0.01, .rotation = most, .point_distance = 0.0});
    EXPECT_GT(result.nodes[0].worst_rotation, most * 0.5);
    std::mt19937 random(3);
    for (int i = 0; i < 2000; ++i) {
        const double time = std::uniform_real_distribution<double>(0, 2)(random);
        const auto a = axes_of(*original.matrix_hierarchy.nodes[0].rotation_track, time)[0];
        const auto b = axes_of(*scene.matrix_hierarchy.nodes[0].rotation_track, time)[0];
        ASSERT_LE(2 * std::asin(distance(a, b) / 2), most);
    }

    // A vertex far away counts, whatever distance is stated.
    VOR2_RIGID& sign = *original.rigids.emplace_back(make_owned<VOR2_RIGID>());
    sign.vertices.emplace_back().position = {0.0F, 0.0F, 20.0F};
    EXPECT_EQ(keys_left(0.01, {}, 0.0), keys_left(0.01, {}, 20.0));
}

TEST(optimise, keeps_skinned_vertices_in_place) {
    VOR2 original = creature(200);
    VOR2_WEIGHTED_MESH& mesh = *original.weighted_meshes.emplace_back(make_owned<VOR2_WEIGHTED_MESH>());
    for (i32 bone = 0; bone < 17; ++bone) {
        VOR2_WEIGHTED_MESH_VERT& vertex = mesh.vertices.emplace_back();
        vertex.rest_position = vertex.position = {0.3F * static_cast<f32>(bone), 1.5F, -0.4F};
        for (const i32 other : {bone, (bone + 5) % 17}) {
            VOR2_BONE_WEIGHT_DATA& weight = vertex.bone_weights.emplace_back();
            weight.bone_index = other;
            weight.weight = 0.5F;
        }
    }
    original.prepare_weighted_meshes();
    VOR2 scene(original);
    ASSERT_TRUE(optimise_keys(scene, {1e-3, {}, 0.0}).good());
    scene.prepare_weighted_meshes();
    for (f32 time = 0; time < 3.3F; time += 0.0137F) {
        original.set_time(time);
        scene.set_time(time);
        for (u64 v = 0; v < 17; ++v) {
            const VECTOR_3 a = original.weighted_meshes[0]->vertices[v].position;
            const VECTOR_3 b = scene.weighted_meshes[0]->vertices[v].position;
            ASSERT_LE((a - b).length(), 1e-3F + 2e-6F) << v << " at " << time;
        }
    }
}

TEST(optimise, leaves_whole_what_it_cannot_judge) {
    constexpr f32 nan = std::numeric_limits<f32>::quiet_NaN();
    VOR2 scene = creature(60);
    auto& nodes = scene.matrix_hierarchy.nodes;
    nodes[3].rotation_track->key_values()[7].x = nan; // not finite, nor is anything below
    nodes[5].rotation_track->key_times()[9] = 0.01F;  // not ascending
    nodes[9].rotation_track->key_values().pop_back(); // out of step
    nodes[12].position_track.reset();                 // without tracks: it stands where it is
    nodes[12].rotation_track.reset();
    nodes[14].parent_index = 15; // behind the node
    scene.matrix_hierarchy.link_parents();
    const Result result = optimise_keys(scene, {1.0, {}, {}});
    ASSERT_TRUE(result.good()) << result.problem;
    for (const u64 node : {3U, 5U, 9U}) EXPECT_EQ(nodes[node].rotation_track->key_times().size(), 60U) << node;
    EXPECT_EQ(nodes[4].rotation_track->key_times().size() < 60U, true);
    EXPECT_EQ(nodes[13].rotation_track->key_times().size() < 60U, true);

    VOR2 still;
    add_node(still, -1, {1.0F, 2.0F, 3.0F}).rotation_track = turning(9, rate, [](double) { return turn(1, 0); });
    ASSERT_TRUE(optimise_keys(still, {1e-9, {}, {}}).good());
    EXPECT_EQ(still.matrix_hierarchy.nodes[0].rotation_track->key_times().size(), 1U);
    VOR2 empty;
    EXPECT_TRUE(optimise_keys(empty, {1e-4, {}, {}}).good());

    VOR2 crowd;
    crowd.matrix_hierarchy.nodes.grow_by(vor2::optimise::most_nodes + 1);
    EXPECT_NE(optimise_keys(crowd, {1e-4, {}, {}}).problem.find("65537 nodes"), std::string::npos);
}

} // namespace
} // namespace VOR2_LOADER
