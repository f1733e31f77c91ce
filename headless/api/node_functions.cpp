// MFnDependencyNode and MFnDagNode.
#include "headless/api/access.h"

#include <maya/MDagPathArray.h>
#include <maya/MFnDagNode.h>
#include <maya/MMatrix.h>

#include <algorithm>

using namespace headless;

MObject MFnDependencyNode::create(const MString& type, const MString& name, MStatus* status) {
    const auto made = Access::scene().create_node(Access::text(type), Access::text(name));
    if (!made) return fail(status, MObject());
    attach(Access::object(*made), status);
    return Access::object(*this);
}

MString MFnDependencyNode::name(MStatus* status) const {
    const Node* node = Access::node(*this);
    return node ? succeed(status, text(node->name())) : fail(status, MString());
}

bool MFnDependencyNode::hasUniqueName(MStatus* status) const {
    const Node* node = Access::node(*this);
    return node ? succeed(status, Access::scene().unique_name_of(*node) == node->name()) : fail(status, false);
}

MObject MFnDependencyNode::create(const MString& type, MStatus* status) {
    return create(type, MString(), status);
}

MString MFnDependencyNode::setName(const MString& name, bool, MStatus* status) {
    return setName(name, status);
}

MString MFnDependencyNode::setName(const MString& name, MStatus* status) {
    Node* node = Access::node(*this);
    if (!node) return fail(status, MString());
    const Result<std::string> given = Access::scene().rename(*node, Access::text(name));
    return given ? succeed(status, text(*given)) : fail(status, text(node->name()), MStatus::kInvalidParameter);
}

MString MFnDependencyNode::typeName(MStatus* status) const {
    const Node* node = Access::node(*this);
    return node ? succeed(status, text(node->type().name())) : fail(status, MString());
}

bool MFnDependencyNode::isDefaultNode(MStatus* status) const {
    const Node* node = Access::node(*this);
    return node ? succeed(status, node->default_node()) : fail(status, false);
}

// References are read into the scene, so its nodes are all its own.
bool MFnDependencyNode::isFromReferencedFile(MStatus* status) const {
    return Access::node(*this) ? succeed(status, false) : fail(status, false);
}

bool MFnDependencyNode::hasAttribute(const MString& name, MStatus* status) const {
    const Node* node = Access::node(*this);
    if (!node) return fail(status, false);
    return succeed(status, node->find_attribute(Access::text(name)) != no_attribute);
}

unsigned int MFnDependencyNode::attributeCount(MStatus* status) const {
    const Node* node = Access::node(*this);
    return node ? succeed(status, node->attribute_count()) : fail(status, 0u);
}

MPlug MFnDependencyNode::findPlug(const MString& name, MStatus* status) const {
    const Node* node = Access::node(*this);
    const Plug plug = node ? node->find_plug(Access::text(name)) : Plug();
    return plug ? succeed(status, Access::plug(plug)) : fail(status, MPlug(), MStatus::kInvalidParameter);
}

MPlug MFnDependencyNode::findPlug(const MString& name, bool, MStatus* status) const {
    return findPlug(name, status);
}

void MFnDagNode::attach(const MDagPath& path, MStatus* status) {
    put(status, MFnDagNode::setObject(path));
}

MStatus MFnDagNode::setObject(MObject& object) {
    return setObject(static_cast<const MObject&>(object));
}

MStatus MFnDagNode::setObject(const MObject& object) {
    path_.forget();
    return MFnBase::setObject(object);
}

MStatus MFnDagNode::setObject(const MDagPath& path) {
    const MStatus status = setObject(path.node());
    if (status) *path_ = path;
    return status;
}

MObject MFnDagNode::create(const MString& type, MObject& parent, MStatus* status) {
    return create(type, MString(), parent, status);
}

MObject MFnDagNode::create(const MString& type, const MString& name, MObject& parent, MStatus* status) {
    Node* above = Access::node(parent);
    if (!above && parent != MObject::kNullObj) return fail(status, MObject(), MStatus::kInvalidParameter);
    const auto made = Access::scene().create_node(Access::text(type), Access::text(name), above);
    if (!made) return fail(status, MObject());
    attach(Access::object(*made), status);
    if (Access::object(*this).isNull()) Access::scene().remove_node(**made); // of a type that isn't of the DAG
    return Access::object(*this);
}

unsigned int MFnDagNode::parentCount(MStatus* status) const {
    const Node* node = Access::node(*this);
    if (!node) return fail(status, 0u);
    return succeed(status, static_cast<unsigned int>(node->parents().size()));
}

MObject MFnDagNode::parent(unsigned int i, MStatus* status) const {
    const Node* node = Access::node(*this);
    if (!node || i >= node->parents().size()) return fail(status, MObject(), MStatus::kInvalidParameter);
    return succeed(status, Access::object(node->parents()[i]));
}

unsigned int MFnDagNode::childCount(MStatus* status) const {
    const Node* node = Access::node(*this);
    if (!node) return fail(status, 0u);
    return succeed(status, static_cast<unsigned int>(node->children().size()));
}

MObject MFnDagNode::child(unsigned int i, MStatus* status) const {
    const Node* node = Access::node(*this);
    if (!node || i >= node->children().size()) return fail(status, MObject(), MStatus::kInvalidParameter);
    return succeed(status, Access::object(node->children()[i]));
}

bool MFnDagNode::hasParent(const MObject& other, MStatus* status) const {
    const Node* node = Access::node(*this);
    if (!node) return fail(status, false);
    return succeed(status, std::ranges::find(node->parents(), Access::node(other)) != node->parents().end());
}

bool MFnDagNode::hasChild(const MObject& other, MStatus* status) const {
    const Node* node = Access::node(*this);
    if (!node) return fail(status, false);
    return succeed(status, std::ranges::find(node->children(), Access::node(other)) != node->children().end());
}

MStatus MFnDagNode::addChild(MObject& object, unsigned int index, bool keepExistingParents) {
    Node* parent = Access::node(*this);
    Node* child = Access::node(object);
    if (!parent || !child) return MStatus::kInvalidParameter;
    const int position = index == kNextPos ? -1 : static_cast<int>(std::min(index, 0x7fffffffu));
    Scene& scene = Access::scene();
    const bool instance = keepExistingParents && child->parent() && !child->parent()->is_world();
    const Result<void> done =
        instance ? scene.add_parent(*child, *parent, position) : scene.reparent(*child, parent, position);
    return done ? MStatus::kSuccess : MStatus::kFailure;
}

MStatus MFnDagNode::removeChild(MObject& object) {
    Node* parent = Access::node(*this);
    Node* child = Access::node(object);
    if (!parent || !child || !hasChild(object)) return MStatus::kInvalidParameter;
    Scene& scene = Access::scene();
    const bool last = child->parents().size() == 1;
    const Result<void> done = last ? scene.reparent(*child, nullptr) : scene.remove_parent(*child, *parent);
    return done ? MStatus::kSuccess : MStatus::kFailure;
}

MObject MFnDagNode::dagRoot(MStatus* status) {
    return succeed(status, Access::object(&Access::scene().world()));
}

MStatus MFnDagNode::getPath(MDagPath& path) const {
    if (!Access::node(*this)) return MStatus::kFailure;
    if (path_.is_made() && path_->isValid()) {
        path = *path_;
        return MStatus::kSuccess;
    }
    return MDagPath::getAPathTo(Access::object(*this), path);
}

MDagPath MFnDagNode::dagPath(MStatus* status) const {
    MDagPath out;
    put(status, getPath(out));
    return out;
}

MStatus MFnDagNode::getAllPaths(MDagPathArray& paths) const {
    return MDagPath::getAllPathsTo(Access::object(*this), paths);
}
MString MFnDagNode::fullPathName(MStatus* status) const {
    return dagPath().fullPathName(status);
}
MString MFnDagNode::partialPathName(MStatus* status) const {
    return dagPath().partialPathName(status);
}

unsigned int MFnDagNode::instanceCount(bool total, MStatus* status) const {
    const Node* node = Access::node(*this);
    if (!node) return fail(status, 0u);
    if (!total) return succeed(status, static_cast<unsigned int>(node->parents().size()));
    return succeed(status, static_cast<unsigned int>(Access::scene().instance_count(*node)));
}

bool MFnDagNode::isInstanced(bool indirect, MStatus* status) const {
    return instanceCount(indirect, status) > 1;
}

bool MFnDagNode::isIntermediateObject(MStatus* status) const {
    return findPlug("intermediateObject").asBool(MDGContext::fsNormal, status);
}

MMatrix MFnDagNode::transformationMatrix(MStatus* status) const {
    Node* node = Access::node(*this);
    return node ? succeed(status, matrix(Access::scene().local_matrix(*node))) : fail(status, MMatrix());
}
