// Independent roots on independent threads, all at once; under the thread sanitizer this finds what they share.

#include "format/geometry/scene_check.h"
#include "tests/format/every_record.h"
#include "tests/format/format_test.h"

#include <thread>

namespace VOR2_LOADER {
namespace {

constexpr u32 THREADS = 4;

/// The file that a root is saved to and loads from again.
std::vector<u8> saved_and_loaded(const VOR2& root) {
    const TEMPORARY_FILE file;
    EXPECT_TRUE(root.save(file.name()));
    EXPECT_TRUE(VOR2().load(file.name(), false));
    return file.read();
}

/// A scene with every record and two meshes to be skinned, as bytes.
std::vector<u8> scene_bytes() {
    VOR2 scene;
    EXPECT_TRUE(load_scene(scene, EVERY_RECORD{CURRENT_VERSION, CURRENT_VERSION}.file().data));
    scene.weighted_meshes.push_back(scene.weighted_meshes[0]);
    return saved_scene(scene);
}

/// The clipped corners of a triangle that lies a little further along for each `place`.
std::vector<f32> clipped(u32 place) {
    std::vector<f32> corners;
    clip_begin();
    const f32 x = static_cast<f32>(place) * 0.125F;
    for (const VECTOR_3 point : {VECTOR_3{x, 0, 0}, VECTOR_3{x + 2, 1, 0}, VECTOR_3{x, 2, 2}})
        EXPECT_TRUE(clip_add_vertex({VOR2_RIGID_VERT(), point}));
    VOR2_TRI_CLIPPER_RIGID_VERT* vertex = nullptr;
    static_cast<void>(clip_to_rectangle(0, 0, 1, 1, vertex));
    for (; vertex != nullptr; vertex = vertex->next) {
        const VECTOR_3 point = vertex->clip_position;
        corners.insert(corners.end(), {point.x, point.y, point.z});
    }
    return corners;
}

struct RESULT {
    std::vector<u8> saved;
    std::string report;
    std::vector<f32> numbers;
    friend bool operator==(const RESULT&, const RESULT&) = default;
};

/// Everything that one can do with a root, to one of its own.
RESULT work(const std::vector<u8>& bytes, u32 place) {
    RESULT result;
    VOR2 scene;
    EXPECT_TRUE(load_scene(scene, bytes, true));
    for (u32 i = 0; i < 20; ++i) {
        VOR2 copy(scene);
        copy.set_time(static_cast<f32>(i) * 0.1F);
        copy.advance(static_cast<f32>(place) * 0.01F);
        for (const auto& mesh : copy.weighted_meshes) result.numbers.push_back(mesh->vertices[0].position.x);
        VECTOR_3 point;
        copy.bezier_spline_objects[0]->anim_splines[0].position_at(point, 0.3F);
        result.numbers.push_back(point.y);
        const std::vector<f32> corners = clipped(place);
        result.numbers.insert(result.numbers.end(), corners.begin(), corners.end());
        scene = copy;
    }
    NARROW_TEXT report;
    check_scene(scene, report, false, nullptr, false, [](VECTOR_3 position) { return position; });
    result.report = report.view();
    result.saved = saved_and_loaded(scene);
    EXPECT_FALSE(VOR2().load(TEXT(u"/nowhere/at/all.vr2"), false));
    return result;
}

TEST(threads, independent_roots_share_nothing) {
    const std::vector<u8> bytes = scene_bytes();
    std::vector<RESULT> alone, together(THREADS);
    for (u32 i = 0; i < THREADS; ++i) alone.push_back(work(bytes, i));
    std::vector<std::thread> threads;
    for (u32 i = 0; i < THREADS; ++i) threads.emplace_back([&, i] { together[i] = work(bytes, i); });
    for (std::thread& thread : threads) thread.join();
    for (u32 i = 0; i < THREADS; ++i) EXPECT_TRUE(alone[i] == together[i]) << i;
    EXPECT_FALSE(alone[0].numbers == alone[1].numbers) << "each thread has work of its own";
}

TEST(threads, one_root_is_read_by_many) {
    VOR2 scene;
    ASSERT_TRUE(load_scene(scene, scene_bytes(), true));
    const std::vector<u8> bytes = saved_scene(scene);
    std::vector<std::vector<u8>> saved(THREADS);
    std::vector<std::thread> threads;
    const VOR2& shared = scene;
    for (u32 i = 0; i < THREADS; ++i) {
        threads.emplace_back([&, i] {
            const VOR2 copy(shared);
            saved[i] = saved_and_loaded(i % 2 == 0 ? copy : shared);
        });
    }
    for (std::thread& thread : threads) thread.join();
    for (const std::vector<u8>& each : saved) EXPECT_TRUE(each == bytes);
}

} // namespace
} // namespace VOR2_LOADER
