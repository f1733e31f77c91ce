#include "fuzz/host_scene.h"

#include "fuzz/input.h"
#include "fuzz/sandbox.h"
#include "headless/files/ma_reader.h"
#include "headless/files/ma_writer.h"
#include "headless/geometry/mesh_history.h"
#include "headless/geometry/mesh_limits.h"
#include "headless/graph/drivers.h"
#include "headless/script/interpreter.h"
#include "headless/script/script_work.h"
#include "headless/session.h"
#include "support/platform/hooks.h"

#include <algorithm>
#include <string_view>
#include <vector>

namespace fuzz {

using namespace headless;

Scene& quiet_scene() {
    Session& session = Session::current();
    session.set_message_sink([](MessageKind, const std::string&) {});
    VOR2_LOADER::platform::print_line_hook = [](std::string_view) {};
    install_interpreters(session); // without the variables and procedures of the input before
    // An input is to take no seconds.
    ScriptWork::most_units = 4'000'000;
    MeshLimits::primitive_points = 20'000;
    MeshLimits::divided_corners = 50'000;
    MeshLimits::made_corners = 200'000;
    session.new_scene();
    return session.scene();
}

std::string_view first_file(std::string_view text) {
    const std::size_t end = std::min(text.find('\f'), text.size());
    std::string_view rest = text.substr(std::min(end + 1, text.size()));
    for (const char* name : {"rig.ma", "deep.ma"}) {
        if (rest.empty()) break;
        const std::size_t length = std::min(rest.find('\f'), rest.size());
        put_in_sandbox(name, std::string(rest.substr(0, length)));
        rest.remove_prefix(std::min(length + 1, rest.size()));
    }
    return text.substr(0, end);
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
    for (const Unevaluated& found : find_unevaluated(scene, nodes)) (void)told(found);
}

namespace {

/// What a scene is written as; nothing when it can't be.
std::string written(const Scene& scene) {
    return write_maya_ascii(scene, sandbox() + "written.ma") ? file_in_sandbox("written.ma") : std::string();
}

// Without the lines that set the playback range: behind the one that a scene came with stands the one that holds now.
std::vector<std::string_view> sorted_lines(std::string_view text) {
    std::vector<std::string_view> lines;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size() - 1) + 1;
        const std::string_view line = text.substr(0, end);
        if (!line.starts_with("\tsetAttr \".b\" -type \"string\" \"playbackOptions")) lines.push_back(line);
        text.remove_prefix(end);
    }
    std::sort(lines.begin(), lines.end());
    return lines;
}

} // namespace

void check_writing(Scene& scene) {
    const std::string first = written(scene);
    if (first.empty()) return;
    Scene again;
    if (!read_maya_ascii_text(again, first, sandbox() + "written.ma")) wrong("a scene is written that can't be read");
    const std::string second = written(again);
    if (second.empty()) wrong("a scene is read that can't be written");
    // Nodes of the DAG stand before others in a file, so that connections may change places.
    if (second != first && sorted_lines(second) != sorted_lines(first)) {
        std::fprintf(stderr, "--- written\n%s--- read back and written\n%s", first.c_str(), second.c_str());
        wrong("a scene that was read back is another");
    }
}

} // namespace fuzz
