// A scene file of any bytes: what loads must follow the clock, copy and compare, describe itself, be checked and
// repaired, save, load again and save to the same bytes.

#include "format/geometry/scene_check.h"
#include "format/vor2.h"
#include "fuzz/input.h"
#include "fuzz/sandbox.h"

namespace {

using namespace VOR2_LOADER;

/// The bytes that a scene saves to; none when it can't be saved, for the files that its references name.
std::string saved(const VOR2& root) {
    return root.save(TEXT(u"saved.vr2")) ? fuzz::file_in_sandbox("saved.vr2") : std::string();
}

bool same(const auto& a, const auto& b) {
    if constexpr (requires { a.equals(b); }) {
        return a.equals(b);
    } else {
        return a == b;
    }
}

/// What isn't equal to itself, having a number that is none, is equal to nothing.
void compare_objects(const auto& a, const auto& b) {
    if (a.size() != b.size()) fuzz::wrong("another number of objects");
    for (u64 i = 0; i < a.size(); ++i) {
        if (!a[i] != !b[i]) fuzz::wrong("an object got lost");
        if (a[i] && same(*a[i], *a[i]) && !same(*a[i], *b[i])) fuzz::wrong("an object that isn't equal");
    }
}

/// All but weighted meshes: what skinning derives follows the pose of the moment.
void compare(const VOR2& a, const VOR2& b) {
    const auto each = [&a, &b](auto... arrays) { (compare_objects(a.*arrays, b.*arrays), ...); };
    each(&VOR2::lights, &VOR2::cameras, &VOR2::materials, &VOR2::helpers, &VOR2::bezier_spline_objects);
    each(&VOR2::rigids, &VOR2::anim_meshes, &VOR2::morph_meshes);
    each(&VOR2::light_instances, &VOR2::rigid_instances, &VOR2::weighted_mesh_instances, &VOR2::helper_instances);
    each(&VOR2::xref_objects, &VOR2::xref_speedtrees);
}

/// Touches all that a program can see.
class Counter : public RECORD_VISITOR {
public:
    u64 seen = 0;
    void boolean(std::string_view, bool) override { ++seen; }
    void signed_number(std::string_view, i32) override { ++seen; }
    void unsigned_number(std::string_view, u32) override { ++seen; }
    void real(std::string_view, f32) override { ++seen; }
    void long_real(std::string_view, f64) override { ++seen; }
    void text(std::string_view, const TEXT& value) override { seen += value.length(); }
    void tuple(std::string_view, std::span<const f32> numbers) override { seen += numbers.size(); }
    void reals(std::string_view, std::span<const f32> numbers, u32) override { seen += numbers.size(); }
    void signed_numbers(std::string_view, std::span<const i32> numbers) override { seen += numbers.size(); }
    void unsigned_numbers(std::string_view, std::span<const u32> numbers) override { seen += numbers.size(); }
    void begin_object(std::string_view, std::string_view) override { ++depth; }
    void end_object() override { --depth; }
    void absent(std::string_view) override { ++seen; }
    void begin_list(std::string_view, u64) override { ++depth; }
    void end_list() override { --depth; }
    i64 depth = 0;
};

/// Along each curve and from before its start to behind its end.
void follow_splines(const VOR2& scene) {
    const auto follow = [](const auto& splines) {
        for (const auto& spline : splines) {
            VECTOR_3 out;
            for (const f32 t : {-1.0F, 0.0F, 0.3F, 0.5F, 1.0F, 7.0F}) {
                spline.position_at(out, t);
                spline.tangent_at(out, t);
            }
            (void)spline.total_length();
        }
    };
    for (const auto& object : scene.bezier_spline_objects) {
        if (!object) continue;
        follow(object->rigid_splines);
        follow(object->anim_splines);
    }
}

/// Repaired, a scene has no problems left, and the report holds those that it had.
void check_repair(VOR2& scene) {
    const NARROW_TEXT report("report.txt");
    NARROW_TEXT problems, left;
    check_scene(scene, problems, true, &report, false, swap_y_z);
    const std::string told = fuzz::file_in_sandbox("report.txt");
    if (problems.length() > 0 && told != std::string(problems.c_str(), problems.length() + 1)) {
        fuzz::wrong("a report that isn't the problems");
    }
    check_scene(scene, left, false, nullptr, false, swap_y_z);
    if (left.length() > 0) fuzz::wrong("a repaired scene with problems");
}

/// A scene for references to find.
void provide_reference(std::string_view bytes) {
    using namespace std::string_view_literals;
    if (bytes.find("p\0l\0a\0i\0n"sv) == bytes.npos) return;
    static const std::string plain = [] {
        VOR2 root;
        root.helpers.emplace_back(new VOR2_HELPER);
        return saved(root);
    }();
    fuzz::put_in_sandbox("plain.vr2", plain);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const u8* data, std::size_t size) {
    const fuzz::Visit visit;
    provide_reference({reinterpret_cast<const char*>(data), size});
    VOR2_INPUT_BUFFER buffer(std::span<const u8>(data, size), TEXT(u"scene.vr2"));
    VOR2 root;
    if (!root.load(buffer, (size & 1) != 0)) {
        if (buffer.problem().empty()) fuzz::wrong("refused without a reason");
        root.advance(0.1F);
        return 0;
    }
    for (const f32 time : {0.0F, 0.3F, -1.0F, 1e30F}) {
        root.set_time(time);
        follow_splines(root);
    }
    for (const f32 delta : {0.1F, 5.0F, -0.2F}) root.advance(delta);
    Counter counter;
    root.describe(counter);
    if (counter.depth != 0) fuzz::wrong("a description that doesn't close");
    // Where loading leaves a scene with skinned meshes, whose vertices stand there in the file.
    if (!root.weighted_meshes.empty()) root.set_time(root.environment.time_range.start);
    VOR2 copy(root);
    compare(root, copy);
    compare_objects(root.weighted_meshes, copy.weighted_meshes);
    const std::string first = saved(root);
    if (saved(copy) != first) fuzz::wrong("a copy that saves to other bytes");
    check_repair(copy);
    copy.advance(0.1F);
    if (first.empty()) return 0;
    VOR2_INPUT_BUFFER again(std::span<const u8>(reinterpret_cast<const u8*>(first.data()), first.size()),
                            TEXT(u"scene.vr2"));
    VOR2 reloaded;
    if (!reloaded.load(again, false)) fuzz::wrong("a saved scene that doesn't load");
    compare(root, reloaded);
    if (saved(reloaded) != first) fuzz::wrong("a second save with other bytes");
    return 0;
}
