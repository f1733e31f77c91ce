#pragma once

#include <maya/MFnBase.h>
#include <maya/MStatus.h>
#include <maya/MString.h>
#include <maya/MTypes.h>

class MPlug;

/// Operations on any node.
class MFnDependencyNode : public MFnBase {
public:
    MFnDependencyNode() {}
    MFnDependencyNode(MObject& object, MStatus* status = nullptr) { attach(object, status); }
    MFnDependencyNode(const MObject& object, MStatus* status = nullptr) { attach(object, status); }
    MFn::Type type() const override { return MFn::kDependencyNode; }

    MObject create(const MString& type, const MString& name, MStatus* status = nullptr);
    MObject create(const MString& type, MStatus* status = nullptr);
    MString name(MStatus* status = nullptr) const; ///< with its namespaces, without a path
    bool hasUniqueName(MStatus* status = nullptr) const;
    /// Gives the name that the node got: made legal, and unique by a number.
    /// A namespace in it that isn't there yet is made either way.
    MString setName(const MString& name, bool createNamespace = false, MStatus* status = nullptr);
    MString setName(const MString& name, MStatus* status);
    MString typeName(MStatus* status = nullptr) const;
    bool isDefaultNode(MStatus* status = nullptr) const;
    bool isFromReferencedFile(MStatus* status = nullptr) const;
    bool hasAttribute(const MString& name, MStatus* status = nullptr) const;
    unsigned int attributeCount(MStatus* status = nullptr) const;
    /// By long or short name, or by a path ("target[0].targetWeight").
    MPlug findPlug(const MString& name, MStatus* status = nullptr) const;
    MPlug findPlug(const MString& name, bool wantNetworkedPlug, MStatus* status = nullptr) const;

private:
    MFnDependencyNode(const MFnDependencyNode&);
    MFnDependencyNode& operator=(const MFnDependencyNode&);
    MFnDependencyNode* operator&() const;
};
