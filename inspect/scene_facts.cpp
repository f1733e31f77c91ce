#include "inspect/scene_facts.h"

#include "format/core/record_visitor.h"
#include "support/text/unicode.h"

#include <algorithm>

namespace vor2::inspect {
namespace {

using namespace VOR2_LOADER;

/// Counts tracks and keys wherever they lie, and the objects in each list of the root.
class Counter final : public RECORD_VISITOR {
public:
    explicit Counter(SceneFacts& facts) : facts_(facts) {}

    void boolean(std::string_view, bool) override {}
    void signed_number(std::string_view, i32) override {}
    void unsigned_number(std::string_view, u32) override {}
    void real(std::string_view, f32) override {}
    void long_real(std::string_view, f64) override {}
    void text(std::string_view, const TEXT&) override {}
    void tuple(std::string_view, std::span<const f32>) override {}
    void reals(std::string_view name, std::span<const f32> numbers, u32) override {
        if (name != "key_times") return;
        ++facts_.tracks;
        facts_.keys += numbers.size();
    }
    void signed_numbers(std::string_view, std::span<const i32>) override {}
    void unsigned_numbers(std::string_view, std::span<const u32>) override {}
    void begin_object(std::string_view, std::string_view) override { ++depth_; }
    void end_object() override { --depth_; }
    void absent(std::string_view) override {}
    void begin_list(std::string_view name, u64 count) override {
        if (depth_++ == 0 && count > 0) facts_.objects.emplace_back(name, count);
    }
    void end_list() override { --depth_; }

private:
    SceneFacts& facts_;
    int depth_ = 0;
};

template<class TRACK>
std::optional<u64> keys_of(const OWNED<TRACK>& track) {
    if (!track) return {};
    return track->key_times().size();
}

} // namespace

std::string readable(const TEXT& text) {
    std::string utf8 = to_readable_utf8(text.view());
    // A surrogate without its partner comes as three bytes ED A0..BF xx, which no reader of UTF-8 takes.
    for (std::size_t at = 0; (at = utf8.find('\xED', at)) != std::string::npos; at += 3) {
        if (static_cast<unsigned char>(utf8[at + 1]) >= 0xA0) utf8.replace(at, 3, "\uFFFD");
    }
    return utf8;
}

ExportRecord parse_export_record(const std::string& file_info) {
    ExportRecord record;
    for (std::size_t start = 0; start < file_info.size();) {
        const std::size_t end = std::min(file_info.find("\r\n", start), file_info.size());
        const std::string line = file_info.substr(start, end - start);
        start = end + 2;
        const std::size_t tab = line.find('\t');
        const std::string label = line.substr(0, tab);
        const std::string value = tab == std::string::npos ? std::string() : line.substr(tab + 1);
        if (label == "USERNAME:") record.user = value;
        if (label == "EXPORTED:") record.exported_at = value;
        if (label == "VOR_NAME:") record.exported_as = value;
        if (label == "MAYA_FILE:") record.source = value;
        if (label == "FORCED EXPORT WITH ERRORS!!") record.forced = true;
    }
    record.recognised = !record.exported_at.empty();
    return record;
}

SceneFacts gather_facts(const std::string& file, const VOR2& scene, std::span<const u8> bytes) {
    SceneFacts facts;
    facts.file = file;
    facts.bytes = bytes.size();
    facts.version = scene.inf.version;
    facts.creator = readable(scene.inf.creator);
    facts.file_info = readable(scene.inf.file_info);
    facts.record = parse_export_record(facts.file_info);
    facts.start = scene.environment.time_range.start;
    facts.end = scene.environment.time_range.end;
    facts.sample_rate = scene.environment.sample_rate;
    for (const VOR2_MATRIX_NODE& node : scene.matrix_hierarchy.nodes) {
        facts.nodes.push_back({readable(node.name), node.parent_index, keys_of(node.position_track),
                               keys_of(node.rotation_track), keys_of(node.scale_track)});
    }
    Counter counter(facts);
    scene.describe(counter);
    facts.chunks = measure_chunks(bytes);
    return facts;
}

} // namespace vor2::inspect
