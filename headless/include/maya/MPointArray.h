#pragma once

#include <maya/MPoint.h>
#include <maya/detail/array_of.h>

/// A list of points.
class MPointArray : public headless::ArrayOf<MPoint> {
public:
    using ArrayOf::ArrayOf;
};
