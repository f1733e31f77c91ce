#pragma once

#include <maya/MStatus.h>
#include <maya/MTypes.h>
#include <maya/detail/array_of.h>

/// A list of single-precision numbers.
class MFloatArray : public headless::ArrayOf<MFloatArray, float, float, float> {
public:
    MFloatArray() = default;
    MFloatArray(const float source[], unsigned int count) : ArrayOf(source, count) {}
    MFloatArray(unsigned int length, float value = 0) : ArrayOf(length, value) {}
    MStatus copy(const MFloatArray& source) {
        *this = source;
        return MStatus::kSuccess;
    }
    MStatus get(float out[]) const {
        copy_to(out);
        return MStatus::kSuccess;
    }
};
