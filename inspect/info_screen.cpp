#include "inspect/info_screen.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace vor2::inspect {
namespace {

constexpr std::size_t label_width = 12;
constexpr std::size_t name_width = 46;
constexpr std::size_t number_width = 10;
/// Below this depth rows of the tree stand no further to the right.
constexpr std::size_t deepest_branch = 16;

/// With a comma between thousands.
std::string grouped(std::uint64_t number) {
    std::string digits = std::to_string(number);
    for (std::size_t place = digits.size(); place > 3;) digits.insert(place -= 3, ",");
    return digits;
}

/// Without what could steer a terminal.
std::string printable(const std::string& text) {
    std::string clean;
    for (const char c : text) clean += static_cast<unsigned char>(c) < 0x20 || c == 0x7F ? ' ' : c;
    return clean;
}

std::size_t letters_in(std::string_view utf8) {
    return static_cast<std::size_t>(std::count_if(
        utf8.begin(), utf8.end(), [](char c) { return (static_cast<unsigned char>(c) & 0xC0U) != 0x80U; }));
}

std::string padded(std::string text, std::size_t width) {
    const std::size_t letters = letters_in(text);
    return text.append(width > letters ? width - letters : 0, ' ');
}

std::string right(const std::string& text, std::size_t width) {
    const std::size_t letters = letters_in(text);
    return std::string(width > letters ? width - letters : 0, ' ') + text;
}

std::string rounded(double number, int decimals) {
    if (!std::isfinite(number)) return shortest(number);
    char text[400];
    (void)std::snprintf(text, sizeof text, "%.*f", decimals, number);
    std::string trimmed = text;
    if (decimals > 0) trimmed.erase(trimmed.find_last_not_of('0') + 1);
    if (trimmed.back() == '.') trimmed.pop_back();
    return trimmed;
}

/// "24/11/2026,19:05:10" with the day first, as 2026-11-24 19:05:10 UTC.
std::string readable_time(const std::string& exported_at) {
    unsigned day = 0, month = 0, year = 0, hour = 0, minute = 0, second = 0;
    constexpr const char* form = "%2u/%2u/%4u,%2u:%2u:%2u";
    // NOLINTNEXTLINE(cert-err34-c): so few digits fit
    const int read = std::sscanf(exported_at.c_str(), form, &day, &month, &year, &hour, &minute, &second);
    if (read != 6) return exported_at;
    char text[80];
    (void)std::snprintf(text, sizeof text, "%04u-%02u-%02u %02u:%02u:%02u UTC", year, month, day, hour, minute, second);
    return text;
}

std::string size_text(std::uint64_t bytes) {
    if (bytes < 10'000) return grouped(bytes) + " bytes";
    const double kilo = static_cast<double>(bytes) / 1000;
    const std::string short_form = kilo < 10'000 ? rounded(kilo, 1) + " kB" : rounded(kilo / 1000, 1) + " MB";
    return short_form + " (" + grouped(bytes) + " bytes)";
}

class Screen {
public:
    explicit Screen(TextOut& out) : out_(out) {}

    void heading(const std::string& text) {
        out_.put(printable(text));
        out_.put('\n');
    }
    void fact(std::string label, const std::string& value) {
        std::string text = printable(value);
        text.erase(text.find_last_not_of(' ') + 1);
        if (!text.empty()) out_.put("  " + padded(std::move(label), label_width) + text + "\n");
    }
    /// A row of a table: a name and numbers under each other.
    void row(const std::string& name, const std::vector<std::string>& cells) {
        out_.put("  " + padded(name, name_width));
        for (const std::string& cell : cells) out_.put(right(cell, number_width));
        out_.put('\n');
    }
    void blank() { out_.put('\n'); }

private:
    TextOut& out_;
};

std::string time_text(const SceneFacts& facts) {
    const double length = double{facts.end} - double{facts.start};
    std::string text = rounded(facts.start, 4) + " s to " + rounded(facts.end, 4) + " s";
    if (!(facts.sample_rate > 0)) return text;
    text += ", " + rounded(facts.sample_rate, 3) + " samples a second";
    const double samples = length * facts.sample_rate + 1;
    if (samples >= 1 && samples < 1e9)
        text += " (" + grouped(static_cast<std::uint64_t>(std::llround(samples))) + " samples)";
    return text;
}

std::string contents_text(const SceneFacts& facts) {
    std::string text = grouped(facts.nodes.size()) + (facts.nodes.size() == 1 ? " node" : " nodes");
    for (const auto& [name, count] : facts.objects) {
        std::string words = name;
        std::replace(words.begin(), words.end(), '_', ' ');
        text += ", " + grouped(count) + " " + words;
    }
    return text;
}

void write_record(const SceneFacts& facts, Screen& screen) {
    const ExportRecord& record = facts.record;
    if (!record.recognised) {
        screen.fact("Notes", facts.file_info);
        return;
    }
    screen.fact("Exported", readable_time(record.exported_at) + (record.user.empty() ? "" : " by " + record.user));
    if (record.forced) screen.fact("", "the export went on in spite of problems");
    screen.fact("From", record.source.empty() ? "an untitled scene" : record.source);
    screen.fact("As", record.exported_as);
}

/// Rows of the tree from the top, children under their parents and in the file's order.
class TreeRows {
public:
    TreeRows(const SceneFacts& facts, std::size_t most, Screen& screen) : facts_(facts), most_(most), screen_(screen) {
        children_.resize(facts.nodes.size());
        for (std::size_t i = facts.nodes.size(); i > 0; --i) {
            const int parent = facts.nodes[i - 1].parent;
            // A parent stands before its children; any other index leaves a node at the top.
            const bool has_parent = parent >= 0 && static_cast<std::size_t>(parent) < i - 1;
            (has_parent ? children_[static_cast<std::size_t>(parent)] : open_).push_back(i - 1);
        }
        depths_.assign(open_.size(), 0);
    }
    void write() {
        std::size_t shown = 0;
        for (; !open_.empty() && shown < most_; ++shown) {
            const std::size_t node = open_.back();
            const std::size_t depth = depths_.back();
            open_.pop_back();
            depths_.pop_back();
            write_row(facts_.nodes[node], depth);
            open_.insert(open_.end(), children_[node].begin(), children_[node].end());
            depths_.insert(depths_.end(), children_[node].size(), depth + 1);
        }
        if (shown < facts_.nodes.size()) {
            screen_.row("... and " + grouped(facts_.nodes.size() - shown) + " more (--all shows them)", {});
        }
    }

private:
    static std::string cell(const std::optional<std::uint64_t>& keys) { return keys ? grouped(*keys) : "-"; }
    void write_row(const NodeFacts& node, std::size_t depth) {
        const std::size_t shift = std::min(depth, deepest_branch);
        std::string name = std::string(2 * shift, ' ') + printable(node.name);
        if (depth > deepest_branch) name += " (level " + std::to_string(depth) + ")";
        screen_.row(name, {cell(node.position_keys), cell(node.rotation_keys), cell(node.scale_keys)});
    }

    const SceneFacts& facts_;
    std::size_t most_;
    Screen& screen_;
    std::vector<std::vector<std::size_t>> children_; ///< of each node, the last first
    std::vector<std::size_t> open_, depths_;         ///< nodes still to come, the next one last
};

void write_sizes(const SceneFacts& facts, Screen& screen) {
    const auto share = [&facts](std::uint64_t bytes) {
        return rounded(100.0 * static_cast<double>(bytes) /
                           static_cast<double>(std::max<std::uint64_t>(facts.bytes, 1)),
                       1) +
               " %";
    };
    screen.row("Size by record", {"records", "bytes", "share"});
    for (const ChunkSize& kind : facts.chunks.kinds) {
        screen.row("  " + std::string(kind.name), {grouped(kind.count), grouped(kind.bytes), share(kind.bytes)});
    }
    screen.row("  outside of records", {"", grouped(facts.chunks.bytes_in_none), share(facts.chunks.bytes_in_none)});
}

void write_keys(JsonWriter& json, std::string_view name, const std::optional<std::uint64_t>& keys) {
    json.key(name);
    if (keys) {
        json.number(*keys);
    } else {
        json.null();
    }
}

void write_record_json(const SceneFacts& facts, JsonWriter& json) {
    const std::pair<std::string_view, const std::string*> texts[] = {{"creator", &facts.creator},
                                                                     {"file_info", &facts.file_info},
                                                                     {"user", &facts.record.user},
                                                                     {"exported_at", &facts.record.exported_at},
                                                                     {"exported_as", &facts.record.exported_as},
                                                                     {"source", &facts.record.source}};
    for (const auto& [name, value] : texts) {
        json.text(name, *value);
    }
    json.boolean("forced", facts.record.forced);
}

void write_nodes_json(const SceneFacts& facts, JsonWriter& json) {
    json.key("nodes");
    json.begin_array();
    for (const NodeFacts& node : facts.nodes) {
        json.begin_object();
        json.text("name", node.name);
        json.number("parent", std::int64_t{node.parent});
        write_keys(json, "position_keys", node.position_keys);
        write_keys(json, "rotation_keys", node.rotation_keys);
        write_keys(json, "scale_keys", node.scale_keys);
        json.end_object();
    }
    json.end_array();
}

void write_chunks_json(const SceneFacts& facts, JsonWriter& json) {
    json.key("records");
    json.begin_array();
    for (const ChunkSize& kind : facts.chunks.kinds) {
        json.begin_object();
        json.number("chunk_id", std::int64_t{kind.chunk_id});
        json.text("name", kind.name);
        json.number("count", kind.count);
        json.number("bytes", kind.bytes);
        json.end_object();
    }
    json.end_array();
}

} // namespace

void write_info_screen(const SceneFacts& facts, std::size_t most_nodes, TextOut& out) {
    Screen screen(out);
    screen.heading(facts.file);
    screen.fact("Format", "version " + rounded(facts.version, 2) + ", " + size_text(facts.bytes));
    screen.fact("Creator", facts.creator);
    write_record(facts, screen);
    screen.fact("Time", time_text(facts));
    screen.fact("Contents", contents_text(facts));
    screen.fact("Animation", grouped(facts.keys) + " keys in " + grouped(facts.tracks) + " tracks");
    screen.blank();
    if (!facts.nodes.empty()) {
        screen.row("Nodes, with keys of", {"position", "rotation", "scale"});
        TreeRows(facts, most_nodes, screen).write();
        screen.blank();
    }
    write_sizes(facts, screen);
}

void write_info_json(const SceneFacts& facts, TextOut& out) {
    JsonWriter json(out, JsonWriter::Layout::line);
    json.begin_object();
    json.text("file", facts.file);
    json.number("bytes", facts.bytes);
    json.number("version", facts.version);
    write_record_json(facts, json);
    json.key("time_range");
    json.begin_array();
    json.number(facts.start);
    json.number(facts.end);
    json.end_array();
    json.number("sample_rate", facts.sample_rate);
    json.key("counts");
    json.begin_object();
    json.number("nodes", std::uint64_t{facts.nodes.size()});
    for (const auto& [name, count] : facts.objects) {
        json.number(name, count);
    }
    json.number("tracks", facts.tracks);
    json.number("keys", facts.keys);
    json.end_object();
    write_nodes_json(facts, json);
    write_chunks_json(facts, json);
    json.end_object();
    json.finish();
}

} // namespace vor2::inspect
