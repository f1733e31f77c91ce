#include "headless/geometry/mesh_history.h"

#include "headless/geometry/components.h"
#include "headless/geometry/deformers.h"
#include "headless/geometry/mesh_data.h"
#include "headless/geometry/modifiers.h"
#include "headless/geometry/primitives.h"

#include <algorithm>
#include <span>

namespace headless {
namespace {

// A node of a history, and which of its outputs the next one takes.
struct Step {
    Node* node;
    int output = 0;
};

// Nodes that hand a mesh on as it is: those that mark groups, and those that change no more than shading.
bool passes_on(const Node& node) {
    static constexpr std::string_view types[] = {"groupParts",     "polySoftEdge", "polyNormalPerVertex",
                                                 "createColorSet", "polyTweakUV",  "polyMapCut"};
    return std::ranges::find(types, node.type().name()) != std::end(types);
}

// What feeds a node's mesh: the names under which the kinds of nodes have their input.
Plug input_of(const Step& step) {
    const Node& node = *step.node;
    const std::string element = "ip[" + std::to_string(step.output) + "].ig";
    for (const std::string& name :
         {std::string("i"), element, std::string("ip"), std::string("ig"), std::string("im")}) {
        if (name == "i" && !node.type().derives_from("mesh")) continue;
        const Plug plug = node.find_plug(name);
        if (const Plug source = plug ? node.source_of(plug.key) : Plug()) return source;
    }
    return {};
}

// From the step itself to the far end; false when it has no end within reach.
bool history_of(const Step& last, std::vector<Step>& out) {
    out.push_back(last);
    while (const Plug source = input_of(out.back())) {
        if (out.size() == max_history) return false;
        out.push_back({source.node, source.key.depth > 0 ? source.key.index[0] : 0});
    }
    return true;
}

// Whether what a node makes of its input can be another at another moment.
bool moves(const Node& node) {
    return is_deformer(node.type()) || (node.type().derives_from("polyCreator") && !node.inputs().empty()) ||
           (node.type().name() == "transformGeometry" && node.inputs().size() > 1);
}

class Evaluation {
public:
    explicit Evaluation(Scene& scene) : scene_(scene) {}

    /// The far end of a history and what stands between; `steps` begin with the nearest.
    Mesh start(std::span<const Step> steps) {
        begin(*steps.back().node);
        return go_on(std::move(mesh_), steps.first(steps.size() - 1), *steps.back().node);
    }
    Mesh go_on(Mesh mesh, std::span<const Step> steps, const Node& from) {
        mesh_ = std::move(mesh);
        for (auto step = steps.rbegin(); step != steps.rend(); ++step) {
            if (is_deformer(step->node->type()))
                deform(scene_, {*step->node, step->output, &from}, mesh_);
            else
                apply(*step->node);
        }
        return std::move(mesh_);
    }

private:
    double number(const Node& node, const char* name) const { return scene_.evaluate(node.find_plug(name)).number(); }
    std::int64_t count(const Node& node, const char* name) const {
        return scene_.evaluate(node.find_plug(name)).integer();
    }

    void not_evaluated(const Node& node) {
        mesh_.notes.push_back("'" + node.name() + "' (" + node.type().name() + ") in its history isn't evaluated");
    }

    void begin(const Node& node) {
        if (const MeshData* data = MeshData::of(node)) {
            mesh_ = build_mesh(node, *data);
            return;
        }
        if (!create(node)) {
            not_evaluated(node);
            return;
        }
        turn_axis(mesh_, scene_.evaluate(node.find_plug("ax")).vector());
    }

    bool create(const Node& node) {
        const std::string& type = node.type().name();
        // What they all derive from is a kind, too, but makes nothing.
        if (!node.type().derives_from("polyCreator") || type == "polyCreator") return false;
        const bool uvs = count(node, "cuv") > 0;
        if (type == "polyCube") {
            mesh_ = make_cube({number(node, "w"), number(node, "h"), number(node, "d"), count(node, "sw"),
                               count(node, "sh"), count(node, "sd")},
                              uvs);
        } else if (type == "polyPlane") {
            mesh_ = make_plane(number(node, "w"), number(node, "h"), count(node, "sw"), count(node, "sh"), uvs);
        } else if (type == "polySphere") {
            mesh_ = make_sphere(number(node, "r"), count(node, "sa"), count(node, "sh"), uvs);
        } else if (type == "polyCylinder" || type == "polyCone") {
            const RoundShape shape{number(node, "r"), number(node, "h"), count(node, "sa"), count(node, "sh"),
                                   count(node, "sc")};
            mesh_ = type == "polyCone" ? make_cone(shape, uvs) : make_cylinder(shape, uvs);
        } else {
            return false;
        }
        return true;
    }

    void apply(const Node& node) {
        const std::string& type = node.type().name();
        if (const MeshData* data = MeshData::of(node)) {
            // Where the tweaks are handed to a node of the history they count there.
            const Plug handed = node.find_plug("twl");
            if (!handed || !node.source_of(handed.key)) add_tweaks(*data, mesh_);
        } else if (type == "transformGeometry") {
            transform_mesh(mesh_, scene_.evaluate(node.find_plug("txf")).matrix());
        } else if (type == "polySubdFace" && count(node, "m") == 0) {
            std::vector<bool> chosen(mesh_.face_count());
            for (const IndexRange& range : faces_of(node.get(node.find_plug("ics").key), chosen.size()))
                std::fill(chosen.begin() + std::ptrdiff_t(range.first), chosen.begin() + std::ptrdiff_t(range.end),
                          true);
            divide_faces(mesh_, chosen, count(node, "dv"));
        } else if (type == "polyColorPerVertex") {
            colour_vertices(mesh_, node.get(node.find_plug("cn").key).text(), colours_of(node));
        } else if (!passes_on(node)) {
            not_evaluated(node);
        }
    }

    // `vclr[vertex].vrgb` and `.vxal`; for one face of it `vclr[vertex].vfcl[face].frgb` and `.vfal`.
    static std::vector<VertexColour> colours_of(const Node& node) {
        std::map<std::pair<int, int>, Float4> found;
        std::map<std::pair<int, int>, bool> coloured;
        for (const PlugKey& key : node.stored()) {
            const std::string& name = node.attribute(key.attribute).short_name;
            const bool of_face = name == "frgb" || name == "vfal", colour = name == "frgb" || name == "vrgb";
            if (!colour && !of_face && name != "vxal") continue;
            const std::pair<int, int> place{key.index[0], of_face ? key.index[1] : -1};
            Float4& at = found[place];
            const Value value = node.get(key);
            if (colour) {
                const Float3 rgb = narrow(value.vector());
                at = {rgb.x, rgb.y, rgb.z, at.a};
                coloured[place] = true;
            } else {
                at.a = static_cast<float>(value.number());
            }
        }
        std::vector<VertexColour> out;
        out.reserve(coloured.size());
        for (const auto& [place, is_coloured] : coloured) out.push_back({place.first, place.second, found[place]});
        return out;
    }

    Scene& scene_;
    Mesh mesh_;
};

// What a result holds good for: the nodes as they are now.
std::vector<std::uint64_t> fingerprint(std::span<const Step> steps) {
    std::vector<std::uint64_t> out;
    for (const Step& step : steps) {
        out.push_back(step.node->handle().serial);
        out.push_back(step.node->edit_count());
    }
    return out;
}

// Targets of blend shapes have histories of their own, which may lead to further targets.
constexpr int most_nested_histories = 32;
int nested_histories = 0; // the host runs on one thread

Mesh without_end() {
    Mesh out;
    out.notes.emplace_back("its history has no end");
    return out;
}

Mesh evaluated(Scene& scene, const std::vector<Step>& steps, MeshData::Evaluated& kept) {
    const std::span all(steps);
    const auto first_still = std::find_if(steps.rbegin(), steps.rend(), [](const Step& s) { return moves(*s.node); });
    const auto moving = static_cast<std::size_t>(steps.rend() - first_still);
    if (moving == 0) return Evaluation(scene).start(all);
    if (moving == steps.size()) return Evaluation(scene).start(all);
    std::vector<std::uint64_t> from = fingerprint(all.subspan(moving));
    if (!kept.still || kept.still_from != from) {
        kept.still = std::make_shared<const Mesh>(Evaluation(scene).start(all.subspan(moving)));
        kept.still_from = std::move(from);
    }
    return Evaluation(scene).go_on(*kept.still, all.first(moving), *steps.back().node);
}

} // namespace

std::shared_ptr<const Mesh> mesh_of(Scene& scene, Node& node) {
    MeshData* data = MeshData::of(node);
    if (!data) return nullptr;
    MeshData::Evaluated& kept = data->evaluated;
    std::vector<Step> steps;
    const bool ends = history_of({&node}, steps);
    std::vector<std::uint64_t> from = fingerprint(steps);
    if (std::ranges::any_of(steps, [](const Step& step) { return moves(*step.node); }))
        from.push_back(scene.generation());
    if (kept.mesh && kept.from == from) return kept.mesh;
    if (kept.computing || nested_histories == most_nested_histories) return std::make_shared<const Mesh>(without_end());
    kept.computing = true;
    ++nested_histories;
    auto made = std::make_shared<Mesh>(ends ? evaluated(scene, steps, kept) : without_end());
    --nested_histories;
    kept.computing = false;
    const bool is_made = steps.size() > 1;
    if (!kept.corners.take(is_made ? made->corners_in_sets() : 0)) {
        *made = Mesh();
        made->notes.emplace_back("with it the meshes of the scene would have too many corners, and it has none");
    }
    kept.from = std::move(from);
    kept.mesh = made;
    return made;
}

std::shared_ptr<const Mesh> mesh_at(Scene& scene, const Plug& plug) {
    const Plug source = plug.node->source_of(plug.key);
    const Plug from = source ? source : plug;
    if (MeshData::of(*from.node)) return mesh_of(scene, *from.node);
    std::vector<Step> steps;
    if (!history_of({from.node, from.key.depth > 0 ? from.key.index[0] : 0}, steps)) return nullptr;
    if (nested_histories == most_nested_histories) return nullptr;
    ++nested_histories;
    auto made = std::make_shared<const Mesh>(Evaluation(scene).start(steps));
    --nested_histories;
    return made;
}

} // namespace headless
