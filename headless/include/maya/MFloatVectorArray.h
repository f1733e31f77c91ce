#pragma once

#include <maya/MFloatVector.h>
#include <maya/MStatus.h>
#include <maya/MTypes.h>
#include <maya/detail/array_of.h>

/// A list of vectors in single precision.
class MFloatVectorArray : public headless::ArrayOf<MFloatVectorArray, MFloatVector> {
public:
    MFloatVectorArray() = default;
    MFloatVectorArray(const MFloatVector source[], unsigned int count) : ArrayOf(source, count) {}
    MFloatVectorArray(unsigned int length, const MFloatVector& value = MFloatVector::zero) : ArrayOf(length, value) {}
    MStatus copy(const MFloatVectorArray& source) {
        *this = source;
        return MStatus::kSuccess;
    }
};
