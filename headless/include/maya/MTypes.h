#pragma once

#include <cstddef>

/// The version of the host whose public classes these headers give.
#define MAYA_API_VERSION 201610

#if defined(_WIN32)
#define MAYA_PLUGIN_EXPORT_ATTRIBUTE __declspec(dllexport)
#else
#define MAYA_PLUGIN_EXPORT_ATTRIBUTE __attribute__((visibility("default")))
#endif

typedef void* (*MCreatorFunction)();

namespace headless {
struct Access; ///< how the embedded host looks into the objects that it hands out
}
