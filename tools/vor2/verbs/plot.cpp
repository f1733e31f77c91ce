#include "inspect/scene_facts.h"
#include "tools/vor2/cli/messages.h"
#include "tools/vor2/cli/scene_file.h"
#include "tools/vor2/cli/whole_file.h"
#include "tools/vor2/verbs/verb.h"
#include "viewer/drawings/scene_distance.h"
#include "viewer/drawings/track_lanes.h"

#include <algorithm>
#include <cmath>

namespace tool {
namespace {

using namespace VOR2_LOADER;
using namespace vor2::viewer;

constexpr std::size_t most_lanes = 60;
constexpr std::size_t most_differing_nodes = 8;

/// A node's name, or the end of its path with "|" between names.
bool is_called(const VOR2& scene, u64 node, const std::string& name) {
    const auto& nodes = scene.matrix_hierarchy.nodes;
    std::string path = vor2::inspect::readable(nodes[node].name);
    for (u64 n = node; path != name;) {
        const i32 parent = nodes[n].parent_index;
        if (path.size() >= name.size() || parent < 0 || static_cast<u64>(parent) >= n) return false;
        n = static_cast<u64>(parent);
        path.insert(0, vor2::inspect::readable(nodes[n].name) + "|");
    }
    return true;
}

std::string seconds(double time) {
    return vor2::inspect::shortest(static_cast<float>(time)) + " s";
}

class PlotVerb final : public Verb {
public:
    std::string_view name() const override { return "plot"; }
    std::string_view summary() const override { return "draw the curves of nodes, or what differs between two scenes"; }
    std::string_view description() const override {
        return "Draws the tracks of nodes over time as an SVG picture: positions in metres, rotations as angles about "
               "x, "
               "y and z in degrees (or as they are stored, with --rotations quaternion), scales, and their keys as "
               "dots. A "
               "node is told by its name, or by the end of its path, such as 'spine|chest'; of namesakes all are "
               "drawn.\n\n"
               "With two scenes it draws how far apart their joints stand in the world, then the tracks that differ of "
               "the "
               "nodes that --node names or, without it, of those that come furthest apart: the first scene's in lines, "
               "the "
               "second's in dashes. Exits with 1 when there is no such node.";
    }
    std::vector<std::string> examples() const override {
        return {"vor2 plot walk.vr2 --node hips --node head -o curves.svg", "vor2 plot old.vr2 new.vr2 -o change.svg"};
    }
    void describe(Syntax& syntax) override {
        syntax.required_file("FILE", "FILE.vr2", "the scene", file_);
        syntax.file("OTHER", "OTHER.vr2", "a scene to tell it from", other_);
        syntax.texts("--node", "NAME", "a node to draw; may be given many times", names_);
        syntax.file("-o,--output", "OUT.svg", "the picture (default: standard output)", output_);
        syntax.number("--start", "SECONDS", "from that time on (default: the scene's start)", start_);
        syntax.number("--end", "SECONDS", "up to that time (default: the scene's end)", end_);
        syntax.choice("--rotations", {"degrees", "quaternion"}, "how rotations are told (default: degrees)",
                      rotations_);
    }
    std::string check() const override {
        if (other_.empty() && names_.empty()) return "--node: name a node to draw, or a second scene";
        return start_ && end_ && *end_ <= *start_ ? "--end: lies before --start" : "";
    }
    int run() override {
        VOR2 scene, other;
        const bool loaded = load_scene(scene, file_);
        if ((!other_.empty() && !load_scene(other, other_)) || !loaded) return exit_refused;
        std::vector<u64> chosen;
        if (!find_nodes(scene, chosen)) return exit_refused;
        const std::string svg = other_.empty() ? plot(scene, chosen) : plot_two(scene, other, chosen);
        return write_result(output_, svg) ? exit_done : exit_refused;
    }

private:
    bool find_nodes(const VOR2& scene, std::vector<u64>& chosen) const {
        for (const std::string& name : names_) {
            const std::size_t before = chosen.size();
            for (u64 i = 0; i < scene.matrix_hierarchy.nodes.size(); ++i) {
                if (is_called(scene, i, name)) chosen.push_back(i);
            }
            if (chosen.size() == before) {
                problem(file_, "has no node called " + name);
                return false;
            }
        }
        return true;
    }

    TrackLaneOptions options_for(double start, double end) const {
        TrackLaneOptions options;
        options.start = start_.value_or(std::isfinite(start) ? start : 0);
        options.end = end_.value_or(std::isfinite(end) ? end : 0);
        if (options.end <= options.start) options.end = options.start + 1;
        options.quaternions = rotations_ == "quaternion";
        return options;
    }

    static void take(CurveSheet& sheet, std::vector<Lane> lanes) {
        for (Lane& lane : lanes) {
            if (sheet.lanes.size() < most_lanes) sheet.lanes.push_back(std::move(lane));
        }
    }

    std::string plot(VOR2& scene, const std::vector<u64>& chosen) const {
        const TrackLaneOptions options =
            options_for(scene.environment.time_range.start, scene.environment.time_range.end);
        CurveSheet sheet{file_, seconds(options.start) + " to " + seconds(options.end), options.start, options.end, {}};
        for (const u64 node : chosen) take(sheet, lanes_of(scene.matrix_hierarchy.nodes[node], nullptr, options));
        return svg_of(sheet);
    }

    std::string plot_two(VOR2& scene, VOR2& other, const std::vector<u64>& chosen) const {
        const SceneDistance distance = measure_distance(scene, other);
        TrackLaneOptions options = options_for(distance.times.front(), distance.times.back());
        options.only_different = true;
        options.tolerance = 1e-6;
        CurveSheet sheet{file_ + " and " + other_, "", options.start, options.end, {}};
        sheet.legend = legend_of(scene, distance);
        Lane apart{"greatest distance of joints in the world", "m", {}};
        apart.curves.push_back({"", {}, {}, {}, false});
        for (std::size_t i = 0; i < distance.times.size(); ++i) {
            if (distance.times[i] < options.start || distance.times[i] > options.end) continue;
            apart.curves[0].times.push_back(distance.times[i]);
            apart.curves[0].values.push_back(distance.greatest[i]);
        }
        sheet.lanes.push_back(std::move(apart));
        std::size_t drawn = 0;
        for (const JointPair& pair : distance.pairs) {
            const bool wanted = chosen.empty() ? pair.distance > 0 && drawn < most_differing_nodes
                                               : std::ranges::find(chosen, pair.first) != chosen.end();
            if (!wanted) continue;
            std::vector<Lane> lanes =
                lanes_of(scene.matrix_hierarchy.nodes[pair.first], &other.matrix_hierarchy.nodes[pair.second], options);
            // A joint may be off only because one above it is.
            if (!lanes.empty()) ++drawn;
            take(sheet, std::move(lanes));
        }
        return svg_of(sheet);
    }

    std::string legend_of(const VOR2& scene, const SceneDistance& distance) const {
        std::string legend = "lines: " + file_ + ", dashes: " + other_ + ". ";
        if (distance.pairs.empty()) return legend + "They have no node in common.";
        const JointPair& worst = distance.pairs.front();
        if (worst.distance == 0) return legend + "All joints stand in the same places.";
        return legend + "Worst: " + vor2::inspect::readable(scene.matrix_hierarchy.nodes[worst.first].name) + ", " +
               vor2::inspect::shortest(static_cast<float>(worst.distance)) + " m at " + seconds(worst.time) + ".";
    }

    std::string file_, other_, output_, rotations_ = "degrees";
    std::vector<std::string> names_;
    std::optional<double> start_, end_;
};

} // namespace

std::unique_ptr<Verb> make_plot_verb() {
    return std::make_unique<PlotVerb>();
}

} // namespace tool
