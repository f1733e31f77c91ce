// The road from a scene to a file: Maya ASCII of any text, exported with its meshes at a few samples. What comes
// out loads, and saves to the same bytes.

#include "format/vor2.h"
#include "fuzz/host_scene.h"
#include "fuzz/input.h"
#include "fuzz/sandbox.h"
#include "headless/files/ma_reader.h"
#include "headless/session.h"
#include "host/export/mesh_export.h"
#include "host/plugin/plugin.h"
#include "support/platform/hooks.h"

namespace {

using namespace VOR2_LOADER;

void check_file(const std::string& bytes) {
    const std::span<const u8> span(reinterpret_cast<const u8*>(bytes.data()), bytes.size());
    VOR2_INPUT_BUFFER buffer(span, TEXT(u"out.vr2"));
    VOR2 root;
    if (!root.load(buffer, false)) fuzz::wrong("an exported file that doesn't load");
    if (!root.save(TEXT(u"again.vr2"))) fuzz::wrong("an exported file that can't be saved again");
    if (fuzz::file_in_sandbox("again.vr2") != bytes) fuzz::wrong("an exported file that is saved to other bytes");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const u8* data, std::size_t size) {
    const fuzz::Visit visit;
    headless::Scene& scene = fuzz::quiet_scene();
    headless::Session& session = headless::Session::current();
    platform::ask_yes_no_hook = [](const char*, const char*) { return platform::ANSWER::NO; };
    const std::string_view text = fuzz::first_file({reinterpret_cast<const char*>(data), size});
    if (!headless::read_maya_ascii_text(scene, text, fuzz::sandbox() + "scene.ma")) return 0;
    (void)session.load_plugin("vor2", initializePlugin, uninitializePlugin);
    // Also what one asks for beside the meshes, by turns.
    VOR2_EXPORTER_MAYA::mesh_options() = {
        .meshes = true, .include_bones = size % 2 != 0, .skin_and_morph = size % 4 > 1, .moving_points = size % 8 > 3};
    scene.selection.clear();
    for (headless::Node* node : scene.world().children()) scene.selection.add(scene.item(*node));
    // A sample a frame, out and in: of frames that last an hour, any other rate may make a million.
    const headless::TimeUnit unit = scene.time_unit;
    const std::string rate = std::to_string(unit.per_second);
    const std::vector<std::string> words{"-f", "out.vr2", "-st", "1", "-end", "4", "-sAt", rate};
    (void)session.run_command("VOR2Export", words);
    const std::string bytes = fuzz::file_in_sandbox("out.vr2");
    if (bytes.empty()) return 0;
    check_file(bytes);
    session.new_scene();
    session.scene().time_unit = unit;
    (void)session.run_command("VOR2Import", {"-f", "out.vr2"});
    fuzz::check_writing(session.scene());
    return 0;
}
