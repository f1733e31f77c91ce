#pragma once

#include <maya/MDagPath.h>
#include <maya/detail/array_of.h>

/// A list of paths.
class MDagPathArray : public headless::ArrayOf<MDagPath> {
public:
    using ArrayOf::ArrayOf;
};
