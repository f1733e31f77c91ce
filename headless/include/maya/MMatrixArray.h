#pragma once

#include <maya/MMatrix.h>
#include <maya/MStatus.h>
#include <maya/MTypes.h>
#include <maya/detail/array_of.h>

/// A list of matrices.
class MMatrixArray : public headless::ArrayOf<MMatrixArray, MMatrix> {
public:
    MMatrixArray() = default;
    MMatrixArray(unsigned int length) : ArrayOf(length, MMatrix::identity) {}
    MStatus copy(const MMatrixArray& source) {
        *this = source;
        return MStatus::kSuccess;
    }
};
