#include "inspect/diff_document.h"

namespace vor2::inspect {
namespace {

void write_line(const Difference& difference, TextOut& out) {
    out.put(difference.record);
    if (difference.index) out.put("[" + std::to_string(*difference.index) + "]");
    if (!difference.name.empty()) out.put(" " + quoted(difference.name));
    if (!difference.field.empty()) out.put(" " + difference.field);
    out.put(": " + difference.first + " | " + difference.second + "\n");
}

void write_json(const Difference& difference, JsonWriter& json) {
    json.begin_object();
    json.text("record", difference.record);
    json.key("index");
    if (difference.index) {
        json.number(std::uint64_t{*difference.index});
    } else {
        json.null();
    }
    json.text("name", difference.name);
    json.text("field", difference.field);
    json.text("a", difference.first);
    json.text("b", difference.second);
    json.end_object();
}

} // namespace

std::uint64_t write_diff_text(const ScenePair& scenes, const DiffOptions& options, TextOut& out) {
    return compare_scenes(scenes.first, scenes.second, options, [&out](const Difference& d) { write_line(d, out); });
}

std::uint64_t write_diff_json(const ScenePair& scenes, const DiffOptions& options, TextOut& out) {
    JsonWriter json(out, JsonWriter::Layout::indented);
    json.begin_object();
    json.text("a", scenes.first_name);
    json.text("b", scenes.second_name);
    json.key("differences");
    json.begin_array();
    const std::uint64_t count =
        compare_scenes(scenes.first, scenes.second, options, [&json](const Difference& d) { write_json(d, json); });
    json.end_array();
    json.number("count", count);
    json.end_object();
    json.finish();
    return count;
}

} // namespace vor2::inspect
