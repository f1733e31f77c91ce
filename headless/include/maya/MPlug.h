#pragma once

#include <maya/MAngle.h>
#include <maya/MDistance.h>
#include <maya/MObject.h>
#include <maya/MStatus.h>
#include <maya/MString.h>
#include <maya/MTime.h>

class MPlugArray;

/// An attribute of a node, or an element or child of one. Numbers are in the host's own units: centimetres,
/// radians; a plain number set on a time attribute counts in the scene's unit.
class MPlug {
public:
    MPlug() = default;

    bool isNull(MStatus* status = nullptr) const;
    MString name(MStatus* status = nullptr) const; ///< "node.attribute"
    MString info(MStatus* status = nullptr) const { return name(status); }
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
    MStatus setValue(const MTime& value);
    MStatus setValue(const MAngle& value);
    MStatus setValue(const MDistance& value);
    MStatus setValue(const MString& value);
    MStatus setValue(const char* value);
    MStatus setBool(bool value) { return setValue(value); }
    MStatus setInt(int value) { return setValue(value); }
    MStatus setDouble(double value) { return setValue(value); }
    MStatus setFloat(float value) { return setValue(value); }
    MStatus setString(const MString& value) { return setValue(value); }
    MStatus setMTime(const MTime& value) { return setValue(value); }
    bool asBool(MStatus* status = nullptr) const;
    short asShort(MStatus* status = nullptr) const;
    int asInt(MStatus* status = nullptr) const;
    float asFloat(MStatus* status = nullptr) const;
    double asDouble(MStatus* status = nullptr) const;
    MTime asMTime(MStatus* status = nullptr) const;
    MAngle asMAngle(MStatus* status = nullptr) const;
    MDistance asMDistance(MStatus* status = nullptr) const;
    MString asString(MStatus* status = nullptr) const;
    MStatus getValue(bool& value) const;
    MStatus getValue(int& value) const;
    MStatus getValue(float& value) const;
    MStatus getValue(double& value) const;
    MStatus getValue(MTime& value) const;
    MStatus getValue(MString& value) const;

    bool operator==(const MPlug& other) const;
    bool operator!=(const MPlug& other) const { return !(*this == other); }

private:
    friend struct headless::Access;
    MObject node_;
    std::uint32_t attribute_ = 0;
    std::uint32_t depth_ = 0;
    std::int32_t index_[4] = {0, 0, 0, 0};
};

ostream& operator<<(ostream& out, const MPlug& plug);
