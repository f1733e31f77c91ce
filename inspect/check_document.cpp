#include "inspect/check_document.h"

#include "format/geometry/scene_check.h"
#include "inspect/strict_check.h"

#include <algorithm>

namespace vor2::inspect {
namespace {

constexpr std::size_t most_positions = 5;

/// What the library's report says of one mesh.
struct MeshBlock {
    std::string name;
    std::vector<std::string> channels;
    std::vector<std::string> positions; ///< of vertices with a bad normal
};

/// The report's lines by mesh. They begin "Object Name: NAME. Max mapping channel: " or
/// "Object Name: NAME - has a vertex at the following position (X , Y , Z) ".
std::vector<MeshBlock> blocks_of(std::string_view report) {
    static constexpr std::string_view start = "Object Name: ", channel = ". Max mapping channel: ",
                                      normal = " - has a vertex at the following position ";
    std::vector<MeshBlock> blocks;
    for (std::size_t at = 0; at < report.size();) {
        const std::size_t end = std::min(report.find("\r\n", at), report.size());
        const std::string_view line = report.substr(at, end - at);
        at = end + 2;
        if (!line.starts_with(start)) continue;
        // A name may hold either mark; the line's own is the last.
        const auto place = [line](std::string_view mark) { return line.rfind(mark) + 1; };
        const bool is_channel = place(channel) > place(normal);
        const std::string_view mark = is_channel ? channel : normal;
        if (place(mark) == 0) continue;
        const std::size_t split = place(mark) - 1;
        const std::string_view name = line.substr(start.size(), split - start.size());
        const std::string_view rest = line.substr(split + mark.size());
        if (blocks.empty() || blocks.back().name != name) blocks.push_back({std::string(name), {}, {}});
        if (is_channel) {
            blocks.back().channels.emplace_back(rest);
        } else {
            blocks.back().positions.emplace_back(rest.substr(0, rest.find(')') + 1));
        }
    }
    return blocks;
}

void put_list(JsonWriter& json, std::string_view key, const std::vector<std::string>& texts) {
    json.key(key);
    json.begin_array();
    for (const std::string& text : texts) json.text(text);
    json.end_array();
}

} // namespace

VOR2_LOADER::NARROW_TEXT report_of(VOR2_LOADER::VOR2& scene) {
    using namespace VOR2_LOADER;
    NARROW_TEXT report;
    // A copy of the hierarchy is moved in its stead.
    VOR2_MATRIX_HIERARCHY other(scene.matrix_hierarchy);
    std::swap(scene.matrix_hierarchy, other);
    scene.matrix_hierarchy.set_time(scene.environment.time_range.start);
    check_scene(scene, report, false, nullptr, false, [](VECTOR_3 position) { return position; });
    std::swap(scene.matrix_hierarchy, other);
    return report;
}

std::uint64_t write_check_text(const CheckedScene& checked, TextOut& out) {
    std::uint64_t found = 0;
    for (const MeshBlock& block : blocks_of(checked.report)) {
        found += block.channels.size() + block.positions.size();
        out.put(checked.file + ": mesh \"" + block.name + "\"\n");
        for (const std::string& channel : block.channels) out.put("  mapping channel " + channel + "\n");
        if (block.positions.empty()) continue;
        out.put("  bad normals: " + std::to_string(block.positions.size()) + ", at");
        for (std::size_t i = 0; i < std::min(block.positions.size(), most_positions); ++i)
            out.put(" " + block.positions[i]);
        out.put(block.positions.size() > most_positions ? " ...\n" : "\n");
    }
    if (checked.strict) {
        found += check_strictly(checked.scene, checked.file_name, [&](const Finding& finding) {
            out.put(checked.file + ": " + finding.record);
            if (!finding.name.empty()) out.put(" " + quoted(finding.name));
            out.put(" " + finding.field + ": " + finding.value + ": " + finding.complaint + "\n");
        });
    }
    return found;
}

std::uint64_t write_check_json(const CheckedScene& checked, JsonWriter::Layout layout, TextOut& out) {
    JsonWriter json(out, layout);
    std::uint64_t found = 0;
    json.begin_object();
    json.text("file", checked.file);
    json.key("meshes");
    json.begin_array();
    for (const MeshBlock& block : blocks_of(checked.report)) {
        found += block.channels.size() + block.positions.size();
        json.begin_object();
        json.text("name", block.name);
        put_list(json, "mapping_channels", block.channels);
        put_list(json, "bad_normals_at", block.positions);
        json.end_object();
    }
    json.end_array();
    if (checked.strict) {
        json.key("findings");
        json.begin_array();
        found += check_strictly(checked.scene, checked.file_name, [&json](const Finding& finding) {
            json.begin_object();
            json.text("record", finding.record);
            json.text("name", finding.name);
            json.text("field", finding.field);
            json.text("value", finding.value);
            json.text("complaint", finding.complaint);
            json.end_object();
        });
        json.end_array();
    }
    json.number("count", found);
    json.end_object();
    json.finish();
    return found;
}

} // namespace vor2::inspect
