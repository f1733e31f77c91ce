#pragma once

#include <maya/MStatus.h>
#include <maya/MTypes.h>
#include <maya/detail/array_of.h>

/// A list of unsigned integers.
class MUintArray : public headless::ArrayOf<MUintArray, unsigned int, unsigned int, unsigned int> {
public:
    MUintArray() = default;
    MUintArray(const unsigned int source[], unsigned int count) : ArrayOf(source, count) {}
    MUintArray(unsigned int length, unsigned int value = 0) : ArrayOf(length, value) {}
    MStatus copy(const MUintArray& source) {
        *this = source;
        return MStatus::kSuccess;
    }
    MStatus get(unsigned int out[]) const {
        copy_to(out);
        return MStatus::kSuccess;
    }
};
