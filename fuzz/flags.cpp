// Words of a command line, one a line. Those of a verb of the tool are read and not run. Those of a command of the
// plug-in are run twice: as they stand, in a scene without a node to export, and, for an export, in a scene with
// some and with a range that bounds the work.

#include "fuzz/host_scene.h"
#include "fuzz/input.h"
#include "fuzz/sandbox.h"
#include "headless/session.h"
#include "host/plugin/plugin.h"
#include "tools/vor2/cli/command_line.h"

namespace {

std::vector<std::string> split(std::string_view text) {
    std::vector<std::string> words;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        words.emplace_back(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return words;
}

void run_command(headless::Session& session, const std::string& name, std::vector<std::string> words) {
    (void)session.load_plugin("vor2", initializePlugin, uninitializePlugin);
    (void)session.run_command(name, words);
    (void)fuzz::quiet_scene();
    (void)session.load_plugin("vor2", initializePlugin, uninitializePlugin);
    if (name != "VOR2Export") return;
    headless::Scene& scene = session.scene();
    const auto hips = scene.create_node("joint", "ns:hips");
    (void)scene.create_node("joint", "knee", *hips);
    (void)scene.create_node("transform", "box");
    for (const char* word : {"-st", "1", "-end", "3", "-sAt", "24"}) words.emplace_back(word);
    (void)session.run_command(name, words);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const fuzz::Visit visit;
    (void)fuzz::quiet_scene();
    std::vector<std::string> words = split({reinterpret_cast<const char*>(data), size});
    if (words.empty()) return 0;
    const std::string name = words.front();
    words.erase(words.begin());
    for (const std::unique_ptr<tool::Verb>& verb : tool::make_verbs()) {
        tool::CommonOptions common;
        if (verb->name() == name) (void)tool::read_words(*verb, common, words);
    }
    headless::Session& session = headless::Session::current();
    if (name == "VOR2Export" || name == "VOR2Import") run_command(session, name, words);
    return 0;
}
