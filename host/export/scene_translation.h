#pragma once

#include "format/scene/root.h"

#include <maya/MString.h>

namespace VOR2_EXPORTER_MAYA {

using namespace VOR2_LOADER;

/// The main loop of an export: fills an empty root from the host's scene as `export_settings` say. Node
/// 0 is "Exporter Inserted Root", which stands still; all others follow host nodes (see `NODE_LIST`).
///
/// Ends false, with a message that says why and the host's clock back where it was, for a time unit
/// without a rate, a range that can't be sampled (see `plan_samples`), a transform that isn't finite at
/// some sample, and when nothing that has a place in the hierarchy is selected or named. An origin node
/// that isn't there is passed over with a warning.
///
/// The clock goes through the time node when `update_view` is false and when there is an origin node: the
/// active selection is left as "time1" then. What is exported was read from it before.
[[nodiscard]] bool translate_scene(VOR2& root, const MString& path);

/// Names in the hierarchy lose all up to their last ":", unless that is their last character.
void strip_namespaces(VOR2_MATRIX_HIERARCHY& hierarchy);

} // namespace VOR2_EXPORTER_MAYA
