#pragma once

#include <maya/MAngle.h>
#include <maya/MDistance.h>
#include <maya/MString.h>
#include <maya/MTime.h>

#include <vector>

/// The words that a command was called with. A word that isn't of the kind asked for is a failure.
class MArgList {
public:
    enum { kInvalidArgIndex = 0xFFFFFFFFu };

    unsigned int length(MStatus* status = nullptr) const;
    bool asBool(unsigned int i, MStatus* status = nullptr) const;
    int asInt(unsigned int i, MStatus* status = nullptr) const;
    double asDouble(unsigned int i, MStatus* status = nullptr) const;
    MString asString(unsigned int i, MStatus* status = nullptr) const;
    MTime asTime(unsigned int i, MStatus* status = nullptr) const;
    MAngle asAngle(unsigned int i, MStatus* status = nullptr) const;
    MDistance asDistance(unsigned int i, MStatus* status = nullptr) const;
    MStatus get(unsigned int i, bool& value) const;
    MStatus get(unsigned int i, int& value) const;
    MStatus get(unsigned int i, double& value) const;
    MStatus get(unsigned int i, MString& value) const;
    /// Of a flag by either of its names; `kInvalidArgIndex` when it isn't there.
    unsigned int flagIndex(const char* shortName, const char* longName = nullptr) const;
    MStatus addArg(bool value);
    MStatus addArg(int value);
    MStatus addArg(double value);
    MStatus addArg(const MString& value);
    MStatus removeArg(unsigned int i);

private:
    friend struct headless::Access;
    std::vector<MString> words_;
};
