#include "tools/vor2/cli/clips.h"

#include "tools/vor2/cli/messages.h"
#include "tools/vor2/cli/syntax.h"
#include "tools/vor2/cli/whole_file.h"

#include <nlohmann/json.hpp>

#include <cmath>
#include <set>

namespace tool {
namespace {

using Json = nlohmann::ordered_json;

bool is_range(const Json& pair) {
    return pair.is_array() && pair.size() == 2 && pair[0].is_number() && pair[1].is_number();
}

/// False for what is no list of clips.
bool take(const Json& json, std::vector<Clip>& out) {
    for (const auto& [name, value] : json.items()) {
        if (json.is_object()) {
            if (!is_range(value)) return false;
            out.push_back({name, value[0], value[1]});
        } else {
            const bool whole = value.is_object() && value.contains("name") && value["name"].is_string() &&
                               value.contains("start") && value["start"].is_number() && value.contains("stop") &&
                               value["stop"].is_number();
            if (!whole) return false;
            out.push_back({value["name"], value["start"], value["stop"]});
        }
    }
    return json.is_object() || json.is_array();
}

/// What a MEL line gives; empty where it can't be run.
std::vector<std::string> ask(headless::Session& session, const std::string& line) {
    const headless::Result<headless::CommandResult> result = session.run_mel(line);
    return result ? result->pieces() : std::vector<std::string>();
}

} // namespace

std::string parse_clip(const std::string& text, std::vector<Clip>& out) {
    const std::size_t colon = text.rfind(':');
    const std::string range = colon == std::string::npos ? "" : text.substr(colon + 1);
    // A frame may be negative.
    const std::size_t dash = range.find('-', 1);
    const auto start = dash == std::string::npos ? std::nullopt : parse_number(range.substr(0, dash));
    const auto stop = dash == std::string::npos ? std::nullopt : parse_number(range.substr(dash + 1));
    if (!start || !stop) return "'" + text + "' is no NAME:START-STOP";
    out.push_back({text.substr(0, colon), *start, *stop});
    return {};
}

bool read_clips(const std::string& file, std::vector<Clip>& out) {
    std::string why;
    const auto bytes = read_whole(file, why);
    if (bytes) {
        const Json json = Json::parse(bytes->begin(), bytes->end(), nullptr, false);
        if (json.is_discarded()) {
            why = "isn't JSON";
        } else if (!take(json, out)) {
            why = "is no list of clips: each is an object with name, start and stop";
        } else {
            why = problem_with(out);
        }
    }
    if (!why.empty()) problem(file, why);
    return why.empty();
}

std::vector<Clip> clips_of_scene(headless::Session& session) {
    std::vector<Clip> out;
    for (const std::string& node : ask(session, "ls -type gameFbxExporter")) {
        for (const std::string& index : ask(session, "getAttr -multiIndices " + node + ".ac")) {
            std::string clip = "getAttr ";
            clip.append(node).append(".ac[").append(index).append("].");
            const std::vector<std::string> name = ask(session, clip + "acn"), start = ask(session, clip + "acs"),
                                           stop = ask(session, clip + "ace");
            if (name.size() != 1 || start.size() != 1 || stop.size() != 1) continue;
            const auto first = parse_number(start[0]), last = parse_number(stop[0]);
            if (first && last && !name[0].empty()) out.push_back({name[0], *first, *last});
        }
    }
    return out;
}

std::string problem_with(const std::vector<Clip>& clips) {
    std::set<std::string> names;
    for (const Clip& clip : clips) {
        const bool can_be_file = !clip.name.empty() && clip.name.find_first_of("/\\:*?\"<>|") == std::string::npos &&
                                 clip.name != "." && clip.name != "..";
        if (!can_be_file) return "the clip '" + clip.name + "' has a name that no file can have";
        if (!names.insert(clip.name).second) return "there are two clips " + clip.name;
        if (!(clip.stop >= clip.start)) return "the clip " + clip.name + " ends before it begins";
    }
    return {};
}

} // namespace tool
