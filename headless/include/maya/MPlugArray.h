#pragma once

#include <maya/MStatus.h>
#include <maya/MTypes.h>
#include <maya/detail/array_of.h>

class MPlug;

/// A list of plugs.
class MPlugArray : public headless::ArrayOf<MPlugArray, MPlug> {
public:
    MPlugArray() = default;
    MPlugArray(const MPlug source[], unsigned int count) : ArrayOf(source, count) {}
    MPlugArray(unsigned int length, const MPlug& value) : ArrayOf(length, value) {}
    MStatus copy(const MPlugArray& source) {
        *this = source;
        return MStatus::kSuccess;
    }
    MStatus get(MPlug out[]) const {
        copy_to(out);
        return MStatus::kSuccess;
    }
};
