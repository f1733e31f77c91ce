#include "host/import/key_joints.h"

#include "host/export/host_time.h"
#include "host/export/transform_conversion.h"

#include <maya/MAnimControl.h>
#include <maya/MGlobal.h>
#include <maya/MMatrix.h>
#include <maya/MQuaternion.h>
#include <maya/MString.h>
#include <maya/MTransformationMatrix.h>
#include <maya/MVector.h>

#include <algorithm>
#include <cmath>

namespace VOR2_EXPORTER_MAYA {
namespace {

constexpr f32 CENTIMETRES_PER_METRE = 100.0F;
constexpr const char* KEY_POSITION = "setKeyframe -at translateX -at translateY -at translateZ;";
constexpr const char* KEY_ROTATION = "setKeyframe -at rotateX -at rotateY -at rotateZ;";
constexpr const char* KEY_BOTH =
    "setKeyframe -at translateX -at translateY -at translateZ -at rotateX -at rotateY -at rotateZ;";

void run(const MString& line) {
    MGlobal::executeCommand(line, false, false);
}

// Selects a joint alone for as long as it stands. The path's shortest unique form is the joint's name,
// and more of the path only where another node bears the name too.
class SELECTED {
public:
    explicit SELECTED(const MDagPath& joint) { run(MString("select -add ") + joint.partialPathName() + ";"); }
    ~SELECTED() { run("select -cl"); }
    SELECTED(const SELECTED&) = delete;
    SELECTED& operator=(const SELECTED&) = delete;
};

double frame_of(f32 time, const IMPORT_TIMES& times) {
    return static_cast<double>(time) / times.diff * static_cast<double>(times.fps_diff);
}

bool is_finite(const VECTOR_3& v) {
    return std::isfinite(v.x) && std::isfinite(v.y) && std::isfinite(v.z);
}
bool is_finite(const QUATERNION& q) {
    return std::isfinite(q.x) && std::isfinite(q.y) && std::isfinite(q.z) && std::isfinite(q.w);
}

// Whether every key was set. `set` puts a value on the joint.
template<class TRACK, class SET>
bool key_track(const TRACK* track, const IMPORT_TIMES& times, const MString& key_line, SET set) {
    if (track == nullptr) return true;
    const auto& values = track->key_values();
    const ARRAY<f32>& key_times = track->key_times();
    if (key_times.empty() && values.size() == 1 && is_finite(values[0])) set(values[0]);
    bool all_set = true;
    const u64 n = std::min(key_times.size(), values.size());
    for (u64 k = 0; k < n; ++k) {
        const double frame = frame_of(key_times[k], times);
        if (!std::isfinite(frame) || !is_finite(values[k])) {
            all_set = false;
            continue;
        }
        MAnimControl::setCurrentTime(time_of_frame(frame));
        set(values[k]);
        run(key_line);
    }
    return all_set;
}

template<class TRACK>
void add_frames(const OWNED<TRACK>& track, const IMPORT_TIMES& times, std::vector<double>& frames) {
    if (!track) return;
    const u64 n = std::min(track->key_times().size(), track->key_values().size());
    for (u64 k = 0; k < n; ++k) {
        const double frame = frame_of(track->key_times()[k], times);
        if (std::isfinite(frame)) frames.push_back(frame);
    }
}

// In order, without those that the host would take for the time of the one before.
std::vector<double> frames_to_reorient(const IMPORT_TIMES& times, const std::vector<double>& own_frames) {
    constexpr double SAME_FRAME = 1e-3;
    const double start = static_cast<double>(times.maya_start);
    const double stop = static_cast<double>(times.maya_stop);
    std::vector<double> frames = own_frames;
    if (stop - start <= MOST_REORIENTED_FRAMES) {
        for (int step = 0; start + step < stop; ++step) frames.push_back(start + step);
    } else {
        MGlobal::displayWarning("The playback range is too long to key the first joint at each of its frames");
        frames.push_back(start);
    }
    if (stop >= start) frames.push_back(stop);
    std::ranges::stable_sort(frames);
    const auto same = [](double a, double b) { return b - a < SAME_FRAME; };
    frames.erase(std::unique(frames.begin(), frames.end(), same), frames.end());
    return frames;
}

MMatrix make_rot_mat() {
    MMatrix rot_mat;
    rot_mat(0, 0) = -1.0;
    rot_mat(1, 1) = rot_mat(2, 2) = 0.0;
    rot_mat(1, 2) = rot_mat(2, 1) = 1.0;
    return rot_mat;
}

MQuaternion to_host_quaternion(const QUATERNION& q) {
    return {static_cast<double>(q.x), static_cast<double>(q.y), static_cast<double>(q.z), static_cast<double>(q.w)};
}

} // namespace

void set_joint_position(MFnIkJoint& joint, const VECTOR_3& GAME_POS) {
    const VECTOR_3 centimetres = GAME_POS * CENTIMETRES_PER_METRE;
    joint.setTranslation(MVector(static_cast<double>(centimetres.x), static_cast<double>(centimetres.z),
                                 static_cast<double>(centimetres.y)),
                         MSpace::kTransform);
}

void set_joint_rotation(MFnIkJoint& joint, const QUATERNION& GAME_ROT) {
    const MQuaternion MAYA_ROT = to_host_quaternion(GAME_ROT);
    MMatrix inter_matrix = MAYA_ROT.asMatrix();
    inter_matrix(3, 3) = 1.0;
    const MMatrix mb_world_mat = vr2_mat() * inter_matrix * vr2_mat_inverse();
    const QUATERNION converted_quat(normalised_axes(mb_world_mat));
    joint.setRotation(to_host_quaternion(converted_quat), MSpace::kTransform);
}

void key_joints(const VOR2& root, const IMPORT_TIMES& times, const MDagPathArray& nodes) {
    run("select -cl"); // making joints may have selected one
    bool all_set = true;
    for (unsigned int j = 0; j < nodes.length(); ++j) {
        const VOR2_MATRIX_NODE& node = root.matrix_hierarchy.nodes[j];
        MFnIkJoint joint(nodes[j]);
        const SELECTED selected(nodes[j]);
        all_set &= key_track(node.position_track.get(), times, KEY_POSITION,
                             [&](const VECTOR_3& key) { set_joint_position(joint, key); });
        all_set &= key_track(node.rotation_track.get(), times, KEY_ROTATION,
                             [&](const QUATERNION& key) { set_joint_rotation(joint, key); });
    }
    if (!all_set) MGlobal::displayWarning("Keys of the vor2 file that aren't finite numbers were left out");
}

std::vector<double> key_frames(const VOR2_MATRIX_NODE& node, const IMPORT_TIMES& times) {
    std::vector<double> frames;
    add_frames(node.position_track, times, frames);
    add_frames(node.rotation_track, times, frames);
    return frames;
}

void reorient_first_joint(MFnIkJoint& joint, const MDagPath& path, const IMPORT_TIMES& times,
                          const std::vector<double>& own_frames) {
    const MMatrix rot_mat = make_rot_mat();
    const std::vector<double> frames = frames_to_reorient(times, own_frames);
    // All poses are read before the first is keyed: a new key changes what the curve says at later times.
    std::vector<MMatrix> reoriented;
    reoriented.reserve(frames.size());
    for (const double frame : frames) {
        MAnimControl::setCurrentTime(time_of_frame(frame));
        const MMatrix to_reorient_vect = joint.transformation().asMatrix();
        reoriented.push_back(to_reorient_vect * rot_mat);
    }
    const SELECTED selected(path);
    for (std::size_t i = 0; i < frames.size(); ++i) {
        const MMatrix& maya_mat = reoriented[i];
        const QUATERNION converted_quat(normalised_axes(maya_mat));
        MAnimControl::setCurrentTime(time_of_frame(frames[i]));
        joint.setRotation(to_host_quaternion(converted_quat), MSpace::kTransform);
        joint.set(MTransformationMatrix(maya_mat));
        run(KEY_BOTH);
    }
}

} // namespace VOR2_EXPORTER_MAYA
