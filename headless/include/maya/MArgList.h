#pragma once

#include <maya/MStatus.h>
#include <maya/MString.h>
#include <maya/MTypes.h>
#include <maya/detail/held.h>

class MAngle;
class MDistance;
class MTime;
namespace headless {
struct Words;
}

/// The words that a command was called with. A word that isn't of the kind asked for is a failure.
class MArgList {
public:
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

    static const unsigned int kInvalidArgIndex;

private:
    friend struct headless::Access;
    headless::Held<headless::Words> words_;
};
