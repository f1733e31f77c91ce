// What moves fast is held to the plain formulas, bit for bit, over random scenes and hostile numbers.

#include "tests/format/format_test.h"

#include <cmath>
#include <limits>

namespace VOR2_LOADER {
namespace {

/// Numbers as scenes have them and, of `hostile` ones in a hundred, what only a damaged file holds.
class NUMBERS {
public:
    NUMBERS(unsigned seed, u32 hostile) : my_random(seed), my_hostile(hostile) {}
    u32 below(u32 limit) { return my_random() % limit; }
    f32 number() {
        constexpr f32 INF = std::numeric_limits<f32>::infinity();
        static constexpr f32 ODD[] = {0,     -0.0F, std::numeric_limits<f32>::quiet_NaN(), INF, -INF, 1e-40F,
                                      3e38F, -3e38F};
        if (below(100) < my_hostile) return ODD[below(std::size(ODD))];
        return static_cast<f32>(below(4000)) / 1000.0F - 2.0F;
    }
    VECTOR_3 vector() { return {number(), number(), number()}; }
    QUATERNION rotation() {
        const QUATERNION q{number(), number(), number(), number()};
        if (below(100) < my_hostile) return q;
        const f32 s = 1.0F / std::sqrt(q.x * q.x + q.y * q.y + q.z * q.z + q.w * q.w);
        return {q.x * s, q.y * s, q.z * s, q.w * s};
    }

private:
    std::minstd_rand my_random;
    u32 my_hostile;
};

/// The same bits, where any NaN is like any other.
bool same(f32 a, f32 b) {
    return (std::isnan(a) && std::isnan(b)) || std::bit_cast<u32>(a) == std::bit_cast<u32>(b);
}
bool same(const VECTOR_3& a, const VECTOR_3& b) {
    return same(a.x, b.x) && same(a.y, b.y) && same(a.z, b.z);
}
bool same(const MATRIX_3X4& a, const MATRIX_3X4& b) {
    return std::equal(&a.m[0][0], &a.m[0][0] + 12, &b.m[0][0], [](f32 x, f32 y) { return same(x, y); });
}

/// A cursor that walks, interval by interval.
struct PLAIN_CURSOR {
    u64 index;
    f32 fraction;

    void set_time(const std::vector<f32>& times, f32 t) {
        const u64 n = times.size();
        if (n < 2) return;
        if (t >= times[n - 1]) return place(n - 2, 1);
        if (times[0] >= t) return place(0, 0);
        const u64 from = std::min(index, n - 2);
        const bool forward = t - ((times[from + 1] - times[from]) * fraction + times[from]) >= 0;
        for (u64 i = from; i <= n - 2; forward ? ++i : --i) { // below 0 is above all
            if (!(t >= times[i] && times[i + 1] >= t)) continue;
            const f32 length = times[i + 1] - times[i];
            return place(i, length > 0 ? (t - times[i]) / length : 0);
        }
    }
    void place(u64 i, f32 f) {
        index = i;
        fraction = f;
    }
};

TEST(motion, a_cursor_ends_where_a_walk_would) {
    for (unsigned seed = 1; seed <= 600; ++seed) {
        NUMBERS numbers(seed, seed % 3 == 0 ? 8 : 0);
        std::vector<f32> times(seed % 7 == 0 ? seed % 4 : 2 + numbers.below(300));
        for (f32& time : times) time = seed % 2 == 0 ? numbers.number() : std::round(numbers.number() * 20) / 20;
        if (seed % 5 != 0) std::sort(times.begin(), times.end(), [](f32 a, f32 b) { return a < b; });
        const u32 index = numbers.below(4) == 0 ? ~0U - numbers.below(3) : numbers.below(200);
        const f32 fraction = numbers.number();
        BYTES record;
        record.words({index}).floats({fraction}).words({static_cast<u32>(times.size())});
        for (const f32 time : times) record.floats({time});
        VOR2_ANIMATABLE_FLOAT32_LINEAR track;
        load_whole(track, record.words({0}));
        PLAIN_CURSOR plain{index, fraction};
        for (int step = 0; step < 200; ++step) {
            const u32 kind = numbers.below(40);
            f32 time = track.current_time() + numbers.number() / 100;
            if (kind < 10) time = numbers.number();
            if (kind >= 10 && kind < 20 && !times.empty()) time = times[numbers.below(static_cast<u32>(times.size()))];
            if (kind == 20) time = std::numeric_limits<f32>::quiet_NaN();
            if (kind == 21) track.add_key(0, times.emplace_back(numbers.number()));
            if (kind == 22 && !times.empty()) track.key_times()[0] = times[0] = numbers.number();
            if (kind == 23) {
                VOR2_ANIMATABLE_FLOAT32_LINEAR emptied = std::move(track);
                track = emptied;
            }
            track.set_time(time);
            plain.set_time(times, time);
            ASSERT_EQ(track.cursor_index(), static_cast<u32>(plain.index)) << seed << ", step " << step << ": " << time;
            ASSERT_TRUE(same(track.cursor_fraction(), plain.fraction)) << seed << ", step " << step << ": " << time;
        }
    }
}

template<class TRACK>
OWNED<TRACK> random_track(NUMBERS& numbers, auto key) {
    auto track = make_owned<TRACK>();
    f32 time = numbers.number();
    for (u32 keys = 1 + numbers.below(9); keys > 0; --keys) track->add_key(key(), time += std::abs(numbers.number()));
    return track;
}

OWNED<VOR2_ANIMATABLE_VECTOR_3> random_vectors(NUMBERS& numbers) {
    return random_track<VOR2_ANIMATABLE_VECTOR_3_LINEAR>(numbers, [&] { return numbers.vector(); });
}

void fill(VOR2_MATRIX_HIERARCHY& hierarchy, NUMBERS& numbers, u32 count) {
    hierarchy.nodes.grow_by(count);
    for (u32 i = 0; i < count; ++i) {
        VOR2_MATRIX_NODE& node = hierarchy.nodes[i];
        node.parent_index = static_cast<i32>(numbers.below(i + 2)) - 1;
        if (numbers.below(8) > 0) node.position_track = random_vectors(numbers);
        if (numbers.below(3) == 0) node.scale_track = random_vectors(numbers);
        const QUATERNION base = numbers.rotation();
        const auto key = [&] { return numbers.below(2) == 0 ? numbers.rotation() : base; };
        if (numbers.below(4) > 0) {
            node.rotation_track = random_track<VOR2_ANIMATABLE_QUATERNION_SLERP>(numbers, key);
        } else if (numbers.below(2) == 0) {
            node.rotation_track = random_track<VOR2_ANIMATABLE_QUATERNION_LERP>(numbers, key);
        }
    }
    hierarchy.link_parents();
}

/// By the table of a rotation's matrix, column by column, and the parent on the left.
MATRIX_3X4 plain_world_matrix(const VOR2_MATRIX_NODE& node) {
    QUATERNION q = QUATERNION::identity();
    VECTOR_3 place{0, 0, 0}, scale{1, 1, 1};
    if (node.rotation_track) node.rotation_track->value(q);
    if (node.position_track) node.position_track->value(place);
    f32 local[3][4] = {
        {1 - 2 * q.y * q.y - 2 * q.z * q.z, 2 * q.x * q.y - 2 * q.w * q.z, 2 * q.x * q.z + 2 * q.w * q.y, place.x},
        {2 * q.x * q.y + 2 * q.w * q.z, 1 - 2 * q.x * q.x - 2 * q.z * q.z, 2 * q.y * q.z - 2 * q.w * q.x, place.y},
        {2 * q.x * q.z - 2 * q.w * q.y, 2 * q.y * q.z + 2 * q.w * q.x, 1 - 2 * q.x * q.x - 2 * q.y * q.y, place.z}};
    if (node.scale_track) {
        node.scale_track->value(scale);
        for (auto& row : local) {
            row[0] *= scale.x;
            row[1] *= scale.y;
            row[2] *= scale.z;
        }
    }
    MATRIX_3X4 world;
    for (int r = 0; r < 3; ++r) {
        for (int c = 0; c < 4; ++c) {
            world.m[r][c] = local[r][c];
            if (node.parent_matrix == nullptr) continue;
            const auto& parent = node.parent_matrix->m;
            world.m[r][c] = parent[r][0] * local[0][c] + parent[r][1] * local[1][c] + parent[r][2] * local[2][c];
            if (c == 3) world.m[r][c] += parent[r][3];
        }
    }
    return world;
}

TEST(motion, nodes_stand_where_the_plain_formulas_put_them) {
    for (unsigned seed = 1; seed <= 60; ++seed) {
        NUMBERS numbers(seed, seed % 3 == 0 ? 5 : 0);
        VOR2_MATRIX_HIERARCHY hierarchy;
        fill(hierarchy, numbers, 1 + numbers.below(30));
        for (int step = 0; step < 20; ++step) {
            hierarchy.set_time(numbers.number() * 3);
            for (const VOR2_MATRIX_NODE& node : hierarchy.nodes) {
                if (!node.position_track && !node.rotation_track && !node.scale_track) continue;
                ASSERT_TRUE(same(node.world_matrix, plain_world_matrix(node))) << seed << ", step " << step;
            }
        }
    }
}

VOR2_BINORMAL_TANGENT random_pair(NUMBERS& numbers) {
    return {numbers.vector(), numbers.vector()};
}

/// Vertices with any number of bones, some of which no node is, and of pairs, which a bone may lack.
void fill(VOR2_WEIGHTED_MESH& mesh, NUMBERS& numbers, u32 count, u32 nodes) {
    mesh.vertices.grow_by(count);
    for (VOR2_WEIGHTED_MESH_VERT& vertex : mesh.vertices) {
        for (u32 pairs = numbers.below(3); pairs > 0; --pairs) vertex.binormal_tangents.push_back(random_pair(numbers));
        for (u32 bones = numbers.below(6); bones > 0; --bones) {
            VOR2_BONE_WEIGHT_DATA& bone = vertex.bone_weights.emplace_back();
            bone.bone_index = numbers.below(12) == 0 ? -1 - static_cast<i32>(numbers.below(2)) * 0x7FFFFFFF
                                                     : static_cast<i32>(numbers.below(nodes + 1));
            bone.weight = numbers.number();
            bone.local_position = numbers.vector();
            bone.local_normal = numbers.vector();
            for (u32 k = numbers.below(4); k > 0; --k) bone.local_binormal_tangents.push_back(random_pair(numbers));
        }
    }
}

TEST(motion, meshes_are_skinned_to_the_bits_of_the_plain_formula) {
    for (unsigned seed = 1; seed <= 40; ++seed) {
        NUMBERS numbers(seed, seed % 3 == 0 ? 5 : 0);
        VOR2_MATRIX_HIERARCHY hierarchy;
        fill(hierarchy, numbers, 1 + numbers.below(20));
        hierarchy.set_time(numbers.number());
        VOR2_WEIGHTED_MESH mesh;
        fill(mesh, numbers, 200, static_cast<u32>(hierarchy.nodes.size()));
        VOR2_WEIGHTED_MESH plain = mesh;
        mesh.skin(hierarchy);
        for (u32 i = 0; i < plain.vertices.size(); ++i) {
            VOR2_WEIGHTED_MESH_VERT& expected = plain.vertices[i];
            const VOR2_WEIGHTED_MESH_VERT& vertex = mesh.vertices[i];
            expected.skin(hierarchy);
            ASSERT_TRUE(same(vertex.position, expected.position)) << seed << ", vertex " << i;
            ASSERT_TRUE(same(vertex.normal, expected.normal)) << seed << ", vertex " << i;
            for (u64 j = 0; j < vertex.binormal_tangents.size(); ++j) {
                const VOR2_BINORMAL_TANGENT &a = vertex.binormal_tangents[j], &b = expected.binormal_tangents[j];
                ASSERT_TRUE(same(a.binormal, b.binormal) && same(a.tangent, b.tangent)) << seed << ", vertex " << i;
            }
        }
    }
}

} // namespace
} // namespace VOR2_LOADER
