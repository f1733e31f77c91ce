// MObject, MFnBase and MDagPath.
#include "headless/api/access.h"

#include "headless/api/held.h"

#include <maya/MDagPathArray.h>
#include <maya/MFnBase.h>
#include <maya/MObjectHandle.h>

#include <algorithm>
#include <memory>

using namespace headless;

MObject MObject::kNullObj;

/// The nodes on the way to an instance.
struct headless::WayOfInstance {
    std::shared_ptr<const std::vector<NodeHandle>> nodes;
};
template class headless::Held<headless::WayOfInstance>;
template class headless::Held<MDagPath>;

namespace {

// What the host gives a plug-in's entry function: no node, and told from every node by its slot.
constexpr NodeHandle plugin_handle{~0u, ~0u};

} // namespace

MObject Access::plugin_object() {
    return object(plugin_handle);
}

bool MObject::hasFn(MFn::Type type) const {
    if (Access::handle(*this) == plugin_handle) return type == MFn::kPlugin || type == MFn::kBase;
    if (const DataObject* data = Access::data(*this)) return data->has_fn(type);
    const Node* node = Access::node(*this);
    return node && node->type().has_fn(type);
}

MFn::Type MObject::apiType() const {
    if (Access::handle(*this) == plugin_handle) return MFn::kPlugin;
    if (const DataObject* data = Access::data(*this)) return data->type;
    const Node* node = Access::node(*this);
    return node ? node->type().api_type() : MFn::kInvalid;
}

unsigned int MObjectHandle::hashCode() const {
    const NodeHandle handle = Access::handle(object_);
    return handle.slot * 2654435761u ^ handle.serial;
}

bool MObject::isNull() const {
    return Access::handle(*this) != plugin_handle && !Access::node(*this) && !Access::data(*this);
}

MFnBase::MFnBase() = default;
MFnBase::~MFnBase() = default;

MFn::Type MFnBase::type() const {
    return MFn::kBase;
}
bool MFnBase::hasObj(MFn::Type kind) const {
    return kind == type();
}
bool MFnBase::hasObj(const MObject& object) const {
    return object.hasFn(type());
}

void MFnBase::attach(const MObject& object, MStatus* status) {
    put(status, setObject(object));
}

MObject MFnBase::object(MStatus* status) const {
    const MObject held = Access::object(*this);
    return held.isNull() ? fail(status, MObject()) : succeed(status, held);
}

MStatus MFnBase::setObject(MObject& object) {
    return setObject(static_cast<const MObject&>(object));
}

MStatus MFnBase::setObject(const MObject& object) {
    const bool fits = object.hasFn(type());
    const NodeHandle handle = Access::handle(fits ? object : MObject());
    slot_ = handle.slot;
    serial_ = handle.serial;
    return fits ? MStatus::kSuccess : MStatus::kInvalidParameter;
}

DagPath Access::path(const MDagPath& path) {
    return path.way_.is_made() ? DagPath(leaf(path), path.way_->nodes) : DagPath(leaf(path));
}

MDagPath Access::path(const DagPath& path) {
    MDagPath out;
    out.slot_ = path.leaf().slot;
    out.serial_ = path.leaf().serial;
    if (path.shared_way()) out.way_->nodes = path.shared_way();
    return out;
}

MStatus MDagPath::getAPathTo(const MObject& object, MDagPath& path) {
    const Node* node = Access::node(object);
    if (!node || !node->type().is_dag()) return MStatus::kInvalidParameter;
    path = Access::path(Access::scene().path_to(*node));
    return MStatus::kSuccess;
}

MDagPath MDagPath::getAPathTo(const MObject& object, MStatus* status) {
    MDagPath out;
    put(status, getAPathTo(object, out));
    return out;
}

MStatus MDagPath::getAllPathsTo(const MObject& object, MDagPathArray& paths) {
    const Node* node = Access::node(object);
    if (!node || !node->type().is_dag()) return MStatus::kInvalidParameter;
    paths.clear();
    for (const DagPath& path : Access::scene().paths_to(*node)) paths.append(Access::path(path));
    return MStatus::kSuccess;
}

bool MDagPath::isValid(MStatus* status) const {
    put(status, MStatus::kSuccess);
    const Node* leaf = Access::node(*this);
    return leaf && (!way_.is_made() || !Access::scene().nodes_on(Access::path(*this)).empty());
}

MObject MDagPath::node(MStatus* status) const {
    const Node* leaf = Access::node(*this);
    return leaf ? succeed(status, Access::object(leaf)) : fail(status, MObject());
}

MObject MDagPath::transform(MStatus* status) const {
    const std::vector<Node*> nodes = Access::scene().nodes_on(Access::path(*this));
    for (auto at = nodes.rbegin(); at != nodes.rend(); ++at) {
        if ((*at)->type().is_transform()) return succeed(status, Access::object(*at));
    }
    return fail(status, MObject());
}

bool MDagPath::hasFn(MFn::Type type, MStatus* status) const {
    return node(status).hasFn(type);
}
MFn::Type MDagPath::apiType(MStatus* status) const {
    return node(status).apiType();
}

unsigned int MDagPath::length(MStatus* status) const {
    put(status, isValid() ? MStatus::kSuccess : MStatus::kFailure);
    return static_cast<unsigned int>(Access::scene().nodes_on(Access::path(*this)).size());
}

unsigned int MDagPath::instanceNumber(MStatus* status) const {
    put(status, isValid() ? MStatus::kSuccess : MStatus::kFailure);
    return static_cast<unsigned int>(Access::scene().instance_number(Access::path(*this)));
}

bool MDagPath::isInstanced(MStatus* status) const {
    const Node* leaf = Access::node(*this);
    if (!leaf) return fail(status, false);
    return succeed(status, Access::scene().instance_count(*leaf) > 1);
}

bool MDagPath::isVisible(MStatus* status) const {
    if (!isValid()) return fail(status, false);
    put(status, MStatus::kSuccess);
    for (Node* node : Access::scene().nodes_on(Access::path(*this))) {
        const Plug visibility = node->find_plug("visibility"), hidden = node->find_plug("intermediateObject");
        if (!Access::scene().evaluate(visibility).boolean() || Access::scene().evaluate(hidden).boolean()) return false;
    }
    return true;
}

unsigned int MDagPath::childCount(MStatus* status) const {
    const Node* leaf = Access::node(*this);
    if (!leaf) return fail(status, 0u);
    return succeed(status, static_cast<unsigned int>(leaf->children().size()));
}

MObject MDagPath::child(unsigned int i, MStatus* status) const {
    const Node* leaf = Access::node(*this);
    if (!leaf || i >= leaf->children().size()) return fail(status, MObject());
    return succeed(status, Access::object(leaf->children()[i]));
}

MStatus MDagPath::push(const MObject& child) {
    const Node* leaf = Access::node(*this);
    const Node* below = Access::node(child);
    if (!leaf || !below || std::ranges::find(leaf->children(), below) == leaf->children().end())
        return MStatus::kInvalidParameter;
    *this = Access::path(Access::scene().extended(Access::path(*this), *below));
    return MStatus::kSuccess;
}

MStatus MDagPath::pop(unsigned int count) {
    const std::vector<Node*> nodes = Access::scene().nodes_on(Access::path(*this));
    if (count > nodes.size()) return MStatus::kInvalidParameter;
    const std::size_t left = nodes.size() - count;
    if (left == 0) {
        *this = Access::path(DagPath(Access::scene().world().handle()));
    } else if (way_.is_made()) {
        const DagPath path = Access::path(*this);
        *this = Access::path(DagPath(std::vector<NodeHandle>(path.way().begin(), path.way().begin() + left)));
    } else {
        *this = Access::path(DagPath(nodes[left - 1]->handle()));
    }
    return MStatus::kSuccess;
}

namespace {

std::vector<Node*> shapes_below(const MDagPath& path) {
    std::vector<Node*> out;
    if (const Node* leaf = Access::node(path)) {
        for (Node* child : leaf->children()) {
            if (child->type().is_shape()) out.push_back(child);
        }
    }
    return out;
}

} // namespace

MStatus MDagPath::extendToShape() {
    const Node* leaf = Access::node(*this);
    if (leaf && leaf->type().is_shape()) return MStatus::kSuccess;
    const std::vector<Node*> shapes = shapes_below(*this);
    return shapes.size() == 1 ? push(Access::object(shapes.front())) : MStatus(MStatus::kFailure);
}

MStatus MDagPath::numberOfShapesDirectlyBelow(unsigned int& count) const {
    count = static_cast<unsigned int>(shapes_below(*this).size());
    return isValid() ? MStatus::kSuccess : MStatus::kFailure;
}

MStatus MDagPath::extendToShapeDirectlyBelow(unsigned int i) {
    const std::vector<Node*> shapes = shapes_below(*this);
    return i < shapes.size() ? push(Access::object(shapes[i])) : MStatus(MStatus::kInvalidParameter);
}

MMatrix MDagPath::inclusiveMatrix(MStatus* status) const {
    if (!isValid()) return fail(status, MMatrix());
    if (const Node* leaf = Access::scene().find(Access::path(*this).leaf())) Session::current().note_asked(*leaf);
    EvaluationContext context(Access::scene());
    return succeed(status, matrix(context.world_matrix(Access::path(*this))));
}

MMatrix MDagPath::exclusiveMatrix(MStatus* status) const {
    if (!isValid()) return fail(status, MMatrix());
    EvaluationContext context(Access::scene());
    return succeed(status, matrix(context.parent_matrix(Access::path(*this))));
}

MMatrix MDagPath::inclusiveMatrixInverse(MStatus* status) const {
    return inclusiveMatrix(status).inverse();
}
MMatrix MDagPath::exclusiveMatrixInverse(MStatus* status) const {
    return exclusiveMatrix(status).inverse();
}

MString MDagPath::fullPathName(MStatus* status) const {
    put(status, isValid() ? MStatus::kSuccess : MStatus::kFailure);
    return text(Access::scene().full_name(Access::path(*this)));
}

MString MDagPath::partialPathName(MStatus* status) const {
    put(status, isValid() ? MStatus::kSuccess : MStatus::kFailure);
    return text(Access::scene().partial_name(Access::path(*this)));
}

MStatus MDagPath::set(const MDagPath& other) {
    *this = other;
    return MStatus::kSuccess;
}

bool MDagPath::operator==(const MDagPath& other) const {
    if (slot_ != other.slot_ || serial_ != other.serial_) return false;
    return Access::path(*this) == Access::path(other);
}
