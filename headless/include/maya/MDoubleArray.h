#pragma once

#include <maya/MStatus.h>
#include <maya/MTypes.h>
#include <maya/detail/array_of.h>

/// A list of numbers.
class MDoubleArray : public headless::ArrayOf<MDoubleArray, double, double, double> {
public:
    MDoubleArray() = default;
    MDoubleArray(const double source[], unsigned int count) : ArrayOf(source, count) {}
    MDoubleArray(unsigned int length, double value = 0) : ArrayOf(length, value) {}
    MStatus copy(const MDoubleArray& source) {
        *this = source;
        return MStatus::kSuccess;
    }
    MStatus get(double out[]) const {
        copy_to(out);
        return MStatus::kSuccess;
    }
};
