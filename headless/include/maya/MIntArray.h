#pragma once

#include <maya/MStatus.h>
#include <maya/MTypes.h>
#include <maya/detail/array_of.h>

/// A list of integers.
class MIntArray : public headless::ArrayOf<MIntArray, int, int, int> {
public:
    MIntArray() = default;
    MIntArray(const int source[], unsigned int count) : ArrayOf(source, count) {}
    MIntArray(unsigned int length, int value = 0) : ArrayOf(length, value) {}
    MStatus copy(const MIntArray& source) {
        *this = source;
        return MStatus::kSuccess;
    }
    MStatus get(int out[]) const {
        copy_to(out);
        return MStatus::kSuccess;
    }
};
