#pragma once

/// What moves the points of a host mesh, as its history has it.

#include <maya/MDagPath.h>
#include <maya/MMatrix.h>
#include <maya/MObject.h>
#include <maya/MPlug.h>

#include <vector>

namespace VOR2_EXPORTER_MAYA {

struct DEFORMER {
    MObject node;
    unsigned int geometry = 0; ///< of its inputs and outputs
};

/// The deformers between a shape and the far end of its history, the last to act first. Those that only hold tweaks
/// are left out: tweaks don't move.
[[nodiscard]] std::vector<DEFORMER> deformers_of(const MDagPath& shape);

/// The mesh that comes in at a deformer; null where the host doesn't give it.
[[nodiscard]] MObject input_mesh(const DEFORMER& deformer);

/// What a plug holds; the identity where it holds no matrix.
[[nodiscard]] MMatrix matrix_of(const MPlug& plug);

/// By its name; a null plug where there is none.
[[nodiscard]] MPlug find_plug(const MObject& node, const char* name);
/// A compound's child by its long name.
[[nodiscard]] MPlug child_named(const MPlug& compound, const char* name);
/// The elements of an array that there are.
[[nodiscard]] std::vector<unsigned int> indices_of(MPlug array);
/// What feeds a plug; null where nothing does.
[[nodiscard]] MPlug source_of(const MPlug& plug);

} // namespace VOR2_EXPORTER_MAYA
