#include "optimise/optimise.h"

#include "inspect/scene_facts.h"
#include "tools/vor2/cli/messages.h"
#include "tools/vor2/cli/progress.h"
#include "tools/vor2/cli/scene_file.h"
#include "tools/vor2/verbs/verb.h"

#include <filesystem>
#include <numbers>

namespace tool {
namespace {

using namespace VOR2_LOADER;
using namespace vor2::inspect;
using vor2::optimise::NodeReport;
using vor2::optimise::Result;

struct Unit {
    std::string_view name;
    double factor;
};
constexpr Unit lengths[] = {{"mm", 1e-3}, {"cm", 1e-2}, {"m", 1}};
constexpr Unit angles[] = {{"deg", std::numbers::pi / 180}, {"rad", 1}};

/// "0.1mm" in metres: a number with its unit, since a bare one is off by a thousand where the two think of different
/// ones.
std::optional<double> measured(std::string_view text, std::span<const Unit> units) {
    for (const Unit& unit : units) {
        if (!text.ends_with(unit.name)) continue;
        std::string_view number = text.substr(0, text.size() - unit.name.size());
        while (number.ends_with(' ')) number.remove_suffix(1);
        if (const std::optional<double> value = parse_number(number)) return *value * unit.factor;
    }
    return {};
}

OptionRow measured_row(std::string names, std::string value_name, std::string help, std::span<const Unit> units,
                       bool may_be_zero, std::optional<double>& target) {
    OptionRow row{std::move(names), ValueKind::text, std::move(value_name), std::move(help)};
    row.set = [&target, units, may_be_zero](const std::string& value) -> std::string {
        target = measured(value, units);
        std::string known;
        for (const Unit& unit : units) known += (known.empty() ? "" : ", ") + std::string(unit.name);
        if (value == "0") target = 0; // needs no unit
        if (!target) return "'" + value + "' is no number with one of the units " + known;
        if (*target > 0 || (may_be_zero && *target == 0)) return {};
        return "'" + value + "' is not above 0";
    };
    return row;
}

std::string millimetres(double metres) {
    return shortest(static_cast<float>(metres * 1e3)) + " mm";
}
std::string degrees(double radians) {
    return shortest(static_cast<float>(radians * 180 / std::numbers::pi)) + " deg";
}

class OptimiseVerb final : public Verb {
public:
    std::string_view name() const override { return "optimise"; }
    std::string_view summary() const override { return "take away keys, within a stated error in the world"; }
    std::string_view description() const override {
        return "Takes away keys of nodes as long as no node, nor any point within a distance of it, moves in the world "
               "by more than the tolerance, at any time: the whole hierarchy is posed, between keys as well as on "
               "them, and what was chosen is measured at four times the density of the keys before it is written. No "
               "key is changed or added, the first and the last key of a track stay unless all have one value, and "
               "everything else in the scene stays as it is. The pose at the start of the scene, which skins are bound "
               "in, doesn't change at all.\n\n"
               "The points of a node are those of what stands at it or is skinned to it, and beyond that as far away "
               "as its furthest child or, for one without children that turns, as its parent; one metre for cameras, "
               "lights and the like. --point says how far instead. --rotation also limits how far a node's axes may "
               "turn in the world.\n\n"
               "Scenes that the file refers to are saved as 'vor2 upgrade' does, with all their keys. IN and OUT may "
               "be the same file.";
    }
    std::vector<std::string> examples() const override {
        return {"vor2 optimise walk.vr2 small.vr2 --tolerance 0.1mm",
                "vor2 optimise walk.vr2 small.vr2 --tolerance 1mm --rotation 0.05deg --point 20cm --report"};
    }
    void describe(Syntax& syntax) override {
        syntax.required_file("IN", "IN.vr2", "the scene to load", input_);
        syntax.required_file("OUT", "OUT.vr2", "the file to write", output_);
        OptionRow tolerance = measured_row("-t,--tolerance", "LENGTH", "how far a point may move: 0.1mm, 0.5cm, 0.02m",
                                           lengths, false, tolerance_);
        tolerance.required = true;
        syntax.add(std::move(tolerance));
        syntax.add(measured_row("--rotation", "ANGLE", "how far a node may turn: 0.05deg, 0.001rad", angles, false,
                                limits_.rotation));
        syntax.add(measured_row("--point", "LENGTH",
                                "the distance from a node to its points, where nothing stands "
                                "further from it",
                                lengths, true, limits_.point_distance));
        syntax.flag("--report", "also tell each node's keys and worst error", report_);
        syntax.allow_outside(allow_outside_);
        syntax.json(json_);
    }
    int run() override {
        VOR2 scene;
        VOR2_INPUT_BUFFER buffer(library_name(input_));
        if (!load_scene(scene, input_, buffer)) return exit_refused;
        bytes_before_ = buffer.offset() + buffer.remaining();
        leave_out_missing_references(scene, input_);
        limits_.position = *tolerance_;
        Result result;
        {
            const Progress progress("optimising");
            result = vor2::optimise::optimise_keys(scene, limits_);
        }
        if (!result.good()) {
            problem(input_, result.problem);
            return exit_refused;
        }
        if (!save_scene(scene, output_, allow_outside_)) return exit_refused;
        std::error_code ignored;
        bytes_after_ = std::filesystem::file_size(output_, ignored);
        TextOut out(results());
        json_ ? write_json(scene, result, out) : write_text(scene, result, out);
        return finish(out) ? exit_done : exit_refused;
    }

private:
    void write_text(const VOR2& scene, const Result& result, TextOut& out) const {
        const auto less = [](u64 before, u64 after) {
            return std::to_string(before) + " -> " + std::to_string(after) +
                   (before > 0 ? " (" + std::to_string(after * 100 / before) + " %)" : "");
        };
        out.put(output_ + ": keys " + less(result.keys_before, result.keys_after) + ", bytes " +
                less(bytes_before_, bytes_after_) + ", worst error ");
        if (result.worst_node) {
            const NodeReport& worst = result.nodes[*result.worst_node];
            out.put(millimetres(worst.worst_position) + " at '" +
                    readable(scene.matrix_hierarchy.nodes[*result.worst_node].name) + "' at " +
                    shortest(static_cast<float>(worst.worst_time)) + " s\n");
        } else {
            out.put("0 mm\n");
        }
        if (!report_) return;
        out.put("keys before\tafter\tpoints at\tworst error\tat\tturned\tnode\n");
        for (std::size_t i = 0; i < result.nodes.size(); ++i) {
            const NodeReport& node = result.nodes[i];
            out.put(std::to_string(node.keys_before) + "\t" + std::to_string(node.keys_after) + "\t" +
                    millimetres(node.point_distance) + "\t" + millimetres(node.worst_position) + "\t" +
                    shortest(static_cast<float>(node.worst_time)) + " s\t" + degrees(node.worst_rotation) + "\t" +
                    readable(scene.matrix_hierarchy.nodes[i].name) + "\n");
        }
    }

    void write_json(const VOR2& scene, const Result& result, TextOut& out) const {
        JsonWriter json(out, JsonWriter::Layout::indented);
        json.begin_object();
        json.text("file", output_);
        json.number("keys_before", result.keys_before);
        json.number("keys_after", result.keys_after);
        json.number("bytes_before", bytes_before_);
        json.number("bytes_after", bytes_after_);
        json.number("tolerance", limits_.position);
        json.key("worst");
        if (result.worst_node) {
            write_node(scene, result, *result.worst_node, json);
        } else {
            json.null();
        }
        if (report_) {
            json.key("nodes");
            json.begin_array();
            for (std::size_t i = 0; i < result.nodes.size(); ++i) write_node(scene, result, i, json);
            json.end_array();
        }
        json.end_object();
        json.finish();
    }
    /// Lengths in metres, times in seconds, angles in radians.
    static void write_node(const VOR2& scene, const Result& result, u64 index, JsonWriter& json) {
        const NodeReport& node = result.nodes[index];
        json.begin_object();
        json.number("node", std::uint64_t{index});
        json.text("name", scene.matrix_hierarchy.nodes[index].name.view());
        json.number("keys_before", node.keys_before);
        json.number("keys_after", node.keys_after);
        json.number("point_distance", node.point_distance);
        json.number("error", node.worst_position);
        json.number("time", node.worst_time);
        json.number("rotation", node.worst_rotation);
        json.end_object();
    }

    std::string input_, output_;
    std::optional<double> tolerance_;
    vor2::optimise::Limits limits_;
    bool report_ = false, json_ = false, allow_outside_ = false;
    std::uint64_t bytes_before_ = 0, bytes_after_ = 0;
};

} // namespace

std::unique_ptr<Verb> make_optimise_verb() {
    return std::make_unique<OptimiseVerb>();
}

} // namespace tool
