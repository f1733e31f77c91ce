#include "tools/vor2/cli/unevaluated.h"

#include "headless/graph/scene.h"
#include "host/export/mesh_export.h"

#include <maya/MDagPath.h>
#include <maya/MSelectionList.h>
#include <maya/MString.h>
#include <maya/MStringArray.h>

namespace tool {

using headless::Node;
using headless::Unevaluated;

std::vector<Unevaluated> unevaluated_in_export(headless::Scene& scene, const std::vector<std::string>& names) {
    MStringArray asked;
    for (const std::string& name : names) asked.append(MString(name.c_str(), static_cast<int>(name.size())));
    MSelectionList selection = VOR2_EXPORTER_MAYA::selection_for_export(asked);
    VOR2_EXPORTER_MAYA::NODE_LIST list = VOR2_EXPORTER_MAYA::list_nodes(selection);
    const VOR2_EXPORTER_MAYA::MESH_OPTIONS& options = VOR2_EXPORTER_MAYA::mesh_options();
    std::set<std::string> carrying;
    if (options.meshes && options.include_bones) (void)add_bones(list, carrying);
    std::vector<Node*> moving;
    for (unsigned int i = 0; i < list.nodes.length(); ++i) {
        const auto found = scene.find_node(list.nodes[i].fullPathName().asChar());
        if (found) moving.push_back(*found);
    }
    return find_unevaluated(scene, moving);
}

void write_report(const ExportReport& report, vor2::inspect::JsonWriter& json) {
    json.begin_object();
    json.text("file", report.file);
    json.text("output", report.output);
    json.boolean("exported", report.exported);
    json.key("unevaluated");
    json.begin_array();
    for (const Unevaluated& found : report.unevaluated) {
        json.begin_object();
        json.text("node", found.node->name());
        json.text("kind", found.node->type().name());
        json.text("why", found.why);
        json.key("moves");
        json.begin_array();
        for (const Node* node : found.moving) json.text(node->name());
        json.end_array();
        json.end_object();
    }
    json.end_array();
    json.key("warnings");
    json.begin_array();
    for (const std::string& warning : report.warnings) json.text(warning);
    json.end_array();
    json.end_object();
    json.finish();
}

} // namespace tool
