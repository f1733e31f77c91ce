#pragma once

#include <maya/MFnBase.h>
#include <maya/MPlug.h>
#include <maya/MString.h>

/// Operations on any node.
class MFnDependencyNode : public MFnBase {
public:
    MFnDependencyNode() = default;
    MFnDependencyNode(MObject& object, MStatus* status = NULL) { attach(object, status); }
    MFnDependencyNode(const MObject& object, MStatus* status = NULL) { attach(object, status); }
    MFn::Type type() const override { return MFn::kDependencyNode; }

    MObject create(const MString& type, const MString& name, MStatus* status = NULL);
    MObject create(const MString& type, MStatus* status = NULL) { return create(type, MString(), status); }
    MString name(MStatus* status = NULL) const; ///< with its namespaces, without a path
    MString uniqueName(MStatus* status = NULL) const;
    bool hasUniqueName(MStatus* status = NULL) const;
    /// Gives the name that the node got: made legal, and unique by a number.
    MString setName(const MString& name, MStatus* status = NULL);
    MString typeName(MStatus* status = NULL) const;
    bool isDefaultNode(MStatus* status = NULL) const;
    bool isFromReferencedFile(MStatus* status = NULL) const;
    bool hasAttribute(const MString& name, MStatus* status = NULL) const;
    unsigned int attributeCount(MStatus* status = NULL) const;
    /// By long or short name, or by a path ("target[0].targetWeight").
    MPlug findPlug(const MString& name, MStatus* status = NULL) const;
    MPlug findPlug(const MString& name, bool wantNetworkedPlug, MStatus* status = NULL) const;
};
