#include "host/export/host_time.h"

#include <maya/MFnDependencyNode.h>
#include <maya/MGlobal.h>
#include <maya/MObject.h>
#include <maya/MSelectionList.h>
#include <maya/MString.h>

#include <cmath>
#include <string_view>

namespace VOR2_EXPORTER_MAYA {
namespace {

struct NAMED_RATE {
    std::string_view name;
    double frames_per_second;
};
constexpr NAMED_RATE NAMED_RATES[] = {
    {"film", 24.0}, {"game", 15.0},  {"pal", 25.0},       {"show", 48.0}, {"ntsc", 30.0},
    {"palf", 50.0}, {"ntscf", 60.0}, {"milisec", 1000.0}, {"sec", 1.0},   {"min", static_cast<double>(0.01666F)}};

} // namespace

bool current_fps(double& fps) {
    const MString unit = MGlobal::executeCommandStringResult("currentUnit -query  -time");
    for (const NAMED_RATE& rate : NAMED_RATES) {
        if (rate.name != unit.asChar()) continue;
        fps = rate.frames_per_second;
        return true;
    }
    const double rate = MTime(1.0, MTime::kSeconds).as(MTime::uiUnit());
    if (!std::isfinite(rate) || rate <= 0.0) {
        MGlobal::displayError(MString("Unknown time unit: ") + unit);
        return false;
    }
    fps = rate;
    return true;
}

TIME_NODE_CLOCK::TIME_NODE_CLOCK() {
    MGlobal::selectByName("time1", MGlobal::kReplaceList);
    MSelectionList selection;
    MGlobal::getActiveSelectionList(selection);
    MObject time_node;
    selection.getDependNode(0, time_node);
    my_out_time = MFnDependencyNode(time_node).findPlug("outTime");
}

void TIME_NODE_CLOCK::move_to(MTime time) {
    my_out_time.setValue(time);
}

MTime time_of_frame(double frame) {
    MTime time;
    time.setValue(frame);
    return time;
}

} // namespace VOR2_EXPORTER_MAYA
