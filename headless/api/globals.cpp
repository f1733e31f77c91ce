// MGlobal, MAnimControl, MDGContext and M3dView.
#include "headless/api/access.h"

#include <maya/M3dView.h>
#include <maya/MAnimControl.h>
#include <maya/MDoubleArray.h>
#include <maya/MGlobal.h>
#include <maya/MIntArray.h>
#include <maya/MSelectionList.h>
#include <maya/MStringArray.h>
#include <maya/MTime.h>

#include <cmath>

using namespace headless;

MStatus MGlobal::getActiveSelectionList(MSelectionList& list, bool) {
    Access::list(list) = Access::scene().selection;
    return MStatus::kSuccess;
}

namespace {

MStatus adjust(const std::vector<SelectionItem>& items, MGlobal::ListAdjustment how) {
    SelectionList& selection = Access::scene().selection;
    if (how == MGlobal::kReplaceList) selection.clear();
    if (how == MGlobal::kAddToHeadOfList) {
        for (auto item = items.rbegin(); item != items.rend(); ++item) selection.add_first(*item);
        return MStatus::kSuccess;
    }
    for (const SelectionItem& item : items) {
        const bool take_out = how == MGlobal::kRemoveFromList || how == MGlobal::kXORWithList;
        const bool removed = take_out && selection.remove(item);
        if (!removed && how != MGlobal::kRemoveFromList) selection.add(item);
    }
    return MStatus::kSuccess;
}

} // namespace

MStatus MGlobal::setActiveSelectionList(const MSelectionList& list, ListAdjustment how) {
    return adjust(std::vector<SelectionItem>(Access::list(list).items()), how);
}

MStatus MGlobal::getSelectionListByName(const MString& name, MSelectionList& list) {
    list.clear();
    return list.add(name);
}

MStatus MGlobal::selectByName(const MString& name, ListAdjustment how) {
    const auto found = Access::scene().resolve(Access::text(name));
    return found ? adjust(*found, how) : MStatus(MStatus::kInvalidParameter);
}

MStatus MGlobal::select(MObject& object, ListAdjustment how) {
    const Node* node = Access::node(object);
    return node ? adjust({Access::scene().item(*node)}, how) : MStatus(MStatus::kInvalidParameter);
}

MStatus MGlobal::select(const MDagPath& path, const MObject&, ListAdjustment how) {
    if (!path.isValid()) return MStatus::kInvalidParameter;
    return adjust({{Access::path(path), Access::leaf(path), {}, {}}}, how);
}

MStatus MGlobal::unselect(MObject& object) {
    return select(object, kRemoveFromList);
}
MStatus MGlobal::unselectByName(const MString& name) {
    return selectByName(name, kRemoveFromList);
}
MStatus MGlobal::clearSelectionList() {
    return adjust({}, kReplaceList);
}

MStatus MGlobal::viewFrame(const MTime& time) {
    return MAnimControl::setCurrentTime(time);
}
MStatus MGlobal::viewFrame(double frame) {
    return viewFrame(MTime(frame, MTime::uiUnit()));
}

namespace {

// Runs a line; an error becomes a message, as in the host's script editor.
MStatus run(bool python, const MString& line, bool display, CommandResult& result) {
    Session& session = Session::current();
    if (display) session.info(Access::text(line));
    const auto done = python ? session.run_python(Access::text(line)) : session.run_mel(Access::text(line));
    if (!done) {
        session.error(done.error().text());
        return MStatus::kFailure;
    }
    result = *done;
    if (display && result.kind != CommandResult::Kind::none) session.message(MessageKind::result, result.text());
    return MStatus::kSuccess;
}

MStatus run(bool python, const MString& line, bool display) {
    CommandResult unused;
    return run(python, line, display, unused);
}

} // namespace

MStatus MGlobal::executeCommand(const MString& line, bool display, bool) {
    return run(false, line, display);
}

MStatus MGlobal::executeCommand(const MString& line, MString& result, bool display, bool) {
    CommandResult given;
    const MStatus status = run(false, line, display, given);
    result = text(given.text());
    return status;
}

MStatus MGlobal::executeCommand(const MString& line, double& result, bool display, bool undo) {
    MString given;
    const MStatus status = executeCommand(line, given, display, undo);
    result = given.asDouble();
    return status;
}

MStatus MGlobal::executeCommand(const MString& line, int& result, bool display, bool undo) {
    MString given;
    const MStatus status = executeCommand(line, given, display, undo);
    result = given.asInt();
    return status;
}

MStatus MGlobal::executeCommand(const MString& line, MStringArray& result, bool display, bool) {
    CommandResult given;
    const MStatus status = run(false, line, display, given);
    result.clear();
    for (const std::string& piece : given.pieces()) result.append(text(piece));
    return status;
}

MStatus MGlobal::executeCommand(const MString& line, MDoubleArray& result, bool display, bool undo) {
    MStringArray given;
    const MStatus status = executeCommand(line, given, display, undo);
    result.clear();
    for (unsigned int i = 0; i < given.length(); ++i) result.append(given[i].asDouble());
    return status;
}

MStatus MGlobal::executeCommand(const MString& line, MIntArray& result, bool display, bool undo) {
    MStringArray given;
    const MStatus status = executeCommand(line, given, display, undo);
    result.clear();
    for (unsigned int i = 0; i < given.length(); ++i) result.append(given[i].asInt());
    return status;
}

MString MGlobal::executeCommandStringResult(const MString& line, bool display, bool undo, MStatus* status) {
    MString result;
    put(status, executeCommand(line, result, display, undo));
    return result;
}

MStatus MGlobal::executePythonCommand(const MString& line, bool display, bool) {
    return run(true, line, display);
}

MStatus MGlobal::executePythonCommand(const MString& line, MString& result, bool display, bool) {
    CommandResult given;
    const MStatus status = run(true, line, display, given);
    result = text(given.text());
    return status;
}

MString MGlobal::executePythonCommandStringResult(const MString& line, bool display, bool undo, MStatus* status) {
    MString result;
    put(status, executePythonCommand(line, result, display, undo));
    return result;
}

void MGlobal::displayInfo(const MString& text) {
    Session::current().info(Access::text(text));
}
void MGlobal::displayWarning(const MString& text) {
    Session::current().warning(Access::text(text));
}
void MGlobal::displayError(const MString& text) {
    Session::current().error(Access::text(text));
}

MString MGlobal::mayaVersion() {
    return "2016";
}
int MGlobal::apiVersion() {
    return MAYA_API_VERSION;
}
MGlobal::MMayaState MGlobal::mayaState(MStatus* status) {
    return succeed(status, kBatch);
}
bool MGlobal::isYAxisUp(MStatus* status) {
    return succeed(status, true);
}
bool MGlobal::isZAxisUp(MStatus* status) {
    return succeed(status, false);
}

namespace {

MTime in_ui_unit(double seconds) {
    return MTime(Access::scene().time_unit.from_seconds(seconds), MTime::uiUnit());
}

double seconds_of(const MTime& time) {
    // In the scene's own unit there is one division and no second rounding.
    if (time.unit() == MTime::uiUnit()) return Access::scene().time_unit.to_seconds(time.value());
    return time.as(MTime::kSeconds);
}

} // namespace

MTime MAnimControl::currentTime() {
    return in_ui_unit(Access::scene().current_time());
}

MStatus MAnimControl::setCurrentTime(const MTime& time) {
    const double seconds = seconds_of(time);
    if (!std::isfinite(seconds)) return MStatus::kInvalidParameter;
    Access::scene().set_current_time(seconds);
    return MStatus::kSuccess;
}

MTime MAnimControl::minTime() {
    return in_ui_unit(Access::scene().playback.min);
}
MTime MAnimControl::maxTime() {
    return in_ui_unit(Access::scene().playback.max);
}
MTime MAnimControl::animationStartTime() {
    return in_ui_unit(Access::scene().playback.animation_start);
}
MTime MAnimControl::animationEndTime() {
    return in_ui_unit(Access::scene().playback.animation_end);
}

MStatus Access::set_playback(double Scene::Playback::*which, double seconds) {
    if (!std::isfinite(seconds)) return MStatus::kInvalidParameter;
    scene().playback.*which = seconds;
    return MStatus::kSuccess;
}

MStatus MAnimControl::setMinTime(MTime time) {
    return Access::set_playback(&Scene::Playback::min, seconds_of(time));
}
MStatus MAnimControl::setMaxTime(MTime time) {
    return Access::set_playback(&Scene::Playback::max, seconds_of(time));
}
MStatus MAnimControl::setAnimationStartTime(MTime time) {
    return Access::set_playback(&Scene::Playback::animation_start, seconds_of(time));
}
MStatus MAnimControl::setAnimationEndTime(MTime time) {
    return Access::set_playback(&Scene::Playback::animation_end, seconds_of(time));
}
MStatus MAnimControl::setMinMaxTime(MTime min, MTime max) {
    const MStatus status = setMinTime(min);
    return status ? setMaxTime(max) : status;
}
MStatus MAnimControl::setAnimationStartEndTime(MTime start, MTime end) {
    const MStatus status = setAnimationStartTime(start);
    return status ? setAnimationEndTime(end) : status;
}

MDGContext MDGContext::fsNormal;

bool MDGContext::isNormal(MStatus* status) const {
    return succeed(status, true);
}

M3dView M3dView::active3dView(MStatus* status) {
    return succeed(status, M3dView());
}
MNativeWindowHdl M3dView::applicationShell(MStatus* status) {
    return succeed(status, MNativeWindowHdl());
}
MStatus M3dView::refresh(bool, bool) {
    return MStatus::kSuccess;
}
