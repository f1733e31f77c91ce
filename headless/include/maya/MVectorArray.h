#pragma once

#include <maya/MStatus.h>
#include <maya/MTypes.h>
#include <maya/MVector.h>
#include <maya/detail/array_of.h>

/// A list of vectors.
class MVectorArray : public headless::ArrayOf<MVectorArray, MVector> {
public:
    MVectorArray() = default;
    MVectorArray(const MVector source[], unsigned int count) : ArrayOf(source, count) {}
    MVectorArray(unsigned int length, const MVector& value = MVector::zero) : ArrayOf(length, value) {}
    MStatus copy(const MVectorArray& source) {
        *this = source;
        return MStatus::kSuccess;
    }
};
