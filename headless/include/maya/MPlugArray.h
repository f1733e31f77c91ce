#pragma once

#include <maya/MPlug.h>
#include <maya/detail/array_of.h>

/// A list of plugs.
class MPlugArray : public headless::ArrayOf<MPlug> {
public:
    using ArrayOf::ArrayOf;
};
