#pragma once

#include <maya/MMatrix.h>
#include <maya/detail/array_of.h>

/// A list of matrices.
class MMatrixArray : public headless::ArrayOf<MMatrix> {
public:
    using ArrayOf::ArrayOf;
};
