#pragma once

#include "headless/graph/scene.h"
#include "headless/session.h"

#include <maya/MArgList.h>
#include <maya/MArgParser.h>
#include <maya/MDagPath.h>
#include <maya/MFnMesh.h>
#include <maya/MMatrix.h>
#include <maya/MObject.h>
#include <maya/MPlug.h>
#include <maya/MPxCommand.h>
#include <maya/MQuaternion.h>
#include <maya/MSelectionList.h>
#include <maya/MStringArray.h>
#include <maya/MSyntax.h>
#include <maya/MTransformationMatrix.h>
#include <maya/MVector.h>

namespace headless {

struct Mesh;
struct ParsedArguments;
struct SyntaxTable;

/// What an argument list holds.
struct Words {
    std::vector<MString> all;
};

/// What an object stands for that is no node: what a plug has, or an entry of the list that it has.
struct DataObject {
    NodeHandle node;
    PlugKey key;
    MFn::Type type = MFn::kInvalid;
    unsigned int part = 0;

    bool has_fn(MFn::Type wanted) const;
};
/// The slot of such objects, which no node has.
inline constexpr std::uint32_t data_slot = ~1u;

/// Between the public API's objects and the graph's.
struct Access {
    static Scene& scene() { return Session::current().scene(); }

    static MObject object(const MFnBase& functions) { return object(NodeHandle{functions.slot_, functions.serial_}); }
    static Node* node(const MFnBase& functions) { return scene().find({functions.slot_, functions.serial_}); }
    static Node* node(const MObject& object) { return scene().find({object.slot_, object.serial_}); }
    static NodeHandle handle(const MObject& object) { return {object.slot_, object.serial_}; }
    static MObject object(NodeHandle handle) {
        MObject out;
        out.slot_ = handle.slot;
        out.serial_ = handle.serial;
        return out;
    }
    static MObject object(const Node* node) { return node ? object(node->handle()) : MObject(); }
    static MObject plugin_object();
    /// Null for a node, and when what it stood for is gone.
    static const DataObject* data(const MObject& object);
    static MObject data_of(const Plug& plug); ///< null where the plug has no data

    /// A time that isn't finite is refused.
    static MStatus set_playback(double Scene::Playback::*which, double seconds);

    static NodeHandle leaf(const MDagPath& path) { return {path.slot_, path.serial_}; }
    static DagPath path(const MDagPath& path);
    static MDagPath path(const DagPath& path);
    static Node* node(const MDagPath& path) { return scene().find(leaf(path)); }

    /// What a function set of a mesh works on; null when its node is gone. What its history couldn't do is told once.
    static const Mesh* mesh(const MFnMesh& functions);

    static Plug plug(const MPlug& plug); ///< null when the node is gone
    static MPlug plug(const Plug& plug);

    static SelectionList& list(MSelectionList& list) { return *list.list_; }
    static const SelectionList& list(const MSelectionList& list) { return *list.list_; }

    static const SyntaxTable& syntax(const MSyntax& syntax) { return *syntax.table_; }
    static std::vector<MString>& words(MArgList& list) { return list.words_->all; }
    static const std::vector<MString>& words(const MArgList& list) { return list.words_->all; }
    static const ParsedArguments& parsed(const MArgParser& parser) { return *parser.parsed_; }
    static const std::string& text(const MString& text) { return text.text_; }
    static void set_syntax(MPxCommand& command, const MSyntax& syntax) { *command.syntax_ = syntax; }

    /// A transformation that gives the matrix as it is, and takes its parts apart by these values.
    static MTransformationMatrix transformation(const Matrix& matrix, const TransformValues& values);
};

inline MString text(const std::string& s) {
    return MString(s.c_str(), static_cast<int>(s.size()));
}
inline Vector3 vector(const MVector& v) {
    return {v.x, v.y, v.z};
}
inline MVector vector(const Vector3& v) {
    return {v.x, v.y, v.z};
}
inline Matrix matrix(const MMatrix& m) {
    Matrix out;
    std::copy(&m.matrix[0][0], &m.matrix[0][0] + 16, &out.m[0][0]);
    return out;
}
inline MMatrix matrix(const Matrix& m) {
    return MMatrix(m.m);
}
inline Quaternion quaternion(const MQuaternion& q) {
    return {q.x, q.y, q.z, q.w};
}
inline MQuaternion quaternion(const Quaternion& q) {
    return {q.x, q.y, q.z, q.w};
}

inline void put(MStatus* status, MStatus value) {
    if (status) *status = value;
}
/// For calls that give an object's value: the status told, the fallback given.
template<typename T>
T fail(MStatus* status, T fallback, MStatus::MStatusCode code = MStatus::kFailure) {
    put(status, code);
    return fallback;
}
template<typename T>
T succeed(MStatus* status, T value) {
    put(status, MStatus::kSuccess);
    return value;
}

} // namespace headless
