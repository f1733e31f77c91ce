#include "host/import/import_driver.h"

#include "host/export/host_text.h"
#include "host/export/host_time.h"
#include "host/import/key_joints.h"
#include "support/platform/platform.h"

#include <maya/MAnimControl.h>
#include <maya/MDagPath.h>
#include <maya/MFnDagNode.h>
#include <maya/MFnDependencyNode.h>
#include <maya/MFnIkJoint.h>
#include <maya/MGlobal.h>
#include <maya/MObject.h>
#include <maya/MTime.h>

#include <algorithm>
#include <cmath>

namespace VOR2_EXPORTER_MAYA {
namespace {

template<class TRACK>
void lower_to_gaps_of(const OWNED<TRACK>& track, double& diff) {
    if (!track) return;
    const ARRAY<f32>& times = track->key_times();
    const u64 n = std::min(times.size(), track->key_values().size());
    for (u64 k = 1; k + 1 < n; ++k) {
        const f32 gap = times[k + 1] - times[k];
        if (diff > static_cast<double>(gap) && gap > 0.0F) diff = static_cast<double>(gap);
    }
}

void set_ranges(float start_frame, float stop_frame) {
    const MTime start = time_of_frame(static_cast<double>(start_frame));
    const MTime stop = time_of_frame(static_cast<double>(stop_frame));
    MAnimControl::setAnimationStartTime(start);
    MAnimControl::setMinTime(start);
    MAnimControl::setAnimationEndTime(stop);
    MAnimControl::setMaxTime(stop);
}

bool import_root(const VOR2& root) {
    show_file_info(root);
    const u32 node_count = static_cast<u32>(root.matrix_hierarchy.nodes.size());
    IMPORT_TIMES times;
    smallest_key_gap(times.diff, root, node_count);
    if (!set_playback_range(root, times)) return false;
    if (node_count == 0) {
        MGlobal::displayWarning("The vor2 file holds no nodes to import");
        return true;
    }
    const MDagPathArray nodes = create_joints(root, node_count);
    parent_joints(root, nodes);
    key_joints(root, times, nodes);
    MFnIkJoint first_joint(nodes[0]);
    reorient_first_joint(first_joint, nodes[0], times, key_frames(root.matrix_hierarchy.nodes[0], times));
    return true;
}

} // namespace

bool import_scene(const MString& path) {
    VOR2 root;
    {
        VOR2_INPUT_BUFFER buffer(to_text(path));
        if (!root.load(buffer, true)) {
            MGlobal::displayError(MString("Failed to read vor2 file: ") + path);
            if (const std::string problem = buffer.problem(); !problem.empty()) MGlobal::displayInfo(problem.c_str());
            return false;
        }
    }
    MGlobal::displayInfo("Reading...");
    return import_root(root);
}

void show_file_info(const VOR2& root) {
    const MString info = to_host_text(root.inf.file_info);
    platform::print_line(info.asChar());
    MGlobal::displayInfo(info);
}

void smallest_key_gap(double& diff, const VOR2& root, u32 node_count) {
    const ARRAY<VOR2_MATRIX_NODE>& nodes = root.matrix_hierarchy.nodes;
    for (u32 i = 1; i < node_count; ++i) lower_to_gaps_of(nodes[i].position_track, diff);
    for (u32 i = 1; i < node_count; ++i) lower_to_gaps_of(nodes[i].rotation_track, diff);
}

bool set_playback_range(const VOR2& root, IMPORT_TIMES& times) {
    double maya_fps = 0.0;
    if (!current_fps(maya_fps)) return false;
    const double file_fps = 1000.0 / (times.diff * 1000.0);
    const double start = static_cast<double>(root.environment.time_range.start) * file_fps;
    const double end = static_cast<double>(root.environment.time_range.end) * file_fps;
    times.fps_diff = static_cast<float>(maya_fps / file_fps);
    times.maya_start = static_cast<float>(start * static_cast<double>(times.fps_diff));
    times.maya_stop = static_cast<float>(end * static_cast<double>(times.fps_diff));
    if (!std::isfinite(times.maya_start) || !std::isfinite(times.maya_stop)) {
        MGlobal::displayWarning("The vor2 file's time range isn't finite: the playback range stays as it is");
        times.maya_start = times.maya_stop = 0.0F;
        return true;
    }
    set_ranges(times.maya_start, times.maya_stop);
    return true;
}

MDagPathArray create_joints(const VOR2& root, u32 node_count) {
    MDagPathArray nodes;
    for (u32 i = 0; i < node_count; ++i) {
        MFnIkJoint joint;
        joint.create(MObject::kNullObj);
        joint.setName(to_host_text(root.matrix_hierarchy.nodes[i].name));
        MDagPath path;
        joint.getPath(path);
        nodes.append(path);
    }
    return nodes;
}

void parent_joints(const VOR2& root, const MDagPathArray& nodes) {
    for (unsigned int i = 1; i < nodes.length(); ++i) {
        const i32 parent_index = root.matrix_hierarchy.nodes[i].parent_index;
        if (parent_index < 0) continue;
        MStatus status = MStatus::kInvalidParameter;
        MObject child = nodes[i].node();
        if (static_cast<unsigned int>(parent_index) < nodes.length()) {
            MFnDagNode parent(nodes[static_cast<unsigned int>(parent_index)]);
            status = parent.addChild(child, MFnDagNode::kNextPos, false);
        }
        if (!status)
            MGlobal::displayWarning(MString("Stays under the world, since its parent in the vor2 file can't be one: ") +
                                    MFnDependencyNode(child).name());
    }
}

} // namespace VOR2_EXPORTER_MAYA
