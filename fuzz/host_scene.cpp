#include "fuzz/host_scene.h"

#include "fuzz/input.h"
#include "fuzz/sandbox.h"
#include "headless/files/ma_reader.h"
#include "headless/files/ma_writer.h"
#include "headless/geometry/mesh_history.h"
#include "headless/script/interpreter.h"
#include "headless/script/script_work.h"
#include "headless/session.h"
#include "support/platform/hooks.h"

namespace fuzz {

using namespace headless;

Scene& quiet_scene() {
    Session& session = Session::current();
    session.set_message_sink([](MessageKind, const std::string&) {});
    VOR2_LOADER::platform::print_line_hook = [](std::string_view) {};
    install_interpreters(session);      // without the variables and procedures of the input before
    ScriptWork::most_units = 4'000'000; // an input is to take no seconds
    session.new_scene();
    return session.scene();
}

void look_at(Scene& scene) {
    const std::vector<Node*> nodes = scene.nodes();
    for (const double time : {0.0, 1.0 / 24, 0.7, -3.0, 1e6}) {
        scene.set_current_time(time);
        for (Node* node : nodes) {
            for (const auto& [key, source] : node->inputs()) (void)scene.evaluate({node, key});
            if (!node->type().is_dag()) continue;
            (void)scene.world_matrix(*node);
            (void)mesh_of(scene, *node);
        }
    }
    for (const Node* node : nodes) {
        const Result<Node*> found = scene.find_node(scene.unique_name_of(*node));
        if (!found || *found != node) wrong("a unique name that leads elsewhere");
    }
    (void)scene.take_evaluation_errors();
    (void)scene.unevaluated_drivers();
}

void check_writing(Scene& scene) {
    if (!write_maya_ascii(scene, sandbox() + "first.ma")) return;
    const std::string first = file_in_sandbox("first.ma");
    Scene again;
    if (!read_maya_ascii_text(again, first, sandbox() + "first.ma")) wrong("a scene is written that can't be read");
    if (!write_maya_ascii(again, sandbox() + "second.ma")) wrong("a scene is read that can't be written");
    if (file_in_sandbox("second.ma") != first) wrong("a scene that was read back is another");
}

} // namespace fuzz
