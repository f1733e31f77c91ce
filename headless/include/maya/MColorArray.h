#pragma once

#include <maya/MColor.h>
#include <maya/detail/array_of.h>

/// A list of colours.
class MColorArray : public headless::ArrayOf<MColor> {
public:
    using ArrayOf::ArrayOf;
};
