#pragma once

#include <maya/MString.h>
#include <maya/detail/array_of.h>

/// A list of texts.
class MStringArray : public headless::ArrayOf<MString> {
public:
    using ArrayOf::ArrayOf;
};
