#pragma once

#include <maya/MDGContext.h>
#include <maya/MIntArray.h>
#include <maya/MObject.h>
#include <maya/MStatus.h>
#include <maya/MTypes.h>

class MAngle;
class MDistance;
class MPlugArray;
class MString;
class MTime;

/// An attribute of a node, or an element or child of one. Numbers are in the host's own units: centimetres,
/// radians; a plain number set on a time attribute counts in the scene's unit.
class MPlug {
public:
    MPlug() = default;

    bool isNull(MStatus* status = nullptr) const;
    MString name(MStatus* status = nullptr) const; ///< "node.attribute"
    MString info(MStatus* status = nullptr) const;
    MString partialName(bool includeNodeName = false, bool includeNonMandatoryIndices = false,
                        bool includeInstancedIndices = false, bool useAlias = false, bool useFullAttributePath = false,
                        bool useLongNames = false, MStatus* status = nullptr) const;
    MObject node(MStatus* status = nullptr) const;

    bool isArray(MStatus* status = nullptr) const;
    bool isElement(MStatus* status = nullptr) const;
    bool isCompound(MStatus* status = nullptr) const;
    bool isChild(MStatus* status = nullptr) const;
    bool isDynamic(MStatus* status = nullptr) const;
    unsigned int numElements(MStatus* status = nullptr) const;
    unsigned int getExistingArrayAttributeIndices(MIntArray& indices, MStatus* status = nullptr);
    unsigned int evaluateNumElements(MStatus* status = nullptr) { return numElements(status); }
    unsigned int numChildren(MStatus* status = nullptr) const;
    unsigned int logicalIndex(MStatus* status = nullptr) const;
    MPlug elementByLogicalIndex(unsigned int i, MStatus* status = nullptr) const;
    MPlug elementByPhysicalIndex(unsigned int i, MStatus* status = nullptr) const;
    MPlug operator[](unsigned int i) const { return elementByPhysicalIndex(i); }
    MPlug child(unsigned int i, MStatus* status = nullptr) const;
    MPlug parent(MStatus* status = nullptr) const;
    MPlug array(MStatus* status = nullptr) const;

    bool isConnected(MStatus* status = nullptr) const;
    bool connectedTo(MPlugArray& plugs, bool asDestination, bool asSource, MStatus* status = nullptr) const;
    bool isLocked(MStatus* status = nullptr) const; ///< of itself, or as part of one that is
    MStatus setLocked(bool locked);
    bool isKeyable(MStatus* status = nullptr) const;
    MStatus setKeyable(bool keyable);

    MStatus setValue(bool value);
    MStatus setValue(short value);
    MStatus setValue(int value);
    MStatus setValue(float value);
    MStatus setValue(double value);
    MStatus setValue(MTime& value);
    MStatus setValue(MAngle& value);
    MStatus setValue(MDistance& value);
    MStatus setValue(const MString& value);
    MStatus setValue(const char* value);
    MStatus setBool(bool value) { return setValue(value); }
    MStatus setInt(int value) { return setValue(value); }
    MStatus setDouble(double value) { return setValue(value); }
    MStatus setFloat(float value) { return setValue(value); }
    MStatus setString(const MString& value) { return setValue(value); }
    MStatus setMTime(MTime& value) { return setValue(value); }
    bool asBool(MDGContext& context = MDGContext::fsNormal, MStatus* status = nullptr) const;
    short asShort(MDGContext& context = MDGContext::fsNormal, MStatus* status = nullptr) const;
    int asInt(MDGContext& context = MDGContext::fsNormal, MStatus* status = nullptr) const;
    float asFloat(MDGContext& context = MDGContext::fsNormal, MStatus* status = nullptr) const;
    double asDouble(MDGContext& context = MDGContext::fsNormal, MStatus* status = nullptr) const;
    MTime asMTime(MDGContext& context = MDGContext::fsNormal, MStatus* status = nullptr) const;
    MAngle asMAngle(MDGContext& context = MDGContext::fsNormal, MStatus* status = nullptr) const;
    MDistance asMDistance(MDGContext& context = MDGContext::fsNormal, MStatus* status = nullptr) const;
    /// What the plug has that is no number and no text: a matrix, a mesh, a list; null without.
    MObject asMObject(MDGContext& context = MDGContext::fsNormal, MStatus* status = nullptr) const;
    MString asString(MDGContext& context = MDGContext::fsNormal, MStatus* status = nullptr) const;
    MStatus getValue(bool& value, MDGContext& context = MDGContext::fsNormal) const;
    MStatus getValue(int& value, MDGContext& context = MDGContext::fsNormal) const;
    MStatus getValue(float& value, MDGContext& context = MDGContext::fsNormal) const;
    MStatus getValue(double& value, MDGContext& context = MDGContext::fsNormal) const;
    MStatus getValue(MTime& value, MDGContext& context = MDGContext::fsNormal) const;
    MStatus getValue(MString& value, MDGContext& context = MDGContext::fsNormal) const;

    bool operator==(const MPlug& other) const;
    bool operator!=(const MPlug& other) const { return !(*this == other); }

private:
    friend struct headless::Access;
    MObject node_;
    unsigned int attribute_ = 0, depth_ = 0;
    int index_[4] = {0, 0, 0, 0};
};
