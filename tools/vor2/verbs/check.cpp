#include "format/geometry/scene_check.h"
#include "tools/vor2/jobs.h"
#include "tools/vor2/json_writer.h"
#include "tools/vor2/messages.h"
#include "tools/vor2/output_set.h"
#include "tools/vor2/scene_file.h"
#include "tools/vor2/strict_check.h"
#include "tools/vor2/verb.h"

#include <vector>

namespace tool {
namespace {

using namespace VOR2_LOADER;

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

VECTOR_3 as_stored(VECTOR_3 position) {
    return position;
}

class CheckVerb final : public Verb {
public:
    std::string_view name() const override { return "check"; }
    std::string_view summary() const override { return "check scenes for what would be wrong in use"; }
    std::string_view description() const override {
        return "Looks for UVW coordinates and normals that aren't finite, as an export does before it saves, and "
               "prints a block for each mesh. Exits with 1 when there are problems.\n\n"
               "--fix saves the scene with such numbers replaced by random ones, and the scenes that it refers to as "
               "'vor2 upgrade' does. --strict also looks for indices that name nothing, parents behind their "
               "children, keys out of order or step, rotations that aren't of unit length, weights that don't add up "
               "to 1, mapping channels that a vertex lacks, and missing references; these are told and not repaired.";
    }
    std::vector<std::string> examples() const override {
        return {"vor2 check hall.vr2", "vor2 check *.vr2 --strict --json",
                "vor2 check hall.vr2 --fix mended.vr2 --report hall.txt"};
    }
    void describe(Syntax& syntax) override {
        syntax.required_files("FILE", "FILE...", "the scenes to check", files_);
        syntax.file("--fix", "OUT.vr2", "save the repaired scene; for one file", fixed_);
        syntax.allow_outside(allow_outside_);
        syntax.file("--report", "TXT", "write the report of the export's check, where there is something to report",
                    report_);
        syntax.flag("--strict", "also find what is wrong beyond numbers that aren't finite", strict_);
        syntax.json(json_);
        syntax.jobs(jobs_);
    }
    std::string check() const override {
        if (files_.size() > 1 && !fixed_.empty()) return "--fix: works on one file";
        if (files_.size() > 1 && !report_.empty()) return "--report: works on one file";
        return "";
    }
    int run() override {
        return run_for_each(files_, jobs_, "checking", [this](std::size_t i) { return check_file(files_[i]); });
    }

private:
    int check_file(const std::string& file) {
        VOR2 scene;
        if (!load_scene(scene, file)) return exit_refused;
        NARROW_TEXT report;
        // Positions are told in the world at the start of the scene; what is saved keeps its cursors.
        const VOR2_MATRIX_HIERARCHY as_loaded(scene.matrix_hierarchy);
        scene.matrix_hierarchy.set_time(scene.environment.time_range.start);
        check_scene(scene, report, false, nullptr, false, as_stored);
        scene.matrix_hierarchy = as_loaded;
        const std::vector<MeshBlock> blocks = blocks_of(report.view());
        TextOut out(stdout);
        const std::uint64_t found = json_ ? print_json(scene, file, blocks, out) : print_text(scene, file, blocks, out);
        bool good = out.finish() && found == 0;
        if (!report_.empty() && report.length() > 0) good = write_report(report) && good;
        if (!fixed_.empty()) {
            leave_out_missing_references(scene, file);
            check_scene(scene, report, true, nullptr, false, as_stored);
            good = save_scene(scene, fixed_, allow_outside_) && good;
        }
        return good ? exit_done : exit_refused;
    }

    bool write_report(const NARROW_TEXT& report) const {
        OutputSet output(report_);
        if (!output.ready()) return false;
        WRITE_FILE file;
        const u32 size = static_cast<u32>(report.length() + 1);
        const bool written = file.open(library_name(report_), false) && file.write(report.c_str(), size) == size;
        if (!file.close() || !written) {
            problem(report_, "can't be written");
            return false;
        }
        return output.commit();
    }

    std::uint64_t print_text(const VOR2& scene, const std::string& file, const std::vector<MeshBlock>& blocks,
                             TextOut& out) const {
        std::uint64_t found = 0;
        for (const MeshBlock& block : blocks) {
            found += block.channels.size() + block.positions.size();
            out.put(file + ": mesh \"" + block.name + "\"\n");
            for (const std::string& channel : block.channels) out.put("  mapping channel " + channel + "\n");
            if (block.positions.empty()) continue;
            out.put("  bad normals: " + std::to_string(block.positions.size()) + ", at");
            for (std::size_t i = 0; i < std::min(block.positions.size(), most_positions); ++i)
                out.put(" " + block.positions[i]);
            out.put(block.positions.size() > most_positions ? " ...\n" : "\n");
        }
        if (strict_) {
            found += check_strictly(scene, library_name(file), [&](const Finding& finding) {
                out.put(file + ": " + finding.record);
                if (!finding.name.empty()) out.put(" " + tool::quoted(finding.name));
                out.put(" " + finding.field + ": " + finding.value + ": " + finding.complaint + "\n");
            });
        }
        if (found == 0 && !is_quiet()) out.put(file + ": no problems\n");
        return found;
    }

    std::uint64_t print_json(const VOR2& scene, const std::string& file, const std::vector<MeshBlock>& blocks,
                             TextOut& out) const {
        JsonWriter json(out, files_.size() > 1 ? JsonWriter::Layout::line : JsonWriter::Layout::indented);
        std::uint64_t found = 0;
        json.begin_object();
        json.key("file");
        json.text(file);
        json.key("meshes");
        json.begin_array();
        for (const MeshBlock& block : blocks) {
            found += block.channels.size() + block.positions.size();
            json.begin_object();
            put(json, "name", block.name);
            put_list(json, "mapping_channels", block.channels);
            put_list(json, "bad_normals_at", block.positions);
            json.end_object();
        }
        json.end_array();
        if (strict_) {
            json.key("findings");
            json.begin_array();
            found += check_strictly(scene, library_name(file), [&json](const Finding& finding) {
                json.begin_object();
                put(json, "record", finding.record);
                json.key("name");
                json.text(finding.name);
                put(json, "field", finding.field);
                put(json, "value", finding.value);
                put(json, "complaint", finding.complaint);
                json.end_object();
            });
            json.end_array();
        }
        json.key("count");
        json.number(found);
        json.end_object();
        json.finish();
        return found;
    }

    static void put(JsonWriter& json, std::string_view key, const std::string& text) {
        json.key(key);
        json.text(std::string_view(text));
    }
    static void put_list(JsonWriter& json, std::string_view key, const std::vector<std::string>& texts) {
        json.key(key);
        json.begin_array();
        for (const std::string& text : texts) json.text(std::string_view(text));
        json.end_array();
    }

    std::vector<std::string> files_;
    std::string fixed_, report_;
    bool strict_ = false, json_ = false, allow_outside_ = false;
    unsigned jobs_ = 0;
};

} // namespace

std::unique_ptr<Verb> make_check_verb() {
    return std::make_unique<CheckVerb>();
}

} // namespace tool
