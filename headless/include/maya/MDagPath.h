#pragma once

#include <maya/MFn.h>
#include <maya/MMatrix.h>
#include <maya/MObject.h>
#include <maya/MStatus.h>
#include <maya/MString.h>

#include <memory>

class MDagPathArray;

/// One way from the world to a DAG node. It follows its node when that is moved under another parent.
class MDagPath {
public:
    MDagPath() = default;
    static MStatus getAPathTo(const MObject& node, MDagPath& path);
    static MStatus getAllPathsTo(const MObject& node, MDagPathArray& paths);

    bool isValid(MStatus* status = NULL) const;
    MObject node(MStatus* status = NULL) const;
    MObject transform(MStatus* status = NULL) const; ///< the last transform on the way
    bool hasFn(MFn::Type type, MStatus* status = NULL) const;
    MFn::Type apiType(MStatus* status = NULL) const;
    unsigned int length(MStatus* status = NULL) const; ///< nodes on the way, the world not counted
    unsigned int instanceNumber(MStatus* status = NULL) const;
    bool isInstanced(MStatus* status = NULL) const;
    bool isVisible(MStatus* status = NULL) const;
    unsigned int childCount(MStatus* status = NULL) const;
    MObject child(unsigned int i, MStatus* status = NULL) const;

    MStatus push(const MObject& child);
    MStatus pop(unsigned int count = 1);
    MStatus extendToShape(); ///< refused when the node has no shape or more than one
    MStatus numberOfShapesDirectlyBelow(unsigned int& count) const;
    MStatus extendToShapeDirectlyBelow(unsigned int i);

    MMatrix inclusiveMatrix(MStatus* status = NULL) const;
    MMatrix exclusiveMatrix(MStatus* status = NULL) const;
    MMatrix inclusiveMatrixInverse(MStatus* status = NULL) const { return inclusiveMatrix(status).inverse(); }
    MMatrix exclusiveMatrixInverse(MStatus* status = NULL) const { return exclusiveMatrix(status).inverse(); }

    MString fullPathName(MStatus* status = NULL) const;    ///< "|a|b"
    MString partialPathName(MStatus* status = NULL) const; ///< as much of it as is unique
    MStatus set(const MDagPath& other);
    bool operator==(const MDagPath& other) const;
    bool operator!=(const MDagPath& other) const { return !(*this == other); }

private:
    friend struct headless::Access;
    std::uint32_t slot_ = 0;
    std::uint32_t serial_ = 0;
    std::shared_ptr<const void> way_; // of an instance: the nodes on the way
};
