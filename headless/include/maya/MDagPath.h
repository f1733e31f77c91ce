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

    bool isValid(MStatus* status = nullptr) const;
    MObject node(MStatus* status = nullptr) const;
    MObject transform(MStatus* status = nullptr) const; ///< the last transform on the way
    bool hasFn(MFn::Type type, MStatus* status = nullptr) const;
    MFn::Type apiType(MStatus* status = nullptr) const;
    unsigned int length(MStatus* status = nullptr) const; ///< nodes on the way, the world not counted
    unsigned int instanceNumber(MStatus* status = nullptr) const;
    bool isInstanced(MStatus* status = nullptr) const;
    bool isVisible(MStatus* status = nullptr) const;
    unsigned int childCount(MStatus* status = nullptr) const;
    MObject child(unsigned int i, MStatus* status = nullptr) const;

    MStatus push(const MObject& child);
    MStatus pop(unsigned int count = 1);
    MStatus extendToShape(); ///< refused when the node has no shape or more than one
    MStatus numberOfShapesDirectlyBelow(unsigned int& count) const;
    MStatus extendToShapeDirectlyBelow(unsigned int i);

    MMatrix inclusiveMatrix(MStatus* status = nullptr) const;
    MMatrix exclusiveMatrix(MStatus* status = nullptr) const;
    MMatrix inclusiveMatrixInverse(MStatus* status = nullptr) const { return inclusiveMatrix(status).inverse(); }
    MMatrix exclusiveMatrixInverse(MStatus* status = nullptr) const { return exclusiveMatrix(status).inverse(); }

    MString fullPathName(MStatus* status = nullptr) const;    ///< "|a|b"
    MString partialPathName(MStatus* status = nullptr) const; ///< as much of it as is unique
    MStatus set(const MDagPath& other);
    bool operator==(const MDagPath& other) const;
    bool operator!=(const MDagPath& other) const { return !(*this == other); }

private:
    friend struct headless::Access;
    std::uint32_t slot_ = 0;
    std::uint32_t serial_ = 0;
    std::shared_ptr<const void> way_; // of an instance: the nodes on the way
};
