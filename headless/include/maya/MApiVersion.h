#pragma once

#include <maya/MTypes.h>

// Included where the plug-in's entries are, this is the one definition of the version that the module exports.
#ifndef MNoVersionString
#define VERSION_TEXT_OF(version) #version
#define VERSION_TEXT(version) VERSION_TEXT_OF(version)
extern "C" {
PLUGIN_EXPORT char MApiVersion[] = VERSION_TEXT(MAYA_API_VERSION);
}
#undef VERSION_TEXT
#undef VERSION_TEXT_OF
#endif
