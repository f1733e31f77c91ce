#pragma once

#include <maya/MStatus.h>
#include <maya/MTypes.h>
#include <maya/detail/array_of.h>

class MString;

/// A list of texts.
class MStringArray : public headless::ArrayOf<MStringArray, MString, const MString&, MString> {
public:
    MStringArray() = default;
    MStringArray(const MString source[], unsigned int count) : ArrayOf(source, count) {}
    MStringArray(unsigned int length, const MString& value) : ArrayOf(length, value) {}
    MStatus get(MString out[]) const {
        copy_to(out);
        return MStatus::kSuccess;
    }
};
