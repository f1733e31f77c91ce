#pragma once

#include <maya/MObject.h>
#include <maya/MStatus.h>

// The plug-in's entries, for programs that link it in and load it by these. The host's own header declares
// them for the loadable plug-in, and defines its version wherever it is included: not to be included together.

MStatus initializePlugin(MObject object);
MStatus uninitializePlugin(MObject object);
