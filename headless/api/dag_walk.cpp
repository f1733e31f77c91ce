// MItDag.
#include "headless/api/access.h"
#include "headless/api/held.h"

#include <maya/MDagPathArray.h>
#include <maya/MItDag.h>

#include <deque>

using namespace headless;

/// The nodes still to be visited: a stack or a queue. Where there are no instances a node is its own path; else
/// each entry carries its path.
struct headless::DagWalk {
    struct Entry {
        DagPath path;
        unsigned int depth = 0;
    };
    MItDag::TraversalType type = MItDag::kDepthFirst;
    MFn::Type filter = MFn::kInvalid;
    DagPath root;
    std::deque<Entry> open;
    Entry current;
    bool pruned = false; // of the current node: its children aren't to be visited

    Node* node() const { return Access::scene().find(current.path.leaf()); }

    void start() {
        pruned = false;
        open.assign(1, {root, 0});
        advance();
    }

    // On to the next entry that is there and of the kind asked for.
    void advance() {
        while (!open.empty()) {
            const bool depth_first = type == MItDag::kDepthFirst;
            current = depth_first ? open.back() : open.front();
            if (depth_first)
                open.pop_back();
            else
                open.pop_front();
            const Node* at = node();
            if (!at) continue;
            if (filter == MFn::kInvalid || at->type().has_fn(filter)) return;
            add_children();
        }
        current = {};
    }

    void add_children() {
        const Node* at = node();
        if (std::exchange(pruned, false) || !at) return;
        const auto add = [&](const Node& child) {
            open.push_back({Access::scene().extended(current.path, child), current.depth + 1});
        };
        if (type == MItDag::kDepthFirst) {
            for (auto child = at->children().rbegin(); child != at->children().rend(); ++child) add(**child);
        } else {
            for (const Node* child : at->children()) add(*child);
        }
    }
};

template class headless::Held<headless::DagWalk>;

MItDag::MItDag(TraversalType type, MFn::Type filter, MStatus* status) {
    put(status, reset(MObject(), type, filter));
}

MStatus MItDag::reset() {
    walk_->start();
    return MStatus::kSuccess;
}

MStatus MItDag::reset(const MObject& root, TraversalType type, MFn::Type filter) {
    const Node* node = root == MObject() ? &Access::scene().world() : Access::node(root);
    if (!node || !node->type().is_dag()) return MStatus::kInvalidParameter;
    return reset(Access::path(Access::scene().path_to(*node)), type, filter);
}

MStatus MItDag::reset(const MDagPath& root, TraversalType type, MFn::Type filter) {
    if (!root.isValid() || type == kInvalidType) return MStatus::kInvalidParameter;
    walk_->root = Access::path(root);
    walk_->type = type;
    walk_->filter = filter;
    return reset();
}

bool MItDag::isDone(MStatus* status) const {
    put(status, MStatus::kSuccess);
    return !walk_->current.path;
}

MStatus MItDag::next() {
    if (isDone()) return MStatus::kFailure;
    walk_->add_children();
    walk_->advance();
    return MStatus::kSuccess;
}

MStatus MItDag::prune() {
    if (isDone()) return MStatus::kFailure;
    walk_->pruned = true;
    return MStatus::kSuccess;
}

MObject MItDag::currentItem(MStatus* status) {
    const Node* node = walk_->node();
    return node ? succeed(status, Access::object(node)) : fail(status, MObject());
}

MObject MItDag::item(MStatus* status) {
    return currentItem(status);
}

MStatus MItDag::getPath(MDagPath& path) const {
    if (!walk_->node()) return MStatus::kFailure;
    path = Access::path(walk_->current.path);
    return MStatus::kSuccess;
}

MStatus MItDag::getAllPaths(MDagPathArray& paths) const {
    return MDagPath::getAllPathsTo(Access::object(walk_->node()), paths);
}

MString MItDag::fullPathName(MStatus* status) const {
    return Access::path(walk_->current.path).fullPathName(status);
}

MString MItDag::partialPathName(MStatus* status) const {
    return Access::path(walk_->current.path).partialPathName(status);
}

unsigned int MItDag::depth(MStatus* status) const {
    return isDone() ? fail(status, 0u) : succeed(status, walk_->current.depth);
}

unsigned int MItDag::instanceCount(bool total, MStatus* status) const {
    const Node* node = walk_->node();
    if (!node) return fail(status, 0u);
    if (!total) return succeed(status, static_cast<unsigned int>(node->parents().size()));
    return succeed(status, static_cast<unsigned int>(Access::scene().instance_count(*node)));
}

bool MItDag::isInstanced(bool indirect, MStatus* status) const {
    return instanceCount(indirect, status) > 1;
}
