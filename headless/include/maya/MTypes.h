#pragma once

#include <inttypes.h>
#include <stdarg.h>
#include <stddef.h>

class MStatus;
class MSyntax;

/// The version of the host whose public classes these headers give.
#define MAYA_API_VERSION 201610

#if defined(_WIN32)
#define PLUGIN_EXPORT __declspec(dllexport)
#else
#define PLUGIN_EXPORT __attribute__((visibility("default")))
#endif

typedef int int2[2];

typedef void* (*MCreatorFunction)();
typedef MSyntax (*MCreateSyntaxFunction)();

/// The spaces in which values of a transform are stated.
class MSpace {
public:
    enum Space {
        kInvalid = 0,
        kTransform = 1,     ///< the node's own values
        kPreTransform = 2,  ///< before the node's transformation
        kPostTransform = 3, ///< after it: the parent's space
        kWorld = 4,
        kObject = kPreTransform,
        kLast = 5
    };
};

namespace headless {
struct Access; ///< how the embedded host looks into the objects that it hands out
}
