#pragma once

#include <maya/MIntArray.h>
#include <maya/MObject.h>
#include <maya/MStatus.h>
#include <maya/detail/held.h>

class MDagPath;
class MDagPathArray;
class MString;

namespace headless {
struct DagWalk;
}

/// Walks the DAG from the world, or from a given node, over every way to every node: the default cameras and
/// the shapes too. A whole walk takes time in proportion to the nodes it visits. Nodes that come or go during
/// the walk are visited or not, but never harm it.
class MItDag {
public:
    enum TraversalType { kInvalidType, kDepthFirst, kBreadthFirst };

    MItDag(TraversalType type = kDepthFirst, MFn::Type filter = MFn::kInvalid, MStatus* status = nullptr);

    MStatus reset();
    MStatus reset(const MObject& root, TraversalType type = kDepthFirst, MFn::Type filter = MFn::kInvalid);
    MStatus reset(const MDagPath& root, TraversalType type = kDepthFirst, MFn::Type filter = MFn::kInvalid);
    bool isDone(MStatus* status = nullptr) const;
    MStatus next();
    MStatus prune(); ///< leaves out what stands under the current node
    MObject currentItem(MStatus* status = nullptr);
    MObject item(MStatus* status = nullptr);
    MStatus getPath(MDagPath& path) const;
    MStatus getAllPaths(MDagPathArray& paths) const;
    MString fullPathName(MStatus* status = nullptr) const;
    MString partialPathName(MStatus* status = nullptr) const;
    unsigned int depth(MStatus* status = nullptr) const; ///< below where the walk began
    unsigned int instanceCount(bool total, MStatus* status = nullptr) const;
    bool isInstanced(bool indirect = true, MStatus* status = nullptr) const;

private:
    headless::Held<headless::DagWalk> walk_;
};
