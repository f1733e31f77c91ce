#pragma once

#include <maya/MVector.h>
#include <maya/detail/array_of.h>

/// A list of vectors.
class MVectorArray : public headless::ArrayOf<MVector> {
public:
    using ArrayOf::ArrayOf;
};
