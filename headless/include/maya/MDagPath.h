#pragma once

#include <maya/MObject.h>
#include <maya/MStatus.h>
#include <maya/MTypes.h>
#include <maya/detail/held.h>

class MDagPathArray;
class MMatrix;
class MString;

namespace headless {
struct WayOfInstance;
}

/// One way from the world to a DAG node. It follows its node when that is moved under another parent.
class MDagPath {
public:
    MDagPath() = default;
    static MStatus getAPathTo(const MObject& node, MDagPath& path);
    static MDagPath getAPathTo(const MObject& node, MStatus* status = nullptr);
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
    MMatrix inclusiveMatrixInverse(MStatus* status = nullptr) const;
    MMatrix exclusiveMatrixInverse(MStatus* status = nullptr) const;

    MString fullPathName(MStatus* status = nullptr) const;    ///< "|a|b"
    MString partialPathName(MStatus* status = nullptr) const; ///< as much of it as is unique
    MStatus set(const MDagPath& other);
    bool operator==(const MDagPath& other) const;

private:
    friend struct headless::Access;
    unsigned int slot_ = 0, serial_ = 0;
    headless::Held<headless::WayOfInstance> way_; // made for an instance alone
};
