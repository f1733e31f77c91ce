#pragma once

#include <maya/MFnDependencyNode.h>
#include <maya/MObject.h>
#include <maya/detail/held.h>

#include <stdlib.h>

class MDagPath;
class MDagPathArray;
class MMatrix;

/// Operations on a node of the DAG. One made from a path stands for that path, where an instance has several.
class MFnDagNode : public MFnDependencyNode {
public:
    enum { kNextPos = 0xff };

    MFnDagNode() {}
    MFnDagNode(MObject& object, MStatus* status = nullptr) { attach(object, status); }
    MFnDagNode(const MObject& object, MStatus* status = nullptr) { attach(object, status); }
    MFnDagNode(const MDagPath& path, MStatus* status = nullptr) { attach(path, status); }
    MFn::Type type() const override { return MFn::kDagNode; }
    MStatus setObject(MObject& object) override;
    MStatus setObject(const MObject& object) override;
    virtual MStatus setObject(const MDagPath& path);

    /// Makes a node under a parent, or under the world; nothing of a type that isn't of the DAG.
    MObject create(const MString& type, MObject& parent = MObject::kNullObj, MStatus* status = nullptr);
    MObject create(const MString& type, const MString& name, MObject& parent = MObject::kNullObj,
                   MStatus* status = nullptr);

    /// The world counts: a top-level node has one parent.
    unsigned int parentCount(MStatus* status = nullptr) const;
    MObject parent(unsigned int i, MStatus* status = nullptr) const;
    unsigned int childCount(MStatus* status = nullptr) const;
    MObject child(unsigned int i, MStatus* status = nullptr) const;
    bool hasParent(const MObject& node, MStatus* status = nullptr) const;
    bool hasChild(const MObject& node, MStatus* status = nullptr) const;
    /// Hangs a node under this one, away from its other parents unless told to keep them. Its own attributes
    /// stay as they are, so it moves with its new parent. A name that is taken here gets a number.
    MStatus addChild(MObject& child, unsigned int index = kNextPos, bool keepExistingParents = false);
    MStatus removeChild(MObject& child); ///< of its last parent: it goes under the world
    MObject dagRoot(MStatus* status = nullptr);

    MStatus getPath(MDagPath& path) const;
    MDagPath dagPath(MStatus* status = nullptr) const;
    MStatus getAllPaths(MDagPathArray& paths) const;
    MString fullPathName(MStatus* status = nullptr) const;
    MString partialPathName(MStatus* status = nullptr) const;
    bool isInstanced(bool indirect = true, MStatus* status = nullptr) const;
    unsigned int instanceCount(bool total, MStatus* status = nullptr) const;
    bool isIntermediateObject(MStatus* status = nullptr) const;
    MMatrix transformationMatrix(MStatus* status = nullptr) const;

protected:
    using MFnBase::attach;
    void attach(const MDagPath& path, MStatus* status);

private:
    MFnDagNode(const MFnDagNode&);
    MFnDagNode& operator=(const MFnDagNode&);
    MFnDagNode* operator&() const;

    headless::Held<MDagPath> path_; // made where the set stands for one
};
