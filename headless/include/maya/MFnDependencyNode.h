#pragma once

#include <maya/MFnBase.h>
#include <maya/MPlug.h>
#include <maya/MString.h>

/// Operations on any node.
class MFnDependencyNode : public MFnBase {
public:
    MFnDependencyNode() = default;
    MFnDependencyNode(MObject& object, MStatus* status = nullptr) { attach(object, status); }
    MFnDependencyNode(const MObject& object, MStatus* status = nullptr) { attach(object, status); }
    MFn::Type type() const override { return MFn::kDependencyNode; }

    MObject create(const MString& type, const MString& name, MStatus* status = nullptr);
    MObject create(const MString& type, MStatus* status = nullptr) { return create(type, MString(), status); }
    MString name(MStatus* status = nullptr) const; ///< with its namespaces, without a path
    MString uniqueName(MStatus* status = nullptr) const;
    bool hasUniqueName(MStatus* status = nullptr) const;
    /// Gives the name that the node got: made legal, and unique by a number.
    MString setName(const MString& name, MStatus* status = nullptr);
    MString typeName(MStatus* status = nullptr) const;
    bool isDefaultNode(MStatus* status = nullptr) const;
    bool isFromReferencedFile(MStatus* status = nullptr) const;
    bool hasAttribute(const MString& name, MStatus* status = nullptr) const;
    unsigned int attributeCount(MStatus* status = nullptr) const;
    /// By long or short name, or by a path ("target[0].targetWeight").
    MPlug findPlug(const MString& name, MStatus* status = nullptr) const;
    MPlug findPlug(const MString& name, bool wantNetworkedPlug, MStatus* status = nullptr) const;
};
